#include "theaters/catalogue.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <set>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"

namespace kestrel::theaters {
namespace {

/// True when `index` names an element of `Bulls`.
bool NamesBullseye(const Theater& theater, std::int16_t index) {
  return index >= 1 && static_cast<std::size_t>(index) <= theater.Bulls.UpperBound();
}

bool MendExtent(double& extent) {
  if (std::isfinite(extent) && extent > 0) return false;
  extent = DefaultSize;
  return true;
}

bool IsSlash(char letter) { return letter == '/' || letter == '\\'; }

/// What no file name may hold on one system or the other.
bool IsForbidden(char letter) {
  return static_cast<unsigned char>(letter) < ' ' ||
         std::string_view("\"|><?*:").find(letter) != std::string_view::npos;
}

/// The steps of a name with either slash, without those that lead nowhere.
std::vector<std::string> StepsOf(std::string_view name) {
  std::string slashed(name);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  std::vector<std::string> steps;
  for (const std::string_view step : base::Split(slashed, '/')) {
    if (!step.empty() && step != ".") steps.emplace_back(step);
  }
  return steps;
}

/// Such a name opens a device whatever follows a point behind it.
bool IsDevice(std::string_view name) {
  const std::string stem = base::Lower(base::Trim(name.substr(0, name.find('.'))));
  for (const std::string_view device : {"con", "prn", "aux", "nul"}) {
    if (stem == device) return true;
  }
  return stem.size() == 4 && (stem.starts_with("com") || stem.starts_with("lpt")) && stem[3] >= '1' && stem[3] <= '9';
}

/// The names of a theater's files, in the order of deletion.
std::vector<std::string> FilesOf(const Theater& theater) {
  std::vector<std::string> names = {theater.TheaterFile, theater.Pic};
  for (const std::string_view end : DataFileEnds) names.push_back(DataFile(theater, end));
  return names;
}

/// What two names of one file have in common, whatever their case and slashes.
std::string FileKey(std::string_view name) {
  std::vector<std::string> way;
  for (const std::string& step : StepsOf(name)) {
    if (step == ".." && !way.empty()) {
      way.pop_back();
    } else {
      way.push_back('/' + base::Lower(step));
    }
  }
  return std::accumulate(way.begin(), way.end(), std::string());
}

}  // namespace

Bullseye CurrentBullseyePlace(const Theater& theater) {
  if (!NamesBullseye(theater, theater.CurrentBull)) return {{}, theater.Size / 2, theater.Size / 2};
  return theater.Bulls[static_cast<std::size_t>(theater.CurrentBull)];
}

DownPoint CurrentBullseye(const Theater& theater) {
  const Bullseye bull = CurrentBullseyePlace(theater);
  return {bull.X, theater.Size - bull.Y};
}

bool MendTheater(Theater& theater) {
  bool changed = MendExtent(theater.Size);
  changed = MendExtent(theater.PicSize) || changed;
  const bool points = theater.Bulls.Empty() ? theater.CurrentBull == 0 : NamesBullseye(theater, theater.CurrentBull);
  if (!points) {
    theater.CurrentBull = theater.Bulls.Empty() ? 0 : 1;
    changed = true;
  }
  return changed;
}

std::string DataFile(const Theater& theater, std::string_view end) {
  std::string name = theater.Name + std::string(end);
  std::replace_if(name.begin(), name.end(), IsForbidden, '_');
  if (!name.empty() && IsSlash(name.front())) name.front() = '_';
  for (auto at = name.find(".."); at != std::string::npos; at = name.find("..", at + 1)) {
    const bool begins = at == 0 || IsSlash(name[at - 1]);
    const bool ends = at + 2 == name.size() || IsSlash(name[at + 2]);
    if (begins && ends) name.replace(at, 2, "_");
  }
  return name;
}

std::string CleanFileName(std::string_view name) {
  std::string clean;
  for (const char c : name) {
    if (!IsForbidden(c) && !IsSlash(c)) clean += c;
  }
  if (clean.empty()) return "New";
  return IsDevice(clean) ? clean + "_" : clean;
}

std::string NewFileName(const std::filesystem::path& folder, std::string_view name, std::string_view end) {
  const std::string clean = CleanFileName(name);
  std::string stem = clean;
  for (int n = 1; base::FileExists(base::FindFile(folder, stem + std::string(end))); ++n) {
    stem = clean + "(" + base::FormatInvariant(n, "0") + ")";
  }
  return stem;
}

bool StaysInFolder(std::string_view name) {
  if ((!name.empty() && IsSlash(name.front())) || name.find_first_of(std::string_view(":\0", 2)) != std::string::npos) {
    return false;
  }
  int depth = 0;
  for (const std::string& step : StepsOf(name)) {
    depth += step == ".." ? -1 : 1;
    if (depth < 0) return false;
  }
  return true;
}

std::optional<std::string> Objection(const TheaterDetails& details, const std::optional<TheaterDetails>& shown) {
  if (base::Trim(details.DisplayName).empty()) return "Theater needs a name...";
  if (!shown && details.DisplayName.size() > MaxNameLength) {
    return "The name of a theater can have at most 100 characters.";
  }
  const bool sizeStands = shown && details.Size == shown->Size;
  if (!sizeStands && !(details.Size >= 1 && details.Size <= MaxSize)) {
    return "The size of a theater must lie between 1 and 8192.";
  }
  const double lat = shown && details.CoordLat == shown->CoordLat ? 0 : details.CoordLat;
  const double longitude = shown && details.CoordLong == shown->CoordLong ? 0 : details.CoordLong;
  if (!IsCorner(lat, longitude)) {
    return "The corner of a theater must lie between -90 and 90 degrees of latitude and between -360 and 360 degrees "
           "of longitude.";
  }
  return std::nullopt;
}

std::optional<std::string> Objection(const Bullseye& bullseye, const std::optional<Bullseye>& shown) {
  const auto fits = [](double value) { return std::abs(value) <= MaxBullseyeDistance; };
  const bool xFits = (shown && bullseye.X == shown->X) || fits(bullseye.X);
  const bool yFits = (shown && bullseye.Y == shown->Y) || fits(bullseye.Y);
  if (xFits && yFits) return std::nullopt;
  return "X and Y of a bullseye must lie between -100000 and 100000.";
}

bool IsCorner(double lat, double longitude) { return std::abs(lat) <= 90 && std::abs(longitude) <= 360; }

Theater NewTheater(const TheaterDetails& details, double bullX, double bullY, const std::filesystem::path& folder) {
  Theater theater;
  theater.Name = details.DisplayName;
  // Each with a number of its own: stray files may lie there.
  theater.TheaterFile = NewFileName(folder, details.DisplayName, ".ini") + ".ini";
  theater.Pic = NewFileName(folder, details.DisplayName, ".gif") + ".gif";
  theater.PicSize = DefaultSize;
  AddBullseye(theater, {"Default", bullX, bullY});
  ApplyDetails(theater, details);
  return theater;
}

void ApplyDetails(Theater& theater, const TheaterDetails& details) {
  theater.DisplayName = details.DisplayName;
  theater.Size = details.Size;
  theater.CoordLat = details.CoordLat;
  theater.CoordLong = details.CoordLong;
}

void AppendTheater(Catalogue& catalogue, Theater theater) {
  base::ToInt16(static_cast<double>(catalogue.Theaters.UpperBound() + 1));
  catalogue.Theaters.Append(std::move(theater));
}

void AddBullseye(Theater& theater, Bullseye bullseye) {
  const std::int16_t index = base::ToInt16(static_cast<double>(theater.Bulls.UpperBound() + 1));
  theater.Bulls.Append(std::move(bullseye));
  theater.CurrentBull = index;
}

void RemoveBullseye(Theater& theater, std::size_t row) {
  if (theater.CurrentBull > 0 && static_cast<std::size_t>(theater.CurrentBull) > row) --theater.CurrentBull;
  theater.Bulls.Remove(row);
}

std::vector<std::string> RemoveTheater(Catalogue& catalogue, std::size_t row, const std::filesystem::path& folder) {
  if (catalogue.CurrentTheater > 0 && static_cast<std::size_t>(catalogue.CurrentTheater) > row) {
    --catalogue.CurrentTheater;
  }
  const Theater removed = std::move(catalogue.Theaters[row]);
  catalogue.Theaters.Remove(row);
  std::set<std::string> inUse;
  for (const Theater& theater : catalogue.Theaters.Live()) {
    for (const std::string& name : FilesOf(theater)) inUse.insert(FileKey(name));
  }
  std::vector<std::string> left;
  for (const std::string& name : FilesOf(removed)) {
    // Settings files come from anywhere, and what they name may lie outside.
    if (name.empty() || !StaysInFolder(name) || inUse.contains(FileKey(name))) continue;
    const std::filesystem::path path = base::FindFile(folder, name);
    if (base::FileExists(path) && !base::DeleteFile(path)) left.push_back(name);
  }
  return left;
}

}  // namespace kestrel::theaters
