#include "shell/theaters/mdf_theaters_frm.h"

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "core/theater_switch.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/unicode_text.h"
#include "shell/theaters/theate_details_frm.h"

namespace kestrel::shell {
namespace {

std::unique_ptr<NumberedList> ListOf(const base::Table<theaters::Theater>& theaters) {
  return std::make_unique<NumberedList>(
      QStringList{QStringLiteral("Name"), QStringLiteral("Size")}, [&theaters] { return theaters.UpperBound(); },
      [&theaters](std::size_t index, int column) {
        const theaters::Theater& theater = theaters[index];
        return FromBytes(column == 1 ? theater.DisplayName : base::FormatInvariant(theater.Size, "0"));
      },
      nullptr);
}

}  // namespace

MdfTheatersFrm::MdfTheatersFrm(core::Program& running, ModalCount& dialogs, QWidget* frame)
    : ListFrm({"MdfTheatersFrm", "Theaters", "Makes a new theater", "Opens the details of the selected theater",
               "Deletes the selected theater and its files"},
              ListOf(running.State.Catalogue.Theaters), running.Log, frame),
      program(running),
      modal(dialogs) {
  RefreshGrid();
}

void MdfTheatersFrm::RefreshGrid() { ShowRows(static_cast<std::size_t>(program.State.Catalogue.CurrentTheater)); }

void MdfTheatersFrm::Details(std::size_t index) {
  TheateDetailsFrm details(program, index, this);
  if (RunDialog(details, modal) != Accepted) return;
  RefreshGrid();
  core::ReloadEditedTheater(program);
}

void MdfTheatersFrm::Delete(std::size_t index) {
  if (core::DeleteTheater(program, index)) RefreshGrid();
}

}  // namespace kestrel::shell
