#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "shell/map/painted.h"
#include "shell/map/qt_surface.h"
#include "shell/map/ratios.h"

// Boxes, polygons, dots in lines and pens of whole pixels.
namespace kestrel::shell {
namespace {

using map::Pen;
using map::PenStyle;

constexpr PenStyle Styles[] = {PenStyle::Smooth, PenStyle::Solid, PenStyle::Dotted};

/// Two regions may be cut into rows differently.
bool Same(const QRegion& a, const QRegion& b) { return a.xored(b).isEmpty(); }

TEST(QtSurfaceShapes, SolidLinesCoverWholePixelsFromEndToEnd) {
  QtSurface surface = Made({60, 60}, 1);
  surface.Line(10 * 15, 20 * 15, 30 * 15, 20 * 15, {.Color = 0xFFFFFF, .Style = PenStyle::Solid});
  surface.Line(50 * 15, 15 * 15, 50 * 15, 5 * 15, {.Color = 0xFFFFFF, .Style = PenStyle::Solid});
  surface.Line(30 * 15, 30 * 15, 33 * 15, 33 * 15, {.Color = 0xFFFFFF, .Style = PenStyle::Solid});
  QRegion lines(10, 20, 21, 1);
  lines += QRect(50, 5, 1, 11);
  for (int step = 30; step <= 33; ++step) lines += QRect(step, step, 1, 1);
  EXPECT_TRUE(Same(Painted(surface.Image()), lines));
}

TEST(QtSurfaceShapes, SolidLinesReachBothEndsAndNoFurtherInAllDirections) {
  for (const double ratio : Ratios) {
    for (int dx = -12; dx <= 12; ++dx) {
      for (int dy = -12; dy <= 12; ++dy) {
        QtSurface surface = Made({60, 60}, ratio);
        // Even numbers of pixels, so that every ratio has them whole.
        const QPoint from(30, 30);
        const QPoint to = from + QPoint(dx, dy) * 2;
        surface.Line(from.x() * 15, from.y() * 15, to.x() * 15, to.y() * 15, {.Color = 255, .Style = PenStyle::Solid});
        const QRect ends(QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())) * ratio,
                         QPoint(std::max(from.x(), to.x()), std::max(from.y(), to.y())) * ratio);
        const QRegion line = Painted(surface.Image());
        if (ratio > 1) {  // two pixels wide
          EXPECT_TRUE(ends.adjusted(-1, -1, 1, 1).contains(line.boundingRect())) << ratio << ' ' << dx << ' ' << dy;
          continue;
        }
        EXPECT_EQ(line.boundingRect(), ends) << dx << ' ' << dy;
        EXPECT_TRUE(line.contains(from) && line.contains(to)) << dx << ' ' << dy;
      }
    }
  }
}

TEST(QtSurfaceShapes, SolidPensHaveNoSoftEdges) {
  for (const double ratio : Ratios) {
    QtSurface surface = Made({100, 100}, ratio);
    const Pen pen{.Color = 0xFFFFFF, .Style = PenStyle::Solid, .Filled = true};
    const map::SurfacePoint corners[] = {{150, 75}, {1275, 300}, {600, 1350}};
    surface.Line(0, 0, 1500, 400, pen);
    surface.Circle(750, 750, 300, pen);
    surface.Arc(750, 750, 700, 20, 100, pen);
    surface.Polygon(corners, pen);
    const QImage& image = surface.Image();
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, y) == Ground.rgb()) continue;
        ASSERT_EQ(image.pixel(x, y), qRgb(255, 255, 255)) << x << ' ' << y;
      }
    }
  }
}

TEST(QtSurfaceShapes, APenIsAsWideAsItSaysWhateverWasDrawnBefore) {
  for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid}) {
    QtSurface surface = Made({60, 60}, 1);
    surface.Line(5 * 15, 10 * 15, 50 * 15, 10 * 15, {.Color = 255, .DrawWidth = 4, .Style = style});
    surface.Box(5 * 15, 30 * 15, 50 * 15, 40 * 15, {.Color = 255, .DrawWidth = 3, .Style = style});
    const map::SurfacePoint ends[] = {{5 * 15, 50 * 15}, {50 * 15, 50 * 15}};
    surface.Polygon(ends, {.Color = 255, .Style = style});
    const QRegion column = Painted(surface.Image()) & QRect(25, 0, 1, 60);
    const QRegion wanted = QRegion(25, 8, 1, 4) + QRect(25, 29, 1, 3) + QRect(25, 39, 1, 3) + QRect(25, 50, 1, 1);
    // Four pixels have their middle between two of them: one row more or less on either side.
    EXPECT_TRUE(Same(column & QRect(0, 20, 60, 40), wanted & QRect(0, 20, 60, 40)));
    EXPECT_NEAR((column & QRect(0, 0, 60, 20)).boundingRect().height(), 4, 1);
  }
}

