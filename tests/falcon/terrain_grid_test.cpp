#include "falcon/terrain_grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "base/temp_folder.h"
#include "failure_text.h"
#include "terrain_writer.h"

namespace kestrel::falcon {
namespace {

using testing::HasSubstr;

TerrainGridHeader Header(const std::string& text) { return ReadTerrainGridHeader({"TERRAIN.HDR", text}); }

class TerrainGrid : public testing::Test {
 protected:
  Terrain Read(const std::string& bytes, const std::optional<TerrainGridHeader>& header = std::nullopt) {
    test::WriteBytes(folder / "TERRAIN.BIL", bytes);
    return ReadTerrainGrid(folder / "TERRAIN.BIL", header, Witnesses, Told);
  }

  TerrainGridWitnesses Witnesses;
  Progress Told;
  test::TempFolder folder;
};

/// 16 by 16 heights: 100 for each row from the first, 1 for each column; -3 at the first of all.
int SmallHeight(std::size_t row, std::size_t column) {
  return row + column == 0 ? -3 : static_cast<int>(100 * row + column);
}
std::string SmallGrid() { return test::GridBytes(16, 16, SmallHeight); }

TEST_F(TerrainGrid, FirstRowIsTheNorth) {
  const Terrain terrain = Read(SmallGrid());
  EXPECT_EQ(terrain.Size, 16);
  EXPECT_EQ(terrain.HeightAt(0, 15), -3);
  EXPECT_EQ(terrain.HeightAt(2, 15), 2);
  EXPECT_EQ(terrain.HeightAt(3, 0), 1503);
  EXPECT_EQ(terrain.Lowest, -3);
  EXPECT_EQ(terrain.Highest, 1515);
}

TEST_F(TerrainGrid, SeaIsHeightZero) {
  const Terrain terrain =
      Read(test::GridBytes(4, 4, [](std::size_t row, std::size_t) { return static_cast<int>(row) - 1; }));
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(0, 3)]) << "land below the sea";
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(0, 2)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(0, 1)]);
}

TEST_F(TerrainGrid, HeaderTellsSizeOrderOfBytesAndWhatToSkip) {
  EXPECT_EQ(Read(SmallGrid(), Header("BYTEORDER I\r\nLAYOUT BIL\r\nNROWS 16\r\nNCOLS 16\r\nNBANDS 1\r\nNBITS 16\r\n"))
                .HeightAt(3, 0),
            1503);
  EXPECT_EQ(Read("12345" + SmallGrid(), Header("nrows\t16\nncols\t16\nskipbytes 5")).HeightAt(3, 0), 1503);
  std::string other = SmallGrid();
  for (std::size_t at = 0; at < other.size(); at += 2) std::swap(other[at], other[at + 1]);
  EXPECT_EQ(Read(other, Header("NROWS 16\nNCOLS 16\nBYTEORDER M")).HeightAt(3, 0), 1503);
  EXPECT_EQ(Read(other, Header("NROWS 16\nNCOLS 16\nBYTEORDER msbfirst")).HeightAt(0, 15), -3);
}

TEST_F(TerrainGrid, HeaderOfAnotherGridIsRefused) {
  const struct {
    const char* Text;
    const char* Complaint;
  } cases[] = {{"", "it has no NROWS"},
               {"NROWS 16", "its NCOLS are not its NROWS"},
               {"NROWS 16\nNCOLS 8", "its NCOLS are not its NROWS"},
               {"NROWS 0\nNCOLS 0", "its NROWS is 0"},
               {"NROWS 8193\nNCOLS 8193", "its NROWS is 8193"},
               {"NROWS -16\nNCOLS -16", "its NROWS is -16"},
               {"NROWS 1e300\nNCOLS 1e300", "its NROWS is 1e300"},
               {"NROWS nan\nNCOLS nan", "its NROWS is nan"},
               {"NROWS 16\nNCOLS 16\nNBITS 32", "its NBITS is 32"},
               {"NROWS 16\nNCOLS 16\nNBANDS 3", "its NBANDS is 3"},
               {"NROWS 16\nNCOLS 16\nSKIPBYTES 1e18", "its SKIPBYTES is 1e18"}};
  for (const auto& bad : cases) {
    EXPECT_EQ(test::FailureOf([&] { Header(bad.Text); }), std::string("TERRAIN.HDR: ") + bad.Complaint);
  }
}

