#include "tape/player.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <utility>

#include "link/client_details.h"
#include "tape/player_fixture.h"
#include "tape/show_record.h"

namespace kestrel::tape {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(TapePlayer, ALoadAsksForTapesInTheirFolder) {
  player.Load(around, folder.Path(), false);
  ASSERT_THAT(desk.FileQuestions, SizeIs(1));
  EXPECT_EQ(desk.FileQuestions[0].Filter, "Tape Files (*.tap)|*.tap");
  EXPECT_EQ(desk.FileQuestions[0].Folder, folder.Path().string());
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile) << "the person has cancelled";
  EXPECT_THAT(host.Calls, IsEmpty());
}

TEST_F(TapePlayer, ALoadIsIgnoredWhileRecording) {
  player.Load(around, folder.Path(), true);
  EXPECT_THAT(desk.FileQuestions, IsEmpty());
}

TEST_F(TapePlayer, ALoadGoesThroughItsStepsInOrder) {
  FillTables();
  LoadTape({0, 2, 5});
  EXPECT_THAT(host.Calls,
              ElementsAre("bullseye of the tape", "show the progress", "hide the progress", "leave the session"));
  EXPECT_THAT(host.Percents, ElementsAre(0, 33, 66, 100));
  EXPECT_EQ(desk.EventRuns, 3) << "events run at each record";
  ASSERT_TRUE(host.Bullseye);
  EXPECT_EQ(host.Bullseye->X, 100);
  EXPECT_EQ(host.Bullseye->Y, 200);
  EXPECT_EQ(State().FileTitle, "21-11-26_120000.tap");
  EXPECT_EQ(State().RecordCount, 3);
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(State().CurTime, At(0));
  EXPECT_EQ(State().SecsBetween, 2);
  EXPECT_EQ(State().ScrollScale, 1);
  EXPECT_EQ(State().BarMaximum, 3);
  EXPECT_EQ(State().BarValue, 1);
  EXPECT_EQ(plots.Clients.UpperBound(), 2u);
  EXPECT_EQ(plots.Clients[1].Label, "Airplane1") << "nothing is kept of the session before";
  EXPECT_EQ(plots.Clients[0].Label, "");
  EXPECT_EQ(plots.Clients[2].History.UpperBound(), 1u);
  const link::AIPlotRecord& plot = plots.AIPlots[1];
  EXPECT_NEAR(plot.X, 100 + std::sin(plot.Bearing * 3.14159265358979 / 180) * plot.Range * 1.852, 1e-3);
  for (const Changed each : {Changed::Tape, Changed::Roster, Changed::AIList, Changed::Plots}) {
    EXPECT_TRUE(Has(host.Refreshed, each));
  }
}

TEST_F(TapePlayer, ATapeIsNotRefusedForItsBullseye) {
  const std::string records = GoldenTape(2, {0, 1}).substr(41);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    BullseyePlace Place;
    bool IsPlace;
  } cases[] = {{{100, -1e300}, true},
               {{-5000, 200}, true},
               {{1e300, 1e300}, true},
               {{nan, 200}, false},
               {{100, -infinity}, false}};
  for (const auto& each : cases) {
    SCOPED_TRACE(testing::Message() << each.Place.X << ", " << each.Place.Y);
    host.Notes.clear();
    Write(test::GoldenHeader(2, 1000, At(0), each.Place.X, each.Place.Y) + records);
    Load();
    EXPECT_THAT(desk.Boxes, IsEmpty());
    EXPECT_EQ(State().Phase, PlayerPhase::Stopped);
    EXPECT_EQ(plots.AIPlots.UpperBound(), 2u);
    ASSERT_TRUE(host.Bullseye);
    EXPECT_EQ(host.Bullseye->IsPlace(), each.IsPlace);
    if (each.IsPlace) {
      EXPECT_EQ(host.Bullseye->X, each.Place.X);
      EXPECT_EQ(host.Bullseye->Y, each.Place.Y);
      EXPECT_THAT(host.Notes, IsEmpty());
    } else {
      EXPECT_THAT(host.Notes, ElementsAre("The bullseye of the tape 21-11-26_120000.tap is no place on a map; the "
                                          "theater's own stands for it"));
    }
    player.Close(around);
  }
}

TEST_F(TapePlayer, WhileATapeIsBeingIndexedAnotherOneIsNotLoaded) {
  WriteTape({0, 1});
  std::vector<PlayerPhase> seen;
  desk.WhenEventsRun = [&] {
    seen.push_back(State().Phase);
    player.Load(around, folder.Path(), false);
    player.Play(around);
    player.Close(around);
    player.MoveBar(around, 2);
  };
  Load();
  EXPECT_THAT(seen, ElementsAre(PlayerPhase::Loading, PlayerPhase::Loading));
  EXPECT_THAT(desk.FileQuestions, SizeIs(1));
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped);
  EXPECT_EQ(State().CurPoint, 1);
}

