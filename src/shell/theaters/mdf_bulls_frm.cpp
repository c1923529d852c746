#include "shell/theaters/mdf_bulls_frm.h"

#include "base/numbers.h"
#include "core/catalogue_edits.h"
#include "core/theater_switch.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

QString BullseyeText(const theaters::Bullseye& bullseye, int column) {
  if (column == 1) return FromBytes(bullseye.Name);
  return FromBytes(base::FormatInvariant(column == 2 ? bullseye.X : bullseye.Y, "0.00"));
}

std::unique_ptr<NumberedList> ListOf(theaters::Catalogue& catalogue) {
  return std::make_unique<NumberedList>(
      QStringList{QStringLiteral("Name"), QStringLiteral("X"), QStringLiteral("Y")},
      [&catalogue] { return catalogue.Current().Bulls.UpperBound(); },
      [&catalogue](std::size_t index, int column) { return BullseyeText(catalogue.Current().Bulls[index], column); },
      nullptr);
}

}  // namespace

MdfBullsFrm::MdfBullsFrm(core::Program& running, QWidget* frame)
    : ListFrm({"MdfBullsFrm", "Bullseyes", "Makes a new bullseye", "Opens the details of the selected bullseye",
               "Deletes the selected bullseye"},
              ListOf(running.State.Catalogue), running.Log, frame),
      program(running) {
  RefreshGrid();
}

void MdfBullsFrm::RefreshGrid() { ShowRows(static_cast<std::size_t>(program.State.Catalogue.Current().CurrentBull)); }

void MdfBullsFrm::Details(std::size_t index) {
  wanted = index;
  accept();
}

void MdfBullsFrm::Delete(std::size_t index) {
  if (core::DeleteBullseye(program, index)) RefreshGrid();
}

void MdfBullsFrm::Choose(std::size_t index) {
  program.Shown.Refresh(core::SelectBullseye(program, index));
  RefreshGrid();
}

}  // namespace kestrel::shell
