#include "map/area_layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "map/scene_fixture.h"

// On the surface of the fixture map point (x, y) lies at (15 x - 1680, 12180 - 15 y); 112 to 912 east and 212 to 812
// north are in view. A character is 90 units wide.
namespace kestrel::map {
namespace {

using areas::AreaType;
using areas::PointType;
using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

constexpr base::Colour Ink = 0x0102FE;

SurfaceCall Solid(const char* what, std::vector<double> numbers, int width = 1) {
  return {what, std::move(numbers), Ink, width, {}, PenStyle::Solid, false};
}
SurfaceCall Text(const char* text, double x, double y) { return {"print", {x, y}, Ink, 0, text}; }

class AreaLayer : public testing::Test, protected test::SceneFixture {
 protected:
  AreaLayer() {
    Areas.AreaFolders.Append({.Name = "folder"});
    Areas.AreaGroups.Append({.FolderIndex = 1});
  }

  /// Of the whole view's box, so that it is not culled.
  static areas::Area Make(AreaType type, const char* name = "") {
    areas::Area area;
    area.Name = name;
    area.Type = type;
    area.Color = Ink;
    area.X = area.Y = 512;
    area.MinX = area.MinY = 0;
    area.MaxX = area.MaxY = 1024;
    return area;
  }
  areas::Area& Add(areas::Area area) { return Areas.AreaGroups[1].Areas.Append(std::move(area)); }
  /// An area that shows by one call: its name's letter, as a Text.
  areas::Area& AddLetter(const char* letter, std::size_t group = 1) {
    areas::Area area = Make(AreaType::Text);
    area.Text = letter;
    return Areas.AreaGroups[group].Areas.Append(std::move(area));
  }