struct Scale {
  std::int32_t Records;
  std::int16_t ScrollScale;
  std::int32_t Maximum;
};

TEST_F(TapePlayer, ThePositionBarStaysWithin16Bits) {
  // One empty record takes 8 bytes and two empty arrays.
  const std::string record = test::BytesF64(At(0)) + test::TapeArray(0) + test::TapeArray(0);
  for (const Scale& each :
       {Scale{32766, 1, 32766}, Scale{32767, 2, 16383}, Scale{65533, 2, 32766}, Scale{65534, 3, 21844}}) {
    std::string bytes = test::GoldenHeader(each.Records, 0, At(0), 0, 0);
    for (std::int32_t n = 0; n < each.Records; ++n) bytes += record;
    Write(bytes);
    Load();
    ASSERT_TRUE(State().Loaded());
    EXPECT_EQ(State().ScrollScale, each.ScrollScale) << each.Records;
    EXPECT_EQ(State().BarMaximum, each.Maximum) << each.Records;
    EXPECT_EQ(State().BarMinimum, each.ScrollScale == 1 ? 1 : 0);
    player.Close(around);
  }
}

TEST_F(TapePlayer, TheBarOverflowsAbove32767AndLosesNothing) {
  const std::string record = test::BytesF64(At(0)) + test::TapeArray(0) + test::TapeArray(0);
  std::string bytes = test::GoldenHeader(40000, 0, At(0), 0, 0);
  for (int n = 0; n < 40000; ++n) bytes += record;
  Write(bytes);
  Load();
  ASSERT_EQ(State().ScrollScale, 2);
  player.MoveBar(around, 16383);
  EXPECT_EQ(State().CurPoint, 32766);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  player.MoveBar(around, 16384);
  ASSERT_THAT(desk.Boxes, SizeIs(1));
  EXPECT_THAT(desk.Boxes[0].Text, StartsWith("The position bar reaches no further than record 32767 of a tape."));
  EXPECT_EQ(State().CurPoint, 32766);
  EXPECT_EQ(State().BarValue, 16383) << "the bar is back where it was";
  // What lies beyond is reached by playing.
  player.Play(around);
  for (int n = 0; n < 3; ++n) player.Tick(around);
  EXPECT_EQ(State().CurPoint, 32769);
  EXPECT_EQ(State().BarValue, 16384);
}

TEST_F(TapePlayer, TheBarOfALongTapeBeginsAtAnEmptyPicture) {
  const std::string record = test::GoldenRecord(At(0), test::SampleTables(1, 1, 1));
  std::string bytes = test::GoldenHeader(32767, 0, At(0), 0, 0);
  for (int n = 0; n < 32767; ++n) bytes += record;
  Write(bytes);
  Load();
  EXPECT_EQ(State().BarValue, 0);
  player.MoveBar(around, 0);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_EQ(State().CurPoint, 0);
  EXPECT_TRUE(plots.Clients.Empty());
  EXPECT_TRUE(plots.AIPlots.Empty());
  player.Play(around);
  player.Tick(around);
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(plots.Clients.UpperBound(), 1u);
}

TEST_F(TapePlayer, PlayStepsThroughTheRecordsAndStopsBehindTheLastOne) {
  LoadTape({0, 2, 5});
  player.Play(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Playing);
  EXPECT_EQ(State().TimerInterval, 2000);
  player.Tick(around);
  EXPECT_EQ(State().CurPoint, 2);
  EXPECT_EQ(State().CurTime, At(2));
  EXPECT_EQ(State().SecsBetween, 3);
  EXPECT_EQ(State().TimerInterval, 2000) << "the interval is that of the moment when play began";
  player.Tick(around);
  EXPECT_EQ(State().CurPoint, 3);
  EXPECT_EQ(State().SecsBetween, 3) << "the last record changes no gap";
  player.Tick(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped);
  EXPECT_EQ(State().CurPoint, 1);
  EXPECT_EQ(State().CurTime, At(0));
  EXPECT_EQ(State().BarValue, 1);
  player.Tick(around);
  EXPECT_EQ(State().CurPoint, 1) << "a stopped tape does not run";
}

TEST_F(TapePlayer, PauseStandsStillAndPlayGoesOnAtTheGapOfThatMoment) {
  LoadTape({0, 2, 5});
  player.Pause(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped) << "only a playing tape pauses";
  player.Play(around);
  player.Tick(around);
  player.Pause(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Paused);
  player.Tick(around);
  EXPECT_EQ(State().CurPoint, 2);
  player.Play(around);
  EXPECT_EQ(State().TimerInterval, 3000);
}

