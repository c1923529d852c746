#include "falcon/colour_bands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace kestrel::falcon {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

/// A terrain of 2 by 2 map units or as many as the heights make.
Terrain Of(std::int32_t size, const std::vector<std::int16_t>& heights) {
  Terrain terrain = FlatTerrain(size);
  terrain.Heights = heights;
  return terrain;
}
Terrain Plane(std::int32_t size, const std::function<int(int x, int y)>& height) {
  Terrain terrain = FlatTerrain(size);
  for (std::int32_t y = 0; y < size; ++y) {
    for (std::int32_t x = 0; x < size; ++x) {
      terrain.Heights[terrain.IndexOf(x, y)] = static_cast<std::int16_t>(height(x, y));
    }
  }
  return terrain;
}
std::vector<ColourCriterion> Bands(int count) {
  std::vector<ColourCriterion> bands;
  for (int n = 0; n < count; ++n)
    bands.push_back({0x808080u + static_cast<unsigned>(n), static_cast<std::int16_t>(100 * n)});
  return bands;
}

TEST(PaintGround, ABandReachesUpToItsHeightAndTheLastBeyond) {
  const Terrain terrain = Of(3, {-500, -100, -99, 0, 1, 250, 251, 32767, -32768});
  const GroundPicture picture = PaintGround(terrain, {.Sea = 9, .Bands = {{1, -100}, {2, 0}, {3, 250}}}, {});
  EXPECT_EQ(picture.Size, 3);
  EXPECT_THAT(picture.Cells, ElementsAre(1, 1, 2, 2, 3, 3, 3, 3, 1));
  EXPECT_THAT(picture.Palette, ElementsAre(9, 1, 2, 3));
}

TEST(PaintGround, OfEqualHeightsTheFirstBandCounts) {
  const GroundPicture picture = PaintGround(Of(2, {0, 10, 11, 20}), {.Bands = {{1, 10}, {2, 10}, {3, 10}}}, {});
  EXPECT_THAT(picture.Cells, ElementsAre(1, 1, 3, 3));
}

TEST(PaintGround, SeaIsEntryZeroWhateverItsHeight) {
  Terrain terrain = Of(2, {0, 500, 500, 0});
  terrain.Sea = {0, 1, 0, 1};
  EXPECT_THAT(PaintGround(terrain, {.Bands = {{1, 0}, {2, 1000}}}, {}).Cells, ElementsAre(1, 0, 2, 0));
}

TEST(PaintGround, TwoColoursHaveOneBandAtZero) {
  const ColourScheme scheme = SchemeOf(LightColours);
  ASSERT_THAT(scheme.Bands, SizeIs(1));
  EXPECT_EQ(scheme.Bands[0].Height, 0);
  Terrain terrain = Of(2, {0, -7, 9000, 0});
  terrain.Sea = {1, 0, 0, 0};
  const GroundPicture picture = PaintGround(terrain, scheme, {});
  EXPECT_THAT(picture.Cells, ElementsAre(0, 1, 1, 1));
  EXPECT_THAT(picture.Palette, ElementsAre(0xFFFFFF, 0x78CF06));
  EXPECT_THAT(PaintGround(terrain, SchemeOf(DarkColours), {}).Palette, ElementsAre(0x4E4E4F, 0x41861A));
}

TEST(PaintGround, AllOf255BandsHaveEntries) {
  const GroundPicture picture = PaintGround(Of(2, {0, 25400, 25300, 32767}), {.Bands = Bands(255)}, {});
  EXPECT_THAT(picture.Palette, SizeIs(256));
  EXPECT_THAT(picture.Cells, ElementsAre(1, 255, 254, 255));
}

TEST(PaintGround, ProgressTellsOfTheEndAndEndsWhatThrows) {
  std::uint64_t last = 0, all = 0;
  PaintGround(FlatTerrain(100), SchemeOf(LightColours), [&](std::uint64_t done, std::uint64_t total) {
    EXPECT_GT(done, last);
    last = done;
    all = total;
  });
  EXPECT_EQ(last, all);
  EXPECT_EQ(all, 100u);
  EXPECT_THROW(PaintGround(FlatTerrain(100), SchemeOf(LightColours), [](std::uint64_t, std::uint64_t) { throw 1; }),
               int);
}

