#pragma once

#include "areas/area.h"
#include "areas/area_editor.h"
#include "base/picture.h"
#include "link/link_options.h"
#include "link/tables.h"
#include "map/lat_long.h"
#include "map/map_options.h"
#include "map/surface.h"
#include "map/trail_layer.h"
#include "map/view_state.h"
#include "radio/frequencies.h"

namespace kestrel::map {

struct Ties;
class LabelLayer;

/// The visible rectangle, map units, Y north.
struct ClipRect {
  double ClipLeft = 0;
  double ClipRight = 0;
  double ClipTop = 0;
  double ClipBottom = 0;
};
ClipRect VisibleRect(const ViewState& view);

/// What the painters read. All references outlive the draw.
struct Scene {
  const base::Picture& MapPicture;
  const ViewState& View;
  theaters::Corner TheaterCorner;
  const Options& Display;
  const link::Options& LinkOptions;
  const link::Tables& Plots;
  LabelFont Labels;
  const areas::AreaCatalogue* Areas = nullptr;  ///< null: there are none
  const areas::AreaEditor* Editor = nullptr;    ///< null: there is none
  const radio::Frequencies* Navaids = nullptr;  ///< null: there are no airfields
  TrailLayer* Trails = nullptr;                 ///< of the surface; null: each point of a trail is drawn each time
  const Ties* Tied = nullptr;                   ///< null: there are none
  LabelLayer* Apart = nullptr;                  ///< of the surface; null: labels are not kept apart
  std::size_t SelectedPlot = 0;                 ///< index in Clients of the player in the roster's details, 0 none
  LabelLines Shown = {};                        ///< of players' labels
  bool GridDegrees = false;                     ///< degrees stand where lines of the grid end
};

/// Paints everything: picture, grid, bullseye, areas, TACANs, ILS, degrees of the grid, old points of trails; captures,
/// then what moves.
void DrawMap(const Scene& scene, Surface& surface);
/// Restores the captured picture and paints what moves. What has become old of the trails goes onto the captured
/// picture first; where that holds what is not shown any more, everything is painted.
void RedrawPlots(const Scene& scene, Surface& surface);

/// All that moves: real plots, AI plots, AI trails, labels that are kept apart, lines between aircraft; above them the
/// area that is being edited.
void DrawMovingLayers(const Scene& scene, Surface& surface);

/// Static layers, in file grid.cpp and bullseye_mark.cpp.
void DrawGrid(const Scene& scene, Surface& surface);
void DrawBullseye(const Scene& scene, Surface& surface);
/// The degrees of the lines of the grid where they meet the edges of the surface, or end before them. One that would
/// cover another is left out.
void DrawGridDegrees(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
