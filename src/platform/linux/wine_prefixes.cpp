#include "platform/linux/wine_prefixes.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::platform {
namespace fs = std::filesystem;
namespace {

/// Of a folder so many entries are listed, and so many prefixes are found at most.
constexpr std::size_t MostEntries = 4096;
constexpr std::size_t MostPrefixes = 1024;
/// Largest file of settings that is read for the name of a folder.
constexpr std::size_t MaxSettingsBytes = std::size_t{1} << 20;

constexpr std::string_view Blanks = " \t\r";

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(Blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(Blanks) + 1 - begin);
}

/// The entries of a folder in the order of their names; none when it cannot be listed.
std::vector<fs::path> EntriesOf(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code failure;
  fs::directory_iterator entry(folder, fs::directory_options::skip_permission_denied, failure);
  for (; !failure && entry != fs::directory_iterator() && entries.size() < MostEntries; entry.increment(failure)) {
    entries.push_back(entry->path());
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

/// The lines of a file of settings; none when it is missing or cannot be read.
std::vector<std::string> LinesOf(const fs::path& file) {
  std::vector<std::string> lines;
  try {
    const std::string text = base::ReadWholeFile(file, MaxSettingsBytes);
    for (const std::string_view line : base::Split(text, '\n')) lines.emplace_back(line);
  } catch (const base::RuntimeFailure&) {
    // Then it tells of no folder.
  }
  return lines;
}

/// The text in quotes at the beginning of `text`, which it is taken from, a backslash before a character that stands
/// for itself; empty when there is none.
std::string TakeQuoted(std::string_view& text) {
  text = WithoutBlanks(text);
  if (!text.starts_with('"')) return {};
  std::string quoted;
  std::size_t at = 1;
  for (; at < text.size() && text[at] != '"'; ++at) {
    if (text[at] == '\\' && at + 1 < text.size()) ++at;
    quoted += text[at];
  }
  text.remove_prefix(std::min(text.size(), at + 1));
  return quoted;
}

/// The folders of a list of libraries: lines "path" "/folder", or in older lists a number in place of the word.
std::vector<fs::path> LibrariesOf(const fs::path& list) {
  std::vector<fs::path> folders;
  for (const std::string& line : LinesOf(list)) {
    std::string_view rest = line;
    const std::string name = TakeQuoted(rest);
    if (name.empty()) continue;
    const std::string folder = TakeQuoted(rest);
    if (folder.starts_with('/')) folders.emplace_back(folder);
  }
  return folders;
}

class Search {
 public:
  explicit Search(const PrefixPlaces& from) : places(from) {}

  void Add(const fs::path& prefix) {
    std::error_code failure;
    if (found.size() >= MostPrefixes || !fs::is_regular_file(prefix / "system.reg", failure)) return;
    fs::path known = fs::canonical(prefix, failure);
    if (!failure && seen.insert(known).second) found.push_back(std::move(known));
  }
  void AddEach(const fs::path& folder) {
    for (const fs::path& entry : EntriesOf(folder)) Add(entry);
  }

  /// A folder of Steam and the libraries that it lists.
  void AddSteam(const fs::path& steam) {
    std::set<fs::path> libraries = {steam};
    for (const char* const list : {"steamapps/libraryfolders.vdf", "config/libraryfolders.vdf"}) {
      for (fs::path& library : LibrariesOf(steam / list)) libraries.insert(std::move(library));
    }
    for (const fs::path& library : libraries) {
      for (const fs::path& game : EntriesOf(library / "steamapps" / "compatdata")) Add(game / "pfx");
    }
  }

  /// A folder with a file for each game, which tells the game's prefix.
  void AddLutris(const fs::path& games) {
    for (const fs::path& game : EntriesOf(games)) {
      if (game.extension() == ".yml") AddGame(LinesOf(game));
    }
  }

  std::vector<fs::path> found;

 private:
  void AddGame(const std::vector<std::string>& lines) {
    constexpr std::string_view key = "prefix:";
    for (std::size_t at = 0; at < lines.size(); ++at) {
      const std::size_t depth = std::min(lines[at].find_first_not_of(Blanks), lines[at].size());
      std::string_view text = WithoutBlanks(lines[at]);
      if (!text.starts_with(key)) continue;
      std::string value(WithoutBlanks(text.substr(key.size())));
      // A long text goes on in lines that stand further in.
      for (std::size_t next = at + 1; next < lines.size(); ++next) {
        if (std::min(lines[next].find_first_not_of(Blanks), lines[next].size()) <= depth) break;
        value.append(value.empty() ? "" : " ").append(WithoutBlanks(lines[next]));
      }
      const bool quoted =
          value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
      if (quoted) value = value.substr(1, value.size() - 2);
      if (value.starts_with("~/")) value = (places.Home / value.substr(2)).string();
      if (value.starts_with('/')) Add(value);
    }
  }

  const PrefixPlaces& places;
  std::set<fs::path> seen;
};

constexpr const char* SteamFolders[] = {".steam/steam",
                                        ".steam/root",
                                        ".steam/debian-installation",
                                        ".local/share/Steam",
                                        ".var/app/com.valvesoftware.Steam/.local/share/Steam",
                                        ".var/app/com.valvesoftware.Steam/data/Steam",
                                        "snap/steam/common/.local/share/Steam"};
constexpr const char* LutrisFolders[] = {".local/share/lutris/games", ".config/lutris/games",
                                         ".var/app/net.lutris.Lutris/data/lutris/games",
                                         ".var/app/net.lutris.Lutris/config/lutris/games"};
/// Folders of prefixes.
constexpr const char* PrefixFolders[] = {"Games", ".local/share/bottles/bottles",
                                         ".var/app/com.usebottles.bottles/data/bottles/bottles"};

fs::path Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? fs::path() : fs::path(value);
}

}  // namespace

PrefixPlaces PrefixPlaces::Own() {
  return {Variable("HOME"), Variable("XDG_DATA_HOME"), Variable("XDG_CONFIG_HOME"), Variable("WINEPREFIX")};
}

std::vector<fs::path> FindWinePrefixes(const PrefixPlaces& places) {
  Search search(places);
  if (!places.WinePrefix.empty()) search.Add(places.WinePrefix);
  if (!places.Home.empty()) {
    search.Add(places.Home / ".wine");
    for (const char* const folder : SteamFolders) search.AddSteam(places.Home / folder);
  }
  if (!places.DataHome.empty()) search.AddSteam(places.DataHome / "Steam");
  if (!places.Home.empty()) {
    for (const char* const folder : LutrisFolders) search.AddLutris(places.Home / folder);
  }
  if (!places.DataHome.empty()) search.AddLutris(places.DataHome / "lutris" / "games");
  if (!places.ConfigHome.empty()) search.AddLutris(places.ConfigHome / "lutris" / "games");
  if (!places.Home.empty()) {
    for (const char* const folder : PrefixFolders) search.AddEach(places.Home / folder);
  }
  if (!places.DataHome.empty()) search.AddEach(places.DataHome / "bottles" / "bottles");
  return std::move(search.found);
}

}  // namespace kestrel::platform
