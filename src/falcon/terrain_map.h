#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "falcon/data_file.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxTerrainMapBytes = 64 << 10;

/// The description of a theater's terrain (theater.map).
struct TerrainMap {
  /// How many blocks of 16 by 16 posts a level of detail has. Level 2 has a post for each map unit.
  struct Level {
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
  };

  float PostFeet = 0;                     ///< between the posts of level 0
  std::uint32_t HighestTerrainWidth = 0;  ///< cells of theater.mea
  std::uint32_t HighestTerrainHeight = 0;
  std::int32_t LastNearLevel = 0;  ///< the last one whose posts name tiles of texture.bin
  std::vector<Level> Levels{};
  bool LargePosts = false;         ///< posts of 9 bytes and not of 7, as the file tells it
  bool HasCorner = false;          ///< the corner is the file's and not the usual one
  double Longitude = 119.1148778;  ///< of the south-western corner, degrees; the usual one where the file tells none
  double Latitude = 33.775918333;

  /// Map units on a side.
  std::int32_t Size() const { return static_cast<std::int32_t>(Levels[2].Width * 16); }
};

/// RuntimeFailure, naming the file, when it is cut or its theater has no possible size: the three finest levels are
/// there, and the third is square, of at most LargestTerrain.
TerrainMap ReadTerrainMap(const DataFile& file);

}  // namespace kestrel::falcon
