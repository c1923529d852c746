#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/failure.h"
#include "base/text.h"

namespace kestrel::base {
namespace {

// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> ExactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }
constexpr bool IsSpace(char letter) { return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n'; }

/// What the grammar of a number found in a text.
struct Scan {
  std::size_t Begin = 0;                       ///< first digit or point, behind the sign
  std::size_t End = 0;                         ///< behind the last character that belongs to the number
  std::size_t Point = std::string_view::npos;  ///< where its decimal sign stands
  bool Negative = false;
  bool HasExponent = false;
  std::size_t Digits = 0;      ///< digits before the exponent
  int Significant = 0;         ///< those from the first one that is not 0
  std::uint64_t Mantissa = 0;  ///< the first 18 of them as a number
};

void ScanDigits(std::string_view text, std::size_t& at, Scan& scan) {
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    ++scan.Digits;
    if (scan.Significant == 0 && text[at] == '0') continue;
    if (scan.Significant < 18) scan.Mantissa = scan.Mantissa * 10 + static_cast<std::uint64_t>(text[at] - '0');
    scan.Significant = std::min(scan.Significant + 1, 19);
  }
}

Scan ScanNumber(std::string_view text, bool commaIsPoint) {
  Scan scan;
  std::size_t at = 0;
  while (at < text.size() && IsSpace(text[at])) ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) scan.Negative = text[at++] == '-';
  scan.Begin = at;
  ScanDigits(text, at, scan);
  if (at < text.size() && (text[at] == '.' || (commaIsPoint && text[at] == ','))) {
    scan.Point = at++;
    ScanDigits(text, at, scan);
  }
  scan.End = at;
  if (scan.Digits == 0 || at == text.size() || (text[at] != 'e' && text[at] != 'E')) return scan;
  ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  if (at == text.size() || !IsDigit(text[at])) return scan;
  while (at < text.size() && IsDigit(text[at])) ++at;
  scan.HasExponent = true;
  scan.End = at;
  return scan;
}

/// True when a number that no double holds is too large rather than too small. `number` has no sign.
bool IsTooLarge(std::string_view number) {
  const std::size_t mark = number.find_first_of("eE");
  const std::string_view digits = number.substr(0, mark);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
  std::int64_t exponent = static_cast<std::int64_t>(point) - first;
  if (mark != std::string_view::npos) {
    std::string_view power = number.substr(mark + 1);
    const bool negative = power.front() == '-';
    if (negative || power.front() == '+') power.remove_prefix(1);
    std::int64_t written = 0;
    for (const char digit : power) written = std::min<std::int64_t>(written * 10 + (digit - '0'), 1'000'000'000'000);
    exponent += negative ? -written : written;
  }
  return exponent > 0;
}

/// The general road for long numbers and exponents.
double SlowNumber(std::string_view number) {
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  return IsTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
}

double ValueOf(std::string_view text, const Scan& scan) {
  if (scan.Mantissa == 0) return scan.Negative ? -0.0 : 0.0;
  const std::size_t decimals = scan.Point == std::string_view::npos ? 0 : scan.End - scan.Point - 1;
  double value = 0;
  if (!scan.HasExponent && scan.Significant <= 15 && decimals < ExactPowers.size()) {
    // Both numbers are exact, so the one division gives the nearest double.
    value = static_cast<double>(scan.Mantissa) / ExactPowers[decimals];
  } else {
    const std::string_view number = text.substr(scan.Begin, scan.End - scan.Begin);
    if (scan.Point != std::string_view::npos && text[scan.Point] == ',') {
      std::string pointed(number);
      pointed[scan.Point - scan.Begin] = '.';
      value = SlowNumber(pointed);
    } else {
      value = SlowNumber(number);
    }
  }
  return scan.Negative ? -value : value;
}

/// A picture taken apart.
struct NumberPicture {
  std::size_t WholePlaces = 0;   ///< least digits before the point
  std::size_t Decimals = 0;      ///< most digits behind it
  std::size_t KeptDecimals = 0;  ///< least digits behind it
  bool Point = false;
};

NumberPicture ReadPattern(std::string_view pattern) {
  NumberPicture picture;
  const std::size_t point = pattern.find('.');
  const std::string_view whole = pattern.substr(0, point);
  if (const std::size_t first = whole.find('0'); first != std::string_view::npos) {
    picture.WholePlaces = whole.size() - first;
  }
  if (point == std::string_view::npos) return picture;
  const std::string_view fraction = pattern.substr(point + 1);
  picture.Point = true;
  picture.Decimals = fraction.size();
  if (const std::size_t last = fraction.rfind('0'); last != std::string_view::npos) picture.KeptDecimals = last + 1;
  return picture;
}

/// Appends `digits`, the value times 10^Decimals as a whole number without leading zeros, in the picture.
void AppendDigits(std::string& out, bool negative, std::string_view digits, const NumberPicture& picture) {
  if (negative && !digits.empty()) out += '-';
  const std::size_t wholeDigits = digits.size() > picture.Decimals ? digits.size() - picture.Decimals : 0;
  if (wholeDigits < picture.WholePlaces) out.append(picture.WholePlaces - wholeDigits, '0');
  out += digits.substr(0, wholeDigits);
  if (!picture.Point) return;
  out += '.';
  std::string_view fraction = digits.substr(wholeDigits);
  std::size_t zeros = picture.Decimals - fraction.size();
  std::size_t shown = picture.Decimals;
  while (shown > picture.KeptDecimals && (shown <= zeros || fraction[shown - zeros - 1] == '0')) --shown;
  zeros = std::min(zeros, shown);
  out.append(zeros, '0');
  out += fraction.substr(0, shown - zeros);
}

/// The exact road: the 15 significant digits of `value`, cut to `decimals` digits behind the point, halves away from
/// zero.
std::string RoundedDigits(double value, std::size_t decimals) {
  std::array<char, 32> text;
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 14);
  const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
  int exponent = 0;
  std::string_view power = written.substr(17);  // behind "d.dddddddddddddde"
  const bool small = power.front() == '-';
  std::from_chars(power.data() + 1, power.data() + power.size(), exponent);
  if (small) exponent = -exponent;

