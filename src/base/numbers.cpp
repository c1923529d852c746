#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
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

// The fields of the wire are numbers behind blanks that fill them. Their characters are looked at together, as the
// bytes of numbers with the first character lowest: how many are blanks and digits differs from field to field, and a
// branch on it would be taken wrongly again and again.

constexpr std::uint64_t EveryByte = 0x0101010101010101;
constexpr bool FirstIsLowest = std::endian::native == std::endian::little;

/// Up to 16 characters, zeros behind them.
struct Characters {
  std::uint64_t Low = 0;   ///< the first eight
  std::uint64_t High = 0;  ///< those behind them
};

std::uint64_t EightAt(const char* at) {
  std::uint64_t eight = 0;
  std::memcpy(&eight, at, sizeof eight);
  return eight;
}

/// `text` has 8 to 16 characters.
Characters CharactersOf(std::string_view text) {
  const std::uint64_t last = EightAt(text.data() + text.size() - 8);
  return {EightAt(text.data()), text.size() == 8 ? 0 : last >> 8 * (16 - text.size())};
}

// Of two shifts where one would be by 64, which is none.

/// Without the first `count`, at most 8.
Characters Behind(Characters all, unsigned count) {
  if (count == 8) return {all.High, 0};
  return {all.Low >> 8 * count | all.High << 1 << (63 - 8 * count), all.High >> 8 * count};
}

/// `gap`, less than 16, zeros in front; as many characters fall off the end.
Characters BehindZeros(Characters all, unsigned gap) {
  if (gap >= 8) {
    all = {0, all.Low};
    gap -= 8;
  }
  return {all.Low << 8 * gap, all.High << 8 * gap | all.Low >> 1 >> (63 - 8 * gap)};
}

char CharacterAt(Characters all, unsigned index) {
  return static_cast<char>((index < 8 ? all.Low : all.High) >> 8 * (index % 8));
}

/// Without the one at `index`, less than 16: those behind it move up.
Characters Without(Characters all, unsigned index) {
  const Characters moved = Behind(all, 1);
  const std::uint64_t before = (std::uint64_t{1} << 8 * (index % 8)) - 1;
  if (index < 8) return {(all.Low & before) | (moved.Low & ~before), moved.High};
  return {all.Low, (all.High & before) | (moved.High & ~before)};
}

/// How many bytes at the low end are 0; 8 when all are.
unsigned LowZeroBytes(std::uint64_t bytes) { return static_cast<unsigned>(std::countr_zero(bytes)) / 8; }

/// A byte is 0 where a digit stands, up to the first where none does; from there on they tell nothing.
std::uint64_t NoDigits(std::uint64_t eight) {
  constexpr std::uint64_t highHalves = 0xF0 * EveryByte, digits = 0x30 * EveryByte;
  return ((eight & highHalves) ^ digits) | (((eight + 6 * EveryByte) & highHalves) ^ digits);
}

unsigned DigitsAtFront(Characters all) {
  const unsigned count = LowZeroBytes(NoDigits(all.Low));
  return count < 8 ? count : 8 + LowZeroBytes(NoDigits(all.High));
}

/// The number of eight digits; bytes of 0 in front count as "0".
std::uint64_t ValueOf(std::uint64_t digits) {
  digits = (digits & (0x0F * EveryByte)) * (1 + (10 << 8)) >> 8;
  digits = (digits & 0x00FF00FF00FF00FF) * (1 + (100 << 16)) >> 16;
  return (digits & 0x0000FFFF0000FFFF) * (1 + (std::uint64_t{10000} << 32)) >> 32;
}

/// The number that a field of 8 to 16 characters is, when it has blanks in front, then digits, perhaps a decimal sign
/// and digits again, up to its end; for any other it answers false.
bool ReadField(std::string_view field, bool commaIsPoint, double& value) {
  if (!FirstIsLowest || field.size() < 8 || field.size() > 16) return false;
  Characters left = CharactersOf(field);
  const unsigned blanks = LowZeroBytes(left.Low ^ 0x20 * EveryByte);
  left = Behind(left, blanks);
  const auto length = static_cast<unsigned>(field.size()) - blanks;
  const unsigned whole = DigitsAtFront(left);
  unsigned decimals = 0;
  if (whole < length) {
    const char sign = CharacterAt(left, whole);
    if (sign != '.' && !(commaIsPoint && sign == ',')) return false;
    left = Without(left, whole);
    decimals = length - whole - 1;
  }
  const unsigned digits = whole + decimals;
  if (digits == 0 || digits > ExactDigits || DigitsAtFront(left) != digits) return false;
  left = BehindZeros(left, 16 - digits);
  value = static_cast<double>(static_cast<std::int64_t>(ValueOf(left.Low) * 100'000'000 + ValueOf(left.High)));
  // Both numbers are exact, so the one division gives the nearest double.
  if (decimals > 0) value /= ExactPowers[decimals];
  return true;
}

/// The number at the head of `text`, blanks skipped.
double ReadLeading(std::string_view text, bool commaIsPoint) {
  if (double value = 0; ReadField(text, commaIsPoint, value)) return value;
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return ReadHead(text, commaIsPoint).Value;
}

/// Three characters as a whole number, blanks in front of it; -1 for anything else.
std::int32_t ReadThree(std::string_view three) {
  const auto byte = [three](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(three[i])}; };
  // Behind a blank that is none on the wire.
  const std::uint32_t text = 0x20 | byte(0) << 8 | byte(1) << 16 | byte(2) << 24;
  const std::uint32_t behindBlanks = text ^ 0x20202020;
  if (behindBlanks == 0) return -1;
  const std::uint32_t number = ~std::uint32_t{0} << (std::countr_zero(behindBlanks) & ~7);
  const std::uint32_t digits = (text ^ 0x30303030) & number;
  if (((digits | (digits + 0x06060606)) & 0xF0F0F0F0) != 0) return -1;
  return static_cast<std::int32_t>((digits >> 8 & 0xFF) * 100 + (digits >> 16 & 0xFF) * 10 + (digits >> 24));
}

/// The number that all of `text` is, blanks at its ends aside; not finite when it is none.
double ReadWhole(std::string_view text) {
  if (text.size() == 3) {
    if (const std::int32_t value = ReadThree(text); value >= 0) return value;
  }
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

/// RoundHalfEven, but for the sign of a zero, of what lies within 2^51; other values stay far outside of it.
double RoundedSmall(double value) {
  constexpr double endOfFractions = 6755399441055744;  // 1.5 * 2^52: from 2^52 on a double has no fraction
  return value + endOfFractions - endOfFractions;
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
  const double rounded = RoundedSmall(value);
  if (!(rounded >= -32768.0 && rounded <= 32767.0)) throw RuntimeFailure("a number does not fit 16 bits");
  return static_cast<std::int16_t>(rounded);
}

std::int32_t ToInt32(double value) {
  const double rounded = RoundedSmall(value);
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
