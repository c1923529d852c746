#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/changed.h"
#include "map/aircraft.h"

namespace kestrel::map {

struct Ties;

/// How many aircraft a search shows at the most; who wants others types more.
inline constexpr std::size_t MostFound = 100;

/// An aircraft that a search has found.
struct FoundPlot {
  Aircraft Who;
  std::string Text;  ///< name, of a player with his callsign behind it; shortened, without control characters
};

struct FoundPlots {
  std::vector<FoundPlot> Shown;  ///< the first MostFound: players, then AI aircraft, as the tables have them
  std::size_t Total = 0;         ///< all that were found
};

/// The players and AI aircraft that have a place and in whose name or callsign `typed` stands, without regard to the
/// case of ASCII letters; blanks around it do not count. An empty text finds all. Also what is not shown on the map.
FoundPlots FindPlots(const Scene& scene, std::string_view typed);

/// For so long the mark around an aircraft that was looked for stays, milliseconds.
inline constexpr std::uint32_t RingTime = 3000;
/// Centres the map on the aircraft and marks it in `ties` until EndRing; FollowTies is due then. Nothing for one that
/// is gone or has no place.
base::Changed ShowAircraft(const Scene& scene, Aircraft who, ViewState& view, Ties& ties);
/// True when there was a mark.
bool EndRing(Ties& ties);

}  // namespace kestrel::map
