#pragma once

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <memory>

#include "e2e/screen.h"
#include "e2e/station_folder.h"

namespace kestrel::e2e {

/// Pixels of the colour of hostile AI aircraft: their carets and altitudes.
inline int HostilePixels(const QImage& picture) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (picture.pixel(x, y) == qRgb(255, 0, 0)) ++count;
  return count;
}

/// The built station in a program folder of its own on a screen in memory, and session-sim where a test wants it.
class StationOnScreen : public testing::Test {
 protected:
  void SetUp() override { CopyStation(folder); }

  void StartStation() {
    station = std::make_unique<Child>(folder + S("/kestrel"), QStringList{}, screen.Environment());
    frame = screen.Window(S("^KESTREL v"));
    ASSERT_FALSE(frame.isEmpty()) << qPrintable(station->Output());
  }
  /// Starts session-sim with 8 players and 40 AI aircraft; `port` is where it listens.
  void StartServer(const QStringList& options, QString& port) {
    server = std::make_unique<Child>(
        S(KESTREL_BINARY_DIR "/tools/session-sim"),
        QStringList{S("--port"), S("0"), S("--players"), S("8"), S("--ai"), S("40"), S("--seed"), S("7")} + options);
    static const QRegularExpression listening(S("listening on (\\d+)"));
    QRegularExpressionMatch told;
    ASSERT_TRUE(WaitFor([&] { return (told = listening.match(server->Output())).hasMatch(); }));
    port = told.captured(1);
  }
  /// Keys in the menu bar, from the File menu on: Alt+N is shared by Connection and Links.
  void Menu(const QStringList& keys) {
    screen.Activate(frame);
    screen.Press(QStringList{S("alt+f")} + keys);
  }
  /// File menu, Exit; the station ends by itself and has written its settings.
  void Exit() {
    Menu({S("x")});
    ASSERT_TRUE(station->Ends()) << "the station did not end";
    EXPECT_FALSE(station->Crashed());
    EXPECT_EQ(station->ExitCode(), 0) << qPrintable(station->Output());
    EXPECT_TRUE(ReadText(Settings()).startsWith(S("\"KESTREL v1.0.0 Main INI File\"\r\n")));
  }
  QString Settings() const { return folder + S("/KESTREL.ini"); }
  QString Log() const { return ReadText(folder + S("/KESTRELLog.txt")); }
  /// How often the floating windows have been taken away since the start.
  qsizetype Hidings() const { return Log().count(S("Showallwindows False")); }

  const QTemporaryDir place;
  const QString folder = place.filePath(S("station"));
  Screen screen;
  std::unique_ptr<Child> server;
  std::unique_ptr<Child> station;
  QString frame;
};

}  // namespace kestrel::e2e
