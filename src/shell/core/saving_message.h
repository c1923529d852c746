#pragma once

#include <QDialog>

namespace kestrel::shell {

/// Says that files are being written. It is shown without waiting for anything, and hidden when the work is done.
class frmSavingMessage final : public QDialog {
  Q_OBJECT
 public:
  explicit frmSavingMessage(QWidget* owner);
  /// Shows it and lets it paint before the work begins.
  void ShowNow();
};

}  // namespace kestrel::shell
