#include "link/session.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>
#include <vector>

#include "base/program_title.h"
#include "link/session_fixture.h"
#include "version.h"

namespace kestrel::link {
namespace {

using namespace std::string_literals;
using base::Changed;
using test::AIRecord;
using test::ClientData;
using test::Describe;
using test::Message;
using test::PositionData;
using Lines = std::vector<std::string>;

constexpr const char* ServerEnds = "Info: The connection was closed by the server.";

TEST_F(SessionTest, ConnectingAsksForTheChannelAndAnnouncesTheStation) {
  state.Sync = {5, 6, 7};
  host.Choice = 2;
  host.WhileChoosing = [this] {
    EXPECT_TRUE(state.Connected);
    EXPECT_EQ(state.Sync.SyncLast, 0u);
    EXPECT_EQ(socket.Sent, "");
  };
  Connect();
  EXPECT_EQ(socket.Log, (Lines{"connect 127.0.0.1:5556", "send NAWACS2"}));
  EXPECT_EQ(socket.Sent, "NAWACS2\0"s);
  EXPECT_EQ(host.Preselected, (std::vector<std::uint8_t>{1}));
  EXPECT_EQ(state.Channel, 2);
  ASSERT_FALSE(host.Refreshes.empty());
  EXPECT_TRUE(Has(host.Refreshes.back(), Changed::Connection));
}

TEST_F(SessionTest, CaptionTellsTheChannel) {
  const std::string title = base::ProgramTitle();
  EXPECT_EQ(title, "KESTREL v" + std::to_string(VersionMajor) + "." + std::to_string(VersionMinor) + "." +
                       std::to_string(VersionRevision));
  EXPECT_EQ(FrameCaption(state), title);
  state.Connected = true;
  const std::vector<std::string> ends = {" - BOTH CHANNELS", " - BLUE CHANNEL", " - RED CHANNEL"};
  for (std::uint8_t channel = 0; channel < 3; ++channel) {
    state.Channel = channel;
    EXPECT_EQ(FrameCaption(state), title + ends[channel]);
  }
}

TEST_F(SessionTest, NothingIsShownAsConnectedBeforeTheChannelIsChosen) {
  int shown = 0;
  host.WhenRefreshed = [&](Changed what) { shown += state.Connected && Has(what, Changed::Connection); };
  host.WhileChoosing = [&shown] { EXPECT_EQ(shown, 0); };
  Connect();
  EXPECT_EQ(shown, 1);
}

TEST_F(SessionTest, FaultInsideAnArrivalLeavesTheSessionOpenToTheNext) {
  Connect();
  bool first = true;
  host.WhenRefreshed = [&first](Changed) {
    if (std::exchange(first, false)) throw std::bad_alloc();
  };
  EXPECT_THROW(socket.Arrive(Message("NEWCLT", ClientData("5", "Smith"))), std::bad_alloc);
  socket.Arrive(Message("NEWCLT", ClientData("6", "Jones")));
  EXPECT_EQ(tables.Clients.UpperBound(), 2u);
}

TEST_F(SessionTest, MessagesReachTheTables) {
  Connect();
  tables.FriendlyList.Append("Viper");
  state.Bull = {100, 100};
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")) +
                Message("INDATA", PositionData("5", "3279.98", "0", "100")) +
                Message("AILOCA", AIRecord("Viper1", "90", "0", "10")) + Message("PLSUPD", ClientData("5", "Jones")));
  EXPECT_EQ(tables.Clients[1].Name, "Jones");
  EXPECT_DOUBLE_EQ(tables.Clients[1].Y, 1);
  EXPECT_EQ(tables.AIPlots[1].X, 100);
  EXPECT_EQ(tables.AIPlots[1].Hostile, 0);
  socket.Arrive(Message("DELCLT", "5"));
  EXPECT_TRUE(tables.Clients.Empty());
}

TEST_F(SessionTest, ViewsAreRefreshedOnceForAnArrival) {
  Connect();
  host.Refreshes.clear();
  std::string arrival;
  for (int i = 1; i <= 1000; ++i) arrival += Message("NEWCLT", ClientData(std::to_string(i), "x"));
  socket.Arrive(arrival + Message("AILOCA"));
  EXPECT_EQ(host.Refreshes,
            (std::vector<Changed>{Changed::Activity | Changed::Roster | Changed::Plots | Changed::AIList}));
}

TEST_F(SessionTest, EachWordMarksItsViews) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "x")) + Message("NEWCLT", ClientData("6", "y")));
  const Changed plots = Changed::Activity | Changed::Plots;
  const std::vector<std::pair<std::string, Changed>> cases = {
      {Message("INDATA", PositionData("5", "1", "1", "1")), plots},
      {Message("AILOCA"), plots | Changed::AIList},
      {Message("NEWCLT", ClientData("7", "x")), plots | Changed::Roster},
      {Message("PLSUPD", ClientData("7", "x")), plots | Changed::Roster},
      {Message("DELCLT", "7"), plots | Changed::Roster},
      {Message("SYNCRO"), Changed::Activity},
  };
  for (const auto& [bytes, marks] : cases) {
    host.Refreshes.clear();
    socket.Arrive(bytes);
    EXPECT_EQ(host.Refreshes, (std::vector<Changed>{marks})) << bytes;
  }
  host.Refreshes.clear();
  socket.Arrive("\0\0XYZZYY1\0abc\0syncro\0"s);
  EXPECT_TRUE(host.Refreshes.empty());
}

