#include "map/renderer.h"

#include "base/failure.h"
#include "map/plots.h"

namespace kestrel::map {
namespace {

using Painter = void (*)(const Scene&, Surface&);

void DrawPicture(const Scene& scene, Surface& surface) {
  surface.CopyPicture(scene.MapPicture, BackgroundRect(scene.View));
}

/// What stands, from the bottom up.
constexpr Painter StaticLayers[] = {DrawPicture, DrawGrid, DrawBullseye};
/// What moves, from the bottom up.
constexpr Painter MovingLayers[] = {RepositAllPlots, DrawAIPlots, CalculateAndDrawPlotHistories};

/// A fault leaves its layer drawn in part and the others whole.
void Paint(Painter painter, const Scene& scene, Surface& surface) {
  try {
    painter(scene, surface);
  } catch (const base::RuntimeFailure&) {
    return;
  }
}

}  // namespace

ClipRect VisibleRect(const ViewState& view) {
  const Point upperLeft = MapFromSurface(view, 0, 0);
  const Point lowerRight = MapFromSurface(view, view.SurfaceWidth, view.SurfaceHeight);
  return {.ClipLeft = upperLeft.X, .ClipRight = lowerRight.X, .ClipTop = upperLeft.Y, .ClipBottom = lowerRight.Y};
}

void DrawMovingLayers(const Scene& scene, Surface& surface) {
  for (const Painter painter : MovingLayers) Paint(painter, scene, surface);
}

void DrawMap(const Scene& scene, Surface& surface) {
  for (const Painter painter : StaticLayers) Paint(painter, scene, surface);
  surface.Capture();
  DrawMovingLayers(scene, surface);
}

void RedrawPlots(const Scene& scene, Surface& surface) {
  surface.Restore();
  DrawMovingLayers(scene, surface);
}

}  // namespace kestrel::map
