#include "core/cascade.h"

#include <gtest/gtest.h>

namespace kestrel::core {
namespace {

bool Overlap(WindowPlace a, WindowSize sizeA, WindowPlace b, WindowSize sizeB) {
  return a.X < b.X + sizeB.Width && b.X < a.X + sizeA.Width && a.Y < b.Y + sizeB.Height && b.Y < a.Y + sizeA.Height;
}

void ExpectNoneOverlaps(const std::vector<WindowPlace>& places, const std::vector<WindowSize>& sizes) {
  for (std::size_t a = 0; a < places.size(); ++a) {
    for (std::size_t b = a + 1; b < places.size(); ++b) {
      EXPECT_FALSE(Overlap(places[a], sizes[a], places[b], sizes[b])) << a << " over " << b;
    }
  }
}

TEST(Cascade, FurtherWindowsStandBelowThenBeside) {
  const std::vector<WindowSize> sizes = {{3000, 4000}, {4500, 3000}, {2000, 5000}, {1500, 300}};
  const std::vector<WindowPlace> places = Cascade({900, 240}, sizes, 9000);
  ASSERT_EQ(places.size(), 4u);
  EXPECT_EQ(places[0].X, 900);
  EXPECT_EQ(places[0].Y, 240);
  EXPECT_EQ(places[1].X, 900);
  EXPECT_EQ(places[1].Y, 240 + 4000 + CascadeGap);
  EXPECT_EQ(places[2].X, 900 + 4500 + CascadeGap) << "beside the widest of the column";
  EXPECT_EQ(places[2].Y, 240);
  EXPECT_EQ(places[3].X, places[2].X);
  EXPECT_EQ(places[3].Y, 240 + 5000 + CascadeGap);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, NoneReachesBelowTheBottom) {
  const std::vector<WindowSize> sizes(8, WindowSize{3000, 4200});
  const std::vector<WindowPlace> places = Cascade({-600, -300}, sizes, 9000);
  for (const WindowPlace& place : places) EXPECT_LE(place.Y + 4200, 9000);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, WindowThatIsTooHighHasAColumnOfItsOwn) {
  const std::vector<WindowSize> sizes = {{3000, 300}, {3000, 20000}, {3000, 300}};
  const std::vector<WindowPlace> places = Cascade({0, 0}, sizes, 9000);
  for (const WindowPlace& place : places) EXPECT_EQ(place.Y, 0);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, FromTheRightEachColumnIsAlignedAtItsRightSide) {
  const std::vector<WindowSize> sizes = {{3000, 4000}, {4500, 3000}, {2000, 5000}};
  const std::vector<WindowPlace> places = CascadeFromRight(19200, 240, sizes, 9000);
  EXPECT_EQ(places[0].X + 3000, 19200);
  EXPECT_EQ(places[1].X + 4500, 19200);
  EXPECT_EQ(places[2].X + 2000, 19200 - 4500 - CascadeGap);
  EXPECT_EQ(places[2].Y, 240);
  ExpectNoneOverlaps(places, sizes);
}

}  // namespace
}  // namespace kestrel::core
