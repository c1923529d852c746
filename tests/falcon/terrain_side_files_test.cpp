// The small files beside the heights: ground cover, tile sets, highest terrain.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failure_text.h"
#include "falcon/ground_cover.h"
#include "falcon/highest_terrain.h"
#include "falcon/terrain.h"
#include "falcon/tile_sets.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

GroundCover Cover(const std::string& bytes) { return ReadGroundCover({"korea.thr", bytes}); }

/// 4 columns of 6 cells, each another cover; the upper bits are relief, road and railway.
std::string SmallCover() {
  return test::GroundCoverBytes(4, 6, [](int x, int y) { return 0xF0U | static_cast<unsigned>((x + 3 * y) % 8); });
}

TEST(GroundCover, StandsColumnByColumnFromTheSouth) {
  const GroundCover cover = Cover(SmallCover());
  EXPECT_EQ(cover.Width, 4);
  EXPECT_EQ(cover.Height, 6);
  for (int x = 0; x < 4; ++x) {
    for (int y = 0; y < 6; ++y) EXPECT_EQ(cover.CoverAt(x, y), (x + 3 * y) % 8) << x << ' ' << y;
  }
  EXPECT_TRUE(cover.IsWater(0, 0));
  EXPECT_FALSE(cover.IsWater(1, 0));
}

TEST(GroundCover, OutsideThereIsWater) {
  const GroundCover cover = Cover(test::GroundCoverBytes(1, 2, [](int, int) { return 3U; }));
  EXPECT_FALSE(cover.IsWater(0, 1));
  EXPECT_TRUE(cover.IsWater(-1, 0));
  EXPECT_TRUE(cover.IsWater(1, 0));
  EXPECT_TRUE(cover.IsWater(0, -1));
  EXPECT_TRUE(cover.IsWater(0, 2));
}

TEST(GroundCover, FileOfAnotherSizeIsRefused) {
  const std::string whole = SmallCover();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Cover(whole.substr(0, length)); }), HasSubstr("korea.thr: ")) << length;
  }
  EXPECT_NE(test::FailureOf([&] { Cover(whole + '\0'); }), "");
  EXPECT_NE(test::FailureOf([&] { Cover(test::Bytes2(-4) + test::Bytes2(-6) + whole.substr(4)); }), "");
  EXPECT_NE(test::FailureOf([&] { Cover(test::Bytes2(0) + test::Bytes2(0)); }), "");
}

TEST(GroundCover, GivesATerrainItsSea) {
  // Water in the south-western quarter, told by 4 by 4 cells for 8 by 8 map units.
  Terrain terrain = FlatTerrain(8);
  TakeSea(terrain, Cover(test::GroundCoverBytes(4, 4, [](int x, int y) { return x < 2 && y < 2 ? 0U : 3U; })));
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(3, 3)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(4, 3)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(3, 4)]);
  EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 1), 16);
}

TEST(TileSets, TellTheKindOfEachSet) {
  const TileSets sets =
      ReadTileSets({"texture.bin", test::TileSetsBytes({{4, {{}, {2, 1}}}, {1, {{0, 3}}}, {2, {}}, {14, {{1, 0}}}})});
  EXPECT_THAT(sets.Kinds, ElementsAre(4, 1, 2, 14));
  EXPECT_EQ(sets.TileCount, 4U);
}

TEST(TileSets, FileCutAnywhereIsRefused) {
  const std::string whole = test::TileSetsBytes({{4, {{}, {2, 1}}}, {1, {{0, 3}}}});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] {
                  ReadTileSets({"texture.bin", whole.substr(0, length)});
                }),
                HasSubstr("texture.bin: "))
        << length;
  }
  EXPECT_THAT(test::FailureOf([&] {
                ReadTileSets({"texture.bin", whole.substr(0, whole.size() - 1)});
              }),
              HasSubstr("set 1 of 2 is cut"));
  EXPECT_NE(test::FailureOf([&] { ReadTileSets({"texture.bin", whole + '\0'}); }), "");
}

TEST(TileSets, CountsThatLieAreRefused) {
  const std::string whole = test::TileSetsBytes({{4, {{}, {2, 1}}}, {1, {{0, 3}}}});
  // Sets, tiles in all, tiles of the first set, areas and paths of its first tile.
  for (const std::size_t at : {0U, 4U, 8U, 33U, 37U}) {
    for (const std::uint32_t count : {5U, 0x10000000U, 0xFFFFFFFFU}) {
      std::string bad = whole;
      bad.replace(at, 4, test::Bytes4(count));
      EXPECT_NE(test::FailureOf([&] { ReadTileSets({"texture.bin", bad}); }), "") << at << ' ' << count;
    }
  }
}

TEST(HighestTerrain, FileBeginsInTheNorth) {
  const std::string bytes = test::GridBytes(
      3, 2, [](std::size_t row, std::size_t column) { return static_cast<int>(10 * row + column) - 5; });
  const HighestTerrain highest = ReadHighestTerrain({"theater.mea", bytes}, 2, 3);
  EXPECT_EQ(highest.Width, 2);
  EXPECT_EQ(highest.Height, 3);
  EXPECT_EQ(highest.At(0, 2), -5);
  EXPECT_EQ(highest.At(1, 2), -4);
  EXPECT_EQ(highest.At(1, 0), 16);
}

TEST(HighestTerrain, FileOfAnotherSizeIsASquareOrRefused) {
  const std::string bytes = test::GridBytes(4, 4, [](std::size_t row, std::size_t) { return static_cast<int>(row); });
  EXPECT_EQ(ReadHighestTerrain({"theater.mea", bytes}, 128, 128).Width, 4);
  EXPECT_EQ(ReadHighestTerrain({"theater.mea", bytes}, 0xFFFFFFFF, 0xFFFFFFFF).Height, 4);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const bool square = length == 2 || length == 8 || length == 18;
    EXPECT_EQ(test::FailureOf([&] {
                ReadHighestTerrain({"theater.mea", bytes.substr(0, length)}, 4, 4);
              }).empty(),
              square)
        << length;
  }
}

}  // namespace
}  // namespace kestrel::falcon
