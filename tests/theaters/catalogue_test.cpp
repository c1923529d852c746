#include "theaters/catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#ifdef __linux__
#include <sys/inotify.h>
#include <unistd.h>
#endif

#include "base/failure.h"
#include "base/files.h"
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

TEST(Catalogue, PlaceOfTheCurrentBullseyeIsThatOfTheListToTheBit) {
  Theater theater = Korea();
  Bullseye& bull = theater.Bulls[static_cast<std::size_t>(theater.CurrentBull)];
  bull.X = 654.321;
  bull.Y = 123.456;
  ASSERT_NE(theater.Size - (theater.Size - bull.Y), bull.Y) << "turned over twice it would be another number";
  EXPECT_EQ(CurrentBullseyePlace(theater).X, 654.321);
  EXPECT_EQ(CurrentBullseyePlace(theater).Y, 123.456);
  theater.CurrentBull = 0;
  EXPECT_EQ(CurrentBullseyePlace(theater).X, 512);
  EXPECT_EQ(CurrentBullseyePlace(theater).Y, 512);
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
  for (const char* name :
       {"a/b", "a\\b", "a//b", "a../b", "..a/b..", ".../b", "./b", "..", "Storm..", "", "caf\xe9 1.5"}) {
    Theater theater;
    theater.Name = name;
    EXPECT_EQ(DataFile(theater, DataFileEnds[0]), std::string(name) + "_Areas.dat");
  }
}

