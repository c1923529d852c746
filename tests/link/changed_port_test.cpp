// A port that is changed while connected: the socket is dropped under a session that stands.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/program_title.h"
#include "link/session_fixture.h"

namespace kestrel::link {
namespace {

using test::ClientData;
using test::Message;
using Lines = std::vector<std::string>;
using ChangedPort = SessionTest;

TEST_F(ChangedPort, ClosesTheSocketAndLeavesTheTablesAsTheyAre) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")));
  socket.Log.clear();
  session.DropSocket();
  EXPECT_EQ(socket.Log, (Lines{"close"})) << "neither AWAEND nor anything else is sent";
  EXPECT_TRUE(state.Connected);
  EXPECT_EQ(FrameCaption(state), base::ProgramTitle() + " - BLUE CHANNEL");
  EXPECT_EQ(tables.Clients.UpperBound(), 1u);
  session.DropSocket();
  EXPECT_EQ(socket.Log.size(), 1u);
}

TEST_F(ChangedPort, WhatItLeftStandsUntilThePeerEndsItsSide) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")));
  session.DropSocket();
  socket.Arrive(Message("DELCLT", "5"));
  EXPECT_EQ(tables.Clients.UpperBound(), 1u) << "nothing else of that connection arrives";
  int ended = 0;
  host.WhenEnded = [&ended] { ++ended; };
  socket.PeerCloses();
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(state.Connected);
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_EQ(FrameCaption(state), base::ProgramTitle());
  EXPECT_FALSE(session.Open());
  EXPECT_TRUE(desktop.Boxes.empty());
  socket.PeerCloses();
  EXPECT_EQ(ended, 1) << "told once";
}

TEST_F(ChangedPort, EndOfADroppedConnectionIsNotTheEndOfTheNextOne) {
  options.ConnList.Append({"Home", "10.0.0.1"});
  const std::vector<std::function<void()>> ways = {[this] { session.ConnectToEntry(1); },
                                                   [this] { session.ConnectTo("10.0.0.1"); }};
  for (const std::function<void()>& way : ways) {
    Connect();
    session.DropSocket();
    way();
    socket.Accept();
    EXPECT_TRUE(state.Connected);
    // The end that comes while a box of the session is open waits there, and the new connect overtakes it.
    desktop.WhileOpen = [&] {
      session.DropSocket();
      socket.PeerCloses();
      way();
    };
    socket.Arrive(Message("DISCON"));
    EXPECT_EQ(socket.State(), SocketState::Connecting);
    session.Disconnect();
  }
}

TEST_F(ChangedPort, WhatItLeftIsClearedByWhateverComesNext) {
  options.ConnList.Append({"Home", "10.0.0.1"});
  const std::vector<std::pair<std::string, std::function<void()>>> ways = {
      {"phonebook", [this] { session.ConnectToEntry(1); }},
      {"typed address", [this] { session.ConnectTo("10.0.0.1"); }},
      {"Disconnect", [this] { session.Disconnect(); }},
  };
  for (const auto& [name, way] : ways) {
    SCOPED_TRACE(name);
    options.CONNPORT = 5556;
    Connect();
    socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")));
    session.DropSocket();
    options.CONNPORT = 7000;
    socket.Sent.clear();
    way();
    EXPECT_EQ(socket.Sent, "") << "the former server is told nothing any more";
    EXPECT_FALSE(state.Connected);
    EXPECT_TRUE(tables.Clients.Empty());
    EXPECT_EQ(FrameCaption(state), base::ProgramTitle());
    socket.Accept();
    EXPECT_EQ(socket.Port, name == "Disconnect" ? 5556 : 7000);
    session.Disconnect();
  }
}

TEST_F(ChangedPort, EndsAnAttemptToConnect) {
  session.ConnectTo("10.0.0.1");
  session.DropSocket();
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_FALSE(state.Connected);
  session.DropSocket();
  EXPECT_EQ(socket.Log, (Lines{"connect 10.0.0.1:5556", "close"}));
}

}  // namespace
}  // namespace kestrel::link
