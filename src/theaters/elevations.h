#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "base/positioned_file.h"

// The terrain heights of a theater, `Theaters\<Name>_Elevation.dat`: 16-bit little-endian feet, row by row, one value
// for each map unit. Row 0 is the southern edge, each row runs from west to east. The file is opened when the pointer
// first needs it and not while the theater loads, and it is read at the place that is asked for: the heights of a
// theater of 8192 are 128 MiB, of which a pointer sees a few.
namespace kestrel::theaters {

class Elevations {
 public:
  /// From now on the heights are those of `file`, for a theater of `size` map units; there are none until Read.
  void SetSource(std::filesystem::path file, double size);
  /// Opens the file unless that has been done. A missing file gives a single height of 0, a shorter one leaves the rest
  /// 0; what it holds beyond `size` is not read. RuntimeFailure, once, for a file that cannot be read, whether that
  /// shows now or has shown in At, or a size beyond MaxSize; there are no heights then. True when a file has been
  /// opened now.
  bool Read();
  /// The height at a place, feet. `x`, `y`: map units, Y north. Nothing outside the theater and where no height can be
  /// read. The file is the one that Read has opened, also when another has taken its name since; one that has been
  /// written over in place tells what it holds now, but for the piece around the place that was asked for last.
  std::optional<std::int16_t> At(double x, double y) const;

 private:
  /// What is held of the file. A page, as the system reads at least.
  static constexpr std::size_t PieceBytes = 4096;
  struct Piece {
    std::uint64_t Begin = UINT64_MAX;  ///< place in the file; no multiple of PieceBytes while nothing is held
    std::array<std::byte, PieceBytes> Bytes = {};
  };

  /// RuntimeFailure when the file cannot be read.
  std::int16_t HeightAt(std::uint64_t index) const;

  std::filesystem::path source;
  double extent = 0;  ///< map units
  bool read = true;
  std::uint64_t count = 0;    ///< heights that there are
  base::PositionedFile file;  ///< not open: each height is 0
  mutable Piece piece;
  mutable std::string failure;  ///< of reading in At, to be told by Read
};

}  // namespace kestrel::theaters
