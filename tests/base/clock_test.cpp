#include "base/clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

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

/// "1899-12-30 00:00:00"
std::string Written(const CalendarTime& time) {
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.Year, time.Month, time.Day, time.Hour,
                time.Minute, time.Second);
  return text;
}

TEST(Clock, CalendarIsTheDateAndTimeToTheNearestSecond) {
  EXPECT_EQ(Written(CalendarOf(0)), "1899-12-30 00:00:00");
  EXPECT_EQ(Written(CalendarOf(36526.5)), "2000-01-01 12:00:00");
  EXPECT_EQ(Written(CalendarOf(46347 + 32707.0 / 86400)), "2026-11-21 09:05:07");
  EXPECT_EQ(Written(CalendarOf(46387 + 86399.4 / 86400)), "2026-12-31 23:59:59");
  EXPECT_EQ(Written(CalendarOf(46387 + 86399.6 / 86400)), "2027-01-01 00:00:00");
  EXPECT_EQ(Written(CalendarOf(-1.25)), "1899-12-29 06:00:00");
  EXPECT_EQ(Written(CalendarOf(-657434)), "0100-01-01 00:00:00");
  EXPECT_EQ(Written(CalendarOf(2958465.5)), "9999-12-31 12:00:00");
}

TEST(Clock, DateTextIsDayMonthAndYear) {
  EXPECT_EQ(DateText(46347.5), "21/11/2026");
  EXPECT_EQ(DateText(36526), "01/01/2000");
  EXPECT_EQ(DateText(std::numeric_limits<double>::quiet_NaN()), "30/12/1899");
}

TEST(Clock, CalendarOfStrangeDatesIsDay0) {
  for (const double date : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300,
                            -1e300, 2958466.0, -657435.0}) {
    EXPECT_EQ(Written(CalendarOf(date)), "1899-12-30 00:00:00") << date;
  }
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
