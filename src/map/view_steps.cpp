#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "map/geometry.h"

// The steps of zoom and pan.
namespace kestrel::map {
namespace {

using base::Changed;

constexpr double LeastExponent = -3;     // of LeastResolution
constexpr double GreatestExponent = 10;  // of GreatestResolution

/// What every move of the view asks for.
constexpr Changed ViewMoved = Changed::Map | Changed::MiniMap | Changed::CursorLine;

double ZoomExponent(double resolution) { return base::RoundHalfEven(std::log2(resolution)); }

/// The slider value of zoom x1. It takes no account of a Min other than 0; this stands.
double ZeroOf(SliderRange slider) {
  return base::RoundHalfEven(-LeastExponent / (GreatestExponent - LeastExponent + 1) *
                             (static_cast<double>(slider.Max) - slider.Min + 1));
}

/// A quotient that is 0 where the slider has no room on that side.
double PartOf(double value, double whole) { return whole == 0 ? 0 : value / whole; }

void ClampCentre(ViewState& view) {
  const double greatest = view.Size * UnitsPerPixel;
  view.ViewCenterX = std::min(std::max(view.ViewCenterX, 0.0), greatest);
  view.ViewCenterY = std::min(std::max(view.ViewCenterY, 0.0), greatest);
}

void CentreTheater(ViewState& view) {
  view.ViewCenterX = view.Size / 2 * UnitsPerPixelX;
  view.ViewCenterY = view.Size / 2 * UnitsPerPixelY;
}

/// The ground under the pointer.
void RefreshGround(ViewState& view) {
  const MapPoint at = MapFromSurface(view, {view.MouseX, view.MouseY});
  view.CursorMapX = at.X;
  view.CursorMapY = at.Y;
}

/// What the view gives its place to: the marks on the surface, and the ground under a pointer that has not moved.
void RefreshMarks(ViewState& view) {
  const SurfacePoint anchor = SurfaceFromView(view, {view.AnchorViewX, view.AnchorViewY});
  view.AnchorX = anchor.X;
  view.AnchorY = anchor.Y;
  const SurfacePoint bulls = SurfaceFromView(view, {view.BullsViewX, view.BullsViewY});
  view.BullsX = bulls.X;
  view.BullsY = bulls.Y;
  RefreshGround(view);
}

bool IsSlot(const ViewState& view, std::int16_t slot) {
  return slot >= 1 && slot <= static_cast<std::int16_t>(view.ViewShorts.size());
}

}  // namespace

void RefreshPositions(ViewState& view) {
  view.MapWidth = view.Size * UnitsPerPixelX * view.Resolution;
  view.MapHeight = view.Size * UnitsPerPixelY * view.Resolution;
  RefreshMarks(view);
}

Changed ChangeRes(ViewState& view, double newResolution) {
  if (newResolution > 0) view.Resolution = std::clamp(newResolution, LeastResolution, GreatestResolution);
  RefreshPositions(view);
  return ViewMoved | Changed::Zoom;
}

Changed IncreaseResolution(ViewState& view) {
  double exponent = ZoomExponent(view.Resolution);
  if (exponent < GreatestExponent) exponent += 1;
  return ChangeRes(view, std::exp2(exponent));
}

Changed DecreaseResolution(ViewState& view) {
  double exponent = ZoomExponent(view.Resolution);
  if (exponent > LeastExponent) exponent -= 1;
  return ChangeRes(view, std::exp2(exponent));
}

Changed ResetResolution(ViewState& view) { return ChangeRes(view, 1); }

double ResolutionFromScroll(SliderRange slider, std::int32_t value) {
  const double zero = ZeroOf(slider);
  const double distance = value - zero;
  const double exponent = distance < 0 ? PartOf(distance, slider.Min - zero) * LeastExponent
                                       : PartOf(distance, slider.Max - zero) * GreatestExponent;
  return std::exp2(std::clamp(exponent, LeastExponent, GreatestExponent));
}

std::int32_t ScrollFromResolution(SliderRange slider, double resolution) {
  const double zero = ZeroOf(slider);
  const double exponent = ZoomExponent(std::clamp(resolution, LeastResolution, GreatestResolution));
  const double distance =
      exponent < 0 ? exponent / LeastExponent * (slider.Min - zero) : exponent / GreatestExponent * (slider.Max - zero);
  const double value = zero + base::RoundHalfEven(distance);
  // Within the slider, also when Min lies above Max.
  return static_cast<std::int32_t>(std::max<double>(slider.Min, std::min<double>(slider.Max, value)));
}

Changed ZoomAtPointer(ViewState& view, bool closer) {
  const SurfacePoint pointer{view.MouseX, view.MouseY};
  const ViewPoint ground = ViewFromSurface(view, pointer);
  const Changed changed = closer ? IncreaseResolution(view) : DecreaseResolution(view);
  return changed | HoldGround(view, ground, pointer);
}

Changed HoldGround(ViewState& view, ViewPoint ground, SurfacePoint at) {
  view.ViewCenterX = ground.X + (view.SurfaceWidth / 2 - at.X) / view.Resolution;
  view.ViewCenterY = ground.Y + (view.SurfaceHeight / 2 - at.Y) / view.Resolution;
  ClampCentre(view);
  RefreshMarks(view);
  return ViewMoved;
}

Changed SetCenterOfScreen(ViewState& view) {
  view.ViewCenterX -= (view.SurfaceWidth / 2 - view.MouseX) / view.Resolution;
  view.ViewCenterY -= (view.SurfaceHeight / 2 - view.MouseY) / view.Resolution;
  ClampCentre(view);
  RefreshMarks(view);
  return ViewMoved;
}

Changed MoveScreen(ViewState& view, std::int32_t direction) {
  const double stepX = view.SurfaceWidth / 2 / view.Resolution;
  const double stepY = view.SurfaceHeight / 2 / view.Resolution;
  switch (direction) {
    case 1:
      view.ViewCenterY -= stepY;
      break;
    case 2:
      view.ViewCenterY += stepY;
      break;
    case 3:
      view.ViewCenterX -= stepX;
      break;
    case 4:
      view.ViewCenterX += stepX;
      break;
    case 5:
      CentreTheater(view);
      break;
    default:
      break;
  }
  ClampCentre(view);
  RefreshMarks(view);
  return ViewMoved;
}

Changed ResetZoomAndCenter(ViewState& view) { return MoveScreen(view, 5) | ResetResolution(view); }

Changed ShowPart(ViewState& view, double minX, double minY, double maxX, double maxY) {
  constexpr double taken = 0.9;  // of the surface, by a part that fills it
  const ViewPoint centre = ViewFromMap(view, {(minX + maxX) / 2, (minY + maxY) / 2});
  view.ViewCenterX = centre.X;
  view.ViewCenterY = centre.Y;
  ClampCentre(view);
  double resolution = view.Resolution;
  const auto fit = [&resolution](double surface, double part) {
    if (part > 0 && surface > 0) resolution = std::min(resolution, taken * surface / part);
  };
  fit(view.SurfaceWidth, (maxX - minX) * UnitsPerPixelX);
  fit(view.SurfaceHeight, (maxY - minY) * UnitsPerPixelY);
  return ChangeRes(view, resolution);
}

Changed SetViewShortcut(ViewState& view, std::int16_t slot) {
  if (!IsSlot(view, slot)) return Changed::Nothing;
  const ViewShort& shown = view.ViewShorts[static_cast<std::size_t>(slot - 1)];
  view.ViewCenterX = shown.ViewCenterX;
  view.ViewCenterY = shown.ViewCenterY;
  return ChangeRes(view, shown.Resolution);
}

void SaveViewShortcut(ViewState& view, std::int16_t slot) {
  if (!IsSlot(view, slot)) return;
  view.ViewShorts[static_cast<std::size_t>(slot - 1)] = {view.ViewCenterX, view.ViewCenterY, view.Resolution};
}

Changed SetCursorStart(ViewState& view) {
  const ViewPoint anchor = ViewFromSurface(view, {view.MouseX, view.MouseY});
  view.AnchorViewX = anchor.X;
  view.AnchorViewY = anchor.Y;
  RefreshMarks(view);
  view.AnchorPlotIndex = 0;
  return Changed::CursorLine;
}

void ResetView(ViewState& view, double size, double picSize, double bullX, double bullY) {
  view.Size = size;
  view.PicSize = picSize;
  view.Resolution = 1;
  CentreTheater(view);
  PlaceBullseye(view, bullX, bullY);
  RefreshPositions(view);
}

Changed PlaceBullseye(ViewState& view, double bullX, double bullY) {
  view.BullsViewX = bullX * UnitsPerPixelX;
  view.BullsViewY = bullY * UnitsPerPixelY;
  RefreshMarks(view);
  return Changed::Map | Changed::CursorLine;
}

Changed ResizeSurface(ViewState& view, double width, double height) {
  view.SurfaceWidth = width;
  view.SurfaceHeight = height;
  RefreshPositions(view);
  return Changed::MiniMap | Changed::CursorLine;
}

void MovePointer(ViewState& view, double x, double y) {
  view.PointerSeen = true;
  view.MouseX = x;
  view.MouseY = y;
  RefreshGround(view);
}

double CenteredPointerX(double lefts, double surfaceWidth) { return (lefts + surfaceWidth / 2 + 60) / UnitsPerPixelX; }

double CenteredPointerY(double tops, double surfaceHeight) { return (tops + surfaceHeight / 2 + 645) / UnitsPerPixelY; }

}  // namespace kestrel::map