TEST(QtSurfaceShapes, DottedIsOnePixelOfThree) {
  QtSurface surface = Made({60, 60}, 1);
  surface.Line(10 * 15, 20 * 15, 40 * 15, 20 * 15, {.Color = 255, .Style = PenStyle::Dotted});
  // Down as well: one pixel for three along.
  surface.Line(10 * 15, 30 * 15, 40 * 15, 40 * 15, {.Color = 255, .Style = PenStyle::Dotted});
  QRegion dots;
  for (int dot = 0; dot <= 10; ++dot) {
    dots += QRect(10 + 3 * dot, 20, 1, 1);
    dots += QRect(10 + 3 * dot, 30 + dot, 1, 1);
  }
  EXPECT_TRUE(Same(Painted(surface.Image()), dots));
}

TEST(QtSurfaceShapes, DotsStayWhereTheyAreHoweverMuchOfTheLineIsSeen) {
  QtSurface near = Made({60, 60}, 1);
  near.Line(1 * 15, 20 * 15, 40 * 15, 20 * 15, {.Color = 255, .Style = PenStyle::Dotted});
  QtSurface far = Made({60, 60}, 1);
  // Three million pixels further out, a million dots and gaps.
  far.Line(-2'999'999.0 * 15, 20 * 15, 40 * 15, 20 * 15, {.Color = 255, .Style = PenStyle::Dotted});
  const QRect both(4, 0, 34, 60);
  EXPECT_TRUE(Same(Painted(near.Image()) & both, Painted(far.Image()) & both));
  EXPECT_GE((Painted(near.Image()) & both).rectCount(), 10);
}

TEST(QtSurfaceShapes, ABoxReachesFromCornerToCornerInEitherOrder) {
  QRegion edge(10, 20, 21, 11);
  edge -= QRect(11, 21, 19, 9);
  for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid}) {
    QtSurface surface = Made({60, 60}, 1);
    surface.Box(10 * 15, 20 * 15, 30 * 15, 30 * 15, {.Color = 255, .Style = style});
    EXPECT_TRUE(Same(Painted(surface.Image()), edge));
    QtSurface turned = Made({60, 60}, 1);
    turned.Box(30 * 15, 20 * 15, 10 * 15, 30 * 15, {.Color = 255, .Style = style});
    EXPECT_TRUE(Same(Painted(turned.Image()), edge));
    turned.Box(30 * 15, 30 * 15, 10 * 15, 20 * 15, {.Color = 255, .Style = style, .Filled = true});
    EXPECT_TRUE(Same(Painted(turned.Image()), QRegion(10, 20, 21, 11)));
  }
}

TEST(QtSurfaceShapes, APolygonIsClosedAndFilledOnlyWhenAsked) {
  // A right angle at the lower left: legs of 20 pixels, (10, 10) on its way, the long side back.
  const map::SurfacePoint corners[] = {{10 * 15, 10 * 15}, {10 * 15, 30 * 15}, {30 * 15, 30 * 15}};
  for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid}) {
    QtSurface surface = Made({60, 60}, 1);
    surface.Polygon(corners, {.Color = 0xFFFFFF, .Style = style});
    const QRegion outline = Painted(surface.Image());
    for (const QPoint on : {QPoint(10, 20), QPoint(20, 30), QPoint(20, 20), QPoint(10, 10), QPoint(30, 30)}) {
      EXPECT_TRUE(outline.contains(on)) << on.x() << ' ' << on.y();
    }
    EXPECT_FALSE(outline.contains(QPoint(14, 25)));
    // The soft edge of the long side touches a pixel more.
    const int soft = style == PenStyle::Smooth ? 1 : 0;
    const QRect around = QRect(10, 10, 21, 21).adjusted(-soft, -soft, soft, soft);
    EXPECT_TRUE(around.contains(outline.boundingRect()));
    surface.Polygon(corners, {.Color = 0xFFFFFF, .Style = style, .Filled = true});
    EXPECT_EQ(surface.Image().pixel(14, 25), qRgb(255, 255, 255));
    EXPECT_TRUE(around.contains(Painted(surface.Image()).boundingRect()));
    EXPECT_FALSE(Painted(surface.Image()).contains(QPoint(26, 14))) << "beyond the long side";
  }
}

