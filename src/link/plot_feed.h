#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/link_options.h"
#include "link/tables.h"
#include "theaters/theater.h"

// INDATA and AILOCA become the tables that the map draws.
namespace kestrel::link {

/// Generations of AI dots: one whose Age reaches this is dropped.
inline constexpr int DroppedAge = 7;
/// Colour of the dots of friendly AI aircraft: blue whatever AICOLOR_FRIENDS says. This stands.
inline constexpr base::Colour FriendlyHistoryColour = 16711680;

/// Handles INDATA: moves one client; an Id that nobody holds moves the dummy in slot 0. RuntimeFailure, with nothing
/// changed, for a missing field, an Id or an altitude that does not fit 16 bits, a position that is not finite. A speed
/// beyond 16 bits (a respawn far away) is held at 32767.
void GetAWACSPosData(std::string_view Data, std::int32_t SyncInterval, Tables& tables);

/// Handles AILOCA after IncreasePlotHistories: replaces AIPlots by the snapshot in `Data`, sorted by name. `bullseye`:
/// what bearings and ranges are relative to. A field that does not convert is 0; a last record of 9 to 17 characters
/// counts.
void ParseAI(std::string_view Data, theaters::DownPoint bullseye, Tables& tables);

/// X, Y and Hostile of every AI plot from its Bearing, Range and Name, as ParseAI sets them; the order stays.
void PlaceAIPlots(theaters::DownPoint bullseye, Tables& tables);

/// Ages the AI trail and adds the present AIPlots to it; `AICOLOR` is the colour of hostile dots.
void IncreasePlotHistories(base::Colour AICOLOR, Tables& tables);

/// Adds one more dot of Age 1 for each of the present AIPlots.
void AddPlotDots(base::Colour AICOLOR, Tables& tables);

/// Speed of a client in knots from its last History slot to its position, over `IntervalMs`; 0 without an interval,
/// without PosText, or when that slot is exactly 0, 0.
double CalcSpeed(const PlotRecord& client, std::int32_t IntervalMs);

/// 14 digits in the order of the wire: (size - Y) then X, in feet, each "0000000". `size`: the theater's Size. Nothing
/// calls it; this stands.
std::string XYToFeetStr(double X, double Y, double size);

/// A plot is shown from its second position on: PosText is not empty and not "0000.0000000.000".
bool HasShownPosition(const PlotRecord& client);

}  // namespace kestrel::link
