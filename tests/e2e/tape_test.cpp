// A tape of the built station: recorded against session-sim, and replayed after a new start, with the player's window
// worked by the mouse.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <iterator>

#include "e2e/screen.h"
#include "e2e/station_on_screen.h"
#include "project_paths.h"

namespace kestrel::e2e {
namespace {

// Places in the player's window, from its upper left corner, pixels.
constexpr QPoint LoadFile(60, 62), CloseFile(170, 62), Play(25, 97), Pause(61, 97), Stop(97, 97);
constexpr QPoint PositionBarLeft(16, 127), PositionBarRight(214, 127);
constexpr QPoint SpeedLeft(50, 194), SpeedRight(170, 194);
constexpr QRect TimeText(124, 84, 104, 26);
constexpr QRect SpeedText(6, 162, 200, 20);

class StationTape : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    // Two seconds and somewhat more between records, so that each gap is two or three whole seconds.
    QString port;
    StartServer({S("--period-ms"), S("2100"), S("--duration-s"), S("280")}, port);
    // Only the player's window is open, rolled down in a corner of the map: pixels 60, 120.
    QString options = S("[OPTIONS]\r\nCONNPORT=") + port + S("\r\n");
    for (const char* hidden : {"BULL", "FREQ", "CURSOR", "VIEW", "AREAS", "CLIENTS", "MINIMAP"}) {
      options += QString::fromLatin1(hidden) + S("FORMHID=1\r\n");
    }
    options += S("RECFORMX=900\r\nRECFORMY=1800\r\nRECFORMMIN=0\r\nRECFORMHID=0\r\n");
    QString settings = ReadText(Settings());
    settings.replace(S("DEBUG=0"), S("DEBUG=1"));
    settings.replace(QRegularExpression(S("\\[OPTIONS\\]\r?\n")), options);
    WriteText(Settings(), settings);
  }

  void StartPlayer() {
    ASSERT_NO_FATAL_FAILURE(StartStation());
    const QString player = screen.Window(S("^PLAYBACK$"));
    ASSERT_FALSE(player.isEmpty());
    corner = screen.Geometry(player).topLeft();
  }
  /// Connection, Phonebook, Demo session, then blue by the dialog's default.
  void Connect(int times) {
    Menu({S("Right"), S("Up"), S("Right"), S("Up"), S("Return")});
    const QString dialog = screen.Window(S("^Select Channel$"));
    ASSERT_FALSE(dialog.isEmpty());
    screen.Activate(dialog);
    screen.Press({S("Return")});
    ASSERT_TRUE(WaitFor([&] { return server->Output().count(S("received NAWACS1")) == times; }))
        << qPrintable(server->Output());
  }
  void Press(QPoint button) { screen.Click(corner + button); }
  QImage Part(const QRect& part) const { return screen.Picture().copy(part.translated(corner)); }
  /// Waits until a part of the player's window looks so, or does not.
  bool Becomes(const QRect& part, const QImage& look) {
    return WaitFor([&] { return Part(part) == look; });
  }
  bool Leaves(const QRect& part, const QImage& look) {
    return WaitFor([&] { return Part(part) != look; });
  }

  QPoint corner;  ///< of the player's window on the screen
};

