#include "falcon/terrain_grid.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/positioned_file.h"
#include "base/text.h"
#include "falcon/key_lines.h"
#include "falcon/terrain_walk.h"

namespace kestrel::falcon {
namespace {

constexpr std::uint64_t MostSkipped = 1 << 20;

/// Reads the whole number of a key, or `missing` where the key is; RuntimeFailure when it is not within the bounds.
std::int64_t NumberOf(const DataFile& file, const std::vector<KeyLine>& lines, std::string_view key,
                      std::int64_t missing, std::int64_t least, std::int64_t most) {
  const std::optional<std::string_view> text = ValueOf(lines, key);
  if (!text) return missing;
  const double number = base::LeadingNumber(*text);
  if (!(number >= static_cast<double>(least) && number <= static_cast<double>(most))) {
    RefuseFile(file.Name, "its " + std::string(key) + " is " + std::string(text->substr(0, 20)));
  }
  return static_cast<std::int64_t>(number);
}

/// A header for a file without one.
TerrainGridHeader SquareOf(std::string_view name, std::uint64_t bytes) {
  const auto size = static_cast<std::int64_t>(std::llround(std::sqrt(static_cast<double>(bytes / 2))));
  if (size > LargestTerrain) RefuseFile(name, "its grid is too large");
  return {.Size = static_cast<std::int32_t>(size)};
}

/// How many cells of the terrain, or of the mirrored one, the witnesses contradict.
class Contradictions {
 public:
  Contradictions(const Terrain& from, const TerrainGridWitnesses& by) : terrain(from), witnesses(by) {}

  std::uint64_t Count(bool mirrored) const { return witnesses.Cover ? OfCover(mirrored) : OfHighest(mirrored); }

 private:
  std::int16_t HeightAt(std::int32_t x, std::int32_t y, bool mirrored) const {
    return terrain.Heights[terrain.IndexOf(x, mirrored ? terrain.Size - 1 - y : y)];
  }
  std::uint64_t OfCover(bool mirrored) const {
    const GroundCover& cover = *witnesses.Cover;
    std::uint64_t count = 0;
    WalkTerrain(terrain.Size, [&](std::int32_t x, std::int32_t y) {
      if (HeightAt(x, y, mirrored) <= 0) return;
      if (cover.IsWater(x * cover.Width / terrain.Size, y * cover.Height / terrain.Size)) ++count;
    });
    return count;
  }
  std::uint64_t OfHighest(bool mirrored) const {
    const HighestTerrain& highest = *witnesses.Highest;
    std::uint64_t count = 0;
    for (std::int32_t y = 0; y < terrain.Size; ++y) {
      const auto row = static_cast<std::int32_t>(std::int64_t{y} * highest.Height / terrain.Size);
      for (std::int32_t x = 0; x < terrain.Size; ++x) {
        const auto column = static_cast<std::int32_t>(std::int64_t{x} * highest.Width / terrain.Size);
        if (HeightAt(x, y, mirrored) > highest.At(column, row)) ++count;
      }
    }
    return count;
  }

  const Terrain& terrain;
  const TerrainGridWitnesses& witnesses;
};

void Mirror(Terrain& terrain) {
  const auto rowAt = [&](std::int32_t y) {
    return terrain.Heights.begin() + static_cast<std::ptrdiff_t>(terrain.IndexOf(0, y));
  };
  for (std::int32_t y = 0; y < terrain.Size / 2; ++y) {
    std::swap_ranges(rowAt(y), rowAt(y) + terrain.Size, rowAt(terrain.Size - 1 - y));
  }
}

}  // namespace

TerrainGridHeader ReadTerrainGridHeader(const DataFile& file) {
  const std::vector<KeyLine> lines = KeyLines(file.Bytes, ' ');
  const auto number = [&](std::string_view key, std::int64_t missing, std::int64_t least, std::int64_t most) {
    return NumberOf(file, lines, key, missing, least, most);
  };
  TerrainGridHeader header;
  header.Size = static_cast<std::int32_t>(number("NROWS", 0, 1, LargestTerrain));
  if (header.Size == 0) RefuseFile(file.Name, "it has no NROWS");
  if (number("NCOLS", 0, 1, LargestTerrain) != header.Size) RefuseFile(file.Name, "its NCOLS are not its NROWS");
  number("NBITS", 16, 16, 16);
  number("NBANDS", 1, 1, 1);
  header.Skipped = static_cast<std::uint64_t>(number("SKIPBYTES", 0, 0, MostSkipped));
  const std::string_view order = ValueOf(lines, "BYTEORDER").value_or("I");
  header.BigEndian = base::SameNoCase(order, "M") || base::SameNoCase(order, "MSBFIRST");
  return header;
}

Terrain ReadTerrainGrid(const std::filesystem::path& path, const std::optional<TerrainGridHeader>& header,
                        const TerrainGridWitnesses& witnesses, const Progress& progress) {
  const std::string name = base::NameForMessage(path);
  const base::PositionedFile file(path, base::PositionedFile::Mode::Read);
  const std::uint64_t bytes = file.Size();
  const TerrainGridHeader grid = header ? *header : SquareOf(name, bytes);
  const std::uint64_t rowBytes = static_cast<std::uint64_t>(grid.Size) * 2;
  if (grid.Size < 1 || bytes != grid.Skipped + rowBytes * static_cast<std::uint64_t>(grid.Size)) {
    RefuseFile(name, "its " + Told(bytes) + " bytes are no grid of " + Told(static_cast<std::uint64_t>(grid.Size)) +
                         " rows and columns");
  }
  Terrain terrain = FlatTerrain(grid.Size);
  std::vector<std::byte> row(rowBytes);
  for (std::int32_t n = 0; n < grid.Size; ++n) {
    if (file.Read(grid.Skipped + static_cast<std::uint64_t>(n) * rowBytes, row) != row.size()) {
      RefuseFile(name, "row " + Told(static_cast<std::uint64_t>(n)) + " is cut");
    }
    base::BinaryReader reader(row);
    const std::size_t first = terrain.IndexOf(0, grid.Size - 1 - n);
    for (std::size_t x = 0; x < static_cast<std::size_t>(grid.Size); ++x) {
      const std::uint16_t bits = reader.U16();
      const auto height = static_cast<std::uint16_t>(grid.BigEndian ? bits << 8 | bits >> 8 : bits);
      terrain.Heights[first + x] = static_cast<std::int16_t>(height);
    }
    if (progress) progress(static_cast<std::uint64_t>(n) + 1, static_cast<std::uint64_t>(grid.Size));
  }
  if (witnesses.Cover || witnesses.Highest) {
    const Contradictions contradictions(terrain, witnesses);
    const std::uint64_t asRead = contradictions.Count(false);
    // Each look at the whole is a while in which nothing would be told.
    if (progress) progress(static_cast<std::uint64_t>(grid.Size), static_cast<std::uint64_t>(grid.Size));
    if (contradictions.Count(true) < asRead) Mirror(terrain);
    if (progress) progress(static_cast<std::uint64_t>(grid.Size), static_cast<std::uint64_t>(grid.Size));
  }
  std::transform(terrain.Heights.begin(), terrain.Heights.end(), terrain.Sea.begin(),
                 [](std::int16_t height) { return static_cast<std::uint8_t>(height == 0); });
  FindExtremes(terrain);
  return terrain;
}

}  // namespace kestrel::falcon
