#include "map/text_measure.h"

#include "map/units.h"

namespace kestrel::map {

TextFont FontOf(const areas::AreaFont& font) {
  return {.Name = font.Name,
          .Size = font.Size,
          .Bold = font.Bold == areas::On,
          .Italic = font.Italic == areas::On,
          .Strike = font.Strikethru == areas::On,
          .Under = font.Underline == areas::On};
}

areas::TextExtent SurfaceTexts::Extent(const std::string& text, const areas::AreaFont& font) {
  // A text does not grow with the zoom: at zoom 1 a pixel is a map unit.
  const TextSize size = measuring.Measure(text, FontOf(font));
  return {.Width = size.Width / UnitsPerPixelX, .Height = size.Height / UnitsPerPixelY};
}

}  // namespace kestrel::map
