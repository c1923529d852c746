#include "falcon/runways.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace kestrel::falcon {
namespace {

/// A list of points for the tables below.
struct List {
  std::uint8_t Kind = PointHeader::Runway;
  std::int32_t Runway = 0;
  double Heading = 0;
  std::vector<ObjectPoint> Points{};
};

Runways Collect(const std::vector<List>& lists) {
  ObjectTables tables;
  tables.Headers.resize(1);
  for (const List& list : lists) {
    if (tables.Headers.size() > 1) tables.Headers.back().Next = static_cast<std::int32_t>(tables.Headers.size());
    tables.Headers.push_back({.Kind = list.Kind,
                              .FirstPoint = static_cast<std::int32_t>(tables.Points.size()),
                              .PointCount = static_cast<std::int32_t>(list.Points.size()),
                              .Data = list.Heading,
                              .RunwayNumber = list.Runway});
    tables.Points.insert(tables.Points.end(), list.Points.begin(), list.Points.end());
  }
  return CollectRunways(tables, {.FirstHeader = 1});
}

ObjectPoint Begin(double east, double north) { return {.East = east, .North = north, .Kind = 2}; }
ObjectPoint FarEnd(double east, double north) { return {.East = east, .North = north, .Kind = 1}; }

std::string NameOf(const Runways& runways, std::size_t runway, std::size_t end) {
  return runways[runway][end] ? runways[runway][end]->Name : "-";
}

TEST(Runways, EndHasHeadingThresholdAndFarEnd) {
  const Runways runways = Collect({{.Heading = 20, .Points = {FarEnd(2699, 2956), Begin(416, -3348)}}});
  ASSERT_TRUE(runways[0][0]);
  EXPECT_EQ(runways[0][0]->Heading, 20);
  ASSERT_TRUE(runways[0][0]->Begin && runways[0][0]->FarEnd);
  EXPECT_EQ(runways[0][0]->Begin->East, 416);
  EXPECT_EQ(runways[0][0]->Begin->North, -3348);
  EXPECT_EQ(runways[0][0]->FarEnd->East, 2699);
  EXPECT_EQ(runways[0][0]->FarEnd->North, 2956);
  EXPECT_EQ(NameOf(runways, 0, 0), "02");
  EXPECT_FALSE(runways[0][1] || runways[1][0] || runways[1][1]);
}

TEST(Runways, OutlineIsNoEndWhereverItStands) {
  const List outline{.Kind = PointHeader::Outline, .Heading = 236, .Points = {{.East = 1, .Kind = 8}}};
  const List there{.Heading = 20}, back{.Heading = 200};
  for (const std::vector<List>& lists :
       {std::vector{outline, there, back}, std::vector{there, outline, back}, std::vector{there, back, outline}}) {
    const Runways runways = Collect(lists);
    EXPECT_EQ(NameOf(runways, 0, 0), "02");
    EXPECT_EQ(NameOf(runways, 0, 1), "20");
    EXPECT_FALSE(runways[1][0]);
  }
}

TEST(Runways, OtherListsThirdEndsAndFurtherRunwaysAreLeftOut) {
  const Runways runways = Collect({{.Kind = 11, .Heading = 10},
                                   {.Runway = -1, .Heading = 20},
                                   {.Runway = 2, .Heading = 30},
                                   {.Runway = 1, .Heading = 40},
                                   {.Runway = 1, .Heading = 220},
                                   {.Runway = 1, .Heading = 50}});
  EXPECT_FALSE(runways[0][0]);
  EXPECT_EQ(NameOf(runways, 1, 0), "04");
  EXPECT_EQ(NameOf(runways, 1, 1), "22");
}

TEST(Runways, HeadingIsTurnedIntoTheCircle) {
  const struct {
    double Told, Heading;
  } cases[] = {{-90, 270}, {360, 360}, {0, 0}, {361.5, 1.5}, {720, 360}, {-360, 0}, {-1e9, 80}};
  for (const auto& [told, heading] : cases) {
    EXPECT_EQ(Collect({{.Heading = told}})[0][0]->Heading, heading) << told;
  }
}

TEST(Runways, HeadingThatIsNoNumberIsNoEnd) {
  EXPECT_FALSE(Collect({{.Heading = std::numeric_limits<double>::quiet_NaN()}})[0][0]);
  EXPECT_FALSE(Collect({{.Heading = -std::numeric_limits<double>::infinity()}})[0][0]);
}

TEST(Runways, NumberIsTheHeadingInTensHalvesToTheEvenOne) {
  EXPECT_EQ(RunwayNumber(0), "36");
  EXPECT_EQ(RunwayNumber(4.9), "36");
  EXPECT_EQ(RunwayNumber(5), "36") << "0.5 is halfway, and 0 is even";
  EXPECT_EQ(RunwayNumber(5.1), "01");
  EXPECT_EQ(RunwayNumber(15), "02");
  EXPECT_EQ(RunwayNumber(25), "02");
  EXPECT_EQ(RunwayNumber(90), "09");
  EXPECT_EQ(RunwayNumber(355), "36");
  EXPECT_EQ(RunwayNumber(360), "36");
}

TEST(Runways, ParallelOnesHaveSides) {
  // Eastward runways, one 1000 feet north of the other: looking east the northern one is left, looking west right.
  const Runways runways = Collect({{.Runway = 0, .Heading = 90, .Points = {Begin(-4000, 1000), FarEnd(4000, 1000)}},
                                   {.Runway = 0, .Heading = 270, .Points = {Begin(4000, 1000), FarEnd(-4000, 1000)}},
                                   {.Runway = 1, .Heading = 270, .Points = {Begin(3000, 0), FarEnd(-4000, 0)}},
                                   {.Runway = 1, .Heading = 90, .Points = {Begin(-4000, 0), FarEnd(3000, 0)}}});
  EXPECT_EQ(NameOf(runways, 0, 0), "09L");
  EXPECT_EQ(NameOf(runways, 0, 1), "27R");
  EXPECT_EQ(NameOf(runways, 1, 0), "27L");
  EXPECT_EQ(NameOf(runways, 1, 1), "09R");
}

TEST(Runways, SidesGoByTheNumberNotByTheDegree) {
  // North-westward: 123.4 and 123.5 degrees are the same runway number. Along the heading is (0.83, -0.55); the point
  // further north-east is left of it.
  const Runways runways = Collect({{.Runway = 0, .Heading = 123.419, .Points = {Begin(0, 0)}},
                                   {.Runway = 1, .Heading = 123.502, .Points = {Begin(500, 800)}}});
  EXPECT_EQ(NameOf(runways, 0, 0), "12R");
  EXPECT_EQ(NameOf(runways, 1, 0), "12L");
}

TEST(Runways, OnesThatCrossOrAreInLineHaveNoSides) {
  const Runways crossing = Collect(
      {{.Runway = 0, .Heading = 90, .Points = {Begin(0, 0)}}, {.Runway = 1, .Heading = 180, .Points = {Begin(9, 9)}}});
  EXPECT_EQ(NameOf(crossing, 0, 0), "09");
  EXPECT_EQ(NameOf(crossing, 1, 0), "18");
  const Runways line = Collect({{.Runway = 0, .Heading = 90, .Points = {Begin(0, 5)}},
                                {.Runway = 1, .Heading = 90, .Points = {Begin(9000, 5)}}});
  EXPECT_EQ(NameOf(line, 0, 0), "09");
  EXPECT_EQ(NameOf(line, 1, 0), "09");
}

TEST(Runways, EndWithoutPointsIsThereWithoutAPlaceOrSide) {
  const Runways runways =
      Collect({{.Runway = 0, .Heading = 90}, {.Runway = 1, .Heading = 90, .Points = {Begin(0, 0)}}});
  ASSERT_TRUE(runways[0][0]);
  EXPECT_FALSE(runways[0][0]->Begin || runways[0][0]->FarEnd);
  EXPECT_EQ(NameOf(runways, 0, 0), "09");
  EXPECT_EQ(NameOf(runways, 1, 0), "09");
}

TEST(Runways, LastPointOfAKindCountsAndImpossibleOnesDoNot) {
  const Runways runways = Collect(
      {{.Heading = 90,
        .Points = {Begin(1, 1), Begin(2, 2), Begin(1e300, 3), Begin(4, std::numeric_limits<double>::quiet_NaN())}}});
  ASSERT_TRUE(runways[0][0]->Begin);
  EXPECT_EQ(runways[0][0]->Begin->East, 2);
}

}  // namespace
}  // namespace kestrel::falcon
