#pragma once

#include <QDialog>
#include <vector>

#include "core/key_page.h"
#include "core/program.h"

namespace kestrel::shell {

/// All keys as they are bound now, in a plain table, to be copied and printed.
class KeysFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `running` outlives the dialog.
  KeysFrm(core::Program& running, QWidget* frame);

 private:
  void Copy() const;
  void Print();

  core::Program& program;
  const std::vector<core::KeyRow> rows;
};

}  // namespace kestrel::shell
