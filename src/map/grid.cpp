#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "base/failure.h"
#include "link/tables.h"
#include "map/fault_guard.h"
#include "map/renderer.h"

// The grid of whole and half degrees, and the names of its lines.
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

struct Grid {
  Range Lats;
  Range Lons;
};

/// Its whole degrees.
Grid FindGrid(const Scene& scene) {
  const double feet = scene.View.Size * link::FeetPerMapUnit;
  const LatLong upperRight = LatLongFromFeet(scene.TheaterCorner, feet, feet);
  return {WholeDegrees(scene.TheaterCorner.Lat, upperRight.Lat),
          WholeDegrees(scene.TheaterCorner.Long, upperRight.Long)};
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

/// Prints names of lines, each wholly on the surface and beside those before it.
class LineNames {
 public:
  LineNames(const Scene& scene, Surface& target)
      : surface(target),
        font{.Name = scene.Labels.Name, .Size = scene.Labels.Size},
        width(scene.View.SurfaceWidth),
        height(scene.View.SurfaceHeight) {}

  /// A line from west to east: above each of its ends.
  void AlongLatitude(const std::string& name, SurfacePoint west, SurfacePoint east, base::Colour colour) {
    const double left = std::max(west.X, 0.0), right = std::min(east.X, width);
    if (left >= right) return;
    const TextSize size = surface.Measure(name, font);
    Print(name, {left + Gap, west.Y - size.Height}, size, colour);
    Print(name, {right - Gap - size.Width, west.Y - size.Height}, size, colour);
  }

  /// A line from south to north: east of each of its ends.
  void AlongMeridian(const std::string& name, const std::vector<SurfacePoint>& line, base::Colour colour) {
    const double bottom = std::min(line.front().Y, height), top = std::max(line.back().Y, 0.0);
    if (top >= bottom) return;
    const TextSize size = surface.Measure(name, font);
    Print(name, {AtHeight(line, bottom) + Gap, bottom - size.Height}, size, colour);
    Print(name, {AtHeight(line, top) + Gap, top}, size, colour);
  }

 private:
  struct Box {
    double Left, Top, Right, Bottom;
  };
  /// Between a name and its line or the edge.
  static constexpr double Gap = 3 * UnitsPerPixel;

  static double AtHeight(const std::vector<SurfacePoint>& line, double y) {
    std::size_t north = 1;
    while (north + 1 < line.size() && line[north].Y > y) ++north;
    const SurfacePoint from = line[north - 1], to = line[north];
    return from.X + (to.X - from.X) * (y - from.Y) / (to.Y - from.Y);
  }

  void Print(const std::string& name, SurfacePoint at, TextSize size, base::Colour colour) {
    const Box box{at.X, at.Y, at.X + size.Width, at.Y + size.Height};
    if (!(box.Left >= 0 && box.Top >= 0 && box.Right <= width && box.Bottom <= height)) return;
    for (const Box& other : taken) {
      if (box.Left < other.Right && other.Left < box.Right && box.Top < other.Bottom && other.Top < box.Bottom) return;
    }
    taken.push_back(box);
    surface.Print(name, at.X, at.Y, font, colour);
  }

  Surface& surface;
  TextFont font;
  double width;
  double height;
  std::vector<Box> taken;
};

/// The names of the lines of DrawCells.
void NameLines(const Scene& scene, LineNames& names, const Grid& grid, double shift, base::Colour colour) {
  const Range lats{grid.Lats.From + shift, grid.Lats.To + shift};
  const Range lons{grid.Lons.From + shift, grid.Lons.To + shift};
  for (double lat = lats.From; lat <= lats.To; ++lat) {
    DrawGuarded([&] {
      names.AlongLatitude(LatLineText(lat), SurfaceFromLatLong(scene, lat, lons.From),
                          SurfaceFromLatLong(scene, lat, lons.To + 1), colour);
    });
  }
  std::vector<SurfacePoint> line;
  for (double lon = lons.From; lon <= lons.To; ++lon) {
    line.clear();
    for (double lat = lats.From; lat <= lats.To + 1; ++lat) line.push_back(SurfaceFromLatLong(scene, lat, lon));
    DrawGuarded([&] { names.AlongMeridian(LongLineText(lon), line, colour); });
  }
}

}  // namespace

void DrawGridDegrees(const Scene& scene, Surface& surface) {
  if (!scene.GridDegrees || !scene.Display.SHOWGRID) return;
  const Grid grid = FindGrid(scene);
  LineNames names(scene, surface);
  NameLines(scene, names, grid, 0, scene.Display.GRID_PRIM_COLOR);
  if (scene.Display.SHOWGRID_SEC) NameLines(scene, names, grid, 0.5, scene.Display.GRID_SEC_COLOR);
}

void DrawGrid(const Scene& scene, Surface& surface) {
  if (!scene.Display.SHOWGRID) return;
  const auto [lats, lons] = FindGrid(scene);
  if (scene.Display.SHOWGRID_SEC) {
    DrawCells(scene, surface, lats, lons, 0.5, {.Color = scene.Display.GRID_SEC_COLOR, .DrawWidth = 1});
  }
  DrawCells(scene, surface, lats, lons, 0, {.Color = scene.Display.GRID_PRIM_COLOR, .DrawWidth = 2});
}

}  // namespace kestrel::map
