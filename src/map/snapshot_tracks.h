#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/tables.h"
#include "map/geometry.h"

namespace kestrel::map {

/// Where AI aircraft fly to: the last two snapshots by name. Places are kept as the server tells them, from the
/// bullseye, so that another bullseye makes no movement.
class SnapshotTracks {
 public:
  /// Looks at the table; one that tells other things than the last is a new snapshot. `follows`: it comes next after
  /// that. Otherwise, as when the person jumps in a tape, nobody has a track until there is another. True for a new
  /// one.
  bool Take(const base::Table<link::AIPlotRecord>& plots, bool follows = true);
  /// Degrees clockwise from north, 0 to below 360. Nothing for a name that is not in both snapshots, stands in one of
  /// them twice, or has not moved.
  std::optional<double> TrackOf(std::string_view name) const;
  /// How far it has come from the last snapshot but one to the last, nautical miles; nothing for a name that is not in
  /// both, or stands in one of them twice.
  std::optional<double> MilesOf(std::string_view name) const;

 private:
  struct Entry {
    std::string Name;
    double Bearing = 0;
    double Range = 0;
    MapPoint Place() const;  ///< nautical miles from the bullseye
  };
  struct Snapshot {
    std::vector<Entry> Entries;         ///< in the order of the table
    std::vector<std::uint32_t> ByName;  ///< of Entries
    /// Null when there is none of this name, or more than one.
    const Entry* Only(std::string_view name) const;
  };

  bool IsPresent(const base::Table<link::AIPlotRecord>& plots) const;

  Snapshot former;
  Snapshot present;
};

}  // namespace kestrel::map
