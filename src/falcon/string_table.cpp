#include "falcon/string_table.h"

#include <algorithm>
#include <limits>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view Digits = "0123456789";

/// The number at the head of `line`, which is taken off it with the one character behind; nothing when there is none.
std::optional<std::size_t> TakeNumber(std::string_view& line) {
  const std::size_t end = std::min(line.find_first_not_of(Digits), line.size());
  const double number = base::LeadingNumber(line.substr(0, end));
  const bool separated = end == line.size() || line[end] == '\t' || line[end] == ' ';
  if (end == 0 || !separated || number > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
  line.remove_prefix(std::min(end + 1, line.size()));
  return static_cast<std::size_t>(number);
}

/// A name that a file tells, as the name of a file in a folder; one that would lead out of it is none.
bool IsPlainName(std::string_view name) {
  return !name.empty() && IsPrintable(name) && name.find_first_of("/\\:") == std::string_view::npos;
}

std::optional<StringTable> LoadPair(const std::filesystem::path& folder, const std::string& name) {
  if (!IsPlainName(name)) return std::nullopt;
  const std::filesystem::path index = base::FindFile(folder, name + ".idx");
  const std::filesystem::path texts = base::FindFile(folder, name + ".wch");
  if (!base::FileExists(index) || !base::FileExists(texts)) return std::nullopt;
  const std::string offsets = base::ReadWholeFile(index, MaxStringFileBytes);
  std::string content = base::ReadWholeFile(texts, MaxStringFileBytes);
  return Within(base::NameForMessage(index), [&] { return ReadStringTable(offsets, std::move(content)); });
}

}  // namespace

std::string_view StringTable::operator[](std::size_t number) const {
  if (number >= places.size()) return {};
  return std::string_view(content).substr(places[number].From, places[number].Length);
}

StringTable ReadStringTable(std::string_view index, std::string texts) {
  StringTable table;
  table.content = std::move(texts);
  base::BinaryReader reader(index);
  const std::size_t told = reader.U16();
  const std::size_t count = told == 0 ? 0 : told - 1;
  const std::size_t offsets = reader.Left() / 2;
  if (offsets < count) throw base::RuntimeFailure("it ends before its last offset");
  if (reader.Left() % 2 != 0) throw base::RuntimeFailure("it ends within an offset");
  table.places.reserve(count);
  std::size_t from = count == 0 ? 0 : reader.U16();
  for (std::size_t number = 0; number < count; ++number) {
    // There may be more offsets than are told of; without one more the last text goes on to the end.
    const std::size_t end = number + 1 < offsets ? reader.U16() : table.content.size();
    const bool good = from <= end && end <= table.content.size();
    if (!good) ++table.damaged;
    table.places.push_back(
        {static_cast<std::uint32_t>(good ? from : 0), static_cast<std::uint32_t>(good ? end - from : 0)});
    from = end;
  }
  return table;
}

StringTable ReadStringLines(std::string_view lines) {
  StringTable table;
  table.content = FromForeignText(lines);
  for (std::string_view line : LinesOf(table.content)) {
    if (TrimLine(line).empty()) continue;
    const std::optional<std::size_t> number = TakeNumber(line);
    if (!number) {
      ++table.damaged;
      continue;
    }
    if (*number >= table.places.size()) table.places.resize(*number + 1);
    table.places[*number] = {static_cast<std::uint32_t>(line.data() - table.content.data()),
                             static_cast<std::uint32_t>(line.size())};
  }
  return table;
}

std::optional<StringTable> LoadTheaterNames(const std::filesystem::path& campaignFolder, std::string_view theater) {
  std::optional<StringTable> names = LoadPair(campaignFolder, std::string(theater));
  return names ? std::move(names) : LoadPair(campaignFolder, "DEFAULT");
}

std::optional<StringTable> LoadGeneralStrings(const std::filesystem::path& campaignFolder) {
  if (std::optional<StringTable> pair = LoadPair(campaignFolder, "Strings")) return pair;
  const std::filesystem::path lines = base::FindFile(campaignFolder, "Strings.txt");
  if (!base::FileExists(lines)) return std::nullopt;
  return ReadStringLines(base::ReadWholeFile(lines, MaxStringFileBytes));
}

}  // namespace kestrel::falcon
