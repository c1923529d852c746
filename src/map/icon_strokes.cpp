#include "map/icon_strokes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <span>

#include "base/numbers.h"
#include "map/units.h"

namespace kestrel::map {
namespace {

/// What the numbers of a stroke are: pixels from the icon's centre, Y down; angles anticlockwise from east.
enum class Kind : std::uint8_t {
  Line,     ///< from x, y to x, y
  Box,      ///< two opposite corners
  Circle,   ///< centre and radius
  Disc,     ///< the same, filled
  Arc,      ///< centre, radius, from and to degrees
  Polygon,  ///< corners
  Field     ///< the same, filled
};

struct Stroke {
  constexpr Stroke(std::int32_t icon, Kind kind, std::initializer_list<std::int16_t> numbers)
      : Icon(icon), What(kind), Count(numbers.size()) {
    std::copy(numbers.begin(), numbers.end(), Numbers.begin());
  }

  std::int32_t Icon;
  Kind What;
  std::size_t Count;
  std::array<std::int16_t, 26> Numbers{};
};

/// By the number of the icon. Those of 22 stay open on the left, and 23 and 30 to 35 have no shape: they stand so.
constexpr Stroke Strokes[] = {
    // clang-format off
    {1, Kind::Disc, {0, 0, 3}},
    {2, Kind::Line, {-4, 0, 4, 0}}, {2, Kind::Line, {0, -4, 0, 4}},
    {3, Kind::Line, {-6, 6, 6, 6}}, {3, Kind::Line, {-6, 3, 6, 3}}, {3, Kind::Line, {-6, 6, -6, 3}},
    {3, Kind::Line, {6, 6, 6, 3}}, {3, Kind::Line, {-2, 3, -2, -3}}, {3, Kind::Line, {2, 3, 2, -3}},
    {3, Kind::Line, {-2, -3, 0, -9}}, {3, Kind::Line, {2, -3, 0, -9}},
    {4, Kind::Line, {-4, -9, -4, 9}}, {4, Kind::Line, {4, -9, 4, 9}}, {4, Kind::Line, {-4, -9, 4, -9}},
    {4, Kind::Line, {-4, 9, 4, 9}}, {4, Kind::Line, {0, -7, 0, -2}},
    {5, Kind::Line, {-9, -1, 9, -1}}, {5, Kind::Line, {-9, 1, 9, 1}}, {5, Kind::Circle, {0, 0, 6}},
    {6, Kind::Line, {-9, -5, 9, -5}}, {6, Kind::Line, {-9, 5, 9, 5}}, {6, Kind::Line, {-9, -5, -9, 5}},
    {6, Kind::Line, {9, -5, 9, 5}}, {6, Kind::Line, {-9, -5, 9, 5}}, {6, Kind::Line, {-9, 5, 9, -5}},
    {7, Kind::Line, {-6, -3, 6, -3}}, {7, Kind::Line, {-6, 3, 6, 3}}, {7, Kind::Line, {-6, -3, -11, -6}},
    {7, Kind::Line, {6, -3, 11, -6}}, {7, Kind::Line, {-6, 3, -11, 6}}, {7, Kind::Line, {6, 3, 11, 6}},
    {8, Kind::Box, {-12, -10, 0, 10}}, {8, Kind::Box, {0, -10, 12, 10}}, {8, Kind::Box, {-10, -7, -7, -4}},
    {8, Kind::Box, {-5, -7, -2, -4}}, {8, Kind::Box, {-10, -1, -7, 2}}, {8, Kind::Box, {-5, -1, -2, 2}},
    {8, Kind::Box, {10, -7, 7, -4}}, {8, Kind::Box, {5, -7, 2, -4}}, {8, Kind::Box, {10, -1, 7, 2}},
    {8, Kind::Box, {5, -1, 2, 2}},
    {9, Kind::Box, {-9, -5, 9, 5}},
    {10, Kind::Line, {-10, 10, 10, 10}}, {10, Kind::Line, {-10, 10, -10, -10}},
    {10, Kind::Line, {-10, -10, -6, -10}}, {10, Kind::Line, {-6, -10, -6, 4}}, {10, Kind::Line, {-6, 4, -2, 0}},
    {10, Kind::Line, {-2, 0, 2, 4}}, {10, Kind::Line, {2, 4, 6, 0}}, {10, Kind::Line, {6, 0, 10, 4}},
    {10, Kind::Line, {10, 4, 10, 10}},
    {11, Kind::Line, {-9, 0, -2, -7}}, {11, Kind::Line, {-2, -7, -11, -5}}, {11, Kind::Line, {-11, -5, -2, -11}},
    {11, Kind::Line, {-2, -11, 2, -11}}, {11, Kind::Line, {2, -11, 9, 0}}, {11, Kind::Line, {-9, 0, 9, 0}},
    {12, Kind::Polygon, {0, -10, 10, 6, -10, 6}}, {12, Kind::Arc, {0, 0, 5, -60, 30}},
    {12, Kind::Arc, {0, 0, 5, 150, 240}},
    {13, Kind::Line, {0, 10, 10, 0}}, {13, Kind::Line, {10, 0, 1, 5}}, {13, Kind::Line, {1, 5, 1, -7}},
    {13, Kind::Line, {-1, -7, -1, 5}}, {13, Kind::Line, {-1, 5, -10, 0}}, {13, Kind::Line, {-10, 0, 0, 10}},
    {13, Kind::Arc, {0, 0, 5, 20, 160}},
    {14, Kind::Polygon, {0, 6, 4, 10, -4, 10}}, {14, Kind::Line, {0, -2, 8, -7}}, {14, Kind::Line, {8, -7, 2, -7}},
    {14, Kind::Line, {2, -7, 10, -12}}, {14, Kind::Arc, {0, 0, 8, 135, 315}},
    {15, Kind::Line, {-5, 10, -2, -7}}, {15, Kind::Line, {5, 10, 2, -7}}, {15, Kind::Line, {-5, 10, 5, 10}},
    {15, Kind::Line, {-2, -2, 2, -2}}, {15, Kind::Line, {-3, 2, 3, 2}}, {15, Kind::Arc, {0, 0, 3, 0, 180}},
    {16, Kind::Box, {-8, -6, 0, 6}}, {16, Kind::Box, {6, -4, 0, 6}}, {16, Kind::Line, {-8, -5, 0, -5}},
    {16, Kind::Line, {-8, 0, 0, 0}}, {16, Kind::Line, {-8, 5, 0, 5}}, {16, Kind::Line, {0, -3, 6, -3}},
    {16, Kind::Line, {0, 1, 6, 1}},
    {17, Kind::Box, {-12, -10, 0, 10}}, {17, Kind::Box, {0, -2, 8, 10}}, {17, Kind::Box, {-10, -7, -7, -4}},
    {17, Kind::Box, {-5, -7, -2, -4}}, {17, Kind::Box, {-10, -1, -7, 2}}, {17, Kind::Box, {-5, -1, -2, 2}},
    {17, Kind::Box, {2, 0, 5, 3}},
    {18, Kind::Box, {-8, 0, 0, 8}}, {18, Kind::Box, {8, 0, 0, 8}}, {18, Kind::Line, {-4, -8, 0, 0}},
    {18, Kind::Line, {-4, -8, -8, 0}}, {18, Kind::Line, {4, -4, 0, 0}},
    {19, Kind::Line, {-4, -2, 4, 2}}, {19, Kind::Line, {-4, -2, 4, -8}}, {19, Kind::Line, {4, 2, -4, 8}},

    {20, Kind::Polygon, {-3, -5, 3, -5, 7, -7, 10, -3, 5, 0, 3, 5, 3, 10, -3, 10, -3, 5, -5, 0, -10, -3, -7, -7, -3, -5}},

    {21, Kind::Polygon, {-3, -5, 3, -5, 7, -7, 10, -3, 5, 0, 3, 5, 3, 10, -3, 10, -3, 5, -5, 0, -10, -3, -7, -7, -3, -5}},
    {21, Kind::Field, {3, -5, 7, -7, 10, -3, 5, 0}}, {21, Kind::Field, {-3, -5, -7, -7, -10, -3, -5, 0}},
    {22, Kind::Line, {-10, -3, -3, -10}}, {22, Kind::Line, {-3, -10, 3, -10}}, {22, Kind::Line, {3, -10, 10, -3}},
    {22, Kind::Line, {10, -3, 10, 3}}, {22, Kind::Line, {10, 3, 3, 10}}, {22, Kind::Line, {3, 10, -3, 10}},
    {22, Kind::Line, {-3, 10, -10, 3}},
    {24, Kind::Line, {-10, -3, -3, -10}}, {24, Kind::Line, {-3, -10, 3, -10}}, {24, Kind::Line, {3, -10, 10, -3}},
    {24, Kind::Line, {10, -3, 10, 3}}, {24, Kind::Line, {10, 3, 3, 10}}, {24, Kind::Line, {3, 10, -3, 10}},
    {24, Kind::Line, {-3, 10, -10, 3}}, {24, Kind::Line, {-10, 3, -10, -3}},
    {25, Kind::Polygon, {-10, -10, 10, -10, 0, 10}},
    {26, Kind::Polygon, {0, -10, 10, 10, -10, 10}}, {26, Kind::Box, {-10, -10, 10, 10}},
    {27, Kind::Polygon, {0, 0, -10, -10, -10, 10}}, {27, Kind::Polygon, {0, 0, 10, -10, 10, 10}},
    {28, Kind::Field, {0, 0, -4, -10, 4, -10}}, {28, Kind::Field, {0, 0, 10, -4, 10, 4}},
    {28, Kind::Field, {0, 0, 4, 10, -4, 10}}, {28, Kind::Field, {0, 0, -10, 4, -10, -4}},
    {29, Kind::Field, {-2, 0, -10, -10, -10, 10}}, {29, Kind::Field, {2, 0, 10, -10, 10, 10}},
    // clang-format on
};

constexpr std::array<std::string_view, LastIcon> Captions = {"Dot",
                                                             "Cross",
                                                             "SAM",
                                                             "Airfield",
                                                             "Airstrip",
                                                             "Army Base",
                                                             "Bridge",
                                                             "City",
                                                             "HQ",
                                                             "Factory",
                                                             "Chemical Plant",
                                                             "Nuclear Poerplant",
                                                             "Navy Base",
                                                             "Radar Site",
                                                             "Radio Tower",
                                                             "Refinery",
                                                             "Town",
                                                             "Vilage",
                                                             "Powerplant",
                                                             "TACAN",
                                                             "VOR/TAC",
                                                             "VOR",
                                                             "DME",
                                                             "VOR/DME",
                                                             "GP/EL",
                                                             "IAF",
                                                             "IF",
                                                             "FAF/FAP",
                                                             "TACAN Gate",
                                                             "VFR Significant Point",
                                                             "Visual Holding Gate",
                                                             "Refinery",
                                                             "Radio Tower",
                                                             "Powerplant",
                                                             "Powerplant"};

void Draw(Surface& surface, const Stroke& stroke, SurfacePoint centre, Pen pen) {
  const auto x = [&](std::size_t at) { return centre.X + stroke.Numbers[at] * UnitsPerPixelX; };
  const auto y = [&](std::size_t at) { return centre.Y + stroke.Numbers[at] * UnitsPerPixelY; };
  const auto& numbers = stroke.Numbers;
  pen.Filled = stroke.What == Kind::Disc || stroke.What == Kind::Field;
  switch (stroke.What) {
    case Kind::Line:
      return surface.Line(x(0), y(1), x(2), y(3), pen);
    case Kind::Box:
      return surface.Box(x(0), y(1), x(2), y(3), pen);
    case Kind::Circle:
    case Kind::Disc:
      return surface.Circle(x(0), y(1), numbers[2] * UnitsPerPixel, pen);
    case Kind::Arc:
      return surface.Arc(x(0), y(1), numbers[2] * UnitsPerPixel, numbers[3], numbers[4], pen);
    case Kind::Polygon:
    case Kind::Field: {
      std::array<SurfacePoint, std::tuple_size_v<decltype(stroke.Numbers)> / 2> corners;
      for (std::size_t at = 0; at < stroke.Count; at += 2) corners[at / 2] = {x(at), y(at + 1)};
      return surface.Polygon(std::span(corners).first(stroke.Count / 2), pen);
    }
  }
}

/// So that all strokes of an icon keep their places to each other.
double OnPixel(double units) { return base::RoundHalfEven(units / UnitsPerPixel) * UnitsPerPixel; }

/// Where the strokes of an icon begin, or would.
const Stroke* FirstStroke(std::int32_t number) {
  return std::lower_bound(std::begin(Strokes), std::end(Strokes), number,
                          [](const Stroke& stroke, std::int32_t icon) { return stroke.Icon < icon; });
}

static_assert(std::is_sorted(std::begin(Strokes), std::end(Strokes),
                             [](const Stroke& a, const Stroke& b) { return a.Icon < b.Icon; }));

}  // namespace

std::string_view IconCaption(std::int32_t number) {
  return number >= 1 && number <= LastIcon ? Captions[static_cast<std::size_t>(number - 1)] : std::string_view();
}

bool HasShape(std::int32_t number) {
  const Stroke* first = FirstStroke(number);
  return first != std::end(Strokes) && first->Icon == number;
}

void DrawIcon(Surface& surface, std::int32_t number, double x, double y, base::Colour color) {
  const SurfacePoint centre{OnPixel(x), OnPixel(y)};
  for (auto stroke = FirstStroke(number); stroke != std::end(Strokes) && stroke->Icon == number; ++stroke) {
    Draw(surface, *stroke, centre, {.Color = color, .Style = PenStyle::Solid});
  }
}

}  // namespace kestrel::map
