// A link that is lost, silent or without a session, by hand-worked times: the clock stands where the test puts it.

#include "core/healing.h"

#include <limits>

#include "core/taping_fixture.h"
#include "core/view_options.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class HealedLink : public Taping {
 protected:
  HealedLink() { Clock.Ticks = 100'000; }

  LinkTrouble Trouble() const { return State.Healing.Trouble; }
  /// `seconds` pass, with a look at the link twice in each.
  void Pass(int seconds) {
    for (int half = 0; half < 2 * seconds; ++half) {
      Clock.Ticks += 500;
      Clock.Date += 0.5 / 86400;
      LinkTick(All);
    }
  }
  /// Seconds from now until the server is called; at most 99.
  int SecondsToTheCall() {
    const int before = WS1.Connects;
    for (int second = 1; second < 100; ++second) {
      Pass(1);
      if (WS1.Connects > before) return second;
    }
    return 99;
  }
  void Reconnecting(bool on) {
    if (State.HealingOptions.RECONNECT != on) ToggleOption(All, "chkReconnect");
  }
  void Lose() {
    Connect();
    WS1.Arrive(NewPlayer);
    WS1.PeerCloses();
    ASSERT_EQ(Trouble(), LinkTrouble::Lost);
  }
};

TEST_F(HealedLink, CallsAfterOneTwoFourUpToThirtySeconds) {
  std::vector<std::uint32_t> waits;
  for (std::uint32_t calls = 0; calls < 8; ++calls) waits.push_back(CallAgainAfter(calls));
  EXPECT_THAT(waits, ElementsAre(1000, 2000, 4000, 8000, 16'000, 30'000, 30'000, 30'000));
  EXPECT_EQ(CallAgainAfter(std::numeric_limits<std::uint32_t>::max()), 30'000U);
}

TEST_F(HealedLink, LostOneIsTimedAndCalledByNobodyAsTheStationShips) {
  Clock.Date = 46347 + (20 * 3600 + 14 * 60 + 3) / 86400.0;
  Lose();
  EXPECT_EQ(LinkText(All), "LOST 20:14:03, 0 s ago");
  EXPECT_EQ(LinkDetail(All), "The server has closed the connection.");
  EXPECT_EQ(State.Plots.Clients.UpperBound(), 0U) << "ended as ever";
  Pass(35);
  EXPECT_EQ(LinkText(All), "LOST 20:14:03, 35 s ago");
  Pass(65);
  EXPECT_EQ(LinkText(All), "LOST 20:14:03, 1 min 40 s ago");
  Pass(3720 - 100);
  EXPECT_EQ(LinkText(All), "LOST 20:14:03, 1 h 2 min ago");
  EXPECT_EQ(WS1.Connects, 1);
}

TEST_F(HealedLink, ByItselfItIsCalledAtGrowingTimesWithALineEachAndNoBox) {
  Log.File.Open(folder.Path / "log.txt");
  Reconnecting(true);
  Lose();
  const std::string host = WS1.Host;
  std::vector<int> waits;
  for (int call = 0; call < 7; ++call) {
    waits.push_back(SecondsToTheCall());
    EXPECT_EQ(WS1.Host, host);
    EXPECT_EQ(LinkDetail(All), "Calling " + host + "...");
    WS1.Fail("Connection refused");
  }
  EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30, 30));
  EXPECT_EQ(LinkDetail(All), "Connection refused. Next try in 30 s.");
  EXPECT_TRUE(Desk.Boxes.empty());
  Log.File.Close();
  const std::string log = folder.Read("log.txt");
  std::size_t lines = 0;
  for (std::size_t at = 0; (at = log.find("Calling the lost server again: " + host + ", call ", at)) != log.npos;
       ++at) {
    ++lines;
  }
  EXPECT_EQ(lines, 7U);
  EXPECT_THAT(log, HasSubstr(", call 7\r\n"));
}

TEST_F(HealedLink, ServerThatTakesAndClosesAtOnceIsCalledAtGrowingTimesUntilDataCame) {
  Reconnecting(true);
  Lose();
  std::vector<int> waits;
  for (int call = 0; call < 6; ++call) {
    waits.push_back(SecondsToTheCall());
    WS1.Accept();
    WS1.PeerCloses();
  }
  EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30));
  SecondsToTheCall();
  WS1.Accept();
  WS1.Arrive(std::string("WEATHRrain\0", 11));
  EXPECT_EQ(Trouble(), LinkTrouble::Lost) << "no word of the protocol";
  WS1.Arrive(NewPlayer);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  WS1.PeerCloses();
  EXPECT_EQ(SecondsToTheCall(), 1) << "a loss of its own";
}

TEST_F(HealedLink, DataHealsItAndTheChannelIsNotAskedFor) {
  Reconnecting(true);
  State.Session.Channel = 2;
  Lose();
  const auto channel = State.Session.Channel;
  Pass(1);
  WS1.Sent.clear();
  WS1.Accept();
  EXPECT_EQ(WS1.Sent, std::string("NAWACS0\0", 8)) << "what the person chose";
  EXPECT_EQ(State.Session.Channel, channel);
  EXPECT_EQ(Trouble(), LinkTrouble::Lost);
  EXPECT_EQ(LinkDetail(All), "Connected, waiting for data...");
  WS1.Arrive(NewPlayer);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  EXPECT_EQ(LinkText(All), "");
  Pass(2);
  EXPECT_EQ(WS1.Connects, 2);
}

