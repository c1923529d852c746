#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/colour.h"
#include "core/campaign_data.h"
#include "core/objective_list.h"
#include "core/program.h"
#include "falcon/model_store.h"

namespace kestrel::core {

/// What an objective becomes on the map, in the order in which the person is asked.
enum class ObjectiveLook {
  AutoIcon,    ///< the icon of its type
  Lines,       ///< the lines of its buildings
  SingleIcon,  ///< one icon for all
};

struct ObjectiveImport {
  ObjectiveLook Look = ObjectiveLook::AutoIcon;
  base::Colour Color = 0;
  std::int16_t Icon = 1;             ///< of SingleIcon
  std::string SimplFactor = "0.01";  ///< as typed, of Lines: km that a line must be longer than
  std::string MaxZ = "0";            ///< as typed, of Lines: feet that its ends must not be higher than
};

/// Where an import is.
struct ObjectiveProgress {
  std::size_t Number = 0;  ///< of the objective, from 1
  std::size_t Total = 0;
  const std::string& Name;
  int Percent = 0;
};
/// Told of each objective, and within a long one now and then; false: the import is given up.
using FollowObjectives = std::function<bool(const ObjectiveProgress&)>;

/// The group that they come into.
inline constexpr char ImportedObjectivesGroup[] = "Imported Objectives";
/// Lines of one import at most.
inline constexpr std::size_t MostImportedLines = 4'000'000;

/// The icon of a type of objectives.
std::int16_t IconOfObjective(std::uint8_t type);

/// Adds the objectives that are selected to the group "Imported Objectives", as one step, and shows them. One without
/// lines gives no area. False when it was given up, or something failed, which has been told in a box: nothing has
/// changed then. How many models could not be read is told in the end.
bool ImportObjectives(Program& program, const CampaignData& data, falcon::ModelStore& models, const ObjectiveList& list,
                      const ObjectiveImport& how, const FollowObjectives& follow);

}  // namespace kestrel::core
