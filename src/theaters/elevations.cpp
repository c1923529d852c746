#include "theaters/elevations.h"

#include <cmath>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "theaters/catalogue.h"

namespace kestrel::theaters {

void Elevations::SetSource(std::filesystem::path path, double size) {
  *this = {};
  source = std::move(path);
  extent = size;
  read = false;
}

bool Elevations::Read() {
  if (!failure.empty()) {
    count = 0;
    file = {};
    throw base::RuntimeFailure(std::exchange(failure, {}));
  }
  if (read) return false;
  read = true;
  if (!base::FileExists(source)) {
    // The single element shows "0 ft" in the south-western corner; this stands.
    count = 1;
    return false;
  }
  if (!(extent <= MaxSize)) throw base::RuntimeFailure(base::NameForMessage(source) + " is too large");
  file = base::PositionedFile(source, base::PositionedFile::Mode::Read);
  count = static_cast<std::uint64_t>(std::llround(extent * extent));
  return true;
}

std::optional<std::int16_t> Elevations::At(double x, double y) const {
  if (!(x >= 0 && x < extent && y >= 0 && y < extent)) return std::nullopt;
  const double index = std::floor(extent) * std::floor(y) + std::floor(x);
  if (!failure.empty() || !(index < static_cast<double>(count))) return std::nullopt;
  try {
    return HeightAt(static_cast<std::uint64_t>(index));
  } catch (const base::RuntimeFailure& unread) {
    failure = unread.what();
    return std::nullopt;
  }
}

std::int16_t Elevations::HeightAt(std::uint64_t index) const {
  if (!file.IsOpen()) return 0;
  const std::uint64_t place = index * 2;
  const std::uint64_t begin = place / PieceBytes * PieceBytes;
  if (piece.Begin != begin) {
    piece.Begin = UINT64_MAX;
    piece.Bytes.fill({});
    file.Read(begin, piece.Bytes);
    piece.Begin = begin;
  }
  const std::byte* const bytes = piece.Bytes.data() + (place - begin);
  return static_cast<std::int16_t>(std::to_integer<unsigned>(bytes[0]) | std::to_integer<unsigned>(bytes[1]) << 8);
}

}  // namespace kestrel::theaters
