#include "gallery/sample_install.h"

#include <cstddef>
#include <string>

#include "base/files.h"

namespace kestrel::gallery {

falcon::FalconInstall SampleInstall(const std::filesystem::path& station) {
  const std::string heights =
      base::ReadWholeFile(station / "Theaters" / "SampleStrait_Elevation.dat", std::size_t{128} << 20);
  std::size_t side = 1;
  while (2 * side * side < heights.size()) ++side;
  // The rows of a grid begin in the north.
  std::string grid;
  for (std::size_t row = side; row-- > 0;) grid += heights.substr(2 * side * row, 2 * side);

  falcon::FalconInstall install;
  install.Root = station / "Falcon";
  const std::filesystem::path terrain = install.Root / "Terrdata" / "korea" / "terrain";
  base::MakeFolder(terrain);
  base::WriteWholeFile(terrain / "TERRAIN.BIL", grid);
  falcon::FalconTheater theater;
  theater.Definition.Name = "Sample Strait";
  theater.TheaterSize = std::to_string(side);
  install.Theaters.Append(theater);
  return install;
}

}  // namespace kestrel::gallery
