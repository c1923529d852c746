// Terrain, models, theaters and installations.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "falcon/bml_writer.h"
#include "falcon/model_writer.h"
#include "falcon/shape_writer.h"
#include "falcon/terrain_writer.h"
#include "falcon_info_run.h"
#include "falcon_info_worlds.h"

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class FalconInfoGround : public FalconInfo {
 protected:
  /// A grid of 4 by 4 heights, 100 times the row from the north and the column.
  void WriteGrid(const std::string& name) {
    Write(name,
          GridBytes(4, 4, [](std::size_t row, std::size_t column) { return static_cast<int>(100 * row + column); }));
  }
};

TEST_F(FalconInfoGround, GridTellsItsHeights) {
  WriteGrid("TERRAIN.BIL");
  options.At = {{0.9, 3.2}, {3, 0}, {4, 0}, {-0.5, 0}, {1e300, 1e300}};
  const Report report = Tell("TERRAIN.BIL");
  EXPECT_EQ(report.Text("kind"), "heights");
  EXPECT_EQ(report.Number("size"), 4);
  EXPECT_EQ(report.Number("lowest"), 0);
  EXPECT_EQ(report.Number("highest"), 303);
  EXPECT_EQ(report.Number("at/0/height"), 0) << "the north-western corner";
  EXPECT_EQ(report.Number("at/1/height"), 303) << "the south-eastern one";
  EXPECT_TRUE(report.IsNull("at/2/height"));
  EXPECT_TRUE(report.IsNull("at/3/height"));
  EXPECT_TRUE(report.IsNull("at/4/height"));
  EXPECT_EQ(report.Number("sea"), 1) << "what has height 0";
}

TEST_F(FalconInfoGround, BlocksNeedTheFilesBesideThem) {
  const auto [table, posts] = BlockFiles({});
  Write("THEATER.O2", table);
  Write("theater.L2", posts);
  EXPECT_THAT(Tell("theater.L2").Text("error"), HasSubstr("theater.map"));
  EXPECT_EQ(failures, 1u);
  Write("Theater.map", TerrainMapBytes({}));
  options.At = {{2, 1}};
  const Report report = Tell("theater.L2");
  EXPECT_EQ(report.Number("size"), 32);
  EXPECT_EQ(report.Number("at/0/height"), 102) << "row 1 from the south, column 2";
  EXPECT_EQ(report.Number("highest"), 3131);
  const Report map = Tell("Theater.map");
  EXPECT_EQ(map.Number("size"), 32);
  EXPECT_EQ(map.Number("levels/0/width"), 8);
  EXPECT_FALSE(map.IsTrue("has_corner"));
}

TEST_F(FalconInfoGround, FilesBesideTheHeightsAreTold) {
  Write("theater.mea",
        GridBytes(2, 2, [](std::size_t row, std::size_t column) { return static_cast<int>(10 * row + column); }));
  EXPECT_EQ(Tell("theater.mea").Number("width"), 2);
  EXPECT_EQ(Tell("theater.mea").Number("highest"), 11);
  Write("korea.thr", GroundCoverBytes(3, 2, [](int x, int) { return x == 0 ? 0x50u : 3u; }));
  const Report cover = Tell("korea.thr");
  EXPECT_EQ(cover.Number("width"), 3);
  EXPECT_EQ(cover.Number("covers/0/cover"), 0);
  EXPECT_EQ(cover.Number("covers/0/map_units"), 2) << "relief is no cover";
  EXPECT_EQ(cover.Number("covers/1/map_units"), 4);
  Write("texture.bin", TileSetsBytes({{.Kind = 1, .Tiles = {{}}}, {.Kind = 4, .Tiles = {{}, {}}}}));
  EXPECT_EQ(Tell("texture.bin").Number("tile_count"), 3);
  EXPECT_THAT(Tell("texture.bin").Numbers("sets"), ElementsAre(1, 4));
}

TEST_F(FalconInfoGround, DirectoryTellsItsModels) {
  Write("KoreaObj.HDR", DirectoryBytes(TwoModels()));
  options.Models = {1, 2};
  const Report report = Tell("KoreaObj.HDR");
  EXPECT_EQ(report.Text("kind"), "model directory");
  EXPECT_EQ(report.Number("models"), 2);
  EXPECT_EQ(report.Number("models_with_shape"), 1);
  EXPECT_EQ(report.Number("textures"), 2);
  EXPECT_THAT(report.Numbers("asked/0/box/least"), ElementsAre(-27.75, -21.5, -8.25));
  EXPECT_THAT(report.Numbers("asked/0/box/most"), ElementsAre(36, 21.5, 0));
  EXPECT_EQ(report.Number("asked/0/dynamic_points"), 2);
  EXPECT_EQ(report.Number("asked/0/details/0/offset"), 100);
  EXPECT_EQ(report.Number("asked/0/details/1/range"), 20000);
  EXPECT_TRUE(report.IsNull("asked/1/model"));
}

