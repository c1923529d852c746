#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/table.h"
#include "falcon/object_tables.h"
#include "falcon/stations.h"
#include "falcon/world.h"
#include "radio/frequencies.h"
#include "radio/frequency_changes.h"

// Airfields with their navigation aids, made of the simulator's own data.
namespace kestrel::radio {

/// Name of an airfield whose station is that of no objective.
inline constexpr std::string_view NoAirbase = "**Not an Airbase!";
/// Name of an airfield whose objective has none.
inline constexpr std::string_view NoAirfieldName = "**Not found in Theater Strings!";

/// What a campaign gives a theater's tables.
struct AirfieldBuild {
  std::array<std::string, TeamCount> Teams;
  base::Table<Airfield> Airfields;  ///< one for each station, in their order; nothing of them is drawn
  std::string Trouble;              ///< why the list goes no further; empty when it is whole
};

/// Makes an airfield of each station: name, owner and place of the objective with its number (the first one of
/// several), which stands in the middle of its cell; the ends of the runways when that is an airbase or an airstrip;
/// and the texts of the station. A station of no objective is an airfield at 0, 0 with its texts. The ends stand in the
/// order second and first of runway 0, second and first of runway 1. A team without a name has the default one.
AirfieldBuild BuildAirfields(const falcon::World& world, const falcon::ObjectTables& tables,
                             const falcon::StationList& stations);

/// Replaces teams and airfields; everything else stays.
void TakeAirfields(Frequencies& tables, FrequencyHistory& steps, AirfieldBuild build);

}  // namespace kestrel::radio
