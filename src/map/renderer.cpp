#include "map/renderer.h"

#include "map/area_layer.h"
#include "map/fault_guard.h"
#include "map/label_layer.h"
#include "map/navaid_layer.h"
#include "map/plots.h"
#include "map/ties.h"

namespace kestrel::map {
namespace {

using Painter = void (*)(const Scene&, Surface&);

void DrawPicture(const Scene& scene, Surface& surface) {
  surface.CopyPicture(scene.MapPicture, BackgroundRect(scene.View));
}

/// What stands, from the bottom up.
constexpr Painter StaticLayers[] = {DrawPicture, DrawGrid,    DrawBullseye,   DrawAreas,
                                    DrawTacans,  DrawIlsFans, DrawGridDegrees};
/// What moves, from the bottom up.
constexpr Painter MovingLayers[] = {RepositAllPlots, DrawAIPlots, CalculateAndDrawPlotHistories,
                                    DrawLabelsApart, DrawTies,    DrawWorkArea};

/// A layer guards each of its records; what fails outside of them costs the layer.
void Paint(Painter painter, const Scene& scene, Surface& surface) {
  DrawGuarded([&] { painter(scene, surface); });
}

}  // namespace

ClipRect VisibleRect(const ViewState& view) {
  const MapPoint upperLeft = MapFromSurface(view, {0, 0});
  const MapPoint lowerRight = MapFromSurface(view, {view.SurfaceWidth, view.SurfaceHeight});
  return {.ClipLeft = upperLeft.X, .ClipRight = lowerRight.X, .ClipTop = upperLeft.Y, .ClipBottom = lowerRight.Y};
}

void DrawMovingLayers(const Scene& scene, Surface& surface) {
  for (const Painter painter : MovingLayers) Paint(painter, scene, surface);
}

void DrawMap(const Scene& scene, Surface& surface) {
  for (const Painter painter : StaticLayers) Paint(painter, scene, surface);
  if (scene.Trails != nullptr) {
    scene.Trails->Begin(scene);
    scene.Trails->LayDown(scene, surface);
  }
  surface.Capture();
  DrawMovingLayers(scene, surface);
}

void RedrawPlots(const Scene& scene, Surface& surface) {
  if (scene.Trails != nullptr && !scene.Trails->Fits(scene)) return DrawMap(scene, surface);
  surface.Restore();
  if (scene.Trails != nullptr && scene.Trails->LayDown(scene, surface)) surface.Capture();
  DrawMovingLayers(scene, surface);
}

}  // namespace kestrel::map
