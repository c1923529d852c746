#pragma once

#include "shell/parts/tool_frm.h"

class QCheckBox;

namespace kestrel::shell {

/// Bearings and range from the cursor anchor to the pointer, and the choice of the static cursor.
class CursFrm final : public ToolFrm {
  Q_OBJECT
 public:
  CursFrm(core::Program& running, QWidget* frame);

 protected:
  void ShowChanged(base::Changed what) override;

 private:
  /// Check1 as the setting stands; when that is news the read-outs are emptied.
  void ShowStaticCursor();

  QCheckBox* Check1;
  QLabel* Label2;  ///< bearings
  QLabel* Label3;  ///< range
};

}  // namespace kestrel::shell
