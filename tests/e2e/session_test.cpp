// The built station under Xvfb, flown against session-sim through its own menus.

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "e2e/screen.h"
#include "e2e/station_on_screen.h"
#include "project_paths.h"

namespace kestrel::e2e {
namespace {

class StationSession : public StationOnScreen {
 protected:
  /// A server with `faults`, and the station with its log on.
  void Start(const QStringList& faults) {
    QString port;
    StartServer(QStringList{S("--period-ms"), S("200"), S("--duration-s"), S("240")} + faults, port);
    QString settings = ReadText(Settings());
    settings.replace(QRegularExpression(S("CONNPORT=\\d+")), S("CONNPORT=") + port);
    settings.replace(QRegularExpression(S("DEBUG=\\d")), S("DEBUG=1"));
    WriteText(Settings(), settings);
    StartStation();
    screen.Activate(frame);
  }

  /// Right of the File menu (Alt+N is shared with Links): Connection, Phonebook, Demo session, then blue by the
  /// dialog's default.
  void Connect() {
    screen.Press({S("alt+f"), S("Right"), S("Up"), S("Right"), S("Up"), S("Return")});
    ASSERT_FALSE(screen.Window(S("Channel")).isEmpty());
    screen.Press({S("Return")});
    ASSERT_TRUE(WaitFor([&] { return server->Output().contains(S("received NAWACS1")); }))
        << qPrintable(server->Output());
  }
};

TEST_F(StationSession, LivesThroughCutAndMalformedMessagesAndLeavesInOrder) {
  Start({S("--split"), S("--garbage"), S("5")});
  const int before = HostilePixels(screen.Picture());
  Connect();
  ASSERT_TRUE(WaitFor([&] { return Log().count(S("(SYNCRO)")) >= 25; }, 60)) << qPrintable(Log().right(2000));
  EXPECT_GE(Log().count(S("(NEWCLT)")), 1);
  EXPECT_GE(Log().count(S("Message dropped")), 1) << "the malformed messages were not seen";
  EXPECT_GT(HostilePixels(screen.Picture()), before + 50) << "no AI aircraft on the map";
  EXPECT_TRUE(station->Running());

  // In the Connection menu the entry above the last one: Disconnect.
  screen.Press({S("alt+f"), S("Right"), S("Up"), S("Up"), S("Return")});
  EXPECT_TRUE(WaitFor([&] { return server->Output().contains(S("received AWAEND")); })) << qPrintable(server->Output());
  EXPECT_TRUE(WaitFor([&] { return Log().contains(S("Command sent to Server: (AWAEND)")); }));
  Exit();
}

TEST_F(StationSession, TellsThatTheServerEndedTheSessionAndRunsOn) {
  Start({S("--discon-after-s"), S("3")});
  Connect();
  const QString box = screen.Window(S("^Info$"));
  ASSERT_FALSE(box.isEmpty());
  screen.Activate(box);
  screen.Press({S("Return")});
  EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow(S("^Info$")); }));
  screen.Activate(frame);
  Exit();
}

TEST_F(StationSession, RunsOnWhenTheServerVanishes) {
  Start({S("--drop-after-s"), S("3")});
  Connect();
  ASSERT_FALSE(screen.Window(S("^KESTREL v[0-9.]+ - BLUE CHANNEL$")).isEmpty());
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+$")).isEmpty()) << "the caption still tells of a session";
  Exit();
}

TEST_F(StationSession, SaysGoodbyeWhenItIsClosedWhileConnected) {
  Start({});
  Connect();
  ASSERT_TRUE(WaitFor([&] { return Log().count(S("(SYNCRO)")) >= 2; }));
  Exit();
  EXPECT_TRUE(WaitFor([&] { return server->Output().contains(S("received AWAEND")); })) << qPrintable(server->Output());
}

}  // namespace
}  // namespace kestrel::e2e
