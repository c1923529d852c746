#include "falcon/terrain_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/temp_folder.h"
#include "base/text.h"
#include "failure_text.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A theater of 32 by 32 map units whose files are written one by one.
class TerrainFilesOf : public testing::Test {
 protected:
  void Write(const std::string& name, const std::string& bytes) {
    fs::create_directories((folder / name).parent_path());
    test::WriteBytes(folder / name, bytes);
  }
  void WriteMap() {
    Write("Terrain/THEATER.MAP", test::TerrainMapBytes({.Rest = test::CornerBytes(0, 34.5F, -29.25F)}));
  }
  void WriteBlocks(const std::string& tileSet = "") {
    const auto [table, posts] = test::BlockFiles({});
    Write("Terrain/Theater" + tileSet + ".o2", table);
    Write("Terrain/Theater" + tileSet + ".l2", posts);
  }
  void WriteGrid(const std::string& name, int height) {
    Write("Terrain/" + name, test::GridBytes(32, 32, [=](std::size_t, std::size_t) { return height; }));
  }
  void WriteHeightMap(const std::string& below, int height) {
    Write(below + "NewTerrain/HeightMaps/HeightMap.raw",
          test::GridBytes(64, 64, [=](std::size_t, std::size_t) { return height; }));
  }

  TerrainFiles Files(std::string_view tileSet = "") { return FindTerrainFiles(folder.Path(), tileSet); }
  TheaterGround Read(std::string_view tileSet = "", const std::string& cover = "") {
    return ReadTheaterGround(Files(tileSet), cover.empty() ? fs::path() : folder / cover, {});
  }

  /// The file that the heights are from, in small letters: where case tells no names apart it is as it was asked for.
  std::string Source(std::string_view tileSet = "") { return base::Lower(Read(tileSet).Source); }

  test::TempFolder folder;
};

TEST_F(TerrainFilesOf, Falcon4AreBlocks) {
  WriteMap();
  WriteBlocks();
  const TheaterGround ground = Read();
  EXPECT_EQ(base::Lower(ground.Source), "theater.l2");
  EXPECT_EQ(ground.Heights.HeightAt(3, 17), 1703);
  EXPECT_TRUE(ground.HasCorner);
  EXPECT_EQ(ground.Longitude, 34.5);
  EXPECT_EQ(ground.Latitude, -29.25);
  EXPECT_THAT(ground.Notes, IsEmpty());
}

TEST_F(TerrainFilesOf, NewerOnesGoBeforeOlder) {
  WriteMap();
  WriteBlocks();
  WriteGrid("TERRAIN.BIL", 5);
  EXPECT_EQ(Source(), "terrain.bil");
  EXPECT_EQ(Read().Heights.HeightAt(3, 17), 5);
  WriteHeightMap("", 7);
  EXPECT_EQ(Source(), "heightmap.raw");
  EXPECT_EQ(Read().Heights.HeightAt(3, 17), 7);
  EXPECT_EQ(Read().Heights.Size, 32) << "as theater.map tells";
}

TEST_F(TerrainFilesOf, HeightMapMayLieInTheFolderOfTheOthersAndGoesByItsText) {
  WriteHeightMap("Terrain/", 7);
  EXPECT_EQ(Read().Heights.Size, 64) << "nothing tells the size: a sample for each";
  Write("Terrain/NewTerrain/Theater.txt", "Theater size in KM=16\n");
  EXPECT_EQ(Read().Heights.Size, 16);
  const TheaterGround ground = Read();
  EXPECT_FALSE(ground.HasCorner);
  EXPECT_NEAR(ground.Longitude, 119.1148778, 1e-9);
  EXPECT_NEAR(ground.Latitude, 33.775918333, 1e-9);
}

TEST_F(TerrainFilesOf, FilesOfTheTileSetGoBeforeThoseWithoutOne) {
  WriteMap();
  WriteGrid("TERRAIN_ALPHA.BIL", 1);
  EXPECT_EQ(Source(), "terrain_alpha.bil") << "any grid is better than none";
  WriteGrid("terrain_polak.bil", 2);
  EXPECT_EQ(Source("POLAK"), "terrain_polak.bil");
  WriteGrid("TERRAIN.BIL", 3);
  EXPECT_EQ(Source("POLAK"), "terrain_polak.bil");
  EXPECT_EQ(Source(), "terrain.bil");
  EXPECT_EQ(Source("OTHER"), "terrain.bil");
  EXPECT_EQ(Source("a/../../../../POLAK"), "terrain.bil") << "leads elsewhere";
}

TEST_F(TerrainFilesOf, BlocksOfATileSetAreFound) {
  WriteMap();
  WriteBlocks("_polak");
  EXPECT_EQ(Source("POLAK"), "theater_polak.l2");
  EXPECT_EQ(test::FailureOf([&] { Read(); }), "the theater has no heights");
}

