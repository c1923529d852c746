#include "map/icon_strokes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "doubles/recording_surface.h"

namespace kestrel::map {
namespace {

using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

constexpr base::Colour Ink = 0x123456;

SurfaceCall Stroke(const char* what, std::vector<double> numbers, bool filled = false) {
  return {what, std::move(numbers), Ink, 1, {}, PenStyle::Solid, filled};
}

Calls Drawn(std::int32_t number, double x = 0, double y = 0) {
  test::RecordingSurface surface;
  DrawIcon(surface, number, x, y, Ink);
  return surface.Calls;
}

// 15 units to the pixel: 3 pixels are 45, 4 are 60, 5 are 75, 6 are 90, 7 are 105, 9 are 135, 10 are 150.

TEST(IconStrokes, TheDotIsADiscOf3Pixels) { EXPECT_EQ(Drawn(1), (Calls{Stroke("circle", {0, 0, 45}, true)})); }

TEST(IconStrokes, TheCrossStandsAroundItsPlace) {
  // 100 pixels right, 40 down: 1500 and 600, 60 to each side.
  EXPECT_EQ(Drawn(2, 1500, 600),
            (Calls{Stroke("line", {1440, 600, 1560, 600}), Stroke("line", {1500, 540, 1500, 660})}));
}

TEST(IconStrokes, ThePlaceIsTakenToTheNearestPixel) {
  EXPECT_EQ(Drawn(2, 1507, 593), Drawn(2, 1500, 600));
  EXPECT_EQ(Drawn(2, 1508, 592), Drawn(2, 1515, 585));
}

TEST(IconStrokes, TheAirstripIsARunwayInACircle) {
  EXPECT_EQ(Drawn(5), (Calls{Stroke("line", {-135, -15, 135, -15}), Stroke("line", {-135, 15, 135, 15}),
                             Stroke("circle", {0, 0, 90})}));
}

TEST(IconStrokes, TheBridgesEndsAreMirrored) {
  EXPECT_EQ(Drawn(7), (Calls{Stroke("line", {-90, -45, 90, -45}), Stroke("line", {-90, 45, 90, 45}),
                             Stroke("line", {-90, -45, -165, -90}), Stroke("line", {90, -45, 165, -90}),
                             Stroke("line", {-90, 45, -165, 90}), Stroke("line", {90, 45, 165, 90})}));
}

TEST(IconStrokes, TheCityIsTwoHousesWithFourWindowsEach) {
  const Calls city = Drawn(8);
  ASSERT_EQ(city.size(), 10U);
  EXPECT_EQ(city[0], Stroke("box", {-180, -150, 0, 150}));
  EXPECT_EQ(city[1], Stroke("box", {0, -150, 180, 150}));
  EXPECT_EQ(city[2], Stroke("box", {-150, -105, -105, -60}));
  EXPECT_EQ(city[9], Stroke("box", {75, -15, 30, 30}));
}

TEST(IconStrokes, TheChemicalPlantIsSixLines) {
  EXPECT_EQ(Drawn(11), (Calls{Stroke("line", {-135, 0, -30, -105}), Stroke("line", {-30, -105, -165, -75}),
                              Stroke("line", {-165, -75, -30, -165}), Stroke("line", {-30, -165, 30, -165}),
                              Stroke("line", {30, -165, 135, 0}), Stroke("line", {-135, 0, 135, 0})}));
}

TEST(IconStrokes, TheRadarIsATriangleAFlashAndAnArcOf8Pixels) {
  const Calls radar = Drawn(14);
  ASSERT_EQ(radar.size(), 5U);
  EXPECT_EQ(radar[0], Stroke("polygon", {0, 90, 60, 150, -60, 150}));
  EXPECT_EQ(radar[1], Stroke("line", {0, -30, 120, -105}));
  EXPECT_EQ(radar[3], Stroke("line", {30, -105, 150, -180}));
  EXPECT_EQ(radar[4].What, "arc");
  EXPECT_EQ(radar[4].Numbers[2], 120);
}

TEST(IconStrokes, TheTacanIsOneClosedOutline) {
  const std::vector<double> outline = {-45, -75, 45,  -75, 105, -105, 150, -45,  75,  0,    45,   75,  45,
                                       150, -45, 150, -45, 75,  -75,  0,   -150, -45, -105, -105, -45, -75};
  EXPECT_EQ(Drawn(20), (Calls{Stroke("polygon", outline)}));
  const Calls vortac = Drawn(21);
  ASSERT_EQ(vortac.size(), 3U);
  EXPECT_EQ(vortac[0], Stroke("polygon", outline));
  for (const std::size_t inner : {1U, 2U}) {
    EXPECT_TRUE(vortac[inner].Filled);
    EXPECT_EQ(vortac[inner].Numbers.size(), 8U) << "four corners";
  }
}

TEST(IconStrokes, TheVorIsAnOpenOctagonThatTheVorDmeCloses) {
  const Calls vor = {Stroke("line", {-150, -45, -45, -150}), Stroke("line", {-45, -150, 45, -150}),
                     Stroke("line", {45, -150, 150, -45}),   Stroke("line", {150, -45, 150, 45}),
                     Stroke("line", {150, 45, 45, 150}),     Stroke("line", {45, 150, -45, 150}),
                     Stroke("line", {-45, 150, -150, 45})};
  EXPECT_EQ(Drawn(22), vor);
  Calls closed = vor;
  closed.push_back(Stroke("line", {-150, 45, -150, -45}));
  EXPECT_EQ(Drawn(24), closed);
}

TEST(IconStrokes, TheFixesAreTrianglesFilledInTheLastTwo) {
  for (std::int32_t icon = 25; icon <= 29; ++icon) {
    std::size_t triangles = 0;
    for (const SurfaceCall& call : Drawn(icon)) {
      if (call.What == "box") {
        EXPECT_EQ(icon, 26);
        EXPECT_EQ(call, Stroke("box", {-150, -150, 150, 150}));
        continue;
      }
      EXPECT_EQ(call.What, "polygon");
      EXPECT_EQ(call.Numbers.size(), 6U);
      EXPECT_EQ(call.Filled, icon >= 28) << icon;
      ++triangles;
    }
    EXPECT_GE(triangles, 1U) << icon;
    EXPECT_LE(triangles, 4U) << icon;
  }
  EXPECT_EQ(Drawn(26).size() - 1, 1U) << "the box stands around a triangle";
}

TEST(IconStrokes, HowManyStrokesEachIconHas) {
  // Counted by hand; of 25 to 29 and 21 only the shape is ours.
  const std::size_t strokes[] = {0, 1, 2, 8, 5, 3, 6, 6, 10, 1, 9, 6, 3, 7, 5, 6, 7, 7, 5, 3, 1, 3, 7, 0, 8};
  for (std::size_t icon = 0; icon < std::size(strokes); ++icon) {
    EXPECT_EQ(Drawn(static_cast<std::int32_t>(icon)).size(), strokes[icon]) << icon;
  }
}

TEST(IconStrokes, NumbersWithoutAShapeDrawNothing) {
  for (const std::int32_t number :
       {0, 23, 30, 31, 32, 33, 34, 35, 36, -1, 32767, -32768, std::numeric_limits<std::int32_t>::max(),
        std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_TRUE(Drawn(number).empty()) << number;
  }
}

TEST(IconStrokes, EveryStrokeStaysWithinTheIconsBox) {
  constexpr double reach = IconReach * 15;
  for (std::int32_t icon = 0; icon <= 36; ++icon) {
    for (const SurfaceCall& call : Drawn(icon)) {
      EXPECT_EQ(call.Color, Ink);
      EXPECT_EQ(call.DrawWidth, 1);
      if (call.What == "circle" || call.What == "arc") {
        EXPECT_GT(call.Numbers[2], 0);
        EXPECT_LE(std::abs(call.Numbers[0]) + call.Numbers[2], reach) << icon;
        EXPECT_LE(std::abs(call.Numbers[1]) + call.Numbers[2], reach) << icon;
        continue;
      }
      for (const double number : call.Numbers) EXPECT_LE(std::abs(number), reach) << icon;
    }
  }
}

TEST(IconStrokes, AnyPlaceIsHandedOn) {
  for (const double place : {std::nan(""), 1e300, -1e300}) {
    for (std::int32_t icon = 0; icon <= 36; ++icon) {
      EXPECT_EQ(Drawn(icon, place, 0).size(), Drawn(icon).size()) << icon;
    }
  }
}

TEST(IconStrokes, ShapeIsWhatSomethingIsDrawnOf) {
  for (std::int32_t icon = -1; icon <= 36; ++icon) EXPECT_EQ(HasShape(icon), !Drawn(icon).empty()) << icon;
  EXPECT_TRUE(HasShape(29));
  EXPECT_FALSE(HasShape(23));
  EXPECT_FALSE(HasShape(30));
}

TEST(IconStrokes, EachIconHasItsCaption) {
  EXPECT_EQ(IconCaption(1), "Dot");
  EXPECT_EQ(IconCaption(3), "SAM");
  EXPECT_EQ(IconCaption(12), "Nuclear Poerplant") << "stands";
  EXPECT_EQ(IconCaption(18), "Vilage") << "stands";
  EXPECT_EQ(IconCaption(20), "TACAN");
  EXPECT_EQ(IconCaption(23), "DME");
  EXPECT_EQ(IconCaption(28), "FAF/FAP");
  EXPECT_EQ(IconCaption(30), "VFR Significant Point");
  // These stand twice, the last even three times.
  EXPECT_EQ(IconCaption(16), "Refinery");
  EXPECT_EQ(IconCaption(32), "Refinery");
  EXPECT_EQ(IconCaption(15), IconCaption(33));
  EXPECT_EQ(IconCaption(19), "Powerplant");
  EXPECT_EQ(IconCaption(34), "Powerplant");
  EXPECT_EQ(IconCaption(35), "Powerplant");
  for (std::int32_t icon = 1; icon <= LastIcon; ++icon) EXPECT_FALSE(IconCaption(icon).empty()) << icon;
  for (const std::int32_t number : {0, 36, -1, 32767}) EXPECT_EQ(IconCaption(number), "");
}

}  // namespace
}  // namespace kestrel::map
