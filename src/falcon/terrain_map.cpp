#include "falcon/terrain_map.h"

#include <cmath>

#include "base/bytes.h"
#include "falcon/terrain.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t LevelsAt = 1052;
constexpr std::size_t LevelBytes = 8;
constexpr std::uint32_t LargestLevel = LargestTerrain / 16;
constexpr std::uint32_t LargePostsFlag = 1;

/// What stands behind the levels, as far as the file goes.
void ReadRest(base::BinaryReader& reader, TerrainMap& map) {
  if (reader.Left() < 4) return;
  map.LargePosts = reader.U32() & LargePostsFlag;
  if (reader.Left() < 8) return;
  const float longitude = reader.F32(), latitude = reader.F32();
  if (!(std::abs(longitude) <= 360 && std::abs(latitude) <= 90)) return;
  map.HasCorner = true;
  map.Longitude = longitude;
  map.Latitude = latitude;
}

}  // namespace

TerrainMap ReadTerrainMap(const DataFile& file) {
  if (file.Bytes.size() < LevelsAt) RefuseFile(file.Name, "it ends before the levels of detail");
  base::BinaryReader reader(file.Bytes);
  TerrainMap map;
  map.PostFeet = reader.F32();
  map.HighestTerrainWidth = reader.U32();
  map.HighestTerrainHeight = reader.U32();
  reader.Skip(4);
  const std::uint32_t levels = reader.U32();
  map.LastNearLevel = reader.I32();
  reader.Skip(LevelsAt - 24);
  if (levels < 3) RefuseFile(file.Name, "it tells of " + Told(levels) + " levels of detail and not of three");
  if (levels > reader.Left() / LevelBytes) {
    RefuseFile(file.Name, "it ends within its " + Told(levels) + " levels of detail");
  }
  map.Levels.resize(levels);
  for (TerrainMap::Level& level : map.Levels) {
    level.Width = reader.U32();
    level.Height = reader.U32();
  }
  const TerrainMap::Level& cells = map.Levels[2];
  if (cells.Width < 1 || cells.Width > LargestLevel || cells.Height != cells.Width) {
    RefuseFile(file.Name,
               "its third level of detail has " + Told(cells.Width) + " by " + Told(cells.Height) + " blocks");
  }
  ReadRest(reader, map);
  return map;
}

}  // namespace kestrel::falcon
