#include "shell/radio/freq_images.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>

namespace kestrel::shell {
namespace {

QImage Drawn(const QIcon& icon, int side) { return icon.pixmap(side, side).toImage(); }

/// How much of the two is not covered alike, whatever the colours; pixels.
double Difference(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) sum += std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))) / 255.0;
  }
  return sum;
}

TEST(FreqImages, AreSevenAndDifferInTheirShapes) {
  const std::vector<QIcon> images = FreqImages();
  ASSERT_EQ(images.size(), 7U);
  constexpr int side = 16;
  for (std::size_t one = 0; one < images.size(); ++one) {
    for (std::size_t other = 0; other < one; ++other) {
      EXPECT_GT(Difference(Drawn(images[one], side), Drawn(images[other], side)), 20.0) << one << " and " << other;
    }
  }
}

TEST(FreqImages, StandInTheOrderOfTheirNumbers) {
  const std::vector<QIcon> images = FreqImages();
  ASSERT_EQ(images.size(), 7U);
  for (int number = 1; number <= 7; ++number) {
    EXPECT_EQ(Drawn(images[static_cast<std::size_t>(number) - 1], 32),
              Drawn(FreqImageOf(static_cast<radio::FreqImage>(number)), 32))
        << number;
  }
}

}  // namespace
}  // namespace kestrel::shell
