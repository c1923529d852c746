#include "shell/tape/rec_frm.h"

#include <QAbstractButton>
#include <QDir>
#include <QGroupBox>
#include <QMenu>
#include <QProgressBar>
#include <QTreeView>

#include "shell/link/clients_frm.h"
#include "shell/map/loading_box.h"
#include "shell/station_fixture.h"
#include "shell/tape/position_bar.h"
#include "tape/golden_tape.h"

namespace kestrel::shell {
namespace {

using tape::PlayerPhase;

/// The whole station with the player's window open, and a tape of a session of its own.
class PlayerWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    Frame().Strip().Check(core::ToolWindow::Rec).setChecked(true);
    Rec().MaxFrm();
    clock.Date = 46347.5;  // 2026-11-21, noon
  }

  RecFrm& Rec() { return Frame().Tools().The<RecFrm>(); }
  template <class Control>
  Control& In(const char* name) {
    auto* control = Rec().findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  QString Shown(const char* label) { return In<QLabel>(label).text(); }
  PositionBar& Bar() { return In<PositionBar>("HScroll1"); }
  QTimer& Timer1() { return In<QTimer>("Timer1"); }
  void Press(const char* button) { QTest::mouseClick(&In<QAbstractButton>(button), Qt::LeftButton); }
  /// The names of the buttons, and of the bar, that can be used.
  QString Usable() {
    QStringList names;
    for (const char* name : {"Command1", "Command2", "Command3", "Command5", "Command6"}) {
      if (In<QAbstractButton>(name).isEnabled()) names << QString::fromLatin1(name).right(1);
    }
    if (Bar().isEnabled()) names << QStringLiteral("bar");
    return names.join(u' ');
  }
  const tape::PlayerState& Player() { return station.Tapes.Player.State(); }

  void Synchronise(double seconds) {
    clock.Ticks += 1000;
    clock.Date += seconds / 86400;
    socket.Arrive(std::string("SYNCRO\0", 7));
  }
  void Arrive(const std::string& message) { socket.Arrive(message + '\0'); }
  static std::string NewClient(int id, const std::string& name) {
    return "NEWCLT" + std::to_string(id) + '\x1e' + name +
           "\x1e"
           "F-16\x1e"
           "O";
  }
  /// Records at these gaps: Smith from the start, Jones from the second record on.
  void RecordTape(const std::vector<double>& gaps) {
    Connect();
    Arrive(NewClient(5, "Smith"));
    Action("mnuStartRec").trigger();
    for (std::size_t n = 0; n < gaps.size(); ++n) {
      if (n == 1) Arrive(NewClient(6, "Jones"));
      Arrive("AILOCAViper" + std::to_string(n) + "    09001021");
      Synchronise(gaps[n]);
    }
    Action("mnuStopRecording").trigger();
  }
  void LoadTape() {
    desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")).toStdString()};
    Press("Command1");
  }
  void RecordAndLoad(const std::vector<double>& gaps) {
    RecordTape(gaps);
    LoadTape();
    ASSERT_TRUE(desk.Boxes.empty()) << desk.Boxes[0].Text;
    ASSERT_TRUE(Player().Loaded());
  }
};

TEST_F(PlayerWindow, WithoutATapeOnlyLoadCanBePressed) {
  EXPECT_EQ(Usable(), QStringLiteral("1"));
  EXPECT_EQ(Shown("Label2"), QStringLiteral("No File"));
  EXPECT_EQ(Shown("Label3"), QString());
  EXPECT_EQ(Shown("Label4"), QString());
  EXPECT_EQ(In<QAbstractButton>("Command1").text(), QStringLiteral("Load File"));
  EXPECT_EQ(In<QAbstractButton>("Command6").text(), QStringLiteral("Close File"));
  EXPECT_EQ(In<QGroupBox>("Frame1").title(), QStringLiteral("Current Speed: x1"));
  EXPECT_EQ(Shown("lblSlowest"), QStringLiteral("x1"));
  EXPECT_EQ(Shown("lblFastest"), QStringLiteral("x%1").arg(1 << tape::Player::MaxSpeedStep));
}

TEST_F(PlayerWindow, MenuEntriesAndLampFollowTheRecording) {
  EXPECT_FALSE(Action("mnuStartRec").isEnabled());
  EXPECT_FALSE(Action("mnuStopRecording").isEnabled());
  Connect();
  EXPECT_TRUE(Action("mnuStartRec").isEnabled());
  EXPECT_FALSE(Action("mnuStopRecording").isEnabled());
  auto* lamp = Frame().findChild<Lamp*>(QStringLiteral("StatPic_Rec"));
  EXPECT_FALSE(lamp->Lit());
  EXPECT_EQ(lamp->toolTip(), QStringLiteral("Not recording"));
  Action("mnuStartRec").trigger();
  EXPECT_TRUE(lamp->Lit());
  EXPECT_TRUE(lamp->toolTip().startsWith(QStringLiteral("Recording: 41 bytes on the tape, ")))
      << qPrintable(lamp->toolTip());
  EXPECT_TRUE(lamp->toolTip().endsWith(QStringLiteral(" free")));
  EXPECT_FALSE(Action("mnuStartRec").isEnabled());
  EXPECT_TRUE(Action("mnuStopRecording").isEnabled());
  EXPECT_EQ(Usable(), QString()) << "no tape is loaded while one is recorded";
  Arrive(NewClient(5, "Smith"));
  Synchronise(1);
  EXPECT_FALSE(lamp->toolTip().startsWith(QStringLiteral("Recording: 41 bytes")));
  Action("mnuStopRecording").trigger();
  EXPECT_FALSE(lamp->Lit());
  EXPECT_TRUE(Action("mnuStartRec").isEnabled());
  EXPECT_EQ(Usable(), QStringLiteral("1"));
  Action("mnuStartRec").trigger();
  socket.PeerCloses();
  EXPECT_FALSE(lamp->Lit());
  EXPECT_FALSE(Action("mnuStartRec").isEnabled());
  EXPECT_FALSE(Action("mnuStopRecording").isEnabled());
  EXPECT_EQ(Usable(), QStringLiteral("1"));
}

TEST_F(PlayerWindow, ALoadedTapeStandsAtItsFirstRecordAndExcludesAConnection) {
  RecordAndLoad({2, 2, 3});
  EXPECT_EQ(Usable(), QStringLiteral("2 6 bar"));
  EXPECT_EQ(Shown("Label2"), QStringLiteral("21-11-26_120000.tap"));
  EXPECT_EQ(Shown("Label3"), QStringLiteral("21/11/2026"));
  EXPECT_EQ(Shown("Label4"), QStringLiteral("12:00:02"));
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("1 / 3"));
  EXPECT_EQ(Bar().minimum(), 1);
  EXPECT_EQ(Bar().maximum(), 3);
  EXPECT_EQ(Bar().value(), 1);
  EXPECT_FALSE(Timer1().isActive());
  EXPECT_FALSE(Action("mnuConnection").isEnabled());
  EXPECT_FALSE(Action("mnuBullseyes").isEnabled());
  EXPECT_FALSE(Action("mnuSetNewBulls").isEnabled());
  EXPECT_EQ(socket.State(), link::SocketState::Closed);
  EXPECT_FALSE(Frame().findChild<LoadingBox*>()->isVisible());
}

