#include "core/theater_areas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "areas/golden_areas.h"
#include "core/settings.h"
#include "core/theater_data.h"
#include "core/theater_switch.h"
#include "station_folder.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

using base::Changed;
using test::Golden;
using test::GoldenFile;
using test::SampleAreas;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string areasFile = "Theaters/korea_Areas.dat";
const std::string formerAreas = "Theaters/korea_Areas.dat.old";

class TheaterAreas : public testing::Test {
 protected:
  TheaterAreas() {
    WriteInstallation(folder);
    EXPECT_TRUE(LoadSavedVars(station).empty());
  }
  std::string Bytes() const { return GoldenFile(station.Areas, Golden::V3); }
  std::string Log() {
    around.Log.File.Close();
    return folder.Read("log");
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(TheaterAreas, ATheaterWithoutAFileHasNone) {
  station.Areas = SampleAreas();
  const std::uint64_t former = station.Areas.Revision;
  const Changed shows = LoadTheaterData(around.All);
  EXPECT_TRUE(station.Areas.AreaGroups.Empty());
  EXPECT_TRUE(station.Areas.AreaFolders.Empty());
  EXPECT_GT(station.Areas.Revision, former);
  EXPECT_TRUE(Has(shows, Changed::Areas));
  EXPECT_TRUE(Has(shows, Changed::Map));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterAreas, FollowTheTheater) {
  station.Areas = SampleAreas();
  SwitchTheater(around.All, 2);
  EXPECT_TRUE(station.Areas.AreaGroups.Empty());
  EXPECT_TRUE(folder.Read(areasFile) == GoldenFile(SampleAreas(), Golden::V3));
  SwitchTheater(around.All, 1);
  EXPECT_TRUE(Bytes() == GoldenFile(SampleAreas(), Golden::V3));
  EXPECT_EQ(folder.Read("Theaters/balkans_Areas.dat").size(), 108U);
  EXPECT_TRUE(Has(around.Shown.Refreshes.back(), Changed::Areas));
  EXPECT_FALSE(folder.Has(formerAreas));
  EXPECT_FALSE(folder.Has("Theaters/korea_Areas.rescue"));
}

TEST_F(TheaterAreas, AFormerFormatIsSavedAsThePresentOne) {
  folder.Write(areasFile, GoldenFile(SampleAreas(), Golden::V2));
  LoadTheaterData(around.All);
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 1U);
  const std::string held = Bytes();
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(areasFile) == held);
  EXPECT_FALSE(folder.Has(formerAreas));
}

TEST_F(TheaterAreas, AnotherKindOfFileIsToldAndKeptWhenItIsSavedOver) {
  const std::string foreign = GoldenFile(SampleAreas(), Golden::Export);
  folder.Write(areasFile, foreign);
  station.Areas = SampleAreas();
  LoadTheaterData(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "Wrong Area File version. Disregarding...");
  EXPECT_TRUE(station.Areas.AreaGroups.Empty());
  EXPECT_TRUE(folder.Read(areasFile) == foreign);
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_EQ(folder.Read(areasFile).size(), 108U);
  EXPECT_TRUE(folder.Read(formerAreas) == foreign);
  // Once.
  station.Areas = SampleAreas();
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(formerAreas) == foreign);
}

TEST_F(TheaterAreas, AFileThatEndsEarlyIsLoadedLoggedAndKept) {
  const std::string cut = GoldenFile(SampleAreas(), Golden::V3).substr(0, 2000);
  folder.Write(areasFile, cut);
  around.Log.File.Open(folder.Path / "log");
  LoadTheaterData(around.All);
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 3U);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  // The folders are behind the cut. In front of it stand the indices of groups 1 and 2.
  EXPECT_EQ(Log(),
            "Loaded the areas in 0 ms\r\nkorea_Areas.dat is damaged: of its areas there is what it holds\r\n"
            "korea_Areas.dat: groups that name no folder and are now in the Temporary Folder: 3\r\n");
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(formerAreas) == cut);
  EXPECT_TRUE(folder.Read(areasFile) == Bytes());
}

TEST_F(TheaterAreas, AFileThatCannotBeKeptIsNotSavedOver) {
  folder.Write(areasFile, "no areas");
  std::filesystem::create_directories(folder.Path / formerAreas / "in the way");
  LoadTheaterData(around.All);
  station.LinkOptions.CONNPORT = 6200;
  const std::vector<Unsaved> failures = SaveAll(station);
  ASSERT_THAT(failures, SizeIs(1));
  EXPECT_EQ(failures[0].What, "areas");
  EXPECT_EQ(failures[0].Reason, "korea_Areas.dat.old cannot be written");
  EXPECT_EQ(folder.Read(areasFile), "no areas");
}

TEST_F(TheaterAreas, ThatCannotBeSavedAreToldAndStopNothingElse) {
  LoadTheaterData(around.All);
  std::filesystem::create_directories(folder.Path / areasFile / "in the way");
  station.LinkOptions.CONNPORT = 6200;
  station.View.ViewShorts[0] = {15, 30, 2};
  SwitchTheater(around.All, 2);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The areas could not be saved: korea_Areas.dat cannot be written.");
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6200"));
  EXPECT_TRUE(folder.Has("Theaters/korea_ViewShort.dat"));
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
}

TEST_F(TheaterAreas, OfATheaterWithASlashInItsNameLieInAFolder) {
  station.Catalogue.Current().Name = "east/korea";
  station.Areas = SampleAreas();
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read("Theaters/east/korea_Areas.dat") == GoldenFile(SampleAreas(), Golden::V3));
}

TEST_F(TheaterAreas, GoWithTheirTheater) {
  const auto ends = {"_Areas.dat",          "_Areas.dat.old",       "_Areas.rescue",     "_Frequencies.dat",
                     "_Frequencies.rescue", "_Frequencies.dat.old", "_ViewShort.dat.old"};
  for (const char* end : ends) {
    folder.Write("Theaters/balkans" + std::string(end), "x");
  }
  theaters::RemoveTheater(station.Catalogue, 2, TheatersFolder(station));
  for (const char* end : ends) {
    EXPECT_FALSE(folder.Has("Theaters/balkans" + std::string(end))) << end;
  }
}

}  // namespace
}  // namespace kestrel::core
