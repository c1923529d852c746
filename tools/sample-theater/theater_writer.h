#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "sample-theater/terrain.h"

namespace kestrel::land {

/// The elevation file of a theater of half as many map units as `terrain` has pixels: 16-bit little-endian feet, row by
/// row, the first row at the south edge. 0 is sea: at least three of the four pixels of that map unit are water.
std::string ElevationBytes(const Terrain& terrain);

/// The text of the theater's settings file.
std::string TheaterFileText();

/// Makes the theater's frequencies in `folder` unless they are there: the person's from then on.
void WriteMissingFrequencies(const std::filesystem::path& folder);

/// Makes the whole sample theater in `folder`, which is made when missing: settings file, map picture, elevations,
/// and frequencies where there are none yet.
/// std::runtime_error or std::filesystem::filesystem_error when a file cannot be written.
void WriteTheater(const std::filesystem::path& folder);

}  // namespace kestrel::land
