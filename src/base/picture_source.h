#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "base/positioned_file.h"

namespace kestrel::base {

/// The bytes of a picture file, in memory or on the disk. Of a file only a small piece is held, that around the place
/// read last: pictures are read from the front to the end, some of them byte by byte.
class PictureSource {
 public:
  /// `bytes` outlive the source.
  explicit PictureSource(std::string_view bytes) : memory(bytes), size(bytes.size()) {}
  /// The file, which outlives the source, as long as it is now. RuntimeFailure when the system does not tell that.
  explicit PictureSource(const PositionedFile& from) : file(&from), size(from.Size()) {}

  std::uint64_t Size() const { return size; }
  /// Fills `into` from `position` on; how many bytes there were. RuntimeFailure when the file cannot be read.
  std::size_t Read(std::uint64_t position, std::span<std::byte> into) const;

 private:
  std::string_view memory;
  const PositionedFile* file = nullptr;
  std::uint64_t size = 0;
  mutable std::vector<std::byte> held;  ///< of the file, from heldFrom on
  mutable std::uint64_t heldFrom = 0;
};

}  // namespace kestrel::base
