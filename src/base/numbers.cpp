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

/// So many digits are held exactly by a double.
constexpr std::ptrdiff_t ExactDigits = 15;

constexpr bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }
constexpr bool IsSpace(char letter) { return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n'; }

/// The number at the head of a text.
struct Head {
  double Value = 0;
  const char* End = nullptr;  ///< behind the last character that belongs to it; null when there is none
};

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

/// The general road, for long numbers and exponents: `text` begins with a digit, or a decimal sign and a digit, and
/// `point` is its decimal sign, if any.
Head ReadLong(std::string_view text, const char* point) {
  std::string pointed;
  std::string_view number = text;
  if (point != nullptr && *point == ',') {
    pointed = text;
    pointed[static_cast<std::size_t>(point - text.data())] = '.';
    number = pointed;
  }
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  const auto length = static_cast<std::size_t>(end - number.data());
  if (error == std::errc::result_out_of_range) {
    value = IsTooLarge(number.substr(0, length)) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return {value, text.data() + length};
}

/// The number that `text` begins with, blanks already skipped.
inline Head ReadHead(std::string_view text, bool commaIsPoint) {
  const char* at = text.data();
  const char* const end = at + text.size();
  const bool negative = at != end && *at == '-';
  if (at != end && (*at == '-' || *at == '+')) ++at;
  const char* const begin = at;
  const char* point = nullptr;
  std::uint64_t digits = 0;
  for (; at != end; ++at) {
    if (IsDigit(*at)) {
      digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    } else if (point == nullptr && (*at == '.' || (commaIsPoint && *at == ','))) {
      point = at;
    } else {
      break;
    }
  }
  const std::ptrdiff_t count = at - begin - (point == nullptr ? 0 : 1);
  Head head;
  if (count <= ExactDigits && (at == end || (*at != 'e' && *at != 'E'))) {
    head.Value = static_cast<double>(static_cast<std::int64_t>(digits));
    // Both numbers are exact, so the one division gives the nearest double.
    if (point != nullptr) head.Value /= ExactPowers[static_cast<std::size_t>(at - point - 1)];
    if (count > 0) head.End = at;
  } else if (count > 0) {
    head = ReadLong({begin, static_cast<std::size_t>(end - begin)}, point);
  }
  if (negative) head.Value = -head.Value;
  return head;
}

/// The number at the head of `text`, blanks skipped.
double ReadLeading(std::string_view text, bool commaIsPoint) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return ReadHead(text, commaIsPoint).Value;
}

/// The number that all of `text` is, blanks at its ends aside; not finite when it is none.
double ReadWhole(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  // A few digits and nothing else is what most fields are.
  std::int32_t plain = 0;
  std::size_t digits = 0;
  while (digits < text.size() && digits < 9 && IsDigit(text[digits])) plain = plain * 10 + (text[digits++] - '0');
  if (digits > 0 && digits == text.size()) return plain;
  const Head head = ReadHead(text, true);
  const auto isBlank = [](char letter) { return letter == ' '; };
  if (head.End == nullptr || !std::all_of(head.End, text.data() + text.size(), isBlank)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  return head.Value;
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

double LeadingNumber(std::string_view text) { return ReadLeading(text, false); }

double ParseInvariantNumber(std::string& text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return LeadingNumber(text);
}

double InvariantNumber(std::string_view text) { return ReadLeading(text, true); }

double WholeNumberOrZero(std::string_view text) {
  const double value = ReadWhole(text);
  return std::isfinite(value) ? value : 0;
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
