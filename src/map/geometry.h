#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/changed.h"
#include "map/view_state.h"
#include "theaters/theater.h"

// The coordinate systems of the map and the steps of zoom and pan. Procedures that move the view return what must be
// redrawn; they draw nothing.
namespace kestrel::map {

inline constexpr double LeastResolution = 0.125;
inline constexpr double GreatestResolution = 1024;

/// A place on the map, map units, Y to the north.
struct MapPoint {
  double X = 0;
  double Y = 0;
};

/// A place on the map at zoom 1, view units, Y downward.
struct ViewPoint {
  double X = 0;
  double Y = 0;
};

/// A place on the map window, surface units, Y downward.
struct SurfacePoint {
  double X = 0;
  double Y = 0;
};

ViewPoint ViewFromMap(const ViewState& view, MapPoint at);
ViewPoint ViewFromSurface(const ViewState& view, SurfacePoint at);
SurfacePoint SurfaceFromView(const ViewState& view, ViewPoint at);
SurfacePoint SurfaceFromMap(const ViewState& view, MapPoint at);
SurfacePoint SurfaceFromDown(const ViewState& view, theaters::DownPoint at);
MapPoint MapFromSurface(const ViewState& view, SurfacePoint at);

/// Recomputes MapWidth, MapHeight, the surface positions of anchor and bullseye, and the pointer's place on the map.
void RefreshPositions(ViewState& view);

/// Installs a resolution when the argument is above 0; recomputes sizes and marks.
base::Changed ChangeRes(ViewState& view, double newResolution);
/// Zoom steps: to the next power of two after rounding (half to even) the present exponent.
base::Changed IncreaseResolution(ViewState& view);
base::Changed DecreaseResolution(ViewState& view);
base::Changed ResetResolution(ViewState& view);

/// Values of a zoom slider.
struct SliderRange {
  std::int32_t Min = 0;
  std::int32_t Max = 100;
};
/// The resolution that belongs to a slider value; a fractional exponent is allowed.
double ResolutionFromScroll(SliderRange slider, std::int32_t value);
/// The slider value of a resolution, its exponent rounded half to even.
std::int32_t ScrollFromResolution(SliderRange slider, double resolution);

/// A zoom step that leaves the ground under the pointer where it is, as far as the theater's edge lets it.
base::Changed ZoomAtPointer(ViewState& view, bool closer);
/// Moves the map until `ground` lies at a place of the surface, as far as the theater's edge lets it.
base::Changed HoldGround(ViewState& view, ViewPoint ground, SurfacePoint at);

/// Centres on the last pointer position, within the theater. The caller then redraws and moves the pointer
/// (CenteredPointer), all with ViewChanging set.
base::Changed SetCenterOfScreen(ViewState& view);
/// Half a surface: 1 up, 2 down, 3 left, 4 right; 5 the centre of the theater. Another direction only refreshes.
base::Changed MoveScreen(ViewState& view, std::int32_t direction);
/// Resolution 1 and the centre of the theater. The caller then moves the pointer (CenteredPointer).
base::Changed ResetZoomAndCenter(ViewState& view);
/// Centres on a part of the map, map units (Y north), within the theater. The zoom stays, unless the part would not fit
/// on the surface: then it fits with some room around it, as far as the zoom goes.
base::Changed ShowPart(ViewState& view, double minX, double minY, double maxX, double maxY);
/// Shows saved view `slot`, 1 to 3.
base::Changed SetViewShortcut(ViewState& view, std::int16_t slot);
/// Stores the present view in `slot`, 1 to 3.
void SaveViewShortcut(ViewState& view, std::int16_t slot);
/// Sets the anchor to the pointer and unbinds it from any plot.
base::Changed SetCursorStart(ViewState& view);
/// Whole theater, centred, Resolution 1; what a theater load begins with. `bullX`, `bullY`: bullseye, map units, Y
/// down.
void ResetView(ViewState& view, double size, double picSize, double bullX, double bullY);
/// Moves the bullseye mark. Map units, Y down.
base::Changed PlaceBullseye(ViewState& view, double bullX, double bullY);
/// The size of the surface has changed, surface units. The map is not redrawn by this.
base::Changed ResizeSurface(ViewState& view, double width, double height);
/// The pointer has moved over the map: MouseX, MouseY, CursorMapX, CursorMapY, PointerSeen. Surface units.
void MovePointer(ViewState& view, double x, double y);

/// Where CenterMousePointer sets the system pointer, pixels. Arguments in logical units: the left (top) edges of frame,
/// map window and surface added up, and the surface's width (height).
double CenteredPointerX(double lefts, double surfaceWidth);
double CenteredPointerY(double tops, double surfaceHeight);

/// The part of the theater picture that fills the surface, picture pixels; it may reach beyond the picture.
struct SourceRect {
  double Left = 0;
  double Top = 0;
  double Width = 0;
  double Height = 0;
};
SourceRect BackgroundRect(const ViewState& view);

struct BearingAndRange {
  std::int16_t Bearing = 360;  ///< whole degrees 1..360
  double Range = 0;            ///< nautical miles at Resolution 1; the caller divides by Resolution
};
/// From the first point to the second, surface or view units (Y down). North is 360, never 0.
BearingAndRange BearingRange(double x1, double y1, double x2, double y2);

/// The way from one place to another, degrees clockwise from north, 0 to below 360. Nothing where both are one place,
/// or one of them is none.
std::optional<double> DirectionFrom(MapPoint from, MapPoint to);

/// The text of lblZoom: "Zoom: x" and the resolution as "0.0#####".
std::string ZoomText(const ViewState& view);

/// Formats for display, "." as the decimal sign. Every displayed number passes through it.
std::string SafeFormat(double value, std::string_view format);

}  // namespace kestrel::map
