#pragma once

#include <cstdint>
#include <vector>

#include "sample-theater/terrain.h"
#include "sample-theater/towns.h"

namespace kestrel::land {

/// A picture of three bytes a pixel: red, green, blue; rows from the north.
struct Image {
  int Side = 0;
  std::vector<std::uint8_t> Bytes;
};

/// Paints the map: sea by depth, land by height with light from the north-west, rivers, roads and towns. Light and of
/// low saturation throughout, so that plots and labels in red, blue and black stand out.
Image PaintMap(const Terrain& terrain, const std::vector<Town>& towns, const std::vector<Road>& roads);

}  // namespace kestrel::land
