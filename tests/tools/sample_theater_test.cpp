#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/picture.h"
#include "base/profile_file.h"
#include "radio/frequency_file.h"
#include "sample-theater/facts.h"
#include "sample-theater/painter.h"
#include "sample-theater/png_writer.h"
#include "sample-theater/theater_writer.h"
#include "sample-theater/towns.h"
#include "theaters/theater_file.h"

namespace kestrel::land {
namespace {

constexpr int SmallSide = 256;

std::uint64_t HashOf(const std::string& bytes) {
  std::uint64_t hash = 1469598103934665603u;
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
  return hash;
}

std::string PictureBytes(const Terrain& terrain) {
  const auto towns = PlaceTowns(terrain);
  return WritePng(PaintMap(terrain, towns, BuildRoads(terrain, towns)));
}

/// The whole theater, made once for all tests that need it.
class SampleTheater : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder = std::filesystem::path(testing::TempDir()) / ("sample_theater_" + std::to_string(::getpid()));
    WriteTheater(folder);
  }
  static void TearDownTestSuite() { std::filesystem::remove_all(folder); }
  static std::filesystem::path folder;
};
std::filesystem::path SampleTheater::folder;

TEST(SampleTerrain, IsTheSameEveryTime) {
  const Terrain first = MakeTerrain(SmallSide);
  const Terrain second = MakeTerrain(SmallSide);
  EXPECT_EQ(ElevationBytes(first), ElevationBytes(second));
  EXPECT_EQ(PictureBytes(first), PictureBytes(second));
}

TEST(SampleTerrain, IsTheSameOnEveryMachine) {
  // Changes with every change to the land, never with a compiler or its options.
  EXPECT_EQ(HashOf(ElevationBytes(MakeTerrain(SmallSide))), 9198951948612842972u);
}

TEST(SampleTerrain, RiversRunDownToTheSeaOrToAnotherRiver) {
  const Terrain terrain = MakeTerrain(1024);
  ASSERT_GT(terrain.Rivers.size(), 10u);
  int followed = 0;
  for (const River& river : terrain.Rivers) {
    const auto onMap = [&](const RiverPoint& point) {
      return point.X > 0 && point.Y > 0 && point.X < terrain.Height.Side() && point.Y < terrain.Height.Side();
    };
    const auto feet = [&](const RiverPoint& point) {
      return terrain.Height.At(static_cast<int>(point.X), static_cast<int>(point.Y));
    };
    if (!onMap(river.front()) || !onMap(river.back())) continue;
    ++followed;
    // The banks are rougher than the bed.
    EXPECT_LT(feet(river.back()), feet(river.front()) + 150);
    EXPECT_GE(river.back().Width + 0.01, river.front().Width);
  }
  EXPECT_GT(followed, 10);
}

TEST(SampleTerrain, TownsStandOnLowLand) {
  const Terrain terrain = MakeTerrain(1024);
  const auto towns = PlaceTowns(terrain);
  ASSERT_GT(towns.size(), 8u);
  for (const Town& town : towns) {
    const float feet = terrain.Height.At(static_cast<int>(town.X), static_cast<int>(town.Y));
    EXPECT_LT(feet, 3000);
  }
}

TEST(SampleTerrain, PictureDecodesToTheSamePixels) {
  const Terrain terrain = MakeTerrain(SmallSide);
  const Image image = PaintMap(terrain, {}, {});
  const base::Picture picture = base::DecodePicture(WritePng(image));
  ASSERT_EQ(picture.Width, SmallSide);
  ASSERT_EQ(picture.Height, SmallSide);
  for (int y = 0; y < SmallSide; ++y) {
    for (int x = 0; x < SmallSide; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, picture.Pixels + y * picture.Stride + x * 4, 4);
      const std::uint8_t* bytes = image.Bytes.data() + (y * SmallSide + x) * 3;
      ASSERT_EQ(pixel & 0xffffff, static_cast<std::uint32_t>(bytes[0] << 16 | bytes[1] << 8 | bytes[2]))
          << x << ", " << y;
    }
  }
}

TEST_F(SampleTheater, HasAPictureOf2048Pixels) {
  const base::Picture picture = base::LoadPicture(folder / "SampleStrait.png");
  EXPECT_EQ(picture.Width, 2048);
  EXPECT_EQ(picture.Height, 2048);
}

