#include "falcon/ground_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "falcon/model_writer.h"
#include "falcon/shape_writer.h"

namespace kestrel::falcon {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr double Infinite = std::numeric_limits<double>::infinity();

ModelShape ShapeOf(std::vector<ModelEdge> edges) { return {std::move(edges), 0}; }

/// A house of 40 feet forward and 20 to the right that is 15 feet high: floor, roof and four walls.
ModelShape House() {
  ModelShape house;
  const ModelPoint floor[] = {{0, 0, 0}, {40, 0, 0}, {40, 20, 0}, {0, 20, 0}};
  for (std::size_t n = 0; n < 4; ++n) {
    const ModelPoint &from = floor[n], &to = floor[(n + 1) % 4];
    house.Edges.push_back({from, to});
    house.Edges.push_back({{from.X, from.Y, -15}, {to.X, to.Y, -15}});
    house.Edges.push_back({from, {from.X, from.Y, -15}});
  }
  return house;
}

TEST(GroundLines, OnlyWhatLiesOnTheGroundIsTakenAtHeightZero) {
  EXPECT_THAT(LinesOnGround(House(), {.Nearest = 0, .MostHeight = 0}), SizeIs(4));
  EXPECT_THAT(LinesOnGround(ShapeOf({{{0, 0, 0}, {40, 0, -15}}}), {.Nearest = 0, .MostHeight = 0}), IsEmpty())
      << "one end is too high";
  EXPECT_THAT(LinesOnGround(ShapeOf({{{0, 0, 2}, {40, 0, 3}}}), {.Nearest = 0, .MostHeight = 0}), SizeIs(1))
      << "below the ground";
}

TEST(GroundLines, TwinsAboveOneAnotherAreOneLineAndWallsArePoints) {
  EXPECT_THAT(LinesOnGround(House(), {.Nearest = 0, .MostHeight = Infinite}), SizeIs(4));
  // The roof alone juts out by a foot.
  ModelShape house = House();
  house.Edges.push_back({{-1, -1, -16}, {41, -1, -16}});
  EXPECT_THAT(LinesOnGround(house, {.Nearest = 0, .MostHeight = 15}), SizeIs(4));
  EXPECT_THAT(LinesOnGround(house, {.Nearest = 0, .MostHeight = 16}), SizeIs(5));
  EXPECT_THAT(LinesOnGround(house, {.Nearest = 0, .MostHeight = -1}), IsEmpty());
}

TEST(GroundLines, HeightIsHeldToHalfAHundredthOfAFoot) {
  const auto lines = [](double height) {
    return LinesOnGround(ShapeOf({{{0, 0, -height}, {40, 0, -height}}}), {.Nearest = 0, .MostHeight = 3}).size();
  };
  EXPECT_EQ(lines(3), 1U);
  EXPECT_EQ(lines(3.004), 1U);
  EXPECT_EQ(lines(3.006), 0U);
}

TEST(GroundLines, LinesWithinTheRangeAreDisregarded) {
  const auto lines = [](double nearest) {
    return LinesOnGround(House(), {.Nearest = nearest, .MostHeight = 0}).size();
  };
  EXPECT_EQ(lines(-5), 4U);
  EXPECT_EQ(lines(19.9), 4U);
  EXPECT_EQ(lines(20), 2U) << "a line as long as the range is within it";
  EXPECT_EQ(lines(40), 0U);
  EXPECT_EQ(lines(Infinite), 0U);
}

TEST(GroundLines, SameEndsAreOneLineWhicheverWayRound) {
  EXPECT_THAT(LinesOnGround(ShapeOf({{{0, 0, 0}, {40, 10, 0}},
                                     {{40, 10, 0}, {0, 0, 0}},
                                     {{0.004, 0, 0}, {40, 10.004, 0}},
                                     {{0.02, 0, 0}, {40, 10, 0}}}),
                            {.Nearest = 0, .MostHeight = 0}),
              SizeIs(2));
}

TEST(GroundLines, BoxStandsOnTheGroundHoweverHighItIs) {
  const ModelBox box{{-10, -4, -30}, {20, 6, -5}};
  const std::vector<GroundLine> lines = LinesOnGround(box, {.Nearest = 0, .MostHeight = 0});
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_EQ(lines[0].X1, -10);
  EXPECT_EQ(lines[0].Y1, -4);
  EXPECT_EQ(lines[0].X2, 20);
  EXPECT_EQ(lines[0].Y2, -4);
  EXPECT_EQ(lines[2].X1, 20);
  EXPECT_EQ(lines[2].Y1, 6);
  EXPECT_THAT(LinesOnGround(box, {.Nearest = 15, .MostHeight = -9}), SizeIs(2));
  EXPECT_THAT(LinesOnGround(ModelBox{{0, 0, 0}, {0, 6, 0}}, {.Nearest = 0, .MostHeight = 0}), SizeIs(1))
      << "a wall without width";
}

TEST(GroundLines, HeadingTurnsClockwiseFromNorth) {
  // Forward 100, right 10: whoever looks north has the right in the east.
  const struct {
    double Degrees, East, North;
  } cases[] = {{0, 10, 100},    {90, 100, -10},  {180, -10, -100}, {270, -100, 10},
               {-90, -100, 10}, {450, 100, -10}, {-360, 10, 100},  {3690, 100, -10}};
  for (const auto& [degrees, east, north] : cases) {
    SCOPED_TRACE(degrees);
    const Heading heading(degrees);
    EXPECT_EQ(heading.East(100, 10), east);
    EXPECT_EQ(heading.North(100, 10), north);
  }
  // 30 degrees: half of the way forward is east, and 0.866 of it north.
  const Heading slanted(30);
  EXPECT_NEAR(slanted.East(100, 0), 50, 1e-9);
  EXPECT_NEAR(slanted.North(100, 0), 86.60254037844386, 1e-9);
}

/// Models 1 to 4 are squares of 10, 20, 30 and 40 feet, model 5 is damaged in a box, model 6 damaged without one.
class LinesOfModels : public testing::Test {
 protected:
  LinesOfModels() {
    test::DirectoryPlan plan;
    plan.Models.resize(7);
    std::string shapes;
    for (unsigned n = 1; n <= 6; ++n) {
      const auto side = static_cast<float>(10 * n);
      const std::string shape =
          n > 4 ? "damaged"
                : test::ShapeBytes(test::Root({{0, 0, 0}, {side, 0, 0}, {side, side, 0}, {0, side, 0}},
                                              {test::Polygon({0, 1, 2, 3})}));
      plan.Places.push_back({shapes.size(), shape.size()});
      plan.Models[n].Details = {{n - 1, 500}};
      plan.Models[n].Box = {-50, 50, -50, 50, 0, 0};
      shapes += shape;
    }
    plan.Models[6].Box = {};
    test::WriteBytes(disk / "KoreaObj.HDR", test::DirectoryBytes(plan));
    test::WriteBytes(disk / "KoreaObj.LOD", shapes);
  }

