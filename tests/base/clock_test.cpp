#include "base/clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace kestrel::base {
namespace {

TEST(Clock, TimeTextRoundsToTheNearestSecond) {
  EXPECT_EQ(TimeText(0), "00:00:00");
  EXPECT_EQ(TimeText(45000.5), "12:00:00");
  EXPECT_EQ(TimeText(45000 + 3723.0 / 86400), "01:02:03");
  EXPECT_EQ(TimeText(45000 + 86399.4 / 86400), "23:59:59");
  EXPECT_EQ(TimeText(45000 + 86399.6 / 86400), "00:00:00");
}

TEST(Clock, TimeTextOfEverySecondIsThatSecond) {
  for (int second = 0; second < 86400; ++second) {
    char wanted[32];
    std::snprintf(wanted, sizeof wanted, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
    ASSERT_EQ(TimeText(45000 + second / 86400.0), wanted);
  }
}

TEST(Clock, TimeTextOfStrangeDatesIsATime) {
  EXPECT_EQ(TimeText(std::numeric_limits<double>::quiet_NaN()), "00:00:00");
  EXPECT_EQ(TimeText(std::numeric_limits<double>::infinity()), "00:00:00");
  // Before the epoch the fraction counts forward as well.
  EXPECT_EQ(TimeText(-1.25), "06:00:00");
}

TEST(Clock, NowIsTheLocalTimeOfTheSystem) {
  const SystemClock clock;
  const std::time_t before = std::time(nullptr);
  const double now = clock.Now();
  const std::time_t after = std::time(nullptr);
  const auto daysOf = [](std::time_t time) {
    const std::tm utc = *std::gmtime(&time);
    std::tm local = *std::localtime(&time);
    local.tm_isdst = utc.tm_isdst;
    std::tm plain = utc;
    const double offset = std::difftime(std::mktime(&local), std::mktime(&plain));
    return 25569 + (static_cast<double>(time) + offset) / 86400;
  };
  EXPECT_GE(now, daysOf(before) - 1e-7);
  EXPECT_LE(now, daysOf(after) + 1e-7);
}

TEST(Clock, TickCountGoesOn) {
  const SystemClock clock;
  const std::uint32_t first = clock.TickCount();
  while (clock.TickCount() == first) {
  }
  EXPECT_LT(clock.TickCount() - first, 10000u);
}

}  // namespace
}  // namespace kestrel::base
