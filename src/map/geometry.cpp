#include "map/geometry.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "link/tables.h"

namespace kestrel::map {
namespace {

constexpr double Pi = 3.14159265358979;

}  // namespace

ViewPoint ViewFromMap(const ViewState& view, MapPoint at) {
  return {at.X * UnitsPerPixelX, (view.Size - at.Y) * UnitsPerPixelY};
}

ViewPoint ViewFromSurface(const ViewState& view, SurfacePoint at) {
  return {(at.X - view.SurfaceWidth / 2) / view.Resolution + view.ViewCenterX,
          (at.Y - view.SurfaceHeight / 2) / view.Resolution + view.ViewCenterY};
}

SurfacePoint SurfaceFromView(const ViewState& view, ViewPoint at) {
  return {(at.X - view.ViewCenterX) * view.Resolution + view.SurfaceWidth / 2,
          (at.Y - view.ViewCenterY) * view.Resolution + view.SurfaceHeight / 2};
}

SurfacePoint SurfaceFromMap(const ViewState& view, MapPoint at) { return SurfaceFromView(view, ViewFromMap(view, at)); }

SurfacePoint SurfaceFromDown(const ViewState& view, theaters::DownPoint at) {
  return SurfaceFromView(view, {at.X * UnitsPerPixelX, at.Y * UnitsPerPixelY});
}

MapPoint MapFromSurface(const ViewState& view, SurfacePoint at) {
  const ViewPoint seen = ViewFromSurface(view, at);
  return {seen.X / UnitsPerPixelX, view.Size - seen.Y / UnitsPerPixelY};
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

std::optional<double> DirectionFrom(MapPoint from, MapPoint to) {
  const double dx = to.X - from.X;
  const double dy = to.Y - from.Y;
  if (!std::isfinite(dx) || !std::isfinite(dy) || (dx == 0 && dy == 0)) return std::nullopt;
  const double degrees = std::atan2(dx, dy) * 180 / Pi;
  return degrees < 0 ? degrees + 360 : degrees;
}

std::string ZoomText(const ViewState& view) { return "Zoom: x" + SafeFormat(view.Resolution, "0.0#####"); }

std::string SafeFormat(double value, std::string_view format) {
  std::string text = base::FormatInvariant(value, format);
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

}  // namespace kestrel::map
