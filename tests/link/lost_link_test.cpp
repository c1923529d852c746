// A link that ends without the person's wish, and the call of the same server again.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "link/session_fixture.h"

namespace kestrel::link {
namespace {

using test::ClientData;
using test::Message;
using Lines = std::vector<std::string>;
using LostLink = SessionTest;

TEST_F(LostLink, IsToldWithItsReasonBeforeTheTablesAreEmptied) {
  std::vector<std::size_t> players;
  host.WhenLost = [this, &players] { players.push_back(tables.Clients.UpperBound()); };
  const std::pair<std::function<void()>, const char*> ends[] = {
      {[this] { socket.PeerCloses(); }, "The server has closed the connection."},
      {[this] { socket.Fail("Connection reset by peer"); }, "Connection reset by peer"},
      {[this] { socket.Arrive(std::string(MaxMessageBytes + 1, 'x')); },
       "The server sent a message that is too long. The connection will be closed. Please check the address and the "
       "port."}};
  for (const auto& [end, why] : ends) {
    Connect();
    socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")));
    end();
    EXPECT_EQ(host.Lost, (Lines{why}));
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_FALSE(session.Open());
    host.Lost.clear();
  }
  EXPECT_EQ(players, (std::vector<std::size_t>{1, 1, 1}));
}

TEST_F(LostLink, IsToldInTheBoxUnlessTheStationGoesOnByItself) {
  Connect();
  socket.Fail("Connection reset by peer");
  EXPECT_EQ(BoxTexts(), (Lines{"Connection: Connection reset by peer"}));
  host.GoesOn = true;
  Connect();
  socket.Fail("Connection reset by peer");
  Connect();
  socket.Arrive(std::string(MaxMessageBytes + 1, 'x'));
  EXPECT_EQ(BoxTexts().size(), 1u);
  EXPECT_FALSE(session.Open());
}

TEST_F(LostLink, IsNoneWhereThePersonOrTheServerHasEndedTheSession) {
  options.ConnList.Append({"Home", "10.0.0.1"});
  const std::function<void()> ends[] = {
      [this] { session.Disconnect(); },
      [this] { session.ConnectTo("10.0.0.2"); },
      [this] { session.ConnectToEntry(1); },
      [this] { session.Leave(); },
      [this] { socket.Arrive(Message("DISCON")); },
  };
  for (const std::function<void()>& end : ends) {
    Connect();
    const int before = host.Left;
    end();
    EXPECT_EQ(host.Left, before + 1);
    socket.PeerCloses();
  }
  EXPECT_TRUE(host.Lost.empty());
}

TEST_F(LostLink, IsNoneAfterAChangeOfThePort) {
  Connect();
  session.DropSocket();
  socket.PeerCloses();
  EXPECT_TRUE(host.Lost.empty());
  Connect();
  socket.PeerCloses();
  EXPECT_EQ(host.Lost.size(), 1u) << "the next session is another matter";
}

TEST_F(LostLink, IsNoneWhereNoneHasStood) {
  session.ConnectTo("10.0.0.1");
  socket.Fail("Connection refused");
  EXPECT_TRUE(host.Lost.empty());
  EXPECT_EQ(BoxTexts(), (Lines{"Connection: Connection refused"}));
  host.Choice.reset();
  session.ConnectTo("10.0.0.1");
  socket.Accept();
  EXPECT_TRUE(host.Lost.empty()) << "the person wanted no channel";
  EXPECT_EQ(host.Left, 3) << "two calls, and that";
}

TEST_F(LostLink, IsCalledAgainWithItsChannelAndWithoutAQuestion) {
  EXPECT_FALSE(session.CallAgain()) << "nothing has been called";
  options.CONNPORT = 6000;
  host.Choice = 2;
  session.ConnectTo("10.0.0.7");
  socket.Accept();
  EXPECT_FALSE(session.CallAgain()) << "it is connected";
  socket.PeerCloses();
  socket.Log.clear();
  host.Left = 0;
  EXPECT_EQ(session.LastHost(), "10.0.0.7");
  ASSERT_TRUE(session.CallAgain());
  EXPECT_FALSE(session.CallAgain()) << "one call is on its way";
  socket.Accept();
  EXPECT_EQ(socket.Log, (Lines{"connect 10.0.0.7:6000", "send NAWACS2"}));
  EXPECT_EQ(host.Preselected.size(), 1u);
  EXPECT_EQ(host.Left, 0);
  EXPECT_TRUE(state.Joined);
}

TEST_F(LostLink, FailedCallIsToldToTheStationAndTheNextOfThePersonAsEver) {
  Connect();
  socket.PeerCloses();
  host.GoesOn = true;
  ASSERT_TRUE(session.CallAgain());
  socket.Fail("Connection refused");
  EXPECT_EQ(host.Lost, (Lines{"The server has closed the connection.", "Connection refused"}));
  EXPECT_TRUE(desktop.Boxes.empty());
  EXPECT_FALSE(session.Open());
  ASSERT_TRUE(session.CallAgain());
  session.ConnectTo("10.0.0.2");
  socket.Accept();
  EXPECT_EQ(host.Preselected.size(), 2u) << "the person's call asks for the channel";
  session.Disconnect();
  session.ConnectTo("10.0.0.2");
  socket.Fail("Connection refused");
  EXPECT_EQ(host.Lost.size(), 2u);
  EXPECT_EQ(desktop.Boxes.size(), 1u);
}

TEST_F(LostLink, WordThatItCutOffIsDroppedWithTheCallAndNoneIsLost) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")) + "INDATA5");
  socket.PeerCloses();
  ASSERT_TRUE(session.CallAgain());
  socket.Accept();
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")));
  EXPECT_EQ(tables.Clients.UpperBound(), 1u);
  EXPECT_EQ(state.DroppedMessages, 0u);
}

TEST_F(LostLink, JoinedAndTheWordsAreOfTheConnection) {
  bool joinedWhileChoosing = true;
  host.WhileChoosing = [&] { joinedWhileChoosing = state.Joined; };
  Connect();
  EXPECT_FALSE(joinedWhileChoosing);
  EXPECT_TRUE(state.Joined);
  EXPECT_EQ(state.Words, 0u);
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")) + Message("WEATHR", "rain") + Message("SYNCRO"));
  EXPECT_EQ(state.Words, 2u) << "one of them is no word of the protocol";
  socket.PeerCloses();
  EXPECT_FALSE(state.Joined);
  Connect();
  EXPECT_EQ(state.Words, 0u);
  bool joinedWhileTold = true;
  desktop.WhileOpen = [&] { joinedWhileTold = state.Joined; };
  socket.Arrive(Message("DISCON"));
  EXPECT_FALSE(joinedWhileTold);
}

}  // namespace
}  // namespace kestrel::link
