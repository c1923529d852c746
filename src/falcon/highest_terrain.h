#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "falcon/data_file.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxHighestTerrainBytes = std::size_t{8} << 20;

/// The highest terrain of each cell of a coarse grid over a theater (theater.mea). Row 0 is the southern edge, though
/// the file begins in the north.
struct HighestTerrain {
  std::int32_t Width = 0;
  std::int32_t Height = 0;
  std::vector<std::int16_t> Feet{};

  /// `column`, `row`: within the grid.
  std::int16_t At(std::int32_t column, std::int32_t row) const {
    return Feet[static_cast<std::size_t>(row) * static_cast<std::size_t>(Width) + static_cast<std::size_t>(column)];
  }
};

/// `width`, `height`: as theater.map tells them; where the file has another size it is taken for a square.
/// RuntimeFailure, naming the file, when it is none.
HighestTerrain ReadHighestTerrain(const DataFile& file, std::uint32_t width, std::uint32_t height);

}  // namespace kestrel::falcon
