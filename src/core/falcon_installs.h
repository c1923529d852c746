#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "core/campaign_data.h"
#include "core/program.h"
#include "falcon/installations.h"

// The installations of the simulator as the imports need them.
namespace kestrel::core {

/// Boxes about entries of lists that one search shows at most; the log has all of them.
inline constexpr std::size_t MostDiscardedTold = 20;

/// Looks for the installations anew: those that the settings name by hand as the file is now, then those that have
/// registered themselves. Each entry of a list of theaters that is discarded is told in a box.
falcon::FalconInstalls FindInstalls(Program& program);

/// The folders of a theater's campaigns and objects, and that of the objects which all theaters share. RuntimeFailure
/// when one of them would lie outside of the installation.
CampaignFolders FoldersOf(const falcon::FalconInstall& install, const falcon::TheaterDefinition& theater);

/// Where the models of a theater's buildings may stand, in the order in which they count. RuntimeFailure as FoldersOf.
std::vector<std::filesystem::path> ModelFoldersOf(const falcon::FalconInstall& install,
                                                  const falcon::TheaterDefinition& theater);

/// Asks for a campaign or mission of a theater. Nothing when the person cancels.
std::optional<std::filesystem::path> ChooseCampaign(Program& program, const CampaignFolders& folders);

}  // namespace kestrel::core
