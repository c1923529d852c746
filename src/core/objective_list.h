#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/campaign_data.h"
#include "falcon/world.h"

// The objectives of a campaign as the person chooses among them.
namespace kestrel::core {

struct ImportedObjective {
  bool Selected = false;
  std::string Name = {};      ///< as the simulator shows it, or "**Not found in Theater Strings!"
  std::uint8_t Type = 0;      ///< code; 0 when the class is not known
  std::string TypeName = {};  ///< "SAM Site", "Unknown 0"
  std::uint8_t Team = 0;      ///< the owner, a country below falcon::Countries
  std::int32_t Features = 0;  ///< how many buildings its class tells of
  std::size_t ObjIndex = 0;   ///< in World::Objectives
};

/// A choice among the types: all of them, one, or those that have no name.
struct ObjectiveTypeChoice {
  enum class Kind { All, One, Unknown };
  std::string_view Caption;
  Kind What = Kind::One;
  std::uint8_t Type = 0;  ///< of One
};

/// "All Types", the types, "Unknown": in the order in which they are offered.
std::span<const ObjectiveTypeChoice> ObjectiveTypeChoices();

enum class ObjectiveColumn { Name, Type, Team, Features };

/// Rows, which of them are shown, and in which order. A row is known by its index, whatever is shown.
class ObjectiveList {
 public:
  /// Takes all that it needs from `data`. All rows are shown, in the order of the campaign; none is selected.
  explicit ObjectiveList(const CampaignData& data);

  const ImportedObjective& Row(std::size_t index) const { return rows[index]; }
  /// The names of the countries; "Team #<i>" where the campaign has none.
  const std::array<std::string, falcon::Countries>& Teams() const { return teams; }
  const std::string& TeamOf(const ImportedObjective& row) const { return teams[row.Team]; }
  /// The rows that are shown, in their order.
  const std::vector<std::uint32_t>& Shown() const { return shown; }

  /// Shows the rows of one team, or of all; those of a type too: both hold.
  void ShowTeam(std::optional<std::uint8_t> only);
  /// `choice`: of ObjectiveTypeChoices.
  void ShowTypes(std::size_t choice);
  /// By names without regard to case, or by numbers. Rows that are equal keep the order that they have.
  void Sort(ObjectiveColumn column, bool descending);

  void Select(std::size_t index, bool selected);
  /// Selects the rows that are shown, or takes them from the selection. The others stay.
  void SelectShown(bool selected);
  /// Whether there are rows shown and all of them are selected.
  bool AllShownSelected() const;
  std::size_t SelectedCount() const { return selectedCount; }
  /// The rows that are selected, shown or not, in the order of the list.
  std::vector<std::size_t> Selected() const;

 private:
  bool IsShown(const ImportedObjective& row) const;
  void Show();

  std::vector<ImportedObjective> rows;
  std::array<std::string, falcon::Countries> teams;
  std::vector<std::uint32_t> order;  ///< all rows
  std::vector<std::uint32_t> shown;
  std::optional<std::uint8_t> team;
  std::size_t types = 0;
  std::size_t selectedCount = 0;
};

}  // namespace kestrel::core
