#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "falcon/campaign_info.h"
#include "falcon/world.h"

namespace kestrel::falcon {

/// The countries of a campaign and where they were found.
struct TeamList {
  std::array<Country, Countries> Teams;
  std::size_t Told = 0;      ///< teams that the piece holds
  std::size_t Missions = 0;  ///< kinds of missions that each has priorities for: 40, 41 or 50 in known versions
  std::string Trouble;       ///< why not all could be taken from the piece; empty when they were
};

/// Reads the countries from the piece "tea"; those that it does not hold have no name. Where it is missing or damaged
/// the names are those of the description and the teams those that can be recognised in it. Never fails.
TeamList ReadTeams(std::optional<std::string_view> piece, const CampaignInfo& info);

/// Whether a country plays: as a team of its own, or in that of another which does.
bool IsInPlay(const std::array<Country, Countries>& teams, std::size_t country);

}  // namespace kestrel::falcon
