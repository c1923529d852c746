#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "falcon/campaign_file.h"
#include "falcon/world.h"

namespace kestrel::falcon {

/// Reads a campaign, mission or training mission with its objectives: its own, else those of the scenario that it
/// names, a file of `campaignFolder`, with the mission's changes applied; and the names of the theater, when they are
/// needed. `features`, when the class table is known, tells how many states each objective has. A file without
/// objectives whose scenario is not there, or is the file itself, has none, which a note tells. RuntimeFailure, naming
/// file, record and reason, when a file cannot be read or does not hold what it should.
World LoadCampaign(const std::filesystem::path& file, const std::filesystem::path& campaignFolder,
                   const FeatureCounts& features = {});

/// The names of a world's objectives as the simulator shows them.
class ObjectiveNames {
 public:
  /// `which` must outlast it.
  explicit ObjectiveNames(const World& which) : world(which), index(which.Objectives) {}

  /// The objective's own name, else the theater's, else that of its parent with `typeName` behind. Empty when there is
  /// none.
  std::string Of(const Objective& objective, std::string_view typeName) const;

 private:
  const World& world;
  EntityIndex index;
};

}  // namespace kestrel::falcon
