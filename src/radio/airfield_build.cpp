#include "radio/airfield_build.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <numbers>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/numbers.h"
#include "falcon/campaign.h"
#include "falcon/objective_types.h"
#include "falcon/runways.h"

namespace kestrel::radio {
namespace {

using falcon::StationField;

/// What stands for a frequency or a runway that there is not.
constexpr std::string_view None = "-";

/// The end of a runway that each place of an airfield's lists is for.
struct EndPlace {
  std::size_t Runway, End;
};
constexpr Airfield::PerRunwayEnd<EndPlace> EndPlaces = {{{0, 1}, {0, 0}, {1, 1}, {1, 0}}};

/// Degrees of a direction, from the east to the north, -90 to 270; 0 for none.
double DrawHeading(double east, double north) {
  if (east == 0 && north == 0) return 0;
  if (east == 0) east = 1e-11;
  return (std::atan(north / east) + (east < 0 ? std::numbers::pi : 0)) * 180 / std::numbers::pi;
}

class Builder {
 public:
  Builder(const falcon::World& world, const falcon::ObjectTables& database) : tables(database), names(world) {
    for (const falcon::Objective& one : world.Objectives) objectives.try_emplace(one.CampId, &one);
  }

  Airfield Build(const falcon::Station& station) {
    Airfield airfield;
    const auto found = objectives.find(station.CampId);
    if (found == objectives.end()) {
      airfield.Name = NoAirbase;
    } else {
      TakeObjective(airfield, *found->second);
    }
    TakeStation(airfield, station);
    return airfield;
  }

 private:
  /// A line that is too short leaves the field as it is.
  static void TakeStation(Airfield& airfield, const falcon::Station& station) {
    const auto told = [&station](StationField field) { return !station.Text(field).empty(); };
    if (told(StationField::TacanChannel)) {
      airfield.TACAN = base::FormatInvariant(station.Number(StationField::TacanChannel), "000");
    }
    airfield.TACAN_BAND = station.Text(StationField::TacanBand);
    airfield.TACANR = base::ToInt32(station.Number(StationField::TacanRange));
    airfield.UHF = station.Text(StationField::TowerUhf);
    airfield.VHF = station.Text(StationField::TowerVhf);
    constexpr Airfield::PerRunwayEnd<StationField> fields = {StationField::Ils1, StationField::Ils2, StationField::Ils3,
                                                             StationField::Ils4};
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::string& text = station.Text(fields[i]);
      airfield.ILS[i] = text == "0" ? None : text;
    }
  }

  void TakeObjective(Airfield& airfield, const falcon::Objective& objective) {
    const falcon::EntityClass* const thing = falcon::ClassAt(tables, objective.ClassIndex);
    const std::uint8_t type = thing ? thing->Type : std::uint8_t{0};
    airfield.Name = names.Of(objective, falcon::ObjectiveTypeName(type));
    if (airfield.Name.empty()) airfield.Name = NoAirfieldName;
    airfield.TEAM_INDEX = objective.Owner;
    airfield.TACANX = objective.X();
    airfield.TACANY = objective.Y();
    const falcon::Runways& runways = RunwaysOf(objective.ClassIndex, type);
    for (std::size_t i = 0; i < RunwayEndCount; ++i) {
      TakeEnd(airfield, i, runways[EndPlaces[i].Runway][EndPlaces[i].End]);
    }
  }

  /// An end that is not there, and a point that no list tells, are where the airfield is.
  static void TakeEnd(Airfield& airfield, std::size_t place, const std::optional<falcon::RunwayEnd>& end) {
    airfield.ILS_DES[place] = end ? end->Name : std::string(None);
    airfield.ILS_R[place] = {airfield.TACANX, airfield.TACANY};
    if (!end) return;
    const falcon::RunwayPoint threshold = end->Begin.value_or(falcon::RunwayPoint());
    const falcon::RunwayPoint far = end->FarEnd.value_or(falcon::RunwayPoint());
    airfield.ILS_R[place].RX += falcon::MapUnitsOfFeet(threshold.East);
    airfield.ILS_R[place].RY += falcon::MapUnitsOfFeet(threshold.North);
    airfield.ILS_DRAW_HEADING[place] = DrawHeading(threshold.East - far.East, threshold.North - far.North);
  }

  const falcon::Runways& RunwaysOf(std::uint16_t classIndex, std::uint8_t type) {
    const auto [place, isNew] = runwaysOfClasses.try_emplace(classIndex);
    if (isNew && (type == falcon::AirbaseType || type == falcon::AirstripType)) {
      const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(tables, classIndex);
      if (known) place->second = falcon::CollectRunways(tables, *known);
    }
    return place->second;
  }

  const falcon::ObjectTables& tables;
  falcon::ObjectiveNames names;
  std::map<std::int16_t, const falcon::Objective*> objectives;  ///< by their numbers, the first of each
  std::map<std::uint16_t, falcon::Runways> runwaysOfClasses;
};

}  // namespace

AirfieldBuild BuildAirfields(const falcon::World& world, const falcon::ObjectTables& tables,
                             const falcon::StationList& stations) {
  AirfieldBuild build;
  for (std::size_t i = 0; i < TeamCount; ++i) {
    const std::string& name = world.Teams[i].Name;
    build.Teams[i] = name.empty() ? DefaultTeam(i) : name;
  }
  Builder builder(world, tables);
  build.Airfields.Reserve(stations.Stations.size());
  for (const falcon::Station& station : stations.Stations) {
    try {
      build.Airfields.Append(builder.Build(station));
    } catch (const base::RuntimeFailure& failure) {
      build.Trouble = "station of " + std::to_string(station.CampId) + ": " + failure.what();
      return build;
    }
  }
  build.Trouble = stations.Trouble;
  return build;
}

void TakeAirfields(Frequencies& tables, FrequencyHistory& steps, AirfieldBuild build) {
  OneStep step(tables, steps, "load of airfields");
  step.Do(PutAirfields{std::move(build.Teams), std::move(build.Airfields)});
}

}  // namespace kestrel::radio
