#include "shell/link/frm_conn_port.h"

#include "core/phonebook_edits.h"
#include "link/phonebook.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_frm_conn_port.h"

namespace kestrel::shell {

frmConnPort::frmConnPort(core::Program& running, QWidget* frame)
    : QDialog(frame), program(running), form(std::make_unique<Ui::frmConnPort>()) {
  form->setupUi(this);
  form->txtConnPort->setText(QString::number(running.State.LinkOptions.CONNPORT));
  form->txtConnPort->selectAll();
  form->lblRefused->setText(QStringLiteral("A port is a number from 1 to 65535."));
  connect(form->cmdOK, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "frmConnPort", [this] { Change(); }); });
  connect(form->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  form->txtConnPort->setFocus();
}

frmConnPort::~frmConnPort() = default;

void frmConnPort::Change() {
  const std::optional<std::int32_t> port = link::PortFromText(ToBytes(form->txtConnPort->text()));
  form->lblRefused->setVisible(!port);
  if (!port) {
    form->txtConnPort->setFocus();
    form->txtConnPort->selectAll();
    return;
  }
  core::ChangeConnPort(program, *port);
  accept();
}

}  // namespace kestrel::shell
