#include "core/theater_areas.h"

#include <cstdint>
#include <filesystem>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"
#include "core/theater_data.h"

namespace kestrel::core {

void LoadAreas(Program& program) {
  Station& station = program.State;
  areas::ReplaceAreas(station.Areas, {});
  ++station.Areas.Revision;
  station.AreaFiles = {.SafeRevision = station.Areas.Revision};
  const std::filesystem::path path = DataPath(station, "_Areas.dat");
  if (!base::FileExists(path)) return;
  const std::uint32_t start = program.Log.Time().TickCount();
  // Until it has been read.
  station.AreaFiles.KeepFormer = true;
  areas::AreaFile file = areas::ReadAreaFile(path, areas::AreaFileKind::Theater);
  const areas::AreaFileState state = file.State;
  station.AreaFiles.KeepFormer = state != areas::AreaFileState::Whole;
  const std::size_t homeless = areas::ReplaceAreas(station.Areas, std::move(file));
  program.Log.LogDuration("Loaded the areas", start);
  LogAreaFile(program, base::NameForMessage(path), state, homeless);
  if (state == areas::AreaFileState::Refused) Tell(program, "Wrong Area File version. Disregarding...");
}

void SaveAreas(Station& station) {
  const std::filesystem::path path = DataPath(station, "_Areas.dat");
  base::MakeFolder(path.parent_path());
  if (station.AreaFiles.KeepFormer && base::FileExists(path)) {
    base::CopyOver(path, DataPath(station, "_Areas.dat.old"));
  }
  areas::WriteAreaFile(path, station.Areas);
  station.AreaFiles.KeepFormer = false;
  station.AreaFiles.SafeRevision = station.Areas.Revision;
  const std::filesystem::path rescue = DataPath(station, "_Areas.rescue");
  // It would be offered in place of newer areas.
  if (!base::DeleteFile(rescue)) throw base::RuntimeFailure(base::NameForMessage(rescue) + " cannot be deleted");
}

void LogAreaFile(Program& program, const std::string& name, areas::AreaFileState state, std::size_t homeless) {
  if (state == areas::AreaFileState::Refused) program.Log.LogLine(name + " is no file of areas of this kind");
  if (state == areas::AreaFileState::Damaged) {
    program.Log.LogLine(name + " is damaged: of its areas there is what it holds");
  }
  if (homeless == 0) return;
  program.Log.LogLine(name +
                      ": groups that name no folder and are now in the Temporary Folder: " + std::to_string(homeless));
}

}  // namespace kestrel::core
