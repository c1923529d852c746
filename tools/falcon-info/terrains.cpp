#include "falcon-info/terrains.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "base/files.h"
#include "falcon-info/companions.h"
#include "falcon/ground_cover.h"
#include "falcon/highest_terrain.h"
#include "falcon/terrain_files.h"
#include "falcon/terrain_grid.h"
#include "falcon/terrain_map.h"
#include "falcon/theater_text.h"
#include "falcon/tile_sets.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::TerrainFiles;

struct FileMember {
  const char* Name;
  fs::path TerrainFiles::*File;
};
constexpr FileMember FileMembers[] = {
    {"map", &TerrainFiles::Map},
    {"block_table", &TerrainFiles::BlockTable},
    {"posts", &TerrainFiles::Posts},
    {"tile_sets", &TerrainFiles::TileSets},
    {"highest", &TerrainFiles::Highest},
    {"grid", &TerrainFiles::Grid},
    {"grid_header", &TerrainFiles::GridHeader},
    {"height_map", &TerrainFiles::HeightMap},
    {"text", &TerrainFiles::Text},
};

Json FilesReport(const TerrainFiles& files) {
  Json json;
  for (const FileMember& member : FileMembers) json[member.Name] = Json::OfPath(files.*member.File);
  return json;
}

void TellGround(const Context& context, const falcon::TheaterGround& ground, Json& into) {
  const falcon::Terrain& heights = ground.Heights;
  into["heights_from"] = ground.Source;
  into["size"] = heights.Size;
  into["lowest"] = heights.Lowest;
  into["highest"] = heights.Highest;
  into["sea"] = std::count(heights.Sea.begin(), heights.Sea.end(), std::uint8_t{1});
  into["has_corner"] = ground.HasCorner;
  into["longitude"] = ground.Longitude;
  into["latitude"] = ground.Latitude;
  into["notes"] = ListOf(ground.Notes);
  if (context.Asked.At.empty()) return;
  into["at"] = ListOf(context.Asked.At, [&heights](const MapPlace& place) {
    const auto unit = [](double way) { return static_cast<std::int32_t>(std::floor(std::clamp(way, -1.0, 1e6))); };
    Json json;
    json["x"] = place.X;
    json["y"] = place.Y;
    json["height"] = heights.HeightAt(unit(place.X), unit(place.Y));
    return json;
  });
}

falcon::TheaterGround ReadGround(const TerrainFiles& files, const fs::path& cover) {
  return falcon::ReadTheaterGround(files, cover, [](std::uint64_t, std::uint64_t) {});
}

/// The first ground cover by name of a folder of campaigns.
fs::path CoverOf(const fs::path& campaign) {
  if (campaign.empty()) return {};
  const std::vector<fs::path> files = FilesOf(campaign);
  const auto cover =
      std::find_if(files.begin(), files.end(), [](const fs::path& one) { return EndingOf(one) == ".thr"; });
  return cover == files.end() ? fs::path() : *cover;
}

/// The file of that name in the first of the folders that has it.
fs::path FirstOf(const std::vector<fs::path>& folders, const std::string& name) {
  for (const fs::path& folder : folders) {
    fs::path file = base::FindFile(folder, name);
    if (base::FileExists(file)) return file;
  }
  return {};
}

/// A file of heights with what stands beside it, which need not be the folders of a whole theater.
TerrainFiles FilesAround(const fs::path& file) {
  std::error_code failure;
  const fs::path folder = fs::absolute(file, failure).parent_path(), above = folder.parent_path();
  const std::string ending = EndingOf(file), stem = base::NameForMessage(file.stem());
  TerrainFiles files;
  files.Map = FirstOf({folder, above.parent_path(), base::FindFile(above.parent_path(), "terrain")}, "theater.map");
  files.Highest = FirstOf({folder}, "theater.mea");
  if (ending == ".bil") {
    files.Grid = file;
    files.GridHeader = FirstOf({folder}, stem + ".HDR");
    if (files.GridHeader.empty()) files.GridHeader = FirstOf({folder}, "TERRAIN.HDR");
  } else if (ending == ".raw") {
    files.HeightMap = file;
    files.Text = FirstOf({above, folder}, "Theater.txt");
  } else {
    files.BlockTable = FirstOf({folder}, stem + ".O2");
    files.Posts = FirstOf({folder}, stem + ".L2");
    files.TileSets = FirstOf({base::FindFile(above, "texture"), folder}, "texture.bin");
  }
  return files;
}

template <class Read>
auto Open(const fs::path& file, std::size_t limit, const Read& read) {
  return read(falcon::ReadDataFile(file, limit));
}

}  // namespace

