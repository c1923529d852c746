#pragma once

#include <vector>

#include "sample-theater/raster.h"

namespace kestrel::land {

/// A bend of a river.
struct RiverPoint {
  double X = 0;      ///< pixels from the west
  double Y = 0;      ///< pixels from the north
  double Width = 0;  ///< pixels
};
using River = std::vector<RiverPoint>;  ///< from the source down to a larger river or the sea

/// The land of the sample theater.
struct Terrain {
  Raster<float> Height;  ///< feet, one for each pixel of the picture; below 0 is sea and its depth, land is at least 1
  Raster<float> Shore;   ///< how far inland: above 0 land, below 0 sea; near the coast about in parts of the side
  std::vector<River> Rivers;  ///< those with the highest sources first
};

/// Height of the highest summit, feet.
inline constexpr double SummitFeet = 8000;

/// Makes the land for a picture of `side` by `side` pixels (a multiple of 8, at least 64). A smaller side gives the
/// same coasts with less in them. The same on every machine.
Terrain MakeTerrain(int side);

}  // namespace kestrel::land
