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

PositionText& PositionText::operator=(std::string_view other) {
  text = other;
  unwritten = false;
  return *this;
}

void PositionText::clear() {
  text.clear();
  unwritten = false;
}

const std::string& PositionText::Text() const {
  if (unwritten) {
    text.clear();
    AppendPosition(text, x);
    AppendPosition(text, y);
    unwritten = false;
  }
  return text;
}

std::string& PositionText::Text() {
  static_cast<void>(std::as_const(*this).Text());
  return text;
}

bool PositionText::IsPlace() const {
  // A thousandth or more is written with another digit than 0, but for an infinity.
  constexpr double written = 0.001, finite = 1e300;
  const auto shown = [](double value) { return std::abs(value) >= written && std::abs(value) < finite; };
  if (unwritten && (shown(x) || shown(y))) return true;
  return !Text().empty() && Text() != "0000.0000000.000";
}

}  // namespace kestrel::link