TEST_F(TerrainFilesOf, StrayTableOfBlocksIsNoTerrain) {
  WriteMap();
  WriteBlocks();
  fs::remove(folder / "Terrain/Theater.l2");
  EXPECT_EQ(test::FailureOf([&] { Read(); }), "the theater has no heights");
  EXPECT_EQ(TerrainSize(Files()), 32);
}

TEST_F(TerrainFilesOf, BlocksWithoutTheirDescriptionAreRefused) {
  WriteBlocks();
  EXPECT_EQ(test::FailureOf([&] { Read(); }), "the theater has no theater.map");
  Write("Terrain/theater.map", "short");
  EXPECT_THAT(test::FailureOf([&] { Read(); }), HasSubstr("theater.map: "));
}

TEST_F(TerrainFilesOf, HelpersAreUsedAndWhatIsDamagedIsNoted) {
  WriteMap();
  Write("Terrain/TERRAIN.BIL",
        test::GridBytes(32, 32, [](std::size_t row, std::size_t) { return static_cast<int>(row) * 10; }));
  Write("Terrain/Terrain.hdr", "NROWS 32\nNCOLS 32\n");
  // The highest terrain of 4 by 4 cells is in the north, where the first row of the grid would not be.
  Write("Terrain/theater.mea",
        test::GridBytes(4, 4, [](std::size_t row, std::size_t) { return 310 - 80 * static_cast<int>(row); }));
  EXPECT_EQ(Read().Heights.HeightAt(0, 31), 310);
  Write("Terrain/theater.mea", "odd");
  Write("Terrain/Terrain.hdr", "NROWS none");
  const TheaterGround ground = Read("", "none.thr");
  EXPECT_EQ(ground.Heights.HeightAt(0, 31), 0) << "the north first";
  EXPECT_THAT(ground.Notes, ElementsAre(HasSubstr("none.thr"), HasSubstr("theater.mea: "), HasSubstr("NROWS")));
}

TEST_F(TerrainFilesOf, GroundCoverGivesTheSea) {
  WriteMap();
  WriteBlocks();
  Write("korea.thr", test::GroundCoverBytes(32, 32, [](int x, int) { return x < 5 ? 0U : 3U; }));
  const TheaterGround ground = Read("", "korea.thr");
  EXPECT_TRUE(ground.Heights.Sea[ground.Heights.IndexOf(4, 30)]);
  EXPECT_FALSE(ground.Heights.Sea[ground.Heights.IndexOf(5, 30)]);
  EXPECT_EQ(std::count(ground.Heights.Sea.begin(), ground.Heights.Sea.end(), 1), 5 * 32);
}

TEST_F(TerrainFilesOf, TileSetsTellTheSea) {
  WriteMap();
  const auto [table, posts] =
      test::BlockFiles({.Height = [](std::size_t, std::size_t) { return 0; },
                        .Tile = [](std::size_t row, std::size_t) { return row < 20 ? 16U : 0U; }});
  Write("Terrain/theater.O2", table);
  Write("Terrain/theater.L2", posts);
  Write("Texture/TEXTURE.BIN", test::TileSetsBytes({{4, {}}, {1, {}}}));
  const TheaterGround ground = Read();
  EXPECT_EQ(std::count(ground.Heights.Sea.begin(), ground.Heights.Sea.end(), 1), 20 * 32);
}

TEST_F(TerrainFilesOf, SizeIsToldByWhateverIsThere) {
  EXPECT_EQ(TerrainSize(Files()), std::nullopt);
  WriteGrid("TERRAIN.BIL", 0);
  EXPECT_EQ(TerrainSize(Files()), 32) << "by its length";
  Write("NewTerrain/Theater.txt", "Theater size in KM=2048");
  EXPECT_EQ(TerrainSize(Files()), 2048);
  Write("Terrain/TERRAIN.HDR", "NROWS 4096\nNCOLS 4096");
  EXPECT_EQ(TerrainSize(Files()), 4096);
  Write("Terrain/Theater.Map", "damaged");
  EXPECT_EQ(TerrainSize(Files()), 4096);
  Write("Terrain/Theater.Map", test::TerrainMapBytes({.Levels = {256, 128, 64}}));
  EXPECT_EQ(TerrainSize(Files()), 1024);
}

TEST_F(TerrainFilesOf, GridOfNoSquareTellsNoSize) {
  Write("Terrain/TERRAIN.BIL", "12345678901");
  EXPECT_EQ(TerrainSize(Files()), std::nullopt);
  EXPECT_NE(test::FailureOf([&] { Read(); }), "");
}

}  // namespace
}  // namespace kestrel::falcon
