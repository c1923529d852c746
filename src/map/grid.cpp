#include <cmath>

#include "base/failure.h"
#include "link/tables.h"
#include "map/fault_guard.h"
#include "map/renderer.h"

// The grid of whole and half degrees.
namespace kestrel::map {
namespace {

/// A theater that spans more than the earth has a corner or size that is not meant.
constexpr double MostCells = 360;

struct Range {
  double From = 0;
  double To = 0;
};

/// Int() of both ends: the greatest whole number not above.
Range WholeDegrees(double from, double to) {
  const Range whole{std::floor(from), std::floor(to)};
  if (!(std::abs(whole.From) <= MostCells && std::abs(whole.To) <= MostCells)) {
    throw base::RuntimeFailure("the grid reaches beyond the earth");
  }
  return whole;
}

SurfacePoint SurfaceFromLatLong(const Scene& scene, double lat, double lon) {
  const Feet feet = FeetFromLatLong(scene.TheaterCorner, lat, lon);
  return SurfaceFromMap(scene.View, {feet.X / link::FeetPerMapUnit, feet.Y / link::FeetPerMapUnit});
}

/// One line north and one east from each crossing. Meridians slant by cell, since longitude shrinks with latitude.
void DrawCells(const Scene& scene, Surface& surface, Range lats, Range lons, double shift, Pen pen) {
  for (double lat = lats.From + shift; lat <= lats.To + shift; ++lat) {
    for (double lon = lons.From + shift; lon <= lons.To + shift; ++lon) {
      const SurfacePoint crossing = SurfaceFromLatLong(scene, lat, lon);
      const SurfacePoint north = SurfaceFromLatLong(scene, lat + 1, lon);
      const SurfacePoint east = SurfaceFromLatLong(scene, lat, lon + 1);
      DrawGuarded([&] { surface.Line(crossing.X, crossing.Y, north.X, north.Y, pen); });
      DrawGuarded([&] { surface.Line(crossing.X, crossing.Y, east.X, east.Y, pen); });
    }
  }
}

}  // namespace

void DrawGrid(const Scene& scene, Surface& surface) {
  if (!scene.Display.SHOWGRID) return;
  const double feet = scene.View.Size * link::FeetPerMapUnit;
  const LatLong upperRight = LatLongFromFeet(scene.TheaterCorner, feet, feet);
  const Range lats = WholeDegrees(scene.TheaterCorner.Lat, upperRight.Lat);
  const Range lons = WholeDegrees(scene.TheaterCorner.Long, upperRight.Long);
  if (scene.Display.SHOWGRID_SEC) {
    DrawCells(scene, surface, lats, lons, 0.5, {.Color = scene.Display.GRID_SEC_COLOR, .DrawWidth = 1});
  }
  DrawCells(scene, surface, lats, lons, 0, {.Color = scene.Display.GRID_PRIM_COLOR, .DrawWidth = 2});
}

}  // namespace kestrel::map
