// The floating windows of the built station while the keyboard goes from window to window and to another program.

#include <gtest/gtest.h>

#include <utility>

#include "e2e/other_program.h"
#include "e2e/screen.h"
#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

class Activation : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    // Two floating windows are open, apart from each other: pixels 80, 120 and 600, 120.
    QString settings =
        S("[LOG]\r\nDEBUG=1\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=SampleStrait.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\n"
          "CLIENTSFORMX=1200\r\nCLIENTSFORMY=1800\r\nCLIENTSFORMMIN=0\r\n"
          "MINIMAPFORMX=9000\r\nMINIMAPFORMY=1800\r\nMINIMAPFORMMIN=0\r\n");
    for (const char* hidden : {"BULL", "FREQ", "CURSOR", "VIEW", "AREAS", "REC"}) {
      settings += QString::fromLatin1(hidden) + S("FORMHID=1\r\n");
    }
    WriteText(Settings(), settings);
    StartStation();
    screen.Activate(frame);
    ASSERT_TRUE(Floating(true)) << qPrintable(Log());
  }

  /// Waits until both floating windows are on the screen, or none of them.
  bool Floating(bool shown) {
    return WaitFor(
        [&] { return screen.HasWindow(S("^CLIENTS$")) == shown && screen.HasWindow(S("^MINIMAP$")) == shown; });
  }
  QPoint Corner(const char* title) { return screen.Geometry(screen.Window(QString::fromLatin1(title))).topLeft(); }
};

TEST_F(Activation, AnotherProgramTakesThemAwayAndTheStationBringsThemBack) {
  OtherProgram other(screen.Display());
  ASSERT_TRUE(other.TakeFocus());
  EXPECT_TRUE(Floating(false));
  EXPECT_TRUE(screen.HasWindow(S("^KESTREL v"))) << "the frame stays";
  EXPECT_EQ(Hidings(), 1);
  screen.Activate(frame);
  EXPECT_TRUE(Floating(true));
  EXPECT_FALSE(screen.HasWindow(S("^CURSOR$"))) << "it was not there before";
  EXPECT_EQ(Hidings(), 1);
}

TEST_F(Activation, NothingGoesWhileTheKeyboardMovesBetweenTheStationsOwnWindows) {
  const QPoint clients = Corner("^CLIENTS$") + QPoint(60, 64);
  const QPoint miniMap = Corner("^MINIMAP$") + QPoint(100, 120);
  const QPoint map = screen.Geometry(frame).center();
  for (int round = 0; round < 3; ++round) {
    for (const QPoint& point : {clients, map, miniMap}) screen.Click(point);
    screen.Activate(frame);
  }
  EXPECT_EQ(Hidings(), 0) << qPrintable(Log());
  // The first hiding in the log is the one that another program causes now.
  OtherProgram other(screen.Display());
  ASSERT_TRUE(other.TakeFocus());
  EXPECT_TRUE(Floating(false));
  EXPECT_EQ(Hidings(), 1) << qPrintable(Log());
}

TEST_F(Activation, NothingChangesWhileADialogIsOpen) {
  screen.Press({S("alt+f"), S("Right"), S("Return")});
  const QString dialog = screen.Window(S("^Connect to"));
  ASSERT_FALSE(dialog.isEmpty());
  ASSERT_TRUE(Floating(false)) << "the dialog has taken them away";
  // Cancel has the keyboard, and the border of the default button with it, for as long as the station believes that the
  // dialog has it; else that border is back at OK. No caret blinks meanwhile.
  screen.Activate(dialog);
  screen.Press({S("Tab"), S("Tab"), S("Tab")});
  const auto look = [this, &dialog] { return screen.Picture().copy(screen.Geometry(dialog)); };
  QImage inUse;
  ASSERT_TRUE(WaitFor([&] { return std::exchange(inUse, look()) == inUse && !inUse.isNull(); }));
  OtherProgram other(screen.Display());
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(other.TakeFocus());
    ASSERT_TRUE(WaitFor([&] { return look() != inUse; })) << "the station has not noticed";
    screen.Activate(dialog);
    ASSERT_TRUE(WaitFor([&] { return look() == inUse; })) << "the station has not noticed";
    EXPECT_FALSE(Log().contains(S("Showallwindows True"))) << "back though the dialog is open";
    EXPECT_FALSE(screen.HasWindow(S("^CLIENTS$")));
    EXPECT_TRUE(screen.HasWindow(S("^Connect to")));
  }
  EXPECT_EQ(Hidings(), 1);
  screen.Press({S("Escape")});
  EXPECT_TRUE(Floating(true));
}

}  // namespace
}  // namespace kestrel::e2e
