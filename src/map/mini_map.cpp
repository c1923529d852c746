#include "map/mini_map.h"

#include <algorithm>

#include "base/numbers.h"
#include "map/geometry.h"
#include "map/map_options.h"

namespace kestrel::map {

double MiniMapScale(const ViewState& view, std::int16_t miniMapScale) {
  const double wanted = miniMapScale > 0 ? miniMapScale : Options{}.MINIMAPSCALE;
  return std::max(wanted, view.Size / GreatestMiniMapSide);
}

double MiniMapSide(const ViewState& view, double scale) {
  return std::max(view.Size / scale, LeastMiniMapSide) * UnitsPerPixel;
}

MiniMapBox BoxOnMiniMap(const ViewState& view, double scale) {
  MiniMapBox box;
  box.Width = base::RoundHalfEven(view.SurfaceWidth / (scale * view.Resolution));
  box.Height = base::RoundHalfEven(view.SurfaceHeight / (scale * view.Resolution));
  box.Left = base::RoundHalfEven(view.ViewCenterX / scale - box.Width / 2);
  box.Top = base::RoundHalfEven(view.ViewCenterY / scale - box.Height / 2);
  return box;
}

base::Changed CentreByMiniMap(ViewState& view, double scale, double miniMouseX, double miniMouseY) {
  view.ViewCenterX = scale * miniMouseX;
  view.ViewCenterY = scale * miniMouseY;
  RefreshPositions(view);
  return base::Changed::MiniMap | base::Changed::Map | base::Changed::CursorLine;
}

}  // namespace kestrel::map