TEST(Catalogue, WhatNoFileNameMayHoldIsReplacedInDataFiles) {
  const std::vector<std::pair<std::string, std::string>> cases = {{"Op: Korea", "Op_ Korea_X"},
                                                                  {"???", "____X"},
                                                                  {"\"|><?*:", "________X"},
                                                                  {"/x", "_x_X"},
                                                                  {"\\x", "_x_X"},
                                                                  {"//x", "_/x_X"},
                                                                  {"../x", "_/x_X"},
                                                                  {"..\\..\\x", "_\\_\\x_X"},
                                                                  {"a/../b", "a/_/b_X"},
                                                                  {"C:\\x", "C_\\x_X"},
                                                                  {"a\tb\x01", "a_b__X"},
                                                                  {std::string("a\0b", 3), "a_b_X"}};
  for (const auto& [name, file] : cases) {
    Theater theater;
    theater.Name = name;
    EXPECT_EQ(DataFile(theater, "_X"), file) << name;
  }
  EXPECT_EQ(DataFile(Theater(), ""), "");
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

TEST(Catalogue, RemovingATheaterDeletesItsFilesWhateverPointsItsNameHas) {
#ifdef _WIN32
  // Folders whose names end with points do not exist there.
  const std::vector<const char*> names = {"Storm..", "..", "../x"};
#else
  const std::vector<const char*> names = {"Storm..", "a../b", "..", "../x"};
#endif
  for (const char* name : names) {
    const TempFolder folder;
    Theater theater = NewTheater({name, 512, 0, 0}, 0, 0, folder.Path());
    std::filesystem::create_directories(base::FindFile(folder.Path(), DataFile(theater, "")));
    const std::vector<std::string> its = {theater.TheaterFile, theater.Pic, DataFile(theater, "_ViewShort.dat")};
    for (const std::string& file : its) WriteBytes(base::FindFile(folder.Path(), file), "x");
    Catalogue catalogue = ThreeTheaters(1);
    AppendTheater(catalogue, theater);
    EXPECT_THAT(RemoveTheater(catalogue, 4, folder.Path()), testing::IsEmpty());
    for (const std::string& file : its) EXPECT_FALSE(base::FileExists(base::FindFile(folder.Path(), file))) << file;
  }
}

TEST(Catalogue, FileThatATheaterWhichStaysUsesIsKept) {
  struct Case {
    std::string Removed, Kept;
    bool Shared;
  };
  for (const Case& each : {Case{"B", "B", true}, Case{"B", "b", true}, Case{"x/B", "X\\\\b", true},
                           Case{"Op: Korea", "Op_ korea", true}, Case{"B", "BB", false}}) {
    SCOPED_TRACE(each.Removed + " and " + each.Kept);
    const TempFolder folder;
    std::filesystem::create_directory(folder / "x");
    Catalogue catalogue = ThreeTheaters(1);
    catalogue.Theaters[2].Name = each.Removed;
    catalogue.Theaters[3].Name = each.Kept;
    std::vector<std::string> its;
    for (const std::string_view end : DataFileEnds) its.push_back(DataFile(catalogue.Theaters[2], end));
    for (const std::string& name : its) WriteBytes(folder / name, "x");
    WriteBytes(folder / "B.ini", "x");
    RemoveTheater(catalogue, 2, folder.Path());
    for (const std::string& name : its) EXPECT_EQ(std::filesystem::exists(folder / name), each.Shared) << name;
    EXPECT_FALSE(std::filesystem::exists(folder / "B.ini")) << "its own";
  }
}

TEST(Catalogue, SettingsFileAndPictureThatATheaterWhichStaysUsesAreKept) {
  const TempFolder folder;
  WriteBytes(folder / "B.ini", "x");
  WriteBytes(folder / "B.gif", "x");
  WriteBytes(folder / "B_Areas.dat", "x");
  Catalogue catalogue = ThreeTheaters(1);
  catalogue.Theaters[3].TheaterFile = "b.INI";
  catalogue.Theaters[3].Pic = "./x/../B.gif";
  RemoveTheater(catalogue, 2, folder.Path());
  EXPECT_TRUE(std::filesystem::exists(folder / "B.ini"));
  EXPECT_TRUE(std::filesystem::exists(folder / "B.gif"));
  EXPECT_FALSE(std::filesystem::exists(folder / "B_Areas.dat"));
  RemoveTheater(catalogue, 2, folder.Path());
  EXPECT_FALSE(std::filesystem::exists(folder / "B.ini")) << "nobody uses it any more";
  EXPECT_FALSE(std::filesystem::exists(folder / "B.gif")) << "its name stays in the folder";
}

#ifdef __linux__
TEST(Catalogue, FilesOfARemovedTheaterGoInTheirOrder) {
  const TempFolder folder;
  const std::vector<std::string> its = {"B.ini",           "B.gif",           "B_Areas.dat",
                                        "B_Elevation.dat", "B_ViewShort.dat", "B_Frequencies.dat"};
  for (const std::string& name : its) WriteBytes(folder / name, "x");
  const int watch = inotify_init1(IN_NONBLOCK);
  ASSERT_GE(inotify_add_watch(watch, folder.Path().c_str(), IN_DELETE), 0);
  Catalogue catalogue = ThreeTheaters(1);
  RemoveTheater(catalogue, 2, folder.Path());
  // The system has noted each deletion before it returned.
  alignas(inotify_event) char noted[4096];
  const ssize_t count = read(watch, noted, sizeof noted);
  close(watch);
  std::vector<std::string> deleted;
  for (ssize_t at = 0; at < count;) {
    const auto* event = reinterpret_cast<const inotify_event*>(noted + at);
    deleted.emplace_back(event->name);
    at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
  }
  EXPECT_EQ(deleted, its);
}

TEST(Catalogue, FileThatCannotBeDeletedIsTold) {
  const TempFolder folder;
  // A file that nobody, the administrator included, can delete.
  std::filesystem::create_directory_symlink("/proc/self", folder / "x");
  Catalogue catalogue = ThreeTheaters(1);
  catalogue.Theaters[2].Pic = "x/status";
  WriteBytes(folder / "B.ini", "x");
  EXPECT_THAT(RemoveTheater(catalogue, 2, folder.Path()), testing::ElementsAre("x/status"));
  EXPECT_FALSE(std::filesystem::exists(folder / "B.ini"));
}
#endif

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

TheaterDetails Details(std::string name) { return {std::move(name), 512, 34.5, 125.25}; }

TEST(Catalogue, NameOfADeviceIsNoFileName) {
  for (const char* name : {"con", "NUL", "Com1", "lpt9", "aux.old", "prn "}) {
    EXPECT_EQ(CleanFileName(name), std::string(name) + "_") << name;
  }
  for (const char* name : {"cons", "com0", "com10", "xnul", "lpt"}) EXPECT_EQ(CleanFileName(name), name);
}

TEST(Catalogue, WhatDoesNotPrintIsNoFileName) { EXPECT_EQ(CleanFileName("a\nb\tc\x01"), "abc"); }

TEST(Catalogue, NewTheaterHasWhatWasEnteredAndOneBullseye) {
  const TempFolder folder;
  const Theater theater = NewTheater(Details("a/b"), 12.5, 700, folder.Path());
  EXPECT_EQ(theater.Name, "a/b");
  EXPECT_EQ(theater.DisplayName, "a/b");
  EXPECT_EQ(theater.TheaterFile, "ab.ini");
  EXPECT_EQ(theater.Pic, "ab.gif");
  EXPECT_EQ(DataFile(theater, "_Areas.dat"), "a/b_Areas.dat");
  EXPECT_EQ(theater.Size, 512);
  EXPECT_EQ(theater.CoordLat, 34.5);
  EXPECT_EQ(theater.CoordLong, 125.25);
  ASSERT_EQ(theater.Bulls.UpperBound(), 1u);
  EXPECT_EQ(theater.CurrentBull, 1);
  EXPECT_EQ(theater.Bulls[1].Name, "Default");
  EXPECT_EQ(theater.Bulls[1].X, 12.5);
  EXPECT_EQ(theater.Bulls[1].Y, 700);
}

TEST(Catalogue, FilesOfANewTheaterAreCountedEachOnItsOwn) {
  const TempFolder folder;
  WriteBytes(folder / "Korea.ini", "");
  WriteBytes(folder / "Korea.gif", "");
  const Theater second = NewTheater(Details("Korea"), 0, 0, folder.Path());
  EXPECT_EQ(second.TheaterFile, "Korea(1).ini");
  EXPECT_EQ(second.Pic, "Korea(1).gif");
  WriteBytes(folder / "Korea(1).gif", "");
  const Theater third = NewTheater(Details("Korea"), 0, 0, folder.Path());
  EXPECT_EQ(third.TheaterFile, "Korea(1).ini");
  EXPECT_EQ(third.Pic, "Korea(2).gif");
  EXPECT_EQ(third.Name, "Korea");
}

TEST(Catalogue, NameOfDroppedCharactersGivesNew) {
  const TempFolder folder;
  const Theater theater = NewTheater(Details("???"), 0, 0, folder.Path());
  EXPECT_EQ(theater.Name, "???");
  EXPECT_EQ(theater.TheaterFile, "New.ini");
  EXPECT_EQ(theater.Pic, "New.gif");
}

TEST(Catalogue, EditingKeepsNameFilesAndBullseyes) {
  Theater theater = ThreeTheaters(1).Current();
  theater.Bulls.Append({"Kept", 1, 2});
  ApplyDetails(theater, Details("Shown otherwise"));
  EXPECT_EQ(theater.DisplayName, "Shown otherwise");
  EXPECT_EQ(theater.Size, 512);
  EXPECT_EQ(theater.CoordLat, 34.5);
  EXPECT_EQ(theater.CoordLong, 125.25);
  EXPECT_EQ(theater.Name, "A");
  EXPECT_EQ(theater.TheaterFile, "A.ini");
  EXPECT_EQ(theater.Pic, "A.gif");
  EXPECT_EQ(theater.Bulls.UpperBound(), 1u);
}

TEST(Catalogue, AppendedTheaterIsNotTheCurrentOne) {
  Catalogue catalogue = ThreeTheaters(2);
  AppendTheater(catalogue, Korea());
  EXPECT_EQ(catalogue.Theaters[4].Name, "Korea");
  EXPECT_EQ(catalogue.CurrentTheater, 2);
}

TEST(Catalogue, TheaterThatCannotBePointedAtIsRefused) {
  Catalogue catalogue;
  while (catalogue.Theaters.UpperBound() < 32767) catalogue.Theaters.Append({});
  EXPECT_THROW(AppendTheater(catalogue, Korea()), base::RuntimeFailure);
  EXPECT_EQ(catalogue.Theaters.UpperBound(), 32767u);
}

TEST(Catalogue, DetailsThatCannotBeTakenAreTold) {
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Objection(Details("Korea")), std::nullopt);
  EXPECT_EQ(Objection(Details(std::string(100, 'x'))), std::nullopt);
  for (const char* name : {"", "  "}) EXPECT_EQ(Objection(Details(name)), "Theater needs a name...");
  EXPECT_EQ(Objection(Details(std::string(300, 'x'))), "The name of a theater can have at most 100 characters.");
  for (const double size : {0.0, 0.5, -1.0, 8193.0, infinite, std::nan("")}) {
    TheaterDetails details = Details("Korea");
    details.Size = size;
    EXPECT_EQ(Objection(details), "The size of a theater must lie between 1 and 8192.") << size;
  }
  for (const double size : {1.0, 8192.0}) {
    TheaterDetails details = Details("Korea");
    details.Size = size;
    EXPECT_EQ(Objection(details), std::nullopt) << size;
  }
  for (const auto& [lat, longitude] : {std::pair(90.1, 0.0), std::pair(-91.0, 0.0), std::pair(0.0, 360.5),
                                       std::pair(std::nan(""), 0.0), std::pair(0.0, infinite)}) {
    TheaterDetails details = Details("Korea");
    details.CoordLat = lat;
    details.CoordLong = longitude;
    EXPECT_THAT(Objection(details).value_or(""), testing::StartsWith("The corner of a theater must lie between"));
  }
}

