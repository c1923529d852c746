#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"

// How the person wants heights turned into colours.
namespace kestrel::falcon {

/// A band of heights, up to and with `Height`.
struct ColourCriterion {
  base::Colour Colour = 0;
  std::int16_t Height = 0;  ///< feet

  bool operator==(const ColourCriterion&) const = default;
};

inline constexpr std::size_t MostCriteria = 255;

/// Entries 1 to 255 are those that bands are given; entry 0 is what a palette file has for the sea.
using ColourPalette = std::array<base::Colour, 256>;

/// What the theater import shows and changes before it begins.
struct ColourChoice {
  base::Colour Sea = 16762913;
  std::vector<ColourCriterion> Criteria{};  ///< by height; equal heights in any order
  ColourPalette Palette{};
  bool PaletteLoaded = false;  ///< the palette is the person's own
};

void SortCriteria(std::vector<ColourCriterion>& criteria);
/// A height as it is typed: beyond 16 bits it is limited, halves go to the even one, no number is 0.
std::int16_t TypedHeight(std::string_view text);
/// The count of bands that is typed; nothing when it is not 1 to MostCriteria.
std::optional<int> TypedCount(std::string_view text);

/// Replaces the criteria by `count` (1 to MostCriteria) bands up to `highest` (feet), coloured by the palette. The
/// height of a band and its step in the palette are whole numbers, cut and not rounded, so that the last band may end
/// below the highest place and the palette need not be used up: this stands.
void CalculateCriteria(ColourChoice& choice, int count, std::int16_t highest);

/// One colour for land and one for the sea.
struct TwoColours {
  base::Colour Sea = 0;
  base::Colour Land = 0;
};
inline constexpr TwoColours LightColours{16777215, 7917318};
inline constexpr TwoColours DarkColours{5131855, 4294170};
/// What "Custom" begins with.
inline constexpr TwoColours CustomColours = LightColours;

}  // namespace kestrel::falcon
