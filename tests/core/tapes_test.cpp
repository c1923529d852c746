#include "core/tapes.h"

#include "core/taping_fixture.h"
#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>
#endif

#include <optional>

namespace kestrel::core {
namespace {

using base::Changed;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

#ifndef _WIN32
/// Files cannot grow beyond so many bytes while this lives.
class FileLimit {
 public:
  explicit FileLimit(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit less{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &less);
  }
  ~FileLimit() { setrlimit(RLIMIT_FSIZE, &before); }
  FileLimit(const FileLimit&) = delete;
  FileLimit& operator=(const FileLimit&) = delete;

 private:
  rlimit before{};
};
#endif

TEST_F(Taping, RecordingIsOffUntilThereIsAConnection) {
  EXPECT_FALSE(MayRecord(all));
  Connect();
  EXPECT_TRUE(MayRecord(all));
  EXPECT_EQ(RecordingTip(station), "Not recording");
}

TEST_F(Taping, AStartMakesATapeNamedByItsTimeWithTheBullseyeOfTheTheater) {
  Connect();
  Synchronise();
  Synchronise();
  clock.Date = 46347.5;
  RecordingStart(all);
  EXPECT_TRUE(station.Tapes.Recorder.Recording());
  EXPECT_FALSE(MayRecord(all));
  EXPECT_FALSE(MayLoadTape(station));
  EXPECT_TRUE(Has(AllRefreshed(), Changed::Tape));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), 41u) << "nothing else before the next SYNCRO";
  EXPECT_EQ(Header().RecordCount, 0);
  EXPECT_EQ(Header().SyncInterval, 1000);
  EXPECT_EQ(Header().StartTime, 46347.5);
  EXPECT_EQ(Header().BullX, 100);
  EXPECT_EQ(Header().BullY, 200);
  EXPECT_THAT(RecordingTip(station), StartsWith("Recording: 41 bytes on the tape, "));
}

TEST_F(Taping, ATheaterWithoutBullseyesRecordsItsMiddle) {
  Connect();
  SwitchTheater(all, 2);
  RecordingStart(all);
  EXPECT_EQ(Header().BullX, 1024);
  EXPECT_EQ(Header().BullY, 1024);
}

TEST_F(Taping, StartAndStopWithoutASynchronisationLeave41Bytes) {
  Connect();
  RecordingStart(all);
  RecordingEnd(all);
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
  EXPECT_TRUE(MayRecord(all));
  EXPECT_TRUE(MayLoadTape(station));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), 41u);
  EXPECT_EQ(Header().RecordCount, 0);
  RecordingEnd(all);
  EXPECT_THAT(desk.Boxes, IsEmpty());
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
  RecordingStart(all);
  Synchronise();
  clock.Date += 60.0 / 86400;
  shown.Refreshes.clear();
  RecordingStart(all);
  EXPECT_THAT(shown.Refreshes, IsEmpty());
  EXPECT_THAT(desk.Boxes, IsEmpty());
  Synchronise();
  RecordingEnd(all);
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
  RecordingStart(all);
  Synchronise();
  Synchronise();
  WS1.PeerCloses();
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
  EXPECT_FALSE(MayRecord(all));
  EXPECT_EQ(Header().RecordCount, 2);
  EXPECT_EQ(Header().SyncInterval, 0) << "the sync values have been zeroed first";
}

TEST_F(Taping, TheServersEndAndDisconnectCloseTheTapeToo) {
  Connect();
  RecordingStart(all);
  Synchronise();
  WS1.Arrive(std::string("DISCON\0", 7));
  EXPECT_EQ(Header().RecordCount, 1);
  session.Disconnect();
  Connect();
  clock.Date = 46347.5;
  RecordingStart(all);
  session.Disconnect();
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
}

TEST_F(Taping, TheUnloadOfTheMapWindowClosesTheTape) {
  Connect();
  RecordingStart(all);
  Synchronise();
  Synchronise();
  RunSteps(MapUnloadSteps(), all);
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
  EXPECT_EQ(Header().RecordCount, 2);
  EXPECT_EQ(Header().SyncInterval, 1000);
}

TEST_F(Taping, AfterAChangeOfThePortRecordingCannotBeginAnew) {
  Connect();
  RecordingStart(all);
  session.DropSocket();
  EXPECT_TRUE(station.Tapes.Recorder.Recording());
  RecordingEnd(all);
  EXPECT_FALSE(MayRecord(all)) << "the socket is closed";
}

TEST_F(Taping, ATapeThatCannotBeMadeIsToldAndTheSessionGoesOn) {
  Connect();
  std::filesystem::create_directory(TapePath());  // the name is taken by a folder
  RecordingStart(all);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_EQ(desk.Boxes[0].Title, "Recording");
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("The tape could not be made: "));
  EXPECT_TRUE(MayRecord(all));
  Synchronise();
  EXPECT_TRUE(station.Session.Connected);
}

