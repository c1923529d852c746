#pragma once

#include <string>

#include "areas/area.h"
#include "areas/area_changes.h"
#include "base/profile_file.h"

// The route, threats and lines of a mission of the simulator, as its planner writes them into an ini file.
namespace kestrel::areas {

/// The mission's title. An empty one is a reason to warn, not to stop.
std::string MissionTitle(const base::ProfileFile& mission);

/// Adds a folder named as the mission, without a name when it has no title, with a group of its steerpoints, one for
/// each threat and one of its lines, as one step. What is missing in the file, or is no number, is left out.
void ImportMission(AreaCatalogue& catalogue, AreaHistory& history, const base::ProfileFile& mission);

}  // namespace kestrel::areas
