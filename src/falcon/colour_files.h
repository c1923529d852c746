#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "falcon/colour_criteria.h"

// Palettes and lists of bands as files.
namespace kestrel::falcon {

/// Bytes of each that are looked at.
inline constexpr std::size_t ActBytes = 768;
inline constexpr std::size_t PalBytes = 24 + 1024;
/// The longest list of bands.
inline constexpr std::size_t MaxCxpBytes = 48 + 6 * MostCriteria;

/// Takes colours of three bytes (red, green, blue) from the first byte on. Nothing in such a file tells what it is: any
/// bytes are taken, and the colours that they do not reach stay.
void TakeActColours(std::string_view bytes, std::span<base::Colour> into);
/// The same of a RIFF palette: colours of four bytes behind 24 that are not looked at.
void TakePalColours(std::string_view bytes, std::span<base::Colour> into);

/// The sea and the bands, in their order.
std::string WriteCxp(const ColourChoice& choice);
/// Replaces the sea and the bands. Nothing is changed, and false given, for what is no such file, is cut, or tells of
/// more bands than MostCriteria.
bool ReadCxp(std::string_view bytes, ColourChoice& choice);

}  // namespace kestrel::falcon