TEST(Catalogue, WhatStandsAsItWasShownIsNotJudged) {
  const TheaterDetails shown = {"Korea", 9000, 95, -400};
  TheaterDetails details = shown;
  details.DisplayName = std::string(300, 'x');
  EXPECT_EQ(Objection(details, shown), std::nullopt);
  details.Size = 9000.5;
  EXPECT_EQ(Objection(details, shown), "The size of a theater must lie between 1 and 8192.");
  details = shown;
  details.CoordLat = 96;
  EXPECT_THAT(Objection(details, shown).value_or(""), testing::StartsWith("The corner of a theater"));
  details = shown;
  details.CoordLong = 400;
  EXPECT_THAT(Objection(details, shown).value_or(""), testing::StartsWith("The corner of a theater"));
  details = shown;
  details.DisplayName.clear();
  EXPECT_EQ(Objection(details, shown), "Theater needs a name...");
  const Bullseye far = {"Far", 2e6, -2e6};
  EXPECT_EQ(Objection(far, far), std::nullopt);
  EXPECT_NE(Objection(Bullseye{"Far", 2e6, -3e6}, far), std::nullopt);
  EXPECT_NE(Objection(Bullseye{"Far", 3e6, -2e6}, far), std::nullopt);
  EXPECT_EQ(Objection(Bullseye{"Near", 1, -2e6}, far), std::nullopt);
}

