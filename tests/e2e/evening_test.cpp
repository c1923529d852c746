// One evening of a controller: two aircraft tied, a tape begun, the server lost and found again, the tape gone on with
// and exported.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <vector>

#include "e2e/screen.h"
#include "e2e/station_on_screen.h"
#include "project_paths.h"
#include "tape/acmi_reader.h"

namespace kestrel::e2e {
namespace {

class StationEvening : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    // Somewhat more than a second between records, so that each has a time of its own.
    StartServer({S("--period-ms"), S("1100"), S("--duration-s"), S("280")}, port);
    QString options = S("[OPTIONS]\r\nCONNPORT=") + port + S("\r\n");
    for (const char* hidden : {"BULL", "FREQ", "CURSOR", "VIEW", "AREAS", "CLIENTS", "REC", "MINIMAP"}) {
      options += QString::fromLatin1(hidden) + S("FORMHID=1\r\n");
    }
    QString settings = ReadText(Settings());
    settings.replace(S("DEBUG=0"), S("DEBUG=1"));
    settings.replace(QRegularExpression(S("\\[OPTIONS\\]\r?\n")), options);
    WriteText(Settings(), settings + S("\r\n[KESTREL]\r\nRECONNECT=1\r\nRECORDAGAIN=1\r\n"));
  }

  /// The same server at the same address again, the session begun anew.
  void StartServerAgain() {
    server =
        std::make_unique<Child>(S(KESTREL_BINARY_DIR "/tools/session-sim"),
                                QStringList{S("--port"), port, S("--players"), S("8"), S("--ai"), S("40"), S("--seed"),
                                            S("7"), S("--period-ms"), S("1100"), S("--duration-s"), S("280")});
    ASSERT_TRUE(WaitFor([&] { return server->Output().contains(S("listening on ") + port); }))
        << qPrintable(server->Output());
  }

  /// The tapes of the evening, the older first.
  QStringList Tapes() const {
    QStringList names = QDir(folder + S("/TAPES")).entryList({S("*.tap")}, QDir::Files, QDir::Name);
    names.removeAll(S("Demo.tap"));
    return names;
  }
  qsizetype Cycles() const { return Log().count(S("(SYNCRO)")); }
  bool CyclesPass(int count) {
    const qsizetype before = Cycles();
    return WaitFor([&] { return Cycles() >= before + count; }, 60);
  }
  /// Leftward from the File menu: Help, Tools, Links, Recording; then `keys` in it.
  void RecordingMenu(const QStringList& keys) { Menu(QStringList{S("Left"), S("Left"), S("Left"), S("Left")} + keys); }

  /// The map, without the frame's menu and strip.
  QImage Map() const {
    const QRect inside = screen.Geometry(frame);
    return screen.Picture().copy(inside.adjusted(0, 60, 0, -60));
  }
  int Hostile() const { return HostilePixels(Map()); }
  /// Pixels of lines between aircraft and their texts, whose edges are somewhat paler.
  int Tied() const {
    const QImage map = Map();
    int count = 0;
    for (int y = 0; y < map.height(); ++y) {
      for (int x = 0; x < map.width(); ++x) {
        const QRgb pixel = map.pixel(x, y);
        count += qRed(pixel) > 200 && qGreen(pixel) < 80 && qBlue(pixel) > 200;
      }
    }
    return count;
  }
  /// Places on the screen where hostile AI aircraft are drawn, far from each other.
  std::vector<QPoint> Hostiles() const {
    const QImage map = Map();
    const QPoint corner = screen.Geometry(frame).topLeft() + QPoint(0, 60);
    std::vector<QPoint> places;
    for (int y = 0; y < map.height(); ++y) {
      for (int x = 0; x < map.width(); ++x) {
        if (map.pixel(x, y) != qRgb(255, 0, 0)) continue;
        const QPoint place = corner + QPoint(x, y);
        const bool near = std::any_of(places.begin(), places.end(),
                                      [&](QPoint other) { return (other - place).manhattanLength() < 60; });
        if (!near) places.push_back(place);
      }
    }
    return places;
  }
  /// Ctrl and the left button on one aircraft after another until two are tied.
  bool TieTwo() {
    for (const QPoint& place : Hostiles()) {
      screen.Key(S("keydown"), S("ctrl"));
      screen.Click(place);
      screen.Key(S("keyup"), S("ctrl"));
      if (Tied() > LeastTie) return true;
    }
    return WaitFor([&] { return Tied() > LeastTie; });
  }

