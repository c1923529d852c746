#include "map/geometry.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "link/tables.h"

namespace kestrel::map {
namespace {

constexpr double Pi = 3.14159265358979;

}  // namespace

Point ViewFromMap(const ViewState& view, double x, double y) {
  return {x * UnitsPerPixelX, (view.Size - y) * UnitsPerPixelY};
}

Point SurfaceFromView(const ViewState& view, double viewX, double viewY) {
  return {(viewX - view.ViewCenterX) * view.Resolution + view.SurfaceWidth / 2,
          (viewY - view.ViewCenterY) * view.Resolution + view.SurfaceHeight / 2};
}

Point ViewFromSurface(const ViewState& view, double surfaceX, double surfaceY) {
  return {(surfaceX - view.SurfaceWidth / 2) / view.Resolution + view.ViewCenterX,
          (surfaceY - view.SurfaceHeight / 2) / view.Resolution + view.ViewCenterY};
}

Point SurfaceFromMap(const ViewState& view, double x, double y) {
  const Point at = ViewFromMap(view, x, y);
  return SurfaceFromView(view, at.X, at.Y);
}

Point MapFromSurface(const ViewState& view, double surfaceX, double surfaceY) {
  const Point at = ViewFromSurface(view, surfaceX, surfaceY);
  return {at.X / UnitsPerPixelX, view.Size - at.Y / UnitsPerPixelY};
}

Point SurfaceFromDown(const ViewState& view, double x, double yDown) {
  return SurfaceFromView(view, x * UnitsPerPixelX, yDown * UnitsPerPixelY);
}

SourceRect BackgroundRect(const ViewState& view) {
  const double pixelsPerUnit = view.PicSize / view.Size;
  SourceRect from;
  from.Left = (view.ViewCenterX - view.SurfaceWidth / 2 / view.Resolution) / UnitsPerPixelX * pixelsPerUnit;
  from.Top = (view.ViewCenterY - view.SurfaceHeight / 2 / view.Resolution) / UnitsPerPixelY * pixelsPerUnit;
  from.Width = view.SurfaceWidth / view.Resolution / UnitsPerPixelX * pixelsPerUnit;
  from.Height = view.SurfaceHeight / view.Resolution / UnitsPerPixelY * pixelsPerUnit;
  return from;
}

BearingAndRange BearingRange(double x1, double y1, double x2, double y2) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  double bearing = dy > 0 ? 180 : 0;
  if (dx > 0) bearing = base::RoundHalfEven(std::atan(dy / dx) * 180 / Pi + 90);
  if (dx < 0) bearing = base::RoundHalfEven(std::atan(dy / dx) * 180 / Pi + 270);
  if (!(bearing > 0)) bearing = 360;  // north, and where there is no direction at all
  return {static_cast<std::int16_t>(bearing), std::sqrt(dx * dx + dy * dy) / (UnitsPerPixelX * link::MapUnitsPerMile)};
}

std::string ZoomText(const ViewState& view) { return "Zoom: x" + SafeFormat(view.Resolution, "0.0#####"); }

std::string SafeFormat(double value, std::string_view format) {
  std::string text = base::FormatInvariant(value, format);
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

}  // namespace kestrel::map
