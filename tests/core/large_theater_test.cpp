// A theater too large to be held twice, or whole: its picture while another takes its place, and its heights.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/theater_data.h"
#include "core/theater_switch.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::SizeIs;

class LargeTheater : public testing::Test {
 protected:
  LargeTheater() {
    WriteInstallation(folder);
    around.Shown.WhenShown = [this] { RunSteps(MapLoadSteps(), around.All); };
    EXPECT_TRUE(Main(around.All));
  }

  std::string_view PictureBytes() const {
    const base::Picture& picture = station.MapPicture;
    return {reinterpret_cast<const char*>(picture.Pixels),
            static_cast<std::size_t>(picture.Stride) * static_cast<std::size_t>(picture.Height)};
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(LargeTheater, APictureThatStaysInUseHasEachOfItsPixels) {
  constexpr int side = 2100;
  std::string rows(std::size_t{side} * side * 3, '\0');
  unsigned noise = 1;
  for (char& byte : rows) byte = static_cast<char>((noise = noise * 1664525 + 1013904223) >> 24);
  folder.Write("Theaters/korea.bmp", test::Bmp(side, side, 24, "", rows));
  station.MapPicture = base::LoadPicture(folder.Path / "Theaters/korea.bmp");
  ASSERT_EQ(station.MapPicture.Width, side);
  const std::string bytes(PictureBytes());
  const std::string good = folder.Read("Theaters/balkans.bmp");
  for (const std::string& bad : {std::string("no picture"), good.substr(0, good.size() - 1)}) {
    folder.Write("Theaters/balkans.bmp", bad);
    SwitchTheater(around.All, 2);
    ASSERT_EQ(station.Catalogue.CurrentTheater, 1);
    EXPECT_TRUE(PictureBytes() == bytes);
  }
  EXPECT_THAT(around.Desk.Boxes, SizeIs(2));
  folder.Write("Theaters/balkans.bmp", good);
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.MapPicture.Width, 3);
  SwitchTheater(around.All, 1);
  EXPECT_TRUE(PictureBytes() == bytes);
}

#ifdef __linux__
TEST_F(LargeTheater, HeightsThatFailAtAPlaceAreLoggedOnce) {
  // A file that opens; at its beginning nothing can be read, since no process has memory there.
  std::filesystem::create_symlink("/proc/self/mem", folder.Path / "Theaters/korea_Elevation.dat");
  ResetTheaterData(around.All);
  ReadElevations(around.All);
  around.Log.File.Open(folder.Path / "log");
  for (int move = 0; move < 3; ++move) {
    EXPECT_EQ(station.Elevations.At(0, 0), std::nullopt);
    ReadElevations(around.All);
  }
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"),
            "The elevations are left out: korea_Elevation.dat cannot be read: Input/output error\r\n");
}
#endif

}  // namespace
}  // namespace kestrel::core
