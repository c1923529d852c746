#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/little_endian.h"

// The files of a theater's terrain, written from plans of them.
namespace kestrel::test {

struct TerrainMapPlan {
  /// Blocks on a side of each level, the finest first.
  std::vector<std::uint32_t> Levels = {8, 4, 2, 1, 1, 1};
  std::uint32_t HighestWidth = 4, HighestHeight = 4;
  int LastNear = 2;
  /// What stands behind the levels, 4 bytes each; a file may end before any of them.
  std::string Rest{};
};

inline std::string TerrainMapBytes(const TerrainMapPlan& plan) {
  std::string bytes = BytesF32(819.995F) + Bytes4(plan.HighestWidth) + Bytes4(plan.HighestHeight) +
                      BytesF32(3.811e-5F) + Bytes4(static_cast<std::int64_t>(plan.Levels.size())) +
                      Bytes4(plan.LastNear) + Bytes4(4);
  bytes += std::string(std::size_t{256} * 4, '\x61');
  for (const std::uint32_t blocks : plan.Levels) bytes += Bytes4(blocks) + Bytes4(blocks);
  return bytes + plan.Rest;
}
/// Behind the levels: flags, longitude and latitude of the corner.
inline std::string CornerBytes(std::uint32_t flags, float longitude, float latitude) {
  return Bytes4(flags) + BytesF32(longitude) + BytesF32(latitude);
}

/// A theater of blocks of 16 by 16 posts.
struct BlocksPlan {
  std::size_t Blocks = 2;  ///< on a side
  bool Large = false;      ///< posts of 9 bytes
  /// By row from the south and column from the west.
  std::function<int(std::size_t row, std::size_t column)> Height = [](std::size_t row, std::size_t column) {
    return static_cast<int>(100 * row + column);
  };
  std::function<std::uint32_t(std::size_t row, std::size_t column)> Tile = [](std::size_t, std::size_t) { return 0; };
};

/// The table of blocks and the posts. Blocks alike are written once.
inline std::pair<std::string, std::string> BlockFiles(const BlocksPlan& plan) {
  std::string table, posts;
  std::map<std::string, std::size_t> written;
  for (std::size_t block = 0; block < plan.Blocks * plan.Blocks; ++block) {
    std::string bytes;
    for (std::size_t n = 0; n < 256; ++n) {
      const std::size_t row = block / plan.Blocks * 16 + n / 16, column = block % plan.Blocks * 16 + n % 16;
      const std::uint32_t tile = plan.Tile(row, column);
      bytes += plan.Large ? Bytes4(tile) : Bytes2(static_cast<int>(tile));
      bytes += Bytes2(plan.Height(row, column)) + "\x71\x72\x73";
    }
    const auto [place, isNew] = written.try_emplace(bytes, posts.size());
    if (isNew) posts += bytes;
    table += Bytes4(static_cast<std::int64_t>(place->second));
  }
  return {table, posts};
}

/// A grid of numbers of 16 bits, the first row first.
inline std::string GridBytes(std::size_t rows, std::size_t columns,
                             const std::function<int(std::size_t row, std::size_t column)>& value) {
  std::string bytes;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t column = 0; column < columns; ++column) bytes += Bytes2(value(row, column));
  }
  return bytes;
}

struct TilePlan {
  unsigned Areas = 0, Paths = 0;
};
struct TileSetPlan {
  unsigned Kind = 1;
  std::vector<TilePlan> Tiles;
};

inline std::string TileSetsBytes(const std::vector<TileSetPlan>& sets) {
  std::size_t tiles = 0;
  std::string bytes;
  for (const TileSetPlan& set : sets) {
    tiles += set.Tiles.size();
    bytes += Bytes4(static_cast<std::int64_t>(set.Tiles.size())) + Bytes1(set.Kind);
    for (const TilePlan& tile : set.Tiles) {
      bytes += std::string("HTILE001.PCX") + std::string(8, '\0') + Bytes4(tile.Areas) + Bytes4(tile.Paths) +
               std::string(16 * tile.Areas, '\x81') + std::string(24 * tile.Paths, '\x82');
    }
  }
  return Bytes4(static_cast<std::int64_t>(sets.size())) + Bytes4(static_cast<std::int64_t>(tiles)) + bytes;
}

/// Ground cover, column by column from the west, each from the south.
inline std::string GroundCoverBytes(int width, int height, const std::function<unsigned(int x, int y)>& cell) {
  std::string bytes = Bytes2(width) + Bytes2(height);
  for (int x = 0; x < width; ++x) {
    for (int y = 0; y < height; ++y) bytes += Bytes1(cell(x, y));
  }
  return bytes;
}

}  // namespace kestrel::test
