#include "radio/frequency_file.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"

namespace kestrel::radio {
namespace {

// The most that a count of 16 bits can tell, and the most records that a file gets without holding them.
constexpr std::size_t MostPromised = std::numeric_limits<std::int16_t>::max();
constexpr std::size_t MostNotes = 20;

std::string Numbered(std::string_view stem, std::size_t n) { return std::string(stem) + std::to_string(n); }

/// What a key of the runway ends begins with, with their numbers 0 to 3.
struct SlotKeys {
  std::string_view ILS, Des, RX, RY, Heading, Vis;
};
constexpr std::array<SlotKeys, RunwayEndCount> slotKeys = {{
    {"ILS_0", "ILS_DES_0", "ILS_RX_0", "ILS_RY_0", "ILS_DRAW_HEADING_0", "ILS_VIS_0"},
    {"ILS_1", "ILS_DES_1", "ILS_RX_1", "ILS_RY_1", "ILS_DRAW_HEADING_1", "ILS_VIS_1"},
    {"ILS_2", "ILS_DES_2", "ILS_RX_2", "ILS_RY_2", "ILS_DRAW_HEADING_2", "ILS_VIS_2"},
    {"ILS_3", "ILS_DES_3", "ILS_RX_3", "ILS_RY_3", "ILS_DRAW_HEADING_3", "ILS_VIS_3"},
}};

/// The keys of an airfield in the order of the file, for reading and writing.
template <class Walk, class Record>
void WalkAirfield(Walk& walk, Record& airfield) {
  walk.Text("NAME", airfield.Name);
  walk.Text("UHF", airfield.UHF);
  walk.Text("VHF", airfield.VHF);
  walk.Text("TACAN", airfield.TACAN);
  walk.Number("TACANX", airfield.TACANX);
  walk.Number("TACANY", airfield.TACANY);
  walk.Number("TACANR", airfield.TACANR);
  walk.Text("TACAN_BAND", airfield.TACAN_BAND);
  walk.Index("TEAM_INDEX", airfield.TEAM_INDEX);
  walk.Flag("TACAN_VIS", airfield.TACAN_VIS);
  walk.Flag("VIS", airfield.VIS);
  for (std::size_t k = 0; k < RunwayEndCount; ++k) {
    const SlotKeys& keys = slotKeys[k];
    walk.Text(keys.ILS, airfield.ILS[k]);
    walk.Text(keys.Des, airfield.ILS_DES[k]);
    walk.Number(keys.RX, airfield.ILS_R[k].RX);
    walk.Number(keys.RY, airfield.ILS_R[k].RY);
    walk.Number(keys.Heading, airfield.ILS_DRAW_HEADING[k]);
    walk.Flag(keys.Vis, airfield.ILS_VIS[k]);
  }
}

/// The sections of the channels and of the UI frequencies, the same.
template <class Walk, class Record>
void WalkChannels(Walk& walk, Record& tables) {
  walk.Section("CUS_UHF");
  for (std::size_t i = 1; i <= ChannelCount; ++i) walk.Text(Numbered("UHF_", i), tables.CustomUHF[i], UnsetChannel);
  walk.Section("CUS_VHF");
  for (std::size_t i = 1; i <= ChannelCount; ++i) walk.Text(Numbered("VHF_", i), tables.CustomVHF[i], UnsetChannel);
  walk.Section("CUS_UI");
  walk.Text("F1", tables.CustomF1, UnsetChannel);
  walk.Text("F2", tables.CustomF2, UnsetChannel);
}

template <class Walk, class Record>
void WalkTeams(Walk& walk, Record& tables) {
  walk.Section("TEAMS");
  for (std::size_t i = 0; i < TeamCount; ++i) walk.Text(Numbered("TEAM_", i), tables.Teams[i], DefaultTeam(i));
}

class Reader {
 public:
  Reader(const base::ProfileFile& profile, std::vector<std::string>& notes) : file(profile), told(notes) {}

