#pragma once

#include <filesystem>

#include "falcon/campaign_file.h"
#include "falcon/objective_names.h"
#include "falcon/world.h"

namespace kestrel::falcon {

/// Reads a campaign, mission or training mission with its objectives: its own, else those of the scenario that it
/// names, a file of `campaignFolder`, with the mission's changes applied; and the names of the theater, when they are
/// needed. `features`, when the class table is known, tells how many states each objective has. A file without
/// objectives whose scenario is not there, or is the file itself, has none, which a note tells. RuntimeFailure, naming
/// file, record and reason, when a file cannot be read or does not hold what it should.
World LoadCampaign(const std::filesystem::path& file, const std::filesystem::path& campaignFolder,
                   const FeatureCounts& features = {});

}  // namespace kestrel::falcon
