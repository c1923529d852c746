#pragma once

#include <filesystem>

#include "core/campaign_data.h"
#include "core/program.h"

namespace kestrel::core {

/// Replaces the teams and airfields of the current theater, as one step, by those that a campaign file, the object
/// tables and the stations of its folder give, and shows them; none of them is drawn. False when something cannot be
/// read, which has been told in a box: then nothing has changed. Stations are taken as far as they can be read, which
/// is told as well.
bool ImportAirfields(Program& program, const CampaignFolders& folders, const std::filesystem::path& campaign);

}  // namespace kestrel::core
