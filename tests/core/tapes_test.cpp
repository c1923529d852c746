#include "core/tapes.h"

#include <optional>

#include "base/clock.h"
#include "core/taping_fixture.h"
#include "doubles/full_disk.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(Taping, RecordingIsOffUntilThereIsAConnection) {
  EXPECT_FALSE(MayRecord(All));
  Connect();
  EXPECT_TRUE(MayRecord(All));
  EXPECT_EQ(RecordingTip(State), "Not recording");
}

TEST_F(Taping, AStartMakesATapeNamedByItsTimeWithTheBullseyeOfTheTheater) {
  Connect();
  Synchronise();
  Synchronise();
  Clock.Date = 46347.5;
  RecordingStart(All);
  EXPECT_TRUE(State.Tapes.Recorder.Recording());
  EXPECT_FALSE(MayRecord(All));
  EXPECT_FALSE(MayLoadTape(State));
  EXPECT_TRUE(Has(AllRefreshed(), Changed::Tape));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), 41u) << "nothing else before the next SYNCRO";
  EXPECT_EQ(Header().RecordCount, 0);
  EXPECT_EQ(Header().SyncInterval, 1000);
  EXPECT_EQ(Header().StartTime, 46347.5);
  EXPECT_EQ(Header().BullX, 100);
  EXPECT_EQ(Header().BullY, 200);
  EXPECT_THAT(RecordingTip(State), StartsWith("Recording: 41 bytes on the tape, "));
}

TEST_F(Taping, ATheaterWithoutBullseyesRecordsItsMiddle) {
  Connect();
  SwitchTheater(All, 2);
  RecordingStart(All);
  EXPECT_EQ(Header().BullX, 1024);
  EXPECT_EQ(Header().BullY, 1024);
}

TEST_F(Taping, StartAndStopWithoutASynchronisationLeave41Bytes) {
  Connect();
  RecordingStart(All);
  RecordingEnd(All);
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
  EXPECT_TRUE(MayRecord(All));
  EXPECT_TRUE(MayLoadTape(State));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), 41u);
  EXPECT_EQ(Header().RecordCount, 0);
  RecordingEnd(All);
  EXPECT_THAT(Desk.Boxes, IsEmpty());
}

TEST_F(Taping, EachSynchronisationWritesOneRecordWithItsTime) {
  RecordTape(3);
  EXPECT_EQ(Header().RecordCount, 3);
  EXPECT_EQ(Header().SyncInterval, 1000);
  tape::TapeReader reader(TapePath());
  std::uint64_t at = tape::FirstRecordAt;
  for (int n = 1; n <= 3; ++n) {
    const tape::RecordShape shape = reader.Skip(at);
    EXPECT_NEAR(shape.Time, 46347.5 + n / 86400.0, 1e-9);
    EXPECT_EQ(shape.Clients, 1u);
    at = shape.Next;
  }
  Synchronise();
  EXPECT_EQ(std::filesystem::file_size(TapePath()), at) << "nothing is written once the recording has ended";
}

TEST_F(Taping, ASecondStartWhileRecordingChangesNothing) {
  Connect();
  RecordingStart(All);
  Synchronise();
  Clock.Date += 60.0 / 86400;
  Shown.Refreshes.clear();
  RecordingStart(All);
  EXPECT_THAT(Shown.Refreshes, IsEmpty());
  EXPECT_THAT(Desk.Boxes, IsEmpty());
  Synchronise();
  RecordingEnd(All);
  EXPECT_EQ(Header().RecordCount, 2);
  int tapes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path / "TAPES")) tapes += entry.is_regular_file();
  EXPECT_EQ(tapes, 1);
}

