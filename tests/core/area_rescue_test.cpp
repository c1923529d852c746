#include "core/area_rescue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "areas/golden_areas.h"
#include "core/settings.h"
#include "core/theater_data.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using test::Golden;
using test::GoldenFile;
using test::SampleAreas;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string areasFile = "Theaters/korea_Areas.dat";
const std::string rescueFile = "Theaters/korea_Areas.rescue";

class AreaRescue : public testing::Test {
 protected:
  AreaRescue() {
    WriteInstallation(folder);
    EXPECT_TRUE(LoadSavedVars(station).empty());
    LoadTheaterData(around.All);
  }
  /// As the person does.
  void Change() {
    station.Areas.AreaFolders.Append({"Folder", areas::On});
    ++station.Areas.Revision;
  }
  /// The timer of the shell, `seconds` long; how many of its calls wrote the rescue.
  int Run(int seconds) {
    int written = 0;
    for (int n = 0; n < seconds; ++n) {
      around.Clock.Ticks += 1000;
      std::filesystem::remove(folder.Path / rescueFile);
      RescueAreas(around.All);
      written += folder.Has(rescueFile) ? 1 : 0;
      if (folder.Has(rescueFile)) last = folder.Read(rescueFile);
    }
    return written;
  }
  std::string Bytes() const { return GoldenFile(station.Areas, Golden::V3); }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
  std::string last;  ///< what was written
};

TEST_F(AreaRescue, IsWrittenTenSecondsAfterAChange) {
  EXPECT_EQ(Run(100), 0) << "nothing has changed";
  Change();
  // The first call sees the change.
  EXPECT_EQ(Run(10), 0);
  EXPECT_EQ(Run(1), 1);
  EXPECT_TRUE(last == Bytes());
  EXPECT_EQ(Run(100), 0);
}

TEST_F(AreaRescue, IsWrittenWhileThePersonGoesOn) {
  int written = 0;
  for (int n = 0; n < 110; ++n) {
    Change();
    written += Run(1);
  }
  EXPECT_EQ(written, 10);
}

TEST_F(AreaRescue, IsWrittenAcrossTheTurnOfTheTickCount) {
  around.Clock.Ticks = 0xFFFFFFFFU - 3500;
  Change();
  EXPECT_EQ(Run(10), 0);
  EXPECT_EQ(Run(1), 1);
}

TEST_F(AreaRescue, ComesLaterInProportionAfterALongWriting) {
  Change();
  Run(10);
  // The reading at the start of a call, and that at the end of the writing, 400 ms later.
  std::uint32_t step = 0;
  around.Clock.WhenRead = [&] { around.Clock.Ticks += std::exchange(step, 400); };
  EXPECT_EQ(Run(1), 1);
  around.Clock.WhenRead = nullptr;
  Change();
  // 400 / 50 times 10 s.
  EXPECT_EQ(Run(80), 0);
  EXPECT_EQ(Run(1), 1);
  // That one was fast.
  Change();
  EXPECT_EQ(Run(10), 0);
  EXPECT_EQ(Run(1), 1);
}

TEST_F(AreaRescue, AFailureIsLoggedOnceAndTriedAgain) {
  around.Log.File.Open(folder.Path / "log");
  std::filesystem::create_directories(folder.Path / (rescueFile + ".new") / "in the way");
  Change();
  EXPECT_EQ(Run(40), 0);
  std::filesystem::remove_all(folder.Path / (rescueFile + ".new"));
  EXPECT_EQ(Run(10), 1);
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"), "The areas are not rescued: korea_Areas.rescue cannot be written\r\n");
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(AreaRescue, ASaveRemovesItAndMakesItNeedless) {
  Change();
  Run(11);
  ASSERT_TRUE(folder.Has(rescueFile));
  Change();
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_FALSE(folder.Has(rescueFile));
  EXPECT_EQ(Run(30), 0);
}

TEST_F(AreaRescue, ASaveThatFailsLeavesIt) {
  Change();
  Run(11);
  std::filesystem::create_directories(folder.Path / areasFile / "in the way");
  EXPECT_THAT(SaveAll(station), SizeIs(1));
  EXPECT_TRUE(folder.Has(rescueFile));
}

TEST_F(AreaRescue, NothingIsWrittenWhereNothingCanBeSaved) {
  Change();
  station.FolderReadOnly = true;
  EXPECT_EQ(Run(30), 0);
  station.FolderReadOnly = false;
  station.Closing = true;
  EXPECT_EQ(Run(30), 0);
}

TEST_F(AreaRescue, WithoutOneNothingIsAsked) { EXPECT_THAT(around.Desk.Boxes, IsEmpty()); }

TEST_F(AreaRescue, OfACrashIsTakenUpOnYes) {
  folder.Write(areasFile, GoldenFile(areas::AreaCatalogue{}, Golden::V3));
  folder.Write(rescueFile, GoldenFile(SampleAreas(), Golden::V3));
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The last changes to the areas of Korea were not saved"));
  EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
  EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::Yes);
  EXPECT_TRUE(Bytes() == GoldenFile(SampleAreas(), Golden::V3));
  // Another crash loses nothing.
  EXPECT_TRUE(folder.Has(rescueFile));
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(areasFile) == GoldenFile(SampleAreas(), Golden::V3));
  EXPECT_FALSE(folder.Has(rescueFile));
  EXPECT_FALSE(folder.Has(areasFile + ".old"));
}

TEST_F(AreaRescue, OfACrashIsDeletedOnNo) {
  const std::string saved = GoldenFile(SampleAreas(), Golden::V3);
  folder.Write(areasFile, saved);
  folder.Write(rescueFile, GoldenFile(areas::AreaCatalogue{}, Golden::V3));
  around.Desk.Answers = {base::Answer::No};
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == saved);
  EXPECT_FALSE(folder.Has(rescueFile));
  LoadTheaterData(around.All);
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
}

TEST_F(AreaRescue, ThatIsDamagedLoadsWhatItHolds) {
  const std::string saved = GoldenFile(SampleAreas(), Golden::V3);
  folder.Write(areasFile, saved);
  folder.Write(rescueFile, saved.substr(0, 2000));
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 3U);
  // What was saved holds more.
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(areasFile + ".old") == saved);
}

TEST_F(AreaRescue, ThatIsNoneLeavesWhatWasSaved) {
  const std::string saved = GoldenFile(SampleAreas(), Golden::V3);
  folder.Write(areasFile, saved);
  folder.Write(rescueFile, "nothing of the kind");
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == saved);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_EQ(around.Desk.Boxes[1].Text, "The rescued areas cannot be read. Those that were saved stay.");
}

TEST_F(AreaRescue, IsOfferedAlsoWhereTheFileCannotBeRead) {
  folder.Write(areasFile, "no areas");
  folder.Write(rescueFile, GoldenFile(SampleAreas(), Golden::V3));
  around.Desk.Answers = {base::Answer::Ok, base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == GoldenFile(SampleAreas(), Golden::V3));
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_EQ(folder.Read(areasFile + ".old"), "no areas");
}

}  // namespace
}  // namespace kestrel::core
