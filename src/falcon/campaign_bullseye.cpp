#include "falcon/campaign_bullseye.h"

#include "falcon/campaign_info.h"

namespace kestrel::falcon {

CampaignBullseye ReadCampaignBullseye(const CampaignFile& file) {
  const CampaignPlace place = ReadCampaignPlace(file);
  return {place.BullseyeX, place.BullseyeY};
}

}  // namespace kestrel::falcon