Json TerrainMapReport(Context&, const fs::path& file) {
  const falcon::TerrainMap map = Open(file, falcon::MaxTerrainMapBytes, falcon::ReadTerrainMap);
  Json json = ReportOf(file, "terrain map");
  json["size"] = map.Size();
  json["post_feet"] = map.PostFeet;
  json["highest_terrain_width"] = map.HighestTerrainWidth;
  json["highest_terrain_height"] = map.HighestTerrainHeight;
  json["last_near_level"] = map.LastNearLevel;
  json["levels"] = ListOf(map.Levels, [](const falcon::TerrainMap::Level& level) {
    Json one;
    one["width"] = level.Width;
    one["height"] = level.Height;
    return one;
  });
  json["large_posts"] = map.LargePosts;
  json["has_corner"] = map.HasCorner;
  json["longitude"] = map.Longitude;
  json["latitude"] = map.Latitude;
  return json;
}

Json HeightsReport(Context& context, const fs::path& file) {
  const TerrainFiles files = FilesAround(file);
  Json json = ReportOf(file, "heights");
  json["files"] = FilesReport(files);
  TellGround(context, ReadGround(files, CoverOf(context.Asked.Campaign)), json);
  return json;
}

Json HighestTerrainReport(Context&, const fs::path& file) {
  const fs::path mapFile = FirstOf({file.parent_path()}, "theater.map");
  falcon::TerrainMap map;
  if (!mapFile.empty()) map = Open(mapFile, falcon::MaxTerrainMapBytes, falcon::ReadTerrainMap);
  const falcon::HighestTerrain highest = falcon::ReadHighestTerrain(
      falcon::ReadDataFile(file, falcon::MaxHighestTerrainBytes), map.HighestTerrainWidth, map.HighestTerrainHeight);
  const auto [least, most] = std::minmax_element(highest.Feet.begin(), highest.Feet.end());
  Json json = ReportOf(file, "highest terrain");
  json["width"] = highest.Width;
  json["height"] = highest.Height;
  json["lowest"] = highest.Feet.empty() ? Json() : Json(*least);
  json["highest"] = highest.Feet.empty() ? Json() : Json(*most);
  return json;
}

Json GroundCoverReport(Context&, const fs::path& file) {
  const falcon::GroundCover cover = Open(file, falcon::MaxGroundCoverBytes, falcon::ReadGroundCover);
  constexpr unsigned covers = 0x0F;
  std::map<unsigned, std::size_t> counts;
  for (const std::uint8_t cell : cover.Cells) ++counts[cell & covers];
  Json json = ReportOf(file, "ground cover");
  json["width"] = cover.Width;
  json["height"] = cover.Height;
  json["covers"] = ListOf(counts, [](const auto& count) {
    Json one;
    one["cover"] = count.first;
    one["map_units"] = count.second;
    return one;
  });
  return json;
}

Json TileSetsReport(Context&, const fs::path& file) {
  const falcon::TileSets sets = Open(file, falcon::MaxTileSetsBytes, falcon::ReadTileSets);
  Json json = ReportOf(file, "tile sets");
  json["tile_count"] = sets.TileCount;
  json["set_count"] = sets.Kinds.size();
  json["sets"] = ListOf(sets.Kinds);
  return json;
}

Json TheaterTextReport(Context&, const fs::path& file) {
  const falcon::TheaterText text = Open(file, falcon::MaxTheaterTextBytes, falcon::ReadTheaterText);
  Json json = ReportOf(file, "terrain text");
  json["name"] = text.Name;
  json["size"] = text.Size;
  json["centre_latitude"] = text.CenterLatitude;
  json["centre_longitude"] = text.CenterLongitude;
  json["projection"] = text.Projection;
  return json;
}

Json GridHeaderReport(Context&, const fs::path& file) {
  const falcon::TerrainGridHeader header = Open(file, falcon::MaxTerrainGridHeaderBytes, falcon::ReadTerrainGridHeader);
  Json json = ReportOf(file, "grid header");
  json["size"] = header.Size;
  json["skipped_bytes"] = header.Skipped;
  json["big_endian"] = header.BigEndian;
  return json;
}

bool IsTerrainFolder(const fs::path& folder) {
  const TerrainFiles files = falcon::FindTerrainFiles(folder, "");
  return !files.Map.empty() || !files.Grid.empty() || !files.HeightMap.empty() || !files.Posts.empty();
}

void TellTerrain(Context& context, const fs::path& folder, std::string_view tileSet, const fs::path& campaign,
                 Json& into) {
  const TerrainFiles files = falcon::FindTerrainFiles(folder, tileSet);
  into["map_size"] = falcon::TerrainSize(files);
  into["terrain_files"] = FilesReport(files);
  const fs::path cover = CoverOf(campaign);
  into["ground_cover_file"] = Json::OfPath(cover);
  into["heights"] = Attempt(context, folder, [&] {
    Json heights;
    TellGround(context, ReadGround(files, cover), heights);
    return heights;
  });
}

Json TerrainFolderReport(Context& context, const fs::path& folder) {
  Json json = ReportOf(folder, "terrain");
  TellTerrain(context, folder, "", context.Asked.Campaign, json);
  return json;
}

}  // namespace kestrel::falconinfo