TEST_F(TerrainGrid, FileCutAnywhereIsRefused) {
  const std::string whole = test::GridBytes(4, 4, SmallHeight);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length), Header("NROWS 4\nNCOLS 4")); }),
                HasSubstr("TERRAIN.BIL: its " + std::to_string(length) + " bytes"));
    const bool square = length == 2 || length == 8 || length == 18;
    EXPECT_EQ(test::FailureOf([&] { Read(whole.substr(0, length)); }).empty(), square) << length;
  }
  EXPECT_NE(test::FailureOf([&] { Read(whole + "x", Header("NROWS 4\nNCOLS 4")); }), "");
  EXPECT_NE(test::FailureOf([&] { Read(whole, Header("NROWS 8192\nNCOLS 8192")); }), "");
}

TEST_F(TerrainGrid, GroundCoverTellsWhichRowIsTheFirst) {
  // The first four rows of the file are sea, the others land.
  const std::string bytes = test::GridBytes(8, 8, [](std::size_t row, std::size_t) { return row < 4 ? 0 : 700; });
  const auto covered = [](bool northern) {
    return ReadGroundCover(
        {"x.thr", test::GroundCoverBytes(4, 4, [=](int, int y) { return (y >= 2) == northern ? 0U : 3U; })});
  };
  const GroundCover northernSea = covered(true), southernSea = covered(false);
  Witnesses.Cover = &northernSea;
  EXPECT_EQ(Read(bytes).HeightAt(0, 7), 0);
  Witnesses.Cover = &southernSea;
  const Terrain mirrored = Read(bytes);
  EXPECT_EQ(mirrored.HeightAt(0, 7), 700);
  EXPECT_EQ(mirrored.HeightAt(0, 0), 0);
  EXPECT_TRUE(mirrored.Sea[mirrored.IndexOf(5, 0)]);
  EXPECT_FALSE(mirrored.Sea[mirrored.IndexOf(5, 7)]);
}

TEST_F(TerrainGrid, HighestTerrainTellsWhichRowIsTheFirst) {
  // Rows 0 to 14 of the file in order, of an odd number of rows: the middle one stays.
  const std::string bytes =
      test::GridBytes(15, 15, [](std::size_t row, std::size_t) { return static_cast<int>(row) * 10; });
  // A cell for each row, its own height; the first of the file is the north.
  const auto highest = [](bool asInGrid) {
    return ReadHighestTerrain({"x.mea", test::GridBytes(15, 1,
                                                        [=](std::size_t row, std::size_t) {
                                                          return static_cast<int>(asInGrid ? row : 14 - row) * 10;
                                                        })},
                              1, 15);
  };
  const HighestTerrain same = highest(true), other = highest(false);
  Witnesses.Highest = &same;
  EXPECT_EQ(Read(bytes).HeightAt(0, 14), 0);
  Witnesses.Highest = &other;
  const Terrain mirrored = Read(bytes);
  EXPECT_EQ(mirrored.HeightAt(3, 14), 140);
  EXPECT_EQ(mirrored.HeightAt(3, 7), 70);
  EXPECT_EQ(mirrored.HeightAt(3, 0), 0);
}

TEST_F(TerrainGrid, WitnessesThatSayNothingLeaveTheNorthFirst) {
  const GroundCover land = ReadGroundCover({"x.thr", test::GroundCoverBytes(2, 2, [](int, int) { return 3U; })});
  Witnesses.Cover = &land;
  EXPECT_EQ(Read(SmallGrid()).HeightAt(3, 0), 1503);
}

TEST_F(TerrainGrid, ProgressIsToldAndEndsTheReading) {
  std::uint64_t last = 0;
  Told = [&](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(done, ++last);
    EXPECT_EQ(total, 16U);
  };
  Read(SmallGrid());
  EXPECT_EQ(last, 16U);
  Told = [](std::uint64_t, std::uint64_t) { throw std::logic_error("enough"); };
  EXPECT_THROW(Read(SmallGrid()), std::logic_error);
}

}  // namespace
}  // namespace kestrel::falcon
