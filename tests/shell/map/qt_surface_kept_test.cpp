#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "shell/map/painted.h"
#include "shell/map/qt_surface.h"

// What of a capture is kept in order to be put back, and what a picture leaves of what was there before.
namespace kestrel::shell {
namespace {

using map::Pen;
using map::PenStyle;

constexpr double Ratios[] = {1, 1.5, 2};
constexpr QSize Logical(300, 200);

struct Stroke {
  std::string Name;
  std::function<void(QtSurface&)> Draw;
};

/// Each kind of stroke once within the surface and once across its edges; they overlap.
std::vector<Stroke> Strokes() {
  std::vector<Stroke> strokes;
  for (const double shift : {0.0, -1500.0, 3000.0}) {
    const auto add = [&](std::string name, std::function<void(QtSurface&)> draw) {
      strokes.push_back({name + " shifted by " + std::to_string(shift), std::move(draw)});
    };
    const double x = 1500 + shift;
    const double y = 1200 + shift / 2;
    add("dot", [=](QtSurface& on) { on.Dot(x, y, 0xFFFFFF); });
    add("text", [=](QtSurface& on) { on.Print("Viper 11 gjq", x, y, {.Name = "MS Sans Serif"}, 0x00FFFF); });
    for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid, PenStyle::Dotted}) {
      for (const int width : {1, 3}) {
        for (const bool filled : {false, true}) {
          const Pen pen{.Color = 0x40FF80, .DrawWidth = width, .Style = style, .Filled = filled};
          const std::string kind = " style " + std::to_string(static_cast<int>(style)) + " width " +
                                   std::to_string(width) + (filled ? " filled" : "");
          add("flat line" + kind, [=](QtSurface& on) { on.Line(x - 700, y + 3, x + 900, y + 210, pen); });
          add("level line" + kind, [=](QtSurface& on) { on.Line(x - 700, y + 7, x + 900, y + 7, pen); });
          add("steep line" + kind, [=](QtSurface& on) { on.Line(x + 300, y - 900, x - 60, y + 900, pen); });
          add("small circle" + kind, [=](QtSurface& on) { on.Circle(x, y, 60, pen); });
          add("large circle" + kind, [=](QtSurface& on) { on.Circle(x, y, 1100, pen); });
          add("small arc" + kind, [=](QtSurface& on) { on.Arc(x, y, 60, 205, 335, pen); });
          add("large arc" + kind, [=](QtSurface& on) { on.Arc(x, y, 1100, 20, 130, pen); });
          add("box" + kind, [=](QtSurface& on) { on.Box(x - 400, y - 300, x + 500, y + 200, pen); });
          const std::vector<map::SurfacePoint> corners = {{x, y - 600}, {x + 800, y + 500}, {x - 500, y + 100}, {x, y}};
          add("polygon" + kind, [=](QtSurface& on) { on.Polygon(corners, pen); });
          add("segments" + kind, [=](QtSurface& on) { on.Segments(corners, pen); });
        }
      }
    }
  }
  return strokes;
}

/// A picture whose pixels are any.
base::Picture Speckles() {
  constexpr int side = 400;
  static const std::vector<std::uint32_t> pixels = [] {
    std::mt19937 numbers(20260101);
    std::vector<std::uint32_t> made(side * side);
    for (std::uint32_t& pixel : made) pixel = 0xFF000000 | (numbers() & 0xFFFFFF);
    return made;
  }();
  return {side, side, side * 4, reinterpret_cast<const std::uint8_t*>(pixels.data()), nullptr};
}

/// A surface that shows speckles, captured.
QtSurface Speckled(double ratio) {
  QtSurface surface;
  surface.Resize((QSizeF(Logical) * ratio).toSize(), ratio);
  surface.CopyPicture(Speckles(), {-3, 5, 300, 200});
  surface.Capture();
  return surface;
}

