#include "map/plots.h"

#include <gtest/gtest.h>

#include <limits>

#include "link/feed_text.h"
#include "link/plot_feed.h"
#include "link/roster.h"
#include "map/renderer.h"
#include "map/scene_fixture.h"

namespace kestrel::map {
namespace {

using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

class RealPlot : public testing::Test, protected test::SceneFixture {
 protected:
  void Draw() { RepositAllPlots(Scene(), Surface); }
};

class AIPlot : public testing::Test, protected test::SceneFixture {
 protected:
  void Draw() { DrawMovingLayers(Scene(), Surface); }
};

TEST_F(RealPlot, HasACircleFiveLabelsEndingLeftOfItAndAVector) {
  AddPlayer(512, 512).History.Append({512, 500});
  Display.SHOWHISTORY = false;
  Draw();
  constexpr base::Colour colour = 0x123456;
  constexpr double end = 6000 - 210;
  constexpr double top = 4500 - 5 * 195 / 2.0;
  EXPECT_EQ(Surface.Calls, (Calls{{"circle", {6000, 4500, 60}, colour, 1},
                                  {"print", {end - 90, top}, colour, 0, "7"},
                                  {"print", {end - 7 * 90, top + 195}, colour, 0, "Viper11"},
                                  {"print", {end - 3 * 90, top + 390}, colour, 0, "Ann"},
                                  {"print", {end - 3 * 90, top + 585}, colour, 0, "035"},
                                  {"print", {end - 3 * 90, top + 780}, colour, 0, "400"},
                                  {"line", {6000, 4500, 6000, 4500 - 40 * 15}, colour, 1}}));
  EXPECT_EQ(Surface.LastFontName, "MS Sans Serif");
  EXPECT_EQ(Surface.LastFontSize, 8);
}

TEST_F(RealPlot, OnlyTheLinesThatAreChosenAreShown) {
  AddPlayer(512, 512);
  map::Scene scene = Scene();
  scene.Shown = {.Id = false, .Callsign = true, .Name = false, .Altitude = true, .Speed = false};
  RepositAllPlots(scene, Surface);
  // Two lines: one above the plot's height, one below.
  constexpr double end = 6000 - 210;
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {end - 7 * 90, 4500 - 195}, 0x123456, 0, "Viper11"},
                                        {"print", {end - 3 * 90, 4500}, 0x123456, 0, "035"}}));
  scene.Shown = {.Id = true, .Callsign = false, .Name = true, .Altitude = false, .Speed = true};
  Surface.Calls.clear();
  RepositAllPlots(scene, Surface);
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {end - 90, 4500 - 292.5}, 0x123456, 0, "7"},
                                        {"print", {end - 3 * 90, 4500 - 97.5}, 0x123456, 0, "Ann"},
                                        {"print", {end - 3 * 90, 4500 + 97.5}, 0x123456, 0, "400"}}));
  scene.Shown = {.Id = false, .Callsign = false, .Name = false, .Altitude = false, .Speed = false};
  Surface.Calls.clear();
  RepositAllPlots(scene, Surface);
  EXPECT_TRUE(Surface.Of("print").empty());
  EXPECT_EQ(Surface.Of("circle").size(), 1U);
}

