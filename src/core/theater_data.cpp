#include "core/theater_data.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "base/profile_file.h"
#include "core/area_rescue.h"
#include "core/settings.h"
#include "core/theater_areas.h"
#include "map/view_short_file.h"
#include "radio/frequency_file.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

void LoadViewShorts(Program& program) {
  Station& station = program.State;
  station.View.ViewShorts = map::DefaultViewShorts(station.Catalogue.Current().Size);
  const std::uint32_t start = program.Log.Time().TickCount();
  const std::filesystem::path path = DataPath(station, "_ViewShort.dat");
  if (!base::FileExists(path)) return;
  station.View.ViewShorts =
      map::ReadViewShorts(base::ReadWholeFile(path, base::MaxTextFileBytes), station.View.ViewShorts);
  program.Log.LogDuration("Loaded the view shortcuts", start);
}

void SaveViewShorts(Station& station) {
  const std::filesystem::path path = DataPath(station, "_ViewShort.dat");
  base::MakeFolder(path.parent_path());
  base::WriteWholeFile(path, map::WriteViewShorts(station.View.ViewShorts));
}

void LoadFrequencies(Program& program) {
  Station& station = program.State;
  station.Frequencies = {};
  const std::uint32_t start = program.Log.Time().TickCount();
  const std::filesystem::path path = DataPath(station, "_Frequencies.dat");
  if (!base::FileExists(path)) return;
  std::vector<std::string> notes;
  station.Frequencies = radio::ReadFrequencies(base::ProfileFile::Load(path), notes);
  for (const std::string& note : notes) program.Log.LogLine(base::NameForMessage(path) + ", " + note);
  program.Log.LogDuration("Loaded the frequencies", start);
}

void SaveFrequencies(Station& station) {
  const std::filesystem::path path = DataPath(station, "_Frequencies.dat");
  base::MakeFolder(path.parent_path());
  base::WriteWholeFile(path, radio::WriteFrequencies(station.Frequencies));
}

/// The current theater has these heights from now on; their file is read when the pointer first needs it.
void LoadElevation(Program& program) {
  Station& station = program.State;
  station.Elevations = {};
  station.Elevations.SetSource(DataPath(station, "_Elevation.dat"), station.Catalogue.Current().Size);
}

constexpr TheaterData rows[] = {
    {"areas", LoadAreas, SaveAreas, "areas", base::Changed::Areas | base::Changed::Map},
    {.What = "rescued areas", .Load = OfferRescuedAreas, .Shows = base::Changed::Areas | base::Changed::Map},
    {"saved views", LoadViewShorts, SaveViewShorts, "kept views"},
    {"frequencies", LoadFrequencies, SaveFrequencies},
    {.What = "elevations", .Load = LoadElevation, .Shows = base::Changed::CursorLine},
};

void LeaveOut(Program& program, std::string_view what, const std::exception& failure) {
  program.Log.LogLine("The " + std::string(what) + " are left out: " + failure.what());
}

}  // namespace

std::filesystem::path DataPath(const Station& station, std::string_view ending) {
  return TheaterPath(station, theaters::DataFile(station.Catalogue.Current(), ending));
}

std::span<const TheaterData> TheaterDataRows() { return rows; }

base::Changed LoadTheaterData(Program& program) {
  base::Changed shows = base::Changed::Nothing;
  for (const TheaterData& row : rows) {
    if (row.Load == nullptr) continue;
    try {
      row.Load(program);
    } catch (const base::RuntimeFailure& failure) {
      LeaveOut(program, row.What, failure);
    }
    shows |= row.Shows;
  }
  return shows;
}

void ReadElevations(Program& program) {
  const std::uint32_t start = program.Log.Time().TickCount();
  try {
    if (program.State.Elevations.Read()) program.Log.LogDuration("Loaded the elevations", start);
  } catch (const base::RuntimeFailure& failure) {
    LeaveOut(program, "elevations", failure);
  }
}

std::vector<Unsaved> SaveAll(Station& station) {
  std::vector<Unsaved> failures;
  const auto attempt = [&](std::string_view what, auto save) {
    try {
      save(station);
    } catch (const std::exception& failure) {
      failures.push_back({what, failure.what()});
    }
  };
  for (const TheaterData& row : rows) {
    if (row.Save != nullptr && station.Catalogue.CurrentTheater != 0) attempt(row.Kept, row.Save);
  }
  if (station.FolderReadOnly) failures.clear();
  attempt("settings", SaveVars);
  return failures;
}

}  // namespace kestrel::core
