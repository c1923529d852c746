#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "shell/map/painted.h"

namespace kestrel::shell {
namespace {

constexpr double DotRatios[] = {1, 1.5, 2};

TEST(DotsOfTrails, LookLikeSingleDotsAlsoAtTheEdges) {
  for (const double ratio : DotRatios) {
    std::vector<map::SurfacePoint> places;
    for (int place = -45; place <= 45 * 15; place += 53) {
      for (const double edge : {-30.0, -15.0, 0.0, 8.0, 300.0, 590.0, 600.0, 615.0}) {
        places.push_back({static_cast<double>(place), edge});
        places.push_back({edge, static_cast<double>(place)});
      }
    }
    QtSurface single = Made({40, 40}, ratio);
    QtSurface together = Made({40, 40}, ratio);
    for (const map::SurfacePoint& place : places) single.Dot(place.X, place.Y, 0x2030FF);
    together.Dots(places, 0x2030FF, 1);
    EXPECT_TRUE(SamePixels(single.Image(), together.Image())) << ratio;
    EXPECT_EQ((Painted(together.Image()) - together.TakeDirty()), QRegion()) << ratio;
  }
}

TEST(DotsOfTrails, OfTheHigherRankLieAboveUntilAnotherPictureBegins) {
  QtSurface surface = Made({40, 40}, 1);
  const map::SurfacePoint at[] = {{20 * 15, 10 * 15}};
  const auto shown = [&] { return surface.Image().pixel(20, 10); };
  surface.Dots(at, 0x0000FF, 2);
  surface.Dots(at, 0x00FF00, 1);
  EXPECT_EQ(shown(), qRgb(255, 0, 0));
  surface.Dots(at, 0xFF0000, 2);
  EXPECT_EQ(shown(), qRgb(0, 0, 255));
  surface.Dots(at, 0x00FFFF, 3);
  EXPECT_EQ(shown(), qRgb(255, 255, 0));
  surface.CopyPicture({}, {});
  surface.Dots(at, 0x00FF00, 1);
  EXPECT_EQ(shown(), qRgb(0, 255, 0));
}

TEST(DotsOfTrails, ThatAreNoPlaceOrFarAwayAreLeftOut) {
  QtSurface surface = Made({40, 40}, 1);
  const double none = std::nan("");
  const map::SurfacePoint at[] = {{none, 0}, {0, none}, {1e300, 20}, {20, -1e300}, {1e9, 1e9}, {-31, 20}};
  surface.Dots(at, 255, 1);
  EXPECT_TRUE(Painted(surface.Image()).isEmpty());
  QtSurface empty;
  empty.Dots(at, 255, 1);
}

}  // namespace
}  // namespace kestrel::shell
