#include "base/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "base/numbers.h"

namespace kestrel::base {
namespace {

constexpr double UnixEpoch = 25569;  // 1970-01-01 as days since 1899-12-30
constexpr double SecondsPerDay = 86400;
constexpr double FirstDate = -657435;  // the day before the year 100
constexpr double EndDate = 2958466;    // the day after the year 9999

std::tm LocalTime(std::time_t time) {
  std::tm parts{};
#ifdef _WIN32
  localtime_s(&parts, &time);
#else
  localtime_r(&time, &parts);
#endif
  return parts;
}

double DateOf(const std::tm& parts) {
  const std::chrono::sys_days day = std::chrono::year(parts.tm_year + 1900) / (parts.tm_mon + 1) /
                                    std::chrono::day(static_cast<unsigned>(parts.tm_mday));
  const double seconds = parts.tm_hour * 3600.0 + parts.tm_min * 60.0 + parts.tm_sec;
  return UnixEpoch + static_cast<double>(day.time_since_epoch().count()) + seconds / SecondsPerDay;
}

}  // namespace

std::uint32_t SystemClock::TickCount() const {
  const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

double SystemClock::Now() const {
  // The log asks at each of its lines.
  thread_local std::time_t second = -1;
  thread_local double date = 0;
  const std::time_t now = std::time(nullptr);
  if (now != second) {
    date = DateOf(LocalTime(now));
    second = now;
  }
  return date;
}

CalendarTime CalendarOf(double date) {
  if (!(date > FirstDate && date < EndDate)) date = 0;
  auto day = static_cast<int>(std::trunc(date));
  // Before day 0 the fraction still counts forward from midnight.
  auto seconds = static_cast<int>(std::lround(std::abs(date - day) * SecondsPerDay));
  if (seconds == static_cast<int>(SecondsPerDay)) {
    seconds = 0;
    ++day;
  }
  const std::chrono::year_month_day parts(std::chrono::sys_days(std::chrono::days(day - static_cast<int>(UnixEpoch))));
  return {int(parts.year()),
          static_cast<int>(unsigned(parts.month())),
          static_cast<int>(unsigned(parts.day())),
          seconds / 3600,
          seconds / 60 % 60,
          seconds % 60};
}

std::string DateText(double date) {
  const CalendarTime time = CalendarOf(date);
  std::string text;
  AppendFormat(text, time.Day, "00");
  text += '/';
  AppendFormat(text, time.Month, "00");
  text += '/';
  AppendFormat(text, time.Year, "0000");
  return text;
}

std::string TimeText(double date) {
  if (!std::isfinite(date)) date = 0;
  const double ofDay = std::abs(date - std::trunc(date)) * SecondsPerDay;
  const int seconds = static_cast<int>(std::lround(ofDay)) % static_cast<int>(SecondsPerDay);
  std::string text;
  AppendFormat(text, seconds / 3600, "00");
  text += ':';
  AppendFormat(text, seconds / 60 % 60, "00");
  text += ':';
  AppendFormat(text, seconds % 60, "00");
  return text;
}

}  // namespace kestrel::base
