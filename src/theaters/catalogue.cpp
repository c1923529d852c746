#include "theaters/catalogue.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"

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

/// A file of the theater is deleted only when its name stays in the folder: settings files come from anywhere.
bool IsRelative(std::string_view name) {
  return !name.empty() && name.find(':') == std::string_view::npos && name.front() != '/' && name.front() != '\\' &&
         name.find("..") == std::string_view::npos;
}

void DeleteBelow(const std::filesystem::path& folder, std::string_view name) {
  if (!IsRelative(name)) return;
  const std::filesystem::path path = base::FindFile(folder, name);
  if (base::FileExists(path)) base::DeleteFile(path);
}

}  // namespace

DownPoint CurrentBullseye(const Theater& theater) {
  if (!NamesBullseye(theater, theater.CurrentBull)) return {theater.Size / 2, theater.Size / 2};
  const Bullseye& bull = theater.Bulls[static_cast<std::size_t>(theater.CurrentBull)];
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

std::string DataFile(const Theater& theater, std::string_view end) { return theater.Name + std::string(end); }

std::string CleanFileName(std::string_view name) {
  std::string clean;
  for (const char c : name) {
    if (std::string_view("\"|><?*:\\/").find(c) == std::string_view::npos) clean += c;
  }
  return clean.empty() ? "New" : clean;
}

std::string NewFileName(const std::filesystem::path& folder, std::string_view name, std::string_view end) {
  const std::string clean = CleanFileName(name);
  std::string stem = clean;
  for (int n = 1; base::FileExists(base::FindFile(folder, stem + std::string(end))); ++n) {
    stem = clean + "(" + base::FormatInvariant(n, "0") + ")";
  }
  return stem;
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

void RemoveTheater(Catalogue& catalogue, std::size_t row, const std::filesystem::path& folder) {
  if (catalogue.CurrentTheater > 0 && static_cast<std::size_t>(catalogue.CurrentTheater) > row) {
    --catalogue.CurrentTheater;
  }
  const Theater removed = std::move(catalogue.Theaters[row]);
  catalogue.Theaters.Remove(row);
  DeleteBelow(folder, removed.TheaterFile);
  DeleteBelow(folder, removed.Pic);
  for (const std::string_view end : DataFileEnds) DeleteBelow(folder, DataFile(removed, end));
}

}  // namespace kestrel::theaters
