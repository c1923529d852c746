#pragma once

#include <optional>

#include "areas/area_editor.h"

// What helps to draw a region or a flight plan with the mouse.
namespace kestrel::areas {

/// A position, map units.
struct MapPoint {
  double X = 0, Y = 0;
};

struct DrawingAids {
  bool Snap = false;        ///< to the nearest end point within SnapDistance
  bool Hold = false;        ///< the bearing from the last point, to steps of 15 degrees
  double SnapDistance = 0;  ///< map units
};

/// The point that the next click would go on from, where the line to the pointer starts; none before the first.
std::optional<MapPoint> LastPoint(const AreaEditor& editor);

/// The position that a click at (x, y) would take, to be given to MapClick: an end point of an area that shows or of
/// WorkArea (not the one the line starts from), otherwise with the bearing held. (x, y) itself without aids, or when
/// neither a region nor a flight plan is being drawn.
MapPoint NextPoint(const AreaEditor& editor, const AreaCatalogue& catalogue, double x, double y,
                   const DrawingAids& aids);

}  // namespace kestrel::areas
