// A tape that takes the place of the session.

#include <limits>
#include <optional>

#include "core/tapes.h"
#include "core/taping_fixture.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(Taping, ALoadEndsTheConnectionAfterTheIndexAndShowsTheFirstRecord) {
  RecordTape(3);
  WS1.Log.clear();
  Shown.Refreshes.clear();
  Load();
  EXPECT_THAT(Desk.Boxes, IsEmpty());
  EXPECT_THAT(WS1.Log, ElementsAre("send AWAEND", "close"));
  EXPECT_FALSE(State.Session.Connected);
  EXPECT_THAT(Shown.Loading, ElementsAre(0, 33, 66, 100, std::nullopt));
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
  EXPECT_FALSE(MayLoadTape(State));
  ASSERT_EQ(State.Plots.Clients.UpperBound(), 1u);
  EXPECT_EQ(State.Plots.Clients[1].Label, "Airplane1");
  for (const Changed each : {Changed::Tape, Changed::Connection, Changed::Roster, Changed::AIList, Changed::Map}) {
    EXPECT_TRUE(Has(AllRefreshed(), each)) << static_cast<unsigned>(each);
  }
}

TEST_F(Taping, ALoadLeavesAConnectionThatIsNotAnsweredYetToo) {
  RecordTape(2);
  Link.Disconnect();
  Link.ConnectToEntry(1);
  Load();
  EXPECT_EQ(WS1.State(), link::SocketState::Closed);
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
}

TEST_F(Taping, ALoadWithoutASessionSendsNothing) {
  RecordTape(2);
  Link.Disconnect();
  WS1.Log.clear();
  Desk.EventRuns = 0;
  Load();
  EXPECT_THAT(WS1.Log, IsEmpty());
  EXPECT_EQ(Desk.EventRuns, 2) << "one for each record, and no farewell to wait for";
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
}

TEST_F(Taping, ALoadDoesNothingWhileRecording) {
  RecordTape(2);
  Clock.Date = 46348;
  RecordingStart(All);
  Load();
  EXPECT_THAT(Desk.FileQuestions, IsEmpty());
  EXPECT_TRUE(State.Session.Connected);
}

TEST_F(Taping, ARecordingThatBeginsDuringTheIndexIsClosedWithTheConnection) {
  RecordTape(2);
  bool begun = false;
  Desk.WhenEventsRun = [&] {
    if (begun) return;
    begun = true;
    Clock.Date = 46348.25;
    RecordingStart(All);
  };
  Load();
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
}

TEST_F(Taping, TheTapesBullseyeIsInForceUntilItIsClosed) {
  RecordTape(2);
  SelectBullseye(All, 2);
  EXPECT_EQ(State.Session.Bull.X, 300);
  Load();
  EXPECT_EQ(State.Session.Bull.X, 100);
  EXPECT_EQ(State.Session.Bull.Y, 1024 - 200);
  EXPECT_EQ(State.View.BullsViewX, 1500);
  // Whatever reloads it meanwhile; another theater has another size.
  ReloadBulls(State);
  EXPECT_EQ(State.Session.Bull.X, 100);
  SwitchTheater(All, 2);
  EXPECT_EQ(State.Session.Bull.X, 100);
  EXPECT_EQ(State.Session.Bull.Y, 2048 - 200);
  SwitchTheater(All, 1);
  CloseTape(All);
  EXPECT_EQ(State.Session.Bull.X, 300);
  EXPECT_EQ(State.View.BullsViewX, 4500);
  EXPECT_FALSE(State.Tapes.Bullseye);
}

TEST_F(Taping, ABullseyeThatIsNoPlaceCountsAsTheTheatersOwn) {
  RecordTape(2);
  std::string bytes = test::ReadBytes(TapePath());
  bytes.replace(25, 8, test::BytesF64(std::numeric_limits<double>::quiet_NaN()));
  test::WriteBytes(TapePath(), bytes);
  SelectBullseye(All, 2);
  Log.File.Open(folder.Path / "log.txt");
  Load();
  Log.File.Close();
  EXPECT_THAT(Desk.Boxes, IsEmpty());
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
  EXPECT_THAT(folder.Read("log.txt"), HasSubstr("the theater's own stands for it"));
  EXPECT_EQ(State.Session.Bull.X, 300);
  EXPECT_EQ(State.View.BullsViewX, 4500);
  EXPECT_TRUE(State.Tapes.Bullseye) << "it cannot be changed while the tape is loaded";
  SwitchTheater(All, 2);
  EXPECT_EQ(State.Session.Bull.X, 1024) << "the middle of a theater without bullseyes";
  CloseTape(All);
  EXPECT_FALSE(State.Tapes.Bullseye);
}

