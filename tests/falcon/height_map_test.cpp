#include "falcon/height_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "base/temp_folder.h"
#include "failure_text.h"
#include "falcon/theater_text.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

using testing::HasSubstr;

class HeightMap : public testing::Test {
 protected:
  Terrain Read(const std::string& bytes, std::optional<std::int32_t> size = std::nullopt) {
    test::WriteBytes(folder / "HeightMap.raw", bytes);
    return ReadHeightMap(folder / "HeightMap.raw", size, Told);
  }
  Terrain Read(std::size_t side, const std::function<int(std::size_t, std::size_t)>& height,
               std::optional<std::int32_t> size = std::nullopt) {
    return Read(test::GridBytes(side, side, height), size);
  }

  Progress Told;
  test::TempFolder folder;
};

int RowAndColumn(std::size_t row, std::size_t column) { return static_cast<int>(100 * row + column); }

TEST_F(HeightMap, SampleForEachMapUnitFromTheNorth) {
  const Terrain terrain = Read(16, RowAndColumn);
  EXPECT_EQ(terrain.Size, 16);
  EXPECT_EQ(terrain.HeightAt(3, 15), 3);
  EXPECT_EQ(terrain.HeightAt(3, 0), 1503);
  EXPECT_EQ(terrain.HeightAt(15, 7), 815);
  EXPECT_EQ(terrain.Lowest, 0);
  EXPECT_EQ(terrain.Highest, 1515);
}

TEST_F(HeightMap, MapUnitHasTheSampleInItsMiddle) {
  // Four samples a map unit: its middle is the third of them. The northern row of units takes row 2 of the file, the
  // southern one row 14.
  const Terrain terrain = Read(16, RowAndColumn, 4);
  EXPECT_EQ(terrain.Size, 4);
  EXPECT_EQ(terrain.HeightAt(0, 3), 202);
  EXPECT_EQ(terrain.HeightAt(3, 3), 214);
  EXPECT_EQ(terrain.HeightAt(1, 0), 1406);
  EXPECT_EQ(terrain.Lowest, 202);
  EXPECT_EQ(terrain.Highest, 1414);
}

TEST_F(HeightMap, SamplesNeedNotDivideEvenly) {
  // 10 samples for 4 units, 2.5 each: the middles are 1.25, 3.75, 6.25 and 8.75.
  const Terrain terrain = Read(10, RowAndColumn, 4);
  EXPECT_EQ(terrain.HeightAt(0, 3), 101);
  EXPECT_EQ(terrain.HeightAt(1, 2), 303);
  EXPECT_EQ(terrain.HeightAt(2, 1), 606);
  EXPECT_EQ(terrain.HeightAt(3, 0), 808);
}

TEST_F(HeightMap, SeaIsFlatAndNotAboveZero) {
  // A lake of 8 by 8 samples at -70 in the north-western corner; the rest is land, sloped and below the sea.
  const auto height = [](std::size_t row, std::size_t column) {
    return row < 8 && column < 8 ? -70 : -200 + static_cast<int>(3 * row + column);
  };
  const Terrain terrain = Read(16, height);
  // Samples 0 to 5 have neighbours two away within the lake or outside of the map.
  for (int x = 0; x < 16; ++x) {
    for (int y = 0; y < 16; ++y) {
      const bool sea = x <= 5 && 15 - y <= 5;
      EXPECT_EQ(terrain.Sea[terrain.IndexOf(x, y)], sea ? 1 : 0) << x << ' ' << y;
    }
  }
}

TEST_F(HeightMap, EdgesOfTheMapAreJudgedAlike) {
  const Terrain flat = Read(8, [](std::size_t, std::size_t) { return 0; });
  EXPECT_EQ(std::count(flat.Sea.begin(), flat.Sea.end(), 1), 64);
  // The south-eastern corner is flat.
  const Terrain corner = Read(8, [](std::size_t row, std::size_t column) {
    return row > 3 && column > 3 ? 0 : static_cast<int>(row + 9 * column);
  });
  EXPECT_TRUE(corner.Sea[corner.IndexOf(7, 0)]);
  EXPECT_TRUE(corner.Sea[corner.IndexOf(6, 1)]);
  EXPECT_FALSE(corner.Sea[corner.IndexOf(5, 0)]);
  EXPECT_FALSE(corner.Sea[corner.IndexOf(7, 2)]);
}

TEST_F(HeightMap, EachOfTheEightNeighboursTells) {
  for (const int down : {-2, 0, 2}) {
    for (const int right : {-2, 0, 2}) {
      if (down == 0 && right == 0) continue;
      // One sample of a flat sea stands out, two away from that of row 8 and column 8.
      const Terrain terrain = Read(16, [=](std::size_t row, std::size_t column) {
        return static_cast<int>(row) == 8 + down && static_cast<int>(column) == 8 + right ? -1 : 0;
      });
      EXPECT_FALSE(terrain.Sea[terrain.IndexOf(8, 7)]) << down << ' ' << right;
      EXPECT_TRUE(terrain.Sea[terrain.IndexOf(9, 7)]) << down << ' ' << right;
      EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 0), 9) << "it and its eight neighbours";
    }
  }
}

