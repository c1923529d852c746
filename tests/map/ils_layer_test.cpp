#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "map/navaid_fixture.h"

namespace kestrel::map {
namespace {

class IlsLayer : public NavaidLayer {
 protected:
  IlsLayer() {
    Display.AIRF_ILS_DIST = 100 * 3279.98 / 6076.11549;  // 100 pixels: 1500 units
    // With the notch at 90 degrees the wings end beside the end of the centre line: 1500 * tan(30) away from it.
    Display.AIRF_ILS_ANGLE = 60;
    Display.AIRF_ILS_TAIL_ANGLE = 90;
  }

  /// At the middle of the view, not marked itself.
  radio::Airfield& Add(double heading = 0, std::size_t slot = 0) {
    radio::Airfield& airfield = Navaids.Airfields.Append({});
    airfield.ILS.fill("-");
    airfield.ILS_DES.fill("-");
    Mark(airfield, slot, heading);
    return airfield;
  }
  static void Mark(radio::Airfield& airfield, std::size_t slot, double heading) {
    airfield.ILS[slot] = "10810";
    airfield.ILS_DES[slot] = "09L";
    airfield.ILS_VIS[slot] = true;
    airfield.ILS_R[slot] = {512, 512};
    airfield.ILS_DRAW_HEADING[slot] = heading;
  }
  const Calls& Drawn() { return NavaidLayer::Drawn(DrawIlsFans); }
};

constexpr double Across = 866.025403784439;  // 1500 * tan(30); 57.7 pixels, 870 units in whole ones

// The texts "Rnw: 09L" and "(10810)" have 8 and 7 characters: 720 and 630 units; 10 pixels are 150.
TEST_F(IlsLayer, HasItsCentreLineItsOutlineAndItsLabel) {
  Add(90);
  const double nearX = 6000 + Across + 150;
  EXPECT_EQ(Drawn(), (Calls{Dotted({6000, 4500, 6000, 3000}, 11),
                            Solid("polygon", {6000, 4500, 6870, 3000, 6000, 3000, 5130, 3000, 6000, 4500}, 11),
                            Text("Rnw: 09L", nearX, 3150, IlsText), Text("(10810)", nearX + 45, 3345, IlsText),
                            Solid("line", {6000 + Across, 3000, nearX, 3150}, IlsText),
                            Solid("box", {nearX, 3150, nearX + 720, 3540}, IlsText)}));
}

TEST_F(IlsLayer, ALabelAboveItsCornerEndsAtIt) {
  Add(-90);
  const double nearX = 6000 - Across - 150;
  Calls wanted = {Dotted({6000, 4500, 6000, 6000}, 11),
                  Solid("polygon", {6000, 4500, 6870, 6000, 6000, 6000, 5130, 6000, 6000, 4500}, 11),
                  Text("Rnw: 09L", nearX - 720, 5460, IlsText),
                  Text("(10810)", nearX - 675, 5655, IlsText),
                  Solid("line", {6000 - Across, 6000, nearX, 5850}, IlsText),
                  Solid("box", {nearX, 5850, nearX - 720, 5460}, IlsText)};
  EXPECT_EQ(Drawn(), wanted);
  Display.DRAW_ILS_LABELS_BOXED = false;
  wanted.pop_back();
  EXPECT_EQ(Drawn(), wanted);
  Display.DRAW_ILS_LABELS = false;
  wanted.resize(2);
  EXPECT_EQ(Drawn(), wanted);
  EXPECT_EQ(Surface.Measured, 0);
}

TEST_F(IlsLayer, TheUsualFanIsNotchedAtItsEnd) {
  Display.AIRF_ILS_DIST = 10;
  Display.AIRF_ILS_ANGLE = 5;
  Display.AIRF_ILS_TAIL_ANGLE = 60;
  Display.DRAW_ILS_LABELS = false;
  View.Resolution = 8;
  Add(0);
  // 15 * 10 * 8 * 6076.11549 / 3279.98 is 2222.9826 units, 148.2 pixels. The divisor is 0.9990482 - 0.0436194 /
  // 1.7320508, which is 0.9738645: the wings are 2282.6404 long, 152.03 pixels ahead and 6.64 beside.
  const Calls calls = Drawn();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_NEAR(calls[0].Numbers[2], 8222.9826, 1e-3);
  EXPECT_NEAR(calls[0].Numbers[3], 4500, 1e-6);
  EXPECT_EQ(calls[1], Solid("polygon", {6000, 4500, 8280, 4395, 8220, 4500, 8280, 4605, 6000, 4500}, 11));
}

TEST_F(IlsLayer, TheQuadrantsHaveTheirCorners) {
  struct Case {
    double bearing;      // clockwise from north; the heading counts from the east to the north
    double x, y;         // of the corner, as it is at the nearest quarter turn
    double right, down;  // of the label
  };
  const double left = 6000 - Across, rightX = 6000 + Across, above = 4500 - Across, below = 4500 + Across;
  const Case cases[] = {{359.99, left, 3000, 1, 1},
                        {0, rightX, 3000, 1, 1},
                        {0.01, rightX, 3000, 1, 1},
                        {89.99, 7500, below, 1, 1},
                        {90, 7500, above, 1, -1},
                        {90.01, 7500, above, 1, -1},
                        {179.99, rightX, 6000, 1, -1},
                        {180, left, 6000, -1, -1},
                        {180.01, left, 6000, -1, -1},
                        {269.99, 4500, above, -1, -1},
                        {270, 4500, below, 1, 1},
                        {270.01, 4500, below, 1, 1},
                        // The same after one turn.
                        {360, rightX, 3000, 1, 1},
                        {-360, rightX, 3000, 1, 1},
                        {720, rightX, 3000, 1, 1},
                        {-180, left, 6000, -1, -1},
                        {540, left, 6000, -1, -1},
                        {-90, 4500, below, 1, 1},
                        {-0.01, left, 3000, 1, 1},
                        {360.01, rightX, 3000, 1, 1},
                        {450, 7500, above, 1, -1}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.bearing);
    Navaids.Airfields.Clear();
    Add(90 - each.bearing);
    const Calls calls = Drawn();
    ASSERT_EQ(calls.size(), 6U);
    const std::vector<double>& leader = calls[4].Numbers;
    // A hundredth of a degree moves a corner by less than a third of a unit.
    EXPECT_NEAR(leader[0], each.x, 0.35);
    EXPECT_NEAR(leader[1], each.y, 0.35);
    EXPECT_NEAR(leader[2] - leader[0], 150 * each.right, 1e-6);
    EXPECT_NEAR(leader[3] - leader[1], 150 * each.down, 1e-6);
    const double top = each.down > 0 ? leader[3] : leader[3] - 390;
    EXPECT_EQ(calls[2], Text("Rnw: 09L", leader[2] + 360 * each.right - 360, top, IlsText));
    EXPECT_EQ(calls[3], Text("(10810)", leader[2] + 360 * each.right - 315, top + 195, IlsText));
    EXPECT_EQ(calls[5],
              Solid("box", {leader[2], leader[3], leader[2] + 720 * each.right, leader[3] + 390 * each.down}, IlsText));
  }
}

TEST_F(IlsLayer, SlantedFansLieAroundTheirCentreLine) {
  Display.DRAW_ILS_LABELS = false;
  struct Case {
    double heading;
    std::vector<double> outline;
  };
  // Wings of 1500 / cos(30), 1732.05 units. To the upper right, 45 degrees: the end is 1060.66 away on both axes, 70.7
  // pixels; the wings at 75 and 15 degrees are 1673.03 and 448.29 away, 111.5 and 29.9 pixels.
  const Case cases[] = {{45, {6000, 4500, 6450, 2820, 7065, 3435, 7680, 4050, 6000, 4500}},
                        {135, {6000, 4500, 5550, 2820, 4935, 3435, 4320, 4050, 6000, 4500}},
                        {225, {6000, 4500, 4320, 4950, 4935, 5565, 5550, 6180, 6000, 4500}},
                        {315, {6000, 4500, 7680, 4950, 7065, 5565, 6450, 6180, 6000, 4500}}};
  for (const Case& each : cases) {
    Navaids.Airfields.Clear();
    Add(each.heading);
    ASSERT_EQ(Drawn().size(), 2U);
    EXPECT_EQ(Surface.Calls[1], Solid("polygon", each.outline, 11)) << each.heading;
  }
}

TEST_F(IlsLayer, ABearingThatIsNoneAfterOneTurnHasNoLabel) {
  radio::Airfield& airfield = Add();
  for (const double bearing : {720.01, -360.01, 1e9, -1e9}) {
    airfield.ILS_DRAW_HEADING[0] = 90 - bearing;
    ASSERT_EQ(Drawn().size(), 2U) << bearing;
    EXPECT_EQ(Surface.Calls[0].Style, PenStyle::Dotted);
    EXPECT_EQ(Surface.Calls[1].What, "polygon");
    EXPECT_EQ(Surface.Measured, 0);
  }
  airfield.ILS_DRAW_HEADING[0] = std::nan("");
  Drawn();
  EXPECT_EQ(Texts(), "");
}

TEST_F(IlsLayer, EachSlotHasItsPlaceItsHeadingAndItsColour) {
  radio::Airfield& airfield = Add(0, 0);
  for (const std::size_t slot : {1U, 2U, 3U}) {
    Mark(airfield, slot, 90 * static_cast<double>(slot));
    airfield.ILS_R[slot] = {512 + 10 * static_cast<double>(slot), 512 - 20 * static_cast<double>(slot)};
  }
  airfield.ILS_DES[2] = "18";
  airfield.ILS[2] = "11150";
  Drawn();
  Calls lines;
  for (const SurfaceCall& call : Surface.Of("line")) {
    if (call.Style == PenStyle::Dotted) lines.push_back(call);
  }
  EXPECT_EQ(lines, (Calls{Dotted({6000, 4500, 7500, 4500}, 11), Dotted({6150, 4800, 6150, 3300}, 12),
                          Dotted({6300, 5100, 4800, 5100}, 13), Dotted({6450, 5400, 6450, 6900}, 14)}));
  EXPECT_EQ(Texts(), "Rnw: 09L(10810)Rnw: 09L(10810)Rnw: 18(11150)Rnw: 09L(10810)");
}

TEST_F(IlsLayer, AnIlsIsDrawnForItsOwnMark) {
  radio::Airfield& airfield = Add();
  const auto isDrawn = [this] { return !Drawn().empty(); };
  for (const bool marked : {false, true}) {
    airfield.VIS = airfield.TACAN_VIS = marked;
    EXPECT_TRUE(isDrawn()) << "whether or not its airfield is marked";
  }
  airfield.ILS_VIS[0] = false;
  EXPECT_FALSE(isDrawn());
  airfield.ILS_VIS[0] = true;
  airfield.ILS_DES[0] = "-";
  EXPECT_FALSE(isDrawn());
  airfield.ILS_DES[0] = "";
  airfield.ILS[0] = "-";
  EXPECT_TRUE(isDrawn());
  EXPECT_EQ(Texts(), "Rnw: (-)");
  Display.AIRF_SHOW_ALL_ILS = false;
  EXPECT_FALSE(isDrawn());
  airfield.ILS[0] = "";
  EXPECT_TRUE(isDrawn());
}

TEST_F(IlsLayer, TheLabelHasItsOwnFont) {
  Add();
  Display.ILS_LABEL_FONT = {.FontName = "Ils", .FontSize = 7, .FontBold = true};
  Drawn();
  EXPECT_EQ(Surface.LastFontName, "Ils");
  EXPECT_EQ(Surface.LastFontSize, 7);
  EXPECT_TRUE(Surface.LastFont.Bold);
}

TEST_F(IlsLayer, WithoutADivisorThereIsTheCentreLineAlone) {
  Add(0);
  // The tangents of half the angle and of the tail are the same.
  for (const double tail : {30.0, 20.0, 2.5}) {
    Display.AIRF_ILS_ANGLE = 2 * tail;
    Display.AIRF_ILS_TAIL_ANGLE = tail;
    EXPECT_EQ(Drawn(), (Calls{Dotted({6000, 4500, 7500, 4500}, 11)})) << tail;
  }
  Display.AIRF_ILS_TAIL_ANGLE = 2.6;
  EXPECT_EQ(Drawn().size(), 2U) << "the outline, but its label is far out of sight";
  Display.AIRF_ILS_TAIL_ANGLE = 60;
  EXPECT_EQ(Drawn().size(), 6U);
}

TEST_F(IlsLayer, SettingsOfAnyValueBreakNothing) {
  Add(0);
  const double nan = std::nan("");
  const double infinity = std::numeric_limits<double>::infinity();
  const double pixels = (1 << 28) * 15.0;
  const double values[] = {0, 180, 360, 90, -5, 1e-300, 1e9, 1e300, -1e300, nan, infinity};
  for (const double angle : values) {
    for (const double tail : values) {
      for (const double miles : values) {
        Display.AIRF_ILS_ANGLE = angle;
        Display.AIRF_ILS_TAIL_ANGLE = tail;
        Display.AIRF_ILS_DIST = miles;
        for (const SurfaceCall& call : Drawn()) {
          if (call.What != "polygon") continue;
          for (const double corner : call.Numbers) EXPECT_FALSE(std::abs(corner) > pixels) << angle << ' ' << tail;
        }
      }
    }
  }
}

TEST_F(IlsLayer, ALongFanIsHeldWithinAllPixels) {
  Display.AIRF_ILS_DIST = 1e9;
  Add(0);
  const double far = (1 << 28) * 15.0;
  // 27,787,282,606 units to the right; the wings 16,043,095,000 beside.
  const Calls calls = Drawn();
  ASSERT_EQ(calls.size(), 2U) << "the label is out of sight";
  EXPECT_EQ(calls[1], Solid("polygon", {6000, 4500, far, -far, far, 4500, far, far, 6000, 4500}, 11));
  EXPECT_EQ(Surface.Measured, 0);
}

TEST_F(IlsLayer, AFanOfNoLengthHasNoOutline) {
  Display.AIRF_ILS_DIST = 0;
  Add(0);
  EXPECT_EQ(Drawn(), (Calls{Dotted({6000, 4500, 6000, 4500}, 11)}));
}

TEST_F(IlsLayer, ATailOfNothingFoldsTheWingsToTheThreshold) {
  Display.AIRF_ILS_TAIL_ANGLE = 0;
  Display.DRAW_ILS_LABELS = false;
  Add(0);
  EXPECT_EQ(Drawn().back(), Solid("polygon", {6000, 4500, 6000, 4500, 7500, 4500, 6000, 4500, 6000, 4500}, 11));
}

TEST_F(IlsLayer, WhatCannotBeSeenIsNotDrawn) {
  radio::Airfield& airfield = Add(0);
  const double nan = std::nan("");
  for (const double far : {1e300, -1e300, nan, 5000.0, -5000.0}) {
    airfield.ILS_R[0] = {far, 512};
    EXPECT_EQ(Drawn(), Calls{}) << far;
    airfield.ILS_R[0] = {512, far};
    EXPECT_EQ(Drawn(), Calls{}) << far;
    EXPECT_EQ(Surface.Measured, 0) << far;
  }
  // 90 map units out on the left: the fan reaches into the view, and with it the label.
  airfield.ILS_R[0] = {22, 512};
  EXPECT_EQ(Drawn().size(), 6U);
}

TEST_F(IlsLayer, WhatFailsCostsNoOtherPart) {
  Mark(Add(0), 1, 90);
  Surface.Refused = "(10810)";
  Surface.RefusesShapes = true;
  Drawn();
  EXPECT_EQ(Surface.Of("polygon").size(), 2U) << "without the centre lines";
  EXPECT_EQ(Texts(), "Rnw: 09LRnw: 09L");
}

TEST_F(IlsLayer, NavaidsStandBetweenTheAreasAndTheCapture) {
  radio::Airfield& airfield = Add(0);
  airfield.VIS = airfield.TACAN_VIS = true;
  airfield.TACANX = airfield.TACANY = 512;
  Display.DRAW_TACAN_LABELS = Display.DRAW_ILS_LABELS = Display.SHOWGRID = false;
  View.BullseyeVisible = false;
  Areas.AreaFolders.Append({.Name = "folder"});
  areas::Area area;
  area.Type = areas::AreaType::Text;
  area.Text = "a";
  area.X = area.Y = area.MinX = area.MinY = area.MaxX = area.MaxY = 512;
  Areas.AreaGroups.Append({.FolderIndex = 1}).Areas.Append(area);
  DrawMap(Scene(), Surface);
  std::string kinds;
  for (const SurfaceCall& call : Surface.Calls) kinds += call.What + ' ';
  EXPECT_EQ(kinds, "picture print circle line line line polygon capture ");
  Surface.Calls.clear();
  RedrawPlots(Scene(), Surface);
  EXPECT_EQ(Surface.Of("circle"), Calls{}) << "what stands is not drawn again";
}

TEST_F(IlsLayer, ASceneWithoutNavaidsHasNone) {
  radio::Airfield& airfield = Add(0);
  airfield.VIS = airfield.TACAN_VIS = true;
  map::Scene scene = Scene();
  scene.Navaids = nullptr;
  DrawTacans(scene, Surface);
  DrawIlsFans(scene, Surface);
  EXPECT_EQ(Surface.Calls, Calls{});
}

}  // namespace
}  // namespace kestrel::map
