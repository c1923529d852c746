#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "falcon/ground_cover.h"

namespace kestrel::falcon {

/// Most map units on a side of a theater that is read.
inline constexpr std::int32_t LargestTerrain = 8192;

/// The heights of a theater, one for each map unit, as every generation's files fill it. Row 0 is the southern edge,
/// each row runs from west to east.
struct Terrain {
  std::int32_t Size = 0;                ///< map units on a side
  std::vector<std::int16_t> Heights{};  ///< feet above the sea
  std::vector<std::uint8_t> Sea{};      ///< 1 where there is sea, as far as the same file tells it; else 0
  std::int16_t Lowest = 0;
  std::int16_t Highest = 0;

  std::size_t IndexOf(std::int32_t x, std::int32_t y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(Size) + static_cast<std::size_t>(x);
  }
  /// The height at a place in map units, Y north; nothing outside.
  std::optional<std::int16_t> HeightAt(std::int32_t x, std::int32_t y) const;
};

/// A terrain of `size` map units, flat and without sea. `size`: 1 to LargestTerrain.
Terrain FlatTerrain(std::int32_t size);
/// Sets the lowest and highest from the heights.
void FindExtremes(Terrain& terrain);
/// Takes the sea from the theater's ground cover, which tells it better than any file of heights.
void TakeSea(Terrain& terrain, const GroundCover& cover);

/// Told while a large file is read: what is done of how much. What it throws ends the reading and passes through.
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

}  // namespace kestrel::falcon
