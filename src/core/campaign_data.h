#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/program.h"
#include "falcon/object_tables.h"
#include "falcon/world.h"

namespace kestrel::core {

/// Where the simulator keeps what belongs to a campaign.
struct CampaignFolders {
  std::filesystem::path Campaign;              ///< campaigns, names and stations
  std::vector<std::filesystem::path> Objects;  ///< of each object table the first one counts that is there
};

/// A campaign and the database of what stands in it.
struct CampaignData {
  falcon::ObjectTables Tables;  ///< classes of buildings may be missing, which only tell which ones are not seen
  falcon::World World;
};

/// Reads the object tables, then the campaign with its objectives and their names. Nothing when something of it cannot
/// be read, which has been told in a box; the reason is logged, as is what was odd.
std::optional<CampaignData> LoadCampaignData(Program& program, const CampaignFolders& folders,
                                             const std::filesystem::path& campaign);

/// "An error occured: Error #53. ..." in a box and in the log: a file of the simulator that is not there (53) or does
/// not hold what it should (321).
void TellCampaignError(Program& program, const std::filesystem::path& file, const std::string& description);

}  // namespace kestrel::core
