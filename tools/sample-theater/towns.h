#pragma once

#include <vector>

#include "sample-theater/terrain.h"

namespace kestrel::land {

/// A built-up area.
struct Town {
  double X = 0;       ///< pixels from the west
  double Y = 0;       ///< pixels from the north
  double Radius = 0;  ///< pixels
};
/// Pixels of a road, end to end.
struct RoadPoint {
  double X = 0;
  double Y = 0;
};
using Road = std::vector<RoadPoint>;

/// Low and level places near water, apart from each other; the largest first.
std::vector<Town> PlaceTowns(const Terrain& terrain);

/// Roads from each town to the nearest larger one and some more, along the easiest ground; none across the sea.
std::vector<Road> BuildRoads(const Terrain& terrain, const std::vector<Town>& towns);

}  // namespace kestrel::land