TEST_F(PlayerWindow, ProgressStandsInTheMiddleOfTheMapWindowWhileTheTapeIsIndexed) {
  RecordTape({1, 1, 1, 1});
  QList<int> percents;
  auto* box = Frame().findChild<LoadingBox*>();
  desk.WhenEventsRun = [&] {
    // Events run once more while the session is left.
    if (percents.size() < 4 && Player().Phase == PlayerPhase::Loading) {
      EXPECT_TRUE(box->isVisible());
      EXPECT_EQ(box->findChild<QLabel*>(QStringLiteral("lblLoading"))->text(),
                QStringLiteral("Loading the requested file..."));
      const QPoint off = box->geometry().center() - Frame().Map().rect().center();
      EXPECT_LE(off.manhattanLength(), 2);
      percents << box->findChild<QProgressBar*>()->value();
      EXPECT_EQ(Usable(), QString());
    }
  };
  LoadTape();
  EXPECT_EQ(percents, (QList<int>{25, 50, 75, 100}));
  EXPECT_FALSE(box->isVisible());
}

TEST_F(PlayerWindow, ButtonsFollowThePlayer) {
  RecordAndLoad({2, 2, 3});
  Press("Command2");
  EXPECT_EQ(Usable(), QStringLiteral("3 5 6 bar"));
  EXPECT_TRUE(Timer1().isActive());
  EXPECT_EQ(Timer1().interval(), 2000);
  Press("Command3");
  EXPECT_EQ(Usable(), QStringLiteral("2 5 6 bar"));
  EXPECT_FALSE(Timer1().isActive());
  Press("Command2");
  Press("Command5");
  EXPECT_EQ(Usable(), QStringLiteral("2 6 bar"));
  EXPECT_FALSE(Timer1().isActive());
  Press("Command6");
  EXPECT_EQ(Usable(), QStringLiteral("1"));
  EXPECT_EQ(Shown("Label2"), QStringLiteral("No File"));
  EXPECT_EQ(Shown("Label3"), QString());
  EXPECT_EQ(Shown("Label4"), QString());
  EXPECT_EQ(Bar().value(), 1);
  EXPECT_TRUE(Action("mnuConnection").isEnabled());
  EXPECT_TRUE(Action("mnuBullseyes").isEnabled());
  EXPECT_TRUE(Action("mnuSetNewBulls").isEnabled());
  Connect();
  EXPECT_TRUE(station.Session.Connected);
}

