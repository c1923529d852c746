#include "shell/tape/export_tape_frm.h"

#include <QElapsedTimer>
#include <string>

#include "base/files.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_export_tape_frm.h"

namespace kestrel::shell {
namespace {

/// Milliseconds between two turns of events.
constexpr qint64 LongestPiece = 20;

}  // namespace

ExportTapeFrm::ExportTapeFrm(core::Program& running, core::AcmiExport& work, QWidget* owner)
    : QDialog(owner), program(running), exported(work), form(std::make_unique<Ui::ExportTapeFrm>()) {
  form->setupUi(this);
  const QString name = FromBytes(base::NameForMessage(exported.Tape()));
  form->lblTape->setToolTip(name);
  form->lblTape->setText(
      form->lblTape->fontMetrics().elidedText(name, Qt::ElideMiddle, form->ProgressBar1->minimumWidth()));
  connect(form->cmdCancel, &QPushButton::clicked, this, &ExportTapeFrm::reject);
  connect(&Timer1, &QTimer::timeout, this, &ExportTapeFrm::GoOn);
  connect(this, &QDialog::finished, &Timer1, &QTimer::stop);
  Timer1.start(0);
}

ExportTapeFrm::~ExportTapeFrm() = default;

void ExportTapeFrm::GoOn() {
  Guarded(program.Log, "ExportTape", [this] {
    try {
      QElapsedTimer since;
      since.start();
      bool more = true;
      while (more && since.elapsed() < LongestPiece) more = exported.Step();
      form->ProgressBar1->setValue(exported.Percent());
      if (more) return;
      program.Log.LogLine("Exported the tape " + base::NameForMessage(exported.Tape()) + ", " +
                          std::to_string(exported.Records()) + " records");
      accept();
    } catch (const std::exception& failure) {
      Timer1.stop();
      core::TellExportFailed(program, failure);
      reject();
    }
  });
}

}  // namespace kestrel::shell
