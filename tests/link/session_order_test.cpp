// In which order the session leaves a server, and what it says only once or only to the log.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "session_fixture.h"

namespace kestrel::link {
namespace {

using test::ClientData;
using test::Message;
using Lines = std::vector<std::string>;

constexpr const char* ServerEnds = "Info: The connection was closed by the server.";

class SessionOrder : public SessionTest {
 protected:
  /// Connects; from then on the socket's log also has "events" for each time events may run, and "end" for each end.
  void ConnectAndWatch() {
    Connect();
    socket.Log.clear();
    desktop.WhenEventsRun = [this] { socket.Log.push_back("events"); };
    host.WhenEnded = [this] { socket.Log.push_back("end"); };
  }
};

TEST_F(SessionOrder, DisconnectLetsTheFarewellLeaveBeforeItCloses) {
  ConnectAndWatch();
  session.Disconnect();
  EXPECT_EQ(socket.Log, (Lines{"send AWAEND", "events", "close", "end"}));
}

TEST_F(SessionOrder, ConnectingElsewhereLetsTheFarewellLeaveBeforeItCloses) {
  ConnectAndWatch();
  session.ConnectTo("10.0.0.9");
  EXPECT_EQ(socket.Log, (Lines{"send AWAEND", "events", "close", "events", "end", "events", "connect 10.0.0.9:5556"}));
}

TEST_F(SessionOrder, UnloadLetsTheFarewellLeaveBeforeItCloses) {
  ConnectAndWatch();
  session.Leave();
  EXPECT_EQ(socket.Log, (Lines{"send AWAEND", "events", "close"}));
}

TEST_F(SessionOrder, LastSynchronisationIsAReadingOfItsOwn) {
  Connect();
  clock.Ticks = 1000;
  clock.WhenRead = [this] { clock.Ticks += 7; };
  socket.Arrive(Message("SYNCRO"));
  EXPECT_EQ(state.Sync.SyncNow, 1007u);
  EXPECT_EQ(state.Sync.SyncLast, 1014u);
  socket.Arrive(Message("SYNCRO"));
  EXPECT_EQ(state.Sync.SyncNow, 1021u);
  EXPECT_EQ(state.Sync.SyncInterval, 7) << "from the second reading of the cycle before";
  EXPECT_EQ(state.Sync.SyncLast, 1028u);
}

TEST_F(SessionOrder, ServersEndIsToldOnceForAConnection) {
  OpenLog();
  Connect();
  const std::string client = Message("NEWCLT", ClientData("1", "a"));
  socket.Arrive(Message("DISCON") + client + Message("DISCON", "x"));
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds}));
  EXPECT_EQ(tables.Clients.UpperBound(), 1u) << "the second is only logged";
  socket.Arrive(Message("DISCON"));
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds})) << "nor in a later arrival";
  EXPECT_EQ(LogText(),
            "12:00:00 : Command sent to Server: (NAWACS)1\r\n"
            "12:00:00 : Command arrived from Server: (DISCON)\r\n"
            "12:00:00 : Command arrived from Server: (NEWCLT)1\x1e"
            "a\x1e\x1eO\r\n"
            "12:00:00 : Command arrived from Server: (DISCON)x\r\n"
            "12:00:00 : Command arrived from Server: (DISCON)\r\n");

  socket.PeerCloses();
  Connect();
  socket.Arrive(Message("DISCON"));
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds, ServerEnds})) << "another connection";
}

TEST_F(SessionOrder, ServersEndThatComesWhileItIsToldIsNotToldAgain) {
  Connect();
  desktop.WhileOpen = [this] { socket.Arrive(Message("DISCON")); };
  socket.Arrive(Message("DISCON"));
  EXPECT_EQ(BoxTexts(), (Lines{ServerEnds}));
}

TEST_F(SessionOrder, SecondClientOfAnIdIsAddedAndLogged) {
  OpenLog();
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "a")) + Message("NEWCLT", ClientData("6", "b")) +
                Message("NEWCLT", ClientData("5", "c")));
  EXPECT_EQ(tables.Clients.UpperBound(), 3u);
  EXPECT_EQ(LogText(),
            "12:00:00 : Command sent to Server: (NAWACS)1\r\n"
            "12:00:00 : Command arrived from Server: (NEWCLT)5\x1e"
            "a\x1e\x1eO\r\n"
            "12:00:00 : Command arrived from Server: (NEWCLT)6\x1e"
            "b\x1e\x1eO\r\n"
            "12:00:00 : Command arrived from Server: (NEWCLT)5\x1e"
            "c\x1e\x1eO\r\n"
            "12:00:00 : A client with this Id was there already, both stay: 5\r\n");
  EXPECT_EQ(state.DroppedMessages, 0u);
}

TEST_F(SessionOrder, DeletionWithFurtherFieldsIsDropped) {
  OpenLog();
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("5", "a")) + Message("DELCLT", "5\x1e") + Message("DELCLT", "5\x1ex"));
  EXPECT_EQ(tables.Clients.UpperBound(), 1u);
  EXPECT_EQ(state.DroppedMessages, 2u);
  EXPECT_NE(LogText().find("12:00:00 : Message dropped (DELCLT): fields behind the Id\r\n"), std::string::npos);
  socket.Arrive(Message("DELCLT", "5"));
  EXPECT_TRUE(tables.Clients.Empty());
}

}  // namespace
}  // namespace kestrel::link
