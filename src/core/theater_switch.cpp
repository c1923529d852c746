#include "core/theater_switch.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <future>
#include <string>
#include <utility>

#include "base/picture_replacement.h"
#include "core/bullseye_steps.h"
#include "core/early_windows.h"
#include "core/settings.h"
#include "core/theater_data.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

base::Picture ReadMapPicture(Program& program, const theaters::Theater& theater) {
  const std::uint32_t start = program.Log.Time().TickCount();
  base::Picture picture = base::ReplacePicture(TheaterPath(program.State, theater.Pic), program.State.MapPicture);
  program.Log.LogDuration("Loaded the map picture", start);
  return picture;
}

/// Makes theater `index` the current one, with its picture. False when that cannot be read: a box has said so, which
/// ends with what `stays` in use, and nothing has changed.
bool UseTheater(Program& program, std::size_t index, std::string_view stays) {
  Station& station = program.State;
  try {
    station.MapPicture = ReadMapPicture(program, station.Catalogue.Theaters[index]);
    station.Catalogue.CurrentTheater = static_cast<std::int16_t>(index);
    return true;
  } catch (const std::exception& failure) {
    program.Log.LogLine(failure.what());
    Tell(program,
         "An error ocurred while loading the initialization files for this Theater. Please check these files, or "
         "reinstall the program. The former " +
             std::string(stays) + " stays in use.",
         "Error", base::MessageIcon::Critical);
    return false;
  }
}

}  // namespace

void SaveEverything(Program& program) {
  for (const Unsaved& failure : SaveAll(program.State)) {
    if (program.State.FolderReadOnly) {
      program.Log.LogLine(failure.Reason);
    } else {
      TellUnsaved(program, failure);
    }
  }
}

void LoadMapPicture(Program& program) {
  const std::uint32_t start = program.Log.Time().TickCount();
  const std::filesystem::path path = TheaterPath(program.State, program.State.Catalogue.Current().Pic);
  // Only the file and the pixels are the other thread's; without one it is read when it is asked for.
  std::future<base::Picture> picture =
      std::async(std::launch::async | std::launch::deferred, [&path] { return base::LoadPicture(path); });
  auto* const windows = dynamic_cast<EarlyWindows*>(&program.Shown);
  if (windows != nullptr) windows->MakeMainFrm(true);
  try {
    program.State.MapPicture = picture.get();
  } catch (...) {
    if (windows != nullptr) windows->MakeMainFrm(false);
    throw;
  }
  program.Log.LogDuration("Loaded the map picture", start);
}

base::Changed ResetTheaterData(Program& program) {
  Station& station = program.State;
  const theaters::Theater& theater = station.Catalogue.Current();
  const theaters::DownPoint bull = theaters::CurrentBullseye(theater);
  map::ResetView(station.View, theater.Size, theater.PicSize, bull.X, bull.Y);
  // The bearing line begins at the bullseye until the person sets it elsewhere.
  station.View.AnchorViewX = station.View.BullsViewX;
  station.View.AnchorViewY = station.View.BullsViewY;
  map::RefreshPositions(station.View);
  ReloadBulls(station);
  station.AreaSteps.Clear();
  station.FrequencySteps.Clear();
  station.BullseyeSteps.clear();
  const base::Changed shows = LoadTheaterData(program);
  map::ResetResolution(station.View);
  return shows | base::Changed::Map | base::Changed::MiniMap | base::Changed::Zoom | base::Changed::CursorLine;
}

void SwitchTheater(Program& program, std::size_t index) {
  Station& station = program.State;
  if (index == 0 || index > station.Catalogue.Theaters.UpperBound()) return;
  // It lets pending events run, but for what the person does: that waits for the end of the switch.
  program.Shown.ShowSavingMessage(true);
  SaveEverything(program);
  program.Shown.ShowSavingMessage(false);

  base::Changed changed = base::Changed::NameMenus;
  if (UseTheater(program, index, "theater")) changed |= ResetTheaterData(program);
  program.Shown.Refresh(changed);
}

void ReloadEditedTheater(Program& program) {
  SaveEverything(program);
  UseTheater(program, static_cast<std::size_t>(program.State.Catalogue.CurrentTheater), "picture");
  program.Shown.Refresh(ResetTheaterData(program) | base::Changed::NameMenus);
}

base::Changed SelectBullseye(Program& program, std::size_t index) {
  theaters::Theater& theater = program.State.Catalogue.Current();
  if (index == 0 || index > theater.Bulls.UpperBound()) return base::Changed::Nothing;
  const BullseyeStep before = PresentBullseye(program.State);
  theater.CurrentBull = static_cast<std::int16_t>(index);
  KeepBullseye(program.State, before);
  return ReloadBulls(program.State) | base::Changed::NameMenus;
}

base::Changed ReloadBulls(Station& station, std::optional<map::MapPoint> place) {
  const theaters::Theater& theater = station.Catalogue.Current();
  const std::optional<tape::BullseyePlace>& taped = station.Tapes.Bullseye;
  if (!place && taped && taped->IsPlace()) place = map::MapPoint{taped->X, taped->Y};
  const theaters::DownPoint bull =
      place ? theaters::DownPoint{place->X, theater.Size - place->Y} : theaters::CurrentBullseye(theater);
  station.Session.Bull = bull;
  return map::PlaceBullseye(station.View, bull.X, bull.Y);
}

}  // namespace kestrel::core
