#include "map/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace kestrel::map {
namespace {

using base::Changed;
using base::Has;

/// A theater of 1024 map units on a surface of 800 by 600 pixels.
ViewState View() {
  ViewState view;
  ResetView(view, 1024, 2048, 500, 300);
  ResizeSurface(view, 12000, 9000);
  return view;
}

TEST(MapGeometry, OneMapUnitIsOnePixelAtResolution1) {
  const ViewState view = View();
  const SurfacePoint west = SurfaceFromMap(view, {512, 512});
  const SurfacePoint east = SurfaceFromMap(view, {513, 511});
  EXPECT_EQ(west.X, 6000);
  EXPECT_EQ(west.Y, 4500);
  EXPECT_EQ(east.X - west.X, 15);
  EXPECT_EQ(east.Y - west.Y, 15);
}

TEST(MapGeometry, ViewUnitsBeginAtTheUpperLeftCorner) {
  const ViewState view = View();
  const ViewPoint corner = ViewFromMap(view, {0, 1024});
  EXPECT_EQ(corner.X, 0);
  EXPECT_EQ(corner.Y, 0);
  const ViewPoint place = ViewFromMap(view, {10, 1000});
  EXPECT_EQ(place.X, 150);
  EXPECT_EQ(place.Y, 360);
}

TEST(MapGeometry, DownwardPositionsAreMirroredUpwardOnes) {
  const ViewState view = View();
  const SurfacePoint down = SurfaceFromDown(view, {100, 24});
  const SurfacePoint up = SurfaceFromMap(view, {100, 1000});
  EXPECT_EQ(down.X, up.X);
  EXPECT_EQ(down.Y, up.Y);
}

TEST(MapGeometry, ConversionsComeBackForRandomViews) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  std::uniform_real_distribution<double> part(0, 1);
  for (int round = 0; round < 2000; ++round) {
    ViewState view;
    ResetView(view, 64 + part(numbers) * 4096, 2048, part(numbers) * 1000, part(numbers) * 1000);
    ResizeSurface(view, 15 * (1 + part(numbers) * 3000), 15 * (1 + part(numbers) * 2000));
    view.ViewCenterX = part(numbers) * view.Size * 15;
    view.ViewCenterY = part(numbers) * view.Size * 15;
    view.Resolution = std::exp2(part(numbers) * 13 - 3);
    const double x = part(numbers) * view.Size;
    const double y = part(numbers) * view.Size;
    const SurfacePoint surface = SurfaceFromMap(view, {x, y});
    const MapPoint back = MapFromSurface(view, surface);
    EXPECT_NEAR(back.X, x, 1e-8);
    EXPECT_NEAR(back.Y, y, 1e-8);
    const ViewPoint seen = ViewFromSurface(view, surface);
    const SurfacePoint again = SurfaceFromView(view, seen);
    EXPECT_NEAR(again.X, surface.X, 1e-5);
    EXPECT_NEAR(again.Y, surface.Y, 1e-5);
  }
}

TEST(MapGeometry, PointerIsTurnedIntoMapUnitsInsideAndOutsideTheTheater) {
  ViewState view = View();
  MovePointer(view, 6000, 4500);
  EXPECT_EQ(view.CursorMapX, 512);
  EXPECT_EQ(view.CursorMapY, 512);
  MovePointer(view, 6000 - 600 * 15, 4500 - 600 * 15);
  EXPECT_EQ(view.CursorMapX, -88);
  EXPECT_EQ(view.CursorMapY, 1112);
}

TEST(MapGeometry, BackgroundIsThePartOfThePictureThatFillsTheSurface) {
  ViewState view = View();
  view.Resolution = 2;
  const SourceRect from = BackgroundRect(view);
  EXPECT_EQ(from.Width, 800);  // 800 pixels of surface, zoomed twice, two picture pixels to the map unit
  EXPECT_EQ(from.Height, 600);
  EXPECT_EQ(from.Left, 624);
  EXPECT_EQ(from.Top, 724);
}

TEST(MapGeometry, BackgroundReachesBeyondThePictureAtTheEdge) {
  ViewState view = View();
  view.ViewCenterX = 0;
  view.ViewCenterY = 0;
  const SourceRect from = BackgroundRect(view);
  EXPECT_EQ(from.Left, -800);
  EXPECT_EQ(from.Top, -600);
}

TEST(BearingRange, GivesWholeDegreesWithNorthAs360) {
  struct Case {
    double dx, dy;
    int bearing;
  };
  constexpr Case cases[] = {{0, -100, 360},   {100, 0, 90},     {0, 100, 180},     {-100, 0, 270},     {100, -100, 45},
                            {100, 100, 135},  {-100, 100, 225}, {-100, -100, 315}, {0, 0, 360},        {1, -1000, 360},
                            {-1, -1000, 360}, {-1, 1000, 180},  {1, 1000, 180},    {1e300, 1e-300, 90}};
  for (const Case& each : cases) {
    EXPECT_EQ(BearingRange(50, 70, 50 + each.dx, 70 + each.dy).Bearing, each.bearing) << each.dx << ' ' << each.dy;
  }
}

TEST(BearingRange, RangeIsNauticalMilesAtResolution1) {
  EXPECT_NEAR(BearingRange(0, 0, 15 * 1.852 * 3, 15 * 1.852 * 4).Range, 5, 1e-12);
  EXPECT_EQ(BearingRange(7, 7, 7, 7).Range, 0);
}

TEST(BearingRange, DividesByItsOwnPiToTheLastDigit) {
  // 90 degrees less the angle whose tangent is dy, worked out with 40 digits: with 3.14159265358979 the first bearing
  // is 0.5 - 5.0e-14 and so 0, north; the second 0.5 + 1.4e-13 and so 1. One digit less (-1.4e-13) or more (+2.3e-13),
  // or the whole of pi (+4.2e-14), takes one of them to the other side of the half.
  EXPECT_EQ(BearingRange(0, 0, 1, -114.58865012929992).Bearing, 360);
  EXPECT_EQ(BearingRange(0, 0, 1, -114.58865012925638).Bearing, 1);
}

TEST(BearingRange, SurvivesNumbersThatAreNone) {
  EXPECT_EQ(BearingRange(0, 0, std::nan(""), std::nan("")).Bearing, 360);
  const double far = std::numeric_limits<double>::infinity();
  const int bearing = BearingRange(0, 0, far, far).Bearing;
  EXPECT_GE(bearing, 1);
  EXPECT_LE(bearing, 360);
}

TEST(ZoomText, ShowsOneToSixDecimals) {
  ViewState view;
  struct Case {
    double resolution;
    const char* text;
  };
  constexpr Case cases[] = {
      {1, "Zoom: x1.0"}, {0.125, "Zoom: x0.125"}, {1024, "Zoom: x1024.0"}, {5.656854249, "Zoom: x5.656854"}};
  for (const Case& each : cases) {
    view.Resolution = each.resolution;
    EXPECT_EQ(ZoomText(view), each.text);
  }
}

TEST(SafeFormat, UsesAPoint) { EXPECT_EQ(SafeFormat(1234.5, "0.00"), "1234.50"); }

TEST(CenteredPointer, AddsTheFixedOffsetsOfFrameAndMenu) {
  EXPECT_EQ(CenteredPointerX(150, 12000), (150 + 6000 + 60) / 15.0);
  EXPECT_EQ(CenteredPointerY(300, 9000), (300 + 4500 + 645) / 15.0);
}

}  // namespace
}  // namespace kestrel::map