TEST_F(HealedLink, PressCallsAtOnceAndOnceWhileACallIsOnItsWay) {
  Lose();
  CallNow(All);
  EXPECT_EQ(WS1.Connects, 2);
  CallNow(All);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 2);
  WS1.Fail("Connection refused");
  EXPECT_TRUE(Desk.Boxes.empty()) << "it is said where it was pressed";
  EXPECT_EQ(LinkDetail(All), "Connection refused.");
  Pass(40);
  EXPECT_EQ(WS1.Connects, 2) << "not by itself";
  CallNow(All);
  WS1.Accept();
  WS1.Arrive(NewPlayer);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  CallNow(All);
  EXPECT_EQ(WS1.Connects, 3) << "nothing is lost";
}

TEST_F(HealedLink, StopGivesUpBetweenTwoCallsAndDuringOne) {
  Reconnecting(true);
  Lose();
  StopHealing(All);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 1);
  Lose();
  Pass(1);
  EXPECT_EQ(WS1.State(), link::SocketState::Connecting);
  StopHealing(All);
  EXPECT_EQ(WS1.State(), link::SocketState::Closed);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 3);
  EXPECT_TRUE(State.HealingOptions.RECONNECT) << "the next loss is another matter";
}

TEST_F(HealedLink, OptionBeginsAndEndsTheCallsWhileItIsLost) {
  Lose();
  Pass(5);
  Reconnecting(true);
  EXPECT_EQ(SecondsToTheCall(), 1);
  WS1.Fail("Connection refused");
  Reconnecting(false);
  EXPECT_EQ(SecondsToTheCall(), 99);
  Reconnecting(true);
  EXPECT_EQ(SecondsToTheCall(), 2) << "after one call";
}

TEST_F(HealedLink, PersonsOwnCallAndDisconnectAndATapeEndTheWaiting) {
  Reconnecting(true);
  Lose();
  Link.ConnectTo("10.1.1.1");
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 2);
  Link.Disconnect();
  Clock.Date = 46347.5;
  RecordTape(3);
  WS1.PeerCloses();
  ASSERT_EQ(Trouble(), LinkTrouble::Lost);
  Load();
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  const int before = WS1.Connects;
  Pass(40);
  EXPECT_EQ(WS1.Connects, before);
}

TEST_F(HealedLink, WordOfTheServerThatItEndsIsNoLossAlsoAfterACall) {
  Reconnecting(true);
  Lose();
  Pass(1);
  WS1.Accept();
  WS1.Arrive(std::string("DISCON\0", 7));
  WS1.PeerCloses();
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 2);
  EXPECT_THAT(Desk.Boxes, SizeIs(1));
}

TEST_F(HealedLink, ChangeOfThePortDuringACallLeadsToTheNext) {
  Reconnecting(true);
  Lose();
  Pass(1);
  State.LinkOptions.CONNPORT = 7000;
  Link.DropSocket();
  EXPECT_EQ(SecondsToTheCall(), 3) << "2 s from the next look, which is half a second later";
  EXPECT_EQ(WS1.Port, 7000);
}

TEST_F(HealedLink, BoxOfTheEndThatIsStillOpenPutsOffTheCall) {
  Connect();
  Desk.WhileOpen = [this] {
    EXPECT_EQ(Trouble(), LinkTrouble::Lost);
    CallNow(All);
    Reconnecting(true);
    Pass(3);
    EXPECT_EQ(WS1.Connects, 1) << "the socket is not closed yet";
  };
  WS1.Fail("Connection reset by peer");
  Desk.WhileOpen = nullptr;
  EXPECT_EQ(SecondsToTheCall(), 1);
}

TEST_F(HealedLink, ClosingEndsAllOfIt) {
  Reconnecting(true);
  Lose();
  Close(All);
  Pass(40);
  EXPECT_EQ(WS1.Connects, 1);
}

TEST_F(HealedLink, NewTapeBeginsWhenTheSessionIsBackWhereItIsWanted) {
  for (const bool wanted : {false, true}) {
    SCOPED_TRACE(wanted);
    if (wanted) ToggleOption(All, "chkRecordAgain");
    Connect();
    RecordingStart(All);
    const std::filesystem::path first = State.Tapes.Recorder.Path();
    Synchronise();
    WS1.PeerCloses();
    EXPECT_FALSE(State.Tapes.Recorder.Recording()) << "it ends as ever";
    EXPECT_EQ(tape::TapeReader(first).Header().RecordCount, 1);
    for (int lost = 0; lost < 2; ++lost) {
      CallNow(All);
      WS1.Accept();
      if (lost == 0) WS1.PeerCloses();
      Pass(1);
      EXPECT_FALSE(State.Tapes.Recorder.Recording()) << "there is no data yet";
    }
    WS1.Arrive(NewPlayer);
    Pass(1);
    EXPECT_EQ(State.Tapes.Recorder.Recording(), wanted);
    EXPECT_EQ(State.Tapes.Recorder.Path() != first, wanted);
    Link.Disconnect();
  }
}