TEST_F(FalconInfoGround, ShapesTellTrianglesAndWhatTheyFitIn) {
  const std::string shape = ShapeBytes(SmallShape());
  DirectoryPlan plan = TwoModels();
  plan.Places = {{0, shape.size()}, {0, shape.size()}};
  Write("KoreaObj.hdr", DirectoryBytes(plan));
  Write("KoreaObj.LOD", shape);
  const Report all = Tell("KoreaObj.LOD");
  EXPECT_EQ(all.Number("models_read"), 1);
  EXPECT_EQ(all.Number("models_failed"), 0);
  // A square and a triangle; four lines, three and one.
  EXPECT_EQ(all.Number("triangles"), 3);
  EXPECT_EQ(all.Number("lines"), 8);
  options.Models = {1, 0};
  const Report one = Tell("KoreaObj.LOD");
  EXPECT_EQ(one.Number("asked/0/shape/triangles"), 3);
  EXPECT_THAT(one.Numbers("asked/0/shape/lines_box/least"), ElementsAre(0, 0, -9));
  EXPECT_THAT(one.Numbers("asked/0/shape/lines_box/most"), ElementsAre(25, 10, 0));
  EXPECT_THAT(one.Text("asked/1/shape/error"), HasSubstr("no shape"));
  EXPECT_EQ(failures, 1u);
  fs::remove(folder / "KoreaObj.hdr");
  EXPECT_THAT(Tell("KoreaObj.LOD").Text("error"), HasSubstr("beside"));
}

TEST_F(FalconInfoGround, ModelFolderTellsItsShapes) {
  Write("12/Parent.dat",
        "Dimensions = 47.5 -27.75 36 -21.5 21.5 -8.25 0\nAddLOD = Model_0.bml 75\nAddLOD = ../x.bml 80\n");
  Write("12/Model_0.bml", SmallBml().File());
  const Report report = Tell("12");
  EXPECT_EQ(report.Text("kind"), "model");
  EXPECT_EQ(report.Number("radius"), 47.5);
  EXPECT_EQ(report.Text("details/0/name"), "Model_0.bml");
  EXPECT_EQ(report.Number("details/0/shape/triangles"), 3) << "one, one on a joint, one of a switch that is on";
  EXPECT_THAT(report.Text("details/1/shape/error"), HasSubstr("leaves"));
  EXPECT_EQ(Tell("12/Model_0.bml").Number("shape/triangles"), 3);
  Write("renamed", SmallBml().File());
  EXPECT_EQ(Tell("renamed").Text("kind"), "shape") << "told by its first bytes";
}

/// An installation of BMS with a theater of its own terrain and the default theater's objects.
class FalconInfoInstallation : public FalconInfoGround {
 protected:
  FalconInfoInstallation() {
    Write("BMS/Data/TerrData/TheaterDefinition/theater.lst",
          "TerrData\\TheaterDefinition\\sample.tdf\r\n\\Nowhere\\gone.tdf\r\nD:\\other.tdf\r\n");
    Write(
        "BMS/Data/TerrData/TheaterDefinition/Sample.tdf",
        "name Sample [1]\r\ncampaigndir Add-On\\Campaign\r\nterraindir Add-On\\Terrain\r\n3ddatadir ..\\..\\away\r\n");
    Write("BMS/Data/TerrData/TheaterDefinition/Unlisted.TDF", "name Unlisted\r\n");
    WriteGrid("BMS/Data/Add-On/Terrain/terrain/TERRAIN.BIL");
    Write("BMS/Data/Add-On/Campaign/save0.cam", WorldBytes(SmallWorld()));
    Write("BMS/Data/Add-On/Campaign/broken.tac", "broken");
    Write("BMS/Data/Add-On/Campaign/stations+ils.dat", "766 042 X\r\n");
    Write("BMS/Data/Add-On/Campaign/Strings.txt", "501\tAirbase\r\n");
    Write("BMS/Data/TerrData/Objects/falcon4.ct", SmallClassTable());
    Write("BMS/User/Config/Viper.lbk", "");
    Write("BMS/User/Config/Viper.ini", "[Radio]\r\nUHF_1=297500\r\n");
    Write("BMS/User/Config/Falcon BMS.cfg", "set g_nF2TeamUiFreq 1234\r\n");
  }
};

