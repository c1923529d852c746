#include "core/tapes.h"
#include "core/view_options.h"
#include "shell/map/aircraft_fixture.h"

namespace kestrel::shell {
namespace {

using test::Message;

/// Ties of the aircraft there.
class TiesOnTheMapWindow : public AircraftOnTheMap {
 protected:
  void Press(QPointF at, Qt::KeyboardModifiers keys = Qt::ControlModifier) {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, Picture().mapToGlobal(at), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, keys);
      QCoreApplication::sendEvent(&Picture(), &event);
    }
  }
  void TieBoth() {
    Press(Player());
    Press(Bandit());
    ASSERT_EQ(Ties().All.size(), 1U);
  }
  map::Ties& Ties() { return station.Ties; }
  std::string Text() { return Ties().Lines.empty() ? "none" : Ties().Lines[0].Text; }
  QImage Map() { return Picture().grab().toImage(); }
};

TEST_F(TiesOnTheMapWindow, TwoPressesWithCtrlTieAndTheTextTakesTheLineAway) {
  const QImage before = Map();
  const double anchor = View().AnchorX;
  TieBoth();
  EXPECT_EQ(View().AnchorX, anchor) << "the anchor of the cursor stays";
  // 150 miles are 277.8 map units: the bandit is at (577.8, 400), the player at (396.3, 396.3): 181.5 units or 98 miles
  // away. 3.7 units to the north are 1.2 degrees: 089.
  EXPECT_EQ(Text(), "BRAA 089/98, 25 000, manoeuvring");
  EXPECT_NE(Map(), before);
  Snapshot("140");
  EXPECT_EQ(Text(), "BRAA 089/88, 25 000, hot");
  Snapshot("290");  // far enough for a text of any font
  Press((Player() + Bandit()) / 2);
  EXPECT_TRUE(Ties().All.empty());
  EXPECT_EQ(View().AnchorX, anchor);
  Press({20, 20});
  EXPECT_NE(View().AnchorX, anchor) << "where nothing is, Ctrl changes nothing";
}

TEST_F(TiesOnTheMapWindow, ADoubleClickWithCtrlOnAnAircraftIsASecondPress) {
  const auto doubleClick = [this](QPointF at) {
    QMouseEvent event(QEvent::MouseButtonDblClick, at, Picture().mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::ControlModifier);
    QCoreApplication::sendEvent(&Picture(), &event);
  };
  const std::uint64_t maps = Picture().MapDraws();
  Press(Player());
  doubleClick(Player());
  EXPECT_FALSE(Ties().Picked);
  EXPECT_EQ(Picture().MapDraws(), maps);
  doubleClick({20, 20});
  EXPECT_EQ(Picture().MapDraws(), maps + 1) << "elsewhere it centres the map";
}

TEST_F(TiesOnTheMapWindow, EscInTheMapTakesAllAway) {
  TieBoth();
  Press(Bandit());
  ASSERT_TRUE(Ties().Picked);
  const std::uint64_t draws = Picture().PlotDraws();
  QTest::keyClick(&Picture(), Qt::Key_Escape);
  EXPECT_TRUE(Ties().All.empty());
  EXPECT_FALSE(Ties().Picked);
  EXPECT_EQ(Picture().PlotDraws(), draws + 1);
  QTest::keyClick(&Picture(), Qt::Key_Escape);
  EXPECT_EQ(Picture().PlotDraws(), draws + 1) << "nothing was there";
}

TEST_F(TiesOnTheMapWindow, APressWithoutCtrlOrWhileAnAreaIsEditedTiesNothing) {
  for (const Qt::KeyboardModifiers keys : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
    Press(Player(), keys);
    EXPECT_FALSE(Ties().Picked);
  }
  station.Editor.AreaEditMode = true;
  Press(Player());
  EXPECT_FALSE(Ties().Picked);
  station.Editor.AreaEditMode = false;
  Press(Player());
  EXPECT_TRUE(Ties().Picked);
}

TEST_F(TiesOnTheMapWindow, AnArrivalCostsOneRedrawWithTiesAsWithout) {
  TieBoth();
  const std::uint64_t plots = Picture().PlotDraws();
  const std::uint64_t maps = Picture().MapDraws();
  Snapshot("148");
  EXPECT_EQ(Picture().PlotDraws(), plots + 1);
  EXPECT_EQ(Picture().MapDraws(), maps);
}

TEST_F(TiesOnTheMapWindow, TheLogTellsThatATieHasEnded) {
  windows.Refresh(core::ToggleOption(program, "chkDebug"));
  TieBoth();
  socket.Arrive(Message("DELCLT", "10"));
  EXPECT_TRUE(Ties().All.empty());
  EXPECT_TRUE(Read("KESTRELLog.txt").contains("12:00:00 : A tie has ended: Adams to Bandit1, Adams is gone"));
}

TEST_F(TiesOnTheMapWindow, TheyWorkInAReplayAndAJumpLeavesNoTrack) {
  clock.Date = 46347.5;
  core::RecordingStart(program);
  for (const char* range : {"150", "140", "130", "120", "110"}) {
    Snapshot(range);
    clock.Ticks += 1000;
    clock.Date += 5.0 / 86400;
    socket.Arrive(Message("SYNCRO"));
  }
  core::RecordingEnd(program);
  desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")).toStdString()};
  core::LoadTape(program);
  ASSERT_TRUE(station.Tapes.Player.State().Loaded());
  ASSERT_EQ(station.Plots.AIPlots.UpperBound(), 1U);
  TieBoth();
  // The player is at 396.3: 130 miles from the bullseye are 144.4 map units or 78 miles to the east of him.
  EXPECT_EQ(Text(), "BRAA 089/98, 25 000, manoeuvring") << "of the first record nobody knows what was before";
  core::PlayTape(program);
  core::TapeTick(program);
  EXPECT_EQ(Text(), "BRAA 089/88, 25 000, hot");
  core::PauseTape(program);
  core::MoveTape(program, station.Tapes.Player.State().BarMaximum);
  EXPECT_EQ(station.Tapes.Player.State().CurPoint, 5);
  EXPECT_TRUE(Text().ends_with("manoeuvring")) << Text();
  core::CloseTape(program);
  EXPECT_TRUE(Ties().All.empty());
}

TEST_F(TiesOnTheMapWindow, TheStripCountsTheThreatsWhileTheRingIsOn) {
  auto* mark = Frame().Strip().findChild<QLabel*>(QStringLiteral("lblThreats"));
  ASSERT_NE(mark, nullptr);
  EXPECT_FALSE(mark->isVisible());
  const int least = Frame().Strip().minimumSizeHint().width();
  windows.Refresh(core::ToggleOption(program, "chkThreatRing"));
  EXPECT_TRUE(mark->isVisible());
  EXPECT_EQ(mark->text(), QStringLiteral("THREATS 0"));
  EXPECT_GT(Frame().Strip().minimumSizeHint().width(), least);
  const QImage before = Map();
  // 75 miles are 138.9 map units: 42.6 units or 23 miles from him.
  Snapshot("075");
  EXPECT_EQ(mark->text(), QStringLiteral("THREATS 1"));
  EXPECT_NE(Map(), before);
  windows.Refresh(core::ToggleOption(program, "chkThreatRing"));
  EXPECT_FALSE(mark->isVisible());
  EXPECT_TRUE(Ties().Threats.empty());
  EXPECT_EQ(Frame().Strip().minimumSizeHint().width(), least);
}

}  // namespace
}  // namespace kestrel::shell
