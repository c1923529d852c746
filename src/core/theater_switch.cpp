#include "core/theater_switch.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "core/settings.h"
#include "map/view_short_file.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

/// The saved views of the current theater. A damaged file costs the views, not the theater.
void LoadViewShorts(Program& program) {
  Station& station = program.State;
  const theaters::Theater& theater = station.Catalogue.Current();
  const map::ViewShorts standard = map::DefaultViewShorts(theater.Size);
  station.View.ViewShorts = standard;
  const std::uint32_t start = program.Log.Time().TickCount();
  try {
    const std::filesystem::path path = TheaterPath(station, theaters::DataFile(theater, "_ViewShort.dat"));
    if (!base::FileExists(path)) return;
    station.View.ViewShorts = map::ReadViewShorts(base::ReadWholeFile(path, base::MaxTextFileBytes), standard);
    program.Log.LogDuration("Loaded the view shortcuts", start);
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(std::string("The saved views are left out: ") + failure.what());
  }
}

/// The current theater has these heights from now on; their file is read when the pointer first needs it.
void LoadElevation(Program& program) {
  Station& station = program.State;
  const theaters::Theater& theater = station.Catalogue.Current();
  try {
    station.Elevations.Load(TheaterPath(station, theaters::DataFile(theater, "_Elevation.dat")), theater.Size);
  } catch (const base::RuntimeFailure& failure) {
    station.Elevations = {};
    program.Log.LogLine(std::string("The elevations are left out: ") + failure.what());
  }
}

constexpr Step theaterDataSteps[] = {
    {"ReloadBulls", [](Program& program) { ReloadBulls(program.State); }},
    {"Load the areas"},
    {"Load the view shortcuts", LoadViewShorts},
    {"Load the frequencies"},
    {"Load the elevation", LoadElevation},
    {"AreasFrm.RefreshList"},
    {"FreqFrm.RefreshList"},
    {"FreqFrm.UpdateTreeviewCheckBoxes"},
    // It comes with the refresh that ResetTheaterData asks for.
    {"MiniMapFrm.ReloadMiniMap"},
    {"ResetResolution", [](Program& program) { map::ResetResolution(program.State.View); }},
};

/// What the former theater needs to come back as it was. The picture's pixels are shared, not copied.
struct FormerTheater {
  explicit FormerTheater(const Station& station)
      : index(station.Catalogue.CurrentTheater),
        picture(station.MapPicture),
        elevations(station.Elevations),
        view(station.View),
        bull(station.Session.Bull) {}

  void PutBack(Station& station) const {
    station.Catalogue.CurrentTheater = index;
    station.MapPicture = picture;
    station.Elevations = elevations;
    station.View = view;
    station.Session.Bull = bull;
  }

 private:
  std::int16_t index;
  base::Picture picture;
  theaters::Elevations elevations;
  map::ViewState view;
  theaters::DownPoint bull;
};

}  // namespace

void SaveEverything(Program& program) {
  try {
    SaveVars(program.State);
  } catch (const SaveFailure& failure) {
    program.Log.LogLine(failure.what());
    if (program.State.FolderReadOnly) return;
    // The message about saving would lie over the box.
    program.Shown.ShowSavingMessage(false);
    program.Desk.Message(link::ProgramTitle(),
                         "The " + std::string(failure.What) + " could not be saved: " + failure.what() + ".",
                         base::MessageIcon::Exclamation);
  }
}

void LoadMapPicture(Program& program) {
  Station& station = program.State;
  const std::uint32_t start = program.Log.Time().TickCount();
  station.MapPicture = base::LoadPicture(TheaterPath(station, station.Catalogue.Current().Pic));
  program.Log.LogDuration("Loaded the map picture", start);
}

void ReadElevations(Program& program) {
  const std::uint32_t start = program.Log.Time().TickCount();
  try {
    if (program.State.Elevations.Read()) program.Log.LogDuration("Loaded the elevations", start);
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(std::string("The elevations are left out: ") + failure.what());
  }
}

std::span<const Step> TheaterDataSteps() { return theaterDataSteps; }

base::Changed ResetTheaterData(Program& program) {
  Station& station = program.State;
  const theaters::Theater& theater = station.Catalogue.Current();
  const theaters::DownPoint bull = theaters::CurrentBullseye(theater);
  map::ResetView(station.View, theater.Size, theater.PicSize, bull.X, bull.Y);
  // The bearing line begins at the bullseye until the person sets it elsewhere.
  station.View.AnchorViewX = station.View.BullsViewX;
  station.View.AnchorViewY = station.View.BullsViewY;
  map::RefreshPositions(station.View);
  RunSteps(theaterDataSteps, program);
  return base::Changed::Map | base::Changed::MiniMap | base::Changed::Zoom | base::Changed::CursorLine;
}

base::Changed ReloadTheater(Program& program) {
  LoadMapPicture(program);
  return ResetTheaterData(program) | base::Changed::NameMenus;
}

void SwitchTheater(Program& program, std::size_t index) {
  Station& station = program.State;
  if (index == 0 || index > station.Catalogue.Theaters.UpperBound()) return;
  // It lets pending events run, but for what the person does: that waits for the end of the switch.
  program.Shown.ShowSavingMessage(true);
  SaveEverything(program);
  program.Shown.ShowSavingMessage(false);

  const FormerTheater former(station);
  base::Changed changed = base::Changed::NameMenus;
  try {
    station.Catalogue.CurrentTheater = static_cast<std::int16_t>(index);
    changed |= ReloadTheater(program);
  } catch (const std::exception& failure) {
    former.PutBack(station);
    program.Log.LogLine(failure.what());
    program.Desk.Message("Error",
                         "An error ocurred while loading the initialization files for this Theater. Please check these "
                         "files, or reinstall the program. The former theater stays in use.",
                         base::MessageIcon::Critical);
  }
  program.Shown.Refresh(changed);
}

void ReloadEditedTheater(Program& program) {
  SaveEverything(program);
  try {
    LoadMapPicture(program);
  } catch (const std::exception& failure) {
    program.Log.LogLine(failure.what());
    program.Desk.Message("Error",
                         "An error ocurred while loading the initialization files for this Theater. Please check these "
                         "files, or reinstall the program. The former picture stays in use.",
                         base::MessageIcon::Critical);
  }
  program.Shown.Refresh(ResetTheaterData(program) | base::Changed::NameMenus);
}

base::Changed SelectBullseye(Program& program, std::size_t index) {
  theaters::Theater& theater = program.State.Catalogue.Current();
  if (index == 0 || index > theater.Bulls.UpperBound()) return base::Changed::Nothing;
  theater.CurrentBull = static_cast<std::int16_t>(index);
  return ReloadBulls(program.State) | base::Changed::NameMenus;
}

base::Changed ReloadBulls(Station& station, std::optional<map::Point> place) {
  const theaters::Theater& theater = station.Catalogue.Current();
  const std::optional<tape::BullseyePlace>& taped = station.Tapes.Bullseye;
  if (!place && taped && taped->IsPlace()) place = map::Point{taped->X, taped->Y};
  const theaters::DownPoint bull =
      place ? theaters::DownPoint{place->X, theater.Size - place->Y} : theaters::CurrentBullseye(theater);
  station.Session.Bull = bull;
  return map::PlaceBullseye(station.View, bull.X, bull.Y);
}

}  // namespace kestrel::core
