#pragma once

#include "areas/area_bounds.h"
#include "map/surface.h"

namespace kestrel::map {

/// The font of an area as the surface takes it; its name stays the area's own.
TextFont FontOf(const areas::AreaFont& font);

/// Texts of areas as large as a surface prints them.
class SurfaceTexts final : public areas::TextMeasure {
 public:
  /// `surface` outlives it.
  explicit SurfaceTexts(Surface& surface) : measuring(surface) {}
  areas::TextExtent Extent(const std::string& text, const areas::AreaFont& font) override;

 private:
  Surface& measuring;
};

}  // namespace kestrel::map
