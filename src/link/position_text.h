#pragma once

#include <string>
#include <string_view>

// The feed's thousands of numbers for each cycle. Both give exactly what base/numbers.h gives; they know the one form
// that nearly all of them have and leave the rest to it.
namespace kestrel::link {

/// As base::InvariantNumber.
double FeedNumber(std::string_view text);

/// As base::WholeNumber, 0 when the text does not convert.
double FeedNumberOrZero(std::string_view text);

/// As base::AppendFormat with "0000.000".
void AppendPosition(std::string& out, double value);

}  // namespace kestrel::link
