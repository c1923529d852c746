#include "core/theater_import.h"

#include <cmath>

#include "theater_import_fixture.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(TheaterImportTest, TheTheaterIsAppendedAndTheOneInUseStays) {
  ASSERT_TRUE(Import());
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
  const theaters::Theater& isle = station.Catalogue.Theaters[3];
  EXPECT_EQ(isle.TheaterFile, "Isle.ini");
  EXPECT_EQ(isle.Name, "Isle");
  EXPECT_EQ(isle.DisplayName, "Isle");
  EXPECT_EQ(isle.Pic, "Isle.gif");
  EXPECT_EQ(isle.Size, 32);
  EXPECT_EQ(isle.PicSize, 32);
  EXPECT_EQ(isle.CoordLong, 34.5);
  EXPECT_EQ(isle.CoordLat, -29.25);
  ASSERT_EQ(isle.Bulls.UpperBound(), 1u);
  EXPECT_EQ(isle.Bulls[1].Name, "Default");
  EXPECT_EQ(isle.Bulls[1].X, 200);
  EXPECT_EQ(isle.Bulls[1].Y, 900);
  EXPECT_EQ(isle.CurrentBull, 1);
  EXPECT_THAT(around.Shown.Refreshes, ElementsAre(Changed::NameMenus));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterImportTest, ANewStartHasTheTheater) {
  ASSERT_TRUE(Import());
  Station again;
  again.AppPath = folder.Path;
  EXPECT_THAT(LoadSavedVars(again), IsEmpty());
  ASSERT_EQ(again.Catalogue.Theaters.UpperBound(), 3u);
  EXPECT_EQ(again.Catalogue.CurrentTheater, 1);
  EXPECT_EQ(again.Catalogue.Theaters[3].Name, "Isle");
  EXPECT_EQ(again.Catalogue.Theaters[3].CoordLat, -29.25);
  EXPECT_EQ(again.Catalogue.Theaters[3].Bulls[1].Y, 900);
  EXPECT_THAT(again.Notes, IsEmpty());
}

TEST_F(TheaterImportTest, PictureAndReadOutAgreeWithNorthAtTheTop) {
  ASSERT_TRUE(Import());
  SwitchTheater(around.All, 3);
  ASSERT_EQ(station.Catalogue.CurrentTheater, 3) << "its picture can be read";
  ReadElevations(around.All);
  const base::Picture& picture = station.MapPicture;
  ASSERT_EQ(picture.Width, 32);
  // 0 is sea, which the scheme paints red (0x0000FF is red), lowland green, hills blue, mountains white.
  EXPECT_EQ(PictureAt(picture, 3, 28), 0xFF0000u) << "sea in the north-west";
  EXPECT_EQ(station.Elevations.At(3, 28), 0);
  EXPECT_EQ(station.Elevations.At(8, 28), 2808);
  EXPECT_EQ(PictureAt(picture, 28, 28), 0xFFFFFFu) << "mountains in the north-east";
  EXPECT_EQ(station.Elevations.At(28.9, 28.1), 2828);
  EXPECT_EQ(PictureAt(picture, 3, 3), 0x00FF00u) << "lowland in the south-west";
  EXPECT_EQ(station.Elevations.At(3, 3), 303);
  EXPECT_EQ(PictureAt(picture, 20, 15), 0x0000FFu) << "hills in the middle";
  EXPECT_EQ(station.Elevations.At(20, 15), 1520);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      ASSERT_EQ(station.Elevations.At(x, y), test::IslandInstall::HeightAt(x, y));
      const int height = test::IslandInstall::HeightAt(x, y);
      const std::uint32_t land = height <= 999 ? 0x00FF00 : height <= 1999 ? 0x0000FF : 0xFFFFFF;
      ASSERT_EQ(PictureAt(picture, x, y), test::IslandInstall::IsSea(x, y) ? 0xFF0000 : land) << x << " " << y;
    }
  }
}