#ifndef _WIN32
TEST_F(Taping, AFullDiskIsToldOnceAndTheTapeKeepsItsWholeRecords) {
  Connect();
  RecordingStart(all);
  Synchronise();
  const std::uintmax_t one = std::filesystem::file_size(TapePath());
  {
    const FileLimit limit(one + 5);
    Synchronise();
    Synchronise();
  }
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("The recording has ended: 21-11-26_120000.tap cannot be written: "));
  EXPECT_THAT(desk.Boxes[0].Text, EndsWith(". The tape has been closed with 1 record. The session goes on."));
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
  EXPECT_TRUE(MayRecord(all));
  EXPECT_TRUE(MayLoadTape(station));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), one);
  EXPECT_EQ(Header().RecordCount, 1);
  EXPECT_EQ(Header().SyncInterval, 1000);
  EXPECT_EQ(station.Session.DroppedMessages, 0u);
  EXPECT_TRUE(station.Session.Connected);
}

/// What follows when a count cannot be written any more.
constexpr const char* CountIsLost =
    " The number of its records could not be written, so that it reads as empty; tape-info --repair saves its 2 "
    "records.";

TEST_F(Taping, ACountThatIsLostAfterAFailedRecordIsTold) {
  Connect();
  RecordingStart(all);
  Synchronise();
  Synchronise();
  const std::uintmax_t two = std::filesystem::file_size(TapePath());
  {
    const FileLimit limit(tape::RecordCountAt);
    Synchronise();
    Synchronise();
  }
  ASSERT_THAT(RecordingBoxes(), SizeIs(1));
  EXPECT_THAT(RecordingBoxes()[0], StartsWith("The recording has ended: 21-11-26_120000.tap cannot be written: "));
  EXPECT_THAT(RecordingBoxes()[0], EndsWith("." + std::string(CountIsLost) + " The session goes on."));
  EXPECT_EQ(std::filesystem::file_size(TapePath()), two);
  EXPECT_EQ(Header().RecordCount, 0);
  EXPECT_TRUE(station.Session.Connected);
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
    desk.Boxes.clear();
    clock.Date += 1;
    session.Disconnect();
    Connect();
    RecordingStart(all);
    Synchronise();
    Synchronise();
    {
      const FileLimit limit(tape::RecordCountAt);
      each.Close(all, WS1);
    }
    EXPECT_FALSE(station.Tapes.Recorder.Recording());
    ASSERT_THAT(RecordingBoxes(), SizeIs(1));
    EXPECT_THAT(RecordingBoxes()[0], StartsWith("The tape could not be closed properly: "));
    EXPECT_THAT(RecordingBoxes()[0], EndsWith("." + std::string(CountIsLost)));
    EXPECT_EQ(tape::TapeReader(station.Tapes.Recorder.Path()).Header().RecordCount, 0);
  }
}
#endif

TEST_F(Taping, EachSynchronisationLooksAtTheRoomBesideTheTape) {
  Connect();
  RecordingStart(all);
  ASSERT_TRUE(station.Tapes.FreeBytes) << "the system tells it";
  std::filesystem::path asked;
  std::uint64_t room = 77;
  station.Tapes.FreeSpace = [&](const std::filesystem::path& place) {
    asked = place;
    return room;
  };
  Synchronise();
  EXPECT_EQ(asked, folder.Path / "TAPES");
  EXPECT_EQ(station.Tapes.FreeBytes, 77u);
  room = 76;
  Synchronise();
  EXPECT_EQ(station.Tapes.FreeBytes, 76u);
}

TEST_F(Taping, LessThanTenMinutesOfRoomAreToldOnce) {
  std::optional<std::uint64_t> room = 10000;
  station.Tapes.FreeSpace = [&room](const std::filesystem::path&) { return room; };
  Connect();
  WS1.Arrive(NewPlayer);
  RecordingStart(all);
  // The first one has no cycle.
  for (int n = 0; n < 10; ++n) Synchronise();
  EXPECT_THAT(desk.Boxes, IsEmpty()) << "no rate is known yet";
  Synchronise();
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text,
              StartsWith("The disk will be full in less than 10 minutes if the recording goes on as "
                         "it does: 10.0 kB are free"));
  room = 9000;
  Synchronise();
  EXPECT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(RecordingTip(station), HasSubstr(", 9.0 kB free"));
  room = std::nullopt;
  Synchronise();
  EXPECT_THAT(desk.Boxes, SizeIs(1));
  // Another tape is told of anew.
  RecordingEnd(all);
  clock.Date = 46348;
  room = 9000;
  RecordingStart(all);
  for (int n = 0; n < 10; ++n) Synchronise();
  EXPECT_THAT(desk.Boxes, SizeIs(2));
}

TEST_F(Taping, RoomThatRunsOutAgainIsToldAgain) {
  std::uint64_t room = 9000;
  station.Tapes.FreeSpace = [&room](const std::filesystem::path&) { return room; };
  const auto minutes = [&] { return station.Tapes.Recorder.MinutesLeft(room).value(); };
  Connect();
  WS1.Arrive(NewPlayer);
  RecordingStart(all);
  for (int n = 0; n < 11; ++n) Synchronise();
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  room = 6'000'000;
  Synchronise();
  ASSERT_GT(minutes(), 10);
  ASSERT_LT(minutes(), 20);
  room = 9000;
  Synchronise();
  EXPECT_THAT(desk.Boxes, SizeIs(1)) << "it has only wavered";
  room = 60'000'000;
  Synchronise();
  ASSERT_GT(minutes(), 20);
  EXPECT_THAT(desk.Boxes, SizeIs(1));
  room = 9000;
  Synchronise();
  EXPECT_THAT(desk.Boxes, SizeIs(2));
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
