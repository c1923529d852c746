#pragma once

namespace kestrel::map {

/// Logical units to the pixel on both axes. View state, saved files, window positions and every Surface call use them;
/// only the Qt surface divides by it, so files from other stations fit and fixed offsets stand as written.
inline constexpr double UnitsPerPixel = 15;
/// UnitsPerPixel along one axis, and view units to the map unit as well: at zoom 1 a map unit is a pixel wide and high.
inline constexpr double UnitsPerPixelX = UnitsPerPixel;
inline constexpr double UnitsPerPixelY = UnitsPerPixel;

}  // namespace kestrel::map