TEST_F(Taping, TheDummiesOfBothTablesAreZerosAndEmptyTexts) {
  RecordTape(1);
  // Time; the aircraft: descriptor (1 dimension, 1 element, from 0) and 29 bytes; the clients: descriptor (2 elements),
  // then the dummy, whose fields take 52 bytes before a history of its own dummy: descriptor and 16 bytes.
  const std::string bytes = test::ReadBytes(TapePath());
  constexpr std::size_t aircraft = 41 + 8 + 10, clients = aircraft + 29 + 10;
  ASSERT_GT(bytes.size(), clients + 52 + 26);
  EXPECT_EQ(bytes.substr(aircraft, 29), std::string(29, '\0'));
  EXPECT_EQ(bytes.substr(clients - 10, 6), std::string("\1\0\2\0\0\0", 6));
  EXPECT_EQ(bytes.substr(clients, 52), std::string(52, '\0'));
  EXPECT_EQ(bytes.substr(clients + 52, 26), std::string("\1\0\1", 3) + std::string(23, '\0'));
}

TEST_F(Taping, ALostConnectionClosesTheTapeAfterItsTimesAreZero) {
  Connect();
  RecordingStart(All);
  Synchronise();
  Synchronise();
  WS1.PeerCloses();
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
  EXPECT_FALSE(MayRecord(All));
  EXPECT_EQ(Header().RecordCount, 2);
  EXPECT_EQ(Header().SyncInterval, 0) << "the sync values have been zeroed first";
}

TEST_F(Taping, TheServersEndAndDisconnectCloseTheTapeToo) {
  Connect();
  RecordingStart(All);
  Synchronise();
  WS1.Arrive(std::string("DISCON\0", 7));
  EXPECT_EQ(Header().RecordCount, 1);
  Link.Disconnect();
  Connect();
  Clock.Date = 46347.5;
  RecordingStart(All);
  Link.Disconnect();
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
}

TEST_F(Taping, TheUnloadOfTheMapWindowClosesTheTape) {
  Connect();
  RecordingStart(All);
  Synchronise();
  Synchronise();
  RunSteps(MapUnloadSteps(), All);
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
  EXPECT_EQ(Header().RecordCount, 2);
  EXPECT_EQ(Header().SyncInterval, 1000);
}

TEST_F(Taping, AfterAChangeOfThePortRecordingCannotBeginAnew) {
  Connect();
  RecordingStart(All);
  Link.DropSocket();
  EXPECT_TRUE(State.Tapes.Recorder.Recording());
  RecordingEnd(All);
  EXPECT_FALSE(MayRecord(All)) << "the socket is closed";
}

TEST_F(Taping, ATapeThatCannotBeMadeIsToldAndTheSessionGoesOn) {
  Connect();
  std::filesystem::create_directory(TapePath());  // the name is taken by a folder
  RecordingStart(All);
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_EQ(Desk.Boxes[0].Title, "Recording");
  EXPECT_THAT(Desk.Boxes[0].Text, StartsWith("The tape could not be made: "));
  EXPECT_TRUE(MayRecord(All));
  Synchronise();
  EXPECT_TRUE(State.Session.Connected);
}

#ifndef _WIN32
TEST_F(Taping, AFullDiskIsToldOnceAndTheTapeKeepsItsWholeRecords) {
  Connect();
  RecordingStart(All);
  Synchronise();
  const std::uintmax_t one = std::filesystem::file_size(TapePath());
  {
    const doubles::FullDisk disk(one + 5);
    Synchronise();
    Synchronise();
  }
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_THAT(Desk.Boxes[0].Text, StartsWith("The recording has ended: 21-11-26_120000.tap cannot be written: "));
  EXPECT_THAT(Desk.Boxes[0].Text, EndsWith(". The tape has been closed with 1 record. The session goes on."));
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
  EXPECT_TRUE(MayRecord(All));
  EXPECT_TRUE(MayLoadTape(State));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), one);
  EXPECT_EQ(Header().RecordCount, 1);
  EXPECT_EQ(Header().SyncInterval, 1000);
  EXPECT_EQ(State.Session.DroppedMessages, 0u);
  EXPECT_TRUE(State.Session.Connected);
}

/// What follows when a count cannot be written any more.
constexpr const char* CountIsLost =
    " The number of its records could not be written, so that it reads as empty; tape-info --repair saves its 2 "
    "records.";

