#include "map/lat_long.h"

#include <cmath>

#include "link/tables.h"
#include "map/geometry.h"

namespace kestrel::map {
namespace {

// The station's own constants, not rounder or truer ones: stored positions fit only these.
constexpr double EarthRadius = 2.09257e7;  // feet
constexpr double RadiansPerDegree = 0.01745329;
constexpr double DegreesPerRadian = 57.2957795;
constexpr double FeetPerDegree = 365221.8846;

std::string Text(double value, char positive, char negative, const char* degreeFormat) {
  const double size = std::abs(value);
  const double degrees = std::trunc(size);
  const double minutes = std::trunc((size - degrees) * 60 * 1000) / 1000;
  return (value < 0 ? negative : positive) + SafeFormat(degrees, degreeFormat) + "\xB0 " +
         SafeFormat(minutes, "00.000") + "'";
}

std::string GridLineText(double value, char positive, char negative, const char* degreeFormat) {
  const double minutes = std::round(std::abs(value) * 60);
  const double degrees = std::trunc(minutes / 60);
  std::string text = (value < 0 ? negative : positive) + SafeFormat(degrees, degreeFormat) + "\xB0";
  if (minutes > degrees * 60) text += " " + SafeFormat(minutes - degrees * 60, "00") + "'";
  return text;
}

}  // namespace

LatLong LatLongFromFeet(theaters::Corner corner, double xFeet, double yFeet) {
  const double lat = (corner.Lat * FeetPerDegree + yFeet) / EarthRadius;
  const double c = std::cos(lat);
  const double lon = (corner.Long * RadiansPerDegree * EarthRadius * c + xFeet) / (c * EarthRadius);
  return {lat * DegreesPerRadian, lon * DegreesPerRadian};
}

Feet FeetFromLatLong(theaters::Corner corner, double lat, double lon) {
  const double c = std::cos(lat * RadiansPerDegree);
  const double x = lon * RadiansPerDegree * EarthRadius * c - corner.Long * RadiansPerDegree * EarthRadius * c;
  const double y = lat * RadiansPerDegree * EarthRadius - corner.Lat * FeetPerDegree;
  return {x, y};
}

LatLongText FormatLatLong(theaters::Corner corner, double mapX, double mapY) {
  const LatLong place = LatLongFromFeet(corner, mapX * link::FeetPerMapUnit, mapY * link::FeetPerMapUnit);
  return {Text(place.Lat, 'N', 'S', "00"), Text(place.Long, 'E', 'W', "000")};
}

std::string LatLineText(double lat) { return GridLineText(lat, 'N', 'S', "00"); }
std::string LongLineText(double lon) { return GridLineText(lon, 'E', 'W', "000"); }

}  // namespace kestrel::map
