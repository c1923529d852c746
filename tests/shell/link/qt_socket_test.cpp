#include "shell/link/qt_socket.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

#include <functional>
#include <memory>

#include "doubles/fake_clock.h"

namespace kestrel::shell {
namespace {

using link::SocketState;

#ifdef Q_OS_WIN
using Descriptor = SOCKET;
#else
using Descriptor = int;
#endif

class Socket : public testing::Test, public link::SocketEvents {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    socket->SetEvents(this);
  }
  void OnConnect() override { told += "connect "; }
  void OnDataArrival() override {
    if (told.find("data") == std::string::npos) told += "data ";
    if (readAtOnce) socket->Read(got, 1 << 20);
  }
  void OnClose() override {
    told += "close ";
    if (inClose) inClose();
  }
  void OnError(const std::string& description) override {
    told += "error ";
    error = description;
  }

  /// The server's end of the connection.
  QTcpSocket& Connected() {
    socket->Connect("127.0.0.1", server.serverPort());
    EXPECT_TRUE(QTest::qWaitFor([this] { return socket->State() == SocketState::Connected; }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.hasPendingConnections(); }));
    return *server.nextPendingConnection();
  }

  /// Carries `bytes` over a connection of its own through the same event loop: what was on its way before has come.
  void CarryElsewhere(const QByteArray& bytes = "x") {
    QTcpServer elsewhere;
    ASSERT_TRUE(elsewhere.listen(QHostAddress::LocalHost));
    QTcpSocket there;
    there.connectToHost(QHostAddress::LocalHost, elsewhere.serverPort());
    ASSERT_TRUE(QTest::qWaitFor([&elsewhere] { return elsewhere.hasPendingConnections(); }));
    QTcpSocket& here = *elsewhere.nextPendingConnection();
    there.write(bytes);
    there.disconnectFromHost();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return here.bytesAvailable() == bytes.size() && here.state() == QAbstractSocket::UnconnectedState; },
        20000));
  }

  doubles::FakeClock clock;
  base::DebugLog log{clock};
  QTcpServer server;
  std::unique_ptr<QtSocket> socket = std::make_unique<QtSocket>(log);
  std::string told;
  std::string got;
  std::string error;
  bool readAtOnce = true;
  std::function<void()> inClose;
};

TEST_F(Socket, ConnectIsToldFromTheEventLoop) {
  socket->Connect("127.0.0.1", server.serverPort());
  EXPECT_EQ(socket->State(), SocketState::Connecting);
  EXPECT_EQ(told, "");
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect "; }));
  EXPECT_EQ(socket->State(), SocketState::Connected);
}

TEST_F(Socket, HostNamesConnectToo) {
  socket->Connect("localhost", server.serverPort());
  EXPECT_TRUE(QTest::qWaitFor([this] { return told == "connect "; }, 20000)) << error;
}

TEST_F(Socket, SplitDataArrivesInOrder) {
  QTcpSocket& peer = Connected();
  for (const char* part : {"NEW", "CLT1", "\x1eViper"}) {
    peer.write(part);
    peer.flush();
    const std::size_t before = got.size();
    ASSERT_TRUE(QTest::qWaitFor([this, before] { return got.size() > before; }));
  }
  EXPECT_EQ(got, "NEWCLT1\x1eViper");
}

TEST_F(Socket, ReadTakesNoMoreThanItsLimit) {
  QTcpSocket& peer = Connected();
  readAtOnce = false;
  peer.write("abcdef");
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect data "; }));
  EXPECT_EQ(socket->Read(got, 4), 4u);
  EXPECT_EQ(socket->Read(got, 4), 2u);
  EXPECT_EQ(socket->Read(got, 4), 0u);
  EXPECT_EQ(got, "abcdef");
}

TEST_F(Socket, UnreadBytesAreBoundedAndNoneIsLost) {
  QTcpSocket& peer = Connected();
  readAtOnce = false;
  // What the system may keep of it by itself is set by the machine's administrator, and here by us.
  peer.setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, 64 << 10);
  const QByteArray flood(8 << 20, 'x');
  peer.write(flood);
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect data "; }));
  ASSERT_NO_FATAL_FAILURE(CarryElsewhere(flood));
