#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "falcon/campaign_bullseye.h"
#include "falcon/installations.h"
#include "falcon/terrain_files.h"

namespace kestrel::core {

/// What an installation has of a theater that is to be imported. Its heights have not been looked into.
struct TheaterSource {
  std::string Name;  ///< as its definition tells it
  std::string Size;  ///< map units on a side, decimal; empty when no file tells it
  falcon::TerrainFiles Terrain;
  std::filesystem::path Cover;  ///< its ground cover; empty when there is none, or which one is its own is not known
  bool HasHeights = false;      ///< without them nothing can be imported
  std::optional<falcon::CampaignBullseye> Bullseye;
  std::string BullseyeFile;          ///< name of the campaign that tells it
  std::vector<std::string> Missing;  ///< what is not there and what that means, for the person, a line each
  std::vector<std::string> Notes;    ///< files that could not be read, for the log, a line each
};

/// Looks for the files of theater `index` (1 or more) of an installation. The bullseye is that of te_new.tac, else of
/// the first campaign that tells one. Fails never: what is not there is told in Missing.
TheaterSource FindTheaterSource(const falcon::FalconInstall& install, std::size_t index);

}  // namespace kestrel::core