TEST_F(SessionTest, LeavingClientResetsTheDetailsWhenItIsTheSelectedOne) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")) + Message("NEWCLT", ClientData("2", "b")));
  host.Refreshes.clear();
  socket.Arrive(Message("DELCLT", "9"));  // nobody holds it, nobody is selected
  EXPECT_TRUE(Has(host.Refreshes.back(), Changed::Roster));
  SelectPlot("2N", tables, state);
  socket.Arrive(Message("DELCLT", "9"));
  EXPECT_FALSE(Has(host.Refreshes.back(), Changed::Roster));
  EXPECT_TRUE(state.Details.Enabled);
  socket.Arrive(Message("DELCLT", "2"));
  EXPECT_TRUE(Has(host.Refreshes.back(), Changed::Roster));
  EXPECT_FALSE(state.Details.Enabled);
  EXPECT_EQ(state.Details.Caption, "USER:");
  EXPECT_EQ(state.SelectedPlot, 2u) << "the index is not moved";
}

TEST_F(SessionTest, EndOfTheConnectionResetsTheDetails) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
  SelectPlot("1N", tables, state);
  session.ConnectionEnd();
  EXPECT_FALSE(state.Details.Enabled);
  EXPECT_EQ(state.Details.Caption, "USER:");
  EXPECT_EQ(state.SelectedPlot, 0u);
}

TEST_F(SessionTest, NewClientsTakeTheirLabelFromTheBullseyeOption) {
  Connect();
  for (const bool shown : {true, false}) {
    options.BULLSEYEVISIBLE = shown;
    socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
    EXPECT_EQ(tables.Clients[tables.Clients.UpperBound()].ShowLabel, shown);
  }
}

TEST_F(SessionTest, MessageCutAtEveryByteGivesTheSameTables) {
  const std::string stream = Message("NEWCLT", ClientData("5", "Smith")) + Message("SYNCRO") + "\0\0"s +
                             Message("INDATA", PositionData("5", "1000000", "2000000,5", "30000")) + Message("WHAT") +
                             Message("AILOCA", AIRecord("B1", "10", "20", "30") + AIRecord("A1", "40", "50", "6")) +
                             Message("INDATA", PositionData("5", "1010000", "2000000", "30000")) +
                             Message("DELCLT", "x") + Message("AILOCA", AIRecord("C1", "10", "20", "30")) +
                             Message("PLSUPD", ClientData("5", "J"));
  Connect();
  socket.Arrive(stream);
  const std::string expected = Describe(tables);
  ASSERT_EQ(state.DroppedMessages, 1u);
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    session.ConnectionEnd();
    socket.Arrive(stream.substr(0, cut));
    socket.Arrive(stream.substr(cut));
    ASSERT_EQ(Describe(tables), expected) << cut;
  }
  session.ConnectionEnd();
  for (const char c : stream) socket.Arrive(std::string(1, c));
  EXPECT_EQ(Describe(tables), expected);
}

