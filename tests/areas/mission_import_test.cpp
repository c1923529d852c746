#include "areas/mission_import.h"

#include <gtest/gtest.h>

#include "areas/small_catalogue.h"

namespace kestrel::areas {
namespace {

class MissionImport : public testing::Test {
 protected:
  void Import(const std::string& text) { ImportMission(small.Catalogue, small.History, base::ProfileFile(text)); }
  /// A mission "M" with these lines of its steerpoints.
  void ImportLines(const std::string& lines) { Import("[MISSION]\r\ntitle=M\r\n[STPT]\r\n" + lines); }
  const AreaGroup& Group(std::size_t index) { return small.Catalogue.AreaGroups[index]; }
  const Area& OnlyArea(std::size_t group) {
    EXPECT_EQ(Group(group).Areas.UpperBound(), 1u);
    return Group(group).Areas[1];
  }
  std::size_t Groups() const { return small.Catalogue.AreaGroups.UpperBound(); }

  Small small;
};

// 10 units are 32799.8 feet, 20 are 65599.6, 30 are 98399.4, 40 are 131199.2.
TEST_F(MissionImport, SteerpointsAreOneFlightPlan) {
  ImportLines(
      "target_0=32799.8, 65599.6, -2000.000000, 1, Not set\r\n"
      "target_1=0.000000, 0.000000, 0.000000, -1, Not set\r\n"
      "TARGET_23=131199.2,98399.4,500,10\r\n"
      "target_24=32799.8,32799.8,0,1\r\n");
  EXPECT_EQ(small.Folders(), "M");
  EXPECT_EQ(small.Catalogue.AreaFolders[1].Visible, On);
  EXPECT_EQ(small.Groups(), "STPs:1");
  EXPECT_EQ(Group(1).Visible, On);
  const Area& plan = OnlyArea(1);
  EXPECT_EQ(plan.Name, "M_STPs");
  EXPECT_EQ(plan.Type, AreaType::FlightPlan);
  ASSERT_EQ(plan.Points.UpperBound(), 2u) << "24 keys are read, from 0";
  EXPECT_DOUBLE_EQ(plan.Points[1].X, 20);
  EXPECT_DOUBLE_EQ(plan.Points[1].Y, 10);
  EXPECT_DOUBLE_EQ(plan.Points[1].Z, 2000);
  EXPECT_EQ(plan.Points[1].Type, PointType::Nav);
  EXPECT_DOUBLE_EQ(plan.Points[2].X, 30);
  EXPECT_DOUBLE_EQ(plan.Points[2].Y, 40);
  EXPECT_DOUBLE_EQ(plan.Points[2].Z, -500);
  EXPECT_EQ(plan.Points[2].Type, PointType::Target);
  // 15 units to each side of the outermost points.
  EXPECT_DOUBLE_EQ(plan.MinX, 5);
  EXPECT_DOUBLE_EQ(plan.MinY, -5);
  EXPECT_DOUBLE_EQ(plan.MaxX, 45);
  EXPECT_DOUBLE_EQ(plan.MaxY, 55);
}

TEST_F(MissionImport, AreasHaveTheCommonValues) {
  ImportLines("target_0=32799.8,65599.6,-2000,1\r\n");
  const Area& plan = OnlyArea(1);
  EXPECT_EQ(plan.ShowWaypointElevation, On);
  EXPECT_EQ(plan.Visible, On);
  EXPECT_FALSE(plan.Editing);
  EXPECT_EQ(plan.Color, 0);
  EXPECT_EQ(plan.Icon, 1);
  EXPECT_EQ(plan.Text, "");
  EXPECT_EQ(plan.X, 0);
  EXPECT_EQ(plan.Y, 0);
  EXPECT_EQ(plan.Radius, 0);
  EXPECT_TRUE(plan.Lines.Empty());
  EXPECT_EQ(plan.TextFont.Name, "Verdana");
  EXPECT_EQ(plan.TextFont.Size, 8);
  EXPECT_EQ(plan.TextFont.Bold, Off);
  EXPECT_EQ(plan.AltFont.Name, "OCR A Extended");
  EXPECT_EQ(plan.AltFont.Size, 8);
  EXPECT_EQ(plan.AltFont.Bold, On);
  EXPECT_EQ(plan.AltFont.Italic, Off);
}

TEST_F(MissionImport, SteerpointsNeedFourPartsAnActionAndAPlace) {
  ImportLines(
      "target_0=100,200,300\r\n"        // three parts: no action
      "target_1=100,200,0,5\r\n"        // on the ground
      "target_2=0,0,0,5\r\n"            // nowhere
      "target_3=0,0,-50,5\r\n"          // a height alone
      "target_4=100,200,-300,-1\r\n"    // not set
      "target_5=100,200,-300,-1.2\r\n"  // rounds to -1
      "target_6=\r\n"
      "target_7=abc,def,x,y\r\n"      // no numbers: 0
      "target_8=7 ft,,,\r\n"          // four parts, the number at the head of the first
      "target_9=100,200,-300,,9\r\n"  // action 0
      "target_10=;,1e3,-300,4\r\n");
  const Area& plan = OnlyArea(1);
  ASSERT_EQ(plan.Points.UpperBound(), 5u);
  EXPECT_DOUBLE_EQ(plan.Points[1].Y, 100 / 3279.98);
  EXPECT_EQ(plan.Points[1].Z, 0);
  EXPECT_FALSE(std::signbit(plan.Points[1].Z));
  EXPECT_EQ(plan.Points[2].X, 0);
  EXPECT_EQ(plan.Points[2].Z, 50);
  EXPECT_DOUBLE_EQ(plan.Points[3].Y, 7 / 3279.98);
  EXPECT_EQ(plan.Points[3].X, 0);
  EXPECT_EQ(plan.Points[4].Type, PointType::Nav);
  EXPECT_EQ(plan.Points[5].Y, 0);
  EXPECT_DOUBLE_EQ(plan.Points[5].X, 1000 / 3279.98);
}

TEST_F(MissionImport, AnActionAboveNineIsATarget) {
  ImportLines(
      "target_0=1,1,1,9\r\ntarget_1=1,1,1,10\r\ntarget_2=1,1,1,9.4\r\ntarget_3=1,1,1,9.5\r\ntarget_4=1,1,1,1e300\r\n"
      "target_5=1,1,1,-70000\r\n");
  const base::Table<FlightPlanPoint>& points = OnlyArea(1).Points;
  ASSERT_EQ(points.UpperBound(), 6u);
  EXPECT_EQ(points[1].Type, PointType::Nav);
  EXPECT_EQ(points[2].Type, PointType::Target);
  EXPECT_EQ(points[3].Type, PointType::Nav);
  EXPECT_EQ(points[4].Type, PointType::Target) << "9.5 rounds to the even 10";
  EXPECT_EQ(points[5].Type, PointType::Target);
  EXPECT_EQ(points[6].Type, PointType::Nav);
}

TEST_F(MissionImport, EachThreatIsAGroupOfAnIconAndACircle) {
  ImportLines("ppt_14=65599.6,98399.4,0,6076.11549,SA2\r\nppt_2=32799.8,65599.6,0,12152.23098\r\n");
  EXPECT_EQ(small.Groups(), "PPT_2:1 PPT_14:1");
  ASSERT_EQ(Group(2).Areas.UpperBound(), 2u);
  const Area& icon = Group(2).Areas[1];
  const Area& circle = Group(2).Areas[2];
  EXPECT_EQ(icon.Name, "M_PPT_14 Icon");
  EXPECT_EQ(icon.Type, AreaType::Icon);
  EXPECT_EQ(icon.Icon, 3);
  EXPECT_DOUBLE_EQ(icon.X, 30);
  EXPECT_DOUBLE_EQ(icon.Y, 20);
  EXPECT_EQ(icon.Radius, 0);
  EXPECT_EQ(icon.ShowWaypointElevation, On);
  EXPECT_DOUBLE_EQ(icon.MinX, 10);
  EXPECT_DOUBLE_EQ(icon.MaxY, 40);
  EXPECT_EQ(circle.Name, "M_PPT_14 Circle");
  EXPECT_EQ(circle.Type, AreaType::Circle);
  EXPECT_EQ(circle.Icon, 3);
  EXPECT_DOUBLE_EQ(circle.X, 30);
  EXPECT_DOUBLE_EQ(circle.Y, 20);
  EXPECT_DOUBLE_EQ(circle.Radius, 1);
  EXPECT_EQ(circle.ShowWaypointElevation, On);
  EXPECT_DOUBLE_EQ(circle.MinX, 30 - 1.852);
  EXPECT_DOUBLE_EQ(circle.MaxY, 20 + 1.852);
  EXPECT_DOUBLE_EQ(Group(1).Areas[2].Radius, 2);
}

TEST_F(MissionImport, AThreatNeedsPlaceAndRadius) {
  ImportLines(
      "ppt_0=100,200,0,0\r\nppt_1=0,200,0,5\r\nppt_2=100,0,0,5\r\nppt_3=100,200,0\r\nppt_15=100,200,0,5\r\n"
      "ppt_4=100,200,0,1e999\r\n");
  EXPECT_EQ(small.Folders(), "M");
  EXPECT_EQ(Groups(), 0u);
}

TEST_F(MissionImport, OlderFilesHaveLinesOfFivePoints) {
  ImportLines(
      "lineSTPT_0=32799.8,65599.6\r\nlineSTPT_4=65599.6,32799.8,700\r\nlineSTPT_5=98399.4,98399.4,0\r\n"
      "lineSTPT_19=131199.2,131199.2,0\r\n");
  EXPECT_EQ(small.Groups(), "STP Lines:1");
  EXPECT_EQ(small.Areas(1), "M_Line 1 M_Line 2 M_Line 4");
  const Area& first = Group(1).Areas[1];
  EXPECT_EQ(first.Type, AreaType::FlightPlan);
  EXPECT_EQ(first.ShowWaypointElevation, Off);
  ASSERT_EQ(first.Points.UpperBound(), 2u);
  EXPECT_DOUBLE_EQ(first.Points[1].X, 20);
  EXPECT_DOUBLE_EQ(first.Points[1].Y, 10);
  EXPECT_DOUBLE_EQ(first.Points[2].X, 10);
  EXPECT_EQ(first.Points[2].Z, 0);
  EXPECT_EQ(first.Points[2].Type, PointType::Nav);
  EXPECT_DOUBLE_EQ(first.MinX, -5);
  EXPECT_DOUBLE_EQ(first.MaxX, 35);
  EXPECT_EQ(Group(1).Areas[2].Points.UpperBound(), 1u);
  EXPECT_DOUBLE_EQ(Group(1).Areas[3].Points[1].X, 40);
}

TEST_F(MissionImport, NewerFilesHaveLinesOfSixPoints) {
  ImportLines(
      "lineSTPT_5=100,100\r\nlineSTPT_6=200,200\r\nlineSTPT_17=300,300\r\nlineSTPT_18=400,400\r\n"
      "lineSTPT_23=500,500\r\nlineSTPT_24=600,600\r\nlineSTPT_20=0.000000, 0.000000, 0.000000\r\n");
  EXPECT_EQ(small.Areas(1), "M_Line 1 M_Line 2 M_Line 3 M_Line 4");
  for (const std::size_t line : {1u, 2u, 3u}) EXPECT_EQ(Group(1).Areas[line].Points.UpperBound(), 1u) << line;
  ASSERT_EQ(Group(1).Areas[4].Points.UpperBound(), 2u);
  EXPECT_DOUBLE_EQ(Group(1).Areas[4].Points[2].X, 500 / 3279.98);
}

TEST_F(MissionImport, TheKeyOfTheTwentyFirstPointAloneDecides) {
  ImportLines("lineSTPT_5=100,100\r\nlineSTPT_20=\r\n");
  EXPECT_EQ(small.Areas(1), "M_Line 1") << "of six";
  ImportLines("lineSTPT_5=100,100\r\nlineSTPT_21=5,5\r\n");
  EXPECT_EQ(small.Areas(2), "M_Line 2") << "of five";
}

TEST_F(MissionImport, ALinePointNeedsBothOfItsPlace) {
  ImportLines("lineSTPT_0=0,100\r\nlineSTPT_1=100,0\r\nlineSTPT_2=100\r\nlineSTPT_3=0.0,0.0,9\r\n");
  EXPECT_EQ(Groups(), 0u);
}

TEST_F(MissionImport, GroupsStandInTheOrderOfTheirKinds) {
  ImportLines("lineSTPT_0=1,1\r\nppt_1=1,1,0,1\r\nppt_0=1,1,0,1\r\ntarget_3=1,1,1,1\r\n");
  EXPECT_EQ(small.Groups(), "STPs:1 PPT_0:1 PPT_1:1 STP Lines:1");
}

TEST_F(MissionImport, AFileWithoutSectionsIsAFolderWithoutName) {
  for (const char* text : {"", "no ini file at all", "title=x\r\ntarget_0=1,1,1,1\r\n", "[MISSION]\r\ntitle=\r\n"}) {
    const base::ProfileFile mission{std::string_view(text)};
    EXPECT_EQ(MissionTitle(mission), "");
    Small alone;
    ImportMission(alone.Catalogue, alone.History, mission);
    EXPECT_EQ(Told(alone.Catalogue), "folder  -1\n") << text;
  }
}

TEST_F(MissionImport, PointsWithoutATitleAreTakenAllTheSame) {
  Import("[STPT]\r\ntarget_0=1,1,1,1\r\n");
  EXPECT_EQ(small.Catalogue.AreaFolders[1].Name, "");
  EXPECT_EQ(OnlyArea(1).Name, "_STPs");
}

TEST_F(MissionImport, TheSameFileAgainIsAnotherFolderWithGroupsOfItsOwn) {
  small.AddFolders({"old"});
  small.AddGroups({{"g", 1}});
  const std::string lines = "target_0=1,1,1,1\r\nppt_0=1,1,0,1\r\n";
  ImportLines(lines);
  ImportLines(lines);
  EXPECT_EQ(small.Folders(), "old M M");
  EXPECT_EQ(small.Groups(), "g:1 STPs:2 PPT_0:2 STPs:3 PPT_0:3");
}

TEST_F(MissionImport, IsOneStep) {
  small.AddFolders({"old"});
  small.AddGroups({{"g", 1}});
  const std::string before = Told(small.Catalogue);
  ImportLines("target_0=1,1,1,1\r\nppt_0=1,1,0,1\r\nlineSTPT_0=1,1\r\n");
  EXPECT_EQ(small.Catalogue.Revision, 1u);
  EXPECT_EQ(small.History.UndoText(), "import of M");
  const std::string now = Told(small.Catalogue);
  EXPECT_TRUE(small.History.Undo(small.Catalogue).GroupsChanged);
  EXPECT_EQ(Told(small.Catalogue), before);
  EXPECT_EQ(small.History.Redo(small.Catalogue).Select, "C2");
  EXPECT_EQ(Told(small.Catalogue), now);
}

TEST_F(MissionImport, LongLinesAndHugeNumbersAreBounded) {
  const std::string nines(100'000, '9');
  const std::string commas(100'000, ',');
  Import("[MISSION]\r\ntitle=" + std::string(100'000, 'T') + "\r\n[STPT]\r\ntarget_0=" + nines +
         ",1,1,1\r\ntarget_1=5,5,5,5" + commas + "\r\ntarget_2=1e999,-1e999,1,1\r\nppt_0=1e300,1e300,0,1e300\r\n" +
         "lineSTPT_0=" + commas + "\r\nlineSTPT_1=nan,inf\r\nlineSTPT_2=0x10,0x10\r\n");
  // A value ends at 749 characters: of all those nines, one part, beyond a double.
  EXPECT_EQ(small.Catalogue.AreaFolders[1].Name, std::string(749, 'T'));
  const base::Table<FlightPlanPoint>& points = OnlyArea(1).Points;
  ASSERT_EQ(points.UpperBound(), 2u);
  EXPECT_DOUBLE_EQ(points[1].X, 5 / 3279.98);
  EXPECT_EQ(points[2].X, 0) << "an infinity is no number";
  EXPECT_EQ(points[2].Z, -1);
  ASSERT_EQ(Groups(), 2u);
  EXPECT_EQ(Group(2).Areas[2].Radius, 1e300 / 6076.11549);
}

}  // namespace
}  // namespace kestrel::areas
