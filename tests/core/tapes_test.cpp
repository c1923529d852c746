#include "core/tapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>
#endif

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "core/theater_switch.h"
#include "station_folder.h"
#include "tape/golden_tape.h"
#include "tape/reader.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string NewPlayer(
    "NEWCLT5\x1eSmith\x1e"
    "F-16\x1eO\0",
    21);

/// The host of a session that hands the tapes on, as the windows do.
class TapeHost final : public link::SessionHost {
 public:
  std::uint8_t ChooseChannel(std::uint8_t) override { return 0; }
  void Refresh(Changed what) override { Owner->Shown.Refresh(what); }
  void ComputeRecData() override { core::ComputeRecData(*Owner); }
  void RecordingEnd() override { core::RecordingEnd(*Owner); }
  Program* Owner = nullptr;
};

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

class Taping : public testing::Test {
 protected:
  Taping() {
    WriteInstallation(folder);
    host.Owner = &all;
    station.AppPath = folder.Path;
    EXPECT_TRUE(Main(all));
    RunSteps(FrameLoadSteps(), all);
    RunSteps(MapLoadSteps(), all);
    shown.Refreshes.clear();
    clock.Date = 46347.5;  // 2026-11-21, noon
    clock.Ticks = 5000;
  }

  void Connect() {
    session.ConnectToEntry(1);
    WS1.Accept();
    ASSERT_TRUE(station.Session.Connected);
  }
  void Synchronise() {
    clock.Ticks += 1000;
    clock.Date += 1.0 / 86400;
    WS1.Arrive(std::string("SYNCRO\0", 7));
  }
  /// A session with one player and a tape of `records` records, closed.
  void RecordTape(int records) {
    Connect();
    WS1.Arrive(NewPlayer);
    RecordingStart(all);
    for (int n = 0; n < records; ++n) Synchronise();
    RecordingEnd(all);
  }
  std::filesystem::path TapePath() const { return folder.Path / "TAPES" / "21-11-26_120000.tap"; }
  tape::TapeHeader Header() { return tape::TapeReader(TapePath()).Header(); }
  void Load() {
    desk.FileAnswers = {TapePath().string()};
    LoadTape(all);
  }
  /// The boxes about the recording, of all that were shown.
  std::vector<std::string> RecordingBoxes() const {
    std::vector<std::string> texts;
    for (const auto& box : desk.Boxes) {
      if (box.Title == "Recording") texts.push_back(box.Text);
    }
    return texts;
  }
  Changed AllRefreshed() const {
    Changed what = Changed::Nothing;
    for (const Changed each : shown.Refreshes) what |= each;
    return what;
  }

  ProgramFolder folder;
  Station station;
  doubles::FakeClock clock;
  doubles::ScriptedDesktop desk;
  doubles::RecordingWindows shown;
  base::DebugLog log{clock};
  link::Capture raw{clock};
  doubles::FakeSocket WS1;
  TapeHost host;
  link::Session session{WS1, desk, host, log, raw, station.Session, station.Plots, station.LinkOptions};
  doubles::FakeGlobalKeys keys;
  doubles::FakeVoice voiceWindows;
  radio::VoiceBridge voice{voiceWindows, station.VoiceWindowName};
  Program all{station, desk, shown, log, raw, session, keys, voice};
};

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

TEST_F(Taping, ALoadEndsTheConnectionAfterTheIndexAndShowsTheFirstRecord) {
  RecordTape(3);
  WS1.Log.clear();
  shown.Refreshes.clear();
  Load();
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_THAT(WS1.Log, ElementsAre("send AWAEND", "close"));
  EXPECT_FALSE(station.Session.Connected);
  EXPECT_THAT(shown.Loading, ElementsAre(0, 33, 66, 100, std::nullopt));
  EXPECT_TRUE(station.Tapes.Player.State().Loaded());
  EXPECT_FALSE(MayLoadTape(station));
  ASSERT_EQ(station.Plots.Clients.UpperBound(), 1u);
  EXPECT_EQ(station.Plots.Clients[1].Label, "Airplane1");
  for (const Changed each : {Changed::Tape, Changed::Connection, Changed::Roster, Changed::AIList, Changed::Map}) {
    EXPECT_TRUE(Has(AllRefreshed(), each)) << static_cast<unsigned>(each);
  }
}

TEST_F(Taping, ALoadLeavesAConnectionThatIsNotAnsweredYetToo) {
  RecordTape(2);
  session.Disconnect();
  session.ConnectToEntry(1);
  Load();
  EXPECT_EQ(WS1.State(), link::SocketState::Closed);
  EXPECT_TRUE(station.Tapes.Player.State().Loaded());
}

TEST_F(Taping, ALoadDoesNothingWhileRecording) {
  RecordTape(2);
  clock.Date = 46348;
  RecordingStart(all);
  Load();
  EXPECT_THAT(desk.FileQuestions, IsEmpty());
  EXPECT_TRUE(station.Session.Connected);
}

TEST_F(Taping, ARecordingThatBeginsDuringTheIndexIsClosedWithTheConnection) {
  RecordTape(2);
  bool begun = false;
  desk.WhenEventsRun = [&] {
    if (begun) return;
    begun = true;
    clock.Date = 46348.25;
    RecordingStart(all);
  };
  Load();
  EXPECT_FALSE(station.Tapes.Recorder.Recording());
  EXPECT_TRUE(station.Tapes.Player.State().Loaded());
}

