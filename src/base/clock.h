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

/// The time of day of `date` as "Hh:Nn:Ss", two digits each, rounded to the nearest second.
std::string TimeText(double date);

}  // namespace kestrel::base
