#pragma once

#include <cstddef>
#include <string>

#include "areas/area.h"
#include "areas/area_changes.h"
#include "areas/area_tree.h"
#include "base/colour.h"

// What is done to the list of one group's areas. Each procedure is one step of the history; a group or area that is not
// there changes nothing. An area's check mark is its Visible.
namespace kestrel::areas {

/// "Region", "Circle", "Icon", "Text"; empty for any other, a flight plan too.
std::string AreaTypeToName(AreaType type);

/// Each change of the group's name while it is typed; those right behind one another are one step, until
/// AreaHistory::Settle.
void RenameGroup(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, const std::string& name);
/// Puts an area at the end of the group; its index, 0 when there is no such group.
std::size_t AppendArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, Area area);
/// Puts an area in the place of another. No editor holds it from then on.
void ReplaceArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, Area area);
void DeleteArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index);
/// Moves one area among those of its group; its index then, 0 when it stands there already.
std::size_t MoveArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, Way way);
void CheckArea(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t index, bool checked);
void CheckAllAreas(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, bool checked);
/// Puts copies of the checked areas at the end of group `target`, which may be the same; how many.
std::size_t CopyChecked(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, std::size_t target);
void ColourChecked(AreaCatalogue& catalogue, AreaHistory& history, std::size_t group, base::Colour colour);

}  // namespace kestrel::areas
