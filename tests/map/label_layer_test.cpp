#include "map/label_layer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>
#include <random>

#include "map/scene_fixture.h"

namespace {

/// How often memory has been asked for.
std::size_t asked = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++asked;
  if (void* memory = std::malloc(std::max<std::size_t>(size, 1))) return memory;
  throw std::bad_alloc();
}
// A library's own way in, so that all come from and go back to one place, also where a sanitizer has its own.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++asked;
  return std::malloc(std::max<std::size_t>(size, 1));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kestrel::map {
namespace {

using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

/// Measures and draws nothing.
class QuietSurface final : public Surface {
 public:
  void CopyPicture(const base::Picture&, const SourceRect&) override {}
  void Line(double, double, double, double, Pen) override {}
  void Circle(double, double, double, Pen) override {}
  void Arc(double, double, double, double, double, Pen) override {}
  void Box(double, double, double, double, Pen) override {}
  void Polygon(std::span<const SurfacePoint>, Pen) override {}
  void Dot(double, double, base::Colour) override {}
  TextSize Measure(std::string_view text, const TextFont&) override {
    return {90 * static_cast<double>(text.size()), 195};
  }
  void Print(std::string_view, double, double, const TextFont&, base::Colour) override {}
  void Capture() override {}
  void Restore() override {}
};

class LabelsApart : public testing::Test, protected test::SceneFixture {
 protected:
  LabelsApart() { Display.SHOWHISTORY = false; }

  map::Scene Apart() {
    map::Scene scene = Scene();
    scene.Apart = &Layer;
    return scene;
  }
  Calls Draw() {
    Surface.Calls.clear();
    DrawMovingLayers(Apart(), Surface);
    return Surface.Calls;
  }
  /// Places that cover another, or a symbol, on the surface.
  std::size_t Overlaps(const std::vector<Box>& areas, const std::vector<SurfacePoint>& symbols) const {
    const Box all{0, 0, View.SurfaceWidth, View.SurfaceHeight};
    const auto seen = [&all](const Box& box) {
      return Box{std::max(box.Left, all.Left), std::max(box.Top, all.Top), std::min(box.Right, all.Right),
                 std::min(box.Bottom, all.Bottom)};
    };
    std::size_t count = 0;
    for (std::size_t index = 0; index < areas.size(); ++index) {
      for (std::size_t other = 0; other < index; ++other) count += Overlap(seen(areas[index]), seen(areas[other]));
      for (const SurfacePoint& at : symbols) {
        count += Overlap(seen(areas[index]), {at.X - 60, at.Y - 60, at.X + 60, at.Y + 60});
      }
    }
    return count;
  }

  LabelLayer Layer;
};

TEST_F(LabelsApart, AreOffAsTheStationShips) {
  // A player at (6000, 4500) and a hostile aircraft at (7500, 4500), each with its label in its stroke: nothing of this
  // has changed for the option.
  AddPlayer(512, 512);
  AddAI(612, 512, 1);
  ASSERT_EQ(Scene().Apart, nullptr);
  DrawMovingLayers(Scene(), Surface);
  constexpr base::Colour colour = 0x123456;
  const Calls expected = {{"circle", {6000, 4500, 60}, colour, 1},
                          {"print", {5790 - 90, 4012.5}, colour, 0, "7"},
                          {"print", {5790 - 630, 4207.5}, colour, 0, "Viper11"},
                          {"print", {5790 - 270, 4402.5}, colour, 0, "Ann"},
                          {"print", {5790 - 270, 4597.5}, colour, 0, "035"},
                          {"print", {5790 - 270, 4792.5}, colour, 0, "400"},
                          Surface.Of("line").at(0),
                          {"line", {7440, 4560, 7500, 4440}, 255, 1},
                          {"line", {7500, 4440, 7560, 4560}, 255, 1},
                          {"print", {7500 - 285 - 270, 4500 - 98}, 255, 0, "050"},
                          {"print", {7500 - 285 - 450, 4500 - 98 + 195}, 255, 0, "Mig21"}};
  EXPECT_EQ(Surface.Calls, expected);
}

TEST_F(LabelsApart, WithRoomStandWhereTheyStandByThemselves) {
  AddPlayer(512, 512);
  AddAI(712, 512, 1).Name = "Mig21     ";
  const Calls calls = Draw();
  constexpr base::Colour colour = 0x123456;
  const Calls prints = {
      {"print", {5790 - 90, 4012.5}, colour, 0, "7"},        {"print", {5790 - 630, 4207.5}, colour, 0, "Viper11"},
      {"print", {5790 - 270, 4402.5}, colour, 0, "Ann"},     {"print", {5790 - 270, 4597.5}, colour, 0, "035"},
      {"print", {5790 - 270, 4792.5}, colour, 0, "400"},     {"print", {9000 - 285 - 270, 4402.5}, 255, 0, "050"},
      {"print", {9000 - 285 - 450, 4597.5}, 255, 0, "Mig21"}};
  EXPECT_EQ(Surface.Of("print"), prints);
  EXPECT_EQ(Surface.Of("circle").size(), 1U);
  EXPECT_EQ(Surface.Of("line").size(), 3U) << "the vector and the symbol; there is no leader";
  EXPECT_EQ(calls.back(), prints.back()) << "labels lie above all symbols";
}

TEST_F(LabelsApart, OneThatStandsNotBesideItsPlotHasALeader) {
  Display.SHOWAINAMES = false;
  for (int count = 0; count < 5; ++count) AddAI(512, 512, 0);
  Draw();
  // "050" is 270 wide and 195 high. The first two stand left and right, the next two so near above and below, 97.5 + 30
  // from the plot, that from 90 on there is no room for a line. The fifth stands above at the left: its right end 135 +
  // 30 left of the plot, its lower edge 97.5 + 30 above it. Its leader begins 90 from the plot on the way to that
  // corner and ends 30 before it.
  const double length = std::hypot(165, 127.5);
  const double end = (length - 30) / length;
  const SurfaceCall leader = {
      "line",
      {6000 - 165 * 90 / length, 4500 - 127.5 * 90 / length, 6000 - 165 * end, 4500 - 127.5 * end},
      16711680,
      1};
  EXPECT_EQ(Surface.Of("line"), Calls{leader});
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {6000 - 285 - 270, 4402.5}, 16711680, 0, "050"},
                                        {"print", {6000 + 285, 4402.5}, 16711680, 0, "050"},
                                        {"print", {6000 - 135, 4372.5 - 195}, 16711680, 0, "050"},
                                        {"print", {6000 - 135, 4627.5}, 16711680, 0, "050"},
                                        {"print", {6000 - 165 - 270, 4372.5 - 195}, 16711680, 0, "050"}}));
}

