#include "theaters/catalogue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"

namespace kestrel::theaters {
namespace {

using test::TempFolder;
using test::WriteBytes;

Theater Korea() {
  Theater theater;
  theater.Name = "Korea";
  theater.Size = 1024;
  theater.PicSize = 2048;
  theater.Bulls.Append({"North", 100, 200});
  theater.Bulls.Append({"South", 300, 50});
  theater.CurrentBull = 2;
  return theater;
}

Catalogue ThreeTheaters(std::int16_t current) {
  Catalogue catalogue;
  for (const char* name : {"A", "B", "C"}) {
    Theater theater;
    theater.Name = name;
    theater.TheaterFile = std::string(name) + ".ini";
    theater.Pic = std::string(name) + ".gif";
    catalogue.Theaters.Append(theater);
  }
  catalogue.CurrentTheater = current;
  return catalogue;
}

TEST(Catalogue, CurrentBullseyeIsTurnedOver) {
  const DownPoint place = CurrentBullseye(Korea());
  EXPECT_EQ(place.X, 300);
  EXPECT_EQ(place.Y, 974);
}

TEST(Catalogue, NoBullseyeIsTheMiddleOfTheMap) {
  for (const std::int16_t current : std::vector<std::int16_t>{0, -1, 3, 32767, -32768}) {
    Theater theater = Korea();
    theater.CurrentBull = current;
    EXPECT_EQ(CurrentBullseye(theater).X, 512) << current;
    EXPECT_EQ(CurrentBullseye(theater).Y, 512) << current;
  }
  Theater none = Korea();
  none.Bulls.Clear();
  none.CurrentBull = 1;
  EXPECT_EQ(CurrentBullseye(none).X, 512);
}

TEST(Catalogue, SoundTheaterNeedsNoMending) {
  Theater theater = Korea();
  EXPECT_FALSE(MendTheater(theater));
  theater.Bulls.Clear();
  theater.CurrentBull = 0;
  EXPECT_FALSE(MendTheater(theater));
}

TEST(Catalogue, ExtentsThatCannotBeUsedBecomeTheDefault) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double bad : {0.0, -1.0, infinite, -infinite, std::nan("")}) {
    Theater theater = Korea();
    theater.Size = bad;
    EXPECT_TRUE(MendTheater(theater)) << bad;
    EXPECT_EQ(theater.Size, 1024) << bad;
    EXPECT_EQ(theater.PicSize, 2048) << bad;
    theater.PicSize = bad;
    EXPECT_TRUE(MendTheater(theater)) << bad;
    EXPECT_EQ(theater.PicSize, 1024) << bad;
  }
}

TEST(Catalogue, CurrentBullThatPointsNowhereIsMended) {
  for (const std::int16_t current : std::vector<std::int16_t>{0, -5, 3, 32767}) {
    Theater theater = Korea();
    theater.CurrentBull = current;
    EXPECT_TRUE(MendTheater(theater)) << current;
    EXPECT_EQ(theater.CurrentBull, 1) << current;
    theater.Bulls.Clear();
    EXPECT_TRUE(MendTheater(theater)) << current;
    EXPECT_EQ(theater.CurrentBull, 0) << current;
  }
}

TEST(Catalogue, DataFilesKeepTheNameAsTyped) {
  Theater theater;
  theater.Name = "a/b";
  EXPECT_EQ(DataFile(theater, DataFileEnds[0]), "a/b_Areas.dat");
}

TEST(Catalogue, FileNamesAreCleaned) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"a/b", "ab"}, {"Korea", "Korea"}, {"\"|><?*:\\/", "New"}, {"", "New"}, {"a b.c", "a b.c"}, {"<x>|y", "xy"}};
  for (const auto& [name, stem] : cases) EXPECT_EQ(CleanFileName(name), stem) << name;
}

TEST(Catalogue, TakenFileNamesAreCountedEachOnItsOwn) {
  const TempFolder folder;
  EXPECT_EQ(NewFileName(folder.Path(), "a/b", ".ini"), "ab");
  WriteBytes(folder / "ab.ini", "");
  EXPECT_EQ(NewFileName(folder.Path(), "a/b", ".ini"), "ab(1)");
  EXPECT_EQ(NewFileName(folder.Path(), "a/b", ".gif"), "ab");
  WriteBytes(folder / "ab(1).ini", "");
  WriteBytes(folder / "ab(3).ini", "");
  EXPECT_EQ(NewFileName(folder.Path(), "a/b", ".ini"), "ab(2)");
}

