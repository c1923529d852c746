#include "falcon/terrain_blocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "failure_text.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

using test::BlocksPlan;
using testing::HasSubstr;

class TerrainBlocks : public testing::Test {
 protected:
  Terrain Read(const std::string& table, const std::string& posts, const TileSets* tiles = nullptr) {
    test::WriteBytes(folder / "theater.L2", posts);
    return ReadTerrainBlocks(Map, {"theater.O2", table}, folder / "theater.L2", tiles, Told);
  }
  Terrain Read(const BlocksPlan& plan, const TileSets* tiles = nullptr) {
    const auto [table, posts] = test::BlockFiles(plan);
    return Read(table, posts, tiles);
  }

  TerrainMap Map = ReadTerrainMap({"theater.map", test::TerrainMapBytes({})});
  Progress Told;
  test::TempFolder folder;
};

TEST_F(TerrainBlocks, RowsRunFromTheSouthInPostsOfEitherSize) {
  for (const bool large : {false, true}) {
    // The map's flag is right, then wrong: the table tells better.
    for (const bool flag : {large, !large}) {
      Map.LargePosts = flag;
      const Terrain terrain = Read({.Large = large});
      EXPECT_EQ(terrain.Size, 32);
      EXPECT_EQ(terrain.HeightAt(3, 17), 1703);
      EXPECT_EQ(terrain.HeightAt(0, 0), 0);
      EXPECT_EQ(terrain.HeightAt(31, 0), 31);
      EXPECT_EQ(terrain.HeightAt(0, 31), 3100);
      EXPECT_EQ(terrain.Lowest, 0);
      EXPECT_EQ(terrain.Highest, 3131);
      EXPECT_EQ(terrain.HeightAt(32, 0), std::nullopt);
      EXPECT_EQ(terrain.HeightAt(0, -1), std::nullopt);
    }
  }
}

TEST_F(TerrainBlocks, BlocksMayShareTheirPosts) {
  const BlocksPlan plan{.Height = [](std::size_t row, std::size_t column) {
    return row < 16 && column < 16 ? -1300 : 5 + static_cast<int>(column % 16);
  }};
  const auto [table, posts] = test::BlockFiles(plan);
  ASSERT_EQ(table.size(), 16U);
  ASSERT_EQ(posts.size(), 2U * 256 * 7) << "three blocks are alike";
  const Terrain terrain = Read(table, posts);
  EXPECT_EQ(terrain.HeightAt(15, 15), -1300);
  EXPECT_EQ(terrain.HeightAt(19, 15), 8);
  EXPECT_EQ(terrain.HeightAt(3, 16), 8);
  EXPECT_EQ(terrain.HeightAt(19, 31), 8);
  EXPECT_EQ(terrain.Lowest, -1300);
  EXPECT_EQ(terrain.Highest, 20);
}

TEST_F(TerrainBlocks, PostsThatEndElsewhereGoByTheMapsFlag) {
  for (const bool large : {false, true}) {
    const auto [table, posts] = test::BlockFiles({.Large = large});
    Map.LargePosts = large;
    EXPECT_EQ(Read(table, posts + "rest").HeightAt(3, 17), 1703);
    Map.LargePosts = !large;
    EXPECT_THAT(test::FailureOf([&] { Read(table, posts + "rest"); }), HasSubstr("theater.O2: its blocks lie outside"));
  }
}

TEST_F(TerrainBlocks, SeaIsTheCommonestTileAtHeightZero) {
  // Rows 0 to 9 are sea, tile 3; of row 20 a half is flat land, tile 4; row 25 has the sea's tile above the sea.
  const Terrain terrain = Read({.Height = [](std::size_t row, std::size_t) { return row < 10 || row == 20 ? 0 : 50; },
                                .Tile = [](std::size_t row, std::size_t) { return row < 10 || row == 25 ? 3U : 4U; }});
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(0, 0)]);
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(31, 9)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(0, 10)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(5, 20)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(5, 25)]);
}

TEST_F(TerrainBlocks, OfTilesAsCommonTheSmallestIsTheSea) {
  const Terrain terrain = Read({.Height = [](std::size_t, std::size_t) { return 0; },
                                .Tile = [](std::size_t, std::size_t column) { return 900 + 7 * (column % 4); }});
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(4, 9)]);
  EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 1), 32 * 8);
}

TEST_F(TerrainBlocks, LandWithoutHeightZeroHasNoSea) {
  const Terrain terrain = Read({.Height = [](std::size_t, std::size_t) { return 7; }});
  EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 1), 0);
}