TEST_F(SessionTest, TailOfAnEarlierConnectionJoinsTheNext) {
  Connect();
  socket.Arrive("NEWCLT5\x1eSm");
  socket.PeerCloses();
  EXPECT_FALSE(state.Connected);
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_TRUE(tables.Clients.Empty());
  Connect();
  socket.Arrive("ith\x1e\x1eO\0"s);
  EXPECT_EQ(tables.Clients[1].Name, "Smith");
}

TEST_F(SessionTest, BadMessagesAreDroppedAndCounted) {
  Connect();
  const std::string good = Message("NEWCLT", ClientData("5", "Smith"));
  const Lines bad = {Message("NEWCLT"),
                     Message("NEWCLT", "5"),
                     Message("NEWCLT", ClientData("x", "y")),
                     Message("PLSUPD", "5"),
                     Message("DELCLT"),
                     Message("DELCLT", "99999"),
                     Message("INDATA"),
                     Message("INDATA", "5"),
                     Message("INDATA", PositionData("?", "1", "1", "1")),
                     Message("INDATA", PositionData("5", "1e999", "1", "1")),
                     Message("INDATA", PositionData("5", "1", "1", "9e99"))};
  socket.Arrive(good);
  const std::string before = Describe(tables);
  std::string all;
  for (const std::string& message : bad) all += message;
  socket.Arrive(all + good);
  EXPECT_EQ(state.DroppedMessages, bad.size());
  EXPECT_EQ(tables.Clients.UpperBound(), 2u);
  EXPECT_NE(before, Describe(tables));
  EXPECT_TRUE(desktop.Boxes.empty());
}

TEST_F(SessionTest, LogHasALineForEachKnownMessage) {
  OpenLog();
  Connect();
  clock.Date = 45000 + (9 * 3600 + 8 * 60 + 7) / 86400.0;
  socket.Arrive("\0NOWORD1\0SYNCROx\0"s + Message("NEWCLT", "7") + Message("INDATA", "x\x1e"));
  const std::string text = LogText();
  EXPECT_EQ(text,
            "12:00:00 : Command sent to Server: (NAWACS)1\r\n"
            "09:08:07 : Command arrived from Server: (SYNCRO)x\r\n"
            "09:08:07 : Command arrived from Server: (NEWCLT)7\r\n"
            "09:08:07 : Message dropped (NEWCLT): too few fields\r\n"
            "09:08:07 : Command arrived from Server: (INDATA)x\x1e\r\n"
            "09:08:07 : Message dropped (INDATA): \"x\" is no 16-bit number\r\n");
}

TEST_F(SessionTest, SendingOnAClosedSocketOnlyLogsAndPulses) {
  OpenLog();
  session.SendCommand("AWAEND", "");
  EXPECT_EQ(socket.Sent, "");
  EXPECT_EQ(LogText(), "12:00:00 : Command sent to Server: (AWAEND)\r\n");
  EXPECT_EQ(host.Refreshes, (std::vector<Changed>{Changed::Activity}));
}

TEST_F(SessionTest, CaptureHoldsEachArrivalAsItCame) {
  capture.Open(folder / "debug_out.dat");
  Connect();
  socket.Arrive("SYN");
  socket.Arrive("CRO\0"s);
  capture.Close();
  EXPECT_EQ(test::ReadBytes(folder / "debug_out.dat"),
            "--------->>>>>> Debug Started at 12:00:00<<<<<<---------\r\n12:00:00|SYN\r\n12:00:00|CRO\0\r\n"
            "--------->>>>>> Debug ended at 12:00:00<<<<<<---------\r\n"s);
}

