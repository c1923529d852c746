#include "shell/theaters/bulls_details_frm.h"

#include <utility>

#include "base/numbers.h"
#include "core/bullseye_steps.h"
#include "core/catalogue_edits.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/guard.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_bulls_details_frm.h"

namespace kestrel::shell {

BullsDetailsFrm::BullsDetailsFrm(core::Program& running, std::size_t index, Start start, QWidget* frame)
    : QDialog(frame), program(running), edited(index), form(std::make_unique<Ui::BullsDetailsFrm>()) {
  form->setupUi(this);
  form->txtName->setFocus();
  // Left of and below its corner the map has places that a click may fill in, but nobody types.
  for (QLineEdit* field : {form->txtX, form->txtY}) new CharacterFilter(DigitsAndPoint(), *field);
  const core::Station& station = running.State;
  form->lblSession->setText(FromBytes(core::BullseyeNote) + u'.');
  form->lblSession->setVisible(station.Session.Connected);
  if (index != 0) {
    const theaters::Bullseye& bullseye = station.Catalogue.Current().Bulls[index];
    setWindowTitle(AsTitle(QStringLiteral("Bullseye: ") + FromBytes(bullseye.Name)));
    form->txtName->setText(FromBytes(bullseye.Name));
    FillPosition(bullseye.X, bullseye.Y);
    before = Entered(bullseye.Name);
    return;
  }
  setWindowTitle(QStringLiteral("New Bullseye"));
  form->txtName->setText(QStringLiteral("New"));
  form->txtX->setText(QStringLiteral("0"));
  form->txtY->setText(QStringLiteral("0"));
  if (start == Start::Pointer) FillPosition(station.View.CursorMapX, station.View.CursorMapY);
}

BullsDetailsFrm::~BullsDetailsFrm() = default;

void BullsDetailsFrm::FillPosition(double x, double y) {
  form->txtX->setText(FromBytes(base::FormatInvariant(x, "0.00")));
  form->txtY->setText(FromBytes(base::FormatInvariant(y, "0.00")));
}

theaters::Bullseye BullsDetailsFrm::Entered(std::string name) const {
  return {std::move(name), base::InvariantNumber(ToBytes(form->txtX->text())),
          base::InvariantNumber(ToBytes(form->txtY->text()))};
}

void BullsDetailsFrm::accept() {
  Guarded(program.Log, "BullsDetailsFrm", [this] {
    std::optional<std::string> name = TakeText(*form->txtName, *form->lblRefused);
    if (!name) return;
    if (core::StoreBullseye(program, edited, Entered(std::move(*name)), before)) QDialog::accept();
  });
}

}  // namespace kestrel::shell
