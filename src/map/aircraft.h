#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "map/geometry.h"
#include "map/renderer.h"
#include "map/snapshot_tracks.h"

// The aircraft that the person means: players and AI alike, picked on the map and found again in the tables.
namespace kestrel::map {

/// An aircraft is meant by a press so near to it, surface units: 12 pixels.
inline constexpr double PickDistance = 180;

/// An aircraft, wherever the tables have it.
struct Aircraft {
  bool Real = false;
  std::int16_t Id = 0;    ///< of a real player
  std::string Name = {};  ///< of an AI aircraft as received; of a player for the log alone
  MapPoint At = {};       ///< where it was last. Of several AI aircraft of one name it is the one nearest to there
  bool operator==(const Aircraft& other) const {
    // Two of one name are told apart by where they are.
    if (Real || other.Real) return Real == other.Real && Id == other.Id;
    return Name == other.Name && At.X == other.At.X && At.Y == other.At.Y;
  }
};

/// What a call tells of its second aircraft.
struct CallFacts {
  std::int16_t Altitude = 0;         ///< hundreds of feet
  std::optional<double> Track = {};  ///< degrees clockwise from north; nothing while there is none
};

/// An aircraft as the tables have it now; one of the two is its record.
struct SeenAircraft {
  MapPoint At;
  CallFacts Facts;
  bool Shown = false;  ///< it stands on the map
  const link::PlotRecord* Player = nullptr;
  const link::AIPlotRecord* Plot = nullptr;
};
SeenAircraft Seen(const Scene& scene, const link::PlotRecord& plot);
SeenAircraft Seen(const Scene& scene, const SnapshotTracks& tracks, const link::AIPlotRecord& plot);
/// Nothing when it is gone; its place is noted otherwise.
std::optional<SeenAircraft> FindAircraft(const Scene& scene, const SnapshotTracks& tracks, Aircraft& wanted);

Aircraft AircraftOf(const link::PlotRecord& plot);
Aircraft AircraftOf(const Scene& scene, const link::AIPlotRecord& plot);

/// True for what is drawn, in view or not.
bool IsShown(const Scene& scene, const link::PlotRecord& plot);
bool IsShown(const Scene& scene, const link::AIPlotRecord& plot);
/// True for a place that the map can be moved to: a player has none before the second position.
bool HasPlace(const link::PlotRecord& plot);
bool HasPlace(const Scene& scene, const link::AIPlotRecord& plot);

/// The nearest that is shown within PickDistance. `last`, if any, counts only where there is no other.
std::optional<Aircraft> AircraftAt(const Scene& scene, SurfacePoint at, const std::optional<Aircraft>& last);

/// A foreign name as one short line: without blanks at its ends, signs that cannot be shown as blanks; what is longer
/// than `most` ends in "...".
std::string ShortName(std::string_view name, std::size_t most = 60);
/// Hundreds of feet in feet with a blank before each three digits, like "25 000".
std::string FeetText(std::int16_t hundreds);

}  // namespace kestrel::map