TEST(Catalogue, NameThatStaysInTheFolderOfTheTheaters) {
  for (const char* stays :
       {"", "a.gif", "x/a.gif", "x\\a.gif", "./a.gif", "x/../a.gif", "a..gif", "x/y/../../a", "...a"}) {
    EXPECT_TRUE(StaysInFolder(stays)) << stays;
  }
  for (const std::string& leaves :
       {std::string("/a.gif"), std::string("\\a.gif"), std::string("C:\\a.gif"), std::string("c:a.gif"),
        std::string("x/b:c"), std::string(".."), std::string("../a.gif"), std::string("x/../../a.gif"),
        std::string("..\\Theaters\\a.gif"), std::string("a\0b", 3)}) {
    EXPECT_FALSE(StaysInFolder(leaves)) << leaves;
  }
}

TEST(Catalogue, BullseyeTooFarAwayIsTold) {
  EXPECT_EQ(Objection(Bullseye{"", -100000, 100000}), std::nullopt);
  for (const double far : {100000.5, -1e300, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(Objection(Bullseye{"", far, 0}), "X and Y of a bullseye must lie between -100000 and 100000.") << far;
    EXPECT_EQ(Objection(Bullseye{"", 0, far}), "X and Y of a bullseye must lie between -100000 and 100000.") << far;
  }
}

}  // namespace
}  // namespace kestrel::theaters
