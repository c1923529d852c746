#pragma once

#include <string_view>

#include "core/shortcut_capture.h"
#include "shell/frame/tool_frm.h"

class QStackedWidget;
class QTabBar;

namespace kestrel::shell {

class OptionControls;
class ViewPanel;

/// The options: four panels of one size, of which TabStrip1 shows one. A change acts at once. The panels are made when
/// the window is first seen or a shortcut needs one of its boxes, so that the start does not wait for them.
class ViewFrm final : public ToolFrm {
  Q_OBJECT
 public:
  ViewFrm(core::Program& program, QWidget* frame);
  ~ViewFrm() override;

  /// The zoom has changed elsewhere.
  void ShowZoom();
  /// Settings have changed elsewhere.
  void ShowOptions();
  void ToggleBox(std::string_view box) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// The size of a panel before there is one, pixels.
  QSize PanelSize() const;
  void MakePanels();

  core::ShortcutCapture capture;
  QTabBar* TabStrip1;
  QStackedWidget* panels;
  OptionControls* options = nullptr;  ///< null until the panels are made
  ViewPanel* view = nullptr;
};

}  // namespace kestrel::shell