TEST_F(LabelsApart, LinesEndAtThePlotsSide) {
  // Eight on one spot: "050" over "Mig21", 270 and 450 wide.
  for (int count = 0; count < 8; ++count) AddAI(512, 512, 1);
  Draw();
  const Calls prints = Surface.Of("print");
  ASSERT_EQ(prints.size(), 16U);
  const auto shift = [&](std::size_t place) { return prints[2 * place].Numbers[0] - prints[2 * place + 1].Numbers[0]; };
  EXPECT_EQ(shift(0), 180) << "right ends at one height";
  EXPECT_EQ(shift(2), 90) << "above the plot: in the middle";
  EXPECT_EQ(shift(1), 0) << "right of it";
}

TEST_F(LabelsApart, TheSelectedPlayersLabelLiesOnTopAtItsFirstPlace) {
  AddPlayer(512, 512).Name = "First";
  link::PlotRecord& selected = AddPlayer(512, 512);
  selected.Name = "Second";
  selected.Id = selected.ClientId = 8;
  AddAI(512, 400, 1);
  map::Scene scene = Apart();
  scene.SelectedPlot = 2;
  DrawMovingLayers(scene, Surface);
  const Calls prints = Surface.Of("print");
  ASSERT_EQ(prints.size(), 12U);
  EXPECT_EQ(prints[9].Text, "Second");
  EXPECT_EQ(prints[9].Numbers[0], 6000 - 210 - 6 * 90);
  EXPECT_EQ(Layer.Labels()[1].Place, 0);
  EXPECT_NE(Layer.Labels()[0].Place, 0);
}

