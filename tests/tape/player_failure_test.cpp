// Tapes that cannot be loaded, and such as are damaged while they are on show.

#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "tape/player_fixture.h"

#ifndef _WIN32
#include <unistd.h>
#endif

namespace kestrel::tape {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// The text of the box for a tape that is damaged or cannot be opened, up to what says why.
std::string Refusal(int number) {
  return "The file you opened is not valid, it is corrupted or another general error occured.\nERROR NUMBER: " +
         std::to_string(number) + "\nERROR DESC: ";
}

TEST_F(TapePlayer, AnotherKindOfFileIsToldAndChangesNothing) {
  FillTables();
  for (const std::string bytes : {"", "TAPEv2.0", "TAPEv2.00 and more than a header's forty-one bytes of it"}) {
    desk.Boxes.clear();
    host.Notes.clear();
    Write(bytes);
    Load();
    ExpectEverythingAsItWas("Error: Wrong file format.",
                            "The file you opened is not valid or it was created with a previous version of KESTREL.");
  }
}

TEST_F(TapePlayer, AnEmptyTapeIsToldAndChangesNothing) {
  FillTables();
  // As a crash leaves it: the records are there, and the count is 0.
  Write(GoldenTape(0, {0, 1}));
  Load();
  ExpectEverythingAsItWas("Info...", "The tape file is empty...");
  EXPECT_EQ(desk.Boxes[0].Text, "The tape file is empty...");
  EXPECT_THAT(host.Calls, ElementsAre("bullseye of the tape", "bullseye of the theater"));
}

TEST_F(TapePlayer, AnEmptyTapeIsToldAsSuchWhateverItsBullseye) {
  FillTables();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double place : {nan, 1e300}) {
    desk.Boxes.clear();
    Write(test::GoldenHeader(0, 1000, At(0), place, place));
    Load();
    ASSERT_THAT(desk.Boxes, SizeIs(1)) << place;
    EXPECT_EQ(desk.Boxes[0].Text, "The tape file is empty...") << place;
  }
}

TEST_F(TapePlayer, TheNameOfATapeThatIsNotLoadedStaysUntilItsBoxIsAnswered) {
  FillTables();
  for (const std::string& bytes : {std::string("no tape"), GoldenTape(0, {}), GoldenTape(3, {0, 1})}) {
    SCOPED_TRACE(bytes.size());
    Write(bytes);
    std::string inBox;
    desk.WhileOpen = [&] {
      inBox = State().FileTitle;
      EXPECT_FALSE(State().Loaded());
      EXPECT_FALSE(host.Bullseye) << "the session goes on under the box";
      host.Refreshed = base::Changed::Nothing;
    };
    Load();
    EXPECT_EQ(inBox, "21-11-26_120000.tap");
    EXPECT_EQ(State().FileTitle, "");
    EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
    EXPECT_TRUE(Has(host.Refreshed, base::Changed::Tape)) << "the window shows it";
  }
}

TEST_F(TapePlayer, AnUnloadUnderTheBoxOfAFailedLoadIsTheEndOfIt) {
  Write("no tape");
  desk.WhileOpen = [this] {
    player.Unload();
    host.Refreshed = base::Changed::Nothing;
  };
  Load();
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
  EXPECT_EQ(host.Refreshed, base::Changed::Nothing) << "the windows are gone";
}

TEST_F(TapePlayer, ATapeCutAnywhereIsToldAndChangesNothing) {
  FillTables();
  const std::string whole = GoldenTape(2, {0, 1});
  for (std::size_t length = 9; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    desk.Boxes.clear();
    host.Notes.clear();
    Write(whole.substr(0, length));
    Load();
    ExpectEverythingAsItWas("Error: Wrong file format.", Refusal(62));
    if (HasFailure()) break;
  }
}

TEST_F(TapePlayer, LyingHeadersAreToldAndChangeNothing) {
  FillTables();
  const std::string records = GoldenTape(2, {0, 1}).substr(41);
  const std::string headers[] = {test::GoldenHeader(-1, 1000, At(0), 100, 200),
                                 test::GoldenHeader(3, 1000, At(0), 100, 200),
                                 test::GoldenHeader(2147483647, 1000, At(0), 100, 200)};
  for (const std::string& header : headers) {
    desk.Boxes.clear();
    host.Notes.clear();
    Write(header + records);
    Load();
    ExpectEverythingAsItWas("Error: Wrong file format.", "The file you opened is not valid, it is corrupted or");
  }
}

