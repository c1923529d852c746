#include "core/objective_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "core/objective_world.h"
#include "doubles/station_around.h"

namespace kestrel::core {
namespace {

using areas::AreaType;
using base::Changed;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::array<std::int16_t, 7> ModelOne = {1, 0, 0, 0, 0, 0, 0};

class ObjectiveImports : public testing::Test {
 protected:
  bool Import(
      const ObjectiveImport& how, const FollowObjectives& follow = [](const auto&) { return true; }) {
    ObjectiveList list(data);
    list.SelectShown(true);
    falcon::ModelStore models({disk.Path()}, {});
    return ImportObjectives(around.All, data, models, list, how, follow);
  }
  bool ImportLines(const std::string& simplFactor = "0", const std::string& maxZ = "0") {
    return Import({.Look = ObjectiveLook::Lines, .SimplFactor = simplFactor, .MaxZ = maxZ});
  }
  areas::AreaCatalogue& Catalogue() { return around.State.Areas; }
  base::Table<areas::Area>& Areas() { return Catalogue().AreaGroups[1].Areas; }
  void ExpectNothingChanged() {
    EXPECT_TRUE(Catalogue().AreaGroups.Empty());
    EXPECT_TRUE(Catalogue().AreaFolders.Empty());
    EXPECT_EQ(Catalogue().Revision, 0U);
    EXPECT_EQ(around.State.AreaSteps.UndoText(), "");
    EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  }
  /// An objective in cell 100, 200 whose class has these buildings.
  falcon::Objective& AddSite(const std::vector<falcon::FeatureEntry>& features, const std::string& name = "Site") {
    falcon::Objective& one = test::AddObjective(data, test::AddObjectiveClass(data, 31, features), name);
    one.CellX = 100;
    one.CellY = 200;
    return one;
  }
  /// The ends of a line in feet from the middle of cell 100, 200: east and north, east and north.
  static std::array<double, 4> Feet(const areas::AreaLine& line) {
    return {(line.X1 - 100.5) * 3279.98, (line.Y1 - 200.5) * 3279.98, (line.X2 - 100.5) * 3279.98,
            (line.Y2 - 200.5) * 3279.98};
  }
  void ExpectLine(const areas::AreaLine& line, const std::array<double, 4>& feet) {
    for (std::size_t n = 0; n < 4; ++n) EXPECT_NEAR(Feet(line)[n], feet[n], 1e-6) << n;
  }

