#pragma once

#include "areas/area.h"
#include "map/renderer.h"

namespace kestrel::map {

/// The areas of the scene's catalogue that show and whose box meets the view: groups in their order, in each its areas.
void DrawAreas(const Scene& scene, Surface& surface);
/// The editor's copy, while it is open and its box meets the view, and over it the segments with emphasis.
void DrawWorkArea(const Scene& scene, Surface& surface);

/// Whether any part of the area's box lies in the visible rectangle; one that touches the edge does. Of a side that is
/// no number nothing is known, so it puts no area out of sight.
bool MeetsView(const areas::Area& area, const ClipRect& clip);
/// Draws one area with its name, whatever its marks and its box say. A type that is none draws nothing.
void DrawArea(const Scene& scene, Surface& surface, const areas::Area& area);

}  // namespace kestrel::map