TEST_F(PlayerWindow, TheTimerPlaysToTheEndAndGoesBackToTheStart) {
  RecordAndLoad({1, 1, 1});
  In<QSlider>("Slider1").setValue(4);
  Press("Command2");
  EXPECT_EQ(Timer1().interval(), 62);
  QStringList times;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    if (times.isEmpty() || times.last() != Shown("Label4")) times << Shown("Label4");
    return Player().Phase == PlayerPhase::Stopped;
  }));
  EXPECT_EQ(times.join(u' '), QStringLiteral("12:00:01 12:00:02 12:00:03 12:00:01"));
  EXPECT_FALSE(Timer1().isActive());
  EXPECT_EQ(Usable(), QStringLiteral("2 6 bar"));
}

TEST_F(PlayerWindow, TheTapePlaysOnWhileTheWindowIsRolledUpOrHidden) {
  RecordAndLoad({1, 1, 1});
  In<QSlider>("Slider1").setValue(4);
  Press("Command2");
  Rec().MinFrm();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Player().CurPoint == 2; }));
  Frame().Strip().Check(core::ToolWindow::Rec).setChecked(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Player().Phase == PlayerPhase::Stopped; }));
}

TEST_F(PlayerWindow, TheSpeedSliderDoublesFromStepToStep) {
  RecordAndLoad({3, 3, 3});
  Press("Command2");
  auto& slider = In<QSlider>("Slider1");
  EXPECT_EQ(slider.minimum(), 0);
  EXPECT_EQ(slider.maximum(), 4);
  const int intervals[] = {1500, 750, 375, 187};
  for (int step = 1; step <= 4; ++step) {
    QTest::keyClick(&slider, Qt::Key_Right);
    const QString speed = QStringLiteral("x%1").arg(1 << step);
    EXPECT_EQ(In<QGroupBox>("Frame1").title(), QStringLiteral("Current Speed: ") + speed);
    EXPECT_EQ(slider.toolTip(), speed);
    EXPECT_TRUE(Timer1().isActive());
    EXPECT_EQ(Timer1().interval(), intervals[step - 1]);
  }
}

TEST_F(PlayerWindow, AChangeOfTheSpeedStartsTheRunningTimerAnewAtTheSameIntervalToo) {
  RecordAndLoad({1, 2, 4});
  Press("Command2");
  ASSERT_EQ(Timer1().interval(), 2000);
  QTest::keyClick(&Bar(), Qt::Key_Right);
  ASSERT_EQ(Player().SecsBetween, 4);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Timer1().remainingTime() < 1500; }));
  ASSERT_EQ(Player().CurPoint, 2);
  In<QSlider>("Slider1").setValue(1);
  EXPECT_EQ(Timer1().interval(), 2000);
  EXPECT_GT(Timer1().remainingTime(), 1500);
}

TEST_F(PlayerWindow, WithoutASecondBetweenRecordsTheTimerNeverFiresAndTheBarWorks) {
  RecordAndLoad({0, 0.2, 0.2});
  Press("Command2");
  EXPECT_FALSE(Timer1().isActive());
  EXPECT_EQ(Usable(), QStringLiteral("3 5 6 bar"));
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("1 / 3, stands"));
  EXPECT_EQ(In<QLabel>("lblRecord").toolTip(),
            QStringLiteral("Here the records are less than a second apart, so that the tape does not run by itself. "
                           "The bar moves it."));
  QTest::keyClick(&Bar(), Qt::Key_Right);
  EXPECT_EQ(Player().CurPoint, 2);
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("2 / 3, stands"));
  Press("Command3");
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("2 / 3"));
}

