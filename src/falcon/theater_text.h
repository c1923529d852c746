#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "falcon/data_file.h"

namespace kestrel::falcon {

inline constexpr std::size_t MaxTheaterTextBytes = 64 << 10;

/// The description of a theater with new terrain (NewTerrain/Theater.txt).
struct TheaterText {
  std::string Name{};
  std::int32_t Size = 0;                   ///< map units on a side
  std::optional<double> CenterLatitude{};  ///< degrees
  std::optional<double> CenterLongitude{};
  std::string Projection{};  ///< as the file writes it: "+proj=tmerc +lon_0=..."
};

/// RuntimeFailure, naming the file, when it does not tell of a theater of 1 to LargestTerrain map units.
TheaterText ReadTheaterText(const DataFile& file);

}  // namespace kestrel::falcon
