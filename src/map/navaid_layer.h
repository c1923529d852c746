#pragma once

#include "map/renderer.h"

namespace kestrel::map {

/// Range, icon and label of the TACAN of each airfield that is marked for display, as is its TACAN.
void DrawTacans(const Scene& scene, Surface& surface);
/// The ILS of each marked runway end that has a name, whether or not its airfield is marked: centre line, fan and
/// label.
void DrawIlsFans(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
