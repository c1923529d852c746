#pragma once

#include <filesystem>

#include "falcon-info/companions.h"
#include "falcon-info/context.h"

// Definitions of theaters and installations.
namespace kestrel::falconinfo {

/// A .tdf with all that it resolves to.
Json DefinitionReport(Context& context, const std::filesystem::path& file);
/// theater.lst: its entries and what each names.
Json TheaterListReport(Context& context, const std::filesystem::path& file);

/// All theaters of an installation, its pilots and configuration.
Json InstallationReport(Context& context, const Installation& installation);
/// The installations that are registered in a Wine prefix.
Json PrefixReport(Context& context, const std::filesystem::path& prefix);
/// Campaigns, names and stations.
Json CampaignFolderReport(Context& context, const std::filesystem::path& folder);
bool IsCampaignFolder(const std::filesystem::path& folder);

}  // namespace kestrel::falconinfo
