#include "link/position_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "base/numbers.h"

namespace kestrel::link {
namespace {

TEST(PositionText, PositionsAreWrittenAsTheGeneralRoadDoes) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> near(-1, 10001);
  const auto check = [](double value) {
    std::string quick;
    AppendPosition(quick, value);
    EXPECT_EQ(quick, base::FormatInvariant(value, "0000.000")) << std::hexfloat << value;
  };
  for (int round = 0; round < 100000; ++round) {
    check(near(random));
    // On and beside the halves, where the rounding turns.
    const double half = static_cast<double>(random() % 10000000) / 1000 + 0.0005;
    check(half);
    check(std::nextafter(half, 0));
    check(half * (1 + 1e-13));
    check(half + 1e-9);
  }
  for (const double value :
       {0.0, -0.0, -0.0001, -5.0, 9998.9999, 9999.0, 9999.9995, 1e15, 1e300, -1e300, HUGE_VAL, std::nan("")}) {
    check(value);
  }
}

TEST(PositionText, IsMadeOfTheLatestPosition) {
  PositionText text;
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text, "");
  text.Set(1, 2);
  EXPECT_FALSE(text.empty());
  text.Set(12.5, 1023.0625);
  EXPECT_EQ(text, "0012.5001023.063");
  EXPECT_EQ(text.size(), 16u);
  const PositionText copy = text;
  text.Set(3, 4);
  EXPECT_EQ(copy, "0012.5001023.063");
  EXPECT_EQ(text, "0003.0000004.000");
  text.Set(5, 6);
  text.clear();
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text, "");
}

TEST(PositionText, MayBeAnyOther) {
  PositionText text;
  text.Set(1, 2);
  text = "of a tape";
  EXPECT_EQ(text, "of a tape");
  text.Set(1, 2);
  std::string& own = text.Text();
  EXPECT_EQ(own, "0001.0000002.000");
  own = "read";
  EXPECT_EQ(text, "read");
  EXPECT_EQ("<" + std::string(text) + ">", "<read>");
}

TEST(PositionText, IsAPlaceUnlessItReadsAsNoneOrZero) {
  const auto isPlace = [](double x, double y) {
    PositionText unread;
    unread.Set(x, y);
    PositionText read = unread;
    static_cast<void>(read.size());
    EXPECT_EQ(unread.IsPlace(), read.IsPlace()) << x << " " << y;
    EXPECT_EQ(unread.IsPlace(), unread != "0000.0000000.000") << x << " " << y;
    return unread.IsPlace();
  };
  EXPECT_FALSE(PositionText().IsPlace());
  EXPECT_FALSE(isPlace(0, 0));
  EXPECT_FALSE(isPlace(0.0004, -0.0004));
  EXPECT_TRUE(isPlace(0, 0.0005));
  EXPECT_TRUE(isPlace(0.0007, 0));
  EXPECT_TRUE(isPlace(0, 0.001));
  EXPECT_TRUE(isPlace(-0.001, 0));
  EXPECT_TRUE(isPlace(500, 0));
  EXPECT_TRUE(isPlace(1e301, 0));
  EXPECT_FALSE(isPlace(HUGE_VAL, std::nan(""))) << "what is not finite is written as 0";
  PositionText other;
  other = "0000.0000000.000";
  EXPECT_FALSE(other.IsPlace());
  other = "x";
  EXPECT_TRUE(other.IsPlace());
}

}  // namespace
}  // namespace kestrel::link
