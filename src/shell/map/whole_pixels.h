#pragma once

#include <QPointF>
#include <cmath>
#include <cstdint>
#include <limits>

namespace kestrel::shell {

/// The nearest pixel, not held to whole numbers of any size.
inline QPointF WholePixels(QPointF place) { return {std::floor(place.x() + 0.5), std::floor(place.y() + 0.5)}; }

/// Whether whole numbers of 32 bits can name the pixel.
inline bool IsCorner(QPointF pixel) {
  constexpr double far = std::numeric_limits<std::int32_t>::max();
  return std::abs(pixel.x()) <= far && std::abs(pixel.y()) <= far;
}

}  // namespace kestrel::shell
