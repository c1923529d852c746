#include "link/quick_numbers.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/numbers.h"

namespace kestrel::link {
namespace {

/// So many digits are held exactly by a double, and so are the powers of ten up to it.
constexpr std::size_t ExactDigits = 15;
constexpr std::array<double, ExactDigits + 1> PowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Digits with at most one "." or "," among or around them, and nothing else; below 0 for any other text.
double PlainNumber(std::string_view text) {
  if (text.size() > ExactDigits) return -1;
  std::uint64_t digits = 0;
  std::size_t count = 0;
  std::size_t behindPoint = 0;
  bool point = false;
  for (const char c : text) {
    const auto digit = static_cast<unsigned>(c) - '0';
    if (digit < 10) {
      digits = digits * 10 + digit;
      ++count;
      if (point) ++behindPoint;
    } else if ((c == '.' || c == ',') && !point) {
      point = true;
    } else {
      return -1;
    }
  }
  if (count == 0) return -1;
  // Both are exact, so the one division gives the nearest double.
  return static_cast<double>(static_cast<std::int64_t>(digits)) / PowersOfTen[behindPoint];
}

}  // namespace

double FeedNumber(std::string_view text) {
  const double plain = PlainNumber(text);
  return plain >= 0 ? plain : base::InvariantNumber(text);
}

double FeedNumberOrZero(std::string_view text) {
  if (text.size() > 9) return base::WholeNumber(text).value_or(0);
  std::int32_t value = 0;
  for (const char c : text) {
    const auto digit = static_cast<unsigned>(c) - '0';
    if (digit > 9) return base::WholeNumber(text).value_or(0);
    value = value * 10 + static_cast<std::int32_t>(digit);
  }
  return value;
}

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
