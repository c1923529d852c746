#pragma once

#include <string>

#include "theaters/theater.h"

namespace kestrel::map {

/// A place on the earth.
struct LatLong {
  double Lat = 0;   ///< degrees north
  double Long = 0;  ///< degrees east
};
/// A place from a theater's corner.
struct Feet {
  double X = 0;  ///< feet east of the corner
  double Y = 0;  ///< feet north of the corner
};

LatLong LatLongFromFeet(theaters::Corner corner, double xFeet, double yFeet);
Feet FeetFromLatLong(theaters::Corner corner, double lat, double lon);

struct LatLongText {
  std::string Lat;   ///< code page bytes, like N37\xB0 12.345'
  std::string Long;  ///< like E127\xB0 04.500'
};
/// The texts of a place in map units, Y north.
LatLongText FormatLatLong(theaters::Corner corner, double mapX, double mapY);

/// The names of lines of the grid, in whole minutes where they are not in whole degrees, code page bytes: N37\xB0,
/// E127\xB0 30'.
std::string LatLineText(double lat);
std::string LongLineText(double lon);

}  // namespace kestrel::map
