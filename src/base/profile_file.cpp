#include "base/profile_file.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::base {
namespace {

// A buffer of 750 characters with its end mark.
constexpr std::size_t LongestValue = 749;

constexpr bool IsBlank(char letter) { return letter == ' ' || letter == '\t'; }

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// The same for keys that differ in the case of ASCII letters alone: the bit that parts their cases is left out, of the
/// other letters too. Eight letters at a time.
std::uint32_t HashOf(std::string_view key) {
  constexpr std::uint64_t withoutCase = 0xDFDFDFDFDFDFDFDF;
  std::uint64_t hash = key.size();
  while (!key.empty()) {
    std::uint64_t word = 0;
    const std::size_t count = std::min(key.size(), sizeof word);
    std::memcpy(&word, key.data(), count);
    hash = (hash ^ (word & withoutCase)) * 0x9E3779B97F4A7C15;
    hash ^= hash >> 32;
    key.remove_prefix(count);
  }
  return static_cast<std::uint32_t>(hash);
}

bool SameName(std::string_view a, std::string_view b) { return a == b || SameNoCase(a, b); }

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

template <class NameOf>
std::size_t ProfileFile::NameIndex::SlotOf(std::string_view name, std::uint32_t hash, const NameOf& nameOf) const {
  const std::size_t mask = slots.size() - 1;
  std::size_t at = hash & mask;
  while (slots[at].Place != 0 && (slots[at].Hash != hash || !SameName(nameOf(slots[at].Place - 1), name))) {
    at = (at + 1) & mask;
  }
  return at;
}

template <class NameOf>
std::optional<std::size_t> ProfileFile::NameIndex::Find(std::string_view name, const NameOf& nameOf) const {
  if (slots.empty()) return std::nullopt;
  const Slot& slot = slots[SlotOf(name, HashOf(name), nameOf)];
  if (slot.Place == 0) return std::nullopt;
  return slot.Place - 1;
}

template <class NameOf>
void ProfileFile::NameIndex::Fill(std::size_t count, const NameOf& nameOf) {
  slots.assign(std::bit_ceil(count + count / 2 + 2), {});
  for (std::size_t length = 1; length <= count; ++length) AddLast(length, nameOf);
}

template <class NameOf>
void ProfileFile::NameIndex::AddLast(std::size_t count, const NameOf& nameOf) {
  // Some are always free.
  if (3 * count > 2 * slots.size()) return Fill(count, nameOf);
  const std::string_view name = nameOf(count - 1);
  if (name.data() == nullptr) return;
  const std::uint32_t hash = HashOf(name);
  Slot& slot = slots[SlotOf(name, hash, nameOf)];
  repeats = repeats || slot.Place != 0;
  if (slot.Place == 0) slot = {hash, static_cast<std::uint32_t>(count)};
}

auto ProfileFile::Part::KeyAt() const {
  return [this](std::size_t line) {
    const std::string_view key = KeyOf(Lines[line]);
    return key.empty() ? std::string_view() : key;
  };
}

auto ProfileFile::NameAt() const {
  return [this](std::size_t part) { return parts[part].Name; };
}

ProfileFile::ProfileFile(std::string_view text) { Parse(std::string(text)); }

std::string_view ProfileFile::Keep(std::string text) {
  return *texts.emplace_back(std::make_shared<const std::string>(std::move(text)));
}

void ProfileFile::Parse(std::string bytes) {
  std::optional<std::string> wide = FromWideText(bytes);
  std::string_view text = Keep(wide ? std::move(*wide) : std::move(bytes));
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    AddLine(line);
  }
  parts.back().Keys.Fill(parts.back().Lines.size(), parts.back().KeyAt());
}

ProfileFile ProfileFile::Load(const std::filesystem::path& path) {
  std::error_code failure;
  ProfileFile file;
  if (std::filesystem::status(path, failure).type() == std::filesystem::file_type::not_found) return file;
  file.Parse(ReadWholeFile(path, MaxTextFileBytes));
  return file;
}

