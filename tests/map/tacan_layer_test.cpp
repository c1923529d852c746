#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "map/navaid_fixture.h"

namespace kestrel::map {
namespace {

class TacanLayer : public NavaidLayer {
 protected:
  radio::Airfield& Add(const char* name = "Osan") {
    radio::Airfield& airfield = Navaids.Airfields.Append({});
    airfield.Name = name;
    airfield.UHF = "297500";
    airfield.VHF = "138050";
    airfield.TACAN = "94";
    airfield.TACAN_BAND = "X";
    airfield.TACANX = airfield.TACANY = 512;
    airfield.TACANR = 10;
    airfield.VIS = airfield.TACAN_VIS = true;
    return airfield;
  }
  const Calls& Drawn() { return NavaidLayer::Drawn(DrawTacans); }
};

// The texts " Osan ", " 94X " and "  U: 297500 - V: 138050 " have 6, 5 and 24 characters: 540, 450 and 2160 units; 15
// pixels are 225, and three lines are 585 high. The box is twice 2160 / 2 + 225 wide: 2610.
TEST_F(TacanLayer, HasItsRangeItsIconAndItsLabel) {
  Add();
  Display.TACAN_LABEL_POSITION = 3;
  View.Resolution = 2;
  // 10 * 2 * 15 * 1.852 is 555.6. The text has its middle at 6000 + 225 + 1080.
  EXPECT_EQ(
      Drawn(),
      (Calls{Solid("circle", {6000, 4500, 555.6}, Range), Solid("line", {5940, 4500, 6060, 4500}, Icon),
             Solid("line", {6000, 4440, 6000, 4560}, Icon), Text(" Osan ", 7305 - 270, 4725, TacanText),
             Text(" 94X ", 7305 - 225, 4920, TacanText), Text("  U: 297500 - V: 138050 ", 6225, 5115, TacanText),
             Solid("line", {6000, 4500, 6225, 4725}, TacanText), Solid("box", {6225, 4725, 8835, 5310}, TacanText)}));
}

TEST_F(TacanLayer, TheLabelStandsOnOneOfFourSides) {
  Add();
  Display.DRAW_TACAN_RANGE_VISIBLE = Display.DRAW_TACAN_ICON_VISIBLE = false;
  struct Case {
    int position;
    double middle, top;
    std::vector<double> leader, box;
  };
  // Above, the last of the lines ends at 4500 - 225: they begin at 3690.
  const Case cases[] = {{0, 4695, 3690, {6000, 4500, 5775, 4275}, {5775, 4275, 3165, 3690}},
                        {1, 7305, 3690, {6000, 4500, 6225, 4275}, {6225, 4275, 8835, 3690}},
                        {2, 4695, 4725, {6000, 4500, 5775, 4725}, {5775, 4725, 3165, 5310}},
                        {3, 7305, 4725, {6000, 4500, 6225, 4725}, {6225, 4725, 8835, 5310}}};
  for (const Case& each : cases) {
    Display.TACAN_LABEL_POSITION = each.position;
    Calls wanted = {Text(" Osan ", each.middle - 270, each.top, TacanText),
                    Text(" 94X ", each.middle - 225, each.top + 195, TacanText),
                    Text("  U: 297500 - V: 138050 ", each.middle - 1080, each.top + 390, TacanText),
                    Solid("line", each.leader, TacanText), Solid("box", each.box, TacanText)};
    Display.DRAW_TACAN_LABELS_BOXED = true;
    EXPECT_EQ(Drawn(), wanted) << each.position;
    Display.DRAW_TACAN_LABELS_BOXED = false;
    wanted.pop_back();
    EXPECT_EQ(Drawn(), wanted) << each.position;
  }
  for (const int none : {-1, 4, 2'147'483'647, -2'147'483'647}) {
    Display.TACAN_LABEL_POSITION = none;
    EXPECT_EQ(Drawn(), Calls{}) << none;
  }
}

TEST_F(TacanLayer, TheWidestLineMayBeAnyOfThem) {
  Add("A name that is by far the widest");  // 34 characters with its blanks: 3060
  Display.DRAW_TACAN_RANGE_VISIBLE = Display.DRAW_TACAN_ICON_VISIBLE = false;
  Display.TACAN_LABEL_POSITION = 3;
  EXPECT_EQ(Drawn().front(), Text(" A name that is by far the widest ", 6225, 4725, TacanText));
  EXPECT_EQ(Drawn().back(), Solid("box", {6225, 4725, 6225 + 3060 + 450, 5310}, TacanText));
}

TEST_F(TacanLayer, TheLabelHasItsOwnFont) {
  Add();
  Display.TACAN_LABEL_FONT = {.FontName = "Tacan", .FontSize = 12.5F, .FontItalic = true, .FontUnder = true};
  Drawn();
  EXPECT_EQ(Surface.LastFontName, "Tacan");
  EXPECT_EQ(Surface.LastFontSize, 12.5F);
  EXPECT_TRUE(Surface.LastFont.Italic && Surface.LastFont.Under);
  EXPECT_FALSE(Surface.LastFont.Bold || Surface.LastFont.Strike);
  Display.TACAN_LABEL_FONT = {.FontBold = true, .FontStrike = true};
  Drawn();
  EXPECT_TRUE(Surface.LastFont.Bold && Surface.LastFont.Strike);
  EXPECT_FALSE(Surface.LastFont.Italic || Surface.LastFont.Under);
}

TEST_F(TacanLayer, EachOptionLeavesOutItsPart) {
  Add();
  const auto kinds = [this] {
    std::string all;
    for (const SurfaceCall& call : Drawn()) all += call.What.front();
    return all;
  };
  EXPECT_EQ(kinds(), "cllppplb");
  Display.DRAW_TACAN_RANGE_VISIBLE = false;
  EXPECT_EQ(kinds(), "llppplb");
  Display.DRAW_TACAN_LABELS_BOXED = false;
  EXPECT_EQ(kinds(), "llpppl");
  Display.DRAW_TACAN_ICON_VISIBLE = false;
  EXPECT_EQ(kinds(), "pppl");
  Display.DRAW_TACAN_LABELS = false;
  EXPECT_EQ(kinds(), "");
  EXPECT_EQ(Surface.Measured, 0);
}

TEST_F(TacanLayer, OnlyMarkedOnesOfMarkedAirfieldsAreDrawn) {
  Add("a").VIS = false;
  Add("b").TACAN_VIS = false;
  Add("c");
  Add("d");
  Drawn();
  const Calls prints = Surface.Of("print");
  ASSERT_EQ(prints.size(), 6U);
  EXPECT_EQ(prints[0].Text, " c ");
  EXPECT_EQ(prints[3].Text, " d ");
}

TEST_F(TacanLayer, EachPartIsDrawnAsFarAsItCanBeSeen) {
  radio::Airfield& airfield = Add();
  Display.TACAN_LABEL_POSITION = 3;
  // 10 map units out on the left: neither the icon nor, with 18.52 units of range, the whole circle is lost to sight.
  airfield.TACANX = 102;
  Drawn();
  EXPECT_EQ(Surface.Of("circle").size(), 1U);
  EXPECT_EQ(Surface.Of("print").size(), 3U) << "it reaches into the view";
  EXPECT_EQ(Surface.Of("line").size(), 3U);
  airfield.TACANX = 97;
  Drawn();
  EXPECT_EQ(Surface.Of("line").size(), 1U) << "the icon is out of sight, the leader of the label is not";
  // 24 characters and 10 points: no font makes them wider than 24 * 10 * 45, with 225 + 450 around them.
  airfield.TACANX = 112 - (24 * 10 * 3 + 45 + 2 + 1);
  EXPECT_EQ(Drawn(), Calls{});
  EXPECT_EQ(Surface.Measured, 0);
  airfield.TACANR = 1000;
  EXPECT_EQ(Drawn(), (Calls{Solid("circle", {6000 - 15 * 1168.0, 4500, 27780}, Range)}))
      << "the range still reaches it";
  EXPECT_EQ(Surface.Measured, 0);
}

TEST_F(TacanLayer, WhatIsBeyondAllReachIsNotDrawnAtAll) {
  const double nan = std::nan("");
  const double infinity = std::numeric_limits<double>::infinity();
  radio::Airfield& airfield = Add();
  for (const double far : {1e300, -1e300, nan, infinity, -infinity, 5000.0, -5000.0}) {
    airfield.TACANX = far;
    airfield.TACANY = 512;
    EXPECT_EQ(Drawn(), Calls{}) << far;
    airfield.TACANX = 512;
    airfield.TACANY = far;
    EXPECT_EQ(Drawn(), Calls{}) << far;
    EXPECT_EQ(Surface.Measured, 0) << far;
  }
}

TEST_F(TacanLayer, WhatFailsCostsNoOtherPartAndNoOtherAirfield) {
  Add("bad");
  Add("b");
  Surface.Refused = " bad ";
  Surface.RefusesShapes = true;
  Drawn();
  EXPECT_EQ(Surface.Of("circle"), Calls{});
  EXPECT_EQ(Surface.Of("line").size(), 2 + 2 + 1U);
  EXPECT_EQ(Texts(), " b  94X   U: 297500 - V: 138050 ");
}

}  // namespace
}  // namespace kestrel::map