TEST_F(Taping, ACountThatIsLostAfterAFailedRecordIsTold) {
  Connect();
  RecordingStart(All);
  Synchronise();
  Synchronise();
  const std::uintmax_t two = std::filesystem::file_size(TapePath());
  {
    const doubles::FullDisk disk(tape::RecordCountAt);
    Synchronise();
    Synchronise();
  }
  ASSERT_THAT(RecordingBoxes(), SizeIs(1));
  EXPECT_THAT(RecordingBoxes()[0], StartsWith("The recording has ended: 21-11-26_120000.tap cannot be written: "));
  EXPECT_THAT(RecordingBoxes()[0], EndsWith("." + std::string(CountIsLost) + " The session goes on."));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), two);
  EXPECT_EQ(Header().RecordCount, 0);
  EXPECT_TRUE(State.Session.Connected);
}

struct ClosingCase {
  const char* Name;
  void (*Close)(Program&, doubles::FakeSocket&);
};

TEST_F(Taping, ATapeThatCannotBeClosedProperlyIsToldOnce) {
  const ClosingCase cases[] = {
      {"the menu entry", [](Program& program, doubles::FakeSocket&) { RecordingEnd(program); }},
      {"a lost connection", [](Program&, doubles::FakeSocket& socket) { socket.PeerCloses(); }},
      {"the unload", [](Program& program, doubles::FakeSocket&) { RunSteps(MapUnloadSteps(), program); }}};
  for (const ClosingCase& each : cases) {
    SCOPED_TRACE(each.Name);
    Desk.Boxes.clear();
    Clock.Date += 1;
    Link.Disconnect();
    Connect();
    RecordingStart(All);
    Synchronise();
    Synchronise();
    {
      const doubles::FullDisk disk(tape::RecordCountAt);
      each.Close(All, WS1);
    }
    EXPECT_FALSE(State.Tapes.Recorder.Recording());
    ASSERT_THAT(RecordingBoxes(), SizeIs(1));
    EXPECT_THAT(RecordingBoxes()[0], StartsWith("The tape could not be closed properly: "));
    EXPECT_THAT(RecordingBoxes()[0], EndsWith("." + std::string(CountIsLost)));
    EXPECT_EQ(tape::TapeReader(State.Tapes.Recorder.Path()).Header().RecordCount, 0);
  }
}
#endif

TEST_F(Taping, EachSynchronisationLooksAtTheRoomBesideTheTape) {
  Connect();
  RecordingStart(All);
  ASSERT_TRUE(State.Tapes.FreeBytes) << "the system tells it";
  std::filesystem::path asked;
  std::uint64_t room = 77;
  State.Tapes.FreeSpace = [&](const std::filesystem::path& place) {
    asked = place;
    return room;
  };
  Synchronise();
  EXPECT_EQ(asked, folder.Path / "TAPES");
  EXPECT_EQ(State.Tapes.FreeBytes, 77u);
  room = 76;
  Synchronise();
  EXPECT_EQ(State.Tapes.FreeBytes, 76u);
}

TEST_F(Taping, LessThanTenMinutesOfRoomAreToldOnce) {
  std::optional<std::uint64_t> room = 10000;
  State.Tapes.FreeSpace = [&room](const std::filesystem::path&) { return room; };
  Connect();
  WS1.Arrive(NewPlayer);
  RecordingStart(All);
  // The first one has no cycle.
  for (int n = 0; n < 10; ++n) Synchronise();
  EXPECT_THAT(Desk.Boxes, IsEmpty()) << "no rate is known yet";
  Synchronise();
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_THAT(Desk.Boxes[0].Text,
              StartsWith("The disk will be full in less than 10 minutes if the recording goes on as "
                         "it does: 10.0 kB are free"));
  room = 9000;
  Synchronise();
  EXPECT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_THAT(RecordingTip(State), HasSubstr(", 9.0 kB free"));
  room = std::nullopt;
  Synchronise();
  EXPECT_THAT(Desk.Boxes, SizeIs(1));
  // Another tape is told of anew.
  RecordingEnd(All);
  Clock.Date = 46348;
  room = 9000;
  RecordingStart(All);
  for (int n = 0; n < 10; ++n) Synchronise();
  EXPECT_THAT(Desk.Boxes, SizeIs(2));
}

