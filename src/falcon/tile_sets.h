#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "falcon/data_file.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxTileSetsBytes = std::size_t{32} << 20;

/// The sets of tiles that the ground is painted with (texture.bin).
struct TileSets {
  static constexpr std::uint8_t Water = 1;

  /// For each set the kind of ground: 1 water, 2 river, 3 swamp, 4 plains ... 14 station; 0 is none.
  std::vector<std::uint8_t> Kinds{};
  std::uint32_t TileCount = 0;  ///< of all sets
};

/// RuntimeFailure, naming file and set, when the sets do not end where the file does or have not as many tiles as it
/// tells.
TileSets ReadTileSets(const DataFile& file);

}  // namespace kestrel::falcon