TEST_F(StationTape, IsRecordedAndReplayedAtEverySpeed) {
  // A recording that the exit ends.
  StartPlayer();
  Connect(1);
  // Leftward from the File menu: Help, Tools, Links, Recording.
  Menu({S("Left"), S("Left"), S("Left"), S("Left"), S("t")});
  const QString tapes = folder + S("/TAPES");
  QString tape;
  ASSERT_TRUE(WaitFor([&] {
    for (const QString& name : QDir(tapes).entryList({S("*.tap")}, QDir::Files))
      if (name != S("Demo.tap")) tape = tapes + u'/' + name;
    return !tape.isEmpty();
  })) << "no recording has begun";
  const auto before = Log().count(S("(SYNCRO)"));
  ASSERT_TRUE(WaitFor([&] { return Log().count(S("(SYNCRO)")) >= before + 15; }, 120));
  Exit();
  EXPECT_TRUE(WaitFor([&] { return server->Output().contains(S("received AWAEND")); }));
  QFile file(tape);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray head = file.read(13);
  EXPECT_TRUE(head.startsWith("TAPEv2.01"));
  EXPECT_GE(static_cast<unsigned char>(head[9]), 14) << "the count was not written at the exit";

  // A new start: the tape is loaded by its name, without a session.
  StartPlayer();
  const QImage noTime = Part(TimeText);
  const int emptyMap = HostilePixels(screen.Picture());
  Press(LoadFile);
  const QString dialog = screen.Window(S("^Load Tape File$"));
  ASSERT_FALSE(dialog.isEmpty());
  screen.Activate(dialog);
  screen.Type(tape);
  screen.Press({S("Return")});
  ASSERT_TRUE(Leaves(TimeText, noTime)) << "the tape was not loaded";
  const QImage first = Part(TimeText);
  EXPECT_GT(HostilePixels(screen.Picture()), emptyMap + 50) << "no AI aircraft of the tape on the map";

  // Each speed: the time runs, and Stop brings the first record back. The tape may have ended by itself before.
  QImage caption;
  for (int step = 0; step <= 4; ++step) {
    SCOPED_TRACE(step);
    Press(SpeedLeft + (SpeedRight - SpeedLeft) * step / 4);
    ASSERT_TRUE(Leaves(SpeedText, caption)) << "the speed stays as it was";
    caption = Part(SpeedText);
    Press(Play);
    ASSERT_TRUE(Leaves(TimeText, first)) << "the tape does not run";
    Press(Stop);
    ASSERT_TRUE(Becomes(TimeText, first)) << "Stop does not bring the first record back";
  }

  // A jump to the end of the bar and back to its middle; play from there, pause, stop.
  Press(PositionBarRight);
  ASSERT_TRUE(Leaves(TimeText, first));
  const QImage last = Part(TimeText);
  Press((PositionBarLeft + PositionBarRight) / 2);
  ASSERT_TRUE(Leaves(TimeText, last));
  const QImage middle = Part(TimeText);
  EXPECT_NE(middle, first);
  Press(SpeedLeft);
  Press(Play);
  ASSERT_TRUE(Leaves(TimeText, middle));
  Press(Stop);
  EXPECT_TRUE(Becomes(TimeText, first));

  // A paused tape stands: at this speed a running one would show another time in each of these pictures.
  Press(SpeedRight);
  Press(Play);
  ASSERT_TRUE(Leaves(TimeText, first));
  Press(Pause);
  QImage paused[4];
  ASSERT_TRUE(WaitFor([&] {
    for (QImage& each : paused) each = Part(TimeText);
    return std::all_of(std::begin(paused), std::end(paused), [&](const QImage& each) { return each == paused[0]; });
  }));
  EXPECT_NE(paused[0], first) << "it has ended, not paused";
  Press(Stop);
  EXPECT_TRUE(Becomes(TimeText, first));

  // Closed, the map is empty and a connection can be made again.
  Press(CloseFile);
  EXPECT_TRUE(Becomes(TimeText, noTime));
  EXPECT_TRUE(WaitFor([&] { return HostilePixels(screen.Picture()) <= emptyMap; }));
  Connect(2);
  Exit();
}

TEST_F(StationTape, EndsAConnectionWhenOneIsLoaded) {
  StartPlayer();
  Connect(1);
  ASSERT_TRUE(WaitFor([&] { return Log().count(S("(SYNCRO)")) >= 1; }));
  const QImage noTime = Part(TimeText);
  Press(LoadFile);
  const QString dialog = screen.Window(S("^Load Tape File$"));
  ASSERT_FALSE(dialog.isEmpty());
  screen.Activate(dialog);
  screen.Type(S("Demo.tap"));
  screen.Press({S("Return")});
  EXPECT_TRUE(WaitFor([&] { return server->Output().contains(S("received AWAEND")); }));
  EXPECT_TRUE(Leaves(TimeText, noTime));
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+$")).isEmpty()) << "the caption still tells of a session";
  // Loaded as it is, the station ends in order.
  Exit();
}

}  // namespace
}  // namespace kestrel::e2e
