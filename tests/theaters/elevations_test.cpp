#include "theaters/elevations.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/failure.h"
#include "base/little_endian.h"
#include "base/temp_folder.h"
#include "theaters/catalogue.h"

namespace kestrel::theaters {
namespace {

/// `values` as they lie in the file.
std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes += test::Bytes2(value);
  return bytes;
}

class ElevationsOf : public testing::Test {
 protected:
  Elevations Loaded(const std::string& bytes, double size) {
    test::WriteBytes(folder / "one_Elevation.dat", bytes);
    Elevations elevations;
    elevations.SetSource(folder / "one_Elevation.dat", size);
    elevations.Read();
    return elevations;
  }

  test::TempFolder folder;
};

TEST_F(ElevationsOf, RowsRunFromTheSouthAndEachFromTheWest) {
  const Elevations heights = Loaded(Bytes({1, 2, 3, 4, 5, 6, 7, 8, 9}), 3);
  EXPECT_EQ(heights.At(0, 0), 1);
  EXPECT_EQ(heights.At(2, 0), 3);
  EXPECT_EQ(heights.At(0, 2), 7);
  EXPECT_EQ(heights.At(2.99, 1.99), 6);
}

TEST_F(ElevationsOf, HeightsAreSignedAndLittleEndian) {
  const Elevations heights = Loaded(std::string("\xFE\xFF\x00\x80\xFF\x7F\x34\x12", 8), 2);
  EXPECT_EQ(heights.At(0, 0), -2);
  EXPECT_EQ(heights.At(1, 0), -32768);
  EXPECT_EQ(heights.At(0, 1), 32767);
  EXPECT_EQ(heights.At(1, 1), 0x1234);
}

TEST_F(ElevationsOf, NothingLiesOnOrBeyondAnEdge) {
  const Elevations heights = Loaded(Bytes({1, 2, 3, 4}), 2);
  struct Case {
    double x, y;
  };
  for (const Case& each :
       {Case{2, 0}, {0, 2}, {-0.01, 1}, {1, -0.01}, {1e300, 0}, {0, -1e300}, {std::nan(""), 0}, {0, INFINITY}}) {
    EXPECT_EQ(heights.At(each.x, each.y), std::nullopt) << each.x << ", " << each.y;
  }
}

TEST_F(ElevationsOf, AShorterFileLeavesTheRestZero) {
  const Elevations heights = Loaded(Bytes({10, 20}) + "\x05", 2);
  EXPECT_EQ(heights.At(1, 0), 20);
  EXPECT_EQ(heights.At(0, 1), 5);
  EXPECT_EQ(heights.At(1, 1), 0);
  EXPECT_EQ(Loaded("", 2).At(0, 0), 0);
}

TEST_F(ElevationsOf, WhatALongerFileHoldsBeyondIsNotRead) {
  const Elevations heights = Loaded(Bytes({1, 2, 3, 4, 99, 99}), 2);
  EXPECT_EQ(heights.At(1, 1), 4);
}

TEST_F(ElevationsOf, AMissingFileGivesASingleHeight) {
  Elevations heights;
  heights.SetSource(folder / "none_Elevation.dat", 1024);
  EXPECT_FALSE(heights.Read());
  EXPECT_EQ(heights.At(0.5, 0.5), 0);
  EXPECT_EQ(heights.At(1, 0), std::nullopt);
  EXPECT_EQ(heights.At(0, 1), std::nullopt);
}

TEST_F(ElevationsOf, ASizeThatIsNotWholeTakesItsWholePartForTheRows) {
  const Elevations heights = Loaded(Bytes({1, 2, 3, 4, 5, 6, 7, 8}), 2.5);
  EXPECT_EQ(heights.At(0, 1), 3);
  EXPECT_EQ(heights.At(2.4, 0), 3);  // beyond the row: the first of the next
  EXPECT_EQ(heights.At(2.4, 2.4), std::nullopt);
}

TEST_F(ElevationsOf, NothingIsReadBeforeItIsNeededNorTwice) {
  Elevations heights;
  heights.SetSource(folder / "one_Elevation.dat", 1);
  EXPECT_EQ(heights.At(0, 0), std::nullopt);
  test::WriteBytes(folder / "one_Elevation.dat", Bytes({7}));
  EXPECT_TRUE(heights.Read());
  EXPECT_EQ(heights.At(0, 0), 7);
  test::WriteBytes(folder / "one_Elevation.dat", Bytes({8}));
  EXPECT_FALSE(heights.Read());
  EXPECT_EQ(heights.At(0, 0), 7);
  heights.SetSource(folder / "one_Elevation.dat", 1);
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), 8);
}

TEST_F(ElevationsOf, EverySizeThatATheaterMayHaveHasHeights) {
  const Elevations heights = Loaded(Bytes({7, 8}), MaxSize);
  EXPECT_EQ(heights.At(1, 0), 8);
  EXPECT_EQ(heights.At(MaxSize - 1, MaxSize - 1), 0);
}

TEST_F(ElevationsOf, ATheaterBeyondTheLimitFailsOnceAndHasNone) {
  test::WriteBytes(folder / "one_Elevation.dat", Bytes({7}));
  for (const double size : {MaxSize + 1, 1e18, HUGE_VAL}) {
    Elevations heights;
    heights.SetSource(folder / "one_Elevation.dat", size);
    EXPECT_THROW(heights.Read(), base::RuntimeFailure) << size;
    EXPECT_NO_THROW(heights.Read());
    EXPECT_EQ(heights.At(0, 0), std::nullopt);
  }
}

TEST(Elevations, BeforeATheaterIsLoadedThereAreNone) {
  Elevations heights;
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), std::nullopt);
}

}  // namespace
}  // namespace kestrel::theaters