TEST_F(TheaterImportTest, TheFileOfHeightsBeginsInTheSouthWest) {
  ASSERT_TRUE(Import());
  const std::string bytes = folder.Read("Theaters/Isle_Elevation.dat");
  ASSERT_EQ(bytes.size(), 2u * 32 * 32);
  EXPECT_EQ(bytes.substr(0, 4), std::string("\0\0\1\0", 4));
  // The second row begins with 100.
  EXPECT_EQ(bytes.substr(64, 2), std::string("\x64\0", 2));
}

TEST_F(TheaterImportTest, ASecondImportHasANumber) {
  ASSERT_TRUE(Import());
  ASSERT_TRUE(Import());
  ASSERT_TRUE(Import());
  const theaters::Theater& second = station.Catalogue.Theaters[4];
  EXPECT_EQ(second.TheaterFile, "Isle(1).ini");
  EXPECT_EQ(second.Name, "Isle(1)");
  EXPECT_EQ(second.DisplayName, "Isle(1)");
  EXPECT_EQ(second.Pic, "Isle(1).gif");
  EXPECT_TRUE(folder.Has("Theaters/Isle(1)_Elevation.dat"));
  EXPECT_EQ(station.Catalogue.Theaters[5].TheaterFile, "Isle(2).ini");
  EXPECT_EQ(station.Catalogue.Theaters[5].Pic, "Isle(2).gif");
}

TEST_F(TheaterImportTest, PictureAndTheaterAreCountedOnTheirOwn) {
  folder.Write("Theaters/ISLE.GIF", "stray");
  folder.Write("Theaters/Isle(1).gif", "stray");
  ASSERT_TRUE(Import());
  EXPECT_EQ(station.Catalogue.Theaters[3].TheaterFile, "Isle.ini");
  EXPECT_EQ(station.Catalogue.Theaters[3].Pic, "Isle(2).gif");
  EXPECT_EQ(folder.Read("Theaters/ISLE.GIF"), "stray");
  folder.Write("Theaters/isle(1).INI", "stray");
  ASSERT_TRUE(Import());
  EXPECT_EQ(station.Catalogue.Theaters[4].TheaterFile, "Isle(2).ini");
  EXPECT_EQ(station.Catalogue.Theaters[4].Pic, "Isle(3).gif");
}

TEST_F(TheaterImportTest, ATheaterThatKeepsItsDataUnderTheNameKeepsThem) {
  // Its settings file has another name than its data.
  station.Catalogue.Theaters[2].Name = "isle";
  folder.Write("Theaters/isle_Elevation.dat", "heights of the Balkans");
  ASSERT_TRUE(Import());
  EXPECT_EQ(station.Catalogue.Theaters[3].Name, "Isle(1)");
  EXPECT_EQ(folder.Read("Theaters/isle_Elevation.dat"), "heights of the Balkans");
}

TEST_F(TheaterImportTest, NamesAreCleanedOfWhatAFileCannotHave) {
  const std::string longName(300, 'n');
  for (const auto& [name, stem] :
       std::map<std::string, std::string>{{"A/B\\C: \"North\" [2] (v1)", "ABC North [2] (v1)"},
                                          {"", "New"},
                                          {" / ", "New(1)"},
                                          {"?*", "New(2)"},
                                          {"../../up", "....up"},
                                          {"'quoted'", "quoted"},
                                          {"com1", "com1_"},
                                          {longName, longName.substr(0, 100)}}) {
    SCOPED_TRACE(name);
    Rename(name);
    ASSERT_TRUE(Import());
    const theaters::Theater& theater = station.Catalogue.Theaters[station.Catalogue.Theaters.UpperBound()];
    EXPECT_EQ(theater.Name, stem);
    EXPECT_EQ(theater.TheaterFile, stem + ".ini");
    EXPECT_TRUE(folder.Has("Theaters/" + stem + ".ini"));
    EXPECT_TRUE(folder.Has("Theaters/" + stem + "_Elevation.dat"));
    // It works at a new start too.
    Station again;
    again.AppPath = folder.Path;
    LoadSavedVars(again);
    EXPECT_EQ(again.Catalogue.Theaters[again.Catalogue.Theaters.UpperBound()].Name, stem);
  }
}

