#include "falcon/terrain_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "failure_text.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

using testing::HasSubstr;

TerrainMap Read(const std::string& bytes) { return ReadTerrainMap({"theater.map", bytes}); }

TEST(TerrainMap, TellsItsSizes) {
  const TerrainMap map = Read(test::TerrainMapBytes({.Levels = {256, 128, 64, 32, 16, 8}, .HighestWidth = 128}));
  EXPECT_EQ(map.PostFeet, 819.995F);
  EXPECT_EQ(map.HighestTerrainWidth, 128U);
  EXPECT_EQ(map.HighestTerrainHeight, 4U);
  EXPECT_EQ(map.LastNearLevel, 2);
  ASSERT_EQ(map.Levels.size(), 6U);
  EXPECT_EQ(map.Levels[5].Width, 8U);
  EXPECT_EQ(map.Size(), 1024);
}

TEST(TerrainMap, BlocksOfTheThirdLevelStandAt1068) {
  std::string bytes = test::TerrainMapBytes({});
  ASSERT_EQ(bytes.size(), 1100U);
  bytes.replace(1068, 8, test::Bytes4(256) + test::Bytes4(256));
  EXPECT_EQ(Read(bytes).Size(), 4096);
}

TEST(TerrainMap, SizesOfTheatersThatOccur) {
  for (const int size : {16, 1024, 2048, 4096, 8192}) {
    const auto blocks = static_cast<std::uint32_t>(size / 16);
    EXPECT_EQ(Read(test::TerrainMapBytes({.Levels = {4 * blocks, 2 * blocks, blocks}})).Size(), size);
  }
}

TEST(TerrainMap, FileWithoutACornerHasTheUsualOne) {
  for (const std::string& rest : {std::string(), test::Bytes4(1), test::Bytes4(1) + test::BytesF32(34)}) {
    const TerrainMap map = Read(test::TerrainMapBytes({.Rest = rest}));
    EXPECT_FALSE(map.HasCorner) << rest.size();
    EXPECT_EQ(map.LargePosts, !rest.empty()) << rest.size();
    EXPECT_NEAR(map.Longitude, 119.1148778, 1e-9);
    EXPECT_NEAR(map.Latitude, 33.775918333, 1e-9);
  }
}

TEST(TerrainMap, CornerStandsAt1104) {
  const std::string bytes = test::TerrainMapBytes({.Rest = test::CornerBytes(2, 34.5F, -29.25F)});
  ASSERT_EQ(bytes.size(), 1112U);
  ASSERT_EQ(bytes.substr(1104, 4), test::BytesF32(34.5F));
  const TerrainMap map = Read(bytes + "more");
  EXPECT_TRUE(map.HasCorner);
  EXPECT_FALSE(map.LargePosts);
  EXPECT_EQ(map.Longitude, 34.5);
  EXPECT_EQ(map.Latitude, -29.25);
}

TEST(TerrainMap, ImpossibleCornerIsNone) {
  const float noNumber = std::numeric_limits<float>::quiet_NaN();
  for (const std::string& rest : {test::CornerBytes(0, noNumber, 1), test::CornerBytes(0, 1, noNumber),
                                  test::CornerBytes(0, 3e38F, 1), test::CornerBytes(0, 1, 90.5F)}) {
    EXPECT_FALSE(Read(test::TerrainMapBytes({.Rest = rest})).HasCorner);
  }
}

TEST(TerrainMap, FileCutBeforeItsLevelsEndIsRefused) {
  const std::string whole = test::TerrainMapBytes({});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length)); }), HasSubstr("theater.map: ")) << length;
  }
}

TEST(TerrainMap, LevelsThatLieAreRefused) {
  for (const std::uint32_t levels : {0U, 2U, 7U, 0x20000000U, 0xFFFFFFFFU}) {
    std::string bytes = test::TerrainMapBytes({});
    EXPECT_NE(test::FailureOf([&] { Read(bytes.replace(16, 4, test::Bytes4(levels))); }), "") << levels;
  }
  for (const std::uint32_t blocks : {0U, 513U, 0x10000000U, 0xFFFFFFFFU}) {
    EXPECT_NE(test::FailureOf([&] { Read(test::TerrainMapBytes({.Levels = {8, 4, blocks}})); }), "") << blocks;
  }
  std::string bytes = test::TerrainMapBytes({});
  EXPECT_EQ(test::FailureOf([&] { Read(bytes.replace(1072, 4, test::Bytes4(3))); }),
            "theater.map: its third level of detail has 2 by 3 blocks");
}

}  // namespace
}  // namespace kestrel::falcon
