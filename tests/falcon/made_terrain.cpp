// The ground, as each generation's files hold it.

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "falcon/made_files.h"
#include "falcon/made_world.h"
#include "falcon/terrain_writer.h"

namespace kestrel::made {
namespace {

/// Map units on a side of a cell of "theater.mea".
constexpr int HighestCell = 8;
/// Samples of the height map on a side of a map unit.
constexpr int Samples = 8;

/// The description; only that of BMS tells the corner.
std::string MapBytes(Generation which) {
  // Four posts of the finest level to a map unit, blocks of 16 posts.
  return test::TerrainMapBytes(
      {.Levels = {16, 8, 4, 2, 1, 1},
       .HighestWidth = Size / HighestCell,
       .HighestHeight = Size / HighestCell,
       .Rest = which == Generation::Falcon40
                   ? ""
                   : test::CornerBytes(0, static_cast<float>(Longitude), static_cast<float>(Latitude))});
}

/// The first row is the northern one.
std::string HighestBytes() {
  return test::GridBytes(Size / HighestCell, Size / HighestCell, [](std::size_t row, std::size_t column) {
    int highest = 0;
    for (int y = 0; y < HighestCell; ++y) {
      for (int x = 0; x < HighestCell; ++x) {
        highest = std::max(highest, HeightAt(static_cast<int>(column) * HighestCell + x,
                                             Size - HighestCell * (static_cast<int>(row) + 1) + y));
      }
    }
    return highest;
  });
}

/// Heights whose first row is the northern one, `samples` on a side of a map unit.
std::string GridFromTheNorth(int samples) {
  const auto side = static_cast<std::size_t>(Size * samples);
  return test::GridBytes(side, side, [samples](std::size_t row, std::size_t column) {
    return HeightAt(static_cast<int>(column) / samples, Size - 1 - static_cast<int>(row) / samples);
  });
}

void AddBlocks(Files& files, const std::string& folder) {
  // Tiles of the sea are of set 0, those of the land of set 1.
  const auto [table, posts] = test::BlockFiles(
      {.Blocks = Size / 16,
       .Height = [](std::size_t row,
                    std::size_t column) { return HeightAt(static_cast<int>(column), static_cast<int>(row)); },
       .Tile = [](std::size_t row,
                  std::size_t column) { return IsSea(static_cast<int>(column), static_cast<int>(row)) ? 3U : 16U; }});
  files[folder + "/terrain/THEATER.O2"] = table;
  files[folder + "/terrain/THEATER.L2"] = posts;
  files[folder + "/terrain/THEATER.MEA"] = HighestBytes();
  files[folder + "/texture/TEXTURE.BIN"] = test::TileSetsBytes({{1, {{1, 0}, {0, 1}, {0, 0}, {0, 0}}}, {4, {{0, 0}}}});
}

}  // namespace

void AddTerrain(Files& files, const std::string& folder, Generation which) {
  if (which != Generation::Bms438) files[folder + "/terrain/THEATER.MAP"] = MapBytes(which);
  const std::string header =
      "BYTEORDER      I\nLAYOUT         BIL\nNROWS          64\nNCOLS          64\nNBANDS         1\n"
      "NBITS          16\nULXMAP         0\nULYMAP         0\nXDIM           1\nYDIM           1\n";
  switch (which) {
    case Generation::Falcon40:
      AddBlocks(files, folder);
      break;
    case Generation::Bms433:
      files[folder + "/terrain/TERRAIN.BIL"] = GridFromTheNorth(1);
      files[folder + "/terrain/TERRAIN.HDR"] = header;
      files[folder + "/terrain/Theater.MEA"] = HighestBytes();
      files[folder + "/terrain/Theater.O2"] = "left over from older files";
      break;
    case Generation::Bms435:
      files[folder + "/terrain/Terrain.BIL"] = GridFromTheNorth(1);
      files[folder + "/terrain/Terrain.HDR"] = header;
      break;
    case Generation::Bms437:
      files[folder + "/terrain/TERRAIN_MADE.BIL"] = GridFromTheNorth(1);
      // What another set of tiles would show.
      files[folder + "/terrain/TERRAIN.BIL"] = test::GridBytes(Size, Size, [](std::size_t, std::size_t) { return 7; });
      break;
    case Generation::Bms438:
      files[folder + "/NewTerrain/HeightMaps/HeightMap.raw"] = GridFromTheNorth(Samples);
      files[folder + "/NewTerrain/Theater.txt"] =
          "Theater name=" + TheaterName +
          "\r\nTheater size in KM=64\r\nMap size in pixels=512\r\nCenter latitude=-29.0\r\nCenter longitude=34.75\r\n"
          "Projection string=+proj=tmerc +lon_0=34.75 +ellps=WGS84 +k=0.9996 +units=m +x_0=32000 +y_0=3240000\r\n";
      break;
  }
}

}  // namespace kestrel::made
