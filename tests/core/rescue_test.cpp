#include "core/rescue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/settings.h"
#include "core/theater_data.h"
#include "core/theater_switch.h"
#include "kept_kinds.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Rescue : public testing::TestWithParam<KeptKind> {
 protected:
  Rescue() {
    WriteInstallation(folder);
    EXPECT_TRUE(LoadSavedVars(station).empty());
    LoadTheaterData(around.All);
  }
  void Change() { kind.Change(station); }
  /// The timer of the shell, `seconds` long; how many of its calls wrote the rescue.
  int Run(int seconds) {
    int written = 0;
    for (int n = 0; n < seconds; ++n) {
      around.Clock.Ticks += 1000;
      std::filesystem::remove(folder.Path / rescueFile);
      RescueChanges(around.All);
      written += folder.Has(rescueFile) ? 1 : 0;
      if (folder.Has(rescueFile)) last = folder.Read(rescueFile);
    }
    return written;
  }
  std::string Bytes() const { return kind.Bytes(station); }
  /// The file of a station that was filled.
  std::string Filled() const {
    Station filled;
    kind.Fill(filled);
    return kind.Bytes(filled);
  }

  const KeptKind& kind = GetParam();
  const std::string file = kind.File;
  const std::string rescueFile = kind.Rescue();
  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
  std::string last;                                 ///< what was written
  const std::string empty = kind.Bytes(Station());  ///< the file of a station without any
};

TEST_P(Rescue, IsWrittenTenSecondsAfterAChange) {
  EXPECT_EQ(Run(100), 0) << "nothing has changed";
  Change();
  // The first call sees the change.
  EXPECT_EQ(Run(10), 0);
  EXPECT_EQ(Run(1), 1);
  EXPECT_TRUE(last == Bytes());
  EXPECT_EQ(Run(100), 0);
}

TEST_P(Rescue, IsWrittenWhileThePersonGoesOn) {
  int written = 0;
  for (int n = 0; n < 110; ++n) {
    Change();
    written += Run(1);
  }
  EXPECT_EQ(written, 10);
}

TEST_P(Rescue, IsWrittenAcrossTheTurnOfTheTickCount) {
  around.Clock.Ticks = 0xFFFFFFFFU - 3500;
  Change();
  EXPECT_EQ(Run(10), 0);
  EXPECT_EQ(Run(1), 1);
}

TEST_P(Rescue, ComesLaterInProportionAfterALongWriting) {
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

TEST_P(Rescue, AFailureIsLoggedOnceAndTriedAgain) {
  around.Log.File.Open(folder.Path / "log");
  std::filesystem::create_directories(folder.Path / (rescueFile + ".new") / "in the way");
  Change();
  EXPECT_EQ(Run(40), 0);
  std::filesystem::remove_all(folder.Path / (rescueFile + ".new"));
  EXPECT_EQ(Run(10), 1);
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"),
            "The " + kind.What + " are not rescued: " + rescueFile.substr(9) + " cannot be written\r\n");
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_P(Rescue, ASaveRemovesItAndMakesItNeedless) {
  Change();
  Run(11);
  ASSERT_TRUE(folder.Has(rescueFile));
  Change();
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_FALSE(folder.Has(rescueFile));
  EXPECT_EQ(Run(30), 0);
}

TEST_P(Rescue, ASaveThatFailsLeavesIt) {
  Change();
  Run(11);
  std::filesystem::create_directories(folder.Path / file / "in the way");
  EXPECT_THAT(SaveAll(station), SizeIs(1));
  EXPECT_TRUE(folder.Has(rescueFile));
}

TEST_P(Rescue, NothingIsWrittenWhereNothingCanBeSaved) {
  Change();
  station.FolderReadOnly = true;
  EXPECT_EQ(Run(30), 0);
  station.FolderReadOnly = false;
  station.Closing = true;
  EXPECT_EQ(Run(30), 0);
}

TEST_P(Rescue, OfOneTheaterIsNotOfTheNext) {
  Change();
  EXPECT_EQ(Run(5), 0);
  SwitchTheater(around.All, 2);
  EXPECT_EQ(Run(30), 0) << "the switch has saved it";
  EXPECT_TRUE(Bytes() == empty);
  Change();
  const std::string balkans = "Theaters/balkans" + rescueFile.substr(std::string("Theaters/korea").size());
  EXPECT_EQ(Run(11), 0);
  EXPECT_TRUE(folder.Read(balkans) == Bytes());
  // A crash, and a start in the first theater.
  station.Catalogue.CurrentTheater = 1;
  LoadTheaterData(around.All);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  around.Desk.Answers = {base::Answer::Yes};
  SwitchTheater(around.All, 2);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr(kind.What + " of Balkans"));
  EXPECT_TRUE(folder.Read(balkans) == Bytes());
}