TEST_F(TapePlayer, SpeedIsAPowerOfTwoAndSetsTheIntervalAnew) {
  EXPECT_EQ(State().Speed, 1);
  LoadTape({0, 3, 6});
  player.Play(around);
  const std::pair<int, int> intervals[] = {{0, 3000}, {1, 1500}, {2, 750}, {3, 375}, {4, 187}};
  for (const auto& [step, interval] : intervals) {
    player.SetSpeed(around, step);
    EXPECT_EQ(State().Speed, 1 << step);
    EXPECT_EQ(State().TimerInterval, interval) << "cut to a whole number";
  }
  player.SetSpeed(around, 99);
  EXPECT_EQ(State().Speed, 16);
  player.Close(around);
  EXPECT_EQ(State().Speed, 16) << "the slider stays where it is";
}

TEST_F(TapePlayer, RecordsLessThanASecondApartGiveAnIntervalOf0) {
  LoadTape({0, 0.7, 1.4});
  EXPECT_EQ(State().SecsBetween, 0);
  player.Play(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Playing);
  EXPECT_EQ(State().TimerInterval, 0) << "the timer never fires";
  player.MoveBar(around, 3);
  EXPECT_EQ(State().CurPoint, 3) << "the bar still works";
}

TEST_F(TapePlayer, GapsAreWholeSecondsOfDatesThatAreNot) {
  std::vector<double> seconds;
  for (int n = 0; n < 200; ++n) seconds.push_back(n);
  LoadTape(seconds);
  for (int point = 1; point < 200; ++point) {
    player.ShowRecPoint(around, point);
    ASSERT_EQ(State().SecsBetween, 1) << point;
  }
}

TEST_F(TapePlayer, GapsAreCutWhereTheyAreNotWholeButForTheRoundingOfTheirDates) {
  LoadTape({0, 0.9999, 3, 5.9991});
  const std::int32_t gaps[] = {0, 2, 2};
  for (std::int32_t point = 1; point <= 3; ++point) {
    player.ShowRecPoint(around, point);
    EXPECT_EQ(State().SecsBetween, gaps[point - 1]) << point;
  }
}

TEST_F(TapePlayer, ATimeOf0TellsNoGap) {
  std::string bytes = test::GoldenHeader(3, 0, At(0), 0, 0);
  // 0, and then three and five seconds of the first day that a date can tell.
  for (const double time : {0.0, 3 / secondsPerDay, 8 / secondsPerDay}) bytes += test::GoldenRecord(time, {});
  Write(bytes);
  Load();
  EXPECT_EQ(State().SecsBetween, 0);
  player.ShowRecPoint(around, 2);
  EXPECT_EQ(State().SecsBetween, 5);
  player.ShowRecPoint(around, 1);
  EXPECT_EQ(State().SecsBetween, 5) << "it stays as it was";
}

TEST_F(TapePlayer, TheTimerIsStartedByPlayAndByTheSpeedAlone) {
  LoadTape({0, 2, 5, 9});
  EXPECT_EQ(State().TimerStarts, 0u);
  player.Play(around);
  EXPECT_EQ(State().TimerStarts, 1u);
  EXPECT_EQ(State().TimerInterval, 2000);
  player.Tick(around);
  player.MoveBar(around, 3);
  EXPECT_EQ(State().TimerStarts, 1u) << "records on show start nothing";
  EXPECT_EQ(State().TimerInterval, 2000);
  player.SetSpeed(around, 1);
  EXPECT_EQ(State().TimerStarts, 2u) << "a timer that runs is started anew";
  EXPECT_EQ(State().TimerInterval, 2000) << "4 seconds from the third record to the fourth, at x2";
  player.SetSpeed(around, 1);
  EXPECT_EQ(State().TimerStarts, 3u);
  player.Pause(around);
  EXPECT_EQ(State().TimerStarts, 3u);
  player.Play(around);
  EXPECT_EQ(State().TimerStarts, 4u);
  player.Stop(around);
  EXPECT_EQ(State().TimerStarts, 4u);
  player.Close(around);
  EXPECT_EQ(State().TimerStarts, 4u);
}

TEST_F(TapePlayer, ATapeThatGoesBackInTimeDoesNotRunByItself) {
  LoadTape({10, 0, 20});
  EXPECT_EQ(State().SecsBetween, -10);
  player.Play(around);
  EXPECT_EQ(State().TimerInterval, 0);
}

TEST_F(TapePlayer, GapsThatCannotBeToldLeaveTheGapAsItWas) {
  std::string bytes = test::GoldenHeader(5, 0, At(0), 0, 0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double time : {At(0), At(4), nan, 1e300, 0.0}) bytes += test::GoldenRecord(time, {});
  Write(bytes);
  Load();
  EXPECT_EQ(State().SecsBetween, 4);
  for (const std::int32_t point : {2, 3, 4, 5}) {
    EXPECT_TRUE(player.ShowRecPoint(around, point));
    EXPECT_EQ(State().SecsBetween, 4) << point;
  }
  player.Play(around);
}