#ifndef Q_OS_WIN
  // Windows takes a write of any size at once when it has room for a part of it.
  EXPECT_GT(peer.bytesToWrite(), 0) << "the peer must feel that nobody reads";
#endif
  std::size_t largest = 0;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    const std::size_t before = got.size();
    while (socket->Read(got, 4096) > 0) {
    }
    largest = std::max(largest, got.size() - before);
    return got.size() == static_cast<std::size_t>(flood.size());
  }));
  EXPECT_LE(largest, static_cast<std::size_t>(QtSocket::ReadLimit));
}

TEST_F(Socket, WhatThePeerSentBeforeItsCloseCanBeReadThen) {
  QTcpSocket& peer = Connected();
  readAtOnce = false;
  inClose = [this] { socket->Read(got, 100); };
  peer.write("the last words");
  peer.disconnectFromHost();
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect data close "; })) << told;
  EXPECT_EQ(got, "the last words");
}

/// Ends the connection by a reset, as a server that crashes does: closing with no time to linger.
void Reset(QTcpSocket& peer) {
  const linger none{1, 0};
  const auto at = peer.socketDescriptor();
  ASSERT_EQ(
      setsockopt(static_cast<Descriptor>(at), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&none), sizeof none),
      0);
  peer.abort();
}

TEST_F(Socket, ResetConnectionIsAnErrorWithTheSystemsDescription) {
  QTcpSocket& peer = Connected();
  Reset(peer);
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect error " || told == "connect close "; }));
  EXPECT_EQ(told, "connect error ");
  EXPECT_NE(error, "");
  EXPECT_EQ(socket->State(), SocketState::Closing);
}

TEST_F(Socket, ResetBehindASendIsAnErrorToo) {
  QTcpSocket& peer = Connected();
  socket->Send("AWAEND");
  ASSERT_TRUE(QTest::qWaitFor([&peer] { return peer.bytesAvailable() == 6; }));
  Reset(peer);
  socket->Send("AWAEND");
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect error " || told == "connect close "; }));
  EXPECT_EQ(told, "connect error ");
}

TEST_F(Socket, EndOfADroppedConnectionThatIsResetIsTold) {
  QTcpSocket& peer = Connected();
  socket->Drop();
  Reset(peer);
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect close "; })) << told;
}

TEST_F(Socket, RefusedPortIsAnErrorWithTheSystemsDescription) {
  const quint16 port = server.serverPort();
  server.close();
  socket->Connect("127.0.0.1", port);
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "error "; }));
  EXPECT_NE(error, "");
  EXPECT_NE(socket->State(), SocketState::Closed);
  socket->Close();
  EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, AddressesOfTheNewerKindConnectToo) {
  QTcpServer newer;
  if (!newer.listen(QHostAddress::LocalHostIPv6)) GTEST_SKIP() << "this machine has none";
  socket->Connect("::1", newer.serverPort());
  EXPECT_TRUE(QTest::qWaitFor([this] { return told == "connect "; })) << error;
}

TEST_F(Socket, AddressThatIsNoneIsAnError) {
  // RFC 2606 keeps ".invalid" from ever being a name.
  for (const char* address : {"nobody.invalid", "", "127.0.0.1:5556", "[::1", "::zz"}) {
    told.clear();
    error.clear();
    socket->Connect(address, server.serverPort());
    EXPECT_EQ(told, "");
    EXPECT_TRUE(QTest::qWaitFor([this] { return told == "error "; }, 20000)) << address;
    EXPECT_NE(error, "") << address;
    socket->Close();
  }
}

TEST_F(Socket, PortThatIsNoneIsAnError) {
  for (const std::int32_t port : {0, -1, 65536}) {
    told.clear();
    socket->Connect("127.0.0.1", port);
    EXPECT_EQ(told, "");
    ASSERT_TRUE(QTest::qWaitFor([this] { return told == "error "; })) << port;
    socket->Close();
  }
}

