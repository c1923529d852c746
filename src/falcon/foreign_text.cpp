#include "falcon/foreign_text.h"

#include <algorithm>
#include <optional>

#include "base/code_page.h"

namespace kestrel::falcon {
namespace {

struct Sequence {
  unsigned Lead;      ///< bits of the first byte that name it
  unsigned LeadMask;  ///< where they stand
  std::size_t Following;
  char32_t Least;  ///< a smaller one has a shorter sequence and is refused
};
constexpr Sequence Sequences[] = {
    {0x00, 0x80, 0, 0}, {0xC0, 0xE0, 1, 0x80}, {0xE0, 0xF0, 2, 0x800}, {0xF0, 0xF8, 3, 0x10000}};

/// Takes one character of UTF-8 from the head of `text`; nothing when none begins there.
std::optional<char32_t> TakeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const auto* const kind = std::find_if(std::begin(Sequences), std::end(Sequences),
                                        [lead](const Sequence& one) { return (lead & one.LeadMask) == one.Lead; });
  if (kind == std::end(Sequences) || text.size() <= kind->Following) return std::nullopt;
  char32_t character = lead & ~kind->LeadMask & 0xFFu;
  for (std::size_t at = 1; at <= kind->Following; ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if ((byte & 0xC0u) != 0x80) return std::nullopt;
    character = character << 6u | (byte & 0x3Fu);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < kind->Least || character > 0x10FFFF || surrogate) return std::nullopt;
  text.remove_prefix(kind->Following + 1);
  return character;
}

std::optional<std::u16string> FromUtf8(std::string_view text) {
  std::u16string unicode;
  unicode.reserve(text.size());
  while (!text.empty()) {
    const std::optional<char32_t> character = TakeCharacter(text);
    if (!character) return std::nullopt;
    if (*character < 0x10000) {
      unicode += static_cast<char16_t>(*character);
    } else {
      unicode += static_cast<char16_t>(0xD800 + ((*character - 0x10000) >> 10u));
      unicode += static_cast<char16_t>(0xDC00 + ((*character - 0x10000) & 0x3FFu));
    }
  }
  return unicode;
}

bool IsAscii(char letter) { return static_cast<unsigned char>(letter) < 0x80; }

}  // namespace

bool IsUtf8(std::string_view text) {
  for (;;) {
    text.remove_prefix(static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsAscii) - text.begin()));
    if (text.empty()) return true;
    if (!TakeCharacter(text)) return false;
  }
}

std::string FromForeignText(std::string_view text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark)) text.remove_prefix(mark.size());
  if (std::all_of(text.begin(), text.end(), IsAscii)) return std::string(text);
  const std::optional<std::u16string> unicode = FromUtf8(text);
  return unicode ? base::FromUnicode(*unicode) : std::string(text);
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string_view TrimLine(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

std::string FieldText(base::BinaryReader& reader, std::size_t width) {
  std::string text = reader.Text(width);
  text.resize(std::min(text.find('\0'), text.size()));
  return text;
}

bool IsPrintable(std::string_view text) {
  return std::none_of(text.begin(), text.end(),
                      [](char letter) { return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F; });
}

}  // namespace kestrel::falcon