  /// The keys that follow are read from this section; false when it is missing.
  bool Section(std::string named) {
    name = std::move(named);
    section = file.Open(name);
    return section.IsThere();
  }
  void Text(std::string_view key, std::string& field, std::string_view otherwise = {}) {
    field = section.Value(key, otherwise);
  }
  void Number(std::string_view key, double& field) {
    field = Fitting<double>(key, [](double number) { return number; });
  }
  void Number(std::string_view key, std::int32_t& field) { field = Fitting<std::int32_t>(key, base::RoundHalfEven); }
  void Index(std::string_view key, std::uint8_t& field) { field = Fitting<std::uint8_t>(key, base::RoundHalfEven); }
  void Flag(std::string_view key, bool& field) { field = section.Value(key) == "1"; }

  /// Fills a table with the records that NUM of the present section promises. `read` reads one into a new record and
  /// says whether it stands in the file.
  template <class T, class ReadOne>
  void Records(base::Table<T>& table, ReadOne read) {
    const double promised = base::RoundHalfEven(base::InvariantNumber(section.Value("NUM")));
    const std::string counted = name;
    // Folders and airfields have a section each, so that the file bounds what is taken for them beforehand.
    if (!std::is_same_v<T, FreqEntry> && promised > 0) {
      const std::size_t most = std::min(file.SectionCount(), MostPromised);
      table.Reserve(promised < static_cast<double>(most) ? static_cast<std::size_t>(promised) : most);
    }
    for (std::size_t i = 1; static_cast<double>(i) <= promised; ++i) {
      table.Resize(i);
      if (read(i, table[i])) continue;
      const bool countsWhatIsThere = promised > static_cast<double>(MostPromised);
      if (!countsWhatIsThere && ++missing <= MostPromised) continue;
      table.Resize(i - 1);
      Note("[" + counted + "] " +
           (countsWhatIsThere ? "NUM promises more than there is, " + std::to_string(i - 1) + " are read"
                              : "from " + std::to_string(i) + " on what is missing is left out"));
      return;
    }
  }
  void TellRest() {
    if (untold > 0) told.push_back("... and " + std::to_string(untold) + " more");
  }
  bool HasKey(std::string_view key) const { return section.HasKey(key); }

 private:
  /// The number of a key, or 0 and a note when it does not fit.
  template <class T, class Rounding>
  T Fitting(std::string_view key, Rounding rounded) {
    using Limits = std::numeric_limits<T>;
    const std::string_view text = section.Value(key);
    const double value = rounded(base::InvariantNumber(text));
    if (value >= static_cast<double>(Limits::lowest()) && value <= static_cast<double>(Limits::max())) {
      return static_cast<T>(value);
    }
    Note("[" + name + "] " + std::string(key) + ": the number does not fit, \"" + std::string(text.substr(0, 40)) +
         "\"");
    return 0;
  }
  void Note(std::string line) {
    if (told.size() < MostNotes) {
      told.push_back(std::move(line));
    } else {
      ++untold;
    }
  }

  const base::ProfileFile& file;
  std::vector<std::string>& told;
  std::string name;  ///< of the section
  base::ProfileFile::SectionView section = file.Open(name);
  std::size_t untold = 0;
  std::size_t missing = 0;  ///< records that were promised and are not there
};

class Writer {
 public:
  void Section(std::string_view name) { text.append("[").append(name).append("]\r\n"); }
  void Text(std::string_view key, std::string_view value, std::string_view = {}) {
    text.append(key).append("=").append(value).append("\r\n");
  }
  void Number(std::string_view key, double value) {
    text.append(key).append("=");
    base::AppendFormat(text, value, "0.00000");
    text.append("\r\n");
  }
  void Index(std::string_view key, std::size_t value) { Text(key, std::to_string(value)); }
  void Flag(std::string_view key, bool value) { Text(key, value ? "1" : "0"); }
  void EmptyLine() { text.append("\r\n"); }
  std::string Take() { return std::move(text); }

