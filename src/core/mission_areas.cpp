#include "core/mission_areas.h"

#include <exception>

#include "areas/mission_import.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "core/tell.h"

namespace kestrel::core {

void ImportMissionAreas(Program& program) {
  const auto file = ChooseFile(program, "Open INI File", "Falcon ini files|*.ini");
  if (!file) return;
  Station& station = program.State;
  try {
    const base::ProfileFile mission = base::ProfileFile::Load(*file);
    if (areas::MissionTitle(mission).empty()) {
      Tell(program, "It doesn't seem to be a valid Falcon BMS ini file.");
    }
    areas::ImportMission(station.Areas, station.AreaSteps, mission);
  } catch (const std::exception& failure) {
    TellFailure(program, "The areas cannot be read from \"" + base::NameForMessage(*file) + "\": ", failure);
    return;
  }
  program.Shown.Refresh(base::Changed::Areas | base::Changed::Map);
}

}  // namespace kestrel::core