TEST_F(Socket, CloseSendsEverythingAndTellsNothingMore) {
  QTcpSocket& peer = Connected();
  QByteArray arrived;
  QObject::connect(&peer, &QTcpSocket::readyRead, &peer, [&] { arrived += peer.readAll(); });
  // Bytes that nobody will read must not cost the peer what was sent to it.
  peer.write(QByteArray(100000, 'u'));
  peer.flush();
  const std::string sent(3 << 20, 's');
  socket->Send(sent);
  socket->Close();
  EXPECT_EQ(socket->State(), SocketState::Closed);
  ASSERT_TRUE(QTest::qWaitFor([&] { return peer.state() == QAbstractSocket::UnconnectedState; }, 10000));
  arrived += peer.readAll();
  EXPECT_EQ(arrived.size(), static_cast<qsizetype>(sent.size()));
  EXPECT_EQ(told, "connect ");
}

TEST_F(Socket, OfADroppedConnectionOnlyThePeersEndIsTold) {
  // The peer takes the call when it is told to, and ends its side as soon as it sees ours ended.
  server.pauseAccepting();
  socket->Connect("127.0.0.1", server.serverPort());
  ASSERT_TRUE(QTest::qWaitFor([this] { return socket->State() == SocketState::Connected; }));
  socket->Drop();
  EXPECT_EQ(socket->State(), SocketState::Closed);
  ASSERT_NO_FATAL_FAILURE(CarryElsewhere());
  EXPECT_EQ(told, "connect ");
  server.resumeAccepting();
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect close "; })) << told;
  EXPECT_EQ(socket->State(), SocketState::Closed);
}

TEST_F(Socket, EndOfADroppedConnectionIsNotToldOnceAnotherWasCalledOrClosed) {
  for (const bool again : {false, true}) {
    server.pauseAccepting();
    told.clear();
    socket->Connect("127.0.0.1", server.serverPort());
    ASSERT_TRUE(QTest::qWaitFor([this] { return socket->State() == SocketState::Connected; }));
    socket->Drop();
    if (again) {
      socket->Connect("127.0.0.1", server.serverPort());
    } else {
      socket->Close();
    }
    server.resumeAccepting();
    ASSERT_TRUE(QTest::qWaitFor([this] { return server.hasPendingConnections(); }));
    const QTcpSocket& peer = *server.nextPendingConnection();
    ASSERT_TRUE(QTest::qWaitFor([&peer] { return peer.state() == QAbstractSocket::UnconnectedState; }));
    ASSERT_NO_FATAL_FAILURE(CarryElsewhere());
    EXPECT_EQ(told, again ? "connect connect " : "connect ");
    socket->Close();
  }
}

TEST_F(Socket, EventsOfAClosedConnectionAreNotTold) {
  QTcpSocket& peer = Connected();
  peer.write("late");
  peer.flush();
  socket->Close();
  ASSERT_NO_FATAL_FAILURE(CarryElsewhere());
  EXPECT_EQ(told, "connect ");
}

TEST_F(Socket, FarewellLeavesAtTheEndOfTheProgram) {
  QTcpSocket& peer = Connected();
  socket->Send(std::string_view("AWAEND\0", 7));
  socket->Close();
  // From here on no event loop of ours turns.
  socket.reset();
  ASSERT_TRUE(QTest::qWaitFor([&] { return peer.bytesAvailable() == 7; }));
  EXPECT_EQ(peer.readAll(), QByteArray("AWAEND\0", 7));
}

TEST_F(Socket, NewConnectionFollowsAtOnce) {
  QTcpSocket& first = Connected();
  socket->Send("old");
  socket->Close();
  told.clear();
  QTcpSocket& second = Connected();
  socket->Send("new");
  ASSERT_TRUE(QTest::qWaitFor([&] { return second.bytesAvailable() == 3 && first.bytesAvailable() == 3; }));
  EXPECT_EQ(first.readAll(), QByteArray("old"));
  EXPECT_EQ(second.readAll(), QByteArray("new"));
}

TEST_F(Socket, SendOnAClosedSocketIsNothing) {
  socket->Send("unheard");
  socket->Close();
  EXPECT_EQ(socket->State(), SocketState::Closed);
  EXPECT_EQ(socket->Read(got, 10), 0u);
}

TEST_F(Socket, FailureInAHandlerStopsAtTheSocket) {
  QTcpSocket& peer = Connected();
  inClose = [] { throw std::runtime_error("handler"); };
  peer.disconnectFromHost();
  ASSERT_TRUE(QTest::qWaitFor([this] { return told == "connect close "; }));
}

}  // namespace
}  // namespace kestrel::shell