TEST_F(LabelsApart, AJoinedTwoShipHasOneLineAndALeaderToEach) {
  // Eight AI labels stand around the spot of a two-ship of players, 40 pixels below the leader; a player's label is
  // higher than that.
  AddPlayer(512, 512).Label = "Viper1";
  AddPlayer(512, 508).Label = "Viper2";
  View.SurfaceHeight = 1100;  // 73 pixels: nothing fits above or below
  RefreshPositions(View);
  const SurfacePoint leader = SurfaceFromMap(View, {512, 512});
  const SurfacePoint wing = SurfaceFromMap(View, {512, 508});
  for (const double x : {6500.0, 6700.0}) {  // the right side is taken
    const MapPoint at = MapFromSurface(View, {x, leader.Y});
    AddAI(static_cast<float>(at.X), static_cast<float>(View.Size - at.Y), 1);
  }
  Display.AILABELSVISIBLE = Display.SHOWAINAMES = false;
  Draw();
  ASSERT_EQ(Layer.Labels().size(), 2U);
  ASSERT_TRUE(Layer.Labels()[0].Leads);
  // Both are at 3,500 feet. 13 characters, 210 left of the leader.
  const Calls prints = {{"print", {leader.X - 210 - 13 * 90, leader.Y - 97.5}, 0x123456, 0, "Viper1-2, 035"}};
  EXPECT_EQ(Surface.Of("print"), prints);
  // From 90 beside the leader straight to 30 from the label; from the wing 60 lower too: it is within the label's
  // height.
  const Calls lines = Surface.Of("line");
  const SurfaceCall first = {"line", {leader.X - 90, leader.Y, leader.X - 180, leader.Y}, 0x123456, 1};
  const SurfaceCall second = {"line", {wing.X - 90, wing.Y, wing.X - 180, wing.Y}, 0x123456, 1};
  EXPECT_EQ(std::count(lines.begin(), lines.end(), first), 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), second), 1);
}

TEST_F(LabelsApart, HundredAircraftAtZoomTwoCoverNothing) {
  // Spread over the theater of 1024 map units, at zoom 2 on a surface of 2048 pixels. The row of random numbers is the
  // same everywhere.
  ResizeSurface(View, 2048 * 15, 2048 * 15);
  ChangeRes(View, 2);
  std::mt19937 numbers(7);
  const auto place = [&numbers] { return static_cast<float>(10 + numbers() % 1004); };
  std::vector<SurfacePoint> symbols;
  std::vector<Box> areas;
  for (int count = 0; count < 30; ++count) {
    link::PlotRecord& plot = AddPlayer(place(), place());
    plot.Id = plot.ClientId = static_cast<std::int16_t>(count + 1);
    plot.Label = "Falcon" + std::to_string(count + 1);
    symbols.push_back(SurfaceFromMap(View, {plot.X, plot.Y}));
    const double width = 90 * static_cast<double>(plot.Label.size());
    areas.push_back(
        {symbols.back().X - 210 - width, symbols.back().Y - 487.5, symbols.back().X - 210, symbols.back().Y + 487.5});
  }
  for (int count = 0; count < 70; ++count) {
    // Each second one flies behind the one before it.
    const bool wing = count % 2 == 1;
    const link::AIPlotRecord* leader = wing ? &Plots.AIPlots[static_cast<std::size_t>(count)] : nullptr;
    const float x = wing ? leader->X + 2 : place();
    const float y = wing ? leader->Y - 1.5F : place();
    AddAI(x, y, static_cast<std::uint8_t>(count / 2 % 2)).Name = "Viper" + std::to_string(10 + count) + "   ";
    symbols.push_back(SurfaceFromDown(View, {x, y}));
    areas.push_back(
        {symbols.back().X - 285 - 630, symbols.back().Y - 97.5, symbols.back().X - 285, symbols.back().Y + 292.5});
  }
  EXPECT_GE(Overlaps(areas, symbols), 35U) << "each two-ship's labels cover each other by themselves";
  Draw();
  ASSERT_EQ(Layer.Labels().size(), 100U);
  areas.clear();
  for (const Label& label : Layer.Labels()) {
    if (label.HasArea()) areas.push_back(label.Area);
    EXPECT_FALSE(label.Crowded) << label.Name;
  }
  EXPECT_EQ(Overlaps(areas, symbols), 0U);
}

