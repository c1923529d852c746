#include "core/theater_source.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/campaign_file.h"
#include "falcon/campaign_info.h"
#include "falcon/data_file.h"
#include "falcon/terrain_map.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

/// The campaigns that are asked first for the bullseye.
constexpr std::array<std::string_view, 4> FirstCampaigns = {"te_new.tac", "te_new.trn", "te_new.cam", "save0.cam"};
/// How many others are tried.
constexpr std::size_t MostCampaigns = 20;

/// The names of the files of a folder that end in one of `endings`, in their order without regard to case.
std::vector<fs::path> FilesOf(const fs::path& folder, const std::vector<std::string_view>& endings) {
  std::vector<fs::path> files;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    const std::string name = base::Lower(base::NameForMessage(entry->path()));
    const auto fits = [&](std::string_view ending) { return name.ends_with(ending); };
    if (std::any_of(endings.begin(), endings.end(), fits) && base::FileExists(entry->path())) {
      files.push_back(entry->path());
    }
  }
  std::sort(files.begin(), files.end(), [](const fs::path& a, const fs::path& b) {
    return base::Lower(base::NameForMessage(a)) < base::Lower(base::NameForMessage(b));
  });
  return files;
}

/// Takes the bullseye of a campaign; the name of its theater, which its ground cover bears, or nothing.
std::string TakeBullseye(TheaterSource& source, const fs::path& file) {
  const falcon::CampaignFile campaign(base::ReadWholeFile(file, falcon::MaxCampaignFileBytes));
  source.Bullseye = falcon::ReadCampaignBullseye(campaign);
  source.BullseyeFile = base::NameForMessage(file);
  try {
    return falcon::ReadCampaignInfo(campaign).Theater;
  } catch (const base::RuntimeFailure&) {
    return {};
  }
}

std::string FindBullseye(TheaterSource& source, const fs::path& folder) {
  std::vector<fs::path> files;
  for (const std::string_view name : FirstCampaigns) {
    const fs::path file = base::FindFile(folder, name);
    if (base::FileExists(file)) files.push_back(file);
  }
  std::vector<fs::path> others = FilesOf(folder, {".tac", ".cam", ".trn"});
  std::erase_if(others,
                [&](const fs::path& file) { return std::find(files.begin(), files.end(), file) != files.end(); });
  others.resize(std::min(others.size(), MostCampaigns));
  files.insert(files.end(), others.begin(), others.end());
  for (const fs::path& file : files) {
    try {
      return TakeBullseye(source, file);
    } catch (const base::RuntimeFailure& failure) {
      source.Notes.push_back(base::NameForMessage(file) + " tells no bullseye: " + failure.what());
    }
  }
  return {};
}

/// The ground cover that bears the theater's name, or the only one.
fs::path FindCover(const fs::path& folder, const std::string& theater) {
  const std::vector<fs::path> covers = FilesOf(folder, {".thr"});
  for (const fs::path& cover : covers) {
    if (base::SameNoCase(base::NameForMessage(cover.stem()), theater)) return cover;
  }
  return covers.size() == 1 ? covers.front() : fs::path();
}

bool HasHeights(const falcon::TerrainFiles& files) {
  const bool blocks = !files.Posts.empty() && !files.BlockTable.empty() && !files.Map.empty();
  return !files.HeightMap.empty() || !files.Grid.empty() || blocks;
}

bool HasCorner(TheaterSource& source) {
  if (source.Terrain.Map.empty()) return false;
  try {
    return falcon::ReadTerrainMap(falcon::ReadDataFile(source.Terrain.Map, falcon::MaxTerrainMapBytes)).HasCorner;
  } catch (const base::RuntimeFailure& failure) {
    source.Notes.emplace_back(failure.what());
    return false;
  }
}

void FindTerrain(TheaterSource& source, const falcon::FalconInstall& install,
                 const falcon::TheaterDefinition& definition) {
  const fs::path folder = TheaterFolder(install, definition, &falcon::TheaterDefinition::TerrainDir);
  source.Terrain = falcon::FindTerrainFiles(folder, definition.TileSet);
  source.HasHeights = HasHeights(source.Terrain);
  if (!source.HasHeights) {
    source.Missing.push_back("The theater cannot be imported: in " + base::PathForMessage(folder) +
                             " there is no HeightMap.raw, no TERRAIN.BIL, and theater.map, theater.L2 and theater.O2 "
                             "are not all there.");
  } else if (!HasCorner(source)) {
    source.Missing.emplace_back(
        "No theater.map tells where the lower left corner of the map lies: latitudes and longitudes will be those of "
        "Korea.");
  }
}

}  // namespace

TheaterSource FindTheaterSource(const falcon::FalconInstall& install, std::size_t index) {
  const falcon::FalconTheater& theater = install.Theaters[index];
  TheaterSource source;
  source.Name = theater.Definition.Name;
  source.Size = theater.TheaterSize;
  try {
    FindTerrain(source, install, theater.Definition);
  } catch (const base::RuntimeFailure& failure) {
    source.Missing.push_back(std::string("The theater cannot be imported: ") + failure.what() + ".");
  }
  try {
    const fs::path campaigns = TheaterFolder(install, theater.Definition, &falcon::TheaterDefinition::CampaignDir);
    source.Cover = FindCover(campaigns, FindBullseye(source, campaigns));
  } catch (const base::RuntimeFailure& failure) {
    source.Notes.emplace_back(failure.what());
  }
  if (!source.Bullseye) {
    source.Missing.emplace_back("No campaign tells the bullseye: it will be in the middle of the map.");
  }
  return source;
}

}  // namespace kestrel::core
