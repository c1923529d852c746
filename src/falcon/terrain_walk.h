#pragma once

#include <algorithm>
#include <cstdint>

namespace kestrel::falcon {

/// Visits each place of a terrain of `size` map units, some columns at a time from the south to the north: rows of
/// heights and columns of ground cover are both near by then, of which either alone would be far apart.
template <class Visit>
void WalkTerrain(std::int32_t size, const Visit& visit) {
  constexpr std::int32_t columns = 64;
  for (std::int32_t first = 0; first < size; first += columns) {
    const std::int32_t end = std::min(first + columns, size);
    for (std::int32_t y = 0; y < size; ++y) {
      for (std::int32_t x = first; x < end; ++x) visit(x, y);
    }
  }
}

}  // namespace kestrel::falcon