TEST_F(TapePlayer, AFileThatIsNotThereIsTold) {
  FillTables();
  Load();
  ExpectEverythingAsItWas("Error: Wrong file format.", Refusal(53) + "21-11-26_120000.tap cannot be read: ");
}

TEST_F(TapePlayer, AMemoryThatIsFullIsToldAndTheLoadGivenUp) {
  FillTables();
  WriteTape({0, 1});
  bool thrown = false;
  host.WhenRefreshed = [&thrown] {
    if (!std::exchange(thrown, true)) throw std::bad_alloc();
  };
  Load();
  ExpectEverythingAsItWas("Error: Wrong file format.", Refusal(7) + "Out of memory");
}

#ifndef _WIN32
/// While it lives, files are opened with the rights of a plain user, also where the tests run as the administrator.
class PlainUser {
 public:
  PlainUser() : before(geteuid()) { EXPECT_TRUE(before != 0 || seteuid(65534) == 0); }
  ~PlainUser() { EXPECT_EQ(seteuid(before), 0); }
  PlainUser(const PlainUser&) = delete;
  PlainUser& operator=(const PlainUser&) = delete;

 private:
  uid_t before;
};

TEST_F(TapePlayer, ATapeThatMayNotBeReadIsTold) {
  FillTables();
  WriteTape({0, 1});
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const PlainUser user;
  Load();
  ExpectEverythingAsItWas("Error: Wrong file format.", Refusal(70) + "21-11-26_120000.tap cannot be read: ");
}

TEST_F(TapePlayer, AFolderInPlaceOfATapeIsTold) {
  FillTables();
  std::filesystem::create_directory(path);
  Load();
  ExpectEverythingAsItWas("Error: Wrong file format.", Refusal(75) + "21-11-26_120000.tap is no file");
}

TEST_F(TapePlayer, ATapeWhoseNameIsNoTextIsLoaded) {
  path = folder / "a\xFF.tap";
  LoadTape({0, 1});
  EXPECT_EQ(State().FileTitle, "a\xFF.tap");
}
#endif

TEST_F(TapePlayer, AnUnloadDuringTheIndexEndsTheLoadWithoutAWord) {
  FillTables();
  WriteTape({0, 1, 2});
  desk.WhenEventsRun = [this] { player.Unload(); };
  Load();
  EXPECT_EQ(desk.EventRuns, 1);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_THAT(host.Notes, IsEmpty());
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
  EXPECT_EQ(plots.Clients.UpperBound(), 3u);
  EXPECT_THAT(host.Calls, testing::Not(testing::Contains("leave the session")));
}

TEST_F(TapePlayer, ARecordBehindTheIndexIsToldAndLosesNothing) {
  LoadTape({0, 2});
  player.Play(around);
  WriteOver(GoldenTape(3, {0, 2, 5}));
  player.Stop(around);
  EXPECT_EQ(State().RecordCount, 3);
  player.Play(around);
  player.Tick(around);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  player.Tick(around);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("Record 3 of the tape cannot be read: "));
  EXPECT_EQ(State().Phase, PlayerPhase::Paused);
  EXPECT_EQ(State().CurPoint, 2);
  EXPECT_EQ(plots.Clients.UpperBound(), 2u);
}

TEST_F(TapePlayer, ATapeThatIsCutWhileItIsLoadedIsToldOnceAndWhatIsOnShowStays) {
  LoadTape({0, 2, 5});
  player.Play(around);
  std::filesystem::resize_file(path, 60);
  PlayerPhase inBox = PlayerPhase::NoFile;
  desk.WhileOpen = [&] { inBox = State().Phase; };
  player.Tick(around);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_EQ(desk.Boxes[0].Title, "Playback");
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("Record 2 of the tape cannot be read: "));
  EXPECT_THAT(host.Notes, ElementsAre(StartsWith("Record 2 of the tape cannot be read: ")));
  EXPECT_EQ(inBox, PlayerPhase::Paused) << "the timer does not run on under the box";
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(State().BarValue, 1);
  EXPECT_EQ(plots.Clients.UpperBound(), 2u);
  player.Tick(around);
  EXPECT_THAT(desk.Boxes, SizeIs(1));

  player.MoveBar(around, 3);
  EXPECT_THAT(desk.Boxes, SizeIs(2));
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(State().BarValue, 1);

  std::filesystem::resize_file(path, 20);
  player.Stop(around);
  ASSERT_THAT(desk.Boxes, SizeIs(3));
  EXPECT_THAT(desk.Boxes[2].Text, StartsWith("The header of the tape cannot be read: "));
  EXPECT_EQ(State().Phase, PlayerPhase::Paused) << "it can be stopped again";
  player.Close(around);
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
}

