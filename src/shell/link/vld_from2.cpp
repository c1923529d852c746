#include "shell/link/vld_from2.h"

#include "core/phonebook_edits.h"
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
  LimitFields(*form->Text1, *form->Text2);
  form->Text1->setFocus();
}

VldFrom2::~VldFrom2() = default;

void VldFrom2::Connect() {
  if (connecting) return;
  const std::optional<link::ConnEntry> entry = TypedEntry(*form->Text1, *form->Text2, *form->lblRefused);
  if (!entry || !core::KeepTypedEntry(program, *entry)) return;
  // Events run while the present server is left, and another press of OK may be among them. The session runs no dialog
  // of its own before the peer answers, so the window can go after it.
  connecting = true;
  program.Link.ConnectTo(entry->Ip);
  accept();
}

}  // namespace kestrel::shell
