#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The simulator's database of what stands on the ground, as every generation of its files fills it. Records are known
// by their index and name each other by it. A table may be cut or lie, so that an index can lead nowhere: the lookups
// below are the only way from record to record, and each leaves out what is not there.
namespace kestrel::falcon {

/// Which table the data index of a class leads into. A file may hold other numbers.
enum class DataKind : std::uint8_t { Feature = 1, None = 2, Objective = 3, Unit = 4, Vehicle = 5, Weapon = 6 };

/// A class of things: a record of the class table. Its index plus 100 is the entity type in a campaign's file.
struct EntityClass {
  std::uint8_t Domain = 0;
  std::uint8_t Class = 0;
  std::uint8_t Type = 0;
  std::uint8_t SubType = 0;
  std::uint8_t Specific = 0;
  std::uint8_t Owner = 0;
  /// Numbers of models: normal, repaired, damaged, destroyed, left, right and both sides destroyed; 0 is none.
  std::array<std::int16_t, 7> Models{};
  DataKind Data = DataKind::None;
  std::int32_t DataIndex = 0;
};

inline constexpr std::uint8_t FeatureClassCode = 2;    ///< EntityClass::Class of a feature
inline constexpr std::uint8_t ObjectiveClassCode = 4;  ///< EntityClass::Class of an objective

/// A class of objectives (OCD).
struct ObjectiveClass {
  std::int32_t ClassIndex = 0;  ///< of its EntityClass
  std::string Name{};
  std::int32_t Icon = 0;
  std::int32_t FirstFeature = 0;  ///< index of a FeatureEntry
  std::int32_t FeatureCount = 0;
  std::optional<std::int32_t> RadarFeature{};  ///< its number within the objective
  std::int32_t FirstHeader = 0;                ///< index of a PointHeader; 0 is none
};

/// A building of a class of objectives and where it stands (FED).
struct FeatureEntry {
  std::int32_t ClassIndex = 0;  ///< of its EntityClass; 0 is an empty slot
  std::uint16_t Flags = 0;
  std::uint8_t Value = 0;  ///< percent of the objective that is lost with it
  double East = 0;         ///< feet from the objective
  double North = 0;
  double Up = 0;
  double Heading = 0;  ///< degrees, clockwise from north
};

/// A class of buildings (FCD).
struct FeatureClass {
  static constexpr std::uint16_t Virtual = 0x02;  ///< flag: there is nothing to be seen

  std::int32_t ClassIndex = 0;
  std::uint16_t Flags = 0;
  std::string Name{};
  std::int32_t RepairTime = 0;
  std::int32_t HitPoints = 0;
};

/// A list of points of a class of objectives (PHD): one direction of a runway, its outline, parking places ...
struct PointHeader {
  static constexpr std::uint8_t Runway = 1;   ///< kind: a direction of take-off and landing
  static constexpr std::uint8_t Outline = 8;  ///< kind: the corners of a runway

  std::int32_t Objective = 0;  ///< index of the ObjectiveClass that it belongs to
  std::uint8_t Kind = 0;
  std::int32_t FirstPoint = 0;
  std::int32_t PointCount = 0;
  std::vector<std::uint8_t> Features{};  ///< numbers of the features that it depends on
  double Data = 0;                       ///< of a runway: the heading, degrees
  std::int32_t RunwayNumber = -1;        ///< -1 is none
  std::int32_t BaseLeg = 0;              ///< side of it: -1, 1, or 0 for none
  std::int32_t Next = 0;                 ///< index of the next header of the objective; 0 is the end
};

/// A place of a class of objectives (PD, PDX).
struct ObjectPoint {
  static constexpr std::uint8_t FarEnd = 1;     ///< kind: where a runway's direction ends
  static constexpr std::uint8_t Threshold = 2;  ///< kind: where it begins

  double East = 0;  ///< feet from the objective
  double North = 0;
  double Up = 0;
  std::uint8_t Kind = 0;
  std::uint8_t Flags = 0;
};

struct ObjectTables {
  std::vector<EntityClass> Classes;
  std::vector<ObjectiveClass> Objectives;
  std::vector<FeatureEntry> Features;
  std::vector<FeatureClass> FeatureClasses;
  std::vector<PointHeader> Headers;
  std::vector<ObjectPoint> Points;
};

/// A building that can be drawn.
struct PlacedFeature {
  std::int32_t Number = 0;  ///< within the objective, from 0; its status is told by it
  const FeatureEntry* Entry = nullptr;
  const EntityClass* Class = nullptr;
  const FeatureClass* Data = nullptr;  ///< nothing when its table does not hold it
};

/// The class with that index; nothing outside of the table.
const EntityClass* ClassAt(const ObjectTables& tables, std::int32_t index);
/// The class of objectives that the class with that index is of, as campaigns name it by their entity type less 100;
/// nothing when it is no objective, or a table is cut before it.
const ObjectiveClass* ObjectiveClassAt(const ObjectTables& tables, std::int32_t index);
/// The buildings of an objective in their order, without empty slots, what is virtual, what leads beyond a table, and
/// what has no possible place (IsPossibleOffset). Pointers last as long as the tables do.
std::vector<PlacedFeature> FeaturesOf(const ObjectTables& tables, const ObjectiveClass& objective);
/// The model of a class by the status of one of its kind: 0 normal, 1 repaired, 2 damaged, 3 destroyed. That of the
/// normal one stands for what has no model of its own; nothing when there is none either.
std::optional<std::int32_t> ModelOf(const EntityClass& thing, int status);
/// The lists of points of an objective in the order of their chain, which ends at a header that it has held already and
/// beyond the table.
std::vector<const PointHeader*> PointHeadersOf(const ObjectTables& tables, const ObjectiveClass& objective);
/// The points of a header that the table holds.
std::span<const ObjectPoint> PointsOf(const ObjectTables& tables, const PointHeader& header);

/// Whether a distance from an objective, feet, can be one: a number, and not beyond the largest theater.
bool IsPossibleOffset(double feet);

}  // namespace kestrel::falcon