  const Calls& Drawn() {
    Surface.Calls.clear();
    DrawAreas(Scene(), Surface);
    return Surface.Calls;
  }
  /// The texts that are drawn, in order.
  std::string Letters() {
    std::string letters;
    for (const SurfaceCall& call : Drawn()) letters += call.Text;
    return letters;
  }
};

TEST_F(AreaLayer, SegmentsAreTwoPointPolygonsOfWholePixels) {
  Display.SHOWAREANAMES = false;
  areas::Area& area = Add(Make(AreaType::Region));
  // 600.5 lies at 7327.5 units: first rounded to 7328, which is nearest to pixel 489. 400 lies at pixel 412.
  area.Lines.Append({512, 512, 600.5, 400});
  area.Lines.Append({512, 512, 512, 512});
  EXPECT_EQ(Drawn(), (Calls{Solid("polygon", {6000, 4500, 7335, 6180}), Solid("polygon", {6000, 4500, 6000, 4500})}));
}

TEST_F(AreaLayer, ManySegmentsAreAllDrawnInTheirOrder) {
  Display.SHOWAREANAMES = false;
  for (const int count : {127, 128, 129, 256, 1000}) {
    Areas.AreaGroups[1].Areas.Clear();
    areas::Area& area = Add(Make(AreaType::Region));
    Calls wanted;
    for (int line = 0; line < count; ++line) {
      area.Lines.Append({512, 512, 512.0 + line, 500});
      wanted.push_back(Solid("polygon", {6000, 4500, 6000 + 15.0 * line, 4680}));
    }
    EXPECT_EQ(Drawn(), wanted) << count;
  }
}

TEST_F(AreaLayer, EndsBeyondAllPixelsAreHeldWithinThem) {
  Display.SHOWAREANAMES = false;
  const double far = 15.0 * (1 << 28);
  const double infinity = std::numeric_limits<double>::infinity();
  areas::Area& area = Add(Make(AreaType::Region));
  area.Lines.Append({512, 512, 1e300, -1e300});
  area.Lines.Append({-infinity, 512, 512, infinity});
  EXPECT_EQ(Drawn(), (Calls{Solid("polygon", {6000, 4500, far, far}), Solid("polygon", {-far, 4500, 6000, -far})}));
}

TEST_F(AreaLayer, ARegionHasItsNameInTheMiddleOfItsBox) {
  areas::Area& area = Add(Make(AreaType::Region, "ABC"));
  area.Lines.Append({512, 512, 612, 412});
  area.MinX = 512;
  area.MaxX = 613;
  area.MinY = 402;
  area.MaxY = 512;
  // The middle is 562.5, 457: 6757.5, 5325; the three letters are 270 wide.
  EXPECT_EQ(Drawn(), (Calls{Solid("polygon", {6000, 4500, 7500, 6000}), Text("ABC", 6757.5 - 135, 5325)}));
  area.Lines.Clear();
  EXPECT_EQ(Drawn(), Calls{}) << "without segments it has no name";
}

TEST_F(AreaLayer, NamesHaveTheirOwnFontAndTheAreasColour) {
  Display.AREAS_TITLE_FONT = {
      .FontName = "Title", .FontSize = 13.5F, .FontItalic = true, .FontStrike = true, .Color = 7};
  Add(Make(AreaType::Circle, "A"));
  EXPECT_EQ(Drawn().back(), Text("A", 6000 - 45, 4500));
  EXPECT_EQ(Surface.LastFontName, "Title");
  EXPECT_EQ(Surface.LastFontSize, 13.5F);
  EXPECT_FALSE(Surface.LastFont.Bold);
  EXPECT_TRUE(Surface.LastFont.Italic);
  EXPECT_TRUE(Surface.LastFont.Strike);
  EXPECT_FALSE(Surface.LastFont.Under);
  Display.AREAS_TITLE_FONT = {.FontName = "Title", .FontBold = true, .FontUnder = true};
  Drawn();
  EXPECT_TRUE(Surface.LastFont.Bold && Surface.LastFont.Under);
  EXPECT_FALSE(Surface.LastFont.Italic || Surface.LastFont.Strike);
}

TEST_F(AreaLayer, NoTypeHasANameWithoutTheOption) {
  Display.SHOWAREANAMES = false;
  for (const AreaType type : {AreaType::Region, AreaType::Circle, AreaType::Icon, AreaType::FlightPlan}) {
    areas::Area& area = Add(Make(type, "ABC"));
    area.Lines.Append({512, 512, 612, 412});
    area.Points.Append({512, 512});
    area.ShowWaypointElevation = areas::Off;
  }
  EXPECT_FALSE(Drawn().empty());
  EXPECT_EQ(Letters(), "");
}

TEST_F(AreaLayer, ACircleGrowsWithTheZoomInWholeUnits) {
  Display.SHOWAREANAMES = false;
  areas::Area& area = Add(Make(AreaType::Circle));
  area.Radius = 10;
  View.Resolution = 2;
  // 2 * 10 * 15 * 1.852 is 555.6.
  EXPECT_EQ(Drawn(), (Calls{Solid("circle", {6000, 4500, 556})}));
}

TEST_F(AreaLayer, ACircleOfAnyRadiusHasItsName) {
  areas::Area& area = Add(Make(AreaType::Circle, "AB"));
  for (const double radius : {0.0, -5.0, 1e300, std::nan("")}) {
    area.Radius = radius;
    ASSERT_EQ(Drawn().size(), 2U) << radius;
    EXPECT_EQ(Drawn()[1], Text("AB", 6000 - 90, 4500)) << radius;
  }
  area.Radius = 0;
  EXPECT_EQ(Drawn()[0], Solid("circle", {6000, 4500, 0}));
}

TEST_F(AreaLayer, AnIconHasItsStrokesAndItsName15PixelsBelow) {
  areas::Area& area = Add(Make(AreaType::Icon, "AB"));
  area.Icon = 2;
  EXPECT_EQ(Drawn(), (Calls{Solid("line", {5940, 4500, 6060, 4500}), Solid("line", {6000, 4440, 6000, 4560}),
                            Text("AB", 5910, 4725)}));
  // Icons without a shape, and numbers that are none.
  for (const int icon : {23, 30, 31, 32, 33, 34, 35, 0, -1, 36, 32767}) {
    area.Icon = static_cast<std::int16_t>(icon);
    EXPECT_EQ(Drawn(), (Calls{Text("AB", 5910, 4725)})) << icon;
  }
}

TEST_F(AreaLayer, ATextStandsAtItsPointInItsFontAndHasNoName) {
  areas::Area& area = Add(Make(AreaType::Text, "name"));
  area.Text = "FLOT";
  area.X = 612.1;
  area.TextFont = {.Name = "Courier", .Size = 20, .Bold = areas::On, .Italic = 1, .Underline = areas::On};
  EXPECT_EQ(Drawn(), (Calls{Text("FLOT", 7501.5, 4500)}));
  EXPECT_EQ(Surface.LastFontName, "Courier");
  EXPECT_EQ(Surface.LastFontSize, 20);
  EXPECT_TRUE(Surface.LastFont.Bold);
  EXPECT_FALSE(Surface.LastFont.Italic) << "only the full value is true";
  EXPECT_FALSE(Surface.LastFont.Strike);
  EXPECT_TRUE(Surface.LastFont.Under);
  area.TextFont = {.Italic = areas::On, .Strikethru = areas::On};
  Drawn();
  EXPECT_TRUE(Surface.LastFont.Italic && Surface.LastFont.Strike);
  EXPECT_FALSE(Surface.LastFont.Bold || Surface.LastFont.Under);
}

TEST_F(AreaLayer, AFlightPlanHasLegsThenMarkersWithAltitudesThenItsName) {
  areas::Area& area = Add(Make(AreaType::FlightPlan, "AB"));
  area.Points.Append({512, 512, 1499.6, PointType::Nav});
  area.Points.Append({532, 512, -0.4, PointType::IP});
  area.Points.Append({532, 492, 25000, PointType::Target});
  area.Points.Append({512, 492, 7, PointType{4}});
  area.MinX = 497;
  area.MaxX = 547;
  area.MinY = 477;
  area.MaxY = 527;
  EXPECT_EQ(Drawn(), (Calls{Solid("line", {6000, 4500, 6300, 4500}), Solid("line", {6300, 4500, 6300, 4800}),
                            Solid("line", {6300, 4800, 6000, 4800}),
                            // A circle of 8 pixels, the altitude 8 right and down.
                            Solid("circle", {6000, 4500, 120}), Text("1500", 6120, 4620),
                            // A square of half side 8.
                            Solid("line", {6180, 4380, 6420, 4380}), Solid("line", {6420, 4380, 6420, 4620}),
                            Solid("line", {6420, 4620, 6180, 4620}), Solid("line", {6180, 4620, 6180, 4380}),
                            Text("0", 6420, 4620),
                            // A triangle of 12: (0, -8), (8, 4), (-8, 4); the altitude 12 right and down.
                            Solid("line", {6300, 4680, 6420, 4860}), Solid("line", {6420, 4860, 6180, 4860}),
                            Solid("line", {6180, 4860, 6300, 4680}), Text("25000", 6480, 4980),
                            // No type that is known: no marker.
                            Text("7", 6000, 4800),
                            // The box has its middle at 522, 502.
                            Text("AB", 6150 - 90, 4650)}));
  area.ShowWaypointElevation = areas::Off;
  EXPECT_EQ(Letters(), "AB");
}

TEST_F(AreaLayer, AltitudesHaveTheFontOfThePlan) {
  Display.SHOWAREANAMES = false;
  areas::Area& area = Add(Make(AreaType::FlightPlan));
  area.Points.Append({512, 512, 100});
  area.AltFont = {.Name = "Alt", .Size = 6};
  EXPECT_EQ(Letters(), "100");
  EXPECT_EQ(Surface.LastFontName, "Alt");
  EXPECT_EQ(Surface.LastFontSize, 6);
  EXPECT_FALSE(Surface.LastFont.Bold);
}

TEST_F(AreaLayer, APlanOfOnePointHasItsMarkerAndOfNoneNothing) {
  areas::Area& area = Add(Make(AreaType::FlightPlan, "AB"));
  area.ShowWaypointElevation = areas::Off;
  area.Points.Append({512, 512});
  EXPECT_EQ(Drawn(), (Calls{Solid("circle", {6000, 4500, 120}), Text("AB", 6000 - 90, 4500)}));
  area.Points.Clear();
  EXPECT_EQ(Drawn(), Calls{});
}

TEST_F(AreaLayer, ATypeThatIsNoneDrawsNothing) {
  for (const int type : {0, 6, -1, 32767})
    Add(Make(static_cast<AreaType>(type), "AB")).Lines.Append({512, 512, 600, 600});
  EXPECT_EQ(Drawn(), Calls{});
}

TEST_F(AreaLayer, GroupsComeInTheirOrderWhateverTheirFolder) {
  Areas.AreaFolders.Append({.Name = "second"});
  Areas.AreaGroups[1].FolderIndex = 2;
  Areas.AreaGroups.Append({.FolderIndex = 1});
  Areas.AreaGroups.Append({.FolderIndex = 2});
  AddLetter("c", 2);
  AddLetter("d", 3);
  AddLetter("a", 1);
  AddLetter("b", 1);
  EXPECT_EQ(Letters(), "abcd");
}

TEST_F(AreaLayer, WhatIsHiddenOrEditedIsNotDrawn) {
  areas::Area& area = AddLetter("a");
  areas::AreaGroup& group = Areas.AreaGroups[1];
  areas::AreaFolder& folder = Areas.AreaFolders[1];
  const auto with = [this](areas::Flag& flag, areas::Flag value) {
    const areas::Flag before = flag;
    flag = value;
    const std::string drawn = Letters();
    flag = before;
    return drawn;
  };
  EXPECT_EQ(Letters(), "a");
  EXPECT_EQ(with(area.Visible, areas::Off), "");
  EXPECT_EQ(with(area.Visible, 1), "");
  EXPECT_EQ(with(group.Visible, areas::Off), "");
  EXPECT_EQ(with(group.Visible, 1), "");
  EXPECT_EQ(with(folder.Visible, areas::Off), "");
  EXPECT_EQ(with(folder.Visible, 1), "a");
  area.Editing = true;
  EXPECT_EQ(Letters(), "");
  area.Editing = false;
  for (const std::int32_t none : {0, 2, -1}) {
    group.FolderIndex = none;
    EXPECT_EQ(Letters(), "") << none;
  }
}

TEST_F(AreaLayer, ABoxThatTouchesTheViewIsDrawnAndOneBeyondIsNot) {
  struct Case {
    double minX, minY, maxX, maxY;
    bool drawn;
  };
  const Case cases[] = {{0, 300, 112, 400, true},        {0, 300, 111.999, 400, false},   {912, 300, 999, 400, true},
                        {912.001, 300, 999, 400, false}, {300, 0, 400, 212, true},        {300, 0, 400, 211.999, false},
                        {300, 812, 400, 999, true},      {300, 812.001, 400, 999, false}, {0, 0, 1024, 1024, true},
                        {0, 0, 112, 212, true},          {912, 812, 999, 999, true}};
  areas::Area& area = AddLetter("a");
  for (const Case& each : cases) {
    area.MinX = each.minX;
    area.MinY = each.minY;
    area.MaxX = each.maxX;
    area.MaxY = each.maxY;
    EXPECT_EQ(Letters(), each.drawn ? "a" : "")
        << each.minX << ' ' << each.minY << ' ' << each.maxX << ' ' << each.maxY;
  }
}

TEST_F(AreaLayer, ASideOfABoxThatIsNoNumberHidesNothing) {
  areas::Area& area = AddLetter("a");
  double areas::Area::*const sides[] = {&areas::Area::MinX, &areas::Area::MinY, &areas::Area::MaxX, &areas::Area::MaxY};
  for (double areas::Area::*const side : sides) {
    area = Make(AreaType::Text);
    area.Text = "a";
    area.*side = std::nan("");
    EXPECT_EQ(Letters(), "a");
  }
  area.MinX = 2000;
  area.MaxX = std::nan("");
  EXPECT_EQ(Letters(), "") << "the other sides still tell that it lies beyond";
}

/// Takes no circles, no polygons and no texts.
class RefusingSurface : public test::RecordingSurface {
 public:
  void Circle(double, double, double, Pen) override { throw std::bad_alloc(); }
  void Polygon(std::span<const SurfacePoint>, Pen) override { throw std::bad_alloc(); }
  void Print(std::string_view text, double x, double y, const TextFont& font, base::Colour color) override {
    if (text == "bad") throw std::length_error("text");
    RecordingSurface::Print(text, x, y, font, color);
  }
};

TEST_F(AreaLayer, WhatFailsCostsNeitherTheNameNorAnyOtherArea) {
  RefusingSurface refusing;
  Add(Make(AreaType::Circle, "A"));
  Add(Make(AreaType::Region, "B")).Lines.Append({512, 512, 600, 600});
  AddLetter("bad");
  areas::Area& plan = Add(Make(AreaType::FlightPlan, "E"));
  plan.Points.Append({512, 512, 1, PointType::Nav});
  plan.Points.Append({532, 512, 2, PointType::IP});
  Add(Make(AreaType::Icon, "bad")).Icon = 2;
  AddLetter("C");
  DrawMap(Scene(), refusing);
  std::string texts;
  for (const SurfaceCall& call : refusing.Of("print")) texts += call.Text;
  EXPECT_EQ(texts, "AB2EC");
  EXPECT_EQ(refusing.Of("capture").size(), 1U);
}

TEST_F(AreaLayer, AreasStandAboveTheBullseyeAndAreCaptured) {
  Display.SHOWGRID = false;
  AddLetter("a");
  DrawMap(Scene(), Surface);
  ASSERT_EQ(Surface.Calls.size(), 1 + 3 + 1 + 1U);
  EXPECT_EQ(Surface.Calls[3].What, "circle");
  EXPECT_EQ(Surface.Calls[4], Text("a", 6000, 4500));
  EXPECT_EQ(Surface.Calls[5].What, "capture");
  Surface.Calls.clear();
  RedrawPlots(Scene(), Surface);
  EXPECT_EQ(Surface.Of("print"), Calls{}) << "what stands is not drawn again";
}

TEST_F(AreaLayer, ASceneWithoutCatalogueAndEditorHasNoAreas) {
  map::Scene scene = Scene();
  scene.Areas = nullptr;
  scene.Editor = nullptr;
  AddLetter("a");
  Editor.Open = true;
  DrawMap(scene, Surface);
  EXPECT_EQ(Surface.Of("print"), Calls{});
}

class WorkAreaLayer : public AreaLayer {
 protected:
  WorkAreaLayer() {
    Display.SHOWGRID = false;
    Editor.Open = true;
    Editor.WorkArea = Make(AreaType::Region, "A");
    Editor.WorkArea.Lines.Append({512, 512, 532, 512});
    Editor.WorkArea.Lines.Append({532, 512, 532, 492});
  }
};

TEST_F(WorkAreaLayer, IsDrawnAboveThePlotsByBothDraws) {
  AddPlayer(512, 512);
  Plots.AIHistory.Append({512, 512, 1, 255});
  const Calls copy = {Solid("polygon", {6000, 4500, 6300, 4500}), Solid("polygon", {6300, 4500, 6300, 4800}),
                      Text("A", 6000 - 45, 4500)};
  for (const auto draw : {DrawMap, RedrawPlots}) {
    Surface.Calls.clear();
    draw(Scene(), Surface);
    ASSERT_GT(Surface.Calls.size(), 4U);
    EXPECT_EQ(Calls(Surface.Calls.end() - 3, Surface.Calls.end()), copy);
    EXPECT_EQ((Surface.Calls.end() - 4)->What, "dot");
  }
  Editor.Open = false;
  Surface.Calls.clear();
  RedrawPlots(Scene(), Surface);
  EXPECT_EQ(Surface.Of("polygon"), Calls{});
}

TEST_F(WorkAreaLayer, IsDrawnInsteadOfTheAreaThatItEdits) {
  areas::Area& stored = AddLetter("a");
  stored.Editing = true;
  Editor.WorkArea = stored;
  Editor.WorkArea.Text = "b";
  Editor.WorkArea.Visible = areas::Off;  // what is edited is seen
  DrawMap(Scene(), Surface);
  EXPECT_EQ(Surface.Of("print"), (Calls{Text("b", 6000, 4500)}));
}

TEST_F(WorkAreaLayer, IsNotDrawnBeyondTheView) {
  Editor.WorkArea.MinX = 913;
  DrawWorkArea(Scene(), Surface);
  EXPECT_EQ(Surface.Calls, Calls{});
}

TEST_F(WorkAreaLayer, TheSelectedSegmentIsFivePixelsWide) {
  Display.SHOWAREANAMES = false;
  Editor.Selected = 2;
  DrawWorkArea(Scene(), Surface);
  EXPECT_EQ(Surface.Calls,
            (Calls{Solid("polygon", {6000, 4500, 6300, 4500}), Solid("polygon", {6300, 4500, 6300, 4800}),
                   Solid("polygon", {6300, 4500, 6300, 4800}, 5)}));
}

TEST_F(WorkAreaLayer, CheckedSegmentsAreFivePixelsWideWhileTheyAreBeingChecked) {
  Editor.BulkDelete = true;
  Editor.Checked = {true, false, true, true};
  Editor.WorkArea.Lines.Append({532, 492, 512, 512});
  DrawWorkArea(Scene(), Surface);
  const Calls calls = Surface.Of("polygon");
  ASSERT_EQ(calls.size(), 5U);
  EXPECT_EQ(calls[3], Solid("polygon", {6000, 4500, 6300, 4500}, 5));
  EXPECT_EQ(calls[4], Solid("polygon", {6300, 4800, 6000, 4500}, 5));
  EXPECT_EQ(Surface.Calls[3].What, "print") << "the emphasis comes last";
}

}  // namespace
}  // namespace kestrel::map
