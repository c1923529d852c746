#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/table.h"
#include "falcon/install_keys.h"
#include "falcon/theater_definition.h"

// Which installations of the simulator there are and the theaters of each.
namespace kestrel::falcon {

struct FalconTheater {
  TheaterDefinition Definition;
  std::string TdfPath;      ///< as the list tells it, with backslashes
  std::string TheaterSize;  ///< map units on a side, decimal; empty when no file tells it
};

enum class InstallKind {
  Falcon = 1,        ///< an older Falcon
  FalconModels = 2,  ///< one that has "KoreaObj.Dxl"
  Bms = 4,
};

struct FalconInstall {
  InstallKind Kind = InstallKind::Falcon;
  std::string Key;               ///< name of its key, such as "Falcon BMS 4.37"
  std::string InstallDir;        ///< as it is registered, with a backslash added
  std::filesystem::path Folder;  ///< the same on this system; empty when its drive is not there
  std::filesystem::path Root;    ///< what paths of theaters are relative to
  std::string CurTheater;
  std::string PilotCallsign;
  base::Table<FalconTheater> Theaters;
};

struct FalconInstalls {
  std::vector<FalconInstall> Falcon;  ///< in the order of their sources
  std::vector<FalconInstall> Bms;     ///< the newest version first
  std::vector<std::string> Messages;  ///< to be shown: entries of lists that were discarded
};

/// Looks for all of them, older Falcons first; writes nothing and remembers nothing. What is missing or cannot be read
/// gives an empty text, theater or list. A BMS counts only with its list of theaters.
FalconInstalls DiscoverFalcon(std::span<const InstallKeys* const> sources);

/// What a definition tells of its campaign, terrain, object or 3D data folder, or the default theater's.
std::string TheaterDir(const TheaterDefinition& definition, std::string TheaterDefinition::*dir);

/// That folder in an installation. RuntimeFailure when it would lie outside of the installation.
std::filesystem::path TheaterFolder(const FalconInstall& install, const TheaterDefinition& definition,
                                    std::string TheaterDefinition::*dir);

}  // namespace kestrel::falcon
