#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers in text, independent of the user's decimal separator and of the C locale. All number text goes through here.
namespace kestrel::base {

/// The number at the head of `text`: blanks skipped, then sign, digits, a point, digits, an exponent, as far as they go
/// on being a number. No number gives 0. A "," ends it. A value beyond a double gives an infinity of its sign.
double LeadingNumber(std::string_view text);

/// Turns every "," of `text` into "." in place, then reads it as LeadingNumber does: "12,5" is 12.5, "1.234,5"
/// is 1.234.
double ParseInvariantNumber(std::string& text);
/// The number of ParseInvariantNumber without a change of the caller's text. For the feed: no allocation.
double InvariantNumber(std::string_view text);

/// The whole of `text`, blanks at its ends aside, as a number with "." or "," as its decimal sign; 0 when any other
/// character stands in it or it is empty.
double WholeNumberOrZero(std::string_view text);

/// The whole of `text`, blanks at its ends aside, as a whole decimal number of 16 bits, with or without sign.
/// Throws RuntimeFailure otherwise. For Ids.
std::int16_t Int16FromText(std::string_view text);

/// To the nearest whole number, halves to the even one (conversion of numbers to whole numbers everywhere).
double RoundHalfEven(double value);
/// RoundHalfEven as a number of N bits; RuntimeFailure when it does not fit or is not a number.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);

/// `value` in the picture `pattern`, with "." as the decimal sign whatever the locale. "0" keeps a digit's place, "#"
/// shows a digit only when there is one: "0", "000", "0000.000", "##0.00", "0.0#####". Halves round away from zero,
/// judged on the 15 significant digits of the value, so 1.005 in "0.00" is 1.01. Zero has no sign. Infinite and
/// not-a-number values, which have no digits, come out as 0.
std::string FormatInvariant(double value, std::string_view pattern);
/// Appends to `out` what FormatInvariant gives (no allocation when it has room).
void AppendFormat(std::string& out, double value, std::string_view pattern);

}  // namespace kestrel::base
