#include "shell/link/vld_from2.h"

#include "core/connecting.h"
#include "shell/link/entry_fields.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_vld_from2.h"

namespace kestrel::shell {

VldFrom2::VldFrom2(core::Program& running, QWidget* frame)
    : QDialog(frame), program(running), form(std::make_unique<Ui::VldFrom2>()) {
  form->setupUi(this);
  connect(form->cmdOK, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "VldFrom2", [this] { Connect(); }); });
  connect(form->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(form->Text2, &QLineEdit::textChanged, this, &VldFrom2::ShowPort);
  LimitFields(*form->Text1, *form->Text2);
  form->Text1->setFocus();
}

VldFrom2::~VldFrom2() = default;

void VldFrom2::ShowPort() {
  const link::ConnEntry typed = link::TrimmedEntry({}, ToBytes(form->Text2->text()));
  const std::optional<link::HostAndPort> apart = link::SplitPort(typed.Ip);
  const bool other = apart && apart->Port != program.State.LinkOptions.CONNPORT;
  if (other) form->lblPort->setText(QStringLiteral("Port %1 becomes the Connection Port.").arg(apart->Port));
  form->lblPort->setVisible(other);
}

void VldFrom2::Connect() {
  if (connecting) return;
  const std::optional<link::ConnEntry> entry = TypedEntry(*form->Text1, *form->Text2, *form->lblRefused);
  if (!entry) return;
  // Events run while the present server is left, and another press of OK may be among them. The session runs no dialog
  // of its own before the peer answers, so the window can go after it.
  connecting = true;
  connecting = core::ConnectToTyped(program, *entry);
  if (connecting) accept();
}

}  // namespace kestrel::shell
