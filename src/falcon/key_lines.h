#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace kestrel::falcon {

/// A line of a text file that gives a key its value; views into the text.
struct KeyLine {
  std::string_view Key;
  std::string_view Value;
};

/// The lines of `text` that have a key: up to the first `separator`, or where that is a blank up to the first blank or
/// tab. Blanks, tabs and the line's end around key and value do not count; lines without a value are left out.
std::vector<KeyLine> KeyLines(std::string_view text, char separator);

/// The value of the first line with that key, whatever its case; nothing when there is none.
std::optional<std::string_view> ValueOf(const std::vector<KeyLine>& lines, std::string_view key);

}  // namespace kestrel::falcon