void ProfileFile::AddLine(std::string_view line) {
  const std::string_view trimmed = TrimBlanks(line);
  Part& last = parts.back();
  if (trimmed.empty()) {
    last.Blank.push_back(line);
  } else if (trimmed.front() != '[') {
    last.Lines.insert(last.Lines.end(), last.Blank.begin(), last.Blank.end());
    last.Blank.clear();
    last.Lines.push_back(line);
  } else {
    last.Keys.Fill(last.Lines.size(), last.KeyAt());
    // A header that is not closed counts up to its line's end.
    AddPart(line, TrimBlanks(trimmed.substr(1, trimmed.find(']') - 1)));
  }
}

void ProfileFile::AddPart(std::string_view header, std::string_view name) {
  // Sections of a kind follow each other.
  const std::size_t lines = std::min<std::size_t>(parts.back().Lines.size(), 64);
  parts.push_back(Part{header, name, {}, {}, {}});
  parts.back().Lines.reserve(lines);
  sections.AddLast(parts.size(), NameAt());
}

const ProfileFile::Part* ProfileFile::Find(std::string_view section) const {
  const std::optional<std::size_t> found = sections.Find(TrimBlanks(section), NameAt());
  return found ? &parts[*found] : nullptr;
}

std::string_view ProfileFile::SectionView::Value(std::string_view Key, std::string_view Default) {
  if (part == nullptr) return Default;
  const std::string_view key = TrimBlanks(Key);
  // The line that follows, unless another one with its key might stand before it.
  if (next >= part->Lines.size() || !part->Keys.AllDiffer() || key.empty() || KeyOf(part->Lines[next]) != key) {
    const std::optional<std::size_t> found = part->Keys.Find(key, part->KeyAt());
    if (!found) return Default;
    next = *found;
  }
  const std::string_view value = ValueOf(part->Lines[next++]).substr(0, LongestValue);
  return value.empty() ? Default : value;
}

bool ProfileFile::SectionView::HasKey(std::string_view Key) const {
  return part != nullptr && part->Keys.Find(TrimBlanks(Key), part->KeyAt()).has_value();
}

std::string ProfileFile::ReadIniValue(std::string_view Section, std::string_view Key, std::string_view Default) const {
  return std::string(Open(Section).Value(Key, Default));
}

bool ProfileFile::HasSection(std::string_view Section) const { return Find(Section) != nullptr; }

bool ProfileFile::HasKey(std::string_view Section, std::string_view Key) const { return Open(Section).HasKey(Key); }

void ProfileFile::WriteIniValue(std::string_view Section, std::string_view Key, std::string_view Value) {
  const std::string_view section = TrimBlanks(Section);
  const std::string_view key = TrimBlanks(Key);
  CheckNames(section, key);
  std::optional<std::size_t> place = sections.Find(section, NameAt());
  if (!place) {
    place = parts.size();
    const std::string_view header = Keep("[" + std::string(section) + "]");
    AddPart(header, header.substr(1, section.size()));
  }
  Part& part = parts[*place];

  const std::optional<std::size_t> known = part.Keys.Find(key, part.KeyAt());
  // A key that is known keeps the case that it has.
  const std::string_view name = known ? KeyOf(part.Lines[*known]) : key;
  const std::string_view line = Keep(std::string(name) + '=' + WrittenValue(Value));
  if (known) {
    part.Lines[*known] = line;
    return;
  }
  part.Lines.push_back(line);
  part.Keys.AddLast(part.Lines.size(), part.KeyAt());
}

void ProfileFile::CopySection(const ProfileFile& from, std::string_view section) {
  const Part* const found = from.Find(section);
  if (found == nullptr) return;
  AppendLine(found->Header);
  for (const std::string_view line : found->Lines) AddLine(Keep(std::string(line)));
  for (const std::string_view line : found->Blank) AddLine(Keep(std::string(line)));
  parts.back().Keys.Fill(parts.back().Lines.size(), parts.back().KeyAt());
}

void ProfileFile::AppendLine(std::string_view line) {
  AddLine(Keep(std::string(line)));
  parts.back().Keys.Fill(parts.back().Lines.size(), parts.back().KeyAt());
}

std::string ProfileFile::Text() const {
  std::string text;
  for (const Part& part : parts) {
    if (&part != &parts.front()) text.append(part.Header).append("\r\n");
    for (const std::string_view line : part.Lines) text.append(line).append("\r\n");
    for (const std::string_view line : part.Blank) text.append(line).append("\r\n");
  }
  return text;
}

void ProfileFile::Save(const std::filesystem::path& path) const { WriteWholeFile(path, Text()); }

}  // namespace kestrel::base
