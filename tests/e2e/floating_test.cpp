// The floating windows of the built station under a real window manager, which answers when it likes.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include "e2e/other_program.h"
#include "e2e/screen.h"
#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

/// Lets a program work in pieces of a moment, as on a machine that is busy with other things.
class Stumbling {
 public:
  explicit Stumbling(Child& program) : work([this, &program] { Run(program); }) {}
  ~Stumbling() {
    over = true;
    work.join();
  }
  Stumbling(const Stumbling&) = delete;
  Stumbling& operator=(const Stumbling&) = delete;

 private:
  void Run(const Child& program) const {
    std::mt19937 random(std::random_device{}());
    const auto upTo = [&random](int microseconds) {
      return std::chrono::microseconds(std::uniform_int_distribution<int>(200, microseconds)(random));
    };
    while (!over) {
      program.Pause();
      std::this_thread::sleep_for(upTo(30000));
      program.Resume();
      std::this_thread::sleep_for(upTo(3000));
    }
  }
  std::atomic<bool> over = false;
  std::thread work;
};

struct Tool {
  const char *Caption, *Prefix;
  QPoint Place;  ///< pixels of the screen
};
// Rolled up, and apart even where they are rolled down.
constexpr Tool Tools[] = {
    {"CLIENTS", "CLIENTS", {80, 120}},  {"BULLSEYE", "BULL", {400, 120}}, {"CURSOR", "CURSOR", {400, 400}},
    {"MINIMAP", "MINIMAP", {640, 120}}, {"FREQs", "FREQ", {80, 660}},     {"AREAS", "AREAS", {900, 500}},
    {"PLAYBACK", "REC", {560, 700}},    {"OPTIONS", "VIEW", {900, 120}},
};

class Floating : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    QString settings =
        S("[LOG]\r\nDEBUG=1\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=SampleStrait.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\n");
    for (const Tool& each : Tools) {
      settings += S("%1FORMX=%2\r\n%1FORMY=%3\r\n%1FORMMIN=1\r\n")
                      .arg(QString::fromLatin1(each.Prefix))
                      .arg(each.Place.x() * 15)
                      .arg(each.Place.y() * 15);
    }
    WriteText(Settings(), settings);
    StartStation();
    screen.Activate(frame);
    for (const Tool& each : Tools) {
      ASSERT_TRUE(WaitFor([&] { return Place(each).topLeft() == each.Place; })) << each.Caption;
    }
  }

  QString WindowOf(const Tool& tool) const { return screen.Window(u'^' + QString::fromLatin1(tool.Caption) + u'$'); }
  QRect Place(const Tool& tool) const { return screen.Geometry(WindowOf(tool)); }
  /// Presses CMD1, the first of the three buttons at the right of the strip; true when the window is rolled by it.
  bool Roll(const Tool& tool) {
    const QRect before = Place(tool);
    screen.Click(before.topRight() + QPoint(-50, 11));
    return WaitFor([&] { return Place(tool).height() != before.height(); });
  }
  /// Keys in the menu Screen, Show...
  void Show(const QStringList& entry) {
    screen.Activate(frame);
    screen.Press(QStringList{S("alt+f"), S("Right"), S("Right"), S("Right"), S("Right"), S("Return")} + entry);
  }
  bool AreShown(bool shown) {
    return WaitFor([&] {
      return std::all_of(std::begin(Tools), std::end(Tools), [&](const Tool& each) {
        return screen.HasWindow(u'^' + QString::fromLatin1(each.Caption) + u'$') == shown;
      });
    });
  }
};

TEST_F(Floating, StayWhereTheyAreWhenTheyAreHiddenAndShownAgainAndThenRolled) {
  for (int round = 1; round <= 5; ++round) {
    SCOPED_TRACE(round);
    {
      const Stumbling busy(screen.Manager());
      Show({S("Down"), S("Return")});
      ASSERT_TRUE(AreShown(false));
      Show({S("Return")});
      ASSERT_TRUE(AreShown(true));
    }
    // Down in this round, up in the next one.
    for (const Tool& each : {Tools[0], Tools[1], Tools[2], Tools[3]}) {
      ASSERT_TRUE(Roll(each)) << each.Caption;
      ASSERT_EQ(Place(each).topLeft(), each.Place) << each.Caption;
    }
  }
}

TEST_F(Floating, ACaptionDragsItsWindow) {
  const Tool& tool = Tools[0];
  screen.Drag(tool.Place + QPoint(60, 10), tool.Place + QPoint(160, 210));
  EXPECT_TRUE(WaitFor([&] { return Place(tool).topLeft() == tool.Place + QPoint(100, 200); }));
  ASSERT_TRUE(Roll(tool));
  EXPECT_EQ(Place(tool).topLeft(), tool.Place + QPoint(100, 200)) << "it is not believed where it stands";
}

TEST_F(Floating, ACaptionThatIsClickedWhileTheStationIsBusyDoesNotHoldItsWindowAtThePointer) {
  const Tool &tool = Tools[0], &other = Tools[1];
  const int rolledUp = Place(other).height();
  const QPoint roll = Place(other).topRight() + QPoint(-50, 11);
  station->Pause();
  screen.Click(tool.Place + QPoint(60, 10));
  screen.Click(roll);
  station->Resume();
  ASSERT_TRUE(WaitFor([&] { return Place(other).height() > rolledUp; })) << "the first click is not over";
  screen.Point(tool.Place + QPoint(300, 300));
  screen.Click(roll);
  EXPECT_TRUE(WaitFor([&] { return Place(other).height() == rolledUp; })) << "the click has gone elsewhere";
  EXPECT_EQ(Place(tool).topLeft(), tool.Place);
}

TEST_F(Floating, ACaptionThatIsClickedWhileTheWindowManagerIsBusyLeavesItsWindowThere) {
  const Tool &tool = Tools[0], &other = Tools[1];
  screen.Manager().Pause();
  screen.Click(tool.Place + QPoint(60, 10));
  screen.Point(tool.Place + QPoint(300, 300));
  screen.Manager().Resume();
  ASSERT_TRUE(Roll(other)) << "the first click is not over";
  EXPECT_EQ(Place(tool).topLeft(), tool.Place);
}

TEST_F(Floating, AClickAsSoonAsADialogHasGoneTakesNoneAway) {
  const Tool &clients = Tools[0], &miniMap = Tools[3];
  ASSERT_TRUE(Roll(clients));
  ASSERT_TRUE(Roll(miniMap));
  const QPoint places[] = {clients.Place + QPoint(60, 64), clients.Place + QPoint(60, 10),
                           miniMap.Place + QPoint(100, 120), miniMap.Place + QPoint(40, 10)};
  for (int round = 1; round <= 8; ++round) {
    SCOPED_TRACE(round);
    screen.Activate(frame);
    screen.Press({S("alt+f"), S("Right"), S("Return")});
    ASSERT_FALSE(screen.Window(S("^Connect to")).isEmpty());
    screen.Press({S("Escape")});
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow(S("^MINIMAP$")); }));
    screen.Click(places[round % std::size(places)]);
    ASSERT_TRUE(AreShown(true));
  }
  EXPECT_EQ(Hidings(), 8) << "each dialog, and nothing else";
  // The next hiding in the log is the one that another program causes now.
  OtherProgram other(screen.Display());
  ASSERT_TRUE(other.TakeFocus());
  EXPECT_TRUE(AreShown(false));
  EXPECT_EQ(Hidings(), 9) << qPrintable(Log());
}

}  // namespace
}  // namespace kestrel::e2e