TEST_F(TheaterImportTest, WithoutACampaignTheBullseyeIsInTheMiddleAndTheLogSaysSo) {
  island.Remove("Campaign/te_new.tac");
  around.Log.File.Open(folder.Path / "log");
  ASSERT_TRUE(Import());
  around.Log.File.Close();
  EXPECT_EQ(station.Catalogue.Theaters[3].Bulls[1].X, 16);
  EXPECT_EQ(station.Catalogue.Theaters[3].Bulls[1].Y, 16);
  EXPECT_THAT(folder.Read("log"), HasSubstr("its bullseye in the middle, as no campaign tells it"));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty()) << "the window has said it before";
}

TEST_F(TheaterImportTest, TheHighestPlaceIsRead) {
  TheaterImport import(around.All, island.Install, 1);
  std::uint64_t last = 0;
  EXPECT_EQ(import.Highest([&](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(total, ImportParts);
    last = done;
  }),
            test::IslandInstall::Highest);
  EXPECT_EQ(last, ImportParts);
  // The files are read once.
  island.Remove("Terrdata/korea/terrain/theater.l2");
  EXPECT_EQ(import.Highest({}), test::IslandInstall::Highest);
  EXPECT_TRUE(import.Import(ThreeBands(), {}));
}

TEST_F(TheaterImportTest, NewerGenerationsAreImportedToo) {
  // Grids and height maps begin in the north-west.
  const auto fromNorth = [](int side) {
    return test::GridBytes(static_cast<std::size_t>(side), static_cast<std::size_t>(side),
                           [side](std::size_t row, std::size_t column) {
                             return test::IslandInstall::HeightAt(static_cast<int>(column) * 32 / side,
                                                                  31 - static_cast<int>(row) * 32 / side);
                           });
  };
  island.Write("Terrdata/korea/terrain/TERRAIN.BIL", fromNorth(32));
  ASSERT_TRUE(Import());
  const std::string blocks = folder.Read("Theaters/Isle_Elevation.dat");
  island.Write("Terrdata/korea/NewTerrain/HeightMaps/HeightMap.raw", fromNorth(64));
  ASSERT_TRUE(Import());
  EXPECT_EQ(blocks.size(), 2048u);
  EXPECT_EQ(folder.Read("Theaters/Isle(1)_Elevation.dat"), blocks);
  for (std::size_t n = 3; n <= 4; ++n) {
    SwitchTheater(around.All, n);
    ReadElevations(around.All);
    EXPECT_EQ(station.Elevations.At(5, 20), 2005);
    EXPECT_EQ(PictureAt(station.MapPicture, 3, 28), 0xFF0000u);
  }
}

TEST_F(TheaterImportTest, ProgressNeverGoesBackAndReachesTheEnd) {
  std::uint64_t last = 0;
  ASSERT_TRUE(Import([&](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(total, ImportParts);
    EXPECT_GE(done, last);
    last = done;
  }));
  EXPECT_EQ(last, ImportParts);
}

TEST_F(TheaterImportTest, ShadedGroundIsImportedWithItsSea) {
  falcon::ColourScheme scheme = ThreeBands();
  scheme.Shaded = true;
  ASSERT_TRUE(TheaterImport(around.All, island.Install, 1).Import(scheme, {}));
  SwitchTheater(around.All, 3);
  EXPECT_EQ(PictureAt(station.MapPicture, 3, 28), 0xFF0000u);
  // It rises by 100 feet to the north and 1 to the east: it looks to the south and is darker than green, by
  // 198 / 2319 of seven shades, rounded 1, of which each loses 1/14.
  EXPECT_EQ(PictureAt(station.MapPicture, 5, 5), 0x00EDu << 8);
}

}  // namespace
}  // namespace kestrel::core