TEST(QtSurfaceKept, EachStrokeAfterACaptureIsTakenBackExactly) {
  for (const double ratio : Ratios) {
    QtSurface surface = Speckled(ratio);
    for (const Stroke& stroke : Strokes()) {
      surface.CopyPicture(Speckles(), {-3, 5, 300, 200});
      surface.Capture();
      const QImage captured = surface.Image().copy();
      for (int turn = 0; turn < 2; ++turn) {
        stroke.Draw(surface);
        surface.Restore();
        ASSERT_TRUE(SamePixels(surface.Image(), captured)) << stroke.Name << " ratio " << ratio;
      }
    }
  }
}

TEST(QtSurfaceKept, StrokesOverStrokesAreTakenBackExactly) {
  for (const double ratio : Ratios) {
    QtSurface surface = Speckled(ratio);
    const QImage captured = surface.Image().copy();
    for (int turn = 0; turn < 2; ++turn) {
      for (const Stroke& stroke : Strokes()) stroke.Draw(surface);
      surface.TakeDirty();
      for (const Stroke& stroke : Strokes()) stroke.Draw(surface);
      ASSERT_FALSE(SamePixels(surface.Image(), captured));
      surface.Restore();
      ASSERT_TRUE(SamePixels(surface.Image(), captured)) << ratio;
    }
  }
}

TEST(QtSurfaceKept, AfterAResizeItsPictureIsPutBack) {
  for (const Stroke& stroke : Strokes()) {
    QtSurface surface = Speckled(1);
    stroke.Draw(surface);
    surface.Resize({250, 230}, 1);
    const QImage resized = surface.Image().copy();
    stroke.Draw(surface);
    surface.Restore();
    ASSERT_TRUE(SamePixels(surface.Image(), resized)) << stroke.Name;
  }
}

TEST(QtSurfaceKept, ACaptureStraightAfterARestoreAddsWhatWasDrawnBetween) {
  std::vector<Stroke> few;  // every seventh, and so some of each kind
  for (std::size_t index = 0; index < Strokes().size(); index += 7) few.push_back(Strokes()[index]);
  for (const Stroke& between : Strokes()) {
    QtSurface surface = Speckled(1);
    for (const Stroke& stroke : few) stroke.Draw(surface);
    surface.Restore();
    between.Draw(surface);
    const QImage base = surface.Image().copy();
    surface.Capture();
    surface.Line(0, 0, 4500, 3000, {.Color = 255, .DrawWidth = 9});
    between.Draw(surface);
    surface.Restore();
    ASSERT_TRUE(SamePixels(surface.Image(), base)) << between.Name;
    surface.Capture();
    surface.Restore();
    ASSERT_TRUE(SamePixels(surface.Image(), base)) << between.Name;
  }
}

TEST(QtSurfaceKept, StrokesBeforeTheCaptureAreCapturedWhetherToldOrNot) {
  for (const bool told : {false, true}) {
    QtSurface surface = Speckled(1);
    for (const Stroke& stroke : Strokes()) stroke.Draw(surface);
    surface.CopyPicture(Speckles(), {0, 0, 64, 64});
    surface.Line(0, 0, 4500, 3000, {.Color = 255, .DrawWidth = 9});
    if (told) surface.TakeDirty();
    surface.Line(4500, 0, 0, 3000, {.Color = 255, .DrawWidth = 9});
    const QImage drawn = surface.Image().copy();
    surface.Capture();
    for (const Stroke& stroke : Strokes()) stroke.Draw(surface);
    surface.Restore();
    EXPECT_TRUE(SamePixels(surface.Image(), drawn)) << told;
  }
}

TEST(QtSurfaceKept, ARestoreBeforeTheCaptureLeavesThePicture) {
  QtSurface surface = Speckled(1);
  surface.Dot(300, 300, 255);
  surface.CopyPicture(Speckles(), {0, 0, 64, 64});
  const QImage drawn = surface.Image().copy();
  surface.Restore();
  EXPECT_TRUE(SamePixels(surface.Image(), drawn));
  surface.Capture();
  surface.Dot(300, 300, 255);
  surface.Restore();
  EXPECT_TRUE(SamePixels(surface.Image(), drawn));
}

/// Cells are of 8 pixels in a row, and a pixel is 4 bytes.
constexpr std::size_t CellBytes = 32;

