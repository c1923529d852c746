#pragma once

#include <cstdint>
#include <string>

#include "base/table.h"

namespace kestrel::theaters {

/// A named reference point of a theater.
struct Bullseye {
  std::string Name;
  double X = 0;  ///< map units east of the left edge
  double Y = 0;  ///< map units north of the lower edge, as the simulator shows it
};

/// One installed map. A map unit is 3279.98 feet.
struct Theater {
  std::string TheaterFile;  ///< name of its settings file, relative to Theaters
  std::string Name;         ///< fixed name, the stem of its data files; never changes
  std::string DisplayName;  ///< the name that the user sees
  std::string Pic;          ///< name of its map picture, relative to Theaters
  double Size = 0;          ///< extent of the square map on both axes, map units; above 0
  double PicSize = 0;       ///< width of the stored square picture, pixels; above 0
  base::Table<Bullseye> Bulls;
  std::int16_t CurrentBull = 0;  ///< index into Bulls, 0 when there is none
  double CoordLat = 0;           ///< degrees north, lower-left corner
  double CoordLong = 0;          ///< degrees east, lower-left corner
};

/// The list of all theaters and which one is in use.
struct Catalogue {
  base::Table<Theater> Theaters;
  std::int16_t CurrentTheater = 0;  ///< index into Theaters

  Theater& Current() { return Theaters[static_cast<std::size_t>(CurrentTheater)]; }
  const Theater& Current() const { return Theaters[static_cast<std::size_t>(CurrentTheater)]; }
};

/// The lower-left corner of a map, degrees.
struct Corner {
  double Lat = 0;   ///< north
  double Long = 0;  ///< east
};

/// A place on the map with Y growing downward from the upper edge, map units: the system of AI positions.
struct DownPoint {
  double X = 0;
  double Y = 0;
};

}  // namespace kestrel::theaters
