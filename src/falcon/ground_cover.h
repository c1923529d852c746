#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "falcon/data_file.h"

namespace kestrel::falcon {

/// Largest ground cover that is read: 8192 by 8192 map units.
inline constexpr std::size_t MaxGroundCoverBytes = (std::size_t{64} << 20) + 4;

/// What covers each map unit of a theater (<theater>.thr in the campaign folder). Y is north.
struct GroundCover {
  static constexpr std::uint8_t Water = 0;

  std::int32_t Width = 0;
  std::int32_t Height = 0;
  /// As in the file: column by column from the west, each from the south. The lower four bits are the cover (0 water, 1
  /// bog, 2 barren, 3 plain, 4 brush, 5 light and 6 heavy forest, 7 city), then two bits of relief, road and railway.
  std::vector<std::uint8_t> Cells{};

  /// The cover at a place; outside there is water.
  std::uint8_t CoverAt(std::int32_t x, std::int32_t y) const;
  bool IsWater(std::int32_t x, std::int32_t y) const { return CoverAt(x, y) == Water; }
};

/// RuntimeFailure, naming the file, when its size is not that of the cells that it tells of.
GroundCover ReadGroundCover(const DataFile& file);

}  // namespace kestrel::falcon
