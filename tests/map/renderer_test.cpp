#include "map/renderer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>

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

/// Both lines of a cell: from its crossing to the north and to the east. To the hundredth of a unit.
void ExpectCell(const Calls& calls, std::size_t first, const double (&numbers)[6], base::Colour colour, int width) {
  ASSERT_GT(calls.size(), first + 1);
  for (const std::size_t line : {0, 1}) {
    const SurfaceCall& call = calls[first + line];
    EXPECT_EQ(call.What, "line");
    EXPECT_EQ(call.Color, colour);
    EXPECT_EQ(call.DrawWidth, width);
    const double expected[] = {numbers[0], numbers[1], numbers[2 + 2 * line], numbers[3 + 2 * line]};
    for (std::size_t number = 0; number < 4; ++number) {
      EXPECT_NEAR(call.Numbers[number], expected[number], 0.01) << first + line << ", number " << number;
    }
  }
}

// Worked out by hand with 13 digits: a crossing lies (long - 123) * 0.01745329 * 2.09257e7 * cos(lat * 0.01745329) feet
// east and lat * 0.01745329 * 2.09257e7 - 33 * 365221.8846 feet north of the corner; by 3279.98 that is map units,
// which stand at 15 x - 1680 and 12180 - 15 y on the surface.
TEST_F(Renderer, GridLinesRunNorthAndEastFromEachCrossingOfHalfAndOfWholeDegrees) {
  DrawGrid(Scene(), Surface);
  // 33.5, 123.5 is at (46.42616, 55.67876); 34.5, 123.5 at (45.88279, 167.02770); 33.5, 124.5 at (139.27847, 55.67876).
  ExpectCell(Surface.Calls, 0, {-983.6077, 11344.8186, -991.7581, 9674.5845, 409.1770, 11344.8186}, 14737632, 1);
  // 10 rows of 13 cells, two lines each, come before the whole degrees. The corner itself is all but at (0, 0).
  ExpectCell(Surface.Calls, 260, {-1680, 12179.9357, -1680, 10509.7016, -279.2237, 12179.9357}, 0, 2);
  // 42, 130 in the last row, at (579.2388, 1002.1448): cell 9 * 13 + 7. 43, 130 is at (570.0483, 1113.4937), further
  // west; 42, 131 at (661.9872, 1002.1448).
  ExpectCell(Surface.Calls, 260 + 2 * 124, {7008.5820, -2852.1718, 6870.7244, -4522.4059, 8249.8080, -2852.1718}, 0, 2);
  EXPECT_EQ(Surface.Calls.size(), 2 * 260U);
}

TEST_F(Renderer, GridBeginsBelowANegativeCorner) {
  Corner = {-5.5, -60.25};
  Display.SHOWGRID_SEC = false;
  DrawGrid(Scene(), Surface);
  // -6, -61 lies at (-83.05422, -55.67519) from that corner; -5, -61 at (-83.19392, 55.67376); -6, -60 at (27.68474,
  // -55.67519).
  ExpectCell(Surface.Calls, 0, {-2925.8133, 13015.1278, -2927.9088, 11344.8936, -1264.7289, 13015.1278}, 0, 2);
  // Up to 3.70 degrees north and 51.03 west: 10 rows of 10 cells.
  EXPECT_EQ(Surface.Calls.size(), 200U);
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

/// Cannot bear a position that is no number or lies far out.
class FrailSurface : public test::RecordingSurface {
 public:
  void Circle(double x, double y, double radius, Pen pen) override {
    Bear(x, y);
    RecordingSurface::Circle(x, y, radius, pen);
  }
  void Line(double x1, double y1, double x2, double y2, Pen pen) override {
    Bear(x1, y1);
    RecordingSurface::Line(x1, y1, x2, y2, pen);
  }
  void Arc(double x, double y, double radius, double from, double to, Pen pen) override {
    Bear(x, y);
    RecordingSurface::Arc(x, y, radius, from, to, pen);
  }
  void Dot(double x, double y, base::Colour color) override {
    Bear(x, y);
    RecordingSurface::Dot(x, y, color);
  }

 private:
  static void Bear(double x, double y) {
    if (std::isnan(x) || std::isnan(y)) throw base::RuntimeFailure("no number");
    if (std::abs(x) > 1e30 || std::abs(y) > 1e30) throw std::bad_alloc();
  }
};

TEST_F(Renderer, ADamagedPlotCostsItselfAndNoOther) {
  Display.SHOWGRID = false;
  for (const double damaged : {std::nan(""), 1e300, -1e300}) {
    FrailSurface frail;
    const auto single = static_cast<float>(std::isnan(damaged) ? damaged : damaged / 1e265);
    Plots = {};
    AddPlayer(damaged, 512);
    AddPlayer(512, 512).History.Append({512, 511});
    AddAI(single, 512, 0);
    AddAI(512, 512, 0);
    AddAI(single, 512, 1);
    AddAI(500, 512, 1);
    Plots.AIHistory.Append({single, 512, 1, 255});
    Plots.AIHistory.Append({512, 512, 1, 255});
    DrawMap(Scene(), frail);
    EXPECT_EQ(frail.Of("circle").size(), 3U + 1U) << "rings of the bullseye and the sound player";
    EXPECT_EQ(frail.Of("arc").size(), 1U);
    EXPECT_EQ(frail.Of("line").size(), 1U + 2U) << "vector and caret";
    EXPECT_EQ(frail.Of("dot").size(), 2U) << "of his trail and of theirs";
    EXPECT_EQ(frail.Of("capture").size(), 1U);
  }
}

TEST_F(Renderer, ADamagedPointOfATrailLeavesTheOtherPoints) {
  FrailSurface frail;
  link::PlotRecord& plot = AddPlayer(512, 512);
  plot.History.Append({std::nan(""), 500});
  plot.History.Append({512, 511});
  RedrawPlots(Scene(), frail);
  EXPECT_EQ(frail.Of("dot"), (Calls{{"dot", {6000, 4515}, 0x123456}}));
}

/// Each kind of call fails as it can when memory ends.
class BrokenSurface : public test::RecordingSurface {
 public:
  void CopyPicture(const base::Picture&, const SourceRect&) override { throw std::bad_alloc(); }
  void Line(double, double, double, double, Pen) override { throw std::length_error("line"); }
  void Circle(double, double, double, Pen) override { throw std::bad_alloc(); }
};

TEST_F(Renderer, WhatStandsIsCapturedWhateverHappened) {
  BrokenSurface broken;
  AddPlayer(512, 512);
  AddAI(512, 512, 0);
  DrawMap(Scene(), broken);
  EXPECT_EQ(broken.Of("capture").size(), 1U);
  EXPECT_EQ(broken.Of("arc").size(), 1U) << "what moves is drawn all the same";
}

}  // namespace
}  // namespace kestrel::map
