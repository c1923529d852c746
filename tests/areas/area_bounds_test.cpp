#include "areas/area_bounds.h"

#include <gtest/gtest.h>

#include "areas/editor_fixture.h"

namespace kestrel::areas {
namespace {

void ExpectBox(Area area, double minX, double minY, double maxX, double maxY) {
  FixedTexts texts;
  AreaBounds(area, texts);
  EXPECT_DOUBLE_EQ(area.MinX, minX);
  EXPECT_DOUBLE_EQ(area.MinY, minY);
  EXPECT_DOUBLE_EQ(area.MaxX, maxX);
  EXPECT_DOUBLE_EQ(area.MaxY, maxY);
}

TEST(AreaBounds, OfARegionAreTheExtremesOfBothEnds) {
  Area area;
  area.Lines.Append({5, 6, -3, 40});
  area.Lines.Append({7, 2, 1, 8});
  ExpectBox(area, -3, 2, 7, 40);
}

TEST(AreaBounds, OfARegionWithoutSegmentsAreZeros) {
  Area area;
  area.MaxX = 9;
  ExpectBox(area, 0, 0, 0, 0);
}

TEST(AreaBounds, OfACircleOfTenMilesLie18AndAHalfUnitsToEachSide) {
  Area area;
  area.Type = AreaType::Circle;
  area.X = 100;
  area.Y = 200;
  area.Radius = 10;
  ExpectBox(area, 81.48, 181.48, 118.52, 218.52);
}

TEST(AreaBounds, OfACircleTakeTheRadiusThrough32Bits) {
  Area area;
  area.Type = AreaType::Circle;
  area.Radius = 16777217;  // 32 bits hold 16777216
  ExpectBox(area, -16777216 * 1.852, -16777216 * 1.852, 16777216 * 1.852, 16777216 * 1.852);
}

TEST(AreaBounds, OfAnIconLieTwentyUnitsToEachSide) {
  Area area;
  area.Type = AreaType::Icon;
  area.X = 1;
  area.Y = 2;
  ExpectBox(area, -19, -18, 21, 22);
}

TEST(AreaBounds, OfATextReachRightAndDownFromItsAnchor) {
  Area area;
  area.Type = AreaType::Text;
  area.X = 100;
  area.Y = 50;
  ExpectBox(area, 95, 41, 135, 55);
}

TEST(AreaBounds, OfAPlanLieFifteenUnitsAroundItsPoints) {
  Area area;
  area.Type = AreaType::FlightPlan;
  ExpectBox(area, -15, -15, 15, 15);
  area.Points.Append({.X = 10, .Y = 20});
  area.Points.Append({.X = 4, .Y = 30});
  ExpectBox(area, -11, 5, 25, 45);
}

TEST(AreaBounds, OfAnUnknownTypeStayAsTheyStand) {
  Area area;
  area.Type = static_cast<AreaType>(77);
  area.MaxX = 9;
  ExpectBox(area, 0, 0, 9, 0);
}

TEST(Area, ShowsWithItsGroupAndFolder) {
  AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({"F", 1});
  AreaGroup group{.FolderIndex = 1};
  EXPECT_TRUE(Shows(catalogue, group)) << "any number but 0 is true of a folder";
  group.Visible = 1;
  EXPECT_FALSE(Shows(catalogue, group)) << "of a group -1 alone is true";
  group.Visible = On;
  catalogue.AreaFolders[1].Visible = Off;
  EXPECT_FALSE(Shows(catalogue, group));
  for (const std::int32_t none : {0, -1, 2}) {
    group.FolderIndex = none;
    EXPECT_FALSE(Shows(catalogue, group));
  }
  Area area;
  EXPECT_TRUE(Shows(area));
  area.Editing = true;
  EXPECT_FALSE(Shows(area));
  area = {.Visible = 1};
  EXPECT_FALSE(Shows(area));
}

TEST(Area, HasTheWordOfItsShape) {
  EXPECT_EQ(ShapeToText(AreaType::Region), "Region");
  EXPECT_EQ(ShapeToText(AreaType::FlightPlan), "FlightPlan");
  EXPECT_EQ(ShapeToText(static_cast<AreaType>(0)), "");
  EXPECT_EQ(ShapeToText(static_cast<AreaType>(6)), "");
  EXPECT_EQ(ShapeToText(static_cast<AreaType>(-1)), "");
}

}  // namespace
}  // namespace kestrel::areas
