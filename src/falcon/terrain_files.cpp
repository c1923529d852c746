#include "falcon/terrain_files.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/data_file.h"
#include "falcon/ground_cover.h"
#include "falcon/height_map.h"
#include "falcon/highest_terrain.h"
#include "falcon/terrain_blocks.h"
#include "falcon/terrain_grid.h"
#include "falcon/terrain_map.h"
#include "falcon/theater_text.h"
#include "falcon/tile_sets.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

/// The first of the names below `folder` that is a file.
fs::path FirstOf(const fs::path& folder, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const fs::path path = base::FindFile(folder, name);
    if (base::FileExists(path)) return path;
  }
  return {};
}

/// "<stem>_<tile set>.<ending>", then "<stem>.<ending>".
std::vector<std::string> Names(const std::string& stem, std::string_view tileSet, const std::string& ending) {
  std::vector<std::string> names;
  // A name with a slash would lead elsewhere.
  if (!tileSet.empty() && tileSet.find_first_of("/\\") == std::string_view::npos) {
    names.push_back(stem + "_" + std::string(tileSet) + ending);
  }
  names.push_back(stem + ending);
  return names;
}

/// The first by name of the grids of any tile set.
fs::path AnyGrid(const fs::path& folder) {
  fs::path found;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    const std::string name = base::Upper(base::NameForMessage(entry->path()));
    if (!name.starts_with("TERRAIN") || !name.ends_with(".BIL") || !base::FileExists(entry->path())) continue;
    if (found.empty() || entry->path() < found) found = entry->path();
  }
  return found;
}

/// What `read` makes of a file that may be missing, or be left out with a note.
template <class Read>
auto Beside(const fs::path& path, std::size_t limit, std::vector<std::string>& notes, const Read& read)
    -> std::optional<decltype(read(DataFile{}))> {
  if (path.empty()) return std::nullopt;
  try {
    return read(ReadDataFile(path, limit));
  } catch (const base::RuntimeFailure& failure) {
    notes.emplace_back(failure.what());
    return std::nullopt;
  }
}

template <class Record>
const Record* PointerTo(const std::optional<Record>& record) {
  return record ? &*record : nullptr;
}

std::optional<TerrainMap> ReadMap(const TerrainFiles& files, std::vector<std::string>& notes) {
  return Beside(files.Map, MaxTerrainMapBytes, notes, ReadTerrainMap);
}
std::optional<TerrainGridHeader> ReadHeader(const TerrainFiles& files, std::vector<std::string>& notes) {
  return Beside(files.GridHeader, MaxTerrainGridHeaderBytes, notes, ReadTerrainGridHeader);
}
std::optional<TheaterText> ReadText(const TerrainFiles& files, std::vector<std::string>& notes) {
  return Beside(files.Text, MaxTheaterTextBytes, notes, ReadTheaterText);
}

}  // namespace

TerrainFiles FindTerrainFiles(const fs::path& folder, std::string_view tileSet) {
  const fs::path terrain = base::FindFile(folder, "terrain");
  TerrainFiles files;
  files.Map = FirstOf(terrain, {"theater.map"});
  files.BlockTable = FirstOf(terrain, Names("theater", tileSet, ".O2"));
  files.Posts = FirstOf(terrain, Names("theater", tileSet, ".L2"));
  files.Highest = FirstOf(terrain, {"theater.mea"});
  files.TileSets = FirstOf(base::FindFile(folder, "texture"), Names("texture", tileSet, ".bin"));
  files.Grid = FirstOf(terrain, Names("TERRAIN", tileSet, ".BIL"));
  if (files.Grid.empty()) files.Grid = AnyGrid(terrain);
  if (!files.Grid.empty()) {
    const std::string stem = base::NameForMessage(files.Grid.stem());
    files.GridHeader = FirstOf(terrain, {stem + ".HDR", "TERRAIN.HDR"});
  }
  for (const fs::path& above : {folder, terrain}) {
    if (files.HeightMap.empty()) files.HeightMap = FirstOf(above, {"NewTerrain/HeightMaps/HeightMap.raw"});
    if (files.Text.empty()) files.Text = FirstOf(above, {"NewTerrain/Theater.txt"});
  }
  return files;
}

std::optional<std::int32_t> TerrainSize(const TerrainFiles& files) {
  std::vector<std::string> notes;
  if (const auto map = ReadMap(files, notes)) return map->Size();
  if (const auto header = ReadHeader(files, notes)) return header->Size;
  if (const auto text = ReadText(files, notes)) return text->Size;
  std::error_code failure;
  const std::uintmax_t bytes = files.Grid.empty() ? 0 : fs::file_size(files.Grid, failure);
  if (failure || bytes == 0 || bytes > std::uintmax_t{2} * LargestTerrain * LargestTerrain) return std::nullopt;
  const auto size = std::llround(std::sqrt(static_cast<double>(bytes) / 2));
  return static_cast<std::uintmax_t>(2 * size * size) == bytes ? std::optional(static_cast<std::int32_t>(size))
                                                               : std::nullopt;
}

TheaterGround ReadTheaterGround(const TerrainFiles& files, const fs::path& coverFile, const Progress& progress) {
  TheaterGround ground;
  const auto cover = Beside(coverFile, MaxGroundCoverBytes, ground.Notes, ReadGroundCover);
  const std::optional<TerrainMap> map = ReadMap(files, ground.Notes);
  fs::path source;
  if (!files.HeightMap.empty()) {
    source = files.HeightMap;
    const std::optional<TheaterText> text = ReadText(files, ground.Notes);
    const auto size = text ? std::optional(text->Size) : map ? std::optional(map->Size()) : std::nullopt;
    ground.Heights = ReadHeightMap(source, size, progress);
  } else if (!files.Grid.empty()) {
    source = files.Grid;
    const auto highest = Beside(files.Highest, MaxHighestTerrainBytes, ground.Notes, [&](const DataFile& file) {
      return ReadHighestTerrain(file, map ? map->HighestTerrainWidth : 0, map ? map->HighestTerrainHeight : 0);
    });
    ground.Heights = ReadTerrainGrid(source, ReadHeader(files, ground.Notes),
                                     {.Cover = PointerTo(cover), .Highest = PointerTo(highest)}, progress);
  } else if (!files.Posts.empty() && !files.BlockTable.empty()) {
    if (files.Map.empty()) throw base::RuntimeFailure("the theater has no theater.map");
    // Without it the blocks mean nothing: why it cannot be read is what is told.
    const TerrainMap blocks = map ? *map : ReadTerrainMap(ReadDataFile(files.Map, MaxTerrainMapBytes));
    source = files.Posts;
    const auto tiles = Beside(files.TileSets, MaxTileSetsBytes, ground.Notes, ReadTileSets);
    ground.Heights = ReadTerrainBlocks(blocks, ReadDataFile(files.BlockTable, MaxBlockTableBytes), source,
                                       PointerTo(tiles), progress);
  } else {
    throw base::RuntimeFailure("the theater has no heights");
  }
  if (progress) progress(1, 1);
  if (cover) TakeSea(ground.Heights, *cover);
  if (progress) progress(1, 1);
  const TerrainMap corner = map.value_or(TerrainMap{});
  ground.Longitude = corner.Longitude;
  ground.Latitude = corner.Latitude;
  ground.HasCorner = corner.HasCorner;
  ground.Source = base::NameForMessage(source);
  return ground;
}

}  // namespace kestrel::falcon
