#pragma once

#include <filesystem>
#include <string_view>

#include "falcon-info/context.h"

// The ground of a theater and the files that it is read from.
namespace kestrel::falconinfo {

/// theater.map
Json TerrainMapReport(Context& context, const std::filesystem::path& file);
/// A file of heights of any generation with those beside it: .L2 or .O2, .BIL, HeightMap.raw.
Json HeightsReport(Context& context, const std::filesystem::path& file);
/// theater.mea
Json HighestTerrainReport(Context& context, const std::filesystem::path& file);
/// <theater>.thr
Json GroundCoverReport(Context& context, const std::filesystem::path& file);
/// texture.bin
Json TileSetsReport(Context& context, const std::filesystem::path& file);
/// NewTerrain/Theater.txt
Json TheaterTextReport(Context& context, const std::filesystem::path& file);
/// The text beside a grid of heights.
Json GridHeaderReport(Context& context, const std::filesystem::path& file);

/// Whether a folder has the files of a theater's terrain.
bool IsTerrainFolder(const std::filesystem::path& folder);
Json TerrainFolderReport(Context& context, const std::filesystem::path& folder);
/// What a theater's terrain folder holds: its files and heights. `campaign`: the folder of its ground cover, may be
/// empty.
void TellTerrain(Context& context, const std::filesystem::path& folder, std::string_view tileSet,
                 const std::filesystem::path& campaign, Json& into);

}  // namespace kestrel::falconinfo
