#include "core/cascade.h"

#include <gtest/gtest.h>

namespace kestrel::core {
namespace {

bool Overlap(WindowPlace a, WindowSize sizeA, WindowPlace b, WindowSize sizeB) {
  return a.X < b.X + sizeB.Width && b.X < a.X + sizeA.Width && a.Y < b.Y + sizeB.Height && b.Y < a.Y + sizeA.Height;
}

constexpr WindowArea Desk{-6000, -6000, 60000, 40000};

void ExpectWithin(const std::vector<WindowPlace>& places, const std::vector<WindowSize>& sizes,
                  const WindowArea& area) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    EXPECT_GE(places[index].X, area.Left) << index;
    EXPECT_GE(places[index].Y, area.Top) << index;
    EXPECT_LE(places[index].X + sizes[index].Width, area.Right) << index;
    EXPECT_LE(places[index].Y + sizes[index].Height, area.Bottom) << index;
  }
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
  const std::vector<WindowPlace> places = Cascade({900, 240}, sizes, 9000, Desk);
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
  const std::vector<WindowPlace> places = Cascade({-600, -300}, sizes, 9000, Desk);
  EXPECT_EQ(places[0].X, -600);
  for (const WindowPlace& place : places) EXPECT_LE(place.Y + 4200, 9000);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, WindowThatIsTooHighHasAColumnOfItsOwn) {
  const std::vector<WindowSize> sizes = {{3000, 300}, {3000, 20000}, {3000, 300}};
  const std::vector<WindowPlace> places = Cascade({0, 0}, sizes, 9000, Desk);
  for (const WindowPlace& place : places) EXPECT_EQ(place.Y, 0);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, ColumnsThatLeaveTheScreenAreMovedIntoItTogether) {
  const std::vector<WindowSize> sizes(6, WindowSize{3000, 4200});
  const WindowArea screen{-300, 600, 10200, 12000};
  const std::vector<WindowPlace> places = Cascade({4500, 900}, sizes, 9700, screen);
  EXPECT_EQ(places[0].X, 10200 - (3 * 3000 + 2 * CascadeGap)) << "the last column ends at the edge";
  EXPECT_EQ(places[0].Y, 900);
  EXPECT_EQ(places[5].X + 3000, 10200);
  EXPECT_EQ(places[5].Y, places[1].Y);
  ExpectWithin(places, sizes, screen);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, BlockAboveOrLeftOfTheScreenIsMovedIntoItToo) {
  const std::vector<WindowSize> sizes(3, WindowSize{3000, 4200});
  const WindowArea screen{0, 0, 12000, 12000};
  const std::vector<WindowPlace> places = Cascade({-20000, -500}, sizes, 9000, screen);
  EXPECT_EQ(places[0].X, 0);
  EXPECT_EQ(places[0].Y, 0);
  ExpectWithin(places, sizes, screen);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, TooManyColumnsReachDownToTheFootOfTheScreen) {
  const std::vector<WindowSize> sizes(6, WindowSize{3000, 3000});
  const WindowArea screen{0, 0, 7000, 12000};
  const std::vector<WindowPlace> places = Cascade({600, 300}, sizes, 4000, screen);
  EXPECT_EQ(places[0].X, 600);
  EXPECT_EQ(places[2].X, 600);
  EXPECT_EQ(places[3].X, 600 + 3000 + CascadeGap);
  ExpectWithin(places, sizes, screen);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, AllEightRolledDownFindRoomOnASmallScreen) {
  // Pixels: the widest and the highest do not leave room for columns.
  std::vector<WindowSize> sizes = {{274, 566}, {514, 510}, {146, 80},  {146, 104},
                                   {202, 70},  {231, 223}, {207, 227}, {202, 70}};
  for (WindowSize& size : sizes) size = {size.Width * 15, size.Height * 15};
  const WindowArea screen{0, 0, 800 * 15, 800 * 15};
  const std::vector<WindowPlace> places = Cascade({900, 600}, sizes, 780 * 15, screen);
  ExpectWithin(places, sizes, screen);
  ExpectNoneOverlaps(places, sizes);
}

TEST(Cascade, WindowsWithoutRoomStillShowTheirUpperLeftCorner) {
  const std::vector<WindowSize> sizes = {{5000, 5000}, {5000, 5000}, {9000, 300}, {5000, 5000}};
  const WindowArea screen{300, 600, 8300, 6600};
  const std::vector<WindowPlace> places = Cascade({900, 600}, sizes, 6000, screen);
  for (std::size_t index = 0; index < places.size(); ++index) {
    EXPECT_GE(places[index].X, screen.Left) << index;
    EXPECT_GE(places[index].Y, screen.Top) << index;
    EXPECT_LE(places[index].Y + sizes[index].Height, screen.Bottom) << index;
    for (std::size_t other = 0; other < index; ++other) {
      EXPECT_FALSE(places[index].X == places[other].X && places[index].Y == places[other].Y) << index;
    }
  }
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
