#pragma once

#include <filesystem>
#include <vector>

#include "falcon-info/context.h"
#include "falcon-info/tables.h"
#include "falcon/campaign_file.h"
#include "falcon/world.h"

namespace kestrel::falconinfo {

/// The container of a campaign. RuntimeFailure, naming the file, when it is none.
falcon::CampaignFile OpenContainer(const std::filesystem::path& file);

/// The objectives that a file holds itself, before any changes. RuntimeFailure when there are none or they cannot be
/// read.
std::vector<falcon::Objective> ObjectivesOfFile(const std::filesystem::path& file, const Database& database);

/// The objectives of a world, or those that were asked for: each as it is after the mission's changes, with what the
/// changes have replaced. `before`: the same ones without the changes, in the same order.
Json ObjectivesReport(const Context& context, const falcon::World& world, const std::vector<falcon::Objective>& before,
                      const Database& database);

}  // namespace kestrel::falconinfo