TEST_F(HeightMap, PlainAboveTheSeaIsLand) {
  const Terrain terrain = Read(8, [](std::size_t, std::size_t) { return 1; });
  EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 1), 0);
}

TEST_F(HeightMap, MapUnitIsSeaWhenHalfOfItIs) {
  // Four samples a unit. Columns 0 to 7 are flat, so that those to 5 are water: unit 0 whole, unit 1 by half.
  const auto flatUpTo = [](std::size_t last) {
    return
        [last](std::size_t row, std::size_t column) { return column <= last ? 0 : static_cast<int>(row * 7 + column); };
  };
  const Terrain half = Read(16, flatUpTo(7), 4);
  EXPECT_TRUE(half.Sea[half.IndexOf(0, 0)]);
  EXPECT_TRUE(half.Sea[half.IndexOf(1, 3)]);
  EXPECT_FALSE(half.Sea[half.IndexOf(2, 1)]);
  const Terrain less = Read(16, flatUpTo(6), 4);
  EXPECT_TRUE(less.Sea[less.IndexOf(0, 3)]);
  EXPECT_FALSE(less.Sea[less.IndexOf(1, 3)]);
}

TEST_F(HeightMap, FileCutAnywhereIsRefused) {
  const std::string whole = test::GridBytes(4, 4, RowAndColumn);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length), 4); }), HasSubstr("HeightMap.raw: ")) << length;
    const bool square = length == 2 || length == 8 || length == 18;
    EXPECT_EQ(test::FailureOf([&] { Read(whole.substr(0, length)); }).empty(), square) << length;
  }
}

TEST_F(HeightMap, SizeOfTheTheaterThatLiesIsRefused) {
  const std::string bytes = test::GridBytes(4, 4, RowAndColumn);
  for (const std::int32_t size : {0, -1, 5, 8193, 0x7FFFFFFF}) {
    EXPECT_THAT(test::FailureOf([&] { Read(bytes, size); }), HasSubstr("none of a theater of " + std::to_string(size)));
  }
  EXPECT_EQ(Read(bytes, 1).HeightAt(0, 0), 202);
}

TEST_F(HeightMap, ProgressIsToldAndEndsTheReading) {
  std::uint64_t last = 0;
  Told = [&](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(done, ++last);
    EXPECT_EQ(total, 16U);
  };
  Read(16, RowAndColumn, 4);
  EXPECT_EQ(last, 16U);
  Told = [](std::uint64_t, std::uint64_t) { throw std::logic_error("enough"); };
  EXPECT_THROW(Read(16, RowAndColumn, 4), std::logic_error);
}

TheaterText Text(const std::string& text) { return ReadTheaterText({"Theater.txt", text}); }

TEST(TheaterText, TellsNameSizeAndCenter) {
  const TheaterText theater = Text(
      "Theater name=Somewhere\r\nTheater size in KM = 1024\r\nMap size in pixels=32768\r\nCenter latitude=-38.5\r\n"
      "Center longitude=127.25\r\nProjection string=+proj=tmerc +lon_0=127.5 +k=0.9996\r\n");
  EXPECT_EQ(theater.Name, "Somewhere");
  EXPECT_EQ(theater.Size, 1024);
  EXPECT_EQ(theater.CenterLatitude, -38.5);
  EXPECT_EQ(theater.CenterLongitude, 127.25);
  EXPECT_EQ(theater.Projection, "+proj=tmerc +lon_0=127.5 +k=0.9996");
}

TEST(TheaterText, SizeIsRoundedAndNeeded) {
  EXPECT_EQ(Text("Theater size in KM=2048.2").Size, 2048);
  EXPECT_EQ(Text("theater SIZE in km\t=\t4096").Size, 4096);
  for (const char* text : {"", "Theater size in KM=", "Theater name=1024", "Theater size in KM=0",
                           "Theater size in KM=-5", "Theater size in KM=1e300", "Theater size in KM=nan",
                           "Theater size in KM=8193", "Theater size in KM=0.5", "Theater size in KM"}) {
    EXPECT_THAT(test::FailureOf([&] { Text(text); }), HasSubstr("Theater.txt: ")) << text;
  }
}

TEST(TheaterText, ImpossibleCenterIsNone) {
  const TheaterText theater = Text("Theater size in KM=64\nCenter latitude=91\nCenter longitude=1e300");
  EXPECT_EQ(theater.CenterLatitude, std::nullopt);
  EXPECT_EQ(theater.CenterLongitude, std::nullopt);
}

}  // namespace
}  // namespace kestrel::falcon
