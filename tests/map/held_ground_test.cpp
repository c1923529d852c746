#include <gtest/gtest.h>

#include "map/geometry.h"

// The ground that stays under the pointer: the wheel at the pointer, and the map that is dragged.
namespace kestrel::map {
namespace {

using base::Changed;

constexpr Changed ViewMoved = Changed::Map | Changed::MiniMap | Changed::CursorLine;

/// 800 by 600 pixels around the middle of a theater of 1024 map units, which is (7680, 7680) in view units; the pointer
/// 200 pixels right of the middle and 100 above it: over map point (712, 612).
ViewState ViewWithPointer() {
  ViewState view;
  ResetView(view, 1024, 2048, 500, 300);
  ResizeSurface(view, 12000, 9000);
  MovePointer(view, 9000, 3000);
  return view;
}

void ExpectCentre(const ViewState& view, double x, double y) {
  EXPECT_NEAR(view.ViewCenterX, x, 1e-6);
  EXPECT_NEAR(view.ViewCenterY, y, 1e-6);
}

TEST(HeldGround, AZoomStepAtThePointerLeavesItsGroundThere) {
  ViewState view = ViewWithPointer();
  ASSERT_EQ(view.CursorMapX, 712);
  ASSERT_EQ(view.CursorMapY, 612);
  EXPECT_EQ(ZoomAtPointer(view, true), ViewMoved | Changed::Zoom);
  EXPECT_EQ(view.Resolution, 2);
  // View units: the pointer's ground is (712 x 15, 412 x 15), the middle 3000 / 2 left of it and 1500 / 2 below.
  ExpectCentre(view, 10680 - 1500, 6180 + 750);
  EXPECT_NEAR(view.CursorMapX, 712, 1e-9);
  EXPECT_NEAR(view.CursorMapY, 612, 1e-9);
  ZoomAtPointer(view, false);
  ExpectCentre(view, 7680, 7680);
  ZoomAtPointer(view, false);
  EXPECT_EQ(view.Resolution, 0.5);
  ExpectCentre(view, 10680 - 6000, 6180 + 3000);
}

TEST(HeldGround, StepsAreThoseOfTheWheel) {
  ViewState view = ViewWithPointer();
  ChangeRes(view, 5.656854249492380195);  // 2 to the power of 2.5: its exponent is rounded to 2 before the step
  ZoomAtPointer(view, true);
  EXPECT_EQ(view.Resolution, 8);
  ChangeRes(view, GreatestResolution);
  const ViewState before = view;
  EXPECT_EQ(ZoomAtPointer(view, true), ViewMoved | Changed::Zoom) << "it is drawn though nothing is other";
  EXPECT_EQ(view.Resolution, GreatestResolution);
  ExpectCentre(view, before.ViewCenterX, before.ViewCenterY);
}

TEST(HeldGround, TheCentreStaysWithinTheTheater) {
  ViewState view = ViewWithPointer();
  // Pointer in a corner of the surface, 6000 and 4500 from the middle: the ground there would need a middle as far
  // again beyond the corner of the theater.
  view.ViewCenterX = view.ViewCenterY = 0;
  MovePointer(view, 12000, 9000);
  ZoomAtPointer(view, false);
  ExpectCentre(view, 0, 0);
  view.ViewCenterX = view.ViewCenterY = 15360;
  ChangeRes(view, 1);
  MovePointer(view, 0, 0);
  ZoomAtPointer(view, false);
  ExpectCentre(view, 15360, 15360);
}

TEST(HeldGround, ThePlaceThatIsHeldFollowsAsFarAsTheEdgeAndComesBack) {
  ViewState view = ViewWithPointer();
  const ViewPoint held = ViewFromSurface(view, {view.MouseX, view.MouseY});
  EXPECT_EQ(HoldGround(view, held, {6000, 4500}), ViewMoved);
  ExpectCentre(view, 10680, 6180);
  EXPECT_EQ(view.CursorMapX, 912) << "the pointer has not moved: it is over what came there, 200 pixels further east";
  // 15360 is the theater's edge: 10680 + 6000 lies beyond it.
  HoldGround(view, held, {0, 4500});
  ExpectCentre(view, 15360, 6180);
  HoldGround(view, held, {9000, 3000});
  ExpectCentre(view, 7680, 7680);
  ChangeRes(view, 4);
  HoldGround(view, held, {2000, 4500});
  ExpectCentre(view, 10680 + 1000, 6180);
}

TEST(HeldGround, AnchorAndBullseyeGoWithTheMap) {
  ViewState view = ViewWithPointer();
  SetCursorStart(view);
  HoldGround(view, {view.AnchorViewX, view.AnchorViewY}, {1500, 2500});
  EXPECT_NEAR(view.AnchorX, 1500, 1e-6);
  EXPECT_NEAR(view.AnchorY, 2500, 1e-6);
  const SurfacePoint bulls = SurfaceFromView(view, {view.BullsViewX, view.BullsViewY});
  EXPECT_EQ(view.BullsX, bulls.X);
  EXPECT_EQ(view.BullsY, bulls.Y);
}

}  // namespace
}  // namespace kestrel::map
