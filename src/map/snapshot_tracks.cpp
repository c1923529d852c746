#include "map/snapshot_tracks.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

#include "map/geometry.h"

namespace kestrel::map {
namespace {

constexpr double RadiansOfDegree = 3.14159265358979 / 180;

}  // namespace

bool SnapshotTracks::IsPresent(const base::Table<link::AIPlotRecord>& plots) const {
  const std::span<const link::AIPlotRecord> live = plots.Live();
  return std::equal(live.begin(), live.end(), present.Entries.begin(), present.Entries.end(),
                    [](const link::AIPlotRecord& plot, const Entry& entry) {
                      return plot.Bearing == entry.Bearing && plot.Range == entry.Range && plot.Name == entry.Name;
                    });
}

bool SnapshotTracks::Take(const base::Table<link::AIPlotRecord>& plots, bool follows) {
  if (IsPresent(plots)) return false;
  // The memory of the snapshot before last serves the new one.
  std::swap(former, present);
  if (!follows) former = {};
  present.Entries.resize(plots.UpperBound());
  for (std::size_t index = 0; index < present.Entries.size(); ++index) {
    const link::AIPlotRecord& plot = plots[index + 1];
    present.Entries[index].Name = plot.Name;
    present.Entries[index].Bearing = plot.Bearing;
    present.Entries[index].Range = plot.Range;
  }
  present.ByName.resize(present.Entries.size());
  std::iota(present.ByName.begin(), present.ByName.end(), 0U);
  const auto before = [this](std::uint32_t a, std::uint32_t b) {
    return present.Entries[a].Name < present.Entries[b].Name;
  };
  // Servers' snapshots are sorted as they are taken in.
  if (std::is_sorted(present.ByName.begin(), present.ByName.end(), before)) return true;
  std::sort(present.ByName.begin(), present.ByName.end(), before);
  return true;
}

const SnapshotTracks::Entry* SnapshotTracks::Snapshot::Only(std::string_view name) const {
  const auto first =
      std::lower_bound(ByName.begin(), ByName.end(), name,
                       [this](std::uint32_t index, std::string_view wanted) { return Entries[index].Name < wanted; });
  const auto is = [&](auto at) { return at != ByName.end() && Entries[*at].Name == name; };
  if (!is(first) || is(std::next(first))) return nullptr;
  return &Entries[*first];
}

MapPoint SnapshotTracks::Entry::Place() const {
  const double radians = Bearing * RadiansOfDegree;
  return {Range * std::sin(radians), Range * std::cos(radians)};
}

std::optional<double> SnapshotTracks::TrackOf(std::string_view name) const {
  const Entry* from = former.Only(name);
  const Entry* to = present.Only(name);
  if (from == nullptr || to == nullptr) return std::nullopt;
  // The same words are the same place, whatever the sines make of them.
  if (from->Bearing == to->Bearing && from->Range == to->Range) return std::nullopt;
  return DirectionFrom(from->Place(), to->Place());
}

std::optional<double> SnapshotTracks::MilesOf(std::string_view name) const {
  const Entry* from = former.Only(name);
  const Entry* to = present.Only(name);
  if (from == nullptr || to == nullptr) return std::nullopt;
  return std::hypot(to->Place().X - from->Place().X, to->Place().Y - from->Place().Y);
}

}  // namespace kestrel::map
