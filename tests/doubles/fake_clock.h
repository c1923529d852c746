#pragma once

#include <cstdint>
#include <functional>

#include "base/clock.h"

namespace kestrel::doubles {

/// A clock that stands where the test puts it.
class FakeClock final : public base::Clock {
 public:
  std::uint32_t TickCount() const override {
    if (WhenRead) WhenRead();
    return Ticks;
  }
  double Now() const override { return Date; }

  std::uint32_t Ticks = 0;
  std::function<void()> WhenRead;  ///< run before each reading of the ticks
  double Date = 45000.5;           ///< noon: "12:00:00"
};

}  // namespace kestrel::doubles
