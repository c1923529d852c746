#include "map/renderer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/failure.h"
#include "map/scene_fixture.h"

namespace kestrel::map {
namespace {

using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

class Renderer : public testing::Test, protected test::SceneFixture {};

/// The kinds of the calls in order, each run of the same kind once.
std::vector<std::string> Kinds(const Calls& calls) {
  std::vector<std::string> kinds;
  for (const SurfaceCall& call : calls) {
    if (kinds.empty() || kinds.back() != call.What) kinds.push_back(call.What);
  }
  return kinds;
}

TEST_F(Renderer, PaintsFromTheBottomUpAndCapturesBeforeWhatMoves) {
  AddPlayer(512, 512);
  AddAI(500, 500, 0);
  Plots.AIHistory.Append({512, 512, 1, 255});
  DrawMap(Scene(), Surface);
  EXPECT_EQ(Kinds(Surface.Calls), (std::vector<std::string>{"picture", "line", "circle", "capture", "circle", "print",
                                                            "line", "arc", "print", "dot"}));
  EXPECT_EQ(Surface.Calls[0], (SurfaceCall{"picture", {1024 - 800, 1024 - 600, 1600, 1200}}));
}

TEST_F(Renderer, RedrawRestoresAndPaintsOnlyWhatMoves) {
  AddPlayer(512, 512);
  RedrawPlots(Scene(), Surface);
  EXPECT_EQ(Kinds(Surface.Calls), (std::vector<std::string>{"restore", "circle", "print", "line"}));
}

TEST_F(Renderer, BullseyeHasThreeRingsThatDoNotGrow) {
  View.Resolution = 4;
  RefreshPositions(View);
  Display.BULLSEYE_COLOR = 99;
  DrawBullseye(Scene(), Surface);
  EXPECT_EQ(Surface.Calls, (Calls{{"circle", {View.BullsX, View.BullsY, 45}, 99, 1},
                                  {"circle", {View.BullsX, View.BullsY, 90}, 99, 1},
                                  {"circle", {View.BullsX, View.BullsY, 135}, 99, 1}}));
  View.BullseyeVisible = false;
  Surface.Calls.clear();
  DrawBullseye(Scene(), Surface);
  EXPECT_TRUE(Surface.Calls.empty());
}

TEST_F(Renderer, VisibleRectangleIsInMapUnitsNorthUp) {
  View.Resolution = 2;
  const ClipRect clip = VisibleRect(View);
  EXPECT_EQ(clip.ClipLeft, 512 - 200);
  EXPECT_EQ(clip.ClipRight, 512 + 200);
  EXPECT_EQ(clip.ClipTop, 512 + 150);
  EXPECT_EQ(clip.ClipBottom, 512 - 150);
}

TEST_F(Renderer, GridBeginsWithHalfDegreesAndEndsWithWholeOnes) {
  // 1024 map units are 9.196 degrees of latitude: from 33 to 42, so 10 rows.
  DrawGrid(Scene(), Surface);
  const LatLong upperRight = LatLongFromFeet(Corner, 1024 * 3279.98, 1024 * 3279.98);
  const auto cells =
      static_cast<std::size_t>((std::floor(upperRight.Lat) - 33 + 1) * (std::floor(upperRight.Long) - 123 + 1));
  ASSERT_EQ(Surface.Calls.size(), 4 * cells);
  EXPECT_EQ(std::floor(upperRight.Lat), 42);
  for (std::size_t line = 0; line < Surface.Calls.size(); ++line) {
    const bool secondary = line < 2 * cells;
    EXPECT_EQ(Surface.Calls[line].Color, secondary ? 14737632U : 0U);
    EXPECT_EQ(Surface.Calls[line].DrawWidth, secondary ? 1 : 2);
  }
}

TEST_F(Renderer, GridLinesRunNorthAndEastFromEachCrossingOfHalfAndOfWholeDegrees) {
  DrawGrid(Scene(), Surface);
  const auto at = [&](double lat, double lon) {
    const Feet feet = FeetFromLatLong(Corner, lat, lon);
    return SurfaceFromMap(View, feet.X / 3279.98, feet.Y / 3279.98);
  };
  const auto expectLines = [&](std::size_t first, double lat, double lon, base::Colour colour, int width) {
    ASSERT_GT(Surface.Calls.size(), first + 1);
    const Point from = at(lat, lon);
    const Point north = at(lat + 1, lon);
    const Point east = at(lat, lon + 1);
    EXPECT_EQ(Surface.Calls[first], (SurfaceCall{"line", {from.X, from.Y, north.X, north.Y}, colour, width}));
    EXPECT_EQ(Surface.Calls[first + 1], (SurfaceCall{"line", {from.X, from.Y, east.X, east.Y}, colour, width}));
  };
  expectLines(0, 33.5, 123.5, 14737632, 1);
  expectLines(Surface.Calls.size() / 2, 33, 123, 0, 2);
  const Point crossing = at(33, 123);
  EXPECT_NEAR(crossing.X, 6000 - 7680, 0.1);  // the corner itself
  EXPECT_NEAR(crossing.Y, 4500 + 7680, 0.1);
}

TEST_F(Renderer, GridBeginsBelowANegativeCorner) {
  Corner = {-5.5, -60.25};
  Display.SHOWGRID_SEC = false;
  DrawGrid(Scene(), Surface);
  const Feet feet = FeetFromLatLong(Corner, -6, -61);
  const Point crossing = SurfaceFromMap(View, feet.X / 3279.98, feet.Y / 3279.98);
  ASSERT_FALSE(Surface.Calls.empty());
  EXPECT_NEAR(Surface.Calls[0].Numbers[0], crossing.X, 1e-6);
  EXPECT_NEAR(Surface.Calls[0].Numbers[1], crossing.Y, 1e-6);
}

TEST_F(Renderer, WithoutGridTheHalfDegreesHaveNoEffect) {
  Display.SHOWGRID = false;
  Display.SHOWGRID_SEC = true;
  DrawGrid(Scene(), Surface);
  EXPECT_TRUE(Surface.Calls.empty());
}

TEST_F(Renderer, HostileCornersAndSizesDrawNoEndlessGrid) {
  const double none = std::nan("");
  const double far = std::numeric_limits<double>::infinity();
  struct Case {
    double lat, lon, size;
  };
  const Case cases[] = {{none, 0, 1024}, {0, far, 1024},  {1e300, 0, 1024}, {0, -1e9, 1024}, {30, 120, 1e12},
                        {30, 120, far},  {30, 120, none}, {90, 0, 1e6},     {0, 0, 1e300}};
  for (const Case& each : cases) {
    Corner = {each.lat, each.lon};
    View.Size = each.size;
    Surface.Calls.clear();
    DrawMap(Scene(), Surface);
    EXPECT_LT(Surface.Calls.size(), 2'100'000U);
    EXPECT_EQ(Surface.Of("picture").size(), 1U);
    EXPECT_EQ(Surface.Of("capture").size(), 1U);
    EXPECT_EQ(Surface.Of("circle").size(), 3U) << "the bullseye stands though the grid failed";
  }
}

class FailingSurface : public test::RecordingSurface {
 public:
  void Line(double, double, double, double, Pen) override { throw base::RuntimeFailure("line"); }
};

TEST_F(Renderer, AFaultInOneLayerLeavesTheOthers) {
  // Lines fail: of the grid, of the player's vector, of the second AI plot.
  FailingSurface failing;
  AddPlayer(512, 512);
  AddAI(500, 500, 0);
  AddAI(500, 500, 1);
  Plots.AIHistory.Append({512, 512, 1, 255});
  DrawMap(Scene(), failing);
  EXPECT_EQ(Kinds(failing.Calls),
            (std::vector<std::string>{"picture", "circle", "capture", "circle", "print", "arc", "print", "dot"}));
  failing.Calls.clear();
  RedrawPlots(Scene(), failing);
  EXPECT_EQ(Kinds(failing.Calls), (std::vector<std::string>{"restore", "circle", "print", "arc", "print", "dot"}));
}

}  // namespace
}  // namespace kestrel::map
