#pragma once

#include <string>

#include "areas/area.h"

namespace kestrel::areas {

/// The size of a text on the map at zoom 1, map units.
struct TextExtent {
  double Width = 0;
  double Height = 0;
};

/// Seam: how large a text is in a font. Filled by the map's surface; by a fixed size in tests.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  virtual TextExtent Extent(const std::string& text, const AreaFont& font) = 0;
};

/// Fills MinX, MinY, MaxX, MaxY from the geometry of the area's type. To be called when the geometry has been edited or
/// imported; a file brings its own box.
void AreaBounds(Area& area, TextMeasure& texts);

}  // namespace kestrel::areas
