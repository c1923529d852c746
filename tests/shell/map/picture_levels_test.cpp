#include "shell/map/picture_levels.h"

#include <gtest/gtest.h>

#include <QTest>
#include <cstdint>
#include <memory>
#include <vector>

namespace kestrel::shell {
namespace {

/// A picture of any pixels, and whether somebody still holds it.
struct Noise {
  Noise(int width, int height) : Width(width), Height(height) {
    auto pixels = std::make_shared<std::vector<std::uint32_t>>(static_cast<std::size_t>(width) *
                                                               static_cast<std::size_t>(height));
    std::uint32_t state = 12345;
    for (std::uint32_t& pixel : *pixels) {
      state = state * 1664525U + 1013904223U;
      pixel = 0xFF000000U | state >> 8;
    }
    Held = pixels;
    Picture = base::Picture(width, height, width * 4, reinterpret_cast<const std::uint8_t*>(pixels->data()), pixels);
  }
  int Width;
  int Height;
  std::weak_ptr<std::vector<std::uint32_t>> Held;
  base::Picture Picture;
};

/// What a level is by its description: of each four pixels the mean, channel by channel, rounded to nearest.
QImage Halved(const QImage& whole) {
  QImage half(whole.width() / 2, whole.height() / 2, QImage::Format_RGB32);
  for (int y = 0; y < half.height(); ++y) {
    for (int x = 0; x < half.width(); ++x) {
      int red = 2, green = 2, blue = 2;
      for (const QPoint& of : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
        const QRgb pixel = whole.pixel(QPoint(2 * x, 2 * y) + of);
        red += qRed(pixel);
        green += qGreen(pixel);
        blue += qBlue(pixel);
      }
      half.setPixel(x, y, qRgb(red / 4, green / 4, blue / 4));
    }
  }
  return half;
}

QImage Wrapped(const base::Picture& picture) {
  return {picture.Pixels, picture.Width, picture.Height, picture.Stride, QImage::Format_RGB32};
}

/// A picture that is large enough for its levels to be made in idle time.
constexpr int LevelsSide = 2301;
static_assert(qsizetype{LevelsSide} * LevelsSide > PictureLevels::MostAtOnce);

void WaitUntilDone(const PictureLevels& levels) {
  ASSERT_TRUE(QTest::qWaitFor([&levels] { return !levels.Busy(); }, 60000));
}

TEST(PictureLevels, EachLevelIsTheMeansOfTheOneBefore) {
  const Noise noise(77, 50);
  PictureLevels levels;
  QImage expected = Wrapped(noise.Picture);
  EXPECT_EQ(levels.Level(noise.Picture, 1), expected);
  // 38 x 25, 19 x 12, 9 x 6, 4 x 3, 2 x 1, and no further: there is no level without a row.
  for (const double scale : {0.3, 0.15, 0.08, 0.04, 0.02}) {
    expected = Halved(expected);
    EXPECT_EQ(levels.Level(noise.Picture, scale), expected) << scale;
  }
  EXPECT_EQ(levels.Level(noise.Picture, 0.001), expected);
  EXPECT_EQ(expected.size(), QSize(2, 1));
}

TEST(PictureLevels, ASmallerLevelNeedsNoOtherToBeAskedForBefore) {
  const Noise noise(300, 402);
  PictureLevels levels;
  EXPECT_EQ(levels.Level(noise.Picture, 0.1), Halved(Halved(Halved(Wrapped(noise.Picture)))));
  EXPECT_EQ(levels.HalfParts(), 0);
  EXPECT_FALSE(levels.Busy());
}

TEST(PictureLevels, OfTheHalfIsMadeWhatIsLookedAt) {
  const Noise noise(1400, 1100);
  const QImage expected = Halved(Wrapped(noise.Picture));
  PictureLevels levels;
  // Half of it is (200, 150) to (310, 240), which lies in two of its squares of 256 pixels; there are 3 by 3.
  const QImage& half = levels.Level(noise.Picture, 0.4, QRectF(400, 300, 220, 180));
  EXPECT_EQ(levels.HalfParts(), 2);
  EXPECT_EQ(levels.AllHalfParts(), 9);
  EXPECT_EQ(half.copy(200, 150, 110, 90), expected.copy(200, 150, 110, 90));
  EXPECT_EQ(half.copy(0, 0, 512, 256), expected.copy(0, 0, 512, 256));
  levels.Level(noise.Picture, 0.4, QRectF(420, 310, 200, 170));
  EXPECT_EQ(levels.HalfParts(), 2) << "it is kept";
  // Half of it begins and ends at edges of squares, (512, 200) to (700, 256), beyond which smoothing looks: of two
  // columns two rows, of which one has been made.
  levels.Level(noise.Picture, 0.4, QRectF(1024, 400, 376, 112));
  EXPECT_EQ(levels.HalfParts(), 5);
  EXPECT_EQ(levels.Level(noise.Picture, 0.4), expected);
  EXPECT_EQ(levels.HalfParts(), 9);
}

TEST(PictureLevels, ThoseOfALargePictureAreMadeBeforeTheyAreAskedFor) {
  const Noise noise(LevelsSide, LevelsSide);
  PictureLevels levels;
  levels.Level(noise.Picture, 1);
  EXPECT_TRUE(levels.Busy());
  WaitUntilDone(levels);
  EXPECT_EQ(levels.HalfParts(), 0) << "the half would be too large to lie there unseen";
  QImage expected = Halved(Wrapped(noise.Picture));
  for (const double scale : {0.2, 0.1, 0.05}) {
    expected = Halved(expected);
    EXPECT_EQ(levels.Level(noise.Picture, scale), expected) << scale;
  }
}

TEST(PictureLevels, ThoseOfALargePictureMayBeAskedForBeforeTheyAreMade) {
  const Noise noise(LevelsSide, LevelsSide);
  PictureLevels levels;
  const QImage expected = Halved(Halved(Wrapped(noise.Picture)));
  EXPECT_EQ(levels.Level(noise.Picture, 0.2), expected);
  EXPECT_TRUE(levels.Busy()) << "with the smaller ones";
  QCoreApplication::processEvents();
  EXPECT_EQ(levels.Level(noise.Picture, 0.1), Halved(expected));
  WaitUntilDone(levels);
  EXPECT_EQ(levels.Level(noise.Picture, 0.2), expected);
}

TEST(PictureLevels, AnotherPictureMayComeWhileTheyAreMade) {
  Noise first(LevelsSide, LevelsSide);
  const Noise second(LevelsSide + 2, LevelsSide);
  PictureLevels levels;
  levels.Level(first.Picture, 1);
  QCoreApplication::processEvents();
  first.Picture = {};
  EXPECT_FALSE(first.Held.expired()) << "it is being read";
  levels.Level(second.Picture, 1);
  EXPECT_TRUE(first.Held.expired());
  WaitUntilDone(levels);
  EXPECT_EQ(levels.Level(second.Picture, 0.2), Halved(Halved(Wrapped(second.Picture))));
  EXPECT_EQ(levels.HalfParts(), 0);
}

TEST(PictureLevels, TheEndMayComeWhileTheyAreMade) {
  Noise noise(LevelsSide, LevelsSide);
  {
    PictureLevels levels;
    levels.Level(noise.Picture, 1);
    EXPECT_TRUE(levels.Busy());
    QCoreApplication::processEvents();
    noise.Picture = {};
  }
  EXPECT_TRUE(noise.Held.expired());
  QCoreApplication::processEvents();
}

TEST(PictureLevels, AMoveTakesTheWorkAlong) {
  const Noise noise(LevelsSide, LevelsSide);
  PictureLevels first;
  first.Level(noise.Picture, 1);
  PictureLevels second = std::move(first);
  WaitUntilDone(second);
  EXPECT_EQ(second.Level(noise.Picture, 0.2), Halved(Halved(Wrapped(noise.Picture))));
}

}  // namespace
}  // namespace kestrel::shell