TEST_F(PlayerWindow, ATapeThatStandsWhereItGoesBackInTimeSaysSo) {
  RecordAndLoad({10, -5, 20});
  Press("Command2");
  EXPECT_FALSE(Timer1().isActive());
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("1 / 3, stands"));
  EXPECT_EQ(In<QLabel>("lblRecord").toolTip(),
            QStringLiteral("Here the tape goes back in time, so that it does not run by itself. The bar moves it."));
  // From here it could run, but the interval is that of the moment when play began.
  QTest::keyClick(&Bar(), Qt::Key_Right);
  EXPECT_FALSE(Timer1().isActive());
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("2 / 3, stands"));
  EXPECT_TRUE(In<QLabel>("lblRecord").toolTip().endsWith(QStringLiteral("Pause and Play let it run from here.")));
  Press("Command3");
  Press("Command2");
  EXPECT_EQ(Timer1().interval(), 20000);
  EXPECT_TRUE(Timer1().isActive());
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("2 / 3"));
}

TEST_F(PlayerWindow, TheNumberOfALongTapeThatStandsIsNotCut) {
  const std::string record = test::BytesF64(46347.5) + test::TapeArray(0) + test::TapeArray(0);
  std::string bytes = test::GoldenHeader(40000, 0, 46347.5, 0, 0);
  for (int n = 0; n < 40000; ++n) bytes += record;
  Write("TAPES/21-11-26_120000.tap", QByteArray::fromStdString(bytes));
  LoadTape();
  Bar().setValue(16383);
  Press("Command2");
  const auto& label = In<QLabel>("lblRecord");
  ASSERT_EQ(label.text(), QStringLiteral("32766 / 40000, stands"));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return label.contentsRect().width() >= label.fontMetrics().horizontalAdvance(label.text());
  })) << label.width();
}

