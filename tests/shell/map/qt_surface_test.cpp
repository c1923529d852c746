#include "shell/map/qt_surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "shell/map/painted.h"
#include "shell/map/ratios.h"

namespace kestrel::shell {
namespace {

constexpr map::TextFont LabelFont{.Name = "MS Sans Serif", .Size = 8};
/// A picture whose pixel (x, y) has red x and green y, modulo 256.
base::Picture Ramp(int width, int height, std::vector<std::uint32_t>& pixels) {
  pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) pixels[static_cast<std::size_t>(y * width + x)] = qRgb(x & 255, y & 255, 7);
  }
  return {width, height, width * 4, reinterpret_cast<const std::uint8_t*>(pixels.data()), nullptr};
}

TEST(QtSurface, DotIsAPlusOfFivePixels) {
  QtSurface surface = Made({40, 40}, 1);
  surface.Dot(20 * 15, 10 * 15, 0x0000FF);
  QRegion plus(19, 10, 3, 1);
  plus += QRect(20, 9, 1, 3);
  EXPECT_EQ(Painted(surface.Image()), plus);
  EXPECT_EQ(surface.Image().pixel(20, 10), qRgb(255, 0, 0));
}

TEST(QtSurface, DotGrowsWithThePixels) {
  for (const double ratio : Ratios) {
    QtSurface surface = Made({40, 40}, ratio);
    surface.Dot(20 * 15, 10 * 15, 255);
    const QRect box = Painted(surface.Image()).boundingRect();
    const int radius = static_cast<int>(std::lround(ratio));
    EXPECT_EQ(box, QRect(static_cast<int>(20 * ratio) - radius, static_cast<int>(10 * ratio) - radius, 2 * radius + 1,
                         2 * radius + 1));
  }
}

TEST(QtSurface, StraightLinesOfWidth1AreOnePixelWide) {
  QtSurface surface = Made({60, 60}, 1);
  surface.Line(10 * 15, 20 * 15, 30 * 15, 20 * 15, {.Color = 0x00FF00});
  surface.Line(50 * 15, 5 * 15, 50 * 15, 15 * 15, {.Color = 0x00FF00});
  QRegion lines(10, 20, 21, 1);
  lines += QRect(50, 5, 1, 11);
  EXPECT_EQ(Painted(surface.Image()), lines);
  EXPECT_EQ(surface.Image().pixel(15, 20), qRgb(0, 255, 0));
}

TEST(QtSurface, LinesLieWhereTheirEndsAreInAllDirections) {
  for (const double ratio : Ratios) {
    for (int degrees = 0; degrees < 360; degrees += 15) {
      QtSurface surface = Made({100, 100}, ratio);
      const double dx = 40 * std::cos(degrees * 3.14159265 / 180);
      const double dy = 40 * std::sin(degrees * 3.14159265 / 180);
      surface.Line(50 * 15, 50 * 15, (50 + dx) * 15, (50 + dy) * 15, {.Color = 0xFFFFFF});
      const QImage& image = surface.Image();
      for (double part = 0.1; part < 1; part += 0.1) {
        const int x = static_cast<int>(std::lround((50 + dx * part) * ratio));
        const int y = static_cast<int>(std::lround((50 + dy * part) * ratio));
        EXPECT_GT(qRed(image.pixel(x, y)), 60) << ratio << ' ' << degrees << ' ' << part;
      }
      const int thick = static_cast<int>(std::lround(4 * ratio));
      const QRectF box = QRectF(QPointF(50, 50), QPointF(50 + dx, 50 + dy)).normalized();
      const QRect near =
          QRectF(box.topLeft() * ratio, box.size() * ratio).toAlignedRect().adjusted(-thick, -thick, thick, thick);
      EXPECT_TRUE((Painted(image) - near).isEmpty()) << ratio << ' ' << degrees;
    }
  }
}

TEST(QtSurface, CirclesSmallAndLargeAreInkedAtTheirRadiusOnly) {
  for (const double ratio : Ratios) {
    for (const double radius : {4.0, 9.0, 60.0}) {
      QtSurface surface = Made({160, 160}, ratio);
      surface.Circle(80 * 15, 80 * 15, radius * 15, {.Color = 0xFFFFFF});
      const QImage& image = surface.Image();
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
          if (image.pixel(x, y) == Ground.rgb()) continue;
          const double distance = std::hypot(x - 80 * ratio, y - 80 * ratio);
          ASSERT_NEAR(distance, radius * ratio, 2 + ratio) << x << ' ' << y;
        }
      }
      for (int degrees = 0; degrees < 360; degrees += 10) {
        const double angle = degrees * 3.14159265 / 180;
        int brightest = 0;
        for (int step = -1; step <= 1; ++step) {
          const double at = radius * ratio + step;
          brightest =
              std::max(brightest, qRed(image.pixel(static_cast<int>(std::lround(80 * ratio + at * std::cos(angle))),
                                                   static_cast<int>(std::lround(80 * ratio + at * std::sin(angle))))));
        }
        EXPECT_GT(brightest, 50) << ratio << ' ' << radius << ' ' << degrees;
      }
    }
  }
}

