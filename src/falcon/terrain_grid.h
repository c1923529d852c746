#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>

#include "falcon/data_file.h"
#include "falcon/ground_cover.h"
#include "falcon/highest_terrain.h"
#include "falcon/terrain.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxTerrainGridHeaderBytes = 64 << 10;

/// What the text beside a grid of heights (.HDR) tells of it.
struct TerrainGridHeader {
  std::int32_t Size = 0;      ///< rows and columns
  std::uint64_t Skipped = 0;  ///< bytes before the first row
  bool BigEndian = false;
};

/// RuntimeFailure, naming the file and the key, for what is no square grid of 16 bits in one band.
TerrainGridHeader ReadTerrainGridHeader(const DataFile& file);

/// What tells in which order the rows of a grid stand, where there is any of it.
struct TerrainGridWitnesses {
  const GroundCover* Cover = nullptr;  ///< is asked first: water is not above the sea
  const HighestTerrain* Highest = nullptr;
};

/// Reads a grid of heights (TERRAIN*.BIL), a row at a time. Without a header it is a square of little-endian numbers.
/// The first row is the northern edge, unless the witnesses are contradicted less by the other order. Sea is where the
/// height is 0. RuntimeFailure, naming the file, when its size is not that of the grid.
Terrain ReadTerrainGrid(const std::filesystem::path& path, const std::optional<TerrainGridHeader>& header,
                        const TerrainGridWitnesses& witnesses, const Progress& progress);

}  // namespace kestrel::falcon
