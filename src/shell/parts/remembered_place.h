#pragma once

#include <QGuiApplication>
#include <QWidget>
#include <cstdint>

#include "map/units.h"

// Where a window stood when it was last open, logical units.
namespace kestrel::shell {

/// Puts a window that is not shown yet where it stood. One that never stood anywhere (0, 0), or whose corner lies on no
/// screen any more, finds its place by itself.
inline void TakePlace(QWidget& window, std::int32_t left, std::int32_t top) {
  const QPoint place(static_cast<int>(left / map::UnitsPerPixelX), static_cast<int>(top / map::UnitsPerPixelY));
  if ((left != 0 || top != 0) && QGuiApplication::screenAt(place) != nullptr) window.move(place);
}

inline void KeepPlace(const QWidget& window, std::int32_t& left, std::int32_t& top) {
  left = static_cast<std::int32_t>(window.x() * map::UnitsPerPixelX);
  top = static_cast<std::int32_t>(window.y() * map::UnitsPerPixelY);
}

}  // namespace kestrel::shell
