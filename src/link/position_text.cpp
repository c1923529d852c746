#include "link/position_text.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/numbers.h"

namespace kestrel::link {

void AppendPosition(std::string& out, double value) {
  constexpr double picturedBelow = 9999;
  constexpr double safelyOffHalf = 1e-6;
  const double thousandths = value * 1000;
  const double rounded = value >= 0 && value < picturedBelow ? std::floor(thousandths + 0.5) : -1;
  // Next to a half the rounding is a matter of the last digits, which base/numbers.h judges.
  if (rounded < 0 || std::abs(std::abs(thousandths - rounded) - 0.5) < safelyOffHalf) {
    base::AppendFormat(out, value, "0000.000");
    return;
  }
  auto left = static_cast<std::uint32_t>(rounded);
  char text[8];
  for (std::size_t i = 8; i-- > 0;) {
    if (i == 4) {
      text[i] = '.';
      continue;
    }
    text[i] = static_cast<char>('0' + left % 10);
    left /= 10;
  }
  out.append(text, sizeof text);
}

}  // namespace kestrel::link