  /// The ring around one that is picked has fewer pixels than a line and its text.
  static constexpr int LeastTie = 150;
  QString port;
};

TEST_F(StationEvening, TiesLosesTheServerHealsRecordsOnAndExports) {
  ASSERT_NO_FATAL_FAILURE(StartStation());
  // Connection, Phonebook, Demo session, then blue by the dialog's default.
  Menu({S("Right"), S("Up"), S("Right"), S("Up"), S("Return")});
  const QString dialog = screen.Window(S("^Select Channel$"));
  ASSERT_FALSE(dialog.isEmpty());
  screen.Activate(dialog);
  screen.Press({S("Return")});
  ASSERT_TRUE(CyclesPass(4)) << qPrintable(Log().right(2000));

  EXPECT_EQ(Tied(), 0);
  ASSERT_TRUE(TieTwo()) << "no line between two aircraft";
  RecordingMenu({S("t")});
  ASSERT_TRUE(WaitFor([&] { return Tapes().size() == 1; })) << "no recording has begun";
  ASSERT_TRUE(CyclesPass(3));
  EXPECT_GT(Tied(), LeastTie) << "the line follows them";

  // The server dies: the last picture stays in grey, the tie has ended with its aircraft, the tape is whole.
  server->Kill();
  ASSERT_FALSE(screen.Window(S("^KESTREL v[0-9.]+$")).isEmpty()) << "the caption still tells of a session";
  EXPECT_TRUE(WaitFor([&] { return Log().contains(S("A tie has ended: ")); }));
  EXPECT_TRUE(WaitFor([&] { return Tied() == 0 && Hostile() == 0; })) << "it is not grey";
  EXPECT_TRUE(WaitFor([&] { return Log().contains(S("Calling the lost server again: 127.0.0.1, call 2")); }));
  ASSERT_TRUE(server->Ends());
  ASSERT_NO_FATAL_FAILURE(StartServerAgain());

  // It heals by itself, and a second tape begins. Nobody is asked or told in a box.
  ASSERT_TRUE(WaitFor([&] { return server->Output().contains(S("received NAWACS1")); }, 60))
      << qPrintable(server->Output());
  ASSERT_FALSE(screen.Window(S("^KESTREL v[0-9.]+ - BLUE CHANNEL$")).isEmpty());
  ASSERT_TRUE(WaitFor([&] { return Tapes().size() == 2; })) << "the recording does not go on";
  ASSERT_TRUE(CyclesPass(5));
  EXPECT_GT(Hostile(), 50) << "the map is still grey";
  EXPECT_FALSE(screen.HasWindow(S("^Select Channel$")));
  EXPECT_FALSE(screen.HasWindow(S("^Connection$")));
  RecordingMenu({S("p")});
  for (const QString& name : Tapes()) {
    const QString path = folder + S("/TAPES/") + name;
    // The count of the records stands behind the nine bytes of the version and is written when the tape is closed.
    EXPECT_TRUE(WaitFor([&] {
      QFile file(path);
      return file.open(QIODevice::ReadOnly) && static_cast<unsigned char>(file.read(13).at(9)) >= 3;
    })) << qPrintable(name);
  }

  // The second tape goes to others.
  RecordingMenu({S("Up"), S("Return")});
  const QString exported = folder + S("/evening.txt.acmi");
  QString former;
  for (const QString& file : {folder + S("/TAPES/") + Tapes().back(), exported}) {
    QString window;
    ASSERT_TRUE(WaitFor([&] {
      window = screen.Window(S("^Export Tape to Tacview"), 1);
      return !window.isEmpty() && window != former;
    }));
    former = window;
    screen.Activate(window);
    screen.Type(file);
    screen.Press({S("Return")});
  }
  ASSERT_TRUE(WaitFor([&] { return QFile::exists(exported); })) << "nothing was exported";
  QFile file(exported);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const test::Acmi acmi = test::ReadAcmi(file.readAll().toStdString());
  ASSERT_GE(acmi.Frames.size(), 3U);
  const auto& things = acmi.Frames.back().Things;
  EXPECT_EQ(std::count_if(things.begin(), things.end(),
                          [](const auto& thing) {
                            const auto type = thing.second.Properties.find("Type");
                            return type != thing.second.Properties.end() && type->second == "Air+FixedWing";
                          }),
            std::ssize(things) - 1)
      << "all but the bullseye";
  EXPECT_GE(things.size(), 21U) << "half of the 40 AI aircraft are of the side, and there is the bullseye";
  Exit();
}

}  // namespace
}  // namespace kestrel::e2e
