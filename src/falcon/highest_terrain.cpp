#include "falcon/highest_terrain.h"

#include <cmath>

#include "base/bytes.h"

namespace kestrel::falcon {

HighestTerrain ReadHighestTerrain(const DataFile& file, std::uint32_t width, std::uint32_t height) {
  const std::size_t cells = file.Bytes.size() / 2;
  if (std::uint64_t{width} * height != cells) {
    width = height = static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(cells))));
  }
  if (cells == 0 || std::uint64_t{width} * height != cells || file.Bytes.size() % 2 != 0) {
    RefuseFile(file.Name, "its " + Told(file.Bytes.size()) + " bytes are no grid of heights");
  }
  HighestTerrain highest{.Width = static_cast<std::int32_t>(width), .Height = static_cast<std::int32_t>(height)};
  highest.Feet.resize(cells);
  base::BinaryReader reader(file.Bytes);
  for (std::size_t row = height; row-- > 0;) {
    for (std::size_t column = 0; column < width; ++column) highest.Feet[row * width + column] = reader.I16();
  }
  return highest;
}

}  // namespace kestrel::falcon
