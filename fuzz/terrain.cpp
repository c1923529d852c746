// The files of a theater's terrain from a stranger: heights of each generation are read whole or refused, with what
// stands beside them.
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include "falcon/height_map.h"
#include "falcon/terrain_blocks.h"
#include "falcon/terrain_grid.h"
#include "falcon/theater_text.h"
#include "foreign_bytes.h"
#include "memory_file.h"

namespace {

using namespace kestrel;

/// Terrains of more map units than that take too long to be tried often.
constexpr std::int32_t LargestTried = 512;

void Check(const falcon::Terrain& terrain) {
  const std::size_t cells = terrain.IndexOf(0, terrain.Size);
  if (terrain.Size < 1 || terrain.Heights.size() != cells || terrain.Sea.size() != cells) std::abort();
  const auto [lowest, highest] = std::minmax_element(terrain.Heights.begin(), terrain.Heights.end());
  if (*lowest != terrain.Lowest || *highest != terrain.Highest) std::abort();
  if (terrain.HeightAt(terrain.Size - 1, 0) != terrain.Heights[terrain.IndexOf(terrain.Size - 1, 0)]) std::abort();
  if (terrain.HeightAt(terrain.Size, 0) || terrain.HeightAt(0, -1)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ForeignBytes input(data, size);
  const auto file = [](std::string_view bytes) { return falcon::DataFile{"terrain", std::string(bytes)}; };
  std::optional<falcon::TileSets> tiles;
  std::optional<falcon::GroundCover> cover;
  std::optional<falcon::HighestTerrain> highest;
  std::optional<falcon::TerrainMap> map;
  std::optional<falcon::TerrainGridHeader> header;
  std::optional<falcon::TheaterText> theater;
  fuzz::Try([&] { tiles = falcon::ReadTileSets(file(input.File())); });
  fuzz::Try([&] { cover = falcon::ReadGroundCover(file(input.File())); });
  fuzz::Try([&] { highest = falcon::ReadHighestTerrain(file(input.File()), 2, 3); });
  const std::string_view text = input.File();
  fuzz::Try([&] { header = falcon::ReadTerrainGridHeader(file(text)); });
  fuzz::Try([&] { theater = falcon::ReadTheaterText(file(text)); });
  fuzz::Try([&] { map = falcon::ReadTerrainMap(file(input.File())); });
  const falcon::DataFile table = file(input.File());
  static const fuzz::MemoryFile heights;
  heights.Fill(input.Rest());
  if (map && map->Size() <= LargestTried) {
    fuzz::Try([&] {
      falcon::Terrain terrain = falcon::ReadTerrainBlocks(*map, table, heights.Path(), tiles ? &*tiles : nullptr, {});
      Check(terrain);
      if (cover) falcon::TakeSea(terrain, *cover);
      Check(terrain);
    });
  }
  const falcon::TerrainGridWitnesses witnesses{cover ? &*cover : nullptr, highest ? &*highest : nullptr};
  if (!header || header->Size <= LargestTried) {
    fuzz::Try([&] { Check(falcon::ReadTerrainGrid(heights.Path(), header, witnesses, {})); });
  }
  if (!theater || theater->Size <= LargestTried) {
    const auto units = theater ? std::optional(theater->Size) : std::nullopt;
    fuzz::Try([&] { Check(falcon::ReadHeightMap(heights.Path(), units, {})); });
  }
  return 0;
}
