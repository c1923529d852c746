#pragma once

#include <filesystem>
#include <vector>

// Where Windows programs are installed on Linux: the prefixes of Wine and of what is built on it.
namespace kestrel::platform {

/// Where prefixes are looked for; what is empty is not.
struct PrefixPlaces {
  std::filesystem::path Home;        ///< the person's folder
  std::filesystem::path DataHome;    ///< for data of programs, such as ~/.local/share
  std::filesystem::path ConfigHome;  ///< for their settings, such as ~/.config
  std::filesystem::path WinePrefix;  ///< that the person has told Wine

  /// Those of the environment.
  static PrefixPlaces Own();
};

/// The prefixes there: those of WinePrefix, of Wine itself, of Steam with all its libraries, of Lutris and of Bottles,
/// also where these run in a Flatpak. Each once, by its canonical path; a folder without a file "system.reg" is none.
/// What cannot be read is left out, and of a folder with very many entries the first ones in the order of their names
/// are looked at.
std::vector<std::filesystem::path> FindWinePrefixes(const PrefixPlaces& places);

}  // namespace kestrel::platform