TEST_F(SampleTheater, SettingsReadBack) {
  const auto theater =
      theaters::ReadTheaterFile(base::ProfileFile::Load(folder / "SampleStrait.ini"), "SampleStrait.ini");
  EXPECT_EQ(theater.Name, "SampleStrait");
  EXPECT_EQ(theater.DisplayName, "Sample Strait");
  EXPECT_EQ(theater.Pic, "SampleStrait.png");
  EXPECT_EQ(theater.Size, 1024);
  EXPECT_EQ(theater.PicSize, 2048);
  EXPECT_EQ(theater.CurrentBull, 1);
  EXPECT_EQ(theater.CoordLat, 41.25);
  EXPECT_EQ(theater.CoordLong, -24.5);
  ASSERT_EQ(theater.Bulls.UpperBound(), 3u);
  for (std::size_t k = 1; k <= 3; ++k) {
    EXPECT_EQ(theater.Bulls[k].Name, Bullseyes[k - 1].Name);
    EXPECT_EQ(theater.Bulls[k].X, Bullseyes[k - 1].X);
    EXPECT_EQ(theater.Bulls[k].Y, Bullseyes[k - 1].Y);
  }
}

TEST_F(SampleTheater, SeaIsBlueWhereTheHeightIsNought) {
  const std::string heights = base::ReadWholeFile(folder / "SampleStrait_Elevation.dat", 4 << 20);
  ASSERT_EQ(heights.size(), 2u * 1024 * 1024);
  const base::Picture picture = base::LoadPicture(folder / "SampleStrait.png");
  int sea = 0;
  int highest = 0;
  int blueSea = 0;
  int high = 0;
  int blueHigh = 0;
  for (int north = 0; north < 1024; ++north) {
    for (int east = 0; east < 1024; ++east) {
      const std::size_t at = 2 * (1024 * static_cast<std::size_t>(north) + static_cast<std::size_t>(east));
      const int feet = static_cast<unsigned char>(heights[at]) | static_cast<unsigned char>(heights[at + 1]) << 8;
      highest = std::max(highest, feet);
      int blue = 0;
      for (int k = 0; k < 4; ++k) {
        std::uint32_t pixel = 0;
        const int row = 2 * (1023 - north) + k / 2;
        std::memcpy(&pixel, picture.Pixels + row * picture.Stride + (2 * east + k % 2) * 4, 4);
        blue += (pixel & 0xff) > ((pixel >> 16) & 0xff);
      }
      if (feet == 0) {
        ++sea;
        blueSea += blue >= 3;
      } else if (feet > 1500) {
        ++high;
        // Rivers aside there is no blue so high up.
        blueHigh += blue == 4;
      }
    }
  }
  EXPECT_EQ(blueSea, sea);
  EXPECT_GT(sea, 1024 * 1024 / 8);
  EXPECT_LT(sea, 1024 * 1024 / 2);
  EXPECT_GT(high, 1024 * 1024 / 20);
  EXPECT_LT(blueHigh, high / 50);
  EXPECT_LE(highest, 8000);
  EXPECT_GT(highest, 7000);
}

TEST_F(SampleTheater, BullseyesAreOnTheMap) {
  for (const SampleBullseye& bullseye : Bullseyes) {
    EXPECT_TRUE(bullseye.X > 0 && bullseye.X < TheaterSize && bullseye.Y > 0 && bullseye.Y < TheaterSize)
        << bullseye.Name;
  }
}

TEST_F(SampleTheater, AirfieldsOfThreeTeamsStandOnLandWithTheirAids) {
  std::vector<std::string> notes;
  const auto tables = radio::ReadFrequencies(base::ProfileFile::Load(folder / "SampleStrait_Frequencies.dat"), notes);
  EXPECT_TRUE(notes.empty());
  EXPECT_EQ(tables.Teams[0], "Neutral");
  EXPECT_EQ(tables.Teams[1], "Blue");
  EXPECT_EQ(tables.Teams[2], "Red");
  EXPECT_EQ(tables.Teams[3], "Team #3");
  const std::string heights = base::ReadWholeFile(folder / "SampleStrait_Elevation.dat", 4 << 20);
  std::map<int, int> teams;
  ASSERT_EQ(tables.Airfields.UpperBound(), 8u);
  for (const radio::Airfield& airfield : tables.Airfields.Live()) {
    SCOPED_TRACE(airfield.Name);
    ++teams[airfield.TEAM_INDEX];
    EXPECT_TRUE(radio::IsUHF(airfield.UHF));
    EXPECT_TRUE(radio::IsVHF(airfield.VHF));
    EXPECT_TRUE(airfield.VIS && airfield.TACAN_VIS);
    EXPECT_EQ(airfield.TACAN.size(), 3u);
    EXPECT_GE(airfield.TACANR, 40);
    const auto east = static_cast<std::size_t>(airfield.TACANX), north = static_cast<std::size_t>(airfield.TACANY);
    EXPECT_NE(heights.substr(2 * (1024 * north + east), 2), std::string(2, '\0')) << "in the sea";
    for (std::size_t k = 0; k < 4; ++k) {
      EXPECT_TRUE(airfield.ILS[k] == "-" || radio::IsILS(airfield.ILS[k])) << airfield.ILS[k];
      if (airfield.ILS_DES[k] == "-") continue;
      EXPECT_LT(std::hypot(airfield.ILS_R[k].RX - airfield.TACANX, airfield.ILS_R[k].RY - airfield.TACANY), 2) << k;
    }
  }
  EXPECT_EQ(teams, (std::map<int, int>{{0, 2}, {1, 3}, {2, 3}}));
}

