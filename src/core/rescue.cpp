#include "core/rescue.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>

#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"

namespace kestrel::core {
namespace {

/// Milliseconds from a change to its rescue.
constexpr std::uint64_t Wait = 10'000;
/// A writing that takes no more milliseconds than this is not noticed.
constexpr std::uint64_t Unnoticed = 50;
constexpr std::uint64_t LongestWait = 24 * 3600 * 1000;

std::filesystem::path RescuePath(const Station& station, const KeptFile& kept) {
  return KeptPath(station, kept, ".rescue");
}

void Write(Program& program, const KeptFile& kept) {
  Station& station = program.State;
  FileKeeping& keeping = station.*kept.Keeping;
  try {
    const std::filesystem::path path = RescuePath(station, kept);
    base::MakeFolder(path.parent_path());
    kept.Write(station, path);
    keeping.SafeRevision = kept.Revision(station);
    keeping.ChangedAt.reset();
    keeping.RescueFailed = false;
  } catch (const base::RuntimeFailure& failure) {
    if (!keeping.RescueFailed) {
      program.Log.LogLine("The " + std::string(kept.What) + " are not rescued: " + failure.what());
    }
    keeping.RescueFailed = true;
    keeping.ChangedAt = program.Log.Time().TickCount();
  }
}

}  // namespace

void WriteRescue(Program& program, const KeptFile& kept) {
  Station& station = program.State;
  FileKeeping& keeping = station.*kept.Keeping;
  if (station.Closing || station.FolderReadOnly || station.Catalogue.CurrentTheater == 0) return;
  if (kept.Revision(station) == keeping.SafeRevision) {
    keeping.ChangedAt.reset();
    return;
  }
  const base::Clock& clock = program.Log.Time();
  const std::uint32_t now = clock.TickCount();
  if (!keeping.ChangedAt) keeping.ChangedAt = now;
  // The tick count wraps, and the difference with it.
  if (now - *keeping.ChangedAt < keeping.RescueAfter) return;
  Write(program, kept);
  const std::uint64_t took = clock.TickCount() - now;
  keeping.RescueAfter = static_cast<std::uint32_t>(std::clamp(Wait * took / Unnoticed, Wait, LongestWait));
}

void OfferRescue(Program& program, const KeptFile& kept) {
  Station& station = program.State;
  const std::filesystem::path path = RescuePath(station, kept);
  if (!base::FileExists(path)) return;
  const std::string what(kept.What);
  if (!Wants(program, "The last changes to the " + what + " of " + station.Catalogue.Current().DisplayName +
                          " were not saved when the station ended, but they were rescued.\n\nDo you want to take them "
                          "up? With No they are deleted.")) {
    if (!base::DeleteFile(path)) program.Log.LogLine(base::NameForMessage(path) + " could not be deleted");
    return;
  }
  const FileReading reading = kept.Read(station, path);
  for (const std::string& note : reading.Notes) program.Log.LogLine(note);
  if (reading.State == FileState::Refused) {
    Tell(program, "The rescued " + what + " cannot be read. Those that were saved stay.");
    return;
  }
  FileKeeping& keeping = station.*kept.Keeping;
  // What was saved may hold what a damaged rescue does not.
  if (reading.State == FileState::Damaged) keeping.KeepFormer = true;
  keeping.SafeRevision = ++kept.Revision(station);
}

}  // namespace kestrel::core
