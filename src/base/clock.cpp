#include "base/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "base/numbers.h"

namespace kestrel::base {
namespace {

constexpr double UnixEpoch = 25569;  // 1970-01-01 as days since 1899-12-30
constexpr double SecondsPerDay = 86400;

std::tm LocalTime(std::time_t time) {
  std::tm parts{};
#ifdef _WIN32
  localtime_s(&parts, &time);
#else
  localtime_r(&time, &parts);
#endif
  return parts;
}

}  // namespace

std::uint32_t SystemClock::TickCount() const {
  const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

double SystemClock::Now() const {
  const std::tm parts = LocalTime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
  const std::chrono::sys_days day = std::chrono::year(parts.tm_year + 1900) / (parts.tm_mon + 1) /
                                    std::chrono::day(static_cast<unsigned>(parts.tm_mday));
  const double seconds = parts.tm_hour * 3600.0 + parts.tm_min * 60.0 + parts.tm_sec;
  return UnixEpoch + static_cast<double>(day.time_since_epoch().count()) + seconds / SecondsPerDay;
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
