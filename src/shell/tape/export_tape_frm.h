#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "core/acmi_export.h"
#include "core/program.h"

namespace Ui {
class ExportTapeFrm;
}

namespace kestrel::shell {

/// Writes a tape for other programs while it shows how far that is. Cancel, Esc and closing it end the work, and
/// nothing is left of it. The session goes on meanwhile.
class ExportTapeFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `running` and `work` outlive the window.
  ExportTapeFrm(core::Program& running, core::AcmiExport& work, QWidget* owner);
  ~ExportTapeFrm() override;

 private:
  void GoOn();

  core::Program& program;
  core::AcmiExport& exported;
  std::unique_ptr<Ui::ExportTapeFrm> form;
  QTimer Timer1;  ///< a piece of the work between two turns of events
};

}  // namespace kestrel::shell
