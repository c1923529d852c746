#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text inside the station is bytes of the single-byte code page; these touch ASCII only.
namespace kestrel::base {

/// `text` without blanks (0x20) at both ends.
std::string_view Trim(std::string_view text);
/// ASCII letters made upper or lower case; other bytes stay.
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
/// Equal without regard to the case of ASCII letters.
bool SameNoCase(std::string_view a, std::string_view b);
/// The pieces of `text` between the separators; a text without one gives itself. Views into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

}  // namespace kestrel::base
