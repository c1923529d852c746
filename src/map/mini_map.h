#pragma once

#include <cstdint>

#include "base/changed.h"
#include "map/view_state.h"

// The mini map: the whole theater in small with a box on what the map shows. Sizes and positions are logical units on
// the mini map's own surface, Y down.
namespace kestrel::map {

/// The least and the greatest side of the mini map, pixels: less is nothing, more is memory that a station may not have
/// (256 MiB for the picture, and as much for its window).
inline constexpr double LeastMiniMapSide = 1;
inline constexpr double GreatestMiniMapSide = 8192;

/// View-unit pixels to the mini map's pixel. MINIMAPSCALE as it stands, also where that makes the mini map very small;
/// the default for 0 and below; more where the greatest side asks for it.
double MiniMapScale(const ViewState& view, std::int16_t miniMapScale);

/// Both sides of the mini map, logical units; LeastMiniMapSide where the scale leaves less.
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
