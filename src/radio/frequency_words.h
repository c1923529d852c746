#pragma once

#include <string>
#include <string_view>

namespace kestrel::radio {

/// What a value is, in words for whoever types it: "UHF 297.500 MHz", "VHF 138.050 MHz", "ILS 108.10 MHz". The number
/// is the one at its head, by which the kind is told.
std::string FrequencyWords(std::string_view value);

}  // namespace kestrel::radio