TEST_F(LabelsApart, FollowWhatIsShown) {
  AddPlayer(512, 512);
  AddAI(712, 512, 1);
  Display.REALLABELSVISIBLE = false;
  Draw();
  ASSERT_EQ(Layer.Labels().size(), 1U);
  EXPECT_FALSE(Layer.Labels()[0].Real);
  Display.REALLABELSVISIBLE = true;
  Display.AIVISIBLE = false;
  Draw();
  ASSERT_EQ(Layer.Labels().size(), 1U);
  EXPECT_TRUE(Layer.Labels()[0].Real);
  Display.REALVISIBLE = false;
  EXPECT_TRUE(Draw().empty());
  Display.REALVISIBLE = Display.AIVISIBLE = true;
  Display.SHOWAINAMES = Display.AILABELSVISIBLE = false;
  Plots.Clients[1].PlotVisible = false;
  Draw();
  EXPECT_TRUE(Layer.Labels().empty());
  Display.SHOWAINAMES = true;
  Draw();
  ASSERT_EQ(Layer.Labels().size(), 1U);
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {9000 - 195 - 450, 4500 - 195}, 255, 0, "Mig21"}}))
      << "where the name stands without an altitude";
}

TEST_F(LabelsApart, HaveTheLinesThatAreChosen) {
  AddPlayer(512, 512);
  map::Scene scene = Apart();
  scene.Shown = {.Id = false, .Callsign = true, .Name = false, .Altitude = false, .Speed = true};
  DrawMovingLayers(scene, Surface);
  EXPECT_EQ(Surface.Of("print"), (Calls{{"print", {5790 - 630, 4500 - 195}, 0x123456, 0, "Viper11"},
                                        {"print", {5790 - 270, 4500}, 0x123456, 0, "400"}}));
  EXPECT_TRUE(Layer.Labels()[0].TellsName);
  EXPECT_FALSE(Layer.Labels()[0].TellsAltitude);
  scene.Shown.Callsign = scene.Shown.Speed = false;
  DrawMovingLayers(scene, Surface);
  EXPECT_TRUE(Layer.Labels().empty());
}

TEST_F(LabelsApart, NamesOfTenThousandCharactersAreDrawnAndHarmNone) {
  const std::string endless(10000, 'x');
  AddPlayer(512, 512).Label = endless + "1";
  AddPlayer(512, 510).Label = endless + "2";
  AddAI(512, 512, 1).Name = endless + "1";
  AddAI(512, 514, 1).Name = endless + "2";
  AddAI(512, 700, 1);
  Draw();
  EXPECT_EQ(Layer.Labels().size(), 5U);
  const Calls prints = Surface.Of("print");
  EXPECT_EQ(std::count_if(prints.begin(), prints.end(), [](const SurfaceCall& call) { return call.Text == "Mig21"; }),
            1);
}

TEST_F(LabelsApart, WhatIsNoPlaceIsNotDrawn) {
  AddPlayer(std::numeric_limits<double>::infinity(), 512);
  AddPlayer(std::numeric_limits<double>::quiet_NaN(), 512);
  AddAI(std::numeric_limits<float>::quiet_NaN(), 512, 1);
  AddAI(std::numeric_limits<float>::max(), 512, 1);
  AddAI(5000, 5000, 1);  // beyond the surface
  Draw();
  EXPECT_TRUE(Layer.Labels().empty());
}

TEST_F(LabelsApart, ARedrawOfTheSameKindAsksForNoMemory) {
  for (int count = 0; count < 300; ++count) {
    const float x = static_cast<float>(300 + count * 7 % 400);
    AddAI(x, static_cast<float>(350 + count * 11 % 300), 1).Name = "Viper" + std::to_string(100 + count) + "  ";
  }
  for (int count = 0; count < 32; ++count) {
    AddPlayer(300 + count * 12, 512).Label = "Falcon" + std::to_string(count + 1);
  }
  QuietSurface quiet;
  const map::Scene scene = Apart();
  const auto fly = [&] {
    for (link::AIPlotRecord& plot : Plots.AIPlots.Live()) plot.X += 1;
    const std::size_t before = asked;
    Layer.Draw(scene, quiet);
    return asked - before;
  };
  std::size_t joined = 0;
  for (int redraw = 0; redraw < 20; ++redraw) fly();
  for (const Label& label : Layer.Labels()) joined += label.Leads ? 1 : 0;
  EXPECT_GT(joined, 0U);
  EXPECT_EQ(fly(), 0U);
  EXPECT_EQ(fly(), 0U);
}

}  // namespace
}  // namespace kestrel::map
