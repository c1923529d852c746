#include "core/settings.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <system_error>
#include <type_traits>

#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/profile_file.h"
#include "base/program_title.h"
#include "core/callsign_file.h"
#include "falcon/written_installs.h"
#include "theaters/catalogue.h"
#include "theaters/theater_file.h"

namespace kestrel::core {
namespace {

std::string Numbered(std::string_view stem, std::size_t n) { return std::string(stem) + std::to_string(n); }

/// False, with the field as it was, when the number does not fit it.
template <class T>
bool AssignNumber(T& field, double number) {
  if constexpr (std::is_integral_v<T>) number = base::RoundHalfEven(number);
  using Limits = std::numeric_limits<T>;
  if (!(number >= static_cast<double>(Limits::lowest()) && number <= static_cast<double>(Limits::max()))) return false;
  field = static_cast<T>(number);
  return true;
}

bool Assign(const SettingsRow& row, std::string_view text) {
  return std::visit(
      [&](auto* field) {
        using T = std::remove_pointer_t<decltype(field)>;
        if constexpr (std::is_same_v<T, bool>) {
          *field = text == "1";
          return true;
        } else if constexpr (std::is_same_v<T, std::string>) {
          *field = text;
          return true;
        } else if constexpr (std::is_arithmetic_v<T>) {
          return AssignNumber(*field,
                              row.As == Reading::Invariant ? base::InvariantNumber(text) : base::LeadingNumber(text));
        } else {
          return true;  // the count of a table: read with its entries
        }
      },
      row.Bound);
}

std::string Written(const SettingsRow& row) {
  return std::visit(
      [&](const auto* field) -> std::string {
        using T = std::remove_cv_t<std::remove_pointer_t<decltype(field)>>;
        if constexpr (std::is_same_v<T, bool>) {
          return *field ? "1" : "0";
        } else if constexpr (std::is_same_v<T, std::string>) {
          return *field;
        } else if constexpr (std::is_arithmetic_v<T>) {
          return base::FormatInvariant(static_cast<double>(*field), row.Picture);
        } else {
          return base::FormatInvariant(static_cast<double>(field->UpperBound()), row.Picture);
        }
      },
      row.Bound);
}

void ReadRows(const base::ProfileFile& ini, Station& station) {
  for (ToolWindowState& window : station.ToolWindows) window.Placed = false;
  Station fresh;
  const std::vector<SettingsRow> defaults = SettingsTable(fresh);
  std::size_t next = 0;
  for (const SettingsRow& row : SettingsTable(station)) {
    const std::string standard = Written(defaults[next++]);
    if (row.Use == Access::WriteOnly) continue;
    const std::string text = ini.ReadIniValue(row.Section, row.Key, standard);
    if (row.Found != nullptr && !ini.ReadIniValue(row.Section, row.Key, "").empty()) *row.Found = true;
    const bool missing = row.ZeroIsMissing && base::RoundHalfEven(base::LeadingNumber(text)) == 0;
    if (Assign(row, missing ? standard : text)) continue;
    Assign(row, standard);
    station.Notes.push_back("KESTREL.ini, " + row.Section + ", " + row.Key + ": the number does not fit, \"" +
                            standard + "\" is used");
  }
}

/// A count as the file tells it, held within 0 and what a 16-bit index reaches.
std::size_t Promised(const base::ProfileFile& ini, std::string_view section, std::string_view key) {
  constexpr double most = std::numeric_limits<std::int16_t>::max();
  const double count = base::RoundHalfEven(base::LeadingNumber(ini.ReadIniValue(section, key, "0")));
  return static_cast<std::size_t>(std::clamp(count, 0.0, most));
}

/// The entries that a count promises and the file does not hold.
struct Gaps {
  std::size_t First = 0;
  std::size_t Count = 0;

