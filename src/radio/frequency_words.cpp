#include "radio/frequency_words.h"

#include "base/numbers.h"
#include "radio/frequencies.h"

namespace kestrel::radio {
namespace {

/// `perMHz` steps of the number are a megahertz.
std::string InMHz(std::string_view kind, std::string_view value, double perMHz, std::string_view picture) {
  const double steps = base::RoundHalfEven(base::LeadingNumber(value));
  return std::string(kind) + " " + base::FormatInvariant(steps / perMHz, picture) + " MHz";
}

}  // namespace

std::string FrequencyWords(std::string_view value) {
  if (value == "0") return "none: tunes both radios";
  if (IsUHF(value)) return InMHz("UHF", value, 1000, "0.000");
  if (IsVHF(value)) return InMHz("VHF", value, 1000, "0.000");
  if (IsILS(value)) return InMHz("ILS", value, 100, "0.00");
  return "no frequency that the radios know";
}

}  // namespace kestrel::radio
