#include <cmath>
#include <cstddef>
#include <vector>

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

/// The crossings of a latitude, from the first longitude to the one after the last.
void FindCrossings(const Scene& scene, double lat, Range lons, std::vector<SurfacePoint>& crossings) {
  crossings.clear();
  for (double lon = lons.From; lon <= lons.To + 1; ++lon) crossings.push_back(SurfaceFromLatLong(scene, lat, lon));
}

/// One line north and one east from each crossing. Meridians slant by cell, since longitude shrinks with latitude.
void DrawCells(const Scene& scene, Surface& surface, Range lats, Range lons, double shift, Pen pen) {
  const Range shifted{lons.From + shift, lons.To + shift};
  std::vector<SurfacePoint> here, north;
  FindCrossings(scene, lats.From + shift, shifted, here);
  for (double lat = lats.From + shift; lat <= lats.To + shift; ++lat) {
    FindCrossings(scene, lat + 1, shifted, north);
    for (std::size_t cell = 0; cell + 1 < here.size(); ++cell) {
      DrawGuarded([&] { surface.Line(here[cell].X, here[cell].Y, north[cell].X, north[cell].Y, pen); });
      DrawGuarded([&] { surface.Line(here[cell].X, here[cell].Y, here[cell + 1].X, here[cell + 1].Y, pen); });
    }
    here.swap(north);
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