TEST_P(Rescue, WithoutOneNothingIsAsked) { EXPECT_THAT(around.Desk.Boxes, IsEmpty()); }

TEST_P(Rescue, OfACrashIsTakenUpOnYes) {
  folder.Write(file, empty);
  folder.Write(rescueFile, Filled());
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text,
              HasSubstr("The last changes to the " + kind.What + " of Korea were not saved"));
  EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
  EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::Yes);
  EXPECT_TRUE(Bytes() == Filled());
  EXPECT_NE(Filled(), empty);
  // Another crash loses nothing.
  EXPECT_TRUE(folder.Has(rescueFile));
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(file) == Filled());
  EXPECT_FALSE(folder.Has(rescueFile));
  EXPECT_FALSE(folder.Has(kind.Former()));
}

TEST_P(Rescue, ThatIsTakenUpIsAChange) {
  const std::uint64_t former = kind.Kept->Revision(station);
  folder.Write(rescueFile, Filled());
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_EQ(kind.Kept->Revision(station), former + 2) << "the load and the rescue";
  EXPECT_EQ(Run(30), 0) << "it is on the disk";
}

TEST_P(Rescue, OfACrashIsDeletedOnNo) {
  folder.Write(file, Filled());
  folder.Write(rescueFile, empty);
  around.Desk.Answers = {base::Answer::No};
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == Filled());
  EXPECT_FALSE(folder.Has(rescueFile));
  LoadTheaterData(around.All);
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
}

TEST_P(Rescue, ThatIsDamagedLoadsWhatItHolds) {
  folder.Write(file, Filled());
  folder.Write(rescueFile, Filled().substr(0, Filled().size() - Filled().size() / 4));
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_NE(Bytes(), empty);
  EXPECT_NE(Bytes(), Filled());
  // What was saved holds more.
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_TRUE(folder.Read(kind.Former()) == Filled());
}

TEST_P(Rescue, ThatIsNoneLeavesWhatWasSaved) {
  folder.Write(file, Filled());
  folder.Write(rescueFile, "nothing of the kind");
  around.Desk.Answers = {base::Answer::Yes};
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == Filled());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_EQ(around.Desk.Boxes[1].Text, "The rescued " + kind.What + " cannot be read. Those that were saved stay.");
}

TEST_P(Rescue, IsOfferedAlsoWhereTheFileCannotBeRead) {
  folder.Write(file, "nothing of the kind");
  folder.Write(rescueFile, Filled());
  // A file of areas of another kind is told first.
  if (!kind.Kept->Refusal.empty()) around.Desk.Answers = {base::Answer::Ok};
  around.Desk.Answers.push_back(base::Answer::Yes);
  LoadTheaterData(around.All);
  EXPECT_TRUE(Bytes() == Filled());
  EXPECT_THAT(SaveAll(station), IsEmpty());
  EXPECT_EQ(folder.Read(kind.Former()), "nothing of the kind");
}

INSTANTIATE_TEST_SUITE_P(Of, Rescue, testing::ValuesIn(keptKinds),
                         [](const testing::TestParamInfo<KeptKind>& each) { return each.param.What; });

}  // namespace
}  // namespace kestrel::core
