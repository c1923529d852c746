#include "shell/theaters/bulls_details_frm.h"

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "shell/core/guard.h"
#include "shell/core/text.h"
#include "shell/theaters/character_filter.h"
#include "ui_bulls_details_frm.h"

namespace kestrel::shell {

BullsDetailsFrm::BullsDetailsFrm(core::Program& program, std::size_t index, Start start, QWidget* frame)
    : QDialog(frame), station(program), edited(index), form(std::make_unique<Ui::BullsDetailsFrm>()) {
  form->setupUi(this);
  form->txtName->setFocus();
  // The map has places left of and below its corner, and a click may fill them in.
  auto* filter = new CharacterFilter(DigitsAndPoint() + u'-', this);
  form->txtX->setValidator(filter);
  form->txtY->setValidator(filter);
  const core::Station& state = program.State;
  if (index != 0) {
    const theaters::Bullseye& bullseye = state.Catalogue.Current().Bulls[index];
    setWindowTitle(QStringLiteral("Bullseye: ") + FromBytes(bullseye.Name));
    form->txtName->setText(FromBytes(bullseye.Name));
    FillPosition(bullseye.X, bullseye.Y);
    return;
  }
  setWindowTitle(QStringLiteral("New Bullseye"));
  form->txtName->setText(QStringLiteral("New"));
  form->txtX->setText(QStringLiteral("0"));
  form->txtY->setText(QStringLiteral("0"));
  if (start == Start::Pointer) FillPosition(state.View.CursorMapX, state.View.CursorMapY);
}

BullsDetailsFrm::~BullsDetailsFrm() = default;

void BullsDetailsFrm::FillPosition(double x, double y) {
  form->txtX->setText(FromBytes(base::FormatInvariant(x, "0.00")));
  form->txtY->setText(FromBytes(base::FormatInvariant(y, "0.00")));
}

void BullsDetailsFrm::accept() {
  Guarded(station.Log, "BullsDetailsFrm", [this] {
    const theaters::Bullseye entered{ToBytes(form->txtName->text()), base::InvariantNumber(ToBytes(form->txtX->text())),
                                     base::InvariantNumber(ToBytes(form->txtY->text()))};
    if (core::StoreBullseye(station, edited, entered)) QDialog::accept();
  });
}

}  // namespace kestrel::shell