TEST(SizeOfLabels, IsAPercentageOfTheFontWithinBounds) {
  EXPECT_EQ(SizedLabelFont(100).Size, LabelFont().Size);
  EXPECT_EQ(SizedLabelFont(150).Size, 12);
  for (const double low : {50.0, 49.0, 0.0, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(SizedLabelFont(low).Size, 4) << low;
  }
  for (const double high : {300.0, 301.0, 1e300}) EXPECT_EQ(SizedLabelFont(high).Size, 24) << high;
}

TEST_F(RealPlot, AnEmptyLabelKeepsItsLine) {
  AddPlayer(512, 512).Label = "";
  Draw();
  const Calls prints = Surface.Of("print");
  ASSERT_EQ(prints.size(), 5U);
  EXPECT_EQ(prints[2].Numbers[1] - prints[1].Numbers[1], 195);
}

TEST_F(RealPlot, WithoutLabelsSymbolAndVectorAreDrawn) {
  AddPlayer(512, 512).History.Append({512, 500});
  Display.REALLABELSVISIBLE = false;
  Display.SHOWHISTORY = false;
  Draw();
  EXPECT_EQ(Surface.Calls, (Calls{{"circle", {6000, 4500, 60}, 0x123456, 1},
                                  {"line", {6000, 4500, 6000, 4500 - 40 * 15}, 0x123456, 1}}));
}

TEST_F(RealPlot, VectorPointsWhereThePlotMoves) {
  struct Case {
    double fromX, fromY;
    double right, up;  // pixels
  };
  constexpr Case cases[] = {{509, 508, 24, 32},  {515, 516, -24, -32}, {509, 516, 24, -32},
                            {515, 508, -24, 32}, {512, 500, 0, 40},    {512, 520, 0, -40},
                            {500, 512, 40, 0},   {520, 512, -40, 0},   {512, 512, 0, 0}};
  Display.REALLABELSVISIBLE = false;
  Display.SHOWHISTORY = false;
  link::PlotRecord& plot = AddPlayer(512, 512);
  for (const Case& each : cases) {
    plot.History.Clear();
    plot.History.Append({each.fromX, each.fromY});
    Surface.Calls.clear();
    Draw();
    const Calls expected = {{"line", {6000, 4500, 6000 + 15 * each.right, 4500 - 15 * each.up}, 0x123456, 1}};
    EXPECT_EQ(Surface.Of("line"), expected) << each.fromX << ' ' << each.fromY;
  }
}

TEST_F(RealPlot, AppearsWithItsSecondPosition) {
  link::AddAWASCClient(test::ClientData("7", "Ann"), true, Plots);
  struct Case {
    const char* feet;
    std::size_t plots;
  };
  for (const Case& each : {Case{"1600000", 0}, {"1610000", 1}, {"1620000", 1}}) {
    link::GetAWACSPosData(test::PositionData("7", each.feet, each.feet, "20000"), 5000, Plots);
    Surface.Calls.clear();
    Draw();
    EXPECT_EQ(Surface.Of("circle").size(), each.plots) << each.feet;
    EXPECT_EQ(Surface.Of("print").size(), 5 * each.plots) << each.feet;
    EXPECT_EQ(Surface.Of("line").size(), each.plots) << each.feet;
  }
}

TEST_F(RealPlot, BeforeItsSecondPositionOnlyItsTrailIsDrawn) {
  link::PlotRecord& plot = AddPlayer(512, 512);
  plot.History.Append({512, 511});
  for (const char* text : {"", "0000.0000000.000"}) {
    plot.PosText = text;
    Surface.Calls.clear();
    Draw();
    EXPECT_EQ(Surface.Calls, (Calls{{"dot", {6000, 4515}, 0x123456}})) << text;
  }
}

TEST_F(RealPlot, AtEitherZeroOnlyItsTrailIsDrawn) {
  for (const auto& [x, y] : {std::pair{0.0, 0.0}, {0.0, 512.0}, {512.0, 0.0}}) {
    Plots.Clients.Clear();
    Surface.Calls.clear();
    AddPlayer(x, y).History.Append({512, 512});
    Draw();
    EXPECT_EQ(Surface.Calls, (Calls{{"dot", {6000, 4500}, 0x123456}})) << x << ' ' << y;
  }
}

TEST_F(RealPlot, ShowsItsLastSixPointsOrAllOfThem) {
  struct Case {
    int points;
    bool all;
    int first, count;
  };
  constexpr Case cases[] = {{0, false, 1, 0}, {1, false, 1, 1},   {5, false, 1, 5},  {6, false, 1, 6},
                            {7, false, 2, 6}, {20, false, 15, 6}, {20, true, 1, 20}, {3, true, 1, 3}};
  for (const Case& each : cases) {
    Plots.Clients.Clear();
    Surface.Calls.clear();
    link::PlotRecord& plot = AddPlayer(512, 512);
    plot.ShowAllHistory = each.all;
    for (int point = 1; point <= each.points; ++point) plot.History.Append({512.0 + point, 512});
    Draw();
    const Calls dots = Surface.Of("dot");
    ASSERT_EQ(dots.size(), static_cast<std::size_t>(each.count)) << each.points;
    if (each.count > 0) {
      EXPECT_EQ(dots[0].Numbers[0], 6000 + 15 * each.first) << each.points;
    }
  }
}

TEST_F(RealPlot, TrailPointsWithAZeroAreLeftOut) {
  link::PlotRecord& plot = AddPlayer(512, 512);
  plot.History.Append({0, 500});
  plot.History.Append({500, 0});
  plot.History.Append({512, 511});
  Draw();
  EXPECT_EQ(Surface.Of("dot"), (Calls{{"dot", {6000, 4515}, 0x123456}}));
}

TEST_F(RealPlot, HasNoTrailWhenHistoryIsOff) {
  AddPlayer(512, 512).History.Append({512, 511});
  Display.SHOWHISTORY = false;
  Draw();
  EXPECT_TRUE(Surface.Of("dot").empty());
}

TEST_F(RealPlot, IsHiddenWholeBySwitchByRecordOrWithoutId) {
  AddPlayer(512, 512).History.Append({512, 511});
  Display.REALVISIBLE = false;
  Draw();
  EXPECT_TRUE(Surface.Calls.empty());
  Display.REALVISIBLE = true;
  Plots.Clients[1].PlotVisible = false;
  Draw();
  EXPECT_TRUE(Surface.Calls.empty());
  Plots.Clients[1].PlotVisible = true;
  Plots.Clients[1].ClientId = 0;
  Draw();
  EXPECT_TRUE(Surface.Calls.empty());
}

TEST_F(RealPlot, TheDummyIsNeverDrawn) {
  Plots.Clients[0].X = Plots.Clients[0].Y = 512;
  Plots.Clients[0].ClientId = 3;
  RepositPlot(Scene(), Surface, 0);
  Draw();
  EXPECT_TRUE(Surface.Calls.empty());
}

TEST_F(AIPlot, HostileIsACaretWithAltitudeAndName) {
  AddAI(512, 512, 1);
  Draw();
  constexpr double left = 6000 - (3 * 90 + 285);
  constexpr double top = 4500 - 98;  // half of 195, rounded to even
  EXPECT_EQ(Surface.Calls, (Calls{{"line", {5940, 4560, 6000, 4440}, 255, 1},
                                  {"line", {6000, 4440, 6060, 4560}, 255, 1},
                                  {"print", {left, top}, 255, 0, "050"},
                                  {"print", {left + 3 * 90 - 5 * 90, top + 195}, 255, 0, "Mig21"}}));
}

TEST_F(AIPlot, BlockStandsAtWholeUnitsFromThePlotHalvesGoingToTheEvenOne) {
  struct Case {
    double width, height;  // of a character
    double left, up;       // of the altitude's upper left corner from the plot
  };
  // Three characters and 285: 555.75, 556.5, 558.375. Half the height: 96.5, 97.5, 98.25, 97.75.
  constexpr Case cases[] = {
      {90.25, 193, 556, 96}, {90.5, 195, 556, 98}, {91.125, 196.5, 558, 98}, {91.125, 195.5, 558, 98}};
  AddAI(512, 512, 1);
  for (const Case& each : cases) {
    Surface.CharacterWidth = each.width;
    Surface.LineHeight = each.height;
    Surface.Calls.clear();
    Draw();
    const Calls prints = Surface.Of("print");
    ASSERT_EQ(prints.size(), 2U);
    EXPECT_EQ(prints[0].Numbers[0], 6000 - each.left) << each.width;
    EXPECT_EQ(prints[0].Numbers[1], 4500 - each.up) << each.height;
    // The name, five characters, ends where the altitude does, on the next line.
    EXPECT_NEAR(prints[1].Numbers[0], 6000 - each.left - 2 * each.width, 1e-9);
    EXPECT_EQ(prints[1].Numbers[1], 4500 - each.up + each.height);
  }
}

TEST_F(AIPlot, FriendIsTheLowerArcInItsColour) {
  AddAI(512, 512, 0);
  Display.AICOLOR_FRIENDS = 0x00AA00;
  Draw();
  ASSERT_FALSE(Surface.Calls.empty());
  EXPECT_EQ(Surface.Calls[0], (SurfaceCall{"arc", {6000, 4500, 60, 205, 335}, 0x00AA00, 1}));
  for (const SurfaceCall& call : Surface.Of("print")) EXPECT_EQ(call.Color, 0x00AA00U);
}

TEST_F(AIPlot, YGrowsDownward) {
  AddAI(512, 500, 0);
  Draw();
  EXPECT_EQ(Surface.Of("arc")[0].Numbers[1], 4500 - 12 * 15);
}

TEST_F(AIPlot, AnyOtherSideThan0IsHostile) {
  AddAI(512, 512, 2);
  LinkOptions.AICOLOR = 0x445566;
  Draw();
  EXPECT_EQ(Surface.Of("line").size(), 2U);
  EXPECT_EQ(Surface.Of("line")[0].Color, 0x445566U);
}

TEST_F(AIPlot, NameAloneHangsOnABlockUpAndLeft) {
  AddAI(512, 512, 1);
  Display.AILABELSVISIBLE = false;
  Draw();
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {6000 - 195 - 5 * 90, 4500 - 195}, 255, 0, "Mig21"}}));
}