TEST(Catalogue, NewBullseyeBecomesCurrent) {
  Theater theater = Korea();
  AddBullseye(theater, {"Third", 1, 2});
  EXPECT_EQ(theater.CurrentBull, 3);
  EXPECT_EQ(theater.Bulls[3].Name, "Third");
}

TEST(Catalogue, BullseyeThatCannotBePointedAtIsRefused) {
  Theater theater = Korea();
  while (theater.Bulls.UpperBound() < 32767) theater.Bulls.Append({});
  EXPECT_THROW(AddBullseye(theater, {"Too many", 1, 2}), base::RuntimeFailure);
  EXPECT_EQ(theater.Bulls.UpperBound(), 32767u);
  EXPECT_EQ(theater.CurrentBull, 2);
}

TEST(Catalogue, RemovingABullseyeKeepsTheCurrentOne) {
  Theater theater = Korea();
  RemoveBullseye(theater, 1);
  EXPECT_EQ(theater.CurrentBull, 1);
  EXPECT_EQ(theater.Bulls[1].Name, "South");
  theater = Korea();
  theater.CurrentBull = 1;
  RemoveBullseye(theater, 2);
  EXPECT_EQ(theater.CurrentBull, 1);
  EXPECT_EQ(theater.Bulls[1].Name, "North");
}

TEST(Catalogue, RemovingATheaterBelowKeepsTheCurrentOne) {
  const TempFolder folder;
  Catalogue catalogue = ThreeTheaters(3);
  RemoveTheater(catalogue, 1, folder.Path());
  EXPECT_EQ(catalogue.CurrentTheater, 2);
  EXPECT_EQ(catalogue.Current().Name, "C");
  RemoveTheater(catalogue, 1, folder.Path());
  EXPECT_EQ(catalogue.Current().Name, "C");
}

TEST(Catalogue, RemovingATheaterAboveKeepsTheCurrentOne) {
  const TempFolder folder;
  Catalogue catalogue = ThreeTheaters(1);
  RemoveTheater(catalogue, 2, folder.Path());
  EXPECT_EQ(catalogue.CurrentTheater, 1);
  EXPECT_EQ(catalogue.Current().Name, "A");
  EXPECT_EQ(catalogue.Theaters[2].Name, "C");
}

TEST(Catalogue, RemovingATheaterDeletesItsFilesOnly) {
  const TempFolder folder;
  const std::vector<std::string> its = {"B.ini",           "B.gif",           "B_Areas.dat",
                                        "B_Elevation.dat", "B_ViewShort.dat", "B_Frequencies.dat"};
  const std::vector<std::string> others = {"A.ini", "B_Other.dat", "C_Areas.dat"};
  for (const std::string& name : its) WriteBytes(folder / name, "x");
  for (const std::string& name : others) WriteBytes(folder / name, "x");
  Catalogue catalogue = ThreeTheaters(1);
  RemoveTheater(catalogue, 2, folder.Path());
  for (const std::string& name : its) EXPECT_FALSE(std::filesystem::exists(folder / name)) << name;
  for (const std::string& name : others) EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
}

TEST(Catalogue, RemovingATheaterLeavesFilesOutsideItsFolder) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "Theaters");
  WriteBytes(folder / "mine.txt", "x");
  const std::vector<std::string> names = {"../mine.txt", "..\\mine.txt", (folder / "mine.txt").string(), ""};
  for (const std::string& name : names) {
    Catalogue catalogue = ThreeTheaters(1);
    catalogue.Theaters[2].TheaterFile = name;
    catalogue.Theaters[2].Pic = name;
    RemoveTheater(catalogue, 2, folder / "Theaters");
    EXPECT_TRUE(std::filesystem::exists(folder / "mine.txt")) << name;
    EXPECT_TRUE(std::filesystem::exists(folder / "Theaters")) << name;
  }
}

}  // namespace
}  // namespace kestrel::theaters
