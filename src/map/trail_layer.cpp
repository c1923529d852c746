#include "map/trail_layer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "map/fault_guard.h"
#include "map/geometry.h"
#include "map/renderer.h"

namespace kestrel::map {
namespace {

constexpr std::size_t DrawnTogether = 512;

/// The points of a trail that belong on what stands: from 1 to this.
std::size_t OldPoints(const Scene& scene, const link::PlotRecord& plot) {
  if (!scene.Display.SHOWHISTORY || !scene.Display.REALVISIBLE) return 0;
  if (plot.ClientId == 0 || !plot.PlotVisible || !plot.ShowAllHistory) return 0;
  return plot.History.UpperBound() - std::min(plot.History.UpperBound(), RecentPoints);
}

bool SamePlaces(const ViewState& a, const ViewState& b) {
  return a.Size == b.Size && a.Resolution == b.Resolution && a.ViewCenterX == b.ViewCenterX &&
         a.ViewCenterY == b.ViewCenterY && a.SurfaceWidth == b.SurfaceWidth && a.SurfaceHeight == b.SurfaceHeight;
}

void DrawPoints(const ViewState& view, std::span<const link::PlotPoint> points, base::Colour color, std::size_t rank,
                Surface& surface) {
  std::array<SurfacePoint, DrawnTogether> dots;
  std::size_t count = 0;
  const auto draw = [&] {
    if (count > 0) surface.Dots(std::span(dots).first(count), color, static_cast<std::uint16_t>(rank));
    count = 0;
  };
  for (const link::PlotPoint& point : points) {
    if (point.X == 0 || point.Y == 0 || !std::isfinite(point.X) || !std::isfinite(point.Y)) continue;
    dots[count++] = SurfaceFromMap(view, {point.X, point.Y});
    if (count == dots.size()) draw();
  }
  draw();
}

}  // namespace

void TrailLayer::Begin(const Scene& scene) {
  view = scene.View;
  edition = scene.Plots.Edition();
  trails.clear();
}

bool TrailLayer::Fits(const Scene& scene) const {
  if (trails.empty()) return true;
  if (edition != scene.Plots.Edition() || !SamePlaces(view, scene.View)) return false;
  for (std::size_t index = 1; index < trails.size(); ++index) {
    if (trails[index].Points == 0) continue;
    if (index > scene.Plots.Clients.UpperBound()) return false;
    const link::PlotRecord& plot = scene.Plots.Clients[index];
    if (plot.Color != trails[index].Color || OldPoints(scene, plot) < trails[index].Points) return false;
  }
  return true;
}

bool TrailLayer::LayDown(const Scene& scene, Surface& surface) {
  bool drawn = false;
  for (std::size_t index = 1; index <= scene.Plots.Clients.UpperBound(); ++index) {
    const link::PlotRecord& plot = scene.Plots.Clients[index];
    const std::size_t laid = Laid(index);
    const std::size_t old = OldPoints(scene, plot);
    if (old <= laid) continue;
    drawn = true;
    DrawGuarded([&] {
      if (trails.empty()) Begin(scene);
      if (trails.size() <= index) trails.resize(index + 1);
      DrawPoints(scene.View, plot.History.Live().subspan(laid, old - laid), plot.Color, index, surface);
      trails[index] = {old, plot.Color};
    });
  }
  return drawn;
}

}  // namespace kestrel::map
