#include "core/area_rescue.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "areas/area_file.h"
#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"
#include "core/theater_areas.h"
#include "core/theater_data.h"

namespace kestrel::core {
namespace {

/// Milliseconds from a change to its rescue.
constexpr std::uint64_t Wait = 10'000;
/// A writing that takes no more milliseconds than this is not noticed.
constexpr std::uint64_t Unnoticed = 50;
constexpr std::uint64_t LongestWait = 24 * 3600 * 1000;

std::filesystem::path RescuePath(const Station& station) { return DataPath(station, "_Areas.rescue"); }

void WriteRescue(Program& program) {
  Station& station = program.State;
  AreaKeeping& keeping = station.AreaFiles;
  try {
    const std::filesystem::path path = RescuePath(station);
    base::MakeFolder(path.parent_path());
    areas::WriteAreaFile(path, station.Areas);
    keeping.SafeRevision = station.Areas.Revision;
    keeping.ChangedAt.reset();
    keeping.RescueFailed = false;
  } catch (const base::RuntimeFailure& failure) {
    if (!keeping.RescueFailed) program.Log.LogLine(std::string("The areas are not rescued: ") + failure.what());
    keeping.RescueFailed = true;
    keeping.ChangedAt = program.Log.Time().TickCount();
  }
}

}  // namespace

void RescueAreas(Program& program) {
  const Station& station = program.State;
  AreaKeeping& keeping = program.State.AreaFiles;
  if (station.Closing || station.FolderReadOnly || station.Catalogue.CurrentTheater == 0) return;
  if (station.Areas.Revision == keeping.SafeRevision) {
    keeping.ChangedAt.reset();
    return;
  }
  const base::Clock& clock = program.Log.Time();
  const std::uint32_t now = clock.TickCount();
  if (!keeping.ChangedAt) keeping.ChangedAt = now;
  // The tick count wraps, and the difference with it.
  if (now - *keeping.ChangedAt < keeping.RescueAfter) return;
  WriteRescue(program);
  const std::uint64_t took = clock.TickCount() - now;
  keeping.RescueAfter = static_cast<std::uint32_t>(std::clamp(Wait * took / Unnoticed, Wait, LongestWait));
}

void OfferRescuedAreas(Program& program) {
  Station& station = program.State;
  const std::filesystem::path path = RescuePath(station);
  if (!base::FileExists(path)) return;
  const std::string name = base::NameForMessage(path);
  if (!Wants(program, "The last changes to the areas of " + station.Catalogue.Current().DisplayName +
                          " were not saved when the station ended, but they were rescued.\n\nDo you want to take them "
                          "up? With No they are deleted.")) {
    if (!base::DeleteFile(path)) program.Log.LogLine(name + " could not be deleted");
    return;
  }
  areas::AreaFile file = areas::ReadAreaFile(path, areas::AreaFileKind::Theater);
  const areas::AreaFileState state = file.State;
  if (state == areas::AreaFileState::Refused) {
    LogAreaFile(program, name, state, 0);
    Tell(program, "The rescued areas cannot be read. Those that were saved stay.");
    return;
  }
  // What was saved may hold what a damaged rescue does not.
  if (state == areas::AreaFileState::Damaged) station.AreaFiles.KeepFormer = true;
  LogAreaFile(program, name, state, areas::ReplaceAreas(station.Areas, std::move(file)));
  ++station.Areas.Revision;
  station.AreaFiles.SafeRevision = station.Areas.Revision;
}

}  // namespace kestrel::core
