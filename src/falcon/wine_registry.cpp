#include "falcon/wine_registry.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <span>
#include <utility>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/positioned_file.h"
#include "base/text.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view LowerFalconKey = "software\\microprose\\falcon\\4.0";
constexpr std::string_view LowerBmsKeys = "software\\benchmark sims\\";
constexpr std::string_view ViewStep = "software\\wow6432node\\";
constexpr std::string_view WantedValues[] = {"basedir", "curtheater", "pilotcallsign"};

/// Whether installations are registered in the key, given in lower case: one right below that of the versions.
bool IsWanted(std::string_view key) {
  return key == LowerFalconKey ||
         (key.starts_with(LowerBmsKeys) && key.find('\\', LowerBmsKeys.size()) == std::string_view::npos);
}

/// As many characters as `most` that are digits to `base`, as a number; nothing when there is none.
std::optional<char16_t> TakeDigits(std::string_view& text, std::size_t most, int base) {
  std::uint16_t number = 0;
  const char* const end = text.data() + std::min(most, text.size());
  const auto result = std::from_chars(text.data(), end, number, base);
  if (result.ec != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return number;
}

/// The character behind a backslash, taken from `text`, which is not empty.
char16_t TakeEscape(std::string_view& text) {
  constexpr std::string_view letters = "abefnrtv", meanings = "\a\b\x1B\f\n\r\t\v";
  if (text.front() >= '0' && text.front() <= '7') return TakeDigits(text, 3, 8).value_or(u'\0');
  const char letter = text.front();
  text.remove_prefix(1);
  if (letter == 'x') return TakeDigits(text, 4, 16).value_or(u'x');
  const std::size_t at = letters.find(letter);
  return static_cast<unsigned char>(at == std::string_view::npos ? letter : meanings[at]);
}

/// The text up to `end`, which is taken as well; nothing when that is missing.
std::optional<std::string> TakeText(std::string_view& text, char end) {
  std::u16string units;
  while (!text.empty()) {
    const char letter = text.front();
    text.remove_prefix(1);
    if (letter == end) return base::FromUnicode(units);
    if (letter != '\\') {
      units += static_cast<unsigned char>(letter);
    } else if (!text.empty()) {
      units += TakeEscape(text);
    }
  }
  return std::nullopt;
}

/// Bytes in hexadecimal with commas between them, blanks at the beginnings of continued lines.
std::optional<std::string> BytesOf(std::string_view text) {
  std::string bytes;
  for (const std::string_view step : base::Split(text, ',')) {
    std::string_view digits = TrimLine(step);
    const std::optional<char16_t> byte = TakeDigits(digits, 2, 16);
    if (!byte || !digits.empty()) return std::nullopt;
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

/// Units of two bytes, the lower first.
std::string FromWideBytes(std::string_view bytes) {
  std::u16string units;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const auto low = static_cast<unsigned char>(bytes[at]), high = static_cast<unsigned char>(bytes[at + 1]);
    units += static_cast<char16_t>(low | high << 8);
  }
  return base::FromUnicode(units);
}

/// What stands behind the "=": text, text to be expanded, which is taken as it stands, or bytes. Nothing for others.
std::optional<KeyValue> ValueOf(std::string_view text) {
  for (const std::string_view kind : {"\"", "str(2):\""}) {
    if (!text.starts_with(kind)) continue;
    text.remove_prefix(kind.size());
    std::optional<std::string> content = TakeText(text, '"');
    if (!content || !text.empty()) return std::nullopt;
    return KeyValue{false, std::move(*content)};
  }
  // Texts that do not end in a NUL are written so.
  for (const auto& [kind, isText] : {std::pair{"hex:", false}, {"hex(1):", true}, {"hex(2):", true}}) {
    if (!text.starts_with(kind)) continue;
    const std::optional<std::string> bytes = BytesOf(text.substr(std::string_view(kind).size()));
    if (!bytes) return std::nullopt;
    return KeyValue{!isText, isText ? FromWideBytes(*bytes) : *bytes};
  }
  return std::nullopt;
}

/// Appends as much as the longest line holds and one byte, by which one that is too long is told.
void AppendBounded(std::string& line, std::string_view bytes) {
  line.append(bytes.substr(0, WineRegistry::LongestLine + 1 - std::min(line.size(), WineRegistry::LongestLine + 1)));
}

}  // namespace

WineRegistry WineRegistry::Load(const fs::path& prefix) {
  WineRegistry registry(prefix);
  const base::PositionedFile file(prefix / "system.reg", base::PositionedFile::Mode::Read);
  std::string block(std::size_t{64} << 10, '\0');
  std::uint64_t position = 0;
  while (const std::size_t count = file.Read(position, std::as_writable_bytes(std::span(block)))) {
    registry.Take(std::string_view(block).substr(0, count));
    position += count;
  }
  return registry;
}

void WineRegistry::Take(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    AppendBounded(line, bytes.substr(0, end));
    if (end == std::string_view::npos) return;
    bytes.remove_prefix(end + 1);
    const bool isWhole = line.size() <= LongestLine;
    if (isWhole && line.ends_with('\r')) line.pop_back();
    // Only bytes in hexadecimal go on; nothing else ends so.
    goesOn = isWhole && line.ends_with('\\') && !line.starts_with('[');
    if (goesOn) line.pop_back();
    AppendBounded(continued, line);
    line.clear();
    if (goesOn) continue;
    if (continued.size() <= LongestLine) TakeLine(continued);
    continued.clear();
  }
}

