#include "falcon/parent_file.h"

#include <array>
#include <cmath>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "falcon/key_lines.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view Blanks = " \t";

/// The first word of `text`, which is taken off it.
std::string_view TakeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(Blanks));
  text.remove_prefix(word.size());
  return word;
}

void ReadDimensions(std::string_view text, ParentFile& parent) {
  std::array<double, 7> numbers{};
  for (double& number : numbers) {
    const std::string_view word = TakeWord(text);
    if (word.empty()) return;
    number = base::LeadingNumber(word);
  }
  parent.Radius = std::isfinite(numbers[0]) ? numbers[0] : 0;
  parent.Box = PossibleBox({numbers[1], numbers[3], numbers[5]}, {numbers[2], numbers[4], numbers[6]});
}

/// A name, which may hold blanks, and the range behind the last of them.
ParentFile::Detail DetailOf(std::string_view text) {
  const std::size_t blank = text.find_last_of(Blanks);
  if (blank == std::string_view::npos) return {std::string(text), 0};
  const double range = base::LeadingNumber(text.substr(blank + 1));
  const std::string_view name = text.substr(0, text.find_last_not_of(Blanks, blank) + 1);
  return {std::string(name), std::isfinite(range) ? range : 0};
}

}  // namespace

ParentFile ReadParentFile(const DataFile& file) {
  ParentFile parent;
  const std::vector<KeyLine> lines = KeyLines(file.Bytes, '=');
  const std::optional<std::string_view> dimensions = ValueOf(lines, "Dimensions");
  if (dimensions) ReadDimensions(*dimensions, parent);
  for (const KeyLine& line : lines) {
    if (base::SameNoCase(line.Key, "AddLOD")) parent.Details.push_back(DetailOf(line.Value));
  }
  if (!dimensions && parent.Details.empty()) RefuseFile(file.Name, "it tells neither dimensions nor a shape");
  return parent;
}

}  // namespace kestrel::falcon