  test::TempFolder disk;
  doubles::StationAround<> around;
  CampaignData data = test::NoObjectives();
};

TEST_F(ObjectiveImports, AutoIconsAreThoseOfTheTypes) {
  const std::int16_t icons[] = {1,  4, 5,  6,  1,  1,  7, 11, 8,  9, 1, 10, 1,  1, 1,  1, 2,
                                12, 1, 13, 19, 14, 15, 2, 2,  16, 1, 2, 17, 17, 1, 18, 1};
  for (unsigned code = 0; code < std::size(icons); ++code) {
    test::AddObjective(data, test::AddObjectiveClass(data, static_cast<std::uint8_t>(code)), std::to_string(code));
  }
  EXPECT_TRUE(Import({.Look = ObjectiveLook::AutoIcon, .Color = 0x112233}));
  ASSERT_EQ(Areas().UpperBound(), std::size(icons));
  for (std::size_t code = 0; code < std::size(icons); ++code) {
    const areas::Area& area = Areas()[code + 1];
    EXPECT_EQ(area.Name, std::to_string(code));
    EXPECT_EQ(area.Icon, icons[code]) << code;
    EXPECT_EQ(area.Color, 0x112233U);
  }
  EXPECT_EQ(IconOfObjective(255), 1);
}

TEST_F(ObjectiveImports, IconStandsInTheMiddleOfItsCell) {
  falcon::Objective& one = AddSite({});
  // Whatever else is told.
  one.Exact = falcon::ExactPlace{.North = 10, .East = 20};
  EXPECT_TRUE(Import({.Look = ObjectiveLook::SingleIcon, .Color = 0x0000FF, .Icon = 3}));
  ASSERT_EQ(Catalogue().AreaGroups.UpperBound(), 1U);
  EXPECT_EQ(Catalogue().AreaGroups[1].Name, "Imported Objectives");
  EXPECT_EQ(Catalogue().AreaGroups[1].Visible, areas::On);
  EXPECT_TRUE(areas::Shows(Catalogue(), Catalogue().AreaGroups[1]));
  ASSERT_EQ(Areas().UpperBound(), 1U);
  const areas::Area& area = Areas()[1];
  EXPECT_EQ(area.Name, "Site");
  EXPECT_EQ(area.Type, AreaType::Icon);
  EXPECT_EQ(area.Icon, 3);
  EXPECT_EQ(area.Color, 0x0000FFU);
  EXPECT_EQ(area.X, 100.5);
  EXPECT_EQ(area.Y, 200.5);
  EXPECT_EQ(area.TextFont.Name, "Verdana");
  EXPECT_EQ(area.TextFont.Size, 8);
  EXPECT_EQ(area.AltFont.Name, "OCR A Extended");
  EXPECT_EQ(area.AltFont.Size, 8);
  EXPECT_EQ(area.ShowWaypointElevation, areas::On);
  EXPECT_EQ(area.Visible, areas::On);
  // An icon has 20 map units to each side.
  EXPECT_EQ(area.MinX, 80.5);
  EXPECT_EQ(area.MaxY, 220.5);
  EXPECT_THAT(around.Shown.Refreshes, ElementsAre(Changed::Areas | Changed::Map));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(ObjectiveImports, OnlySelectedOnesAreTaken) {
  for (const char* name : {"a", "b", "c"}) AddSite({}, name);
  ObjectiveList list(data);
  list.Select(1, true);
  falcon::ModelStore models({}, {});
  EXPECT_TRUE(ImportObjectives(around.All, data, models, list, {}, [](const auto&) { return true; }));
  ASSERT_EQ(Areas().UpperBound(), 1U);
  EXPECT_EQ(Areas()[1].Name, "b");
}

TEST_F(ObjectiveImports, AreOneStepInTheGroupThatIsThere) {
  Catalogue().AreaFolders.Append({.Name = "Mine"});
  Catalogue().AreaGroups.Append({.Name = "Other", .FolderIndex = 1});
  Catalogue().AreaGroups.Append({.Name = "IMPORTED objectives", .FolderIndex = 1});
  Catalogue().AreaGroups[2].Areas.Append({.Name = "former"});
  AddSite({}, "a");
  AddSite({}, "b");
  EXPECT_TRUE(Import({}));
  ASSERT_EQ(Catalogue().AreaGroups.UpperBound(), 2U);
  EXPECT_EQ(Catalogue().AreaFolders.UpperBound(), 1U);
  ASSERT_EQ(Catalogue().AreaGroups[2].Areas.UpperBound(), 3U);
  EXPECT_EQ(Catalogue().AreaGroups[2].Areas[1].Name, "former");
  EXPECT_EQ(Catalogue().AreaGroups[2].Areas[3].Name, "b");
  EXPECT_EQ(Catalogue().Revision, 1U);
  const areas::Moved moved = around.State.AreaSteps.Undo(Catalogue());
  EXPECT_TRUE(moved.Done);
  EXPECT_EQ(Catalogue().AreaGroups[2].Areas.UpperBound(), 1U);
  EXPECT_EQ(around.State.AreaSteps.UndoText(), "");
  EXPECT_EQ(around.State.AreaSteps.Redo(Catalogue()).Select, "D2");
  EXPECT_EQ(Catalogue().AreaGroups[2].Areas.UpperBound(), 3U);
}

TEST_F(ObjectiveImports, NewGroupIsUndoneWithItsFolder) {
  AddSite({});
  EXPECT_TRUE(Import({}));
  ASSERT_EQ(Catalogue().AreaFolders.UpperBound(), 1U);
  EXPECT_EQ(Catalogue().AreaFolders[1].Name, "Temporary Folder");
  EXPECT_TRUE(around.State.AreaSteps.Undo(Catalogue()).Done);
  EXPECT_TRUE(Catalogue().AreaGroups.Empty());
  EXPECT_TRUE(Catalogue().AreaFolders.Empty());
}

TEST_F(ObjectiveImports, BuildingLooksWhereItsHeadingSays) {
  test::WriteModels(disk.Path(), {test::LineShape(60)});
  const std::int32_t hangar = test::AddBuilding(data, ModelOne);
  AddSite({{.ClassIndex = hangar, .East = 100, .North = 200, .Heading = 90},
           {.ClassIndex = hangar, .East = 100, .North = 200, .Heading = 0},
           {.ClassIndex = hangar, .East = -300, .North = 0, .Heading = 225}});
  ASSERT_TRUE(ImportLines());
  ASSERT_EQ(Areas().UpperBound(), 1U);
  const areas::Area& area = Areas()[1];
  EXPECT_EQ(area.Type, AreaType::Region);
  EXPECT_EQ(area.Name, "Site");
  ASSERT_EQ(area.Lines.UpperBound(), 3U);
  ExpectLine(area.Lines[1], {100, 200, 160, 200});
  ExpectLine(area.Lines[2], {100, 200, 100, 260});
  // 60 feet to the south west: 42.426 each way.
  ExpectLine(area.Lines[3], {-300, 0, -342.42640687, -42.42640687});
  EXPECT_EQ(area.MinX, area.Lines[3].X2);
  EXPECT_EQ(area.MaxX, area.Lines[1].X2);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(ObjectiveImports, RightOfABuildingIsTheSouthOfOneThatLooksEast) {
  test::WriteModels(disk.Path(), {test::ShapeBytes(test::Root({{0, 0, 0}, {0, 40, 0}}, {test::Polygon({0, 1}, 1)}))});
  AddSite({{.ClassIndex = test::AddBuilding(data, ModelOne), .Heading = 90}});
  ASSERT_TRUE(ImportLines());
  ExpectLine(Areas()[1].Lines[1], {0, 0, 0, -40});
}

TEST_F(ObjectiveImports, ObjectiveThatIsTurnedTurnsItsBuildings) {
  test::WriteModels(disk.Path(), {test::LineShape(60)});
  falcon::Objective& site =
      AddSite({{.ClassIndex = test::AddBuilding(data, ModelOne), .East = 100, .North = 200, .Heading = 90}});
  site.Exact = falcon::ExactPlace{.Heading = 90};
  ASSERT_TRUE(ImportLines());
  // What was north of it is east, what was east is south.
  ExpectLine(Areas()[1].Lines[1], {200, -100, 200, -160});
  site.Exact = falcon::ExactPlace{.Heading = std::numeric_limits<float>::quiet_NaN()};
  ASSERT_TRUE(ImportLines());
  ExpectLine(Areas()[2].Lines[1], {100, 200, 160, 200});
}

TEST_F(ObjectiveImports, HeightAndRangeAreReadInEitherNotation) {
  test::WriteModels(disk.Path(), {test::LineShape(60), test::LineShape(30), test::LineShape(80, 12)});
  std::vector<falcon::FeatureEntry> entries;
  for (std::int16_t model = 1; model <= 3; ++model) {
    entries.push_back({.ClassIndex = test::AddBuilding(data, {model, 0, 0, 0, 0, 0, 0})});
  }
  AddSite(entries);
  const struct {
    const char *SimplFactor, *MaxZ;
    std::size_t Lines;
  } cases[] = {
      {"0", "0", 2},    {"0", "11,9", 2}, {"0", "12", 3},       {"0", "1000", 3}, {"0.01", "0", 1},  // 32.8 feet
      {"0,01", "0", 1}, {"", "", 2},      {"0.01", "1e999", 2}, {" -4", "-1", 0}, {"x", "0", 2}};
  for (const auto& [simplFactor, maxZ, lines] : cases) {
    SCOPED_TRACE(std::string(simplFactor) + " " + maxZ);
    Catalogue() = {};
    ASSERT_TRUE(ImportLines(simplFactor, maxZ));
    EXPECT_EQ(Areas().Empty() ? 0 : Areas()[1].Lines.UpperBound(), lines);
  }
}

TEST_F(ObjectiveImports, BuildingIsDrawnInItsState) {
  test::WriteModels(disk.Path(), {test::LineShape(10), test::LineShape(20), test::LineShape(30)});
  const std::int32_t both = test::AddBuilding(data, {1, 0, 2, 3, 0, 0, 0});
  const std::int32_t whole = test::AddBuilding(data, ModelOne);
  std::vector<falcon::FeatureEntry> entries;
  for (const std::int32_t thing : {both, both, both, both, whole, whole}) {
    entries.push_back({.ClassIndex = thing, .East = static_cast<double>(entries.size())});
  }
  AddSite(entries).States = {0, 1, 2, 3, 3};
  ASSERT_TRUE(ImportLines());
  std::vector<double> lengths;
  for (const areas::AreaLine& line : Areas()[1].Lines.Live())
    lengths.push_back(std::round((line.Y2 - line.Y1) * 3279.98));
  EXPECT_THAT(lengths, ElementsAre(10, 10, 20, 30, 10, 10));
}

TEST_F(ObjectiveImports, WhatIsNotSeenGivesNoLines) {
  test::WriteModels(disk.Path(), {test::LineShape(60), ""});
  const std::int32_t hangar = test::AddBuilding(data, ModelOne);
  const std::int32_t hidden = test::AddBuilding(data, ModelOne, falcon::FeatureClass::Virtual);
  const std::int32_t noModel = test::AddBuilding(data, {});
  const std::int32_t noShape = test::AddBuilding(data, {2, 0, 0, 0, 0, 0, 0});
  const std::int32_t beyond = test::AddBuilding(data, {77, 0, 0, 0, 0, 0, 0});
  AddSite({}, "without buildings");
  AddSite({{.ClassIndex = hidden}, {.ClassIndex = noModel}, {.ClassIndex = noShape}, {.ClassIndex = beyond}},
          "nothing");
  AddSite({{.ClassIndex = hangar, .East = std::numeric_limits<double>::quiet_NaN()},
           {.ClassIndex = hangar, .North = 1e300},
           {.ClassIndex = hangar, .Heading = std::numeric_limits<double>::infinity()},
           {.ClassIndex = 0},
           {.ClassIndex = 9999}},
          "nowhere");
  test::AddObjective(data, 9999, "without class");
  // A class whose buildings are told beyond the table.
  test::AddObjective(data, test::AddObjectiveClass(data, 1), "cut");
  data.Tables.Objectives.back().FeatureCount = 50;
  data.Tables.Objectives.back().FirstFeature = 30000;
  AddSite({{.ClassIndex = hidden}, {.ClassIndex = hangar}}, "one");
  ASSERT_TRUE(ImportLines());
  ASSERT_EQ(Areas().UpperBound(), 1U);
  EXPECT_EQ(Areas()[1].Name, "one");
  EXPECT_EQ(Areas()[1].Lines.UpperBound(), 1U);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(ObjectiveImports, GroupIsMadeEvenWhenThereIsNothingToDraw) {
  test::WriteModels(disk.Path(), {""});
  AddSite({});
  ASSERT_TRUE(ImportLines());
  ASSERT_EQ(Catalogue().AreaGroups.UpperBound(), 1U);
  EXPECT_TRUE(Areas().Empty());
}

TEST_F(ObjectiveImports, BuildingThatStandsTwiceIsDrawnOnce) {
  test::WriteModels(disk.Path(), {test::LineShape(60)});
  const std::int32_t hangar = test::AddBuilding(data, ModelOne);
  AddSite({{.ClassIndex = hangar}, {.ClassIndex = hangar}, {.ClassIndex = hangar, .Heading = 180}});
  ASSERT_TRUE(ImportLines());
  EXPECT_EQ(Areas()[1].Lines.UpperBound(), 2U);
}

TEST_F(ObjectiveImports, ModelsThatCannotBeReadAreToldOnce) {
  test::WriteModels(disk.Path(), {test::LineShape(60), "damaged", "damaged too"});
  std::vector<falcon::FeatureEntry> entries;
  for (std::int16_t model = 1; model <= 3; ++model) {
    entries.push_back({.ClassIndex = test::AddBuilding(data, {model, 0, 0, 0, 0, 0, 0})});
  }
  AddSite(entries, "a");
  AddSite(entries, "b");
  ASSERT_TRUE(ImportLines());
  ASSERT_EQ(Areas().UpperBound(), 2U);
  // A line, and two boxes of 100 by 100 feet.
  ASSERT_EQ(Areas()[1].Lines.UpperBound(), 9U);
  ExpectLine(Areas()[1].Lines[2], {-50, -50, -50, 50});
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "Models that could not be read, of which the box is drawn: 2.");
}

TEST_F(ObjectiveImports, ModelsWithoutABoxAreToldToo) {
  test::WriteModels(disk.Path(), {"damaged"}, {});
  AddSite({{.ClassIndex = test::AddBuilding(data, ModelOne)}});
  ASSERT_TRUE(ImportLines());
  EXPECT_TRUE(Areas().Empty());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "Models that could not be read, of which nothing is drawn: 1.");
}

TEST_F(ObjectiveImports, LinesNeedModelsAndIconsDoNot) {
  AddSite({});
  EXPECT_FALSE(ImportLines());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, "Error");
  EXPECT_EQ(around.Desk.Boxes[0].Text, "Could not load HDR file.");
  ExpectNothingChanged();
  EXPECT_TRUE(Import({}));
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
}

TEST_F(ObjectiveImports, ProgressIsToldOfEachAndAfterEachModelThatIsRead) {
  test::WriteModels(disk.Path(), {test::LineShape(60), test::LineShape(30)});
  const std::int32_t first = test::AddBuilding(data, ModelOne), second = test::AddBuilding(data, {2, 0, 0, 0, 0, 0, 0});
  AddSite({{.ClassIndex = first}, {.ClassIndex = second}}, "a");
  AddSite({{.ClassIndex = first}, {.ClassIndex = second}}, "b");
  AddSite({}, "c");
  std::vector<std::string> told;
  EXPECT_TRUE(Import({.Look = ObjectiveLook::Lines}, [&told](const ObjectiveProgress& at) {
    told.push_back(std::to_string(at.Number) + "/" + std::to_string(at.Total) + " " + at.Name + " " +
                   std::to_string(at.Percent));
    return true;
  }));
  EXPECT_THAT(told, ElementsAre("1/3 a 33", "1/3 a 33", "1/3 a 33", "2/3 b 66", "3/3 c 100"));
}

TEST_F(ObjectiveImports, ProgressIsToldWithinAnObjectiveOfManyBuildings) {
  test::WriteModels(disk.Path(), {test::LineShape(60)});
  std::vector<falcon::FeatureEntry> entries(2500, {.ClassIndex = test::AddBuilding(data, ModelOne)});
  for (std::size_t n = 0; n < entries.size(); ++n) entries[n].East = static_cast<double>(n);
  AddSite(entries);
  int told = 0;
  EXPECT_TRUE(Import({.Look = ObjectiveLook::Lines}, [&told](const ObjectiveProgress&) { return ++told > 0; }));
  EXPECT_EQ(told, 4) << "at its beginning, when its model is read, after 1,000 and 2,000 buildings";
}

TEST_F(ObjectiveImports, GivenUpAtAnyPointChangesNothing) {
  test::WriteModels(disk.Path(), {test::LineShape(60), test::LineShape(30)});
  const std::int32_t first = test::AddBuilding(data, ModelOne), second = test::AddBuilding(data, {2, 0, 0, 0, 0, 0, 0});
  AddSite({{.ClassIndex = first}}, "a");
  AddSite({{.ClassIndex = first}, {.ClassIndex = second}}, "b");
  for (int point = 1; point <= 4; ++point) {
    SCOPED_TRACE(point);
    int left = point;
    EXPECT_FALSE(Import({.Look = ObjectiveLook::Lines}, [&left](const ObjectiveProgress&) { return --left > 0; }));
    EXPECT_EQ(left, 0);
    ExpectNothingChanged();
  }
  int left = 2;
  EXPECT_FALSE(Import({}, [&left](const ObjectiveProgress&) { return --left > 0; }));
  ExpectNothingChanged();
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(ObjectiveImports, TooManyLinesAreToldAndNothingIsTaken) {
  // A fan of 4,000 lines, 1,001 times.
  std::vector<test::Point> points = {{0, 0, 0}};
  std::vector<test::NodePlan> spokes;
  for (int n = 1; n <= 4000; ++n) {
    points.push_back({100, static_cast<float>(n), 0});
    spokes.push_back(test::Polygon({0, n}, 1));
  }
  test::WriteModels(disk.Path(), {test::ShapeBytes(test::Root(points, spokes))});
  std::vector<falcon::FeatureEntry> entries(1001, {.ClassIndex = test::AddBuilding(data, ModelOne)});
  for (std::size_t n = 0; n < entries.size(); ++n) entries[n].East = static_cast<double>(n);
  AddSite(entries);
  EXPECT_FALSE(ImportLines());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "The objectives could not be imported: they have more than 4000000 lines; fewer objectives or a larger "
            "simplification have less.");
  ExpectNothingChanged();
}

}  // namespace
}  // namespace kestrel::core
