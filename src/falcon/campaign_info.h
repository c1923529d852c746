#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "falcon/campaign_file.h"
#include "falcon/world.h"

namespace kestrel::falcon {

/// The place of a campaign, which all versions tell: cells, each size 64 to 8192 and the bullseye within.
struct CampaignPlace {
  std::int16_t Width = 0;
  std::int16_t Height = 0;
  std::int16_t BullseyeX = 0;
  std::int16_t BullseyeY = 0;
};

/// What the description calls a country.
struct CountryName {
  std::string Name;
  std::string Motto;
  std::uint8_t Colour = 0;
};

/// The description of a campaign ("cmp").
struct CampaignInfo {
  int DataVersion = 0;  ///< of the file, or what it looks like when the file does not tell
  CampaignPlace Place;
  std::uint8_t BullseyeName = 0;                       ///< number of a name
  std::string Theater, Scenario, SaveName, ShownName;  ///< as World has them
  std::array<CountryName, Countries> Names;            ///< empty before version 52
  std::size_t Squadrons = 0;
  std::size_t SquadronBytes = 0;  ///< of each; 0 when there is none
  /// Why the lists behind the names could not be walked to the exact end of the description, naming the list; empty
  /// when they could.
  std::string RestTrouble;
};

/// The place alone, for which nothing else of the description need be as known. RuntimeFailure when there is no
/// description, it is damaged before the end of the place, or the numbers are those of no place.
CampaignPlace ReadCampaignPlace(const CampaignFile& file);

/// The whole description. RuntimeFailure as ReadCampaignPlace, and when its names are cut or no text.
CampaignInfo ReadCampaignInfo(const CampaignFile& file);

}  // namespace kestrel::falcon