  std::string digits(1, written[0]);
  digits += written.substr(2, 14);
  const std::ptrdiff_t kept = exponent + 1 + static_cast<std::ptrdiff_t>(decimals);
  if (kept < 0) return {};
  if (kept >= static_cast<std::ptrdiff_t>(digits.size())) {
    digits.append(static_cast<std::size_t>(kept) - digits.size(), '0');
    return digits;
  }
  const bool up = digits[static_cast<std::size_t>(kept)] >= '5';
  digits.resize(static_cast<std::size_t>(kept));
  if (!up) return digits;
  const std::size_t nines = digits.size() - (digits.find_last_not_of('9') + 1);
  std::fill(digits.end() - static_cast<std::ptrdiff_t>(nines), digits.end(), '0');
  if (nines == digits.size()) return "1" + digits;
  ++digits[digits.size() - nines - 1];
  return digits;
}

}  // namespace

double LeadingNumber(std::string_view text) { return ValueOf(text, ScanNumber(text, false)); }

double ParseInvariantNumber(std::string& text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return LeadingNumber(text);
}

double InvariantNumber(std::string_view text) { return ValueOf(text, ScanNumber(text, true)); }

std::optional<double> WholeNumber(std::string_view text) {
  text = Trim(text);
  const Scan scan = ScanNumber(text, true);
  if (scan.Digits == 0 || scan.End != text.size() || IsSpace(text.front())) return std::nullopt;
  const double value = ValueOf(text, scan);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::int16_t Int16FromText(std::string_view text) {
  std::string_view digits = Trim(text);
  // from_chars takes a "-" but no "+".
  if (digits.size() > 1 && digits[0] == '+' && IsDigit(digits[1])) digits.remove_prefix(1);
  std::int16_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) {
    throw RuntimeFailure("\"" + std::string(text.substr(0, 40)) + "\" is no 16-bit number");
  }
  return value;
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::int16_t ToInt16(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= -32768.0 && rounded <= 32767.0)) throw RuntimeFailure("a number does not fit 16 bits");
  return static_cast<std::int16_t>(rounded);
}

std::int32_t ToInt32(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) throw RuntimeFailure("a number does not fit 32 bits");
  return static_cast<std::int32_t>(rounded);
}

void AppendFormat(std::string& out, double value, std::string_view pattern) {
  const NumberPicture picture = ReadPattern(pattern);
  if (!std::isfinite(value)) value = 0;
  const bool negative = value < 0;
  const double size = std::abs(value);
  if (picture.Decimals < ExactPowers.size()) {
    const double scaled = size * ExactPowers[picture.Decimals];
    if (scaled < 1e15) {
      const double whole = std::floor(scaled);
      const double rest = scaled - whole;
      // Cutting to 15 digits moves the value by less than 5e-15 of itself. Further from one half than that, the
      // nearest whole number is certain.
      if (std::abs(rest - 0.5) > scaled * 1e-14 + 1e-12) {
        const auto number = static_cast<std::uint64_t>(whole) + (rest > 0.5 ? 1 : 0);
        std::array<char, 24> text;
        const char* end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
        const auto length = number == 0 ? 0 : static_cast<std::size_t>(end - text.data());
        AppendDigits(out, negative, std::string_view(text.data(), length), picture);
        return;
      }
    }
  }
  AppendDigits(out, negative, RoundedDigits(size, picture.Decimals), picture);
}

std::string FormatInvariant(double value, std::string_view pattern) {
  std::string text;
  AppendFormat(text, value, pattern);
  return text;
}

}  // namespace kestrel::base