TEST_F(AIPlot, AltitudeAloneAndNoLabelAtAll) {
  AddAI(512, 512, 1);
  Display.SHOWAINAMES = false;
  Draw();
  EXPECT_EQ(Surface.Of("print").size(), 1U);
  Display.AILABELSVISIBLE = false;
  Surface.Calls.clear();
  Draw();
  EXPECT_TRUE(Surface.Of("print").empty());
  EXPECT_EQ(Surface.Of("line").size(), 2U);
}

TEST_F(AIPlot, SwitchedOffLeavesOnlyTheTrail) {
  AddAI(512, 512, 1);
  Plots.AIHistory.Append({512, 512, 1, 255});
  Display.AIVISIBLE = false;
  Draw();
  EXPECT_EQ(Surface.Calls, (Calls{{"dot", {5940, 4440}, 255}}));
}

TEST_F(AIPlot, TrailLiesFourPixelsUpAndLeftInThePointsOwnColour) {
  Plots.AIHistory.Append({513, 514, 3, 16711680});
  Display.AICOLOR_FRIENDS = 1;
  Draw();
  EXPECT_EQ(Surface.Calls, (Calls{{"dot", {6015 - 60, 4530 - 60}, 16711680}}));
  Display.SHOWHISTORY = false;
  Surface.Calls.clear();
  Draw();
  EXPECT_TRUE(Surface.Calls.empty());
}

}  // namespace
}  // namespace kestrel::map
