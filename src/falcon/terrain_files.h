#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "falcon/terrain.h"

// The ground of a theater, whichever generation of files it is kept in.
namespace kestrel::falcon {

/// The files of a theater's terrain that are there; the others are empty.
struct TerrainFiles {
  std::filesystem::path Map{};         ///< theater.map
  std::filesystem::path BlockTable{};  ///< theater.O2
  std::filesystem::path Posts{};       ///< theater.L2
  std::filesystem::path TileSets{};    ///< texture.bin
  std::filesystem::path Highest{};     ///< theater.mea
  std::filesystem::path Grid{};        ///< TERRAIN*.BIL
  std::filesystem::path GridHeader{};  ///< the .HDR beside it
  std::filesystem::path HeightMap{};   ///< NewTerrain/HeightMaps/HeightMap.raw
  std::filesystem::path Text{};        ///< NewTerrain/Theater.txt
};

/// Looks for them below a theater's terrain folder, whatever the case of their names. `tileSet`: of the theater's
/// definition, may be empty: files that bear its name go before those without one.
TerrainFiles FindTerrainFiles(const std::filesystem::path& folder, std::string_view tileSet);

/// Map units on a side of the theater, without reading its heights: as theater.map tells, else the header of the grid,
/// the text of the new terrain, or the length of the grid. Nothing when none of them tells.
std::optional<std::int32_t> TerrainSize(const TerrainFiles& files);

struct TheaterGround {
  Terrain Heights;
  double Longitude = 0;  ///< of the south-western corner, degrees
  double Latitude = 0;
  bool HasCorner = false;            ///< a file tells the corner; else it is the usual one
  std::string Source;                ///< name of the file that the heights are from
  std::vector<std::string> Notes{};  ///< files beside it that could not be read, a line each
};

/// Reads the heights from the newest generation that is there: height map, grid, blocks. `cover`: the theater's ground
/// cover; empty when it has none. A file that only helps is left out when it cannot be read, and noted. RuntimeFailure
/// when there are no heights, or theirs cannot be read.
TheaterGround ReadTheaterGround(const TerrainFiles& files, const std::filesystem::path& cover,
                                const Progress& progress);

}  // namespace kestrel::falcon
