#pragma once

#include <cstdint>

#include "base/colour.h"

namespace kestrel::map {

/// A darker map could not be told from none, percent.
inline constexpr std::int32_t LeastMapBrightness = 20;

/// Settings of the map in section [KESTREL] of the main file; fields named as their keys. What they ask for is off as
/// the station ships.
struct Extras {
  base::Colour TIECOLOR = 16711935;  ///< lines between two aircraft
  bool THREATRING = false;           ///< a line from each player to the nearest hostile AI aircraft
  double THREATRANGE = 30;           ///< nautical miles: within it
  base::Colour THREATCOLOR = 33023;  ///< of those lines: orange
  bool EYECOLORS = false;            ///< the colours that every eye tells apart are in use
  // What was in their place before.
  base::Colour FORMER_AICOLOR = 0;
  base::Colour FORMER_AICOLOR_FRIENDS = 0;
  base::Colour FORMER_CURSOR_COLOR = 0;
  base::Colour FORMER_CURSOR_TEXT_COOR = 0;
  base::Colour FORMER_BULLSEYE_COLOR = 0;
  bool PLOTCARD = false;     ///< the pointer over an aircraft shows a card beside it
  bool LABELSAPART = false;  ///< labels cover neither each other nor symbols
  // The lines of a player's label.
  bool LABELID = true;
  bool LABELCALLSIGN = true;
  bool LABELNAME = true;
  bool LABELALTITUDE = true;
  bool LABELSPEED = true;
  double LABELSIZE = 100;            ///< percent of the labels' font
  std::int32_t MAPBRIGHTNESS = 100;  ///< of the picture of the theater, percent of its own: LeastMapBrightness to 100
  bool WHEELATPOINTER = false;       ///< the wheel leaves the ground under the pointer where it is
  bool GRIDDEGREES = false;          ///< degrees stand where the lines of the grid end
  bool PICTUREMARGIN = false;        ///< a picture that is not square is filled up for a theater, not stretched
};

}  // namespace kestrel::map
