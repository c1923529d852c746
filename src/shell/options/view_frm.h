#pragma once

#include "core/shortcut_capture.h"
#include "shell/parts/tool_frm.h"

class QStackedWidget;
class QTabBar;

namespace kestrel::shell {

class ExtrasPanel;
class OptionControls;
class ViewPanel;

/// The options: five panels of one size, of which TabStrip1 shows one. A change acts at once. The panels are made when
/// the window is first seen, so that the start does not wait for them.
class ViewFrm final : public ToolFrm {
  Q_OBJECT
 public:
  ViewFrm(core::Program& running, QWidget* frame);
  ~ViewFrm() override;

 protected:
  /// Shows the zoom and settings that have changed elsewhere.
  void ShowChanged(base::Changed what) override;

 private:
  /// The size of a panel before there is one, pixels.
  QSize PanelSize() const;
  void MakePanels();

  core::ShortcutCapture capture;
  QTabBar* TabStrip1;
  QStackedWidget* panels;
  OptionControls* options = nullptr;  ///< null until the panels are made
  ViewPanel* view = nullptr;
  ExtrasPanel* extras = nullptr;
};

}  // namespace kestrel::shell
