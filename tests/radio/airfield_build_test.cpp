#include "radio/airfield_build.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "radio/with_steps.h"

namespace kestrel::radio {
namespace {

using falcon::ObjectPoint;
using falcon::PointHeader;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr double Unit = 3279.98;  // feet of a map unit

/// A point of map units beside the objective.
ObjectPoint Threshold(double east, double north) { return {.East = east * Unit, .North = north * Unit, .Kind = 2}; }
ObjectPoint FarEnd(double east, double north) { return {.East = east * Unit, .North = north * Unit, .Kind = 1}; }

/// A list of points of an objective.
struct List {
  std::uint8_t Kind = PointHeader::Runway;
  std::int32_t Runway = 0;
  double Heading = 0;
  std::vector<ObjectPoint> Points{};
};

/// The outline of a runway, and two parallel ones that lie from west to east: the northern one a map unit north of the
/// airbase and two long, the southern one beginning at the same line and half a map unit shorter.
std::vector<List> ParallelRunways() {
  return {{.Kind = PointHeader::Outline, .Heading = 90, .Points = {{.East = 5, .North = 5, .Kind = 8}}},
          {.Heading = 90, .Points = {Threshold(-1, 1), FarEnd(1, 1)}},
          {.Heading = 270, .Points = {Threshold(1, 1), FarEnd(-1, 1)}},
          {.Runway = 1, .Heading = 270, .Points = {Threshold(0.5, 0), FarEnd(-1, 0)}},
          {.Runway = 1, .Heading = 90, .Points = {Threshold(-1, 0), FarEnd(0.5, 0)}}};
}

/// A world with one objective: number 766, in cell 398, 236, of country 2.
class AirfieldBuilds : public testing::Test {
 protected:
  AirfieldBuilds() {
    tables.Classes = {{}, {.Class = 4, .Type = 1, .Data = falcon::DataKind::Objective, .DataIndex = 0}};
    tables.Objectives = {{.ClassIndex = 1}};
    falcon::Objective kunsan;
    kunsan.Id = {501, 0};
    kunsan.CampId = 766;
    kunsan.ClassIndex = 1;
    kunsan.Owner = 2;
    kunsan.FirstOwner = 6;
    kunsan.CellX = 398;
    kunsan.CellY = 236;
    kunsan.OwnName = "Kunsan";
    world.Objectives = {kunsan};
  }

  void SetRunways(const std::vector<List>& lists) {
    tables.Headers.resize(1);
    tables.Points.clear();
    for (const List& list : lists) {
      if (tables.Headers.size() > 1) tables.Headers.back().Next = static_cast<std::int32_t>(tables.Headers.size());
      tables.Headers.push_back({.Kind = list.Kind,
                                .FirstPoint = static_cast<std::int32_t>(tables.Points.size()),
                                .PointCount = static_cast<std::int32_t>(list.Points.size()),
                                .Data = list.Heading,
                                .RunwayNumber = list.Runway});
      tables.Points.insert(tables.Points.end(), list.Points.begin(), list.Points.end());
    }
    tables.Objectives[0].FirstHeader = 1;
  }

  AirfieldBuild Build(std::string_view stations) const {
    return BuildAirfields(world, tables, falcon::ReadStations(stations));
  }
  /// That of a file with one station.
  Airfield BuildOne(std::string_view station) const {
    AirfieldBuild build = Build(station);
    EXPECT_EQ(build.Airfields.UpperBound(), 1U);
    EXPECT_EQ(build.Trouble, "");
    return build.Airfields.UpperBound() == 1 ? build.Airfields[1] : Airfield();
  }

