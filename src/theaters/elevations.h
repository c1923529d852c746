#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

// The terrain heights of a theater, `Theaters\<Name>_Elevation.dat`: 16-bit little-endian feet, row by row, one value
// for each map unit. Row 0 is the southern edge, each row runs from west to east. The file is read when the pointer
// first needs it and not while the theater loads: it is 2 MiB for a theater of 1024, which the start and the first map
// need not wait for.
namespace kestrel::theaters {

class Elevations {
 public:
  /// From now on the heights are those of `file`, for a theater of `size` map units; there are none until Read.
  void SetSource(std::filesystem::path file, double size);
  /// Reads the file unless that has been done. A missing file gives a single height of 0, a shorter one leaves the rest
  /// 0; what it holds beyond `size` is not read. RuntimeFailure, once, for a file that cannot be read or a size beyond
  /// MaxSize, whose heights are 128 MiB; there are no heights then. True when a file has been read now.
  bool Read();
  /// The height at a place, feet. `x`, `y`: map units, Y north. Nothing outside the theater and where no height has
  /// been read.
  std::optional<std::int16_t> At(double x, double y) const;

 private:
  std::filesystem::path source;
  double extent = 0;  ///< map units
  bool read = true;
  std::vector<std::int16_t> heights;
};

}  // namespace kestrel::theaters
