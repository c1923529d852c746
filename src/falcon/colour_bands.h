#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/colour.h"
#include "falcon/colour_criteria.h"
#include "falcon/terrain.h"

// The picture of a theater's ground: a colour for each map unit.
namespace kestrel::falcon {

/// Which colours a ground is painted with.
struct ColourScheme {
  base::Colour Sea = 0;
  std::vector<ColourCriterion> Bands{};  ///< 1 to MostCriteria, by height
  /// Slopes that look to the north-west are lighter and those that look away darker, as under a low sun.
  bool Shaded = false;
};
/// Land is a single band.
ColourScheme SchemeOf(const TwoColours& colours);

/// Most bands that a shaded picture tells apart, with five shades of each; fewer bands have up to fifteen. Of more of
/// them neighbours share the colour of the middle one, since all colours of a picture are 256.
inline constexpr std::size_t MostShadedBands = 51;
inline constexpr std::size_t MostShades = 15;
/// The slope, in feet for each foot towards the light, that has the lightest shade.
inline constexpr double LightestSlope = 0.25;

struct GroundPicture {
  std::int32_t Size = 0;            ///< pixels on a side, one for each map unit
  std::vector<std::uint8_t> Cells;  ///< entry of the palette, in the order of Terrain: row 0 is the southern edge
  std::vector<base::Colour> Palette;
};

/// Entry 0 is the sea. Any other place has the band whose height is the first that the place does not exceed; what is
/// higher than all of them has the last one. Without shading entry n is band n.
GroundPicture PaintGround(const Terrain& terrain, const ColourScheme& scheme, const Progress& progress);

}  // namespace kestrel::falcon