TEST(QtSurfaceShapes, WhereEdgesCrossEverySecondFieldIsFilled) {
  // A square of 40 pixels with one of 20 within it, joined along the line from (10, 10) to (20, 20).
  const double path[][2] = {{10, 10}, {50, 10}, {50, 50}, {10, 50}, {10, 10},
                            {20, 20}, {40, 20}, {40, 40}, {20, 40}, {20, 20}};
  std::vector<map::SurfacePoint> corners;
  for (const auto& at : path) corners.push_back({at[0] * 15, at[1] * 15});
  QtSurface surface = Made({60, 60}, 1);
  surface.Polygon(corners, {.Color = 255, .Style = PenStyle::Solid, .Filled = true});
  EXPECT_EQ(surface.Image().pixel(15, 30), qRgb(255, 0, 0));
  EXPECT_EQ(surface.Image().pixel(30, 30), Ground.rgb());
}

TEST(QtSurfaceShapes, ACircleOfRadius0IsADot) {
  for (const double ratio : Ratios) {
    for (const PenStyle style : Styles) {
      QtSurface circle = Made({40, 40}, ratio);
      circle.Circle(300, 150, 0, {.Color = 255, .Style = style});
      QtSurface dot = Made({40, 40}, ratio);
      dot.Dot(300, 150, 255);
      EXPECT_FALSE(Painted(dot.Image()).isEmpty());
      EXPECT_EQ(Painted(circle.Image()), Painted(dot.Image()));
    }
  }
}

TEST(QtSurfaceShapes, AFilledCircleIsADiscOfItsRadius) {
  for (const double ratio : Ratios) {
    for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid}) {
      for (const double radius : {3.0, 60.0}) {
        QtSurface surface = Made({160, 160}, ratio);
        surface.Circle(80 * 15, 80 * 15, radius * 15, {.Color = 0xFFFFFF, .Style = style, .Filled = true});
        const QImage& image = surface.Image();
        for (int y = 0; y < image.height(); ++y) {
          for (int x = 0; x < image.width(); ++x) {
            const double distance = std::hypot(x - 80 * ratio, y - 80 * ratio);
            if (distance < radius * ratio - 1) {
              ASSERT_GT(qRed(image.pixel(x, y)), 250) << x << ' ' << y;
            }
            // Half the pen, and a pixel that the edge only touches.
            if (distance > radius * ratio + ratio + 1) {
              ASSERT_EQ(image.pixel(x, y), Ground.rgb()) << x << ' ' << y;
            }
          }
        }
      }
    }
  }
}

TEST(QtSurfaceShapes, SolidCirclesAreInkedAtTheirRadiusOnly) {
  for (const double ratio : Ratios) {
    for (const double radius : {3.0, 8.0, 60.0}) {
      QtSurface surface = Made({160, 160}, ratio);
      surface.Circle(80 * 15, 80 * 15, radius * 15, {.Color = 255, .Style = PenStyle::Solid});
      const QRegion ring = Painted(surface.Image());
      for (int y = 0; y < surface.Image().height(); ++y) {
        for (int x = 0; x < surface.Image().width(); ++x) {
          const double off = std::abs(std::hypot(x - 80 * ratio, y - 80 * ratio) - radius * ratio);
          if (ring.contains(QPoint(x, y))) {
            ASSERT_LE(off, 0.5 + ratio) << radius;
          }
        }
      }
      // Half a pixel goes right and down.
      const int reach = static_cast<int>(std::floor(radius * ratio + 0.5));
      const int back = static_cast<int>(std::ceil(radius * ratio - 0.5));
      const int middle = static_cast<int>(80 * ratio);
      for (const QPoint at : {QPoint(reach, 0), QPoint(-back, 0), QPoint(0, reach), QPoint(0, -back)}) {
        EXPECT_TRUE(ring.contains(QPoint(middle, middle) + at))
            << ratio << ' ' << radius << ' ' << at.x() << ' ' << at.y();
      }
    }
  }
}

TEST(QtSurfaceShapes, WhatLeadsMillionsOfPixelsOutKeepsItsDirection) {
  // From the middle to 3 million pixels right and 1 million down; 30 pixels on it is 10 lower.
  const map::SurfacePoint corners[] = {{20 * 15, 40 * 15}, {3'000'020.0 * 15, 1'000'040.0 * 15}};
  for (const PenStyle style : {PenStyle::Smooth, PenStyle::Solid}) {
    QtSurface surface = Made({100, 80}, 1);
    surface.Polygon(corners, {.Color = 0xFFFFFF, .Style = style});
    surface.Line(corners[0].X, corners[0].Y, -corners[1].X, -corners[1].Y, {.Color = 0xFFFFFF, .Style = style});
    const QImage& image = surface.Image();
    for (int step = 3; step <= 75; step += 3) {
      EXPECT_GT(qRed(image.pixel(20 + step, 40 + step / 3)), 100) << step;
    }
    // The other way: (-3000020, -1000040) from (20, 40) is 3000040 left and 1000080 up, a third within the image.
    EXPECT_GT(qRed(image.pixel(20 - 18, 40 - 6)), 100);
    EXPECT_LE(Painted(image).boundingRect().bottom(), 68);
  }
}

