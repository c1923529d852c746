#include "map/lat_long.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "link/tables.h"

namespace kestrel::map {
namespace {

TEST(LatLong, TheCornerIsTheCorner) {
  const LatLong place = LatLongFromFeet({33.5, 123.25}, 0, 0);
  // The constants are inverse to each other to some digits only.
  EXPECT_NEAR(place.Lat, 33.5, 5e-4);
  EXPECT_NEAR(place.Long, 123.25, 5e-5);
}

TEST(LatLong, OneDegreeNorthIsItsFeet) {
  EXPECT_NEAR(LatLongFromFeet({0, 123}, 0, 365221.8846).Lat, 0.999998689, 1e-9);
  EXPECT_NEAR(FeetFromLatLong({0, 123}, 1, 123).Y, 365222.3106, 1e-3);
}

TEST(LatLong, EveryConstantCountsToItsLastDigit) {
  // Worked out with 40 digits. Latitude: (33.5 * 365221.8846 + 2e6) / 2.09257e7 = 0.680260786215037, its cosine
  // 0.7774087117588649; longitude: (123.25 * 0.01745329 * 2.09257e7 * cos + 1e6) / (cos * 2.09257e7); both
  // by 57.2957795.
  const LatLong place = LatLongFromFeet({33.5, 123.25}, 1e6, 2e6);
  EXPECT_NEAR(place.Lat, 38.9760720094734, 1e-9);
  EXPECT_NEAR(place.Long, 126.7720136652238, 1e-9);
  // 40 * 0.01745329 * 2.09257e7 - 33.5 * 365221.8846, and (130 - 123.25) * 0.01745329 * 2.09257e7 * cos(0.6981316).
  const Feet feet = FeetFromLatLong({33.5, 123.25}, 40, 130);
  EXPECT_NEAR(feet.Y, 2373959.28802, 1e-4);
  EXPECT_NEAR(feet.X, 1888491.679867, 1e-4);
}

TEST(LatLong, LongitudeShrinksWithTheLatitudeOfThePlace) {
  EXPECT_NEAR(FeetFromLatLong({0, 10}, 60, 11).X, 365221.8846 / 2, 5);
}

TEST(LatLong, ComesBackForRandomPlaces) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  std::uniform_real_distribution<double> lat(-70, 60);
  std::uniform_real_distribution<double> lon(-179, 179);
  std::uniform_real_distribution<double> feet(0, 4e6);
  for (int round = 0; round < 1000; ++round) {
    const theaters::Corner corner{lat(numbers), lon(numbers)};
    const double x = feet(numbers);
    const double y = feet(numbers);
    const LatLong place = LatLongFromFeet(corner, x, y);
    const Feet back = FeetFromLatLong(corner, place.Lat, place.Long);
    // The two constants of a degree do not undo each other: 57.2957795 x 0.01745329 is 1 - 1.446e-7. At the most that
    // is 9.45 feet (of 179 degrees at the equator) + 0.58 and 1.94 (of X, the latter by the cosine), 3.8 of Y.
    EXPECT_NEAR(back.X, x, 12);
    EXPECT_NEAR(back.Y, y, 4);
  }
}

TEST(FormatLatLong, HasTheFormOfHemisphereDegreesMinutes) {
  const LatLongText text = FormatLatLong({37.2058071, 127.0750267}, 0, 0);
  EXPECT_EQ(text.Lat, "N37\xB0 12.345'");
  EXPECT_EQ(text.Long, "E127\xB0 04.500'");
}

TEST(FormatLatLong, SouthAndWestHaveTheirLetters) {
  const LatLongText text = FormatLatLong({-5.5001155, -60.250117}, 0, 0);
  EXPECT_EQ(text.Lat, "S05\xB0 30.006'");
  EXPECT_EQ(text.Long, "W060\xB0 15.006'");
}

TEST(FormatLatLong, MinutesAreCutNotRounded) {
  // 59.9999 minutes stay 59.999 and never become 60.000.
  const LatLongText text = FormatLatLong({10.0000064, 9.9999948}, 0, 0);
  EXPECT_EQ(text.Lat, "N09\xB0 59.999'");
  EXPECT_EQ(text.Long, "E009\xB0 59.999'");
}

TEST(FormatLatLong, PlacesBeyondTheEdgeAndTheEarthStillGiveText) {
  for (const double far : {-500.0, 5000.0, 1e9, 1e300}) {
    const LatLongText text = FormatLatLong({30, 120}, far, far);
    EXPECT_EQ(text.Lat.back(), '\'');
    EXPECT_EQ(text.Long.back(), '\'');
  }
}

}  // namespace
}  // namespace kestrel::map
