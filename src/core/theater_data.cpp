#include "core/theater_data.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "core/frequency_files.h"
#include "core/kept_file.h"
#include "core/rescue.h"
#include "core/settings.h"
#include "core/theater_areas.h"
#include "map/view_short_file.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

FileReading ReadViewShorts(Station& station, const std::filesystem::path& path) {
  const std::string bytes = base::ReadWholeFile(path, base::MaxTextFileBytes);
  station.View.ViewShorts = map::ReadViewShorts(bytes, station.View.ViewShorts);
  return {map::WriteViewShorts(station.View.ViewShorts) == bytes ? FileState::Whole : FileState::Damaged};
}

constexpr KeptFile keptViewShorts = {
    .What = "view shortcuts",
    .Stem = "_ViewShort",
    .Keeping = &Station::ViewFiles,
    .Reset =
        [](Station& station) { station.View.ViewShorts = map::DefaultViewShorts(station.Catalogue.Current().Size); },
    .Read = ReadViewShorts,
    .Write =
        [](const Station& station, const std::filesystem::path& path) {
          base::WriteWholeFile(path, map::WriteViewShorts(station.View.ViewShorts));
        },
};

template <const KeptFile& kept>
void Load(Program& program) {
  LoadKept(program, kept);
}

template <const KeptFile& kept>
void Offer(Program& program) {
  OfferRescue(program, kept);
}

template <const KeptFile& kept>
void Save(Station& station) {
  SaveKept(station, kept);
}

/// The current theater has these heights from now on; their file is read when the pointer first needs it.
void LoadElevation(Program& program) {
  Station& station = program.State;
  station.Elevations = {};
  station.Elevations.SetSource(DataPath(station, "_Elevation.dat"), station.Catalogue.Current().Size);
}

constexpr TheaterData rows[] = {
    {"areas", Load<KeptAreas>, Save<KeptAreas>, "areas", base::Changed::Areas | base::Changed::Map},
    {.What = "rescued areas", .Load = Offer<KeptAreas>, .Shows = base::Changed::Areas | base::Changed::Map},
    {"saved views", Load<keptViewShorts>, Save<keptViewShorts>, "kept views"},
    {"frequencies", Load<KeptFrequencies>, Save<KeptFrequencies>, "frequencies",
     base::Changed::Frequencies | base::Changed::Map},
    {.What = "rescued frequencies",
     .Load = Offer<KeptFrequencies>,
     .Shows = base::Changed::Frequencies | base::Changed::Map},
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

void RescueChanges(Program& program) {
  for (const KeptFile* kept : {&KeptAreas, &KeptFrequencies}) WriteRescue(program, *kept);
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
