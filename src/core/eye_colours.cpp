#include "core/eye_colours.h"

#include <utility>

namespace kestrel::core {
namespace {

using base::Changed;

/// The lines of the cursor lie over the map, the list of players and the controls show their colours too.
constexpr Changed Everything = Changed::Map | Changed::CursorLine | Changed::Roster | Changed::Options;

/// A setting, what the set has for it and where what was there is kept.
struct SetRow {
  base::Colour& Setting;
  base::Colour Eye;
  base::Colour& Former;
};

std::array<SetRow, 5> RowsOf(Station& station) {
  map::Options& map = station.MapOptions;
  map::Extras& extras = station.Extras;
  return {SetRow{station.LinkOptions.AICOLOR, EyeColours::Foe, extras.FORMER_AICOLOR},
          SetRow{map.AICOLOR_FRIENDS, EyeColours::Friend, extras.FORMER_AICOLOR_FRIENDS},
          SetRow{map.CURSOR_COLOR, EyeColours::Cursor, extras.FORMER_CURSOR_COLOR},
          SetRow{map.CURSOR_TEXT_COOR, EyeColours::Cursor, extras.FORMER_CURSOR_TEXT_COOR},
          SetRow{map.BULLSEYE_COLOR, EyeColours::Bullseye, extras.FORMER_BULLSEYE_COLOR}};
}

}  // namespace

Changed UseEyeColours(Station& station) {
  const bool first = !std::exchange(station.Extras.EYECOLORS, true);
  for (const SetRow& row : RowsOf(station)) {
    if (first) row.Former = row.Setting;
    row.Setting = row.Eye;
  }
  if (first) station.FormerPlayers.clear();
  for (link::PlotRecord& player : station.Plots.Clients.Live()) {
    if (player.Color == EyeColours::Players) continue;
    station.FormerPlayers.push_back({player.Id, player.Name, player.Color});
    player.Color = EyeColours::Players;
  }
  return Everything;
}

Changed PutColoursBack(Station& station) {
  if (!std::exchange(station.Extras.EYECOLORS, false)) return Changed::Nothing;
  for (const SetRow& row : RowsOf(station)) row.Setting = std::exchange(row.Former, 0);
  for (const FormerPlayer& former : std::exchange(station.FormerPlayers, {})) {
    const std::size_t index = station.Plots.FindClient(former.Id);
    if (index == 0) continue;
    link::PlotRecord& player = station.Plots.Clients[index];
    // Another may have come with his number, or the person has given him a colour since.
    if (player.Name == former.Name && player.Color == EyeColours::Players) player.Color = former.Color;
  }
  return Everything;
}

}  // namespace kestrel::core
