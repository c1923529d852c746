#include "areas/drawing_aids.h"

#include <limits>

#include "areas/area_bounds.h"
#include "areas/editor_fixture.h"

namespace kestrel::areas {
namespace {

class DrawingAidsTest : public EditorTest {
 protected:
  Area& StoreRegion(AreaLine line) {
    Area area;
    area.Lines.Append(line);
    AreaBounds(area, texts);
    return Store(area);
  }

  void ExpectNext(double x, double y, const DrawingAids& aids, double expectedX, double expectedY) {
    const MapPoint next = NextPoint(editor, catalogue, x, y, aids);
    EXPECT_NEAR(next.X, expectedX, 1e-9);
    EXPECT_NEAR(next.Y, expectedY, 1e-9);
  }

  static constexpr DrawingAids Snap{.Snap = true, .SnapDistance = 2};
  static constexpr DrawingAids Hold{.Hold = true};
};

TEST_F(DrawingAidsTest, LeaveThePointerAloneUnlessAskedFor) {
  StoreRegion({10, 10, 20, 10});
  Open(AreaType::Region);
  Click(1, 1);
  ExpectNext(10.5, 10.5, {.SnapDistance = 2}, 10.5, 10.5);
}

TEST_F(DrawingAidsTest, SnapToTheNearestEnd) {
  StoreRegion({10, 10, 20, 10});
  StoreRegion({10, 12, 30, 12});
  Open(AreaType::Region);
  ExpectNext(10.5, 10.9, Snap, 10, 10);
  ExpectNext(10.5, 11.1, Snap, 10, 12);
  ExpectNext(20, 8, Snap, 20, 10);         // 2 away, just within
  ExpectNext(20, 7.9, Snap, 20, 7.9);      // 2.1 away
  ExpectNext(21.5, 8.5, Snap, 21.5, 8.5);  // 1.5 on each axis, 2.12 away
  ExpectNext(15, 10, Snap, 15, 10);        // on the segment, far from its ends
}

TEST_F(DrawingAidsTest, SnapToPointsOfFlightPlansAndToNothingElse) {
  Area plan{.Type = AreaType::FlightPlan};
  plan.Points.Append({.X = 50, .Y = 60});
  AreaBounds(plan, texts);
  Store(plan);
  Area circle{.Type = AreaType::Circle, .X = 70, .Y = 70};
  circle.Lines.Append({70, 70, 70, 70});  // kept, not drawn
  AreaBounds(circle, texts);
  Store(circle);
  Open(AreaType::FlightPlan);
  ExpectNext(51, 61, Snap, 50, 60);
  ExpectNext(71, 71, Snap, 71, 71);
}

TEST_F(DrawingAidsTest, SnapToNoAreaThatDoesNotShow) {
  StoreRegion({10, 10, 20, 10}).Visible = Off;
  Open(AreaType::Region);
  ExpectNext(11, 10, Snap, 11, 10);
  catalogue.AreaGroups[1].Areas[1].Visible = On;
  ExpectNext(11, 10, Snap, 10, 10);
  catalogue.AreaFolders[1].Visible = Off;
  ExpectNext(11, 10, Snap, 11, 10);
}

TEST_F(DrawingAidsTest, SnapToTheWorkAreaAsItIsNow) {
  Area stored;
  stored.Lines.Append({10, 10, 20, 10});
  OpenStored(stored);
  PointDetails(editor, 1, {40, 40, 50, 40}, texts);
  ExpectNext(10.5, 10, Snap, 10.5, 10);  // the stored one is not drawn
  ExpectNext(41, 40, Snap, 40, 40);
}

TEST_F(DrawingAidsTest, CloseAChainButDoNotSnapToWhereTheLineStarts) {
  Open(AreaType::Region);
  SetSingleClick(editor, true);
  Click(0, 0);
  Click(10, 0);
  Click(10, 10);
  ExpectNext(1, 1, Snap, 0, 0);
  ExpectNext(10, 9, Snap, 10, 9);  // the last point itself
}

TEST_F(DrawingAidsTest, HoldTheBearingInStepsOf15Degrees) {
  Open(AreaType::Region);
  ExpectNext(3, 4, Hold, 3, 4);  // no first point yet
  Click(100, 200);
  // atan(3/4) = 36.9 degrees east of north goes to 30: 5 away at (sin 30, cos 30).
  ExpectNext(103, 204, Hold, 102.5, 204.33012701892219);
  // 3 west and 4 south: 36.9 degrees beyond south.
  ExpectNext(97, 196, Hold, 97.5, 195.66987298107781);
  // 1 north at 10 east is 84.3 degrees and goes to 90, at the distance of the square root of 101.
  ExpectNext(110, 201, Hold, 110.04987562112089, 200);
  ExpectNext(100, 200, Hold, 100, 200);
}

TEST_F(DrawingAidsTest, HoldTheBearingFromTheLastPointOfAPlan) {
  Open(AreaType::FlightPlan);
  Click(1, 1);
  Click(10, 10);
  ExpectNext(20.5, 20, Hold, 10 + 10.253048327204939, 10 + 10.253048327204939);  // sqrt(210.25)/sqrt(2)
}

TEST_F(DrawingAidsTest, PreferAnEndPointToTheBearing) {
  StoreRegion({103, 204, 300, 300});
  Open(AreaType::Region);
  Click(100, 200);
  const DrawingAids both{.Snap = true, .Hold = true, .SnapDistance = 2};
  ExpectNext(103.5, 204, both, 103, 204);
  ExpectNext(110, 201, both, 110.04987562112089, 200);
}

TEST_F(DrawingAidsTest, AreForRegionsAndFlightPlans) {
  StoreRegion({10, 10, 20, 10});
  for (const AreaType type : {AreaType::Circle, AreaType::Icon, AreaType::Text}) {
    editor = {};
    Open(type);
    Click(5, 5);
    EXPECT_FALSE(LastPoint(editor));
    ExpectNext(11, 10, {.Snap = true, .Hold = true, .SnapDistance = 2}, 11, 10);
  }
}

TEST_F(DrawingAidsTest, EndWithTheEditorAndRestWhileItTakesNoClicks) {
  StoreRegion({10, 10, 20, 10});
  ExpectNext(11, 10, Snap, 11, 10);  // not open
  Open(AreaType::Region);
  Click(1, 1);
  SetBulkDelete(editor, true);
  EXPECT_FALSE(LastPoint(editor));
  ExpectNext(11, 10, Snap, 11, 10);
}

TEST_F(DrawingAidsTest, PassOverPointsThatAreNoNumbers) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double endless = std::numeric_limits<double>::infinity();
  Area bad;
  bad.Lines.Append({none, none, endless, -endless});
  bad.Lines.Append({10, 10, none, 10});
  bad.MinX = bad.MinY = -endless;
  bad.MaxX = bad.MaxY = endless;
  Store(bad);
  Open(AreaType::Region);
  ExpectNext(11, 10, Snap, 10, 10);
  ExpectNext(50, 50, Snap, 50, 50);
}

TEST_F(DrawingAidsTest, TellWhereTheLineToThePointerStarts) {
  Open(AreaType::Region);
  EXPECT_FALSE(LastPoint(editor));
  Click(1, 2);
  ASSERT_TRUE(LastPoint(editor));
  EXPECT_EQ(LastPoint(editor)->X, 1);
  Click(3, 4);
  EXPECT_FALSE(LastPoint(editor)) << "the segment is complete";
  SetSingleClick(editor, true);
  Click(5, 6);
  Click(7, 8);
  ASSERT_TRUE(LastPoint(editor));
  EXPECT_EQ(LastPoint(editor)->Y, 8);
  ChooseType(editor, AreaType::FlightPlan, texts);
  EXPECT_FALSE(LastPoint(editor));
  Click(9, 10);
  ASSERT_TRUE(LastPoint(editor));
  EXPECT_EQ(LastPoint(editor)->X, 9);
}

}  // namespace
}  // namespace kestrel::areas