TEST(ShadedGround, FlatGroundHasTheColoursThemselves) {
  for (const int count : {1, 2, 17, 18, 30, 51}) {
    const std::vector<ColourCriterion> bands = Bands(count);
    Terrain terrain = FlatTerrain(4);
    for (int band = 0; band < count; ++band) {
      for (std::int16_t& height : terrain.Heights) height = bands[static_cast<std::size_t>(band)].Height;
      const GroundPicture picture = PaintGround(terrain, {.Bands = bands, .Shaded = true}, {});
      EXPECT_LE(picture.Palette.size(), 256u);
      for (const std::uint8_t cell : picture.Cells) {
        ASSERT_EQ(picture.Palette.at(cell), bands[static_cast<std::size_t>(band)].Colour) << band << " of " << count;
      }
    }
  }
}

TEST(ShadedGround, ManyBandsShareFiftyOneColours) {
  const std::vector<ColourCriterion> bands = Bands(255);
  // Five bands each: the middle one of the first five and of the last five.
  const GroundPicture picture = PaintGround(Of(2, {0, 400, 25000, 25400}), {.Bands = bands, .Shaded = false}, {});
  ASSERT_THAT(picture.Cells, ElementsAre(1, 5, 251, 255));
  for (const auto& [height, band] : {std::pair(0, 2), {400, 2}, {500, 7}, {25000, 252}, {25400, 252}}) {
    Terrain terrain = FlatTerrain(2);
    for (std::int16_t& each : terrain.Heights) each = static_cast<std::int16_t>(height);
    const GroundPicture shaded = PaintGround(terrain, {.Bands = bands, .Shaded = true}, {});
    ASSERT_THAT(shaded.Palette, SizeIs(256)) << "the sea and 51 times 5";
    EXPECT_EQ(shaded.Palette[shaded.Cells[0]], bands[static_cast<std::size_t>(band)].Colour) << height;
  }
}

/// How light grey the middle of a terrain of one grey band is.
unsigned Grey(const std::function<int(int x, int y)>& height) {
  const GroundPicture picture = PaintGround(Plane(5, height), {.Bands = {{0x808080, 32767}}, .Shaded = true}, {});
  return picture.Palette.at(picture.Cells[12]) & 0xFF;
}

TEST(ShadedGround, WhatLooksToTheNorthWestIsLightAndTheOtherSideDark) {
  // 500 feet for each map unit of 3279.98 feet is a slope of 0.15.
  EXPECT_EQ(Grey([](int, int) { return 700; }), 0x80u);
  EXPECT_GT(Grey([](int x, int) { return 500 * x; }), 0x80u) << "rises to the east";
  EXPECT_LT(Grey([](int x, int) { return 5000 - 500 * x; }), 0x80u) << "rises to the west";
  EXPECT_GT(Grey([](int, int y) { return 5000 - 500 * y; }), 0x80u) << "rises to the south";
  EXPECT_LT(Grey([](int, int y) { return 500 * y; }), 0x80u) << "rises to the north";
  EXPECT_EQ(Grey([](int x, int y) { return 500 * (x + y); }), 0x80u) << "rises to the north-east";
}

TEST(ShadedGround, SteepSlopesHaveTheLightestAndDarkestShade) {
  // Half of 128 is 64; 40 % of the way from 128 to 255 is 178.8.
  EXPECT_EQ(Grey([](int x, int) { return 5000 * x; }), 179u);
  EXPECT_EQ(Grey([](int x, int) { return 25000 - 5000 * x; }), 64u);
}

TEST(ShadedGround, TheSeaIsFlat) {
  Terrain terrain = Plane(4, [](int x, int) { return 500 * x; });
  terrain.Sea.assign(terrain.Sea.size(), 1);
  const GroundPicture picture = PaintGround(terrain, {.Sea = 5, .Bands = Bands(3), .Shaded = true}, {});
  EXPECT_THAT(picture.Cells, Each(0));
  EXPECT_EQ(picture.Palette[0], 5u);
}

TEST(ShadedGround, EveryCellHasAnEntryWhateverTheGround) {
  unsigned random = 1;
  const auto noise = [&random](int, int) {
    random = random * 1664525u + 1013904223u;
    return static_cast<int>(random >> 16) - 32768;
  };
  for (const int count : {1, 7, 50, 51, 52, 100, 254, 255}) {
    const GroundPicture picture = PaintGround(Plane(40, noise), {.Bands = Bands(count), .Shaded = true}, {});
    ASSERT_LE(picture.Palette.size(), 256u);
    for (const std::uint8_t cell : picture.Cells) {
      ASSERT_GE(cell, 1) << count;
      ASSERT_LT(cell, picture.Palette.size()) << count;
    }
  }
}

}  // namespace
}  // namespace kestrel::falcon
