#pragma once

#include <filesystem>

#include "falcon-info/companions.h"
#include "falcon-info/context.h"
#include "falcon-info/tables.h"

// Campaigns, missions and training missions.
namespace kestrel::falconinfo {

/// Whether a file's name is that of one.
bool IsCampaignFile(const std::filesystem::path& file);

/// A whole one with its container, objectives and the tables they need.
Json CampaignReport(Context& context, const std::filesystem::path& file);

/// What it is, without lists.
Json CampaignSummary(Context& context, const std::filesystem::path& file, const Companions& companions,
                     const Database& database);
/// Of all files of a folder.
Json CampaignSummaries(Context& context, const Companions& companions, const Database& database);

}  // namespace kestrel::falconinfo