  void Add(std::size_t n) {
    if (Count++ == 0) First = n;
  }
};

/// All gaps in one note: a count that lies has thousands.
void NoteGaps(const Gaps& gaps, std::string_view promise, std::string_view stem, Station& station) {
  if (gaps.Count == 0) return;
  std::string note = "KESTREL.ini: " + std::string(promise) + " that is not there: " + Numbered(stem, gaps.First);
  if (gaps.Count > 1) note += " and " + std::to_string(gaps.Count - 1) + " more";
  station.Notes.push_back(std::move(note));
}

/// One MAP<n> of the main file.
struct ListedTheater {
  std::size_t Number = 0;  ///< n
  std::string Name;
  std::filesystem::path Path;
};

/// The theaters of the main file but for those whose file would lie outside the folder of the theaters.
std::vector<ListedTheater> ListTheaters(const base::ProfileFile& ini, Station& station) {
  std::vector<ListedTheater> listed;
  const std::size_t promised = Promised(ini, "MAPS", "TOTALMAPS");
  Gaps gaps;
  for (std::size_t n = 1; n <= promised; ++n) {
    const std::string name = ini.ReadIniValue("MAPS", Numbered("MAP", n), "");
    if (name.empty()) {
      gaps.Add(n);
      continue;
    }
    try {
      listed.push_back({n, name, TheaterPath(station, name)});
    } catch (const base::RuntimeFailure& failure) {
      station.Notes.push_back(std::string("A theater is skipped: ") + failure.what());
    }
  }
  NoteGaps(gaps, "TOTALMAPS promises a theater", "MAP", station);
  return listed;
}

/// A file that cannot be looked at is not known to be gone.
bool IsGone(const ListedTheater& theater) {
  std::error_code failure;
  return !std::filesystem::exists(theater.Path, failure) && !failure;
}

void AppendTheater(const ListedTheater& listed, Station& station) {
  theaters::Theater theater = theaters::ReadTheaterFile(base::ProfileFile::Load(listed.Path), listed.Name);
  if (theaters::MendTheater(theater)) {
    station.Notes.push_back("Theater file " + listed.Name +
                            ": SIZE, PICSIZE or CURRENTBULL cannot be used and was put right");
  }
  station.Catalogue.Theaters.Append(std::move(theater));
}

/// All theaters; `CurrentTheater` holds the file's number of the current one and is made an index into what was read.
/// Returns the names of the files that are gone and left out; a list of nothing but such files is taken as it is.
std::vector<std::string> ReadTheaters(const base::ProfileFile& ini, Station& station) {
  theaters::Catalogue& catalogue = station.Catalogue;
  const auto wanted = static_cast<std::size_t>(std::max<std::int16_t>(catalogue.CurrentTheater, 0));
  catalogue.Theaters.Clear();
  catalogue.CurrentTheater = 0;
  const std::vector<ListedTheater> listed = ListTheaters(ini, station);
  const bool allGone = std::all_of(listed.begin(), listed.end(), IsGone);
  std::vector<std::string> gone;
  for (const ListedTheater& each : listed) {
    if (!allGone && IsGone(each)) {
      station.Notes.push_back("Theater file " + each.Name + " is gone: its theater is left out");
      gone.push_back(each.Name);
      continue;
    }
    AppendTheater(each, station);
    if (each.Number == wanted) catalogue.CurrentTheater = static_cast<std::int16_t>(catalogue.Theaters.UpperBound());
  }
  if (catalogue.CurrentTheater == 0 && !catalogue.Theaters.Empty()) {
    catalogue.CurrentTheater = 1;
    station.Notes.push_back("KESTREL.ini: CURRENTMAP names no theater, the first is used");
  }
  return gone;
}

void ReadPhonebook(const base::ProfileFile& ini, Station& station) {
  base::Table<link::ConnEntry>& phonebook = station.LinkOptions.ConnList;
  phonebook.Clear();
  const std::size_t promised = Promised(ini, "CONNLIST", "NUM");
  Gaps gaps;
  for (std::size_t n = 1; n <= promised; ++n) {
    const std::string section = Numbered("CONNLIST", n);
    if (ini.HasSection(section)) {
      phonebook.Append({ini.ReadIniValue(section, "NAME", ""), ini.ReadIniValue(section, "IP", "")});
    } else {
      gaps.Add(n);
    }
  }
  NoteGaps(gaps, "NUM promises a phonebook entry", "CONNLIST", station);
}

void WritePhonebook(const link::Options& options, base::ProfileFile& ini) {
  for (std::size_t n = 1; n <= options.ConnList.UpperBound(); ++n) {
    const std::string section = Numbered("CONNLIST", n);
    ini.WriteIniValue(section, "NAME", options.ConnList[n].Name);
    ini.WriteIniValue(section, "IP", options.ConnList[n].Ip);
  }
}

base::ProfileFile MainFile(const Station& station) {
  base::ProfileFile ini;
  ini.AppendLine(base::Banner("Main"));
  Station fresh;
  const std::vector<SettingsRow> defaults = SettingsTable(fresh);
  std::size_t next = 0;
  // The rows point into the station for reading as well; here nothing is written through them.
  for (const SettingsRow& row : SettingsTable(const_cast<Station&>(station))) {
    const SettingsRow& standard = defaults[next++];
    const std::string text = Written(row);
    const bool spared = row.Spared && text == Written(standard);
    if (row.Use != Access::ReadOnly && !spared) ini.WriteIniValue(row.Section, row.Key, text);
    if (!std::holds_alternative<base::Table<theaters::Theater>*>(row.Bound)) continue;
    const base::Table<theaters::Theater>& theaters = station.Catalogue.Theaters;
    for (std::size_t n = 1; n <= theaters.UpperBound(); ++n) {
      ini.WriteIniValue(row.Section, Numbered("MAP", n), theaters[n].TheaterFile);
    }
  }
  WritePhonebook(station.LinkOptions, ini);
  const std::filesystem::path present = MainIniFile(station);
  // One that is there and cannot be read is not written over.
  if (base::FileExists(present)) ini.CopySection(base::ProfileFile::Load(present), falcon::InstallSection);
  return ini;
}

}  // namespace

std::filesystem::path MainIniFile(const Station& station) { return base::FindFile(station.AppPath, "KESTREL.ini"); }

std::filesystem::path TheaterPath(const Station& station, std::string_view name) {
  const std::filesystem::path path = base::FindFile(TheatersFolder(station), name);
  // An absolute name would let a file anywhere be read and written.
  if (!theaters::StaysInFolder(name)) {
    throw base::RuntimeFailure("the name " + std::string(name) + " leaves the folder of the theaters");
  }
  return path;
}

std::vector<std::string> LoadSavedVars(Station& station) { return LoadSavedVars(station, MainIniFile(station)); }

std::vector<std::string> LoadSavedVars(Station& station, const std::filesystem::path& mainFile) {
  const base::ProfileFile ini = base::ProfileFile::Load(mainFile);
  ReadRows(ini, station);
  std::vector<std::string> gone = ReadTheaters(ini, station);
  ReadPhonebook(ini, station);
  try {
    LoadCallsigns(station);
  } catch (const base::RuntimeFailure& failure) {
    station.Notes.push_back(std::string("The callsigns are left out: ") + failure.what());
  }
  return gone;
}

void SaveVars(const Station& station) {
  std::optional<base::RuntimeFailure> firstFailure;
  const auto attempt = [&](auto save) {
    try {
      save();
    } catch (const std::exception& failure) {
      if (!firstFailure) firstFailure.emplace(failure.what());
    }
  };
  // The theater files first, so that the main file never names one that is not there yet.
  for (const theaters::Theater& theater : station.Catalogue.Theaters.Live()) {
    attempt([&] {
      theaters::WriteTheaterFile(theater, base::Banner("Theater")).Save(TheaterPath(station, theater.TheaterFile));
    });
  }
  attempt([&] { SaveCallsigns(station); });
  attempt([&] { MainFile(station).Save(MainIniFile(station)); });
  if (firstFailure) throw *firstFailure;
}

void SaveConnList(const Station& station) {
  base::ProfileFile ini = base::ProfileFile::Load(MainIniFile(station));
  ini.WriteIniValue("CONNLIST", "NUM",
                    base::FormatInvariant(static_cast<double>(station.LinkOptions.ConnList.UpperBound()), "0"));
  WritePhonebook(station.LinkOptions, ini);
  ini.Save(MainIniFile(station));
}

}  // namespace kestrel::core