  test::TempFolder disk;
  ModelStore store{{disk.Path()}, {}};
  GroundRule rule;
};

TEST_F(LinesOfModels, EachModelIsReadOnce) {
  ModelLines lines(store, rule);
  for (int round = 0; round < 3; ++round) {
    for (const int model : {1, 2, 3, 4, 5, 6, 99}) lines.Of(model);
  }
  EXPECT_EQ(lines.Reads(), 7U);
  ASSERT_THAT(lines.Of(3), SizeIs(4));
  EXPECT_EQ(lines.Of(3)[0].X2, 30);
}

TEST_F(LinesOfModels, WhatCannotBeReadIsToldOnceWithItsReason) {
  ModelLines lines(store, rule);
  for (int round = 0; round < 2; ++round) {
    EXPECT_THAT(lines.Of(5), SizeIs(4));
    EXPECT_EQ(lines.Of(5)[0].X1, -50);
    EXPECT_THAT(lines.Of(6), IsEmpty());
    EXPECT_THAT(lines.Of(99), IsEmpty());
  }
  EXPECT_EQ(lines.Boxes(), 1U);
  EXPECT_EQ(lines.Missing(), 1U) << "a model that there is not is no trouble";
  ASSERT_THAT(lines.Troubles(), SizeIs(2));
  EXPECT_THAT(lines.Troubles()[0], testing::HasSubstr("model 5"));
}

TEST_F(LinesOfModels, FileThatIsMissingIsToldOnce) {
  std::filesystem::remove(disk / "KoreaObj.LOD");
  ModelLines lines(store, rule);
  for (const int model : {1, 2, 3, 4}) EXPECT_THAT(lines.Of(model), SizeIs(4));
  EXPECT_EQ(lines.Boxes(), 4U);
  EXPECT_THAT(lines.Troubles(), SizeIs(1));
}

TEST_F(LinesOfModels, MemoryIsBounded) {
  // Each takes 4 lines of 16 bytes and 64 more: two have room.
  ModelLines lines(store, rule, 300);
  for (const int model : {1, 2, 1, 2}) lines.Of(model);
  EXPECT_EQ(lines.Reads(), 2U);
  EXPECT_THAT(lines.Of(3), SizeIs(4));
  EXPECT_THAT(lines.Of(5), SizeIs(4));
  lines.Of(3);
  EXPECT_EQ(lines.Reads(), 4U);
  EXPECT_EQ(lines.Of(1)[0].X2, 10);
  EXPECT_EQ(lines.Reads(), 5U) << "it had been forgotten";
  lines.Of(5);
  EXPECT_EQ(lines.Boxes(), 1U);
  EXPECT_THAT(lines.Troubles(), SizeIs(1)) << "told once, though read twice";
}

}  // namespace
}  // namespace kestrel::falcon
