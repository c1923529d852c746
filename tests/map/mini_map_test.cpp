#include "map/mini_map.h"

#include <gtest/gtest.h>

#include "map/geometry.h"

namespace kestrel::map {
namespace {

using base::Changed;
using base::Has;

ViewState View() {
  ViewState view;
  ResetView(view, 1024, 2048, 500, 300);
  ResizeSurface(view, 12000, 9000);
  return view;
}

TEST(MiniMap, SideIsTheSizeByTheScale) {
  const ViewState view = View();
  EXPECT_EQ(MiniMapScale(view, 5), 5);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, 5), 204.8 * 15);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, 1), 1024 * 15);
}

TEST(MiniMap, ScaleIsTheToldOneHoweverSmallTheMiniMapBecomes) {
  ViewState view = View();
  view.Size = 512;
  EXPECT_EQ(MiniMapScale(view, 20), 20);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, 20), 25.6 * 15);
  EXPECT_EQ(MiniMapScale(view, 32767), 32767);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, 32767), 15) << "a pixel is left";
  view.Size = 8192;
  EXPECT_EQ(MiniMapScale(view, 1), 1);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, 1), 8192 * 15);
}

TEST(MiniMap, ScaleIsTheDefaultForNoneAndKeepsTheSideToWhatMemoryHolds) {
  ViewState view = View();
  for (const int wrong : {0, -1, -32768}) EXPECT_EQ(MiniMapScale(view, static_cast<std::int16_t>(wrong)), 5) << wrong;
  view.Size = 81920;
  EXPECT_EQ(MiniMapScale(view, 5), 10);
  EXPECT_DOUBLE_EQ(MiniMapSide(view, MiniMapScale(view, 5)), 8192 * 15);
}

TEST(MiniMap, BoxLiesOnTheVisiblePart) {
  const ViewState view = View();
  const MiniMapBox box = BoxOnMiniMap(view, 5);
  EXPECT_EQ(box.Width, 2400);
  EXPECT_EQ(box.Height, 1800);
  EXPECT_EQ(box.Left, 1536 - 1200);
  EXPECT_EQ(box.Top, 1536 - 900);
}

TEST(MiniMap, BoxIsRoundedHalfToEven) {
  ViewState view = View();
  view.SurfaceWidth = 25;  // by 10: 2.5
  view.SurfaceHeight = 35;
  view.ViewCenterX = 105;  // by 10: 10.5, less half of 2
  view.ViewCenterY = 200;
  const MiniMapBox box = BoxOnMiniMap(view, 10);
  EXPECT_EQ(box.Width, 2);
  EXPECT_EQ(box.Height, 4);
  EXPECT_EQ(box.Left, 10);
  EXPECT_EQ(box.Top, 18);
}

TEST(MiniMap, BoxIsWiderThanTheMiniMapWhenTheViewIsWiderThanTheTheater) {
  ViewState view = View();
  ChangeRes(view, 0.125);
  const MiniMapBox box = BoxOnMiniMap(view, 5);
  EXPECT_EQ(box.Width, 19200);
  EXPECT_GT(box.Width, MiniMapSide(view, 5));
  EXPECT_LT(box.Left, 0);
  EXPECT_GT(box.Left + box.Width, MiniMapSide(view, 5));
}

TEST(MiniMap, ClickCentresWithoutClamping) {
  ViewState view = View();
  const Changed changed = CentreByMiniMap(view, 5, 300, 600);
  EXPECT_EQ(view.ViewCenterX, 1500);
  EXPECT_EQ(view.ViewCenterY, 3000);
  for (const Changed part : {Changed::Map, Changed::MiniMap, Changed::CursorLine}) EXPECT_TRUE(Has(changed, part));

  // The mini map's pixels are whole, so its last one can lie beyond the theater.
  CentreByMiniMap(view, 5, 3090, 3090);
  EXPECT_EQ(view.ViewCenterX, 15450);
  EXPECT_GT(view.ViewCenterX, view.Size * UnitsPerPixel);
}

TEST(MiniMap, ClickTakesAnchorAndBullseyeAlong) {
  ViewState view = View();
  view.AnchorViewX = 1500;
  view.AnchorViewY = 3000;
  CentreByMiniMap(view, 5, 300, 600);
  EXPECT_EQ(view.AnchorX, 6000);
  EXPECT_EQ(view.AnchorY, 4500);
  const SurfacePoint bulls = SurfaceFromView(view, {view.BullsViewX, view.BullsViewY});
  EXPECT_EQ(view.BullsX, bulls.X);
  EXPECT_EQ(view.BullsY, bulls.Y);
}

TEST(MiniMap, TheBoxIsWhereTheClickWas) {
  ViewState view = View();
  CentreByMiniMap(view, 5, 990, 1005);
  const MiniMapBox box = BoxOnMiniMap(view, 5);
  EXPECT_EQ(box.Left + box.Width / 2, 990);
  EXPECT_EQ(box.Top + box.Height / 2, 1005);
}

}  // namespace
}  // namespace kestrel::map
