#pragma once

#include <cstdint>
#include <vector>

#include "sample-theater/raster.h"

// Where water runs on a grid of heights, and how it wears the land down.
namespace kestrel::land {

/// The way of water from each cell.
struct Drainage {
  std::vector<std::uint32_t>
      Order;                   ///< all cells, from the lowest to the highest: the next cell down always comes earlier
  Raster<std::uint32_t> Next;  ///< the cell that a cell drains to; itself for sea and for the rim of the grid
  Raster<double> Area;         ///< cells that drain through a cell, itself included
};

/// Fills hollows of `heights` until water runs from every cell to the sea or the rim, and tells its way. `sea` is not 0
/// where a cell is water.
Drainage Drain(Raster<double>& heights, const Raster<std::uint8_t>& sea);

/// Lifts the land by `uplift` a step and lets the rivers cut into it, `steps` times: ranges with branching valleys come
/// out. Heights are in cells; sea and rim stay at 0.
void Erode(Raster<double>& heights, const Raster<std::uint8_t>& sea, const Raster<double>& uplift, int steps);

}  // namespace kestrel::land