TEST_F(TapePlayer, StopReadsTheHeaderAgain) {
  LoadTape({0, 2, 5});
  player.Play(around);
  player.Tick(around);
  WriteOver(GoldenTape(2, {0, 2, 5}));
  player.Stop(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped);
  EXPECT_EQ(State().RecordCount, 2);
  EXPECT_EQ(State().CurPoint, 1);
  player.Play(around);
  player.Tick(around);
  player.Tick(around);
  EXPECT_EQ(State().Phase, PlayerPhase::Stopped) << "the tape ends after its second record now";
}

TEST_F(TapePlayer, CloseEmptiesTheTablesAndBringsTheBullseyeBack) {
  LoadTape({0, 2, 5});
  player.Play(around);
  player.Tick(around);
  link::SelectPlot("102N", plots, session);
  ASSERT_TRUE(session.Details.Enabled);
  plots.FriendlyList.Append("Viper");
  host.Calls.clear();
  host.Refreshed = Changed::Nothing;
  player.Close(around);
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
  EXPECT_EQ(State().FileTitle, "");
  EXPECT_EQ(State().CurPoint, 0);
  EXPECT_EQ(State().BarValue, 1);
  EXPECT_TRUE(plots.Clients.Empty());
  EXPECT_TRUE(plots.AIPlots.Empty());
  EXPECT_TRUE(plots.AIHistory.Empty());
  EXPECT_FALSE(plots.FriendlyList.Empty());
  EXPECT_EQ(session.SelectedPlot, 0u);
  EXPECT_FALSE(session.Details.Enabled);
  EXPECT_THAT(host.Calls, ElementsAre("bullseye of the theater"));
  EXPECT_TRUE(Has(host.Refreshed, Changed::Map));
  EXPECT_TRUE(Has(host.Refreshed, Changed::Tape));
  player.Close(around);
  player.Play(around);
  player.Stop(around);
  player.Tick(around);
  player.MoveBar(around, 1);
  EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
  EXPECT_THAT(desk.Boxes, IsEmpty());
}

TEST_F(TapePlayer, ASecondTapeStartsAfresh) {
  LoadTape({0, 2, 5});
  plots.Clients[1].Label = "Eagle 1";
  player.Close(around);
  LoadTape({0, 1});
  EXPECT_EQ(plots.Clients[1].Label, "Airplane1");
  EXPECT_EQ(State().RecordCount, 2);
}

TEST_F(TapePlayer, EditsStayThroughPlayJumpAndStop) {
  LoadTape({0, 2, 5});
  plots.Clients[2].Label = "Eagle 1";
  plots.Clients[2].PlotVisible = false;
  player.Play(around);
  player.Tick(around);
  EXPECT_EQ(plots.Clients[2].Label, "Eagle 1");
  player.MoveBar(around, 3);
  EXPECT_FALSE(plots.Clients[2].PlotVisible);
  player.Stop(around);
  EXPECT_EQ(plots.Clients[2].Label, "Eagle 1");
  EXPECT_FALSE(plots.Clients[2].PlotVisible);
}

/// Records with holes in them between the first and the last one, so that the last lies beyond 2 GB and the disk need
/// not hold it.
TEST_F(TapePlayer, RecordsBeyond2GBAreReached) {
  constexpr int holes = 12;
  constexpr std::uint64_t points = 12'000'000;  // of a client's history, 16 bytes each
  std::string client = test::GoldenClient(link::PlotRecord{});
  client.resize(client.size() - test::TapeArray(1).size() - 16);
  std::ofstream file(path, std::ios::binary);
  file << test::GoldenHeader(holes + 2, 1000, At(0), 100, 200) << test::GoldenRecord(At(0), {});
  for (int n = 1; n <= holes; ++n) {
    file << test::BytesF64(At(n)) << test::TapeArray(0) << test::TapeArray(1) << client << test::TapeArray(points);
    file.seekp(static_cast<std::streamoff>(points * 16), std::ios::cur);
  }
  ASSERT_GT(static_cast<std::uint64_t>(file.tellp()), std::uint64_t{1} << 31);
  file << test::GoldenRecord(At(60), test::SampleTables(2, 2, 3));
  file.close();
  ASSERT_TRUE(file);
  Load();
  ASSERT_THAT(desk.Boxes, IsEmpty()) << desk.Boxes[0].Text;
  player.MoveBar(around, holes + 2);
  EXPECT_THAT(desk.Boxes, IsEmpty());
  EXPECT_EQ(State().CurTime, At(60));
  ASSERT_EQ(plots.Clients.UpperBound(), 2u);
  EXPECT_EQ(plots.Clients[2].Name, "Pilot 2");
}

}  // namespace
}  // namespace kestrel::tape