TEST_F(TapePlayer, AStopWhoseHeaderCannotBeReadPausesAndLeavesEverythingOnShow) {
  const std::string whole = GoldenTape(3, {0, 2, 5});
  // Cut within the header, and one that tells of fewer than no records.
  for (const std::string& changed : {whole.substr(0, 20), GoldenTape(-1, {0, 2, 5})}) {
    SCOPED_TRACE(changed.size());
    LoadTape({0, 2, 5});
    player.Play(around);
    player.Tick(around);
    WriteOver(changed);
    PlayerPhase inBox = PlayerPhase::NoFile;
    desk.WhileOpen = [&] { inBox = State().Phase; };
    player.Stop(around);
    ASSERT_THAT(desk.Boxes, SizeIs(1));
    EXPECT_EQ(desk.Boxes[0].Title, "Playback");
    EXPECT_THAT(desk.Boxes[0].Text, StartsWith("The header of the tape cannot be read: "));
    EXPECT_EQ(inBox, PlayerPhase::Paused) << "the timer does not run on under the box";
    EXPECT_EQ(State().Phase, PlayerPhase::Paused);
    EXPECT_EQ(State().RecordCount, 3);
    EXPECT_EQ(State().CurPoint, 2);
    EXPECT_EQ(State().CurTime, At(2));
    player.Close(around);
    desk.Boxes.clear();
  }
}

TEST_F(TapePlayer, APointBeyondACountThatHasShrunkIsShownAndIsTheLastOne) {
  LoadTape({0, 2, 5, 9, 14});
  player.Play(around);
  WriteOver(GoldenTape(2, {0, 2, 5, 9, 14}));
  player.Stop(around);
  ASSERT_EQ(State().RecordCount, 2);
  ASSERT_EQ(State().SecsBetween, 2);
  // The bar still reaches what was on the tape when it was loaded.
  player.MoveBar(around, 4);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_EQ(State().CurPoint, 4);
  EXPECT_EQ(State().CurTime, At(9));
  EXPECT_EQ(State().SecsBetween, 2) << "nothing comes behind it";
  player.Play(around);
  player.Tick(around);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped);
  EXPECT_EQ(State().CurPoint, 1);
}

TEST_F(TapePlayer, APointBeyondATapeThatWasReplacedByAShorterOneIsToldAndLosesNothing) {
  LoadTape({0, 2, 5, 9, 14});
  player.Play(around);
  WriteOver(GoldenTape(2, {0, 2}));
  player.Stop(around);
  ASSERT_EQ(State().RecordCount, 2);
  player.MoveBar(around, 5);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("Record 5 of the tape cannot be read: "));
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(State().BarValue, 1);
  EXPECT_EQ(plots.Clients.UpperBound(), 2u);
  player.MoveBar(around, 2);
  EXPECT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_EQ(State().CurTime, At(2));
}

TEST_F(TapePlayer, AStopThatFailsLeavesRecordAndTimeOnShow) {
  LoadTape({0, 2, 5});
  player.Play(around);
  player.Tick(around);
  std::string bytes = GoldenTape(3, {0, 2, 5});
  bytes[41 + 8] = 7;  // dimensions of the first record's aircraft
  WriteOver(bytes);
  player.Stop(around);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("Record 1 of the tape cannot be read: "));
  EXPECT_EQ(State().Phase, PlayerPhase::Paused);
  EXPECT_EQ(State().CurPoint, 2);
  EXPECT_EQ(State().CurTime, At(2));
}

TEST_F(TapePlayer, ARecordWhoseSuccessorIsGoneIsStillShown) {
  LoadTape({0, 2, 5});
  const std::size_t second = GoldenTape(2, {0, 2}).size();
  std::filesystem::resize_file(path, second);
  player.MoveBar(around, 2);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_EQ(State().CurPoint, 2);
  EXPECT_EQ(State().SecsBetween, 2) << "the gap stays";
}

}  // namespace
}  // namespace kestrel::tape
