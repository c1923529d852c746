#include "falcon/key_lines.h"

#include <algorithm>

#include "base/text.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view LineBlanks = " \t\r";

std::string_view Bare(std::string_view text) {
  const std::size_t first = text.find_first_not_of(LineBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(LineBlanks) + 1 - first);
}

}  // namespace

std::vector<KeyLine> KeyLines(std::string_view text, char separator) {
  std::vector<KeyLine> lines;
  for (const std::string_view written : base::Split(text, '\n')) {
    const std::string_view line = Bare(written);
    const std::size_t end = separator == ' ' ? line.find_first_of(LineBlanks) : line.find(separator);
    if (end == std::string_view::npos) continue;
    const KeyLine found{Bare(line.substr(0, end)), Bare(line.substr(end + 1))};
    if (!found.Key.empty() && !found.Value.empty()) lines.push_back(found);
  }
  return lines;
}

std::optional<std::string_view> ValueOf(const std::vector<KeyLine>& lines, std::string_view key) {
  const auto found =
      std::find_if(lines.begin(), lines.end(), [key](const KeyLine& line) { return base::SameNoCase(line.Key, key); });
  return found == lines.end() ? std::nullopt : std::optional(found->Value);
}

}  // namespace kestrel::falcon
