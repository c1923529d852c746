// The channel is asked for as soon as the server has answered; the person may want none.

#include <string>
#include <vector>

#include "link/session_fixture.h"

namespace kestrel::link {
namespace {

using namespace std::string_literals;
using base::Changed;
using test::ClientData;
using test::Message;
using Lines = std::vector<std::string>;

TEST_F(SessionTest, WithoutAChoiceTheConnectionEndsAndNothingIsSent) {
  state.Channel = 2;
  host.Choice.reset();
  int ended = 0;
  host.WhenEnded = [&] {
    ++ended;
    EXPECT_EQ(socket.State(), SocketState::Closed) << "closed first";
  };
  // What has come meanwhile is of a server that was never joined.
  host.WhileChoosing = [this] { socket.Arrive(Message("NEWCLT", ClientData("5", "Smith")) + Message("SYNCRO")); };
  session.ConnectTo("127.0.0.1");
  ended = 0;  // it ends the former session, if any
  host.WhenRefreshed = [this](Changed what) {
    EXPECT_FALSE(Has(what, Changed::Connection) && state.Connected) << "never shown as connected";
  };
  socket.Accept();
  EXPECT_EQ(socket.Log, (Lines{"connect 127.0.0.1:5556", "close"}));
  EXPECT_EQ(socket.Sent, "");
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(state.Connected);
  EXPECT_FALSE(session.Open());
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_EQ(state.Channel, 2) << "the present choice stays for the next time";
  EXPECT_TRUE(desktop.Boxes.empty());
  // The next connection is as any other.
  host = doubles::RecordingHost();
  host.Choice = 1;
  Connect();
  EXPECT_EQ(socket.Sent, "NAWACS1\0"s);
  EXPECT_TRUE(state.Connected);
}

TEST_F(SessionTest, ServerThatLeavesWhileNothingIsChosenIsNotToldOf) {
  host.Choice.reset();
  host.WhileChoosing = [this] { socket.Fail("Connection reset by peer"); };
  Connect();
  EXPECT_TRUE(desktop.Boxes.empty());
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_FALSE(state.Connected);
}

}  // namespace
}  // namespace kestrel::link
