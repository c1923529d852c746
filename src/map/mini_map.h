#pragma once

#include <cstdint>

#include "base/changed.h"
#include "map/view_state.h"

// The mini map: the whole theater in small with a box on what the map shows. Sizes and positions are logical units on
// the mini map's own surface, Y down.
namespace kestrel::map {

/// The mini map is kept between these sides, pixels, whatever MINIMAPSCALE says.
inline constexpr double LeastMiniMapSide = 32;
inline constexpr double GreatestMiniMapSide = 2048;

/// View-unit pixels to the mini map's pixel. MINIMAPSCALE as it stands where it can be used; the default for 0 and
/// below; otherwise the nearest that keeps the mini map's side within its limits.
double MiniMapScale(const ViewState& view, std::int16_t miniMapScale);

/// Both sides of the mini map, logical units.
double MiniMapSide(const ViewState& view, double scale);

struct MiniMapBox {
  double Left = 0;
  double Top = 0;
  double Width = 0;
  double Height = 0;
};
/// The box on the visible part; whole logical units. It may run past the mini map's edges.
MiniMapBox BoxOnMiniMap(const ViewState& view, double scale);

/// A click on the mini map: centres the map there. The centre is not clamped, because the pointer cannot leave the
/// picture.
base::Changed CentreByMiniMap(ViewState& view, double scale, double miniMouseX, double miniMouseY);

}  // namespace kestrel::map
