#pragma once

#include <cstdint>
#include <string>

namespace kestrel::base {

/// Seam: the time, so that tests own it.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Milliseconds since the system started, wrapping as a 32-bit count does.
  virtual std::uint32_t TickCount() const = 0;
  /// Local date and time: days since 1899-12-30, the fraction being the time of the day. SystemClock gives whole
  /// seconds.
  virtual double Now() const = 0;
};

/// The clock of the system.
class SystemClock final : public Clock {
 public:
  std::uint32_t TickCount() const override;
  double Now() const override;
};

/// A date as people write it.
struct CalendarTime {
  int Year = 1899;
  int Month = 12;  ///< 1..12
  int Day = 30;    ///< 1..31
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
};

/// `date` (days since 1899-12-30) to the nearest second. A date that is not finite or outside of the years 100 to 9999
/// is day 0.
CalendarTime CalendarOf(double date);

/// The day of `date` as "dd/mm/yyyy".
std::string DateText(double date);

/// The time of day of `date` as "Hh:Nn:Ss", two digits each, rounded to the nearest second.
std::string TimeText(double date);

}  // namespace kestrel::base