TEST_F(SampleTheater, ChannelsAreOfTheirKindAndTheLastOnesUnset) {
  std::vector<std::string> notes;
  const auto tables = radio::ReadFrequencies(base::ProfileFile::Load(folder / "SampleStrait_Frequencies.dat"), notes);
  for (std::size_t channel = 1; channel <= 10; ++channel) EXPECT_TRUE(radio::IsUHF(tables.CustomUHF[channel]));
  for (std::size_t channel = 1; channel <= 6; ++channel) EXPECT_TRUE(radio::IsVHF(tables.CustomVHF[channel]));
  EXPECT_TRUE(radio::IsUHF(tables.CustomF1) && radio::IsUHF(tables.CustomF2));
  EXPECT_EQ(tables.CustomUHF[11], "000000");
  EXPECT_EQ(tables.CustomVHF[7], "000000");
}

TEST_F(SampleTheater, RunwaysLieAsTheirNamesTell) {
  std::vector<std::string> notes;
  const auto tables = radio::ReadFrequencies(base::ProfileFile::Load(folder / "SampleStrait_Frequencies.dat"), notes);
  const radio::Airfield& north = tables.Airfields[1];
  // Two runways due north, 0.8 apart and 2.8 long around 332.5, 512.5: the left one is the western.
  EXPECT_EQ(north.ILS_DES, (std::array<std::string, 4>{"36L", "18R", "36R", "18L"}));
  EXPECT_EQ(north.ILS_R[0].RX, 332.1);
  EXPECT_EQ(north.ILS_R[0].RY, 511.1);
  EXPECT_EQ(north.ILS_R[1].RX, 332.1);
  EXPECT_EQ(north.ILS_R[1].RY, 513.9);
  EXPECT_EQ(north.ILS_R[2].RX, 332.9);
  EXPECT_EQ(north.ILS_R[2].RY, 511.1);
  EXPECT_EQ(north.ILS_R[3].RX, 332.9);
  EXPECT_EQ(north.ILS_DRAW_HEADING, (std::array<double, 4>{-90, 90, -90, 90})) << "out of the runway";
  // To the south east, (0.8, -0.6): its left is to the north east, (0.6, 0.8).
  const radio::Airfield& slant = tables.Airfields[4];
  EXPECT_EQ(slant.ILS_DES, (std::array<std::string, 4>{"13L", "31R", "13R", "31L"}));
  EXPECT_NEAR(slant.ILS_R[0].RX, 528.5 - 1.12 + 0.24, 1e-5);
  EXPECT_NEAR(slant.ILS_R[0].RY, 600.5 + 0.84 + 0.32, 1e-5);
  // What comes in over the north western end is drawn from it to the north west.
  EXPECT_EQ(slant.ILS_DRAW_HEADING[0], 143.1301);
  EXPECT_EQ(slant.ILS_DRAW_HEADING[1], -36.8699);
}

TEST(SampleFrequencies, AreNotWrittenOverThoseOfThePerson) {
  const auto own = std::filesystem::path(testing::TempDir()) / ("sample_own_" + std::to_string(::getpid()));
  std::filesystem::create_directories(own);
  std::ofstream(own / "SampleStrait_Frequencies.dat") << "mine";
  WriteMissingFrequencies(own);
  EXPECT_EQ(base::ReadWholeFile(own / "SampleStrait_Frequencies.dat", 100), "mine");
  std::filesystem::remove_all(own);
}

TEST_F(SampleTheater, MapIsLightEnoughForDarkLabels) {
  const base::Picture picture = base::LoadPicture(folder / "SampleStrait.png");
  std::map<bool, int> light;
  for (int y = 0; y < 2048; y += 3) {
    for (int x = 0; x < 2048; x += 3) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, picture.Pixels + y * picture.Stride + x * 4, 4);
      ++light[((pixel >> 8) & 0xff) > 150];
    }
  }
  EXPECT_GT(light[true], light[false] * 50);
}

}  // namespace
}  // namespace kestrel::land
