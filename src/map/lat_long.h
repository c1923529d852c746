#pragma once

#include <string>

namespace kestrel::map {

/// Degrees north and east of a theater's lower-left corner.
struct Corner {
  double CoordLat = 0;
  double CoordLong = 0;
};

struct LatLong {
  double Lat = 0;   ///< degrees north
  double Long = 0;  ///< degrees east
};
struct Feet {
  double X = 0;  ///< feet east of the corner
  double Y = 0;  ///< feet north of the corner
};

LatLong LatLongFromFeet(Corner corner, double xFeet, double yFeet);
Feet FeetFromLatLong(Corner corner, double lat, double lon);

struct LatLongText {
  std::string Lat;   ///< code page bytes, like N37\xB0 12.345'
  std::string Long;  ///< like E127\xB0 04.500'
};
/// The texts of a place in map units, Y north.
LatLongText FormatLatLong(Corner corner, double mapX, double mapY);

}  // namespace kestrel::map
