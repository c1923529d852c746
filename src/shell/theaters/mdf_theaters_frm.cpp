#include "shell/theaters/mdf_theaters_frm.h"

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "core/theater_switch.h"
#include "shell/core/dialogs.h"
#include "shell/core/guard.h"
#include "shell/core/text.h"
#include "shell/theaters/theate_details_frm.h"
#include "ui_mdf_theaters_frm.h"

namespace kestrel::shell {
namespace {

/// Pixels; room for about a dozen rows.
constexpr QSize SizeAtStart(480, 320);

}  // namespace

MdfTheatersFrm::MdfTheatersFrm(core::Program& program, ModalCount& dialogs, QWidget* frame)
    : QDialog(frame), station(program), modal(dialogs), form(std::make_unique<Ui::MdfTheatersFrm>()) {
  form->setupUi(this);
  form->ListView1->setFocus();
  resize(SizeAtStart);
  const base::Table<theaters::Theater>& theaters = program.State.Catalogue.Theaters;
  list = new NumberedList(
      {QStringLiteral("Name"), QStringLiteral("Size")}, [&theaters] { return theaters.UpperBound(); },
      [&theaters](std::size_t index, int column) {
        const theaters::Theater& theater = theaters[index];
        return FromBytes(column == 1 ? theater.DisplayName : base::FormatInvariant(theater.Size, "0"));
      },
      this);
  list->ShowIn(*form->ListView1);
  for (QPushButton* button : {form->Command1_1, form->Command1_2}) {
    NumberedList::EnableWithRow(*form->ListView1, *button);
  }
  connect(form->Command1_0, &QPushButton::clicked, this, [this] { ShowDetails(0); });
  connect(form->Command1_1, &QPushButton::clicked, this,
          [this] { ShowDetails(NumberedList::Selected(*form->ListView1)); });
  connect(form->Command1_2, &QPushButton::clicked, this,
          [this] { Guarded(station.Log, "MdfTheatersFrm", [this] { Delete(); }); });
  RefreshGrid();
}

MdfTheatersFrm::~MdfTheatersFrm() = default;

void MdfTheatersFrm::RefreshGrid() {
  list->Refresh(*form->ListView1, static_cast<std::size_t>(station.State.Catalogue.CurrentTheater));
}

void MdfTheatersFrm::ShowDetails(std::size_t index) {
  Guarded(station.Log, "TheateDetailsFrm", [this, index] {
    TheateDetailsFrm details(station, index, this);
    if (RunDialog(details, modal) != Accepted) return;
    RefreshGrid();
    core::ReloadEditedTheater(station);
  });
}

void MdfTheatersFrm::Delete() {
  if (core::DeleteTheater(station, NumberedList::Selected(*form->ListView1))) RefreshGrid();
}

}  // namespace kestrel::shell
