// Servers that take a connection and end it at once, over real sockets: nothing is left of any.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "core/healing.h"
#include "core/program.h"
#include "doubles/fake_clock.h"
#include "doubles/fake_global_keys.h"
#include "doubles/fake_voice.h"
#include "doubles/recording_windows.h"
#include "doubles/scripted_desktop.h"
#include "shell/link/qt_socket.h"

namespace kestrel::shell {
namespace {

/// A station without windows over a real socket, in which a lost server is called again by itself.
class LostLinks : public testing::Test, public link::SessionHost {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    station.LinkOptions.CONNPORT = server.serverPort();
    station.HealingOptions.RECONNECT = true;
    // Nobody may wait for an event that does not come.
    heartbeat.start(50);
    QObject::connect(&server, &QTcpServer::newConnection, [this] {
      QTcpSocket* peer = server.nextPendingConnection();
      ++taken;
      peer->abort();
      peer->deleteLater();
    });
  }

  std::optional<std::uint8_t> ChooseChannel(std::uint8_t present) override { return present; }
  void Refresh(base::Changed) override { core::LookAtLink(program); }
  bool LinkLost(const std::string& why) override {
    ++lost;
    return core::LinkLost(program, why);
  }
  void LinkLeft() override { core::LinkLeft(program); }

  /// Until the link has been lost so often.
  bool LoseUpTo(int count) {
    const QDeadlineTimer limit(60'000);
    while (lost < count && !limit.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
      clock.Ticks += 30'000;
      core::LinkTick(program);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return lost >= count;
  }
  static qsizetype OpenFiles() {
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
  }
  static std::size_t Memory() {
#ifdef __GLIBC__
    return mallinfo2().uordblks;
#else
    return 0;
#endif
  }

  QTcpServer server;
  QTimer heartbeat;
  int taken = 0;
  int lost = 0;
  core::Station station;
  doubles::FakeClock clock;
  doubles::ScriptedDesktop desk;
  doubles::RecordingWindows shown;
  base::DebugLog log{clock};
  link::Capture raw{clock};
  QtSocket socket{log};
  link::Session session{socket, desk, *this, log, raw, station.Session, station.Plots, station.LinkOptions};
  doubles::FakeGlobalKeys keys;
  doubles::FakeVoice voiceWindows;
  radio::VoiceBridge voice{voiceWindows, station.VoiceWindowName};
  core::Program program{station, desk, shown, log, raw, session, keys, voice};
};

TEST_F(LostLinks, AThousandInARowLeaveNoSocketAndNoMemory) {
  const qsizetype files = OpenFiles();
  session.ConnectTo("127.0.0.1");
  ASSERT_TRUE(LoseUpTo(100));
  const std::size_t memory = Memory();
  ASSERT_TRUE(LoseUpTo(1000));
  core::StopHealing(program);
  EXPECT_GE(taken, 900) << "connections that stood";
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_FALSE(session.Open());
  EXPECT_TRUE(QTest::qWaitFor([&] { return OpenFiles() == files; })) << OpenFiles() << " were " << files;
  // A socket of the toolkit takes some kilobytes: 900 of them would be megabytes.
  EXPECT_LT(Memory(), memory + 200'000);
}

TEST_F(LostLinks, ServerThatEndsEachAtOnceIsNotCalledBetweenTwoTicks) {
  session.ConnectTo("127.0.0.1");
  ASSERT_TRUE(QTest::qWaitFor([this] { return lost == 1; }));
  // The first call is due a second later, the one after it two seconds.
  for (const int seconds : {1, 2, 4}) {
    const int before = taken;
    clock.Ticks += static_cast<std::uint32_t>(seconds) * 1000 - 1;
    core::LinkTick(program);
    EXPECT_FALSE(session.Open());
    clock.Ticks += 1;
    core::LinkTick(program);
    EXPECT_TRUE(session.Open());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !session.Open(); }));
    EXPECT_LE(taken, before + 1);
    core::LinkTick(program);
    EXPECT_FALSE(session.Open()) << "not at once";
  }
}

}  // namespace
}  // namespace kestrel::shell