TEST_F(FalconInfoInstallation, DefinitionTellsWhatItResolvesTo) {
  const Report report = Tell("BMS/Data/TerrData/TheaterDefinition/Sample.tdf");
  EXPECT_EQ(report.Text("kind"), "theater");
  EXPECT_EQ(report.Text("definition/name"), "Sample [1]");
  EXPECT_TRUE(report.IsNull("definition/objectdir"));
  EXPECT_THAT(report.Text("root"), EndsWith("BMS/Data"));
  EXPECT_EQ(report.Text("folders/0/told"), "Add-On\\Campaign");
  EXPECT_TRUE(report.IsTrue("folders/0/exists"));
  EXPECT_TRUE(report.IsNull("folders/2/told"));
  EXPECT_EQ(report.Text("folders/2/used"), "Terrdata\\objects");
  EXPECT_EQ(report.Text("folders/3/key"), "3ddatadir");
  EXPECT_TRUE(report.IsNull("folders/3/folder")) << "it leads out of the installation";
  EXPECT_EQ(report.Number("tables/0/records"), 4);
  EXPECT_EQ(report.Number("map_size"), 4);
  EXPECT_EQ(report.Number("heights/highest"), 303);
  EXPECT_EQ(report.Number("stations/count"), 1);
  EXPECT_EQ(report.Number("general_strings"), 502);
  ASSERT_EQ(report.Size("campaigns"), 2u);
  EXPECT_TRUE(report.Has("campaigns/0/error")) << "broken.tac";
  EXPECT_EQ(report.Number("campaigns/1/objective_count"), 2);
  EXPECT_EQ(failures, 1u);
}

TEST_F(FalconInfoInstallation, ListTellsEntriesThatLeadNowhere) {
  const Report report = Tell("BMS/Data/TerrData/TheaterDefinition/theater.lst");
  EXPECT_EQ(report.Text("kind"), "theater list");
  ASSERT_EQ(report.Size("theaters"), 3u);
  EXPECT_EQ(report.Text("theaters/0/name"), "Sample [1]");
  EXPECT_TRUE(report.IsNull("theaters/0/trouble"));
  EXPECT_THAT(report.Text("theaters/1/trouble"), HasSubstr("gone.tdf"));
  EXPECT_THAT(report.Text("theaters/2/trouble"), HasSubstr("names a drive"));
}

TEST_F(FalconInfoInstallation, FolderTellsAllThatItHolds) {
  for (const char* const place : {"BMS", "BMS/Data"}) {
    const Report report = Tell(place);
    EXPECT_EQ(report.Text("kind"), "installation") << place;
    EXPECT_EQ(report.Size("listed"), 3u);
    ASSERT_EQ(report.Size("theaters"), 2u) << "the unlisted one too";
    EXPECT_EQ(report.Text("theaters/0/definition/name"), "Sample [1]");
    EXPECT_EQ(report.Text("theaters/1/definition/name"), "Unlisted");
    ASSERT_EQ(report.Size("pilots"), 1u);
    EXPECT_EQ(report.Text("pilots/0/uhf/0"), "297500");
    EXPECT_EQ(report.Text("configurations/0/f2"), "1234");
  }
}

TEST_F(FalconInfoInstallation, CampaignFindsTheTablesOfItsTheater) {
  const Report report = Tell("BMS/Data/Add-On/Campaign/save0.cam");
  EXPECT_EQ(report.Text("objectives/0/type_name"), "Airbase");
  EXPECT_THAT(report.Text("tables/0/file"), EndsWith("falcon4.ct"));
  const Report campaigns = Tell("BMS/Data/Add-On/Campaign");
  EXPECT_EQ(campaigns.Text("kind"), "campaigns");
  EXPECT_EQ(campaigns.Size("campaigns"), 2u);
  EXPECT_EQ(Tell("BMS/Data/Add-On/Terrain").Number("heights/highest"), 303);
}

#ifndef _WIN32
TEST_F(FalconInfoInstallation, PrefixTellsItsInstallations) {
  Write("prefix/system.reg",
        "WINE REGISTRY Version 2\n\n[Software\\\\Wow6432Node\\\\Benchmark Sims\\\\Falcon BMS 4.37] 1\n"
        "\"baseDir\"=\"C:\\\\BMS\"\n\"curTheater\"=\"Sample\"\n");
  fs::create_directories(folder / "prefix/dosdevices");
  fs::create_symlink(folder.Path(), folder / "prefix/dosdevices/c:");
  for (const char* const place : {"prefix", "prefix/system.reg"}) {
    const Report report = Tell(place);
    EXPECT_EQ(report.Text("kind"), "prefix");
    ASSERT_EQ(report.Size("installations"), 1u);
    EXPECT_EQ(report.Text("installations/0/key"), "Falcon BMS 4.37");
    EXPECT_EQ(report.Text("installations/0/current_theater"), "Sample");
    EXPECT_EQ(report.Size("installations/0/installation/theaters"), 2u);
    EXPECT_THAT(report.Text("messages/0"), HasSubstr("gone.tdf"));
  }
}
#endif

}  // namespace
}  // namespace kestrel::test