TEST_F(SessionTest, FirstSynchronisationGivesNoInterval) {
  Connect();
  const auto sync = [this](std::uint32_t ticks) {
    clock.Ticks = ticks;
    socket.Arrive(Message("SYNCRO", "ignored"));
    return state.Sync.SyncInterval;
  };
  EXPECT_EQ(sync(1000), 0);
  EXPECT_EQ(sync(6000), 5000);
  EXPECT_EQ(sync(6000), 0);
  EXPECT_EQ(sync(0xFFFFFF00u), 2147483647) << "held where 32 bits end";
  EXPECT_EQ(sync(0x100u), 0x200) << "over the wrap of the tick count";
  EXPECT_EQ(sync(0), 2147483647);
  EXPECT_EQ(sync(50), 0) << "a last tick of 0 is below 1";
  session.ConnectionEnd();
  EXPECT_EQ(state.Sync.SyncLast, 0u);
  EXPECT_EQ(sync(9000), 0);
}

TEST_F(SessionTest, EntriesBehindTheServersEndMeetEmptiedTables) {
  Connect();
  desktop.WhileOpen = [this] {
    EXPECT_EQ(tables.Clients.UpperBound(), 1u) << "the box comes first";
    EXPECT_TRUE(state.Connected);
    EXPECT_TRUE(Has(host.Refreshes.back(), Changed::Roster)) << "what came before it is shown";
  };
  state.SelectedPlot = 1;
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")) + Message("DISCON", "x") +
                Message("NEWCLT", ClientData("2", "b")));
  ASSERT_EQ(desktop.Boxes.size(), 1u);
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds}));
  EXPECT_EQ(desktop.Boxes[0].Icon, base::MessageIcon::Critical);
  EXPECT_EQ(desktop.Boxes[0].Buttons, base::MessageButtons::Ok);
  ASSERT_EQ(tables.Clients.UpperBound(), 1u);
  EXPECT_EQ(tables.Clients[1].Id, 2);
  EXPECT_FALSE(state.Connected);
  EXPECT_EQ(state.SelectedPlot, 0u);
  EXPECT_EQ(socket.State(), SocketState::Connected) << "it waits for the peer's close";
  socket.PeerCloses();
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_TRUE(tables.Clients.Empty());
}

TEST_F(SessionTest, WhatComesDuringABoxWaitsInOrder) {
  Connect();
  desktop.WhileOpen = [this] {
    socket.Arrive(Message("NEWCLT", ClientData("7", "late")));
    socket.PeerCloses();
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_GT(socket.Unread(), 0u);
    EXPECT_EQ(desktop.Boxes.size(), 1u);
  };
  socket.Arrive(Message("DISCON"));
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds}));
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_TRUE(tables.Clients.Empty());
}

TEST_F(SessionTest, WhatComesDuringTheChannelDialogWaitsInOrder) {
  host.WhileChoosing = [this] {
    socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
    socket.Arrive(Message("NEWCLT", ClientData("2", "b")));
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_EQ(socket.Sent, "");
  };
  Connect();
  EXPECT_EQ(socket.Sent, "NAWACS1\0"s);
  EXPECT_EQ(tables.Clients.UpperBound(), 2u);
}

