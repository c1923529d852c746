#include "theaters/elevations.h"

#include <bit>
#include <cmath>
#include <span>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "theaters/catalogue.h"

namespace kestrel::theaters {

void Elevations::SetSource(std::filesystem::path file, double size) {
  source = std::move(file);
  extent = size;
  read = false;
  heights = {};
}

bool Elevations::Read() {
  if (read) return false;
  read = true;
  if (!base::FileExists(source)) {
    // The single element shows "0 ft" in the south-western corner; this stands.
    heights.assign(1, 0);
    return false;
  }
  if (!(extent <= MaxSize)) throw base::RuntimeFailure(base::NameForMessage(source) + " is too large");
  std::vector<std::int16_t> values(static_cast<std::size_t>(std::llround(extent * extent)));
  base::ReadHead(source, std::as_writable_bytes(std::span(values)));
  if constexpr (std::endian::native == std::endian::big) {
    for (std::int16_t& value : values) {
      const auto bits = static_cast<std::uint16_t>(value);
      value = static_cast<std::int16_t>(static_cast<std::uint16_t>(bits << 8 | bits >> 8));
    }
  }
  heights = std::move(values);
  return true;
}

std::optional<std::int16_t> Elevations::At(double x, double y) const {
  if (!(x >= 0 && x < extent && y >= 0 && y < extent)) return std::nullopt;
  const double index = std::floor(extent) * std::floor(y) + std::floor(x);
  if (!(index < static_cast<double>(heights.size()))) return std::nullopt;
  return heights[static_cast<std::size_t>(index)];
}

}  // namespace kestrel::theaters