TEST(QtSurfaceShapes, AFieldMillionsOfPixelsWideFillsWhatIsSeenOfIt) {
  // The left side leaves the image at x = 50 upright; the right one is far out.
  const map::SurfacePoint corners[] = {{50 * 15, -4e6 * 15}, {50 * 15, 4e6 * 15}, {9e6 * 15, 0}};
  QtSurface surface = Made({100, 80}, 1);
  surface.Polygon(corners, {.Color = 255, .Style = PenStyle::Solid, .Filled = true});
  EXPECT_TRUE(Same(Painted(surface.Image()), QRegion(50, 0, 50, 80)));
}

TEST(QtSurfaceShapes, CornersThatPixelsCannotNameDrawNothing) {
  const double bad[] = {std::nan(""), std::numeric_limits<double>::infinity(), 1e300, -1e300, 1e12};
  for (const double number : bad) {
    for (const PenStyle style : Styles) {
      QtSurface surface = Made({100, 80}, 1);
      const Pen pen{.Color = 255, .Style = style, .Filled = true};
      const map::SurfacePoint corners[] = {{150, 150}, {number, 600}, {600, 600}};
      surface.Polygon(corners, pen);
      surface.Box(150, 150, 600, number, pen);
      EXPECT_TRUE(Painted(surface.Image()).isEmpty()) << number;
    }
    if (std::isfinite(number)) continue;
    QtSurface surface = Made({100, 80}, 1);
    surface.Line(150, 150, number, 150, {.Color = 255, .Style = PenStyle::Dotted});
    surface.Circle(150, number, 60, {.Color = 255, .Style = PenStyle::Solid, .Filled = true});
    surface.Circle(150, 150, number, {.Color = 255, .Style = PenStyle::Solid, .Filled = true});
    EXPECT_TRUE(Painted(surface.Image()).isEmpty()) << number;
  }
}

TEST(QtSurfaceShapes, AnyNumberIsSafe) {
  const double far = std::numeric_limits<double>::max();
  const double values[] = {std::nan(""), -far, 1e18, -1e12, 3e7, 150};
  QtSurface surface = Made({100, 80}, 1);
  for (const PenStyle style : Styles) {
    for (const double a : values) {
      for (const double b : values) {
        for (const double c : values) {
          const Pen pen{.Color = 255, .DrawWidth = std::numeric_limits<int>::max(), .Style = style, .Filled = true};
          const map::SurfacePoint corners[] = {{a, b}, {c, 100}, {100, a}, {b, c}};
          surface.Polygon(corners, pen);
          surface.Box(a, b, c, 100, {.Color = 255, .DrawWidth = -1, .Style = style});
          surface.Line(a, b, c, 100, {.Color = 255, .Style = style});
          surface.Circle(a, b, c, {.Color = 255, .Style = style, .Filled = true});
          surface.Arc(100, 100, a, b, c, {.Color = 255, .Style = style});
        }
      }
    }
  }
  surface.Polygon({}, {.Filled = true});
  QtSurface empty;
  empty.Box(0, 0, 150, 150, {.Style = PenStyle::Solid, .Filled = true});
  empty.Circle(75, 75, 60, {.Filled = true});
  EXPECT_TRUE(empty.Image().isNull());
}

TEST(QtSurfaceShapes, RestoreTakesAllOfThemBack) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  std::uniform_real_distribution<double> place(-100 * 15, 400 * 15);
  for (const double ratio : Ratios) {
    QtSurface surface = Made({300, 200}, ratio);
    for (int round = 0; round < 40; ++round) {
      const QImage captured = surface.Image().copy();
      for (int step = 0; step < 4; ++step) {
        const Pen pen{.Color = 0xFFFFFF,
                      .DrawWidth = static_cast<int>(numbers() % 5),
                      .Style = Styles[numbers() % 3],
                      .Filled = numbers() % 2 == 0};
        const map::SurfacePoint corners[] = {
            {place(numbers), place(numbers)}, {place(numbers), place(numbers)}, {place(numbers), place(numbers)}};
        surface.Polygon(corners, pen);
        surface.Box(corners[0].X, corners[0].Y, corners[1].X, corners[1].Y, pen);
        surface.Segments(corners, pen);
        surface.Line(corners[0].X, corners[0].Y, corners[1].X, corners[2].Y, pen);
        surface.Circle(corners[0].X, corners[1].Y, std::abs(corners[2].X) / 4, pen);
        surface.Arc(corners[2].X, corners[1].Y, 900, 10, 200, pen);
      }
      ASSERT_FALSE(SamePixels(surface.Image(), captured));
      surface.Restore();
      ASSERT_TRUE(SamePixels(surface.Image(), captured)) << "round " << round << " ratio " << ratio;
    }
  }
}

}  // namespace
}  // namespace kestrel::shell
