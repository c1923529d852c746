#pragma once

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

// Whole installations of the simulator with the theater of made_world.h, written as the generations lay their files
// out, with the letter case that is usual in each.
namespace kestrel::made {

enum class Generation {
  Falcon40,  ///< binary tables, blocks of posts, classic shapes, data version 63
  Bms433,    ///< binary tables, a grid of heights with header and highest terrain, 73
  Bms435,    ///< a table of XML a file, a grid with ground cover, 103; an add-on from here on
  Bms437,  ///< a folder for each class of objectives and for each model, a grid of a tile set, names in campaigns, 108
  Bms438,  ///< the same with a height map, 109
};
inline constexpr Generation Generations[] = {Generation::Falcon40, Generation::Bms433, Generation::Bms435,
                                             Generation::Bms437, Generation::Bms438};

/// Of the campaign files.
int DataVersion(Generation which);
/// Of its registration: "Falcon BMS 4.37", or "4.0".
std::string KeyName(Generation which);
/// For the names of tests.
inline void PrintTo(Generation which, std::ostream* out) { *out << KeyName(which); }

/// The campaign folder holds "Save0.cam" and "te_new.tac" with objectives, "Mission.tac" and "Training.trn" without,
/// made from the latter; the first of these two has changes.
struct Installation {
  Generation Which = Generation::Falcon40;
  std::string Key;
  std::filesystem::path Folder;  ///< what is registered
  std::filesystem::path Data;    ///< what paths of theaters are relative to
  std::filesystem::path Campaign;
  std::filesystem::path Objects;
  std::filesystem::path Terrain;  ///< holds the folder of this name, or what took its place
  std::filesystem::path Config;   ///< of the pilots; BMS alone
};

/// The files of an installation: bytes by the path below its folder, with slashes.
using Files = std::map<std::string, std::string>;
Files InstallationFiles(Generation which);

/// Writes an installation into a folder, which is made.
Installation WriteInstallation(const std::filesystem::path& folder, Generation which);

/// Writes a Wine prefix of 64 bits with installations below "C:\Games", registered for a program of 32 bits. On Windows
/// it has no links for its drives.
std::vector<Installation> WriteWinePrefix(const std::filesystem::path& prefix, const std::vector<Generation>& which);

}  // namespace kestrel::made