TEST_F(Taping, TheHourAtWhichTheDiskIsFullIsToldLessThanADayAhead) {
  std::optional<std::uint64_t> room = 10'000'000;
  State.Tapes.FreeSpace = [&room](const std::filesystem::path&) { return room; };
  const auto minutes = [&] { return State.Tapes.Recorder.MinutesLeft(*room).value(); };
  Connect();
  WS1.Arrive(NewPlayer);
  RecordingStart(All);
  for (int n = 0; n < 10; ++n) Synchronise();
  EXPECT_THAT(RecordingTip(State), EndsWith(", 10.0 MB free")) << "no rate is known yet";
  Clock.Date = 46347 + 21.0 / 24;
  Synchronise();
  ASSERT_GT(minutes(), 10);
  ASSERT_LT(minutes(), 24);
  const std::string hour = base::TimeText(Clock.Date + minutes() / 1440).substr(0, 5);
  EXPECT_THAT(hour, StartsWith("21:"));
  EXPECT_THAT(RecordingTip(State), EndsWith(", 10.0 MB free, full at " + hour));
  room = 1'000'000'000'000;
  Synchronise();
  ASSERT_GT(minutes(), 1440);
  EXPECT_THAT(RecordingTip(State), EndsWith(" free"));
  // Past midnight it is the hour of the next day.
  room = 10'000'000;
  Clock.Date = 46347 + 23.9 / 24;
  Synchronise();
  EXPECT_THAT(RecordingTip(State), HasSubstr("10.0 MB free, full at 00:"));
  room = 3000;
  Synchronise();
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_THAT(Desk.Boxes[0].Text,
              EndsWith(": 3.0 kB are free, and the tape grows faster the longer it is. It will be full at 23:54."));
  room = std::nullopt;
  Synchronise();
  EXPECT_THAT(RecordingTip(State), Not(HasSubstr("full at")));
  RecordingEnd(All);
  Clock.Date = 46349;
  RecordingStart(All);
  EXPECT_THAT(RecordingTip(State), Not(HasSubstr("full at")));
}

TEST_F(Taping, RoomThatRunsOutAgainIsToldAgain) {
  std::uint64_t room = 9000;
  State.Tapes.FreeSpace = [&room](const std::filesystem::path&) { return room; };
  const auto minutes = [&] { return State.Tapes.Recorder.MinutesLeft(room).value(); };
  Connect();
  WS1.Arrive(NewPlayer);
  RecordingStart(All);
  for (int n = 0; n < 11; ++n) Synchronise();
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  room = 6'000'000;
  Synchronise();
  ASSERT_GT(minutes(), 10);
  ASSERT_LT(minutes(), 20);
  room = 9000;
  Synchronise();
  EXPECT_THAT(Desk.Boxes, SizeIs(1)) << "it has only wavered";
  room = 60'000'000;
  Synchronise();
  ASSERT_GT(minutes(), 20);
  EXPECT_THAT(Desk.Boxes, SizeIs(1));
  room = 9000;
  Synchronise();
  EXPECT_THAT(Desk.Boxes, SizeIs(2));
}

struct SizeCase {
  std::uint64_t Bytes;
  const char* Text;
};

TEST(SizeTexts, AreForPeople) {
  for (const SizeCase& each : {SizeCase{0, "0 bytes"}, SizeCase{999, "999 bytes"}, SizeCase{1000, "1.0 kB"},
                               SizeCase{99'940, "99.9 kB"}, SizeCase{99'950, "100 kB"}, SizeCase{99'960, "100 kB"},
                               SizeCase{999'499, "999 kB"}, SizeCase{999'500, "1.0 MB"}, SizeCase{999'960, "1.0 MB"},
                               SizeCase{12'345'678, "12.3 MB"}, SizeCase{345'000'000, "345 MB"},
                               SizeCase{26'000'000'000, "26.0 GB"}, SizeCase{5'000'000'000'000'000, "5000 TB"}}) {
    EXPECT_EQ(SizeText(each.Bytes), each.Text);
  }
}

}  // namespace
}  // namespace kestrel::core
