#pragma once

#include <QDialog>
#include <memory>

#include "core/program.h"

namespace Ui {
class frmConnPort;
}

namespace kestrel::shell {

/// The remote port of all connections.
class frmConnPort final : public QDialog {
  Q_OBJECT
 public:
  /// `running` outlives the dialog.
  frmConnPort(core::Program& running, QWidget* frame);
  ~frmConnPort() override;

 private:
  void Change();

  core::Program& program;
  std::unique_ptr<Ui::frmConnPort> form;
};

}  // namespace kestrel::shell