TEST(QtSurface, ArcFrom205To335IsTheLowerPart) {
  QtSurface surface = Made({40, 40}, 1);
  surface.Arc(20 * 15, 20 * 15, 60, 205, 335, {.Color = 0xFFFFFF});
  const QRect box = Painted(surface.Image()).boundingRect();
  EXPECT_GE(box.top(), 21);
  EXPECT_NEAR(box.bottom(), 24, 1);  // the pen's edge lies on that of the pixel
  EXPECT_LE(box.left(), 17);
  EXPECT_GE(box.right(), 23);
}

TEST(QtSurface, TextIsInkedWithinItsMeasuredBox) {
  for (const double ratio : Ratios) {
    QtSurface surface = Made({200, 60}, ratio);
    const map::TextSize size = surface.Measure("Viper 11 gjq", LabelFont);
    surface.Print("Viper 11 gjq", 30 * 15, 20 * 15, LabelFont, 0x00FFFF);
    const QRect ink = Painted(surface.Image()).boundingRect();
    EXPECT_FALSE(ink.isEmpty());
    const QRect box = QRectF(30 * ratio, 20 * ratio, size.Width / 15 * ratio, size.Height / 15 * ratio).toAlignedRect();
    // Hinting and the overhang of the outer letters: a pixel.
    EXPECT_TRUE(box.adjusted(-1, -1, 1, 1).contains(ink)) << ratio << ": " << ink.left() << ' ' << ink.right();
    // One line of 8 points, 160 units at 96 to the inch; how much more is the font's own affair.
    EXPECT_GE(size.Height, 160);
    EXPECT_LE(size.Height, 320);
  }
}

TEST(QtSurface, DigitsAllMeasureTheSame) {
  QtSurface surface = Made({10, 10}, 1);
  const double zero = surface.Measure("0", LabelFont).Width;
  for (const std::string_view digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_NEAR(surface.Measure(digit, LabelFont).Width, zero, 15) << "a pixel, whatever the font";
  }
  EXPECT_EQ(surface.Measure("", LabelFont).Width, 0);
  EXPECT_EQ(surface.Measure("", LabelFont).Height, surface.Measure("0", LabelFont).Height);
}

TEST(QtSurface, TextCutByAnEdgeIsTheSameTextWithinIt) {
  QtSurface whole = Made({200, 60}, 1);
  whole.Print("Viper 11", 70 * 15, 20 * 15, LabelFont, 0xFFFFFF);
  for (const QPoint edge : {QPoint(75, 0), QPoint(-90, 0), QPoint(0, 25), QPoint(0, -28)}) {
    // A small surface that shows only a part of the large one.
    QtSurface part = Made({100, 30}, 1);
    part.Print("Viper 11", (70 - edge.x()) * 15, (20 - edge.y()) * 15, LabelFont, 0xFFFFFF);
    const QRect shown = QRect(edge, QSize(100, 30)) & whole.Image().rect();
    EXPECT_TRUE(SamePixels(part.Image().copy(shown.translated(-edge)), whole.Image().copy(shown))) << edge.x();
  }
}

TEST(QtSurface, EveryByteCanBePrinted) {
  QtSurface surface = Made({400, 40}, 1);
  for (int byte = 0; byte < 256; ++byte) {
    const char text = static_cast<char>(byte);
    EXPECT_GE(surface.Measure({&text, 1}, LabelFont).Width, 0);
    surface.Print({&text, 1}, 100 * 15, 10 * 15, LabelFont, 255);
  }
  EXPECT_FALSE(Painted(surface.Image()).isEmpty());
}