TEST_F(SessionTest, ServerThatVanishesDuringTheChannelDialogLeavesNoSession) {
  host.WhileChoosing = [this] { socket.PeerCloses(); };
  Connect();
  EXPECT_EQ(socket.Sent, "");
  EXPECT_FALSE(state.Connected);
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(SessionTest, ErrorEndsTheSessionAndShowsTheDescription) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")) + "INDATA1\x1e 12");
  desktop.WhileOpen = [this] {
    EXPECT_FALSE(state.Connected);
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_NE(socket.State(), SocketState::Closed);
  };
  socket.Fail("Connection reset by peer");
  EXPECT_EQ(BoxTexts(), (Lines{"Connection: Connection reset by peer"}));
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(SessionTest, FailedConnectLeavesNoSession) {
  session.ConnectTo("nowhere");
  socket.Fail("Connection refused");
  EXPECT_EQ(BoxTexts(), (Lines{"Connection: Connection refused"}));
  EXPECT_TRUE(host.Preselected.empty());
  EXPECT_FALSE(state.Connected);
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(SessionTest, ServerThatVanishesAtAnyByteLeavesNoSession) {
  const std::string stream = Message("NEWCLT", ClientData("5", "Smith")) +
                             Message("INDATA", PositionData("5", "1000000", "2000000", "30000")) +
                             Message("AILOCA", AIRecord("B1", "10", "20", "30"));
  for (std::size_t end = 0; end <= stream.size(); ++end) {
    Connect();
    socket.Arrive(stream.substr(0, end));
    socket.PeerCloses();
    ASSERT_TRUE(tables.Clients.Empty() && tables.AIPlots.Empty() && tables.AIHistory.Empty()) << end;
    ASSERT_FALSE(state.Connected) << end;
    // The tail stays, so the next server's first message is spoilt; a terminator ends it.
    Connect();
    socket.Arrive("\0"s + stream);
    // Without its last byte, the status, or without its terminator only, NEWCLT still makes a client.
    const std::size_t lost = stream.find('\0') - end;
    ASSERT_EQ(tables.Clients.UpperBound(), lost <= 1 ? 2u : 1u) << end;
    socket.PeerCloses();
  }
}

TEST_F(SessionTest, EndlessMessageIsCutOffInBoundedMemory) {
  OpenLog();
  Connect();
  const std::string chunk(1 << 20, 'x');
  int sent = 0;
  while (sent < 100 && socket.State() == SocketState::Connected) {
    socket.Arrive(chunk);
    ++sent;
  }
  EXPECT_EQ(sent, 5) << "4 MiB are waited for";
  ASSERT_EQ(desktop.Boxes.size(), 1u);
  EXPECT_EQ(desktop.Boxes[0].Title, "Connection");
  EXPECT_NE(desktop.Boxes[0].Text.find("too long"), std::string::npos);
  EXPECT_FALSE(state.Connected);
  EXPECT_NE(LogText().find(" : Connection closed: a message without an end\r\n"), std::string::npos);
  // And the next session starts with nothing in the way.
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
  EXPECT_EQ(tables.Clients.UpperBound(), 1u);
}

TEST_F(SessionTest, HundredMegabytesWithoutATerminatorAreNotRead) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")) + std::string(100 << 20, 'x'));
  EXPECT_EQ(desktop.Boxes.size(), 1u);
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_TRUE(tables.Clients.Empty());
}

TEST_F(SessionTest, LargeArrivalIsHandledInTurnsWithARefreshEach) {
  Connect();
  std::string arrival;
  while (arrival.size() < (5u << 20) / 2) arrival += Message("PLSUPD", ClientData("1", "a"));
  const std::string join = Message("NEWCLT", ClientData("1", "a"));
  host.Refreshes.clear();
  socket.Arrive(join + arrival);
  EXPECT_EQ(host.Refreshes.size(), 3u);
  EXPECT_EQ(socket.Unread(), 0u);
  EXPECT_EQ(state.DroppedMessages, 0u);
}

TEST_F(SessionTest, PhonebookEntryLeavesThePresentServerFirst) {
  options.ConnList.Append({"one", "10.0.0.1"});
  options.ConnList.Append({"two", "10.0.0.2"});
  options.CONNPORT = 7000;
  session.ConnectToEntry(1);
  socket.Accept();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
  session.ConnectToEntry(2);
  EXPECT_EQ(socket.Log,
            (Lines{"connect 10.0.0.1:7000", "send NAWACS1", "send AWAEND", "close", "connect 10.0.0.2:7000"}));
  EXPECT_FALSE(state.Connected);
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_EQ(desktop.EventRuns, 0);
}

TEST_F(SessionTest, EntryThatIsNotThereDoesNothing) {
  options.ConnList.Append({"one", "10.0.0.1"});
  session.ConnectToEntry(0);
  session.ConnectToEntry(2);
  EXPECT_TRUE(socket.Log.empty());
}

TEST_F(SessionTest, TypedAddressLeavesThePresentServerFirst) {
  Connect();
  desktop.EventRuns = 0;
  session.ConnectTo("10.0.0.9");
  EXPECT_EQ(socket.Log,
            (Lines{"connect 127.0.0.1:5556", "send NAWACS1", "send AWAEND", "close", "connect 10.0.0.9:5556"}));
  EXPECT_EQ(desktop.EventRuns, 3);
  EXPECT_FALSE(state.Connected);
}

TEST_F(SessionTest, AttemptThatIsUnderWayIsGivenUpForTheNext) {
  session.ConnectTo("10.0.0.1");
  session.ConnectTo("10.0.0.2");
  EXPECT_EQ(socket.Log, (Lines{"connect 10.0.0.1:5556", "close", "connect 10.0.0.2:5556"}))
      << "AWAEND needs a connection";
}

TEST_F(SessionTest, DisconnectSaysSoAndCloses) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
  session.Disconnect();
  EXPECT_EQ(socket.Log, (Lines{"connect 127.0.0.1:5556", "send NAWACS1", "send AWAEND", "close"}));
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_FALSE(state.Connected);
  EXPECT_EQ(desktop.EventRuns, 2) << "one of them from connecting";
  session.Disconnect();
  EXPECT_FALSE(state.Connected);
}

