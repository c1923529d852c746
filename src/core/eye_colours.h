#pragma once

#include <array>

#include "base/changed.h"
#include "core/station.h"

// Colours of the map that are told apart with each kind of colour blindness, also from lowland of the map pictures that
// the station makes.
namespace kestrel::core {

/// The set. Players have the colour that they come with, so that who joins later has it too.
struct EyeColours {
  static constexpr base::Colour Friend = 0xFFD228;    ///< sky blue: red 40, green 210, blue 255
  static constexpr base::Colour Foe = 0xA028E6;       ///< crimson: 230, 40, 160
  static constexpr base::Colour Players = 0x000000;   ///< black
  static constexpr base::Colour Cursor = 0xBE0078;    ///< violet: 120, 0, 190
  static constexpr base::Colour Bullseye = 0x00FFFF;  ///< yellow: 255, 255, 0
};

/// AI aircraft, players, cursor with its text, and bullseye get the set. What was there is kept, once, for the time
/// that it is in use. Returns what must be shown anew.
base::Changed UseEyeColours(Station& station);
/// Puts back what was there; of players, to those who are still here. Nothing while the set is not in use.
base::Changed PutColoursBack(Station& station);

}  // namespace kestrel::core
