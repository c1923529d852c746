#include "core/objective_import.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <optional>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "areas/area_bounds.h"
#include "areas/area_tree.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/tell.h"
#include "falcon/ground_lines.h"
#include "falcon/object_tables.h"

namespace kestrel::core {
namespace {

using areas::Area;
using areas::AreaType;

/// From type 1 on.
constexpr std::array<std::int16_t, 31> Icons = {4,  5, 6,  1,  1,  7,  11, 8, 9,  1, 10, 1,  1,  1, 1, 2,
                                                12, 1, 13, 19, 14, 15, 2,  2, 16, 1, 2,  17, 17, 1, 18};
constexpr std::int16_t IconOfOthers = 1;
/// Buildings of models that are known already, after which the progress is told.
constexpr std::size_t BuildingsAtOnce = 1000;

/// Makes the areas of an import one after the other; the station is not touched.
class Importer {
 public:
  Importer(Program& running, const CampaignData& campaign, falcon::ModelStore& models, const ObjectiveImport& asked)
      : program(running), data(campaign), how(asked), lines(models, RuleOf(asked)) {}

  /// False when it was given up.
  bool Run(const ObjectiveList& list, const FollowObjectives& follow) {
    const std::vector<std::size_t> chosen = list.Selected();
    for (std::size_t n = 1; n <= chosen.size(); ++n) {
      const ImportedObjective& row = list.Row(chosen[n - 1]);
      const ObjectiveProgress progress{n, chosen.size(), row.Name,
                                       static_cast<int>(std::min<std::size_t>(100 * n / chosen.size(), 100))};
      const auto goesOn = [&] { return follow(progress); };
      if (!goesOn()) return false;
      Area area = AreaOf(row);
      if (how.Look == ObjectiveLook::Lines && !TakeLines(area, data.World.Objectives[row.ObjIndex], goesOn)) {
        return false;
      }
      if (how.Look == ObjectiveLook::Lines && area.Lines.Empty()) continue;
      areas::AreaBounds(area, program.Shown.Texts());
      Made.push_back(std::move(area));
    }
    return true;
  }

  const falcon::ModelLines& Models() const { return lines; }

  std::vector<Area> Made;

 private:
  static falcon::GroundRule RuleOf(const ObjectiveImport& how) {
    return {.Nearest = base::InvariantNumber(how.SimplFactor) * falcon::FeetPerCell,
            .MostHeight = base::InvariantNumber(how.MaxZ)};
  }

  /// A new area has the fonts of an imported one, and its labels are shown.
  Area AreaOf(const ImportedObjective& row) const {
    const falcon::Objective& objective = data.World.Objectives[row.ObjIndex];
    Area area;
    area.Name = row.Name;
    area.Color = how.Color;
    if (how.Look == ObjectiveLook::Lines) return area;
    area.Type = AreaType::Icon;
    area.X = objective.X();
    area.Y = objective.Y();
    area.Icon = how.Look == ObjectiveLook::AutoIcon ? IconOfObjective(row.Type) : how.Icon;
    return area;
  }

  /// The lines of all buildings that can be seen, each with the model of its state. False when it was given up.
  template <class GoesOn>
  bool TakeLines(Area& area, const falcon::Objective& objective, const GoesOn& goesOn) {
    const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(data.Tables, objective.ClassIndex);
    if (!known) return true;
    gathered.clear();
    // Of the later generations an objective is turned as a whole.
    const double told = objective.Exact ? double{objective.Exact->Heading} : 0;
    const double turned = std::isfinite(told) ? told : 0;
    const falcon::Heading whole(turned);
    std::set<std::tuple<std::int32_t, double, double, double>> placed;
    for (const falcon::PlacedFeature& feature : falcon::FeaturesOf(data.Tables, *known)) {
      const auto number = static_cast<std::size_t>(feature.Number);
      const int state = number < objective.States.size() ? objective.States[number] : 0;
      const std::optional<std::int32_t> model = falcon::ModelOf(*feature.Class, state);
      const falcon::FeatureEntry& entry = *feature.Entry;
      // One that stands twice is drawn once.
      if (!model || !placed.emplace(*model, entry.East, entry.North, entry.Heading).second) continue;
      const std::size_t readBefore = lines.Reads();
      const double east = whole.East(entry.North, entry.East), north = whole.North(entry.North, entry.East);
      Gather(objective, lines.Of(*model), {east, north, entry.Heading + turned});
      const bool tookTime = lines.Reads() != readBefore || placed.size() % BuildingsAtOnce == 0;
      if (tookTime && !goesOn()) return false;
    }
    area.Lines.Resize(gathered.size());
    std::copy(gathered.begin(), gathered.end(), area.Lines.Live().begin());
    return true;
  }