TEST_F(PlayerWindow, KeysAndPressesOnTheBarShowTheRecordThere) {
  RecordAndLoad({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
  QTest::keyClick(&Bar(), Qt::Key_End);
  EXPECT_EQ(Player().CurPoint, 11);
  EXPECT_EQ(Shown("Label4"), QStringLiteral("12:00:11"));
  EXPECT_EQ(Shown("lblRecord"), QStringLiteral("11 / 11"));
  QTest::keyClick(&Bar(), Qt::Key_Left);
  EXPECT_EQ(Player().CurPoint, 10);
  QTest::mouseClick(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  EXPECT_EQ(Player().CurPoint, 6);
  QTest::mousePress(&Bar(), Qt::LeftButton, Qt::NoModifier, QPoint(2, Bar().height() / 2));
  EXPECT_EQ(Player().CurPoint, 1);
  QTest::mouseMove(&Bar(), Bar().rect().center());
  QTest::mouseRelease(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  EXPECT_EQ(Bar().value(), Player().CurPoint);
}

TEST_F(PlayerWindow, ATapeThatPlaysDoesNotPullTheBarOutOfTheHand) {
  RecordAndLoad({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
  Press("Command2");
  QTest::mousePress(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  ASSERT_EQ(Player().CurPoint, 6);
  In<QSlider>("Slider1").setValue(4);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Player().CurPoint == 8; }));
  EXPECT_EQ(Bar().value(), 6);
  QTest::mouseRelease(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  EXPECT_TRUE(QTest::qWaitFor([&] { return Bar().value() >= 8; }));
}

TEST_F(PlayerWindow, ABarHeldToTheEndOfTheTapeGoesWhereTheTapeIsWhenReleased) {
  RecordAndLoad({1, 1, 1});
  Press("Command2");
  QTest::mousePress(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  ASSERT_EQ(Player().CurPoint, 2);
  In<QSlider>("Slider1").setValue(4);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Player().Phase == PlayerPhase::Stopped; }));
  EXPECT_EQ(Player().CurPoint, 1);
  EXPECT_EQ(Bar().value(), 2);
  QTest::mouseRelease(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  EXPECT_EQ(Bar().value(), 1);
  EXPECT_EQ(Player().CurPoint, 1);
}

TEST_F(PlayerWindow, ABarThatCannotBeFollowedGoesBackWhereItWas) {
  RecordAndLoad({1, 1, 1});
  QFile tape(folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")));
  ASSERT_TRUE(tape.resize(60));
  int inBox = 0;
  desk.WhileOpen = [&] { inBox = Bar().value(); };
  QTest::mousePress(&Bar(), Qt::LeftButton, Qt::NoModifier, Bar().rect().center());
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Title, "Playback");
  EXPECT_EQ(inBox, 1);
  EXPECT_FALSE(Bar().isSliderDown());
  EXPECT_EQ(Bar().value(), 1);
  EXPECT_EQ(Shown("Label4"), QStringLiteral("12:00:01"));
  EXPECT_EQ(station.Plots.Clients.UpperBound(), 1u);
}

TEST_F(PlayerWindow, TheClientsTreeFollowsTheTapeAndKeepsItsSelection) {
  RecordAndLoad({1, 1, 1});
  ClientsFrm& clients = Frame().Tools().The<ClientsFrm>();
  Frame().Strip().Check(core::ToolWindow::Clients).setChecked(true);
  clients.MaxFrm();
  auto* tree = clients.findChild<QTreeView*>(QStringLiteral("TreeView1"));
  ASSERT_EQ(tree->model()->rowCount(), 1);
  tree->setCurrentIndex(tree->model()->index(0, 0));
  EXPECT_EQ(clients.findChild<QLabel*>(QStringLiteral("Label10"))->text(), QStringLiteral("USER: Smith"));
  QTest::keyClick(&Bar(), Qt::Key_Right);
  EXPECT_EQ(tree->model()->rowCount(), 2);
  EXPECT_EQ(tree->currentIndex().row(), 0);
  EXPECT_EQ(clients.findChild<QLabel*>(QStringLiteral("Label10"))->text(), QStringLiteral("USER: Smith"));
  auto* list = clients.findChild<QAbstractItemView*>(QStringLiteral("List1"));
  EXPECT_EQ(list->model()->index(0, 0).data().toString().trimmed(), QStringLiteral("Viper1"));
  // Jones is not in the first record: his details are hidden.
  tree->setCurrentIndex(tree->model()->index(1, 0));
  QTest::keyClick(&Bar(), Qt::Key_Left);
  EXPECT_EQ(tree->model()->rowCount(), 1);
  EXPECT_EQ(clients.findChild<QLabel*>(QStringLiteral("Label10"))->text(), QStringLiteral("USER:"));
  Press("Command6");
  EXPECT_EQ(tree->model()->rowCount(), 0);
  EXPECT_EQ(list->model()->rowCount(), 0);
}

TEST_F(PlayerWindow, ATapeThatCannotBeLoadedLeavesTheSessionOnShow) {
  RecordTape({1, 1, 1});
  Write("TAPES/21-11-26_120000.tap", "no tape at all");
  QString inBox;
  desk.WhileOpen = [&] { inBox = Shown("Label2"); };
  LoadTape();
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(inBox, QStringLiteral("21-11-26_120000.tap")) << "the box is about it";
  EXPECT_EQ(desk.Boxes[0].Title, "Error: Wrong file format.");
  EXPECT_EQ(Usable(), QStringLiteral("1"));
  EXPECT_EQ(Shown("Label2"), QStringLiteral("No File"));
  EXPECT_TRUE(station.Session.Connected);
  EXPECT_TRUE(Action("mnuConnection").isEnabled());
  EXPECT_TRUE(Action("mnuBullseyes").isEnabled());
  EXPECT_EQ(station.Plots.Clients.UpperBound(), 2u);
}

TEST_F(PlayerWindow, AnExitDuringTheIndexEndsTheLoad) {
  RecordTape({1, 1, 1});
  desk.WhenEventsRun = [&] {
    if (Player().Phase == PlayerPhase::Loading) Frame().close();
  };
  LoadTape();
  EXPECT_EQ(Player().Phase, PlayerPhase::NoFile);
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(PlayerWindow, ALongNameIsCutAndToldWhole) {
  RecordTape({1, 1});
  const QString name = QString(120, u'w') + QStringLiteral(".tap");
  ASSERT_TRUE(QFile::rename(folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")), folder.filePath(name)));
  const int width = Rec().width();
  desk.FileAnswers = {folder.filePath(name).toStdString()};
  Press("Command1");
  EXPECT_TRUE(Player().Loaded());
  EXPECT_EQ(Rec().width(), width);
  EXPECT_TRUE(Shown("Label2").contains(QChar(0x2026)));
  EXPECT_EQ(In<QLabel>("Label2").toolTip(), name);
}

}  // namespace
}  // namespace kestrel::shell
