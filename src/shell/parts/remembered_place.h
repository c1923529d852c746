#pragma once

#include <QGuiApplication>
#include <QWidget>
#include <cstdint>

#include "map/units.h"

// Where a window stood when it was last open, logical units.
namespace kestrel::shell {

/// Logical units of that many pixels.
inline std::int32_t Units(int pixels) { return static_cast<std::int32_t>(pixels * map::UnitsPerPixel); }

/// Puts a window that is not shown yet where it stood. One that never stood anywhere (0, 0), or whose corner lies on no
/// screen any more, finds its place by itself.
inline void TakePlace(QWidget& window, std::int32_t left, std::int32_t top) {
  const QPoint place(static_cast<int>(left / map::UnitsPerPixelX), static_cast<int>(top / map::UnitsPerPixelY));
  if ((left != 0 || top != 0) && QGuiApplication::screenAt(place) != nullptr) window.move(place);
}

inline void KeepPlace(const QWidget& window, std::int32_t& left, std::int32_t& top) {
  left = Units(window.x());
  top = Units(window.y());
}

}  // namespace kestrel::shell
