#include "map/cursor_tools.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/temp_folder.h"
#include "map/geometry.h"

namespace kestrel::map {
namespace {

using base::Changed;
using base::Has;

/// Surface units that are `miles` at Resolution 1.
constexpr double Miles(double miles) { return miles * UnitsPerPixelX * link::MapUnitsPerMile; }

/// 800 by 600 pixels, anchor in the middle, bullseye at map point (500, 724), 180 pixels below the upper edge.
class CursorTools : public testing::Test {
 protected:
  CursorTools() {
    ResetView(view, 1024, 2048, 500, 300);
    ResizeSurface(view, 12000, 9000);
    view.AnchorViewX = view.AnchorViewY = 512 * 15;
    RefreshPositions(view);
  }

  Changed Move(double x, double y, bool leftDown = false) { return TrackPointer(view, options, x, y, leftDown); }

  ViewState view;
  Options options;
};

TEST_F(CursorTools, EachMoveStoresThePointerAndAsksForTheReadOutsOnly) {
  EXPECT_EQ(Move(6015, 4485), Changed::CursorLine);
  EXPECT_EQ(view.MouseX, 6015);
  EXPECT_EQ(view.MouseY, 4485);
  EXPECT_EQ(view.CursorMapX, 513);
  EXPECT_EQ(view.CursorMapY, 513);
}

TEST_F(CursorTools, LineShowsWithStaticCursorOrWhileDraggingAViewThatStands) {
  struct Case {
    bool staticCursor, leftDown, viewChanging, shows;
  };
  for (const Case& each : {Case{false, false, false, false},
                           {false, true, false, true},
                           {false, true, true, false},
                           {true, false, false, true},
                           {true, true, true, true}}) {
    for (const bool before : {false, true}) {
      view.CursorLineActive = before;
      options.STATICCURSOR = each.staticCursor;
      view.ViewChanging = each.viewChanging;
      Move(6000, 4500, each.leftDown);
      EXPECT_EQ(view.CursorLineActive, each.shows) << each.staticCursor << each.leftDown << each.viewChanging;
    }
  }
}

TEST_F(CursorTools, StaticCursorTakesTheLineAwayWhenItGoesOff) {
  EXPECT_EQ(SetStaticCursor(view, options, true), Changed::Nothing);
  EXPECT_TRUE(options.STATICCURSOR);
  EXPECT_FALSE(view.CursorLineActive) << "it comes with the next move";
  Move(6015, 4485);
  EXPECT_TRUE(view.CursorLineActive);
  EXPECT_EQ(SetStaticCursor(view, options, false), Changed::CursorLine);
  EXPECT_FALSE(options.STATICCURSOR);
  EXPECT_FALSE(view.CursorLineActive);
}

TEST_F(CursorTools, NothingIsToldUntilThePointerHasBeenOverTheMap) {
  ChangeRes(view, 2);
  EXPECT_FALSE(view.PointerSeen);
  EXPECT_EQ(UpdateBRs(view).BullsBearing, "");
  EXPECT_EQ(UpdateBRs(view).BullsRange, "");
  Move(0, 0);
  EXPECT_TRUE(view.PointerSeen);
  EXPECT_NE(UpdateBRs(view).BullsRange, "");
}

TEST_F(CursorTools, TextsGiveBothBearingsAndTheRange) {
  Move(6000 + Miles(10), 4500, true);
  const BRTexts texts = UpdateBRs(view);
  EXPECT_EQ(texts.Bearings, "090\xB0 / 270\xB0");
  EXPECT_EQ(texts.Range, "10.00 NM");
  EXPECT_EQ(texts.Line, "090\xB0 - 10.00nm");
}

TEST_F(CursorTools, PointerOnTheAnchorIs360AndNoRange) {
  Move(6000, 4500, true);
  const BRTexts texts = UpdateBRs(view);
  EXPECT_EQ(texts.Bearings, "360\xB0 / 360\xB0");
  EXPECT_EQ(texts.Range, "0.00 NM");
  EXPECT_EQ(texts.Line, "360\xB0 - 0.00nm");
}

TEST_F(CursorTools, NorthIs360NotZero) {
  Move(6000, 4500 - Miles(123.456), true);
  const BRTexts texts = UpdateBRs(view);
  EXPECT_EQ(texts.Bearings, "360\xB0 / 180\xB0");
  EXPECT_EQ(texts.Range, "123.46 NM");
}

TEST_F(CursorTools, MeasuredLineBetweenTwoPlacesReadsAsTheCursorLineWhateverTheZoom) {
  for (const double resolution : {0.125, 1.0, 16.0}) {
    ChangeRes(view, resolution);
    // To the east by 18.52 map units, 10 miles.
    const MeasuredLine line = Measure(view, {100, 200}, {118.52, 200});
    EXPECT_EQ(line.Text, "090\xB0 - 10.00nm");
    EXPECT_EQ(line.From.X, 100);
    EXPECT_EQ(line.To.X, 118.52);
    EXPECT_EQ(Measure(view, {100, 200}, {100, 200 + 1.852}).Text, "360\xB0 - 1.00nm");
  }
}

TEST_F(CursorTools, RangesAreOnTheGround) {
  for (const double resolution : {0.125, 1.0, 16.0}) {
    ChangeRes(view, resolution);
    const MapPoint bulls = {view.BullsX, view.BullsY};
    Move(view.AnchorX, view.AnchorY + Miles(20) * resolution, true);
    EXPECT_EQ(UpdateBRs(view).Range, "20.00 NM") << resolution;
    Move(bulls.X - Miles(4.5) * resolution, bulls.Y, true);
    EXPECT_EQ(UpdateBRs(view).BullsRange, "4.50 NM") << resolution;
    EXPECT_EQ(UpdateBRs(view).BullsBearing, "270\xB0") << resolution;
  }
}

TEST_F(CursorTools, WithoutALineOnlyTheBullseyeIsTold) {
  Move(view.BullsX, view.BullsY + Miles(7));
  const BRTexts texts = UpdateBRs(view);
  EXPECT_EQ(texts.Bearings, "");
  EXPECT_EQ(texts.Range, "");
  EXPECT_EQ(texts.Line, "");
  EXPECT_EQ(texts.BullsBearing, "180\xB0");
  EXPECT_EQ(texts.BullsRange, "7.00 NM");
}

TEST_F(CursorTools, AfterAZoomTheLineBeginsAtTheSameGroundPoint) {
  Move(3000, 2000);
  SetCursorStart(view);
  const MapPoint before = MapFromSurface(view, {view.AnchorX, view.AnchorY});
  for (const double resolution : {8.0, 0.25}) {
    ChangeRes(view, resolution);
    const MapPoint after = MapFromSurface(view, {view.AnchorX, view.AnchorY});
    EXPECT_DOUBLE_EQ(after.X, before.X);
    EXPECT_DOUBLE_EQ(after.Y, before.Y);
    EXPECT_NE(view.AnchorX, 3000);
  }
}

TEST_F(CursorTools, ReBindTakesTheFieldsOfThePlotAsTheyStand) {
  link::Tables plots;
  link::PlotRecord& plot = plots.Clients.Append({});
  plot.X = 321.5;
  plot.Y = 654.25;
  view.AnchorPlotIndex = 1;
  EXPECT_EQ(ReBind(view, plots), Changed::CursorLine);
  EXPECT_EQ(view.AnchorX, 321.5);
  EXPECT_EQ(view.AnchorY, 654.25);
}

TEST_F(CursorTools, ReBindLeavesAnAnchorThatFollowsNoPlot) {
  link::Tables plots;
  plots.Clients.Append({});
  for (const int index : {0, 2, -1, 32767}) {
    view.AnchorPlotIndex = static_cast<std::int16_t>(index);
    EXPECT_EQ(ReBind(view, plots), Changed::Nothing) << index;
    EXPECT_EQ(view.AnchorX, 6000) << index;
  }
}

TEST_F(CursorTools, SettingTheAnchorUnbindsIt) {
  view.AnchorPlotIndex = 3;
  SetCursorStart(view);
  EXPECT_EQ(view.AnchorPlotIndex, 0);
}

TEST_F(CursorTools, ElevationIsBlankAtTheEdgeAndBeyond) {
  const test::TempFolder folder;
  std::string bytes(2 * 1024 * 1024, '\0');
  bytes[0] = 5;                               // the south-western corner: 5 feet
  bytes[2 * 1023] = static_cast<char>(0xFE);  // the south-eastern: 510
  bytes[2 * 1023 + 1] = 1;
  bytes[2 * 1023 * 1024] = static_cast<char>(0xF6);  // the north-western: -10
  bytes[2 * 1023 * 1024 + 1] = static_cast<char>(0xFF);
  test::WriteBytes(folder / "heights", bytes);
  theaters::Elevations elevations;
  elevations.SetSource(folder / "heights", 1024);
  elevations.Read();
  struct Case {
    double x, y;
    const char* text;
  };
  for (const Case& each : {Case{0, 0, "5 ft"},
                           {0.99, 0.99, "5 ft"},
                           {1023.5, 0, "510 ft"},
                           {0, 1023.5, "-10 ft"},
                           {512, 512, "0 ft"},
                           {1024, 0, " "},
                           {0, 1024, " "},
                           {-0.001, 0, " "},
                           {0, -0.001, " "},
                           {5000, 5000, " "}}) {
    view.CursorMapX = each.x;
    view.CursorMapY = each.y;
    EXPECT_EQ(ElevationText(view, elevations), each.text) << each.x << ", " << each.y;
  }
}

TEST_F(CursorTools, ElevationIsBlankWithoutHeights) {
  view.CursorMapX = view.CursorMapY = 512;
  EXPECT_EQ(ElevationText(view, {}), " ");
}

}  // namespace
}  // namespace kestrel::map
