#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "map/lat_long.h"
#include "map/scene_fixture.h"

namespace kestrel::map {
namespace {

using testing::ElementsAre;

class GridDegrees : public testing::Test, protected test::SceneFixture {
 protected:
  GridDegrees() {
    Display.SHOWGRID = true;
    Display.SHOWGRID_SEC = false;
    Display.GRID_PRIM_COLOR = 0x112233;
    Display.GRID_SEC_COLOR = 0x445566;
  }

  std::vector<test::SurfaceCall> Names(bool asked = true) {
    Surface.Calls.clear();
    map::Scene scene = Scene();
    scene.GridDegrees = asked;
    DrawGridDegrees(scene, Surface);
    return Surface.Of("print");
  }
  /// The places of one name.
  std::vector<SurfacePoint> Places(const std::string& name) {
    std::vector<SurfacePoint> places;
    for (const test::SurfaceCall& call : Names()) {
      if (call.Text == name) places.push_back({call.Numbers[0], call.Numbers[1]});
    }
    return places;
  }
};

TEST_F(GridDegrees, LinesAreNamedInDegreesAndWholeMinutes) {
  EXPECT_EQ(LatLineText(37), "N37\xB0");
  EXPECT_EQ(LatLineText(37.5), "N37\xB0 30'");
  EXPECT_EQ(LatLineText(-5), "S05\xB0");
  EXPECT_EQ(LatLineText(-0.5), "S00\xB0 30'");
  EXPECT_EQ(LongLineText(127), "E127\xB0");
  EXPECT_EQ(LongLineText(-3.5), "W003\xB0 30'");
  EXPECT_EQ(LongLineText(0), "E000\xB0");
}

TEST_F(GridDegrees, StandWhereTheLinesMeetTheEdges) {
  // Latitude 35 is (35 x 0.01745329 x 2.09257e7 - 33 x 365221.8846) / 3279.98 = 222.702 map units north, 8839.47 down
  // the surface; the name, 4 x 90 by 195, stands above it, 3 pixels from either edge.
  const std::vector<SurfacePoint> lat = Places("N35\xB0");
  ASSERT_EQ(lat.size(), 2U);
  EXPECT_NEAR(lat[0].X, 45, 0.01);
  EXPECT_NEAR(lat[0].Y, 8839.47 - 195, 0.1);
  EXPECT_NEAR(lat[1].X, 12000 - 45 - 360, 0.01);
  EXPECT_NEAR(lat[1].Y, lat[0].Y, 0.01);
  // Longitude 125 goes straight from (1089.37, 10509.70) at 34 to (1056.35, 8839.47) at 35, so that it meets the lower
  // edge, 9000 down, at 1059.53; and from (878.95, 488.30) at 40 to (841.08, -1181.94) at 41: the upper one at 867.88.
  const std::vector<SurfacePoint> lon = Places("E125\xB0");
  ASSERT_EQ(lon.size(), 2U);
  EXPECT_NEAR(lon[0].X, 1059.53 + 45, 0.1);
  EXPECT_NEAR(lon[0].Y, 9000 - 195, 0.01);
  EXPECT_NEAR(lon[1].X, 867.88 + 45, 0.1);
  EXPECT_NEAR(lon[1].Y, 0, 0.01);
}

TEST_F(GridDegrees, EachLineInViewHasThem) {
  // In view are 35 to 40 degrees north; along the lower edge 125 to 132 east, along the upper one 125 to 133.
  std::vector<std::string> names;
  for (const test::SurfaceCall& call : Names()) {
    names.push_back(call.Text.substr(0, call.Text.size() - 1));
    EXPECT_EQ(call.Color, 0x112233U);
  }
  EXPECT_THAT(names, ElementsAre("N35", "N35", "N36", "N36", "N37", "N37", "N38", "N38", "N39", "N39", "N40", "N40",
                                 "E125", "E125", "E126", "E126", "E127", "E127", "E128", "E128", "E129", "E129", "E130",
                                 "E130", "E131", "E131", "E132", "E132", "E133"));
}

TEST_F(GridDegrees, HalfDegreesHaveTheColourOfTheirLines) {
  Display.SHOWGRID_SEC = true;
  EXPECT_EQ(Places("N36\xB0 30'").size(), 2U);
  for (const test::SurfaceCall& call : Names()) {
    EXPECT_EQ(call.Color, call.Text.back() == '\'' ? 0x445566U : 0x112233U) << call.Text;
  }
}

TEST_F(GridDegrees, AreThereWithTheGridAloneAndWhenTheyAreAskedFor) {
  Display.SHOWGRID_SEC = true;
  EXPECT_TRUE(Names(false).empty());
  Display.SHOWGRID = false;
  EXPECT_TRUE(Names().empty());
}

TEST_F(GridDegrees, NoneCoversAnotherOrLeavesTheSurfaceAtAnyZoom) {
  Display.SHOWGRID_SEC = true;
  std::size_t most = 0;
  for (double resolution = LeastResolution; resolution <= GreatestResolution; resolution *= std::sqrt(2)) {
    SCOPED_TRACE(resolution);
    ChangeRes(View, resolution);
    const std::vector<test::SurfaceCall> names = Names();
    most = std::max(most, names.size());
    for (std::size_t one = 0; one < names.size(); ++one) {
      const double x = names[one].Numbers[0], y = names[one].Numbers[1];
      const auto width = 90 * static_cast<double>(names[one].Text.size());
      EXPECT_TRUE(x >= 0 && y >= 0 && x + width <= View.SurfaceWidth && y + 195 <= View.SurfaceHeight);
      for (std::size_t two = 0; two < one; ++two) {
        const double otherX = names[two].Numbers[0], otherY = names[two].Numbers[1];
        const auto otherWidth = 90 * static_cast<double>(names[two].Text.size());
        EXPECT_FALSE(x < otherX + otherWidth && otherX < x + width && std::abs(y - otherY) < 195)
            << names[one].Text << " and " << names[two].Text;
      }
    }
  }
  EXPECT_GT(most, 40U);
}

TEST_F(GridDegrees, ALineThatEndsWithinTheViewIsNamedAtItsEnd) {
  // At a quarter longitude 123, the western end of the latitudes, is 6000 + (0 - 7680) / 4 = 4080 from the left.
  ChangeRes(View, 0.25);
  const std::vector<SurfacePoint> lat = Places("N38\xB0");
  ASSERT_EQ(lat.size(), 2U);
  EXPECT_NEAR(lat[0].X, 4080 + 45, 0.01);
}

TEST_F(GridDegrees, LieAboveWhatElseStandsAndAreCaptured) {
  map::Scene scene = Scene();
  DrawMap(scene, Surface);
  const std::vector<test::SurfaceCall> without = Surface.Calls;
  Surface.Calls.clear();
  scene.GridDegrees = true;
  DrawMap(scene, Surface);
  std::vector<test::SurfaceCall> with = Surface.Calls;
  ASSERT_GT(with.size(), without.size());
  const auto capture = std::find_if(with.begin(), with.end(), [](const auto& call) { return call.What == "capture"; });
  ASSERT_NE(capture, with.end());
  const auto added = static_cast<std::ptrdiff_t>(with.size() - without.size());
  with.erase(capture - added, capture);
  EXPECT_EQ(with, without) << "they come last of what stands, and nothing else is other";
}

}  // namespace
}  // namespace kestrel::map
