#include "core/window_places.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace kestrel::core {
namespace {

// A screen of 1000 by 800 pixels, and one of 500 by 500 to the right of it, 100 pixels lower.
constexpr std::array<WindowArea, 2> Screens = {
    {{0, 0, 1000 * 15, 800 * 15}, {1000 * 15, 100 * 15, 1500 * 15, 600 * 15}}};
constexpr WindowSize Size{200 * 15, 150 * 15};

WindowPlace Pixels(std::int32_t x, std::int32_t y) { return {x * 15, y * 15}; }

void ExpectAt(WindowPlace place, std::int32_t x, std::int32_t y) {
  EXPECT_EQ(place.X, x * 15);
  EXPECT_EQ(place.Y, y * 15);
}

TEST(WindowPlaces, APlaceThatAScreenShowsStaysToTheUnit) {
  for (const WindowPlace place : {WindowPlace{1501, 2998}, Pixels(-152, 0), Pixels(952, 780), Pixels(1452, 580)}) {
    EXPECT_EQ(OnAScreen(place, Size, Screens).X, place.X);
    EXPECT_EQ(OnAScreen(place, Size, Screens).Y, place.Y);
  }
}

TEST(WindowPlaces, APlaceThatNoScreenShowsBecomesTheNearestOfTheNearest) {
  ExpectAt(OnAScreen(Pixels(-153, 10), Size, Screens), 0, 10);       // 47 pixels of its caption are left
  ExpectAt(OnAScreen(Pixels(100, -1), Size, Screens), 100, 0);       // not all of its caption's height is
  ExpectAt(OnAScreen(Pixels(100, 781), Size, Screens), 100, 650);    // 800 - 150
  ExpectAt(OnAScreen(Pixels(3000, 300), Size, Screens), 1300, 300);  // 1500 - 200, on the right one
  ExpectAt(OnAScreen(Pixels(3000, -900), Size, Screens), 1300, 100);
  ExpectAt(OnAScreen(Pixels(300, 5000), Size, Screens), 300, 650);
  // Above the right screen, which is 100 pixels lower: its caption's middle, at (1200, 50), is 50 from it.
  ExpectAt(OnAScreen(Pixels(1100, 40), Size, Screens), 1100, 100);
}

TEST(WindowPlaces, AWindowThatIsTooLargeShowsItsUpperLeftCorner) {
  ExpectAt(OnAScreen(Pixels(5000, 5000), {2000 * 15, 2000 * 15}, Screens), 1000, 100);
}

TEST(WindowPlaces, ASmallWindowNeedsAllOfItsWidth) {
  ExpectAt(OnAScreen(Pixels(980, 0), {20 * 15, 20 * 15}, Screens), 980, 0);
  ExpectAt(OnAScreen(Pixels(981, 0), {20 * 15, 20 * 15}, Screens), 980, 0);
}

TEST(WindowPlaces, PlacesAtTheEndOfAllNumbersComeBackToo) {
  constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max(),
                         Least = std::numeric_limits<std::int32_t>::min();
  ExpectAt(OnAScreen({Most, Most}, Size, Screens), 1300, 450);
  ExpectAt(OnAScreen({Least, Least}, Size, Screens), 0, 0);
}

TEST(WindowPlaces, WithoutAScreenAPlaceStays) { ExpectAt(OnAScreen(Pixels(-5000, 7), Size, {}), -5000, 7); }

// A frame from (100, 100) to (900, 700).
constexpr WindowArea Frame{100 * 15, 100 * 15, 900 * 15, 700 * 15};

TEST(WindowPlaces, ASideSnapsToTheFrameWithinEightPixels) {
  ExpectAt(Snapped(Pixels(108, 300), Size, Frame, {}), 100, 300);
  ExpectAt(Snapped(Pixels(92, 300), Size, Frame, {}), 100, 300);
  ExpectAt(Snapped(Pixels(109, 300), Size, Frame, {}), 109, 300);
  ExpectAt(Snapped(Pixels(705, 300), Size, Frame, {}), 700, 300);  // 900 - 200
  ExpectAt(Snapped(Pixels(300, 545), Size, Frame, {}), 300, 550);  // 700 - 150
  ExpectAt(Snapped(Pixels(895, 300), Size, Frame, {}), 900, 300);  // beside it, outside
  ExpectAt(Snapped(Pixels(105, 93), Size, Frame, {}), 100, 100);   // each direction for itself
}

TEST(WindowPlaces, ASideSnapsToAnotherWindowBesideIt) {
  const std::array<WindowArea, 1> others = {{{300 * 15, 300 * 15, 500 * 15, 400 * 15}}};
  ExpectAt(Snapped(Pixels(505, 330), Size, Frame, others), 500, 330);     // at its right
  ExpectAt(Snapped(Pixels(95 + 7, 330), Size, Frame, others), 100, 330);  // both ways are as good: 2 to the frame
  ExpectAt(Snapped(Pixels(508, 292), Size, Frame, others), 500, 300);     // at its right, its caption beside its own
  ExpectAt(Snapped(Pixels(330, 403), Size, Frame, others), 330, 400);     // below it
  ExpectAt(Snapped(Pixels(304, 404), Size, Frame, others), 300, 400);     // below it, in line with its left side
  ExpectAt(Snapped(Pixels(304, 440), Size, Frame, others), 304, 440);     // not beside it: 40 pixels below
}

TEST(WindowPlaces, TheNearestEdgeCounts) {
  const std::array<WindowArea, 2> others = {
      {{300 * 15, 300 * 15, 500 * 15, 400 * 15}, {300 * 15, 300 * 15, 507 * 15, 400 * 15}}};
  ExpectAt(Snapped(Pixels(505, 330), Size, Frame, others), 507, 330);
  ExpectAt(Snapped(Pixels(502, 330), Size, Frame, others), 500, 330);
}

}  // namespace
}  // namespace kestrel::core
