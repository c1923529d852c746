#pragma once

#include "map/cursor_tools.h"
#include "shell/frame/tool_frm.h"

class QCheckBox;

namespace kestrel::shell {

/// Bearings and range from the cursor anchor to the pointer, and the choice of the static cursor.
class CursFrm final : public ToolFrm {
  Q_OBJECT
 public:
  CursFrm(core::Program& program, QWidget* frame);

  /// Shows the texts; nothing while the window is hidden, which brings itself up to date when it is shown.
  void ShowBRs(const map::BRTexts& texts);
  /// Check1 as the setting stands.
  void ShowStaticCursor();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void SetStaticCursor(bool on);

  QCheckBox* Check1;
  QLabel* Label2;  ///< bearings
  QLabel* Label3;  ///< range
};

}  // namespace kestrel::shell
