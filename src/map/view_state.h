#pragma once

#include <array>
#include <cstdint>

#include "map/units.h"

namespace kestrel::map {

/// A saved view.
struct ViewShort {
  double ViewCenterX = 0;  ///< view units
  double ViewCenterY = 0;  ///< view units
  double Resolution = 1;
};

/// Where the map stands: zoom, pan, sizes, and the marks that hang on them. Surface and view units are logical units
/// with Y growing downward; map units have Y growing north.
struct ViewState {
  double Size = 1024;             ///< map units: the current theater's Size, copied at each theater load
  double PicSize = 1024;          ///< picture pixels: the current theater's PicSize, copied at each theater load
  double Resolution = 1;          ///< zoom factor, 0.125..1024
  double ViewCenterX = 0;         ///< view units: the point at the centre of the surface
  double ViewCenterY = 0;         ///< view units
  bool BullseyeVisible = true;    ///< the bullseye marker is drawn
  bool CursorLineActive = false;  ///< the bearing line from the anchor to the pointer is showing
  double MouseX = 0;              ///< surface units: last pointer position
  double MouseY = 0;
  double MapWidth = 0;  ///< surface units: the zoomed size of the theater
  double MapHeight = 0;
  double SurfaceWidth = 0;  ///< surface units: the size of Picture1
  double SurfaceHeight = 0;
  double AnchorViewX = 0;  ///< view units: start of the bearing line
  double AnchorViewY = 0;
  double BullsViewX = 0;  ///< view units: the current bullseye
  double BullsViewY = 0;
  double AnchorX = 0;  ///< surface units
  double AnchorY = 0;
  double BullsX = 0;  ///< surface units
  double BullsY = 0;
  bool PointerSeen = false;  ///< the pointer has been over the map; before that its places mean nothing
  double CursorMapX = 0;     ///< map units, north up: the pointer
  double CursorMapY = 0;
  bool ViewChanging = false;                 ///< while the map centres: a pointer that moves begins no line
  std::int16_t AnchorPlotIndex = 0;          ///< Clients index that the anchor follows; 0 in this version
  std::array<ViewShort, 3> ViewShorts = {};  ///< slots 1 to 3
};

}  // namespace kestrel::map
