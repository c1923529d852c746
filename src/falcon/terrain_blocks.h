#pragma once

#include <filesystem>

#include "falcon/data_file.h"
#include "falcon/terrain.h"
#include "falcon/terrain_map.h"
#include "falcon/tile_sets.h"

namespace kestrel::falcon {

/// Largest table of blocks: a theater of LargestTerrain.
inline constexpr std::size_t MaxBlockTableBytes = std::size_t{LargestTerrain / 16} * (LargestTerrain / 16) * 4;

/// Reads the third level of detail of a theater: the table of its blocks of 16 by 16 posts (theater.O2) and the posts
/// (theater.L2), a block at a time. Whether posts have 7 or 9 bytes is told by where the last block ends; only where it
/// ends in neither way by theater.map. Sea is where the posts' tiles are of water; where `tiles` is missing, or shows
/// no water where most of the height 0 is, sea is what has the height 0 and the tile that most of the height 0 has.
/// RuntimeFailure, naming file and block, when the table is not that of the theater or leads outside of the posts.
Terrain ReadTerrainBlocks(const TerrainMap& map, const DataFile& table, const std::filesystem::path& posts,
                          const TileSets* tiles, const Progress& progress);

}  // namespace kestrel::falcon