void WineRegistry::TakeLine(std::string_view whole) {
  if (whole.starts_with('[')) {
    OpenKey(whole.substr(1));
  } else if (open != nullptr && whole.starts_with('"')) {
    TakeValue(whole.substr(1));
  }
}

void WineRegistry::OpenKey(std::string_view text) {
  open = nullptr;
  const std::optional<std::string> written = TakeText(text, ']');
  if (!written) return;
  std::string name = base::Lower(*written);
  openIs32Bit = name.starts_with(ViewStep);
  if (openIs32Bit) name.erase(ViewStep.find('\\'), ViewStep.size() - 1 - ViewStep.find('\\'));
  if (!IsWanted(name) || (keys.size() >= MostKeys && !keys.contains(name))) return;
  open = &keys[name];
  open->Name = written->substr(written->rfind('\\') + 1);
}

void WineRegistry::TakeValue(std::string_view text) {
  const std::optional<std::string> name = TakeText(text, '"');
  if (!name || !text.starts_with('=')) return;
  const std::string known = base::Lower(*name);
  if (std::find(std::begin(WantedValues), std::end(WantedValues), known) == std::end(WantedValues)) return;
  std::optional<KeyValue> content = ValueOf(text.substr(1));
  if (!content) return;
  Value& value = open->Values[known];
  if (value.Is32Bit && !openIs32Bit) return;
  value = {std::move(*content), openIs32Bit};
}

std::optional<KeyValue> WineRegistry::ReadValue(std::string_view key, std::string_view value) const {
  const auto known = keys.find(base::Lower(key));
  if (known == keys.end()) return std::nullopt;
  const auto found = known->second.Values.find(base::Lower(value));
  return found == known->second.Values.end() ? std::nullopt : std::optional(found->second.Content);
}

std::vector<std::string> WineRegistry::SubKeys(std::string_view key) const {
  const std::string above = base::Lower(key) + "\\";
  std::vector<std::string> names;
  for (const auto& [name, known] : keys) {
    if (name.starts_with(above) && name.find('\\', above.size()) == std::string::npos) names.push_back(known.Name);
  }
  return names;
}

fs::path WineRegistry::FolderOf(std::string_view text) const {
  const std::string drive = base::Lower(text.substr(0, 2));
  if (drive.size() != 2 || drive[0] < 'a' || drive[0] > 'z' || drive[1] != ':') return {};
  const std::string_view below = text.substr(2);
  if (!below.empty() && below[0] != '\\' && below[0] != '/') return {};
  if (below.find(':') != std::string_view::npos) return {};  // it would name another drive
  const fs::path root = folder / "dosdevices" / drive;
  std::error_code failure;
  if (!fs::is_directory(root, failure)) return {};
  try {
    return base::FindFile(root, below.substr(std::min(below.find_first_not_of("\\/"), below.size())));
  } catch (const base::RuntimeFailure&) {
    return {};
  }
}

}  // namespace kestrel::falcon