  struct Place {
    double East, North;  // feet from the objective
    double Heading;
  };

  void Gather(const falcon::Objective& objective, std::span<const falcon::GroundLine> ground, const Place& place) {
    lineCount += ground.size();
    if (lineCount > MostImportedLines) {
      throw base::RuntimeFailure("they have more than " + std::to_string(MostImportedLines) +
                                 " lines; fewer objectives or a larger simplification have less");
    }
    const falcon::Heading heading(place.Heading);
    const auto x = [&](double forward, double right) {
      return objective.X() + falcon::MapUnitsOfFeet(place.East + heading.East(forward, right));
    };
    const auto y = [&](double forward, double right) {
      return objective.Y() + falcon::MapUnitsOfFeet(place.North + heading.North(forward, right));
    };
    for (const falcon::GroundLine& line : ground) {
      gathered.push_back({x(line.X1, line.Y1), y(line.X1, line.Y1), x(line.X2, line.Y2), y(line.X2, line.Y2)});
    }
  }

  Program& program;
  const CampaignData& data;
  const ObjectiveImport& how;
  falcon::ModelLines lines;
  std::vector<areas::AreaLine> gathered;  ///< of one objective
  std::size_t lineCount = 0;
};

/// The group of that name, whatever its folder; a new one is put where those without a folder are.
std::size_t FindOrAddGroup(Station& station) {
  const base::Table<areas::AreaGroup>& groups = station.Areas.AreaGroups;
  const bool there = std::any_of(groups.Live().begin(), groups.Live().end(), [](const areas::AreaGroup& group) {
    return base::SameNoCase(group.Name, ImportedObjectivesGroup);
  });
  std::string folder;
  const std::int32_t index = there ? 0 : areas::FindOrAddFolder(station.Areas, station.AreaSteps, folder);
  return static_cast<std::size_t>(
      areas::FindOrAddGroup(station.Areas, station.AreaSteps, ImportedObjectivesGroup, index));
}

void TakeAreas(Station& station, std::vector<Area> made) {
  areas::OneStep step(station.Areas, station.AreaSteps, "import of objectives");
  const std::size_t group = FindOrAddGroup(station);
  step.Select({}, areas::GroupKey(group));
  areas::Insert<Area> insert{group, {}};
  insert.Items.reserve(made.size());
  std::size_t at = station.Areas.AreaGroups[group].Areas.UpperBound();
  for (Area& area : made) insert.Items.push_back({++at, std::move(area)});
  if (!insert.Items.empty()) step.Do(std::move(insert));
}

void TellModels(Program& program, const falcon::ModelLines& lines) {
  for (const std::string& trouble : lines.Troubles()) program.Log.LogLine(trouble);
  std::string text;
  if (lines.Boxes() > 0) {
    text = "Models that could not be read, of which the box is drawn: " + std::to_string(lines.Boxes()) + ".";
  }
  if (lines.Missing() > 0) {
    if (!text.empty()) text += " ";
    text += "Models that could not be read, of which nothing is drawn: " + std::to_string(lines.Missing()) + ".";
  }
  if (!text.empty()) Tell(program, text);
}

}  // namespace

std::int16_t IconOfObjective(std::uint8_t type) {
  const std::size_t place = type - std::size_t{1};
  return place < Icons.size() ? Icons[place] : IconOfOthers;
}

bool ImportObjectives(Program& program, const CampaignData& data, falcon::ModelStore& models, const ObjectiveList& list,
                      const ObjectiveImport& how, const FollowObjectives& follow) {
  if (how.Look == ObjectiveLook::Lines) {
    try {
      models.Open();
    } catch (const std::exception& failure) {
      const std::string text = "Could not load HDR file.";
      program.Log.LogLine(text + " " + failure.what());
      Tell(program, text, "Error");
      return false;
    }
  }
  try {
    Importer importer(program, data, models, how);
    if (!importer.Run(list, follow)) return false;
    TakeAreas(program.State, std::move(importer.Made));
    program.Shown.Refresh(base::Changed::Areas | base::Changed::Map);
    TellModels(program, importer.Models());
  } catch (const std::exception& failure) {
    TellFailure(program, "The objectives could not be imported: ", failure);
    return false;
  }
  return true;
}

}  // namespace kestrel::core