TEST_F(Taping, ATapeThatCannotBeLoadedLeavesSessionTablesAndBullseye) {
  RecordTape(2);
  std::filesystem::resize_file(TapePath(), std::filesystem::file_size(TapePath()) - 1);
  SelectBullseye(All, 2);
  Log.File.Open(folder.Path / "log.txt");
  Load();
  Log.File.Close();
  EXPECT_THAT(folder.Read("log.txt"), HasSubstr("The tape 21-11-26_120000.tap cannot be loaded: an array of the tape"));
  ASSERT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_EQ(Desk.Boxes[0].Title, "Error: Wrong file format.");
  EXPECT_TRUE(State.Session.Connected);
  EXPECT_EQ(WS1.State(), link::SocketState::Connected);
  EXPECT_EQ(State.Plots.Clients.UpperBound(), 1u);
  EXPECT_EQ(State.Plots.Clients[1].Label, "Airplane 5");
  EXPECT_EQ(State.Session.Bull.X, 300);
  EXPECT_EQ(Shown.Loading.back(), std::nullopt);
  EXPECT_TRUE(MayLoadTape(State));
}

TEST_F(Taping, WhatWasRecordedIsWhatIsReplayed) {
  Connect();
  State.Plots.FriendlyList.Append("Viper");
  // Numbers that would not come back to the bit from Size - Y.
  theaters::Bullseye& bull = State.Catalogue.Current().Bulls[1];
  bull.X = 654.321;
  bull.Y = 123.456;
  ReloadBulls(State);
  WS1.Arrive(NewPlayer);
  RecordingStart(All);
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
    session5.push_back(State.Plots);
    records += test::GoldenRecord(Clock.Date, State.Plots);
  }
  RecordingEnd(All);
  EXPECT_FALSE(State.Plots.Clients[0].PlotVisible) << "the dummy of the table is written as it is";
  EXPECT_TRUE(test::ReadBytes(TapePath()) == test::GoldenHeader(4, 1000, 46347.5, 654.321, 123.456) + records);
  Load();
  PlayTape(All);
  for (std::size_t n = 0; n < session5.size(); ++n) {
    const link::PlotRecord& live = session5[n].Clients[1];
    const link::PlotRecord& replayed = State.Plots.Clients[1];
    EXPECT_EQ(replayed.X, live.X) << n;
    EXPECT_EQ(replayed.Y, live.Y);
    EXPECT_EQ(replayed.Speed, live.Speed);
    EXPECT_EQ(replayed.PosText, live.PosText);
    EXPECT_EQ(replayed.History.UpperBound(), live.History.UpperBound());
    EXPECT_FLOAT_EQ(State.Plots.AIPlots[1].X, session5[n].AIPlots[1].X);
    EXPECT_FLOAT_EQ(State.Plots.AIPlots[1].Y, session5[n].AIPlots[1].Y);
    EXPECT_EQ(State.Plots.AIPlots[1].Hostile, session5[n].AIPlots[1].Hostile);
    TapeTick(All);
  }
  EXPECT_EQ(State.Tapes.Player.State().Phase, tape::PlayerPhase::Stopped);
}

TEST_F(Taping, ControlsReachThePlayer) {
  RecordTape(3);
  Load();
  SetTapeSpeed(All, 2);
  PlayTape(All);
  const tape::PlayerState& player = State.Tapes.Player.State();
  EXPECT_EQ(player.TimerInterval, 250);
  TapeTick(All);
  EXPECT_EQ(player.CurPoint, 2);
  PauseTape(All);
  EXPECT_EQ(player.Phase, tape::PlayerPhase::Paused);
  MoveTape(All, 3);
  EXPECT_EQ(player.CurPoint, 3);
  StopTape(All);
  EXPECT_EQ(player.CurPoint, 1);
  CloseTape(All);
  EXPECT_EQ(player.Phase, tape::PlayerPhase::NoFile);
  EXPECT_TRUE(State.Plots.Clients.Empty());
  Connect();
  EXPECT_TRUE(MayRecord(All));
}

}  // namespace
}  // namespace kestrel::core
