#pragma once

#include <string>

#include "base/changed.h"
#include "link/tables.h"
#include "map/geometry.h"
#include "map/map_options.h"
#include "map/view_state.h"
#include "theaters/elevations.h"

// The two live measurements: from the cursor anchor to the pointer and from the bullseye to the pointer. The line
// (Line1) begins at AnchorX, AnchorY and ends at MouseX, MouseY; it shows while CursorLineActive.
namespace kestrel::map {

/// Where the text beside the pointer (Label1) begins, surface units to the right of the pointer. It is centred on the
/// pointer's Y.
inline constexpr double LineTextOffset = 150;

/// The pointer has moved over the map, surface units. The line shows with STATICCURSOR, or while the left button is
/// down and the view is not changing.
base::Changed TrackPointer(ViewState& view, const Options& options, double x, double y, bool leftDown);

/// STATICCURSOR goes on or off. Off takes the line away at once; on, it comes with the next move.
base::Changed SetStaticCursor(ViewState& view, Options& options, bool on);

/// The texts of the measurements, code page bytes. All are empty until the pointer has been over the map.
struct BRTexts {
  std::string Bearings;      ///< CursFrm.Label2: to the pointer and back, like 045\xB0 / 225\xB0; empty without a line
  std::string Range;         ///< CursFrm.Label3: like 12.50 NM; empty without a line
  std::string Line;          ///< Label1 of the map; empty without a line
  std::string BullsBearing;  ///< BullsFrm: from the bullseye, like 360\xB0
  std::string BullsRange;    ///< BullsFrm: like 12.50 NM
};
BRTexts UpdateBRs(const ViewState& view);

/// A line on the map from one place to another, with its bearing and range as Label1 has them.
struct MeasuredLine {
  MapPoint From, To;  ///< map units
  std::string Text;
};
MeasuredLine Measure(const ViewState& view, MapPoint from, MapPoint to);

/// Moves the anchor to the plot that it follows, if any. An AnchorPlotIndex beyond the table changes nothing.
/// Nothing calls it; this stands.
base::Changed ReBind(ViewState& view, const link::Tables& plots);

/// lblElevation: the height under the pointer, like "1200 ft"; a single blank where there is none.
std::string ElevationText(const ViewState& view, const theaters::Elevations& elevations);

}  // namespace kestrel::map
