#pragma once

#include "map/cursor_tools.h"
#include "shell/frame/tool_frm.h"

namespace kestrel::shell {

/// Bearing and range from the bullseye to the pointer.
class BullsFrm final : public ToolFrm {
  Q_OBJECT
 public:
  BullsFrm(core::Program& program, QWidget* frame);

  /// Shows the texts; nothing while the window is hidden, which brings itself up to date when it is shown.
  void ShowBRs(const map::BRTexts& texts);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLabel* Label2;  ///< bearing
  QLabel* Label3;  ///< range
};

}  // namespace kestrel::shell
