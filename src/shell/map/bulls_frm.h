#pragma once

#include "shell/parts/tool_frm.h"

namespace kestrel::shell {

/// Bearing and range from the bullseye to the pointer, and which bullseye that is.
class BullsFrm final : public ToolFrm {
  Q_OBJECT
 public:
  BullsFrm(core::Program& running, QWidget* frame);

 protected:
  void ShowChanged(base::Changed what) override;

 private:
  QLabel* Label2;    ///< bearing
  QLabel* Label3;    ///< range
  QLabel* lblBulls;  ///< which bullseye
};

}  // namespace kestrel::shell
