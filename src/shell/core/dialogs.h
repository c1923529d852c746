#pragma once

#include <QDialog>

#include "shell/core/modal_count.h"

namespace kestrel::shell {

/// Runs a dialog of the program until it is closed: it counts as open, and the floating windows are out of its way.
/// Returns QDialog::Accepted or QDialog::Rejected.
inline int RunDialog(QDialog& dialog, ModalCount& modal) {
  const ModalCount::Scope open(modal);
  return dialog.exec();
}

}  // namespace kestrel::shell
