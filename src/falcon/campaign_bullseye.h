#pragma once

#include <cstdint>

#include "falcon/campaign_file.h"

namespace kestrel::falcon {

/// The bullseye of a campaign as its file holds it.
struct CampaignBullseye {
  std::int16_t X = 0;  ///< map units east of the left edge, whole ones
  std::int16_t Y = 0;  ///< map units north of the lower edge
};

/// Reads the bullseye from the campaign's description ("cmp"). RuntimeFailure when there is none, it is damaged, or the
/// numbers in it are not those of a theater: a size of 64 to 8192 map units with the bullseye within.
CampaignBullseye ReadCampaignBullseye(const CampaignFile& file);

}  // namespace kestrel::falcon
