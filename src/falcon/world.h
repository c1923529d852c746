#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "falcon/entity_id.h"
#include "falcon/string_table.h"

// What the simulator's campaign files tell, in one form for all their generations: each reader reads into it.
namespace kestrel::falcon {

/// The simulator's cell, which is the map unit, in feet.
inline constexpr double FeetPerCell = 3279.98;

/// The middle of a cell, which is where the simulator puts what stands in it, in map units east of the left edge or
/// north of the lower one.
constexpr double MiddleOfCell(std::int16_t cell) { return cell + 0.5; }
/// A distance in feet in map units.
constexpr double MapUnitsOfFeet(double feet) { return feet / FeetPerCell; }

/// Numbers of the countries: what an owner is, 0 being neutral by convention.
inline constexpr std::size_t Countries = 8;

struct Country {
  std::string Name;         ///< may be empty
  std::string Motto;        ///< may be empty
  std::uint8_t Side = 0;    ///< the country whose team it plays in, its own number when it leads or stands alone
  bool Active = false;      ///< it is a team of its own
  std::uint8_t Flag = 0;    ///< number of its flag
  std::uint8_t Colour = 0;  ///< number of its colour
  std::array<std::int16_t, Countries> Stance = {};  ///< 0 none, 1 allied, 2 friendly, 3 neutral, 4 hostile, 5 war
};

/// The exact place that files of later versions tell.
struct ExactPlace {
  double North = 0;   ///< feet from the lower edge
  double East = 0;    ///< feet from the left edge
  double Height = 0;  ///< feet, 0 in every file seen
  float Heading = 0;  ///< degrees clockwise from north
};

/// State of a feature: 0 whole, 1 repaired, 2 damaged, 3 destroyed.
using FeatureState = std::uint8_t;

struct Objective {
  EntityId Id;
  std::int16_t CampId = 0;          ///< the number that stations and other texts name it by
  std::uint16_t ClassIndex = 0;     ///< record of the class table
  std::uint8_t Owner = 0;           ///< country, below Countries
  std::uint8_t FirstOwner = 0;      ///< as Owner, at the campaign's beginning
  std::int16_t CellX = 0;           ///< cell east of the left edge, within the theater
  std::int16_t CellY = 0;           ///< cell north of the lower edge, within the theater
  std::optional<ExactPlace> Exact;  ///< when the file tells one that is a place of the theater
  std::uint32_t Flags = 0;          ///< front line, site kinds and the like
  std::uint8_t Supply = 0, Fuel = 0, Losses = 0;
  std::uint8_t Priority = 0;
  std::int16_t NameId = 0;  ///< in the theater's names; 0: none of its own
  std::string OwnName;      ///< ready to be shown; empty before version 104
  EntityId Parent;          ///< nothing, or another objective
  bool HasRadar = false;
  std::vector<EntityId> Links;       ///< its neighbours by road, rail and the like
  std::vector<FeatureState> States;  ///< by feature; behind the last feature of its class zeros or nothing

  /// Map units east of the left edge: the middle of its cell, whatever Exact tells.
  double X() const { return MiddleOfCell(CellX); }
  /// Map units north of the lower edge.
  double Y() const { return MiddleOfCell(CellY); }
};

/// What has happened to an objective since the scenario that a mission is made from.
struct ObjectiveDelta {
  EntityId Id;
  std::uint8_t Owner = 0;  ///< country, below Countries
  std::uint8_t Supply = 0, Fuel = 0, Losses = 0;
  std::uint8_t StatusBytes = 0;      ///< the length of the states that is told
  std::vector<std::uint8_t> Status;  ///< as it stands in the file; the first byte alone before version 64
};

/// How many features the objectives of a class have, by the record of the class table; nothing for a class that is not
/// known.
using FeatureCounts = std::function<std::optional<std::size_t>(std::uint16_t classIndex)>;

/// A campaign, mission or training mission.
struct World {
  int DataVersion = 0;         ///< the layout of its pieces
  std::string Theater;         ///< name of the theater's data files, not the one to be shown
  std::string Scenario;        ///< file that it was made from
  std::string SaveName;        ///< its own file at the time of writing
  std::string ShownName;       ///< its name in the simulator's windows
  std::int16_t Width = 0;      ///< cells east
  std::int16_t Height = 0;     ///< cells north
  std::int16_t BullseyeX = 0;  ///< cell
  std::int16_t BullseyeY = 0;
  std::array<Country, Countries> Teams;
  std::vector<Objective> Objectives;     ///< after the mission's changes
  std::filesystem::path ObjectivesFrom;  ///< the file that held them; empty when none was found
  StringTable Names;                     ///< of the theater; empty when it has none
  bool NamesMissing = false;             ///< names are needed and the theater has none
  std::vector<std::string> Notes;        ///< what was odd, a line each; none for a file as it should be
};

}  // namespace kestrel::falcon
