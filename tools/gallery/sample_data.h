#pragma once

#include "areas/area.h"
#include "core/campaign_data.h"

namespace kestrel::gallery {

/// Some areas of the sample theater, in two folders.
areas::AreaCatalogue SampleAreas();

/// Some objectives of a made campaign.
core::CampaignData SampleObjectives();

}  // namespace kestrel::gallery
