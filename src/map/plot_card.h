#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "map/aircraft.h"

namespace kestrel::map {

struct Ties;

/// What is told of one aircraft beside it, code page bytes without control characters.
struct PlotCard {
  struct Row {
    std::string_view Label;  ///< like "Altitude"
    std::string Value;       ///< like "25 000 ft"; "-" for what is not known
    bool operator==(const Row&) const = default;
  };
  std::string Title;  ///< its name, shortened
  std::vector<Row> Rows;
  bool operator==(const PlotCard&) const = default;
};

/// The card of an aircraft as the tables have it now: callsign (of a player), altitude, speed, track, bearing and range
/// from the bullseye and from the cursor's anchor. Speed and track of an AI aircraft come of the last two snapshots in
/// `ties`, as FollowTies has them. Nothing when it is gone or not shown; its place is noted otherwise.
std::optional<PlotCard> CardOf(const Scene& scene, const Ties& ties, Aircraft& who);

/// Where the card's upper left corner goes on a map of this size, all in pixels: below and right of the pointer, on the
/// other side where there is no room, on the map as far as it fits.
SurfacePoint CardPlace(SurfacePoint pointer, SurfacePoint card, SurfacePoint room);

}  // namespace kestrel::map
