#pragma once

#include <cstdint>
#include <string_view>

#include "map/surface.h"

// The icons of areas and TACANs: one table of strokes and one of captions, drawn by one routine.
namespace kestrel::map {

/// Icons are numbered 1 to LastIcon.
inline constexpr std::int32_t LastIcon = 35;
/// No stroke of an icon lies further from its centre on either axis, pixels.
inline constexpr int IconReach = 12;

/// The name of an icon as lists show it; empty for a number that is none. Some names stand twice, and some misspelled.
std::string_view IconCaption(std::int32_t number);

/// Whether anything is drawn of an icon.
bool HasShape(std::int32_t number);

/// Draws icon `number` around (x, y), surface units, taken to the nearest pixel, whatever the zoom. A number that is
/// none, or whose icon has no shape, draws nothing.
void DrawIcon(Surface& surface, std::int32_t number, double x, double y, base::Colour color);

}  // namespace kestrel::map
