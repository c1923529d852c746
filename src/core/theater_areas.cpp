#include "core/theater_areas.h"

#include <utility>

#include "base/files.h"

namespace kestrel::core {
namespace {

constexpr FileState StateOf(areas::AreaFileState state) {
  if (state == areas::AreaFileState::Refused) return FileState::Refused;
  return state == areas::AreaFileState::Damaged ? FileState::Damaged : FileState::Whole;
}

FileReading Read(Station& station, const std::filesystem::path& path) {
  areas::AreaFile file = areas::ReadAreaFile(path, areas::AreaFileKind::Theater);
  const areas::AreaFileState state = file.State;
  const bool refused = state == areas::AreaFileState::Refused;
  const std::size_t homeless = refused ? 0 : areas::ReplaceAreas(station.Areas, std::move(file));
  return {StateOf(state), AreaFileNotes(path, state, homeless)};
}

}  // namespace

constinit const KeptFile KeptAreas = {
    .What = "areas",
    .Stem = "_Areas",
    .Keeping = &Station::AreaFiles,
    .Reset = [](Station& station) { areas::ReplaceAreas(station.Areas, {}); },
    .Read = Read,
    .Write = [](const Station& station,
                const std::filesystem::path& path) { areas::WriteAreaFile(path, station.Areas); },
    .Revision = [](Station& station) -> std::uint64_t& { return station.Areas.Revision; },
    .Refusal = "Wrong Area File version. Disregarding...",
};

std::vector<std::string> AreaFileNotes(const std::filesystem::path& path, areas::AreaFileState state,
                                       std::size_t homeless) {
  const std::string name = base::NameForMessage(path);
  std::vector<std::string> notes;
  if (state == areas::AreaFileState::Refused) notes.push_back(name + " is no file of areas of this kind");
  if (state == areas::AreaFileState::Damaged) {
    notes.push_back(name + " is damaged: of its areas there is what it holds");
  }
  if (homeless != 0) {
    notes.push_back(name +
                    ": groups that name no folder and are now in the Temporary Folder: " + std::to_string(homeless));
  }
  return notes;
}

}  // namespace kestrel::core
