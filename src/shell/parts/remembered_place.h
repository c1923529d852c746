#pragma once

#include <QPoint>
#include <QRect>
#include <QWidget>
#include <cstdint>
#include <vector>

#include "core/window_places.h"
#include "map/units.h"

// Where windows stand and have stood: pixels of the desktop here, logical units in what is kept.
namespace kestrel::shell {

/// Logical units of that many pixels.
inline std::int32_t Units(int pixels) { return static_cast<std::int32_t>(pixels * map::UnitsPerPixel); }

inline core::WindowPlace PlaceOf(const QPoint& pixels) { return {Units(pixels.x()), Units(pixels.y())}; }
inline core::WindowSize SizeOf(const QSize& pixels) { return {Units(pixels.width()), Units(pixels.height())}; }
core::WindowArea AreaOf(const QRect& pixels);
QPoint PixelsOf(const core::WindowPlace& place);

/// What the screens have room for windows in; there is at least one.
std::vector<core::WindowArea> ScreenAreas();

/// Puts a window that is not shown yet where it stood: where no screen shows that any more, at the nearest place that
/// one does. One that never stood anywhere (0, 0) finds its place by itself.
void TakePlace(QWidget& window, std::int32_t left, std::int32_t top);

inline void KeepPlace(const QWidget& window, std::int32_t& left, std::int32_t& top) {
  left = Units(window.x());
  top = Units(window.y());
}

}  // namespace kestrel::shell