TEST(QtSurfaceKept, OnlyCellsThatArePaintedAreKeptAndEachOnce) {
  QtSurface surface = Made({64, 40}, 1);
  EXPECT_EQ(surface.KeptBytes(), 0u);
  surface.Dot(20 * 15, 10 * 15, 255);  // columns 19 to 21 of the rows 9 to 11: one cell in each
  EXPECT_EQ(surface.KeptBytes(), 3 * CellBytes);
  surface.Dot(20 * 15, 10 * 15, 255);
  EXPECT_EQ(surface.KeptBytes(), 3 * CellBytes);
  surface.Restore();
  surface.Dot(20 * 15, 10 * 15, 255);
  EXPECT_EQ(surface.KeptBytes(), 3 * CellBytes);
  surface.Dot(23 * 15, 12 * 15, 255);  // columns 22 to 24 of the rows 11 to 13: two cells in each, one kept before
  EXPECT_EQ(surface.KeptBytes(), (3 + 5) * CellBytes);
  surface.Dot(0, 0, 255);  // the quarter within the image: columns 0 and 1 of the rows 0 and 1
  EXPECT_EQ(surface.KeptBytes(), (3 + 5 + 2) * CellBytes);
}

TEST(QtSurfaceKept, ACaptureLetsGoOnlyOfWhatHasBeenPaintedSinceTheRestore) {
  QtSurface surface = Made({64, 40}, 1);
  surface.Dot(20 * 15, 10 * 15, 255);
  surface.Dot(44 * 15, 30 * 15, 255);
  EXPECT_EQ(surface.KeptBytes(), 6 * CellBytes);
  surface.Restore();
  surface.Capture();
  EXPECT_EQ(surface.KeptBytes(), 6 * CellBytes);
  surface.Dot(44 * 15, 30 * 15, 255);
  surface.Capture();
  EXPECT_EQ(surface.KeptBytes(), 3 * CellBytes);
  surface.Dot(20 * 15, 10 * 15, 255);
  surface.TakeDirty();
  surface.Capture();
  EXPECT_EQ(surface.KeptBytes(), 0u);
}

TEST(QtSurfaceKept, NothingIsKeptBetweenAPictureAndItsCapture) {
  QtSurface surface = Made({64, 40}, 1);
  surface.Dot(20 * 15, 10 * 15, 255);
  surface.CopyPicture({}, {0, 0, 1, 1});
  EXPECT_EQ(surface.KeptBytes(), 0u);
  surface.Line(0, 0, 900, 600, {.Color = 255});
  surface.Line(0, 600, 900, 0, {.Color = 255, .Style = PenStyle::Solid});
  EXPECT_EQ(surface.KeptBytes(), 0u);
  surface.Capture();
  EXPECT_EQ(surface.KeptBytes(), 0u);
}

TEST(QtSurfaceKept, APictureLeavesNothingOfWhatWasThere) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  std::uniform_real_distribution<double> place(-300, 300);
  std::uniform_real_distribution<double> exponent(-4, 4);
  for (int round = 0; round < 400; ++round) {
    // Whole numbers too, and now and then numbers that no view has.
    const bool whole = round % 3 == 0;
    const double far = round % 50 == 49 ? 1e300 : 1;
    const auto number = [&](double value) { return whole ? std::round(value) : value; };
    const map::SourceRect from{number(place(numbers)), number(place(numbers)),
                               number(std::pow(10, exponent(numbers))) * far,
                               number(std::pow(10, exponent(numbers))) / far};
    QtSurface used = Made({97, 61}, 1);
    used.Box(-150, -150, 1500, 1500, {.Color = 255, .Style = PenStyle::Solid, .Filled = true});
    used.CopyPicture(Speckles(), from);
    QtSurface ground = Made({97, 61}, 1);
    ground.CopyPicture(Speckles(), from);
    ASSERT_TRUE(SamePixels(used.Image(), ground.Image()))
        << from.Left << ' ' << from.Top << ' ' << from.Width << ' ' << from.Height;
  }
}

}  // namespace
}  // namespace kestrel::shell
