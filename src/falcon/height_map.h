#pragma once

#include <filesystem>
#include <optional>

#include "falcon/terrain.h"

namespace kestrel::falcon {

/// Most samples on a side of a height map that is read.
inline constexpr std::int64_t LargestHeightMap = 131072;

/// Reads the heights of a theater of `size` map units from its height map (NewTerrain/HeightMaps/HeightMap.raw): a
/// square of samples of 16 bits, the first row in the north, many of them for each map unit. The file, which may have
/// gigabytes, is gone through once, a row at a time. The height of a map unit is the sample in its middle. A map unit
/// is sea when half of its samples are: not above 0 and equal to those two away in all eight directions, for seas and
/// lakes are flat there and land below the sea is not. Without `size` each sample is a map unit. RuntimeFailure, naming
/// the file, when it is no square, has fewer samples than the theater map units, or the size is not 1 to
/// LargestTerrain.
Terrain ReadHeightMap(const std::filesystem::path& path, std::optional<std::int32_t> size, const Progress& progress);

}  // namespace kestrel::falcon