TEST_F(SessionTest, DisconnectDropsWhatStillWaits) {
  Connect();
  desktop.WhileOpen = [this] {
    desktop.WhileOpen = nullptr;
    socket.Arrive(Message("NEWCLT", ClientData("1", "a")));
    session.Disconnect();
  };
  socket.Arrive(Message("DISCON") + Message("NEWCLT", ClientData("2", "b")));
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_EQ(desktop.Boxes.size(), 1u);
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(SessionTest, PeerThatClosesWhileWeLeaveIsNoTrouble) {
  Connect();
  desktop.WhenEventsRun = [this] { socket.PeerCloses(); };
  session.Disconnect();
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_FALSE(state.Connected);
}

TEST_F(SessionTest, LeavingAtTheEndSaysSoOnce) {
  session.Leave();
  EXPECT_TRUE(socket.Log.empty());
  Connect();
  desktop.EventRuns = 0;
  session.Leave();
  EXPECT_EQ(socket.Log, (Lines{"connect 127.0.0.1:5556", "send NAWACS1", "send AWAEND", "close"}));
  EXPECT_EQ(desktop.EventRuns, 1);
  session.Leave();
  EXPECT_EQ(socket.Log.size(), 4u);
}

TEST_F(SessionTest, TheHostHearsOfEachSynchronisationInItsPlaceAmongTheMessages) {
  Connect();
  std::vector<std::pair<std::size_t, std::int32_t>> seen;
  host.WhenSynchronised = [&] {
    clock.Ticks += 400;
    seen.emplace_back(tables.Clients.UpperBound(), state.Sync.SyncInterval);
  };
  clock.Ticks = 1000;
  socket.Arrive(Message("NEWCLT", ClientData("1", "Smith")) + Message("SYNCRO") +
                Message("NEWCLT", ClientData("2", "Jones")) + Message("SYNCRO"));
  EXPECT_EQ(seen, (std::vector<std::pair<std::size_t, std::int32_t>>{{1, 0}, {2, 400}}));
}

TEST_F(SessionTest, TheHostHearsOfTheEndOnceTheTablesAreEmptyAndTheTimesZero) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "Smith")));
  state.Sync.SyncInterval = 7;
  int heard = 0;
  host.WhenEnded = [&] {
    ++heard;
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_EQ(state.Sync.SyncInterval, 0);
    EXPECT_FALSE(state.Connected);
  };
  socket.PeerCloses();
  EXPECT_EQ(heard, 1);
}

TEST_F(SessionTest, IsOpenFromTheConnectToTheEnd) {
  EXPECT_FALSE(session.Open());
  session.ConnectTo("127.0.0.1");
  EXPECT_TRUE(session.Open());
  EXPECT_FALSE(session.SocketConnected());
  socket.Accept();
  EXPECT_TRUE(session.SocketConnected());
  session.DropSocket();
  EXPECT_FALSE(session.SocketConnected());
  EXPECT_TRUE(session.Open()) << "what the changed port has left standing";
  session.ConnectionEnd();
  EXPECT_FALSE(session.Open());
}

TEST_F(SessionTest, EndingTwiceIsSafe) {
  session.ConnectionEnd();
  session.ConnectionEnd();
  EXPECT_FALSE(state.Connected);
}

}  // namespace
}  // namespace kestrel::link