TEST_F(Taping, TheTapesBullseyeIsInForceUntilItIsClosed) {
  RecordTape(2);
  SelectBullseye(all, 2);
  EXPECT_EQ(station.Session.Bull.X, 300);
  Load();
  EXPECT_EQ(station.Session.Bull.X, 100);
  EXPECT_EQ(station.Session.Bull.Y, 1024 - 200);
  EXPECT_EQ(station.View.BullsViewX, 1500);
  // Whatever reloads it meanwhile; another theater has another size.
  ReloadBulls(station);
  EXPECT_EQ(station.Session.Bull.X, 100);
  SwitchTheater(all, 2);
  EXPECT_EQ(station.Session.Bull.X, 100);
  EXPECT_EQ(station.Session.Bull.Y, 2048 - 200);
  SwitchTheater(all, 1);
  CloseTape(all);
  EXPECT_EQ(station.Session.Bull.X, 300);
  EXPECT_EQ(station.View.BullsViewX, 4500);
  EXPECT_FALSE(station.Tapes.Bullseye);
}

TEST_F(Taping, ATapeThatCannotBeLoadedLeavesSessionTablesAndBullseye) {
  RecordTape(2);
  std::filesystem::resize_file(TapePath(), std::filesystem::file_size(TapePath()) - 1);
  SelectBullseye(all, 2);
  log.File.Open(folder.Path / "log.txt");
  Load();
  log.File.Close();
  EXPECT_THAT(folder.Read("log.txt"), HasSubstr("The tape 21-11-26_120000.tap cannot be loaded: an array of the tape"));
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_EQ(desk.Boxes[0].Title, "Error: Wrong file format.");
  EXPECT_TRUE(station.Session.Connected);
  EXPECT_EQ(WS1.State(), link::SocketState::Connected);
  EXPECT_EQ(station.Plots.Clients.UpperBound(), 1u);
  EXPECT_EQ(station.Plots.Clients[1].Label, "Airplane 5");
  EXPECT_EQ(station.Session.Bull.X, 300);
  EXPECT_EQ(shown.Loading.back(), std::nullopt);
  EXPECT_TRUE(MayLoadTape(station));
}

TEST_F(Taping, WhatWasRecordedIsWhatIsReplayed) {
  Connect();
  station.Plots.FriendlyList.Append("Viper");
  // Numbers that would not come back to the bit from Size - Y.
  theaters::Bullseye& bull = station.Catalogue.Current().Bulls[1];
  bull.X = 654.321;
  bull.Y = 123.456;
  ReloadBulls(station);
  WS1.Arrive(NewPlayer);
  RecordingStart(all);
  std::vector<link::Tables> session5;
  std::string records;
  for (int n = 0; n < 4; ++n) {
    std::string position = std::to_string(1000000 + 5000 * n);
    position.insert(0, 12 - position.size(), ' ');
    std::string arrival = "INDATA5\x1e" + position + position + "       21000";
    arrival += '\0';
    arrival += "AILOCAViper1    09" + std::to_string(n) + "01021";
    arrival += '\0';
    WS1.Arrive(arrival);
    Synchronise();
    session5.push_back(station.Plots);
    records += test::GoldenRecord(clock.Date, station.Plots);
  }
  RecordingEnd(all);
  EXPECT_TRUE(station.Plots.Clients[0].PlotVisible) << "the dummy of the table is written as it is";
  EXPECT_TRUE(test::ReadBytes(TapePath()) == test::GoldenHeader(4, 1000, 46347.5, 654.321, 123.456) + records);
  Load();
  PlayTape(all);
  for (std::size_t n = 0; n < session5.size(); ++n) {
    const link::PlotRecord& live = session5[n].Clients[1];
    const link::PlotRecord& replayed = station.Plots.Clients[1];
    EXPECT_EQ(replayed.X, live.X) << n;
    EXPECT_EQ(replayed.Y, live.Y);
    EXPECT_EQ(replayed.Speed, live.Speed);
    EXPECT_EQ(replayed.PosText, live.PosText);
    EXPECT_EQ(replayed.History.UpperBound(), live.History.UpperBound());
    EXPECT_EQ(station.Plots.AIPlots[1].X, session5[n].AIPlots[1].X);
    EXPECT_EQ(station.Plots.AIPlots[1].Y, session5[n].AIPlots[1].Y);
    EXPECT_EQ(station.Plots.AIPlots[1].Hostile, session5[n].AIPlots[1].Hostile);
    TapeTick(all);
  }
  EXPECT_EQ(station.Tapes.Player.State().Phase, tape::PlayerPhase::Stopped);
}

TEST_F(Taping, ControlsReachThePlayer) {
  RecordTape(3);
  Load();
  SetTapeSpeed(all, 2);
  PlayTape(all);
  const tape::PlayerState& player = station.Tapes.Player.State();
  EXPECT_EQ(player.TimerInterval, 250);
  TapeTick(all);
  EXPECT_EQ(player.CurPoint, 2);
  PauseTape(all);
  EXPECT_EQ(player.Phase, tape::PlayerPhase::Paused);
  MoveTape(all, 3);
  EXPECT_EQ(player.CurPoint, 3);
  StopTape(all);
  EXPECT_EQ(player.CurPoint, 1);
  CloseTape(all);
  EXPECT_EQ(player.Phase, tape::PlayerPhase::NoFile);
  EXPECT_TRUE(station.Plots.Clients.Empty());
  Connect();
  EXPECT_TRUE(MayRecord(all));
}

}  // namespace
}  // namespace kestrel::core