TEST(QtSurface, RestoreGivesExactlyWhatWasCaptured) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  for (const double ratio : Ratios) {
    QtSurface surface = Made({300, 200}, ratio);
    std::uniform_real_distribution<double> place(-100 * 15, 400 * 15);
    std::vector<std::uint32_t> pixels;
    const base::Picture ramp = Ramp(64, 64, pixels);
    for (int round = 0; round < 60; ++round) {
      if (round % 10 == 0) {
        surface.CopyPicture(ramp, {-3, 5, 70, 40});
        surface.Line(place(numbers), place(numbers), place(numbers), place(numbers), {.Color = 1, .DrawWidth = 3});
        surface.Capture();
      }
      const QImage captured = surface.Image().copy();
      for (int step = 0; step < 40; ++step) {
        const double x = place(numbers);
        const double y = place(numbers);
        const auto colour = static_cast<base::Colour>(numbers() & 0xFFFFFF);
        const map::Pen pen{.Color = colour, .DrawWidth = static_cast<int>(numbers() % 4)};
        switch (numbers() % 5) {
          case 0:
            surface.Line(x, y, place(numbers), place(numbers), pen);
            break;
          case 1:
            surface.Circle(x, y, std::abs(place(numbers)), pen);
            break;
          case 2:
            surface.Arc(x, y, 60, place(numbers) / 10, place(numbers) / 10, pen);
            break;
          case 3:
            surface.Dot(x, y, colour);
            break;
          default:
            surface.Print("Viper 11 \xE4\xF6", x, y, LabelFont, colour);
            break;
        }
        if (numbers() % 20 == 0) surface.TakeDirty();
      }
      EXPECT_FALSE(SamePixels(surface.Image(), captured));
      surface.Restore();
      ASSERT_TRUE(SamePixels(surface.Image(), captured)) << "round " << round << " ratio " << ratio;
    }
  }
}

TEST(QtSurface, DirtyHoldsEverythingThatChangedAndNothingTwice) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  std::uniform_real_distribution<double> place(-20 * 15, 620 * 15);
  QtSurface surface = Made({600, 400}, 1);
  QImage before = surface.Image().copy();
  for (int round = 0; round < 50; ++round) {
    surface.Restore();
    surface.Dot(place(numbers), place(numbers), 255);
    surface.Print("Viper", place(numbers), place(numbers), LabelFont, 255);
    surface.Line(place(numbers), place(numbers), place(numbers), place(numbers), {.Color = 255});
    const QRegion dirty = surface.TakeDirty();
    for (int y = 0; y < before.height(); ++y) {
      for (int x = 0; x < before.width(); ++x) {
        if (before.pixel(x, y) != surface.Image().pixel(x, y)) {
          ASSERT_TRUE(dirty.contains(QPoint(x, y))) << x << ' ' << y;
        }
      }
    }
    EXPECT_TRUE(surface.TakeDirty().isEmpty());
    before = surface.Image().copy();
  }
}

TEST(QtSurface, DirtyIsTheWholeImageAfterResizeAndPicture) {
  QtSurface surface;
  EXPECT_TRUE(surface.TakeDirty().isEmpty());
  surface.Resize({100, 70}, 1);
  EXPECT_EQ(surface.TakeDirty(), QRegion(0, 0, 100, 70));
  surface.CopyPicture({}, {0, 0, 1, 1});
  EXPECT_EQ(surface.TakeDirty(), QRegion(0, 0, 100, 70));
  surface.Dot(50 * 15, 50 * 15, 255);
  EXPECT_NE(surface.TakeDirty(), QRegion(0, 0, 100, 70));
}

TEST(QtSurface, ResizeKeepsTheMapAtTheUpperLeftWithoutPlots) {
  QtSurface surface = Made({50, 40}, 1);
  surface.Line(0, 0, 49 * 15, 0, {.Color = 255});
  surface.Capture();
  surface.Dot(20 * 15, 20 * 15, 255);
  surface.Resize({80, 30}, 1);
  EXPECT_EQ(surface.Image().size(), QSize(80, 30));
  EXPECT_EQ(Painted(surface.Image()), QRegion(0, 0, 50, 1));
}

TEST(QtSurface, ImageKnowsItsDevicePixelRatio) {
  EXPECT_EQ(Made({50, 40}, 1.5).Image().devicePixelRatio(), 1.5);
  EXPECT_EQ(Made({50, 40}, 1.5).Image().size(), QSize(75, 60));
}

TEST(QtSurface, PictureIsCopiedPixelForPixelAtItsOwnSize) {
  std::vector<std::uint32_t> pixels;
  const base::Picture ramp = Ramp(200, 200, pixels);
  QtSurface surface = Made({100, 80}, 1);
  surface.CopyPicture(ramp, {30, 40, 100, 80});
  for (const QPoint at : {QPoint(0, 0), QPoint(99, 79), QPoint(50, 20)}) {
    EXPECT_EQ(surface.Image().pixel(at), qRgb(30 + at.x(), 40 + at.y(), 7));
  }
}

TEST(QtSurface, BeyondThePictureLiesTheBackground) {
  std::vector<std::uint32_t> pixels;
  const base::Picture ramp = Ramp(50, 50, pixels);
  for (const double ratio : Ratios) {
    QtSurface surface = Made({200, 100}, ratio);
    surface.CopyPicture(ramp, {-25, -25, 200, 100});
    const QRect painted = Painted(surface.Image()).boundingRect();
    EXPECT_NEAR(painted.left(), 25 * ratio, 0.5) << ratio;
    EXPECT_NEAR(painted.top(), 25 * ratio, 0.5) << ratio;
    EXPECT_NEAR(painted.right() + 1, 75 * ratio, 0.5) << ratio;
    EXPECT_NEAR(painted.bottom() + 1, 75 * ratio, 0.5) << ratio;
    EXPECT_EQ(surface.Image().pixel(1, 1), Ground.rgb());
  }
}

