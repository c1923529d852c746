#include "shell/theaters/mdf_bulls_frm.h"

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "core/theater_switch.h"
#include "shell/core/guard.h"
#include "shell/core/text.h"
#include "ui_mdf_bulls_frm.h"

namespace kestrel::shell {
namespace {

/// Pixels; room for about a dozen rows.
constexpr QSize SizeAtStart(480, 320);

QString BullseyeText(const theaters::Bullseye& bullseye, int column) {
  if (column == 1) return FromBytes(bullseye.Name);
  return FromBytes(base::FormatInvariant(column == 2 ? bullseye.X : bullseye.Y, "0.00"));
}

}  // namespace

MdfBullsFrm::MdfBullsFrm(core::Program& program, QWidget* frame)
    : QDialog(frame), station(program), form(std::make_unique<Ui::MdfBullsFrm>()) {
  form->setupUi(this);
  form->ListView1->setFocus();
  resize(SizeAtStart);
  theaters::Catalogue& catalogue = program.State.Catalogue;
  list = new NumberedList(
      {QStringLiteral("Name"), QStringLiteral("X"), QStringLiteral("Y")},
      [&catalogue] { return catalogue.Current().Bulls.UpperBound(); },
      [&catalogue](std::size_t index, int column) { return BullseyeText(catalogue.Current().Bulls[index], column); },
      this);
  list->ShowIn(*form->ListView1);
  // A theater may have none, and then there is nothing to edit.
  for (QPushButton* button : {form->Command1_1, form->Command1_2}) {
    NumberedList::EnableWithRow(*form->ListView1, *button);
  }
  connect(form->Command1_0, &QPushButton::clicked, this, [this] { Ask(0); });
  connect(form->Command1_1, &QPushButton::clicked, this, [this] { Ask(NumberedList::Selected(*form->ListView1)); });
  connect(form->Command1_2, &QPushButton::clicked, this,
          [this] { Guarded(station.Log, "MdfBullsFrm", [this] { Delete(); }); });
  connect(form->ListView1, &QTreeView::doubleClicked, this, [this] {
    Guarded(station.Log, "MdfBullsFrm", [this] { MakeCurrent(NumberedList::Selected(*form->ListView1)); });
  });
  RefreshGrid();
}

MdfBullsFrm::~MdfBullsFrm() = default;

void MdfBullsFrm::RefreshGrid() {
  const std::size_t current = static_cast<std::size_t>(station.State.Catalogue.Current().CurrentBull);
  list->Refresh(*form->ListView1, current);
}

void MdfBullsFrm::Ask(std::size_t index) {
  wanted = index;
  accept();
}

void MdfBullsFrm::Delete() {
  if (core::DeleteBullseye(station, NumberedList::Selected(*form->ListView1))) RefreshGrid();
}

void MdfBullsFrm::MakeCurrent(std::size_t index) {
  station.Shown.Refresh(core::SelectBullseye(station, index));
  RefreshGrid();
}

}  // namespace kestrel::shell
