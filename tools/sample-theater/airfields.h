#pragma once

#include <string>

namespace kestrel::land {

/// The text of the theater's `_Frequencies.dat`: the airfields of three teams with TACAN and ILS, and some noted
/// frequencies. It leaves out the channels, which are then as never set.
std::string FrequencyFileText();

}  // namespace kestrel::land
