#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/temp_folder.h"
#include "campaign_writer.h"
#include "falcon/installations.h"
#include "terrain_writer.h"

// A made installation with one theater, an island that is different in each direction.
namespace kestrel::test {

class IslandInstall {
 public:
  static constexpr int Side = 32;  ///< map units
  static constexpr int BullX = 200, BullY = 900;

  explicit IslandInstall(const std::string& name = "Isle") {
    Install.Kind = falcon::InstallKind::Bms;
    Install.Key = "Falcon BMS 4.33";
    Install.InstallDir = "C:\\Falcon\\";
    Install.Folder = Install.Root = folder.Path();
    falcon::FalconTheater theater;
    theater.Definition.Name = name;
    theater.TheaterSize = std::to_string(Side);
    Install.Theaters.Append(theater);
    Write("Terrdata/korea/terrain/theater.map",
          TerrainMapBytes({.Levels = {8, 4, Side / 16, 1}, .Rest = CornerBytes(0, 34.5F, -29.25F)}));
    const auto [table, posts] = BlockFiles({.Blocks = Side / 16, .Height = [](std::size_t row, std::size_t column) {
                                              return HeightAt(static_cast<int>(column), static_cast<int>(row));
                                            }});
    Write("Terrdata/korea/terrain/theater.o2", table);
    Write("Terrdata/korea/terrain/theater.l2", posts);
    Write("Campaign/isle.thr", GroundCoverBytes(Side, Side, [](int x, int y) { return IsSea(x, y) ? 0U : 3U; }));
    WriteCampaign("te_new.tac", BullX, BullY);
  }

  /// Feet at a place, Y north: each place on land has a height of its own, the highest in the north-east.
  static int HeightAt(int x, int y) { return IsSea(x, y) ? 0 : 100 * y + x; }
  static constexpr int Highest = 100 * 31 + 31;
  /// The north-western corner.
  static bool IsSea(int x, int y) { return x < 8 && y >= 24; }

  void WriteCampaign(const std::string& name, int x, int y) {
    WorldPlan plan;
    plan.Place = {.Version = 73, .X = x, .Y = y};
    plan.Theater = "isle";
    Write("Campaign/" + name, WorldBytes(plan));
  }
  void Write(const std::string& name, std::string_view bytes) {
    std::filesystem::create_directories((folder / name).parent_path());
    WriteBytes(folder / name, bytes);
  }
  void Remove(const std::string& name) { std::filesystem::remove(folder / name); }

  falcon::FalconInstall Install;

 private:
  TempFolder folder;
};

}  // namespace kestrel::test