 private:
  std::string text;
};

/// Takes the first line off `text`; the part of it that a value follows, or all of it.
std::string_view TakeKey(std::string_view& text) {
  std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line.substr(0, line.find('='));
}

}  // namespace

Frequencies ReadFrequencies(const base::ProfileFile& file, std::vector<std::string>& notes) {
  Frequencies tables;
  Reader reader(file, notes);
  WalkChannels(reader, tables);

  reader.Section("CUS_FREQ");
  const auto readEntry = [&reader](std::size_t j, FreqEntry& entry) {
    const std::string description = Numbered("DESC_", j), value = Numbered("VAL_", j);
    reader.Text(description, entry.Description);
    reader.Text(value, entry.Value, UnsetChannel);
    return entry.Value != UnsetChannel || reader.HasKey(value) || reader.HasKey(description);
  };
  reader.Records(tables.FreqFolders, [&](std::size_t i, FreqFolder& folder) {
    const bool there = reader.Section(Numbered("CUS_FREQ_", i));
    reader.Text("NAME", folder.Name);
    reader.Records(folder.Entries, readEntry);
    return there;
  });

  reader.Section("AIRFIELDS");
  reader.Records(tables.Airfields, [&reader](std::size_t i, Airfield& airfield) {
    const bool there = reader.Section(Numbered("AIRFIELD_", i));
    WalkAirfield(reader, airfield);
    return there;
  });

  WalkTeams(reader, tables);
  reader.TellRest();
  return tables;
}

bool HoldsFrequencies(const base::ProfileFile& file) {
  constexpr std::string_view sections[] = {"CUS_UHF", "CUS_VHF", "CUS_UI", "CUS_FREQ", "AIRFIELDS", "TEAMS"};
  return std::ranges::any_of(sections, [&file](std::string_view name) { return file.HasSection(name); });
}

std::string WriteFrequencies(const Frequencies& tables) {
  Writer writer;
  WalkChannels(writer, tables);
  writer.Section("CUS_FREQ");
  writer.Index("NUM", tables.FreqFolders.UpperBound());
  for (std::size_t i = 1; i <= tables.FreqFolders.UpperBound(); ++i) {
    const FreqFolder& folder = tables.FreqFolders[i];
    writer.Section(Numbered("CUS_FREQ_", i));
    writer.Text("NAME", folder.Name);
    writer.Index("NUM", folder.Entries.UpperBound());
    for (std::size_t j = 1; j <= folder.Entries.UpperBound(); ++j) {
      writer.Text(Numbered("DESC_", j), folder.Entries[j].Description);
      writer.Text(Numbered("VAL_", j), folder.Entries[j].Value);
    }
  }
  writer.Section("AIRFIELDS");
  writer.Index("NUM", tables.Airfields.UpperBound());
  for (std::size_t i = 1; i <= tables.Airfields.UpperBound(); ++i) {
    writer.Section(Numbered("AIRFIELD_", i));
    WalkAirfield(writer, tables.Airfields[i]);
  }
  WalkTeams(writer, tables);
  writer.EmptyLine();
  std::string text = writer.Take();
  if (text.size() > base::MaxTextFileBytes) {
    throw base::RuntimeFailure("the frequencies are longer than what would be read again");
  }
  return text;
}

bool HasKeysOf(const Frequencies& tables, std::string_view file) {
  const std::string written = WriteFrequencies(tables);
  std::string_view expected = written;
  while (!file.empty() && !expected.empty()) {
    if (TakeKey(file) != TakeKey(expected)) return false;
  }
  return file.empty() && expected.empty();
}

DefaultFrequencies ReadDefaultFrequencies(const base::ProfileFile& file) {
  DefaultFrequencies defaults;
  for (std::size_t i = 1; i <= ChannelCount; ++i) {
    defaults.DefaultUHF[i] = file.ReadIniValue("UHF", Numbered("U_", i), "");
    defaults.DefaultVHF[i] = file.ReadIniValue("VHF", Numbered("V_", i), "");
    defaults.ChannelNames[i] = file.ReadIniValue("NAMES", Numbered("N_", i), "");
  }
  defaults.DefaultF1 = file.ReadIniValue("UI", "F1", "");
  defaults.DefaultF2 = file.ReadIniValue("UI", "F2", "");
  return defaults;
}

}  // namespace kestrel::radio