  falcon::World world;
  falcon::ObjectTables tables;
};

TEST_F(AirfieldBuilds, StationGivesChannelBandRangeAndFrequencies) {
  const Airfield field = BuildOne("766\t75 X  18 35 1 292300 126500 11030 0 10870 0 305500 275800 292900");
  EXPECT_EQ(field.TACAN, "075");
  EXPECT_EQ(field.TACAN_BAND, "X");
  EXPECT_EQ(field.TACANR, 35);
  EXPECT_EQ(field.UHF, "292300");
  EXPECT_EQ(field.VHF, "126500");
  EXPECT_THAT(field.ILS, ElementsAre("11030", "-", "10870", "-"));
}

TEST_F(AirfieldBuilds, ObjectiveGivesNameOwnerAndTheMiddleOfItsCell) {
  const Airfield field = BuildOne("766");
  EXPECT_EQ(field.Name, "Kunsan");
  EXPECT_EQ(field.TEAM_INDEX, 2) << "who has it now, not who had it first";
  EXPECT_EQ(field.TACANX, 398.5);
  EXPECT_EQ(field.TACANY, 236.5);
}

TEST_F(AirfieldBuilds, ExactPlaceIsLeftAlone) {
  world.Objectives[0].Exact = falcon::ExactPlace{.North = 100, .East = 200, .Height = 0, .Heading = 90};
  const Airfield field = BuildOne("766");
  EXPECT_EQ(field.TACANX, 398.5);
  EXPECT_EQ(field.TACANY, 236.5);
}

TEST_F(AirfieldBuilds, NothingIsDrawn) {
  SetRunways(ParallelRunways());
  const Airfield field = BuildOne("766 75 X 18 35 1 292300 126500 11030 0 10870 0");
  EXPECT_FALSE(field.VIS);
  EXPECT_FALSE(field.TACAN_VIS);
  EXPECT_THAT(field.ILS_VIS, Each(false));
}

TEST_F(AirfieldBuilds, LineWithANumberAloneHasNameAndPlaceButNoFrequencies) {
  SetRunways(ParallelRunways());
  const Airfield field = BuildOne("766");
  EXPECT_EQ(field.Name, "Kunsan");
  EXPECT_EQ(field.TACANX, 398.5);
  EXPECT_THAT(field.ILS_DES, ElementsAre("27R", "09L", "09R", "27L"));
  EXPECT_THAT((std::vector<std::string>{field.TACAN, field.TACAN_BAND, field.UHF, field.VHF}), Each(""));
  EXPECT_THAT(field.ILS, Each("")) << "not even that there is none";
  EXPECT_EQ(field.TACANR, 0);
}

TEST_F(AirfieldBuilds, ChannelHasThreeDigits) {
  EXPECT_EQ(BuildOne("766 7").TACAN, "007");
  EXPECT_EQ(BuildOne("766 042").TACAN, "042") << "decimal, whatever it begins with";
  EXPECT_EQ(BuildOne("766 126").TACAN, "126");
  EXPECT_EQ(BuildOne("766 none").TACAN, "000");
}

TEST_F(AirfieldBuilds, ZeroAloneIsNoIls) {
  const Airfield field = BuildOne("766 7 Y 0 0 2 0 0 0 00 0.0 10810");
  EXPECT_THAT(field.ILS, ElementsAre("-", "00", "0.0", "10810"));
  EXPECT_EQ(FreqValToIcon(field.ILS[0]), FreqImage::Unknown);
  EXPECT_EQ(field.UHF, "0") << "other frequencies keep it";
  EXPECT_EQ(field.VHF, "0");
}

TEST_F(AirfieldBuilds, ParallelRunwaysHaveSidesAndTheSecondEndsComeFirst) {
  SetRunways(ParallelRunways());
  const Airfield field = BuildOne("766");
  // Looking east the northern one is left, looking west it is right.
  EXPECT_THAT(field.ILS_DES, ElementsAre("27R", "09L", "09R", "27L"));
  const struct {
    double X, Y, Heading;
  } ends[] = {{399.5, 237.5, 0}, {397.5, 237.5, 180}, {397.5, 236.5, 180}, {399, 236.5, 0}};
  for (std::size_t i = 0; i < RunwayEndCount; ++i) {
    EXPECT_NEAR(field.ILS_R[i].RX, ends[i].X, 1e-9) << i;
    EXPECT_NEAR(field.ILS_R[i].RY, ends[i].Y, 1e-9) << i;
    EXPECT_NEAR(field.ILS_DRAW_HEADING[i], ends[i].Heading, 1e-6) << i;
  }
}

TEST_F(AirfieldBuilds, HeadingIsDrawnFromTheFarEndToTheThreshold) {
  // Threshold less far end; the directions by their signs, -90 to 270.
  const struct {
    double East, North, Heading;
  } cases[] = {{1, 0, 0},     {1, 1, 45},   {0, 1, 90},   {-1, 1, 135}, {-1, 0, 180},
               {-1, -1, 225}, {0, -1, -90}, {1, -1, -45}, {0, 0, 0}};
  for (const auto& one : cases) {
    SetRunways({{.Heading = 90, .Points = {Threshold(2 + one.East, 3 + one.North), FarEnd(2, 3)}}});
    EXPECT_NEAR(BuildOne("766").ILS_DRAW_HEADING[1], one.Heading, 1e-6) << one.East << ", " << one.North;
  }
}

TEST_F(AirfieldBuilds, OneRunwayLeavesTheOtherPlacesEmpty) {
  SetRunways({{.Runway = 1, .Heading = 20, .Points = {Threshold(0, -1), FarEnd(0, 1)}}});
  const Airfield field = BuildOne("766");
  EXPECT_THAT(field.ILS_DES, ElementsAre("-", "-", "-", "02"));
  EXPECT_NEAR(field.ILS_R[3].RY, 235.5, 1e-9);
  EXPECT_NEAR(field.ILS_DRAW_HEADING[3], -90, 1e-6);
  for (const std::size_t empty : {0, 1, 2}) {
    EXPECT_EQ(field.ILS_R[empty].RX, 398.5) << empty;
    EXPECT_EQ(field.ILS_R[empty].RY, 236.5) << empty;
    EXPECT_EQ(field.ILS_DRAW_HEADING[empty], 0) << empty;
  }
}

TEST_F(AirfieldBuilds, PointThatNoListTellsIsWhereTheAirfieldIs) {
  SetRunways({{.Heading = 20}, {.Heading = 200, .Points = {FarEnd(0, 1)}}});
  const Airfield field = BuildOne("766");
  EXPECT_THAT(field.ILS_DES, ElementsAre("20", "02", "-", "-"));
  EXPECT_EQ(field.ILS_R[1].RX, 398.5);
  EXPECT_EQ(field.ILS_R[1].RY, 236.5);
  EXPECT_EQ(field.ILS_DRAW_HEADING[1], 0);
  EXPECT_EQ(field.ILS_R[0].RY, 236.5);
  EXPECT_NEAR(field.ILS_DRAW_HEADING[0], -90, 1e-6) << "from the far end, which is north";
}

TEST_F(AirfieldBuilds, AirstripsHaveRunwaysAndOtherObjectivesHaveNone) {
  SetRunways(ParallelRunways());
  tables.Classes[1].Type = 2;
  EXPECT_THAT(BuildOne("766").ILS_DES, ElementsAre("27R", "09L", "09R", "27L"));
  tables.Classes[1].Type = 3;
  const Airfield armybase = BuildOne("766 7");
  EXPECT_EQ(armybase.Name, "Kunsan");
  EXPECT_EQ(armybase.TACANX, 398.5);
  EXPECT_THAT(armybase.ILS_DES, Each("-"));
}

TEST_F(AirfieldBuilds, ObjectiveOfAnUnknownClassHasNoRunways) {
  SetRunways(ParallelRunways());
  for (const std::uint16_t unknown : std::initializer_list<std::uint16_t>{0, 2, 65535}) {
    world.Objectives[0].ClassIndex = unknown;
    const Airfield field = BuildOne("766 7");
    EXPECT_EQ(field.Name, "Kunsan") << unknown;
    EXPECT_THAT(field.ILS_DES, Each("-")) << unknown;
  }
}

TEST_F(AirfieldBuilds, StationOfNoObjectiveKeepsItsTexts) {
  SetRunways(ParallelRunways());
  const Airfield field = BuildOne("767 75 X 18 35 1 292300 126500 0 0 0 11030");
  EXPECT_EQ(field.Name, "**Not an Airbase!");
  EXPECT_EQ(field.TEAM_INDEX, 0);
  EXPECT_EQ(field.TACANX, 0);
  EXPECT_EQ(field.TACANY, 0);
  EXPECT_THAT(field.ILS_DES, Each(""));
  EXPECT_EQ(field.ILS_R[3].RX, 0);
  EXPECT_EQ(field.TACAN, "075");
  EXPECT_EQ(field.TACAN_BAND, "X");
  EXPECT_EQ(field.TACANR, 35);
  EXPECT_EQ(field.UHF, "292300");
  EXPECT_EQ(field.VHF, "126500");
  EXPECT_THAT(field.ILS, ElementsAre("-", "-", "-", "11030"));
}

TEST_F(AirfieldBuilds, ObjectiveWithoutANameSaysSo) {
  world.Objectives[0].OwnName.clear();
  EXPECT_EQ(BuildOne("766").Name, "**Not found in Theater Strings!");
}

TEST_F(AirfieldBuilds, NameIsThatOfTheTheaterOrOfTheParent) {
  world.Names = falcon::ReadStringTable(std::string("\x03\0\0\0\x07\0\x0C\0", 8), "NowhereOsan ");
  world.Objectives[0].OwnName.clear();
  world.Objectives[0].NameId = 1;
  EXPECT_EQ(BuildOne("766").Name, "Osan ") << "as it is written";
  world.Objectives.emplace_back().Id = {502, 0};
  world.Objectives[1].OwnName = "Suwon";
  world.Objectives[0].NameId = 0;
  world.Objectives[0].Parent = {502, 0};
  EXPECT_EQ(BuildOne("766").Name, "Suwon Airbase");
}

TEST_F(AirfieldBuilds, NumberOnTwoLinesGivesTwoAirfields) {
  const AirfieldBuild build = Build("766 1 X\r\n# 766 2 X\r\n\r\n5 3 X\r\n766 4 Y\r\n");
  ASSERT_EQ(build.Airfields.UpperBound(), 3U);
  EXPECT_EQ(build.Airfields[1].Name, "Kunsan");
  EXPECT_EQ(build.Airfields[1].TACAN, "001");
  EXPECT_EQ(build.Airfields[2].Name, "**Not an Airbase!");
  EXPECT_EQ(build.Airfields[3].Name, "Kunsan");
  EXPECT_EQ(build.Airfields[3].TACAN, "004");
  EXPECT_EQ(build.Airfields[3].TACAN_BAND, "Y");
  EXPECT_EQ(build.Airfields[3].TACANX, 398.5);
}

TEST_F(AirfieldBuilds, OfTwoObjectivesWithOneNumberTheFirstCounts) {
  world.Objectives.push_back(world.Objectives[0]);
  world.Objectives[1].OwnName = "Taegu";
  EXPECT_EQ(BuildOne("766").Name, "Kunsan");
}

TEST_F(AirfieldBuilds, TeamsAreTheCampaignsAndThoseWithoutANameTheirNumber) {
  world.Teams[1].Name = "ROK";
  world.Teams[7].Name = "DPRK";
  EXPECT_THAT(Build("").Teams,
              ElementsAre("Team #0", "ROK", "Team #2", "Team #3", "Team #4", "Team #5", "Team #6", "DPRK"));
}

TEST_F(AirfieldBuilds, ListGoesAsFarAsItCanBeRead) {
  const AirfieldBuild number = Build("766 1\nseven 2\n766 3\n");
  EXPECT_EQ(number.Airfields.UpperBound(), 1U);
  EXPECT_THAT(number.Trouble, HasSubstr("line 2"));
  const AirfieldBuild range = Build("766 1\n766 2 X 0 3000000000\n766 3\n");
  EXPECT_EQ(range.Airfields.UpperBound(), 1U);
  EXPECT_THAT(range.Trouble, HasSubstr("766"));
  EXPECT_EQ(Build("").Airfields.UpperBound(), 0U);
}

using AirfieldTaking = WithSteps;

TEST_F(AirfieldTaking, ReplacesTeamsAndAirfieldsAloneAndIsOneStep) {
  Frequencies tables;
  tables.CustomF1 = "243000";
  tables.Teams[3] = "Blue";
  tables.Airfields.Append({}).Name = "Old";
  tables.Airfields[1].VIS = true;
  AirfieldBuild build;
  build.Teams[3] = "Green";
  build.Airfields.Append({}).Name = "New 1";
  build.Airfields.Append({}).Name = "New 2";
  TakeAirfields(tables, steps, std::move(build));

  EXPECT_EQ(tables.CustomF1, "243000");
  EXPECT_EQ(tables.Teams[3], "Green");
  ASSERT_EQ(tables.Airfields.UpperBound(), 2U);
  EXPECT_EQ(tables.Airfields[2].Name, "New 2");
  EXPECT_EQ(tables.Revision, 1U);
  EXPECT_EQ(steps.UndoText(), "load of airfields");
  EXPECT_GE(steps.Bytes(), 2 * sizeof(Airfield)) << "slot 0 and the airfield that can come back";

  const Moved moved = steps.Undo(tables);
  EXPECT_TRUE(moved.Done);
  EXPECT_EQ(moved.Tab, FreqTab::Airports);
  EXPECT_EQ(tables.Teams[3], "Blue");
  ASSERT_EQ(tables.Airfields.UpperBound(), 1U);
  EXPECT_EQ(tables.Airfields[1].Name, "Old");
  EXPECT_TRUE(tables.Airfields[1].VIS);
  EXPECT_EQ(steps.UndoText(), "");

  steps.Redo(tables);
  EXPECT_EQ(tables.Teams[3], "Green");
  EXPECT_EQ(tables.Airfields.UpperBound(), 2U);
}

}  // namespace
}  // namespace kestrel::radio
