#include "base/profile_file.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::base {
namespace {

// A buffer of 750 characters with its end mark.
constexpr std::size_t LongestValue = 749;

std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool StandsInQuotes(std::string_view text) {
  return text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
}

/// The key of a line, empty when the line is no key. A line that begins with a double quote is the banner.
std::string_view KeyOf(std::string_view line) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  const std::string_view key = TrimBlanks(line.substr(0, equals));
  return !key.empty() && (key.front() == ';' || key.front() == '"') ? std::string_view() : key;
}

/// The value of a line that has a key.
std::string_view ValueOf(std::string_view line) {
  const std::string_view value = TrimBlanks(line.substr(line.find('=') + 1));
  return StandsInQuotes(value) ? value.substr(1, value.size() - 2) : value;
}

/// `value` such that no part of it ends the line.
std::string WrittenValue(std::string_view value) {
  std::string written(value);
  std::replace_if(
      written.begin(), written.end(), [](char letter) { return letter == '\r' || letter == '\n' || letter == '\0'; },
      ' ');
  return written;
}

/// Units of two bytes in the order that the byte order mark at the beginning tells, as bytes of the code page. Nothing
/// when there is no mark.
std::optional<std::string> FromWideText(std::string_view text) {
  const bool bigEndian = text.starts_with("\xFE\xFF");
  if (!bigEndian && !text.starts_with("\xFF\xFE")) return std::nullopt;
  std::u16string units;
  units.reserve(text.size() / 2);
  for (std::size_t at = 2; at + 1 < text.size(); at += 2) {
    const auto first = static_cast<unsigned char>(text[at]);
    const auto second = static_cast<unsigned char>(text[at + 1]);
    units += static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
  }
  return FromUnicode(units);
}

constexpr std::string_view LineBreakers("\r\n\0", 3);

void CheckNames(std::string_view section, std::string_view key) {
  const bool good =
      !key.empty() && key.find_first_of(LineBreakers) == std::string_view::npos &&
      key.find('=') == std::string_view::npos && std::string_view(";[\"").find(key.front()) == std::string_view::npos &&
      section.find_first_of(LineBreakers) == std::string_view::npos && section.find(']') == std::string_view::npos;
  if (!good)
    throw RuntimeFailure("[" + std::string(section) + "] " + std::string(key) + " cannot stand in a profile file");
}

}  // namespace

ProfileFile::ProfileFile(std::string_view text) {
  const std::optional<std::string> wide = FromWideText(text);
  AddLines(wide ? *wide : text);
}

void ProfileFile::AddLines(std::string_view text) {
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    AddLine(line);
  }
}

ProfileFile ProfileFile::Load(const std::filesystem::path& path) {
  std::error_code failure;
  if (std::filesystem::status(path, failure).type() == std::filesystem::file_type::not_found) return {};
  return ProfileFile(ReadWholeFile(path, MaxTextFileBytes));
}

void ProfileFile::Part::Add(std::string_view line) {
  if (TrimBlanks(line).empty()) {
    Blank.emplace_back(line);
    return;
  }
  std::move(Blank.begin(), Blank.end(), std::back_inserter(Lines));
  Blank.clear();
  if (const std::string_view key = KeyOf(line); !key.empty()) Keys.try_emplace(Upper(key), Lines.size());
  Lines.emplace_back(line);
}

void ProfileFile::AddLine(std::string_view line) {
  const std::string_view trimmed = TrimBlanks(line);
  if (trimmed.empty() || trimmed.front() != '[') {
    parts.back().Add(line);
    return;
  }
  // A header that is not closed counts up to its line's end.
  index.emplace(Upper(TrimBlanks(trimmed.substr(1, trimmed.find(']') - 1))), parts.size());
  parts.push_back(Part{std::string(line), {}, {}, {}});
}

const ProfileFile::Part* ProfileFile::Find(std::string_view section) const {
  const auto found = index.find(Upper(TrimBlanks(section)));
  return found == index.end() ? nullptr : &parts[found->second];
}

const std::string* ProfileFile::FindLine(std::string_view section, std::string_view key) const {
  const Part* part = Find(section);
  if (part == nullptr) return nullptr;
  const auto found = part->Keys.find(Upper(TrimBlanks(key)));
  return found == part->Keys.end() ? nullptr : &part->Lines[found->second];
}

std::string ProfileFile::ReadIniValue(std::string_view Section, std::string_view Key, std::string_view Default) const {
  const std::string* line = FindLine(Section, Key);
  const std::string_view value = line == nullptr ? std::string_view() : ValueOf(*line).substr(0, LongestValue);
  return std::string(value.empty() ? Default : value);
}

bool ProfileFile::HasSection(std::string_view Section) const { return Find(Section) != nullptr; }

bool ProfileFile::HasKey(std::string_view Section, std::string_view Key) const {
  return FindLine(Section, Key) != nullptr;
}

void ProfileFile::WriteIniValue(std::string_view Section, std::string_view Key, std::string_view Value) {
  const std::string_view section = TrimBlanks(Section);
  const std::string_view key = TrimBlanks(Key);
  CheckNames(section, key);
  const auto [place, isNew] = index.emplace(Upper(section), parts.size());
  if (isNew) parts.push_back(Part{"[" + std::string(section) + "]", {}, {}, {}});
  Part& part = parts[place->second];

  const auto [known, isAppended] = part.Keys.try_emplace(Upper(key), part.Lines.size());
  if (isAppended) {
    part.Lines.push_back(std::string(key) + '=' + WrittenValue(Value));
    return;
  }
  std::string& line = part.Lines[known->second];
  line = std::string(KeyOf(line)) + '=' + WrittenValue(Value);
}

void ProfileFile::AppendLine(std::string_view line) { AddLine(line); }

std::string ProfileFile::Text() const {
  std::string text;
  for (const Part& part : parts) {
    if (&part != &parts.front()) text.append(part.Header).append("\r\n");
    for (const std::string& line : part.Lines) text.append(line).append("\r\n");
    for (const std::string& line : part.Blank) text.append(line).append("\r\n");
  }
  return text;
}

void ProfileFile::Save(const std::filesystem::path& path) const { WriteWholeFile(path, Text()); }

}  // namespace kestrel::base