TEST(QtSurface, HalvedAndSmallerPicturesAreMeansNotSamples) {
  // Black and white pixels in turn: every shrunk pixel must be grey.
  std::vector<std::uint32_t> pixels(512 * 512);
  for (std::size_t at = 0; at < pixels.size(); ++at)
    pixels[at] = (at % 512 + at / 512) % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF;
  const base::Picture board(512, 512, 512 * 4, reinterpret_cast<const std::uint8_t*>(pixels.data()), nullptr);
  for (const int side : {256, 128, 64, 40}) {
    QtSurface surface = Made({side, side}, 1);
    surface.CopyPicture(board, {0, 0, 512, 512});
    for (int at = 4; at < side - 4; at += 7) {
      EXPECT_NEAR(qGreen(surface.Image().pixel(at, at / 2 + 2)), 127, 3) << side << ' ' << at;
    }
  }
}

TEST(QtSurface, HugeZoomShowsFractionsOfAPixelSmoothly) {
  std::vector<std::uint32_t> pixels;
  const base::Picture ramp = Ramp(256, 256, pixels);
  QtSurface surface = Made({400, 400}, 1);
  surface.CopyPicture(ramp, {100, 100, 2, 2});
  EXPECT_NEAR(qRed(surface.Image().pixel(200, 200)), 100, 1);
  EXPECT_LE(qRed(surface.Image().pixel(0, 0)), qRed(surface.Image().pixel(399, 399)));
}

TEST(QtSurface, AnyNumberIsSafe) {
  const double none = std::nan("");
  const double far = std::numeric_limits<double>::max();
  const double values[] = {none, std::numeric_limits<double>::infinity(), far, -far, 1e300, -1e300, 1e18, -1e18, 1e9, 0,
                           150};
  QtSurface surface = Made({100, 80}, 1);
  std::vector<std::uint32_t> pixels;
  const base::Picture ramp = Ramp(50, 50, pixels);
  for (const double a : values) {
    for (const double b : values) {
      surface.Dot(a, b, 255);
      surface.Print("Viper", a, b, LabelFont, 255);
      for (const double c : values) {
        surface.Line(a, b, c, 100, {.Color = 255});
        surface.Line(100, a, b, c, {.Color = 255, .DrawWidth = std::numeric_limits<int>::max()});
        surface.Circle(a, b, c, {.Color = 255});
        surface.Arc(100, 100, a, b, c, {.Color = 255, .DrawWidth = -1});
        surface.CopyPicture(ramp, {a, b, c, 50});
        surface.CopyPicture(ramp, {10, a, b, c});
      }
    }
  }
  surface.Measure("x", {.Name = "Nothing Of The Kind", .Size = std::numeric_limits<float>::infinity()});
  surface.Measure("x", {.Name = "", .Size = -5});
}

TEST(QtSurface, NumbersThatAreNoneDrawNothing) {
  const double none = std::nan("");
  QtSurface surface = Made({100, 80}, 1);
  surface.Dot(none, 100, 255);
  surface.Line(100, 100, none, 100, {.Color = 255});
  surface.Circle(100, none, 60, {.Color = 255});
  surface.Print("Viper", none, 100, LabelFont, 255);
  EXPECT_TRUE(Painted(surface.Image()).isEmpty());
}

TEST(QtSurface, LineToFarAwayLeavesInItsDirection) {
  QtSurface surface = Made({100, 80}, 1);
  surface.Line(50 * 15, 40 * 15, 1e15, 1e15, {.Color = 0xFFFFFF});
  EXPECT_GT(qRed(surface.Image().pixel(70, 60)), 200);
  EXPECT_EQ(surface.Image().pixel(30, 20), Ground.rgb());
}

TEST(QtSurface, BeforeItHasASizeItDropsEverything) {
  QtSurface surface;
  surface.Dot(1, 1, 255);
  surface.Line(0, 0, 100, 100, {.Color = 255});
  surface.Circle(10, 10, 60, {.Color = 255});
  surface.Circle(10, 10, 6000, {.Color = 255});
  surface.Print("Viper", 10, 10, LabelFont, 255);
  surface.CopyPicture({}, {0, 0, 1, 1});
  surface.Capture();
  surface.Restore();
  EXPECT_TRUE(surface.Image().isNull());
}

}  // namespace
}  // namespace kestrel::shell