TEST_F(HealedLink, WithoutATapeNoneBegins) {
  ToggleOption(All, "chkRecordAgain");
  RecordTape(1);
  WS1.PeerCloses();
  CallNow(All);
  WS1.Accept();
  WS1.Arrive(NewPlayer);
  Pass(2);
  EXPECT_FALSE(State.Tapes.Recorder.Recording());
}

TEST_F(HealedLink, SilenceOfThreeCyclesIsToldUntilDataComes) {
  Connect();
  WS1.Arrive(NewPlayer);
  LinkTick(All);
  for (int cycle = 0; cycle < 2; ++cycle) {
    Clock.Ticks += 4000;
    WS1.Arrive(std::string("SYNCRO\0", 7));
    LinkTick(All);
  }
  ASSERT_EQ(State.Session.Sync.SyncInterval, 4000);
  Pass(11);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(1);
  EXPECT_EQ(Trouble(), LinkTrouble::Silent);
  EXPECT_EQ(LinkText(All), "no data for 12 s");
  EXPECT_EQ(LinkDetail(All), "");
  WS1.Arrive(std::string("WEATHRrain\0", 11));
  Pass(8);
  EXPECT_EQ(LinkText(All), "no data for 20 s");
  WS1.Arrive(NewPlayer);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  EXPECT_EQ(State.Plots.Clients.UpperBound(), 2U) << "the session has stood all the time";
}

TEST_F(HealedLink, SilenceOfShortAndOfUnknownCyclesHasItsBounds) {
  Connect();
  WS1.Arrive(NewPlayer);
  Pass(11);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(1);
  EXPECT_EQ(Trouble(), LinkTrouble::Silent) << "three of 4 s";
  for (int cycle = 0; cycle < 3; ++cycle) {
    Clock.Ticks += 200;
    WS1.Arrive(std::string("SYNCRO\0", 7));
  }
  Pass(2);
  EXPECT_EQ(Trouble(), LinkTrouble::None) << "ten cycles, but not long";
  Pass(1);
  EXPECT_EQ(Trouble(), LinkTrouble::Silent);
}

TEST_F(HealedLink, StationThatHasStoodStillReadsBeforeItJudges) {
  Connect();
  WS1.Arrive(NewPlayer);
  Pass(1);
  Clock.Ticks += 60'000;
  LinkTick(All);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(1);
  EXPECT_EQ(LinkText(All), "no data for 62 s");
}

TEST_F(HealedLink, TenSecondsWithoutAWordAskWhetherItIsASessionServer) {
  Connect();
  Pass(1);
  WS1.Arrive(std::string("HTTP/1.1 400 Bad Request\0", 25));
  Pass(8);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Pass(1);
  EXPECT_EQ(Trouble(), LinkTrouble::NoSession);
  EXPECT_EQ(LinkText(All), "connected, but no session data: is this a session server?");
  WS1.Arrive(NewPlayer);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
  Link.Disconnect();
  Connect();
  Pass(12);
  EXPECT_EQ(Trouble(), LinkTrouble::NoSession);
  Link.Disconnect();
  EXPECT_EQ(Trouble(), LinkTrouble::None);
}

TEST_F(HealedLink, CallThatBringsNoSessionSaysSo) {
  Lose();
  CallNow(All);
  WS1.Accept();
  Pass(9);
  EXPECT_EQ(LinkDetail(All), "Connected, waiting for data...");
  Pass(1);
  EXPECT_EQ(LinkDetail(All), "connected, but no session data: is this a session server?");
  EXPECT_THAT(LinkText(All), HasSubstr("LOST "));
  StopHealing(All);
  EXPECT_FALSE(Link.Open());
}

TEST_F(HealedLink, DroppedSocketAndTheChoiceOfTheChannelAreNoSilence) {
  Connect();
  WS1.Arrive(NewPlayer);
  Pass(1);
  Link.DropSocket();
  Pass(60);
  EXPECT_EQ(Trouble(), LinkTrouble::None);
}

TEST_F(HealedLink, CountOfTheClockMayWrap) {
  Reconnecting(true);
  Clock.Ticks = std::numeric_limits<std::uint32_t>::max() - 700;
  Lose();
  EXPECT_EQ(SecondsToTheCall(), 1);
  EXPECT_EQ(LinkText(All).substr(14), " 1 s ago");
}

TEST_F(HealedLink, LooksAreWantedOnlyWhileThereIsALinkOrALoss) {
  EXPECT_FALSE(LinkWatched(All));
  Connect();
  EXPECT_TRUE(LinkWatched(All));
  WS1.PeerCloses();
  EXPECT_TRUE(LinkWatched(All));
  StopHealing(All);
  EXPECT_FALSE(LinkWatched(All));
}

}  // namespace
}  // namespace kestrel::core