TEST_F(TerrainBlocks, SeaIsWhereTilesAreOfWater) {
  // Set 0 is plains, 1 water, 2 river. Small posts: set in bits 4 to 11, resolution above. Large ones: counted from the
  // smallest tile, here 1600.
  const TileSets sets = ReadTileSets({"texture.bin", test::TileSetsBytes({{4, {}}, {1, {}}, {2, {}}})});
  const struct {
    bool Large;
    std::uint32_t Plains, Water, River;
  } cases[] = {{false, 0x3005, 0xF01F, 0x0020}, {true, 1600, 1616 + 15, 1632}, {true, 5, 16 + 3, 32}};
  for (const auto& tiles : cases) {
    SCOPED_TRACE(tiles.Plains);
    const BlocksPlan plan{.Large = tiles.Large,
                          .Height = [](std::size_t row, std::size_t) { return row == 9   ? 120
                                                                              : row < 20 ? 0
                                                                                         : 300; },
                          .Tile =
                              [=](std::size_t row, std::size_t) {
                                return row < 12 ? tiles.Water : row == 12 ? tiles.River : tiles.Plains;
                              }};
    const Terrain terrain = Read(plan, &sets);
    EXPECT_TRUE(terrain.Sea[terrain.IndexOf(4, 0)]);
    EXPECT_TRUE(terrain.Sea[terrain.IndexOf(4, 9)]) << "water above the sea";
    EXPECT_FALSE(terrain.Sea[terrain.IndexOf(4, 12)]) << "a river";
    EXPECT_FALSE(terrain.Sea[terrain.IndexOf(4, 15)]) << "flat land";
    Map.LastNearLevel = 1;
    const Terrain unnamed = Read(plan, &sets);
    EXPECT_FALSE(unnamed.Sea[unnamed.IndexOf(4, 9)]) << "the posts name no tiles of this file";
    EXPECT_TRUE(unnamed.Sea[unnamed.IndexOf(4, 0)]);
    Map.LastNearLevel = 2;
  }
}

TEST_F(TerrainBlocks, TilesThatShowNoWaterAtTheSeaAreNotBelieved) {
  const TileSets sets = ReadTileSets({"texture.bin", test::TileSetsBytes({{4, {}}, {1, {}}})});
  const Terrain terrain = Read({.Height = [](std::size_t row, std::size_t) { return row < 10 ? 0 : 300; },
                                .Tile = [](std::size_t row, std::size_t) { return row < 10 ? 0U : 16U; }},
                               &sets);
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(0, 0)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(0, 10)]);
}

TEST_F(TerrainBlocks, TableOfAnotherTheaterIsRefused) {
  const auto [table, posts] = test::BlockFiles({});
  for (std::size_t length = 0; length < table.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&, &t = table, &p = posts] { Read(t.substr(0, length), p); }),
                HasSubstr("theater.O2: its " + std::to_string(length) + " bytes are not 4 blocks"));
  }
  EXPECT_NE(test::FailureOf([&, &t = table, &p = posts] { Read(t + t, p); }), "");
}

TEST_F(TerrainBlocks, PostsCutAnywhereAreRefused) {
  const auto [table, posts] = test::BlockFiles({});
  for (std::size_t length = 0; length < posts.size(); ++length) {
    const std::size_t fromBlock = (length + 1) % 1792;
    if (fromBlock > 2 && length % 211 != 0) continue;
    EXPECT_THAT(test::FailureOf([&, &t = table, &p = posts] { Read(t, p.substr(0, length)); }), HasSubstr("theater."))
        << length;
  }
}

TEST_F(TerrainBlocks, OffsetsThatLieAreRefused) {
  const auto [table, posts] = test::BlockFiles({});
  for (const std::uint32_t offset : {1U, 1791U, 1792U * 4, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    std::string bad = table;
    bad.replace(8, 4, test::Bytes4(offset));
    EXPECT_THAT(test::FailureOf([&, &p = posts] { Read(bad, p); }), HasSubstr("theater.O2: ")) << offset;
  }
}

TEST_F(TerrainBlocks, MissingPostsAreTold) {
  const DataFile table{"theater.O2", test::BlockFiles({}).first};
  EXPECT_THAT(test::FailureOf([&] { ReadTerrainBlocks(Map, table, folder / "none.L2", nullptr, {}); }),
              HasSubstr("none.L2"));
}

TEST_F(TerrainBlocks, ProgressIsToldAndEndsTheReading) {
  std::vector<std::uint64_t> done;
  Told = [&](std::uint64_t part, std::uint64_t whole) {
    EXPECT_EQ(whole, 8U) << "each of four blocks is read twice";
    done.push_back(part);
  };
  Read(BlocksPlan{});
  EXPECT_THAT(done, testing::ElementsAre(2, 4, 6, 8));
  Told = [](std::uint64_t, std::uint64_t) { throw std::logic_error("enough"); };
  EXPECT_THROW(Read(BlocksPlan{}), std::logic_error);
}

}  // namespace
}  // namespace kestrel::falcon
