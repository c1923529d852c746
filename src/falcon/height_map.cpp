#include "falcon/height_map.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>
#include <span>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/positioned_file.h"
#include "falcon/data_file.h"

namespace kestrel::falcon {
namespace {

/// How far away, in samples, the neighbours are that tell water.
constexpr std::int64_t Away = 2;

/// The rows of a height map around one of them. Each has `Away` samples more on either side, mirrored, so that what
/// lies outside of the map says nothing about what lies within.
class Rows {
 public:
  Rows(const std::filesystem::path& path, std::int64_t samples)
      : file(path, base::PositionedFile::Mode::Read), side(samples) {
    for (Row& row : held) row.resize(static_cast<std::size_t>(side + 2 * Away));
  }

  /// The samples of a row, to be asked for in order from 0 on, and those two before and behind: it itself at an edge.
  struct Around {
    const std::int16_t* Before;
    const std::int16_t* At;
    const std::int16_t* Behind;
  };
  Around Next(std::int64_t row) {
    while (read < side && read <= row + Away) ReadRow(read++);
    const std::int16_t* const at = Samples(row);
    return {row >= Away ? Samples(row - Away) : at, at, row + Away < side ? Samples(row + Away) : at};
  }

 private:
  using Row = std::vector<std::int16_t>;

  Row& Held(std::int64_t row) { return held[static_cast<std::size_t>(row) % held.size()]; }
  const std::int16_t* Samples(std::int64_t row) { return Held(row).data() + Away; }
  void ReadRow(std::int64_t row) {
    const std::span<std::int16_t> samples = std::span(Held(row)).subspan(Away, static_cast<std::size_t>(side));
    const std::span<std::byte> bytes = std::as_writable_bytes(samples);
    if (file.Read(static_cast<std::uint64_t>(row) * bytes.size(), bytes) != bytes.size()) {
      RefuseFile(base::NameForMessage(file.Path()), "row " + Told(static_cast<std::uint64_t>(row)) + " is cut");
    }
    if constexpr (std::endian::native == std::endian::big) {
      for (std::int16_t& sample : samples) {
        const auto bits = static_cast<std::uint16_t>(sample);
        sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(bits << 8 | bits >> 8));
      }
    }
    std::int16_t* const first = samples.data();
    for (std::int64_t n = 1; n <= Away; ++n) {
      first[-n] = first[std::min(Away - n, side - 1)];
      first[side - 1 + n] = first[std::max<std::int64_t>(side - 1 - (Away - n), 0)];
    }
  }

  base::PositionedFile file;
  std::int64_t side;
  std::int64_t read = 0;
  std::array<Row, 2 * Away + 1> held;
};

/// 1 for each sample of a row that is water. Without a branch, and with its pointers in locals that a byte written
/// cannot change, so that many samples are looked at together.
void FindWater(const Rows::Around& rows, std::vector<std::uint8_t>& water) {
  const auto side = static_cast<std::int64_t>(water.size());
  const std::int16_t* const before = rows.Before;
  const std::int16_t* const at = rows.At;
  const std::int16_t* const behind = rows.Behind;
  std::uint8_t* const into = water.data();
  for (std::int64_t n = 0; n < side; ++n) {
    const std::int16_t height = at[n];
    const auto differs = static_cast<std::int16_t>(
        (before[n - Away] ^ height) | (before[n] ^ height) | (before[n + Away] ^ height) | (at[n - Away] ^ height) |
        (at[n + Away] ^ height) | (behind[n - Away] ^ height) | (behind[n] ^ height) | (behind[n + Away] ^ height));
    into[n] = static_cast<std::uint8_t>(static_cast<int>(differs == 0) & static_cast<int>(height <= 0));
  }
}

/// Gathers the water of the rows of map units, from the north.
class SeaCount {
 public:
  SeaCount(Terrain& into, std::int64_t samples)
      : terrain(into), side(samples), counts(static_cast<std::size_t>(into.Size)) {
    for (std::int64_t column = 0; column < side; ++column) {
      if (column * terrain.Size / side == static_cast<std::int64_t>(firstColumns.size())) {
        firstColumns.push_back(static_cast<std::size_t>(column));
      }
    }
    firstColumns.push_back(static_cast<std::size_t>(side));
  }

  void Add(std::int64_t row, const std::vector<std::uint8_t>& water) {
    for (std::size_t x = 0; x < counts.size(); ++x) {
      counts[x] += std::accumulate(water.data() + firstColumns[x], water.data() + firstColumns[x + 1], 0U);
    }
    ++rows;
    const std::int64_t unitRow = row * terrain.Size / side;
    if (row + 1 == side || (row + 1) * terrain.Size / side != unitRow) Close(terrain.Size - 1 - unitRow);
  }

 private:
  void Close(std::int64_t y) {
    for (std::size_t x = 0; x < counts.size(); ++x) {
      const std::uint64_t all = rows * (firstColumns[x + 1] - firstColumns[x]);
      const std::size_t unit = terrain.IndexOf(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y));
      terrain.Sea[unit] = 2 * counts[x] >= all ? 1 : 0;
      counts[x] = 0;
    }
    rows = 0;
  }

  Terrain& terrain;
  std::int64_t side;
  std::vector<std::size_t> firstColumns;  // of each map unit, and behind the last
  std::vector<std::uint64_t> counts;      // of each map unit of the row
  std::uint64_t rows = 0;                 // that they are from
};

/// The sample in the middle of a map unit that is `unit`th of all.
std::int64_t Middle(std::int64_t unit, std::int64_t samples, std::int64_t units) {
  return (2 * unit + 1) * samples / (2 * units);
}

std::int64_t SideOf(const std::filesystem::path& path) {
  const std::uint64_t bytes = base::PositionedFile(path, base::PositionedFile::Mode::Read).Size();
  const auto side = static_cast<std::int64_t>(std::llround(std::sqrt(static_cast<double>(bytes) / 2)));
  if (side < 1 || side > LargestHeightMap || static_cast<std::uint64_t>(2 * side * side) != bytes) {
    RefuseFile(base::NameForMessage(path), "its " + Told(bytes) + " bytes are no square of heights");
  }
  return side;
}

}  // namespace

Terrain ReadHeightMap(const std::filesystem::path& path, std::optional<std::int32_t> size, const Progress& progress) {
  const std::int64_t side = SideOf(path);
  const std::int64_t units = size ? *size : side;
  if (units < 1 || units > LargestTerrain || units > side) {
    RefuseFile(base::NameForMessage(path), "its rows of " + Told(static_cast<std::uint64_t>(side)) +
                                               " heights are none of a theater of " + std::to_string(units));
  }
  Terrain terrain = FlatTerrain(static_cast<std::int32_t>(units));
  Rows rows(path, side);
  SeaCount sea(terrain, side);
  std::vector<std::uint8_t> water(static_cast<std::size_t>(side));
  std::int64_t unitsDone = 0;
  for (std::int64_t row = 0; row < side; ++row) {
    const Rows::Around around = rows.Next(row);
    FindWater(around, water);
    sea.Add(row, water);
    for (; unitsDone < units && Middle(unitsDone, side, units) == row; ++unitsDone) {
      const auto y = static_cast<std::int32_t>(units - 1 - unitsDone);
      for (std::int32_t x = 0; x < terrain.Size; ++x) {
        terrain.Heights[terrain.IndexOf(x, y)] = around.At[Middle(x, side, units)];
      }
    }
    if (progress) progress(static_cast<std::uint64_t>(row) + 1, static_cast<std::uint64_t>(side));
  }
  FindExtremes(terrain);
  return terrain;
}

}  // namespace kestrel::falcon
