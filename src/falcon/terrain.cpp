#include "falcon/terrain.h"

#include <algorithm>

#include "falcon/terrain_walk.h"

namespace kestrel::falcon {

std::optional<std::int16_t> Terrain::HeightAt(std::int32_t x, std::int32_t y) const {
  if (x < 0 || x >= Size || y < 0 || y >= Size) return std::nullopt;
  return Heights[IndexOf(x, y)];
}

Terrain FlatTerrain(std::int32_t size) {
  Terrain terrain{.Size = size};
  const std::size_t cells = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
  terrain.Heights.resize(cells);
  terrain.Sea.resize(cells);
  return terrain;
}

void FindExtremes(Terrain& terrain) {
  const auto [lowest, highest] = std::minmax_element(terrain.Heights.begin(), terrain.Heights.end());
  terrain.Lowest = *lowest;
  terrain.Highest = *highest;
}

void TakeSea(Terrain& terrain, const GroundCover& cover) {
  WalkTerrain(terrain.Size, [&](std::int32_t x, std::int32_t y) {
    const bool water = cover.IsWater(x * cover.Width / terrain.Size, y * cover.Height / terrain.Size);
    terrain.Sea[terrain.IndexOf(x, y)] = water ? 1 : 0;
  });
}

}  // namespace kestrel::falcon
