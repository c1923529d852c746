#pragma once

#include <optional>
#include <string_view>

#include "areas/area.h"

namespace kestrel::areas {

/// A part of the map, map units.
struct AreaBox {
  double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;
};

/// What the areas of a folder or group (a key of the tree) take of the map: of those that are marked, with their group,
/// or of all when none is. Nothing when no area of it has a place.
std::optional<AreaBox> BoxOf(const AreaCatalogue& catalogue, std::string_view key);

}  // namespace kestrel::areas
