#include "shell/link/prefer_form.h"

#include <QSignalBlocker>

#include "core/phonebook_edits.h"
#include "shell/link/entry_fields.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_prefer_form.h"

namespace kestrel::shell {

PreferForm::PreferForm(core::Program& running, QWidget* frame)
    : QDialog(frame), program(running), form(std::make_unique<Ui::PreferForm>()) {
  form->setupUi(this);
  const auto runs = [this](QPushButton* button, void (PreferForm::*work)()) {
    connect(button, &QPushButton::clicked, this,
            [this, work] { Guarded(program.Log, "PreferForm", [this, work] { (this->*work)(); }); });
  };
  runs(form->Command1, &PreferForm::Add);
  runs(form->Command2, &PreferForm::Remove);
  runs(form->Command3, &PreferForm::Replace);
  connect(form->Command4, &QPushButton::clicked, this, &QDialog::accept);
  connect(form->List1, &QListWidget::currentRowChanged, this, [this] { ShowPicked(); });
  LimitFields(*form->Text1, *form->Text2);
  Refill();
  form->List1->setFocus();
}

PreferForm::~PreferForm() = default;

void PreferForm::Refill() {
  {
    const QSignalBlocker quiet(form->List1);
    form->List1->clear();
    for (const link::ConnEntry& entry : program.State.LinkOptions.ConnList.Live()) {
      form->List1->addItem(FromBytes(entry.Name));
    }
    form->List1->setCurrentRow(form->List1->count() > 0 ? 0 : -1);
  }
  ShowPicked();
}

std::size_t PreferForm::Picked() const { return static_cast<std::size_t>(form->List1->currentRow() + 1); }

void PreferForm::ShowPicked() {
  // The dummy entry of the phonebook has empty texts.
  const link::ConnEntry& entry = program.State.LinkOptions.ConnList[Picked()];
  form->Text1->setText(FromBytes(entry.Name));
  form->Text2->setText(FromBytes(entry.Ip));
  form->lblRefused->hide();
  form->Command2->setEnabled(Picked() != 0);
  form->Command3->setEnabled(Picked() != 0);
}

void PreferForm::Add() {
  std::optional<link::ConnEntry> entry = TypedEntry(*form->Text1, *form->Text2, *form->lblRefused);
  if (!entry) return;
  core::AddEntry(program, std::move(*entry));
  Refill();
}

void PreferForm::Remove() {
  if (Picked() == 0) return;
  core::RemoveEntry(program, Picked());
  Refill();
}

void PreferForm::Replace() {
  if (Picked() == 0) return;
  std::optional<link::ConnEntry> entry = TypedEntry(*form->Text1, *form->Text2, *form->lblRefused);
  if (!entry) return;
  core::ReplaceEntry(program, Picked(), std::move(*entry));
  Refill();
}

}  // namespace kestrel::shell
