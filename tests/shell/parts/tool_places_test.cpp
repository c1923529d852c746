// Where the floating windows stand, and which of them lies above which.

#include <QScreen>
#include <QWindow>

#include "shell/frame/floating_windows.h"

namespace kestrel::shell {
namespace {

TEST_F(FloatingWindows, StartTakesPlaceRollAndVisibilityFromTheSettings) {
  StartWith(
      "CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nCLIENTSFORMMIN=0\r\nCLIENTSFORMHID=0\r\n"
      "FREQFORMX=600\r\nFREQFORMY=750\r\nFREQFORMMIN=1\r\nFREQFORMHID=1\r\n");
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), QPoint(100, 200));
  EXPECT_TRUE(Window(ToolWindow::Clients).Expanded());
  EXPECT_TRUE(Window(ToolWindow::Clients).isVisible());
  EXPECT_TRUE(Check(ToolWindow::Clients).isChecked());
  EXPECT_TRUE(Action("mnuFClients").isChecked());
  EXPECT_EQ(Window(ToolWindow::Freq).pos(), QPoint(40, 50));
  EXPECT_FALSE(Window(ToolWindow::Freq).Expanded());
  EXPECT_FALSE(Window(ToolWindow::Freq).isVisible());
  EXPECT_FALSE(Check(ToolWindow::Freq).isChecked());
  EXPECT_FALSE(Action("mnuFrequencies").isChecked());
}

TEST_F(FloatingWindows, CaptionDragsTheWindowAndItsPlaceIsSaved) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=1500\r\n");
  auto& caption = Part<QLabel>(ToolWindow::Clients, "Label1");
  QTest::mousePress(&caption, Qt::LeftButton, {}, QPoint(10, 10));
  QTest::mouseMove(&caption, QPoint(40, 25));
  QTest::mouseRelease(&caption, Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), QPoint(130, 115));
  QTest::mouseMove(&caption, QPoint(60, 30));
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), QPoint(130, 115)) << "let go";
  Frame().close();
  const QByteArray saved = Read("KESTREL.ini");
  EXPECT_TRUE(saved.contains("\r\nCLIENTSFORMX=1950\r\n")) << saved.constData();
  EXPECT_TRUE(saved.contains("\r\nCLIENTSFORMY=1725\r\n")) << saved.constData();
}

TEST_F(FloatingWindows, PlaceThatAWindowManagerGivesAHiddenWindowIsNotKept) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nCLIENTSFORMHID=0\r\n");
  ToolFrm& window = Window(ToolWindow::Clients);
  Frame().Tools().ShowAllWindows(false);
  window.move(0, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(State(ToolWindow::Clients).X, 1500);
  EXPECT_EQ(State(ToolWindow::Clients).Y, 3000);
  Frame().Tools().ShowAllWindows(true);
  QCoreApplication::processEvents();
  EXPECT_EQ(window.pos(), QPoint(100, 200));
}

TEST_F(FloatingWindows, WindowThatIsMovedWithoutItsCaptionKeepsThatPlaceToo) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nCLIENTSFORMHID=0\r\n");
  QCoreApplication::processEvents();
  Window(ToolWindow::Clients).move(80, 60);
  QCoreApplication::processEvents();
  EXPECT_EQ(State(ToolWindow::Clients).X, 80 * 15);
  EXPECT_EQ(State(ToolWindow::Clients).Y, 60 * 15);
}

TEST_F(FloatingWindows, OnlyTheLeftButtonDrags) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=1500\r\n");
  auto& caption = Part<QLabel>(ToolWindow::Clients, "Label1");
  QTest::mousePress(&caption, Qt::RightButton, {}, QPoint(10, 10));
  QTest::mouseMove(&caption, QPoint(40, 25));
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), QPoint(100, 100));
  QTest::mouseRelease(&caption, Qt::RightButton, {}, QPoint(10, 10));
}

TEST_F(FloatingWindows, PlaceThatIsNotTouchedIsSavedToTheUnit) {
  StartWith("CLIENTSFORMX=1501\r\nCLIENTSFORMY=2998\r\nCLIENTSFORMMIN=0\r\nFREQFORMHID=1\r\nRECFORMTR=17\r\n");
  Frame().close();
  const QByteArray saved = Read("KESTREL.ini");
  for (const char* line : {"CLIENTSFORMX=1501", "CLIENTSFORMY=2998", "CLIENTSFORMMIN=0", "CLIENTSFORMHID=0",
                           "FREQFORMHID=1", "RECFORMTR=17", "RECFORMMIN=1"}) {
    EXPECT_TRUE(saved.contains(QByteArray("\r\n") + line + "\r\n")) << line;
  }
}

TEST_F(FloatingWindows, PlaceThatNoScreenShowsIsBroughtBack) {
  StartWith(
      "CLIENTSFORMX=900000\r\nCLIENTSFORMY=1500\r\nRECFORMX=-90000\r\nRECFORMY=-90000\r\n"
      "AREASFORMX=1500\r\nAREASFORMY=2000000000\r\nVIEWFORMX=1500\r\nVIEWFORMY=1500\r\n");
  const QRect screen = Frame().screen()->availableGeometry();
  for (const ToolWindow which : {ToolWindow::Clients, ToolWindow::Rec, ToolWindow::Areas}) {
    EXPECT_TRUE(screen.contains(Placed(which))) << qPrintable(Window(which).objectName());
    EXPECT_EQ(State(which).X, Window(which).pos().x() * 15);
    EXPECT_EQ(State(which).Y, Window(which).pos().y() * 15);
  }
  EXPECT_EQ(Window(ToolWindow::View).pos(), QPoint(100, 100));
}

TEST_F(FloatingWindows, FirstStartPutsThemInOrderOverTheMap) {
  StartWith("CLIENTSFORMMIN=0\r\nVIEWFORMHID=1\r\nAREASFORMHID=1\r\nRECFORMHID=1\r\nFREQFORMHID=1\r\n");
  const QRect screen = Frame().screen()->availableGeometry();
  ExpectNoneOverlaps([](const ToolFrm& window) { return window.isVisible(); });
  for (const ToolEntry& each : ToolEntries()) {
    EXPECT_TRUE(screen.contains(Placed(each.Which))) << each.Window;
    EXPECT_NE(State(each.Which).X, 0) << each.Window;
  }
  EXPECT_LT(Window(ToolWindow::Clients).pos().y(), Window(ToolWindow::Bulls).pos().y());
}

TEST_F(FloatingWindows, ResetPositionsMakesACascadeFromTheFrame) {
  // Low enough for one column: two of the wide ones beside each other would not leave the first where it belongs.
  StartWith("CLIENTSFORMX=1501\r\nCURSORFORMMIN=0\r\n");
  Window(ToolWindow::Rec).hide();
  Action("mnuResetFloating").trigger();
  const QRect frame = Frame().frameGeometry();
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), frame.topLeft() + QPoint(900 / 15, 240 / 15));
  EXPECT_EQ(State(ToolWindow::Clients).X, (frame.left() + 60) * 15);
  ExpectNoneOverlaps();
  for (const ToolEntry& each : ToolEntries()) EXPECT_LE(Placed(each.Which).bottom(), frame.bottom()) << each.Window;
  EXPECT_FALSE(Window(ToolWindow::Rec).isVisible()) << "a place is not a showing";
}

TEST_F(FloatingWindows, ResetPositionsKeepsEachWholeOnTheScreenThoughAllAreRolledDown) {
  QByteArray rolledDown;
  for (const char* prefix : {"CLIENTS", "VIEW", "BULL", "CURSOR", "AREAS", "REC", "MINIMAP", "FREQ"}) {
    rolledDown += QByteArray(prefix) + "FORMX=1500\r\n" + prefix + "FORMMIN=0\r\n";
  }
  StartWith(rolledDown);
  Action("mnuResetFloating").trigger();
  const QRect screen = Frame().screen()->availableGeometry();
  for (const ToolEntry& each : ToolEntries()) {
    ASSERT_TRUE(Window(each.Which).Expanded()) << each.Window;
    EXPECT_TRUE(screen.contains(Placed(each.Which))) << each.Window;
    EXPECT_EQ(State(each.Which).X, Window(each.Which).pos().x() * 15) << each.Window;
  }
}

TEST_F(FloatingWindows, PlaceThatAWindowManagerReportsWhileItTakesAWindowUpIsPutRight) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nCLIENTSFORMMIN=0\r\n");
  ToolFrm& window = Window(ToolWindow::Clients);
  Action("mnuHideAll").trigger();
  ASSERT_TRUE(QTest::qWaitFor([&window] { return !window.windowHandle()->isExposed(); }));
  // Heard only after the showing has begun, and before the window is on the screen.
  window.windowHandle()->setPosition(0, 0);
  Action("mnuShowAll").trigger();
  ASSERT_FALSE(window.windowHandle()->isExposed());
  ASSERT_EQ(window.pos(), QPoint(100, 200));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QCoreApplication::processEvents();
  EXPECT_EQ(window.pos(), QPoint(100, 200));
  EXPECT_EQ(window.windowHandle()->position(), QPoint(100, 200));
  EXPECT_EQ(State(ToolWindow::Clients).X, 1500);
  EXPECT_EQ(State(ToolWindow::Clients).Y, 3000);
}

TEST_F(FloatingWindows, AZeroThatStandsInTheSettingsIsAPlace) {
  // As when every window has been moved into the corner.
  QByteArray corner;
  for (const char* prefix : {"CLIENTS", "VIEW", "BULL", "CURSOR", "AREAS", "REC", "MINIMAP", "FREQ"}) {
    corner += QByteArray(prefix) + "FORMX=0\r\n" + prefix + "FORMY=0\r\n";
  }
  StartWith(corner);
  for (const ToolEntry& each : ToolEntries()) EXPECT_EQ(Window(each.Which).pos(), QPoint(0, 0)) << each.Window;
}

TEST_F(FloatingWindows, OnlyThoseWithoutAPlaceArePutInOrder) {
  StartWith(
      "CLIENTSFORMX=0\r\nCLIENTSFORMY=0\r\nRECFORMX=1500\r\nRECFORMY=3000\r\nAREASFORMY=1500\r\n"
      "CURSORFORMX=\r\nCURSORFORMY=\r\n");
  EXPECT_EQ(Window(ToolWindow::Clients).pos(), QPoint(0, 0));
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), QPoint(100, 200));
  EXPECT_EQ(Window(ToolWindow::Areas).pos(), QPoint(0, 100)) << "one of the two is a place";
  for (const ToolWindow which :
       {ToolWindow::View, ToolWindow::Bulls, ToolWindow::Curs, ToolWindow::MiniMap, ToolWindow::Freq}) {
    EXPECT_GT(Window(which).pos().x(), 0) << qPrintable(Window(which).objectName());
  }
  ExpectNoneOverlaps([](const ToolFrm& window) {
    return window.Which() != ToolWindow::Clients && window.Which() != ToolWindow::Rec &&
           window.Which() != ToolWindow::Areas;
  });
}

TEST_F(FloatingWindows, OneThatIsRolledDownAtTheFootOfTheScreenComesOntoItWholeAndToTheFront) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=1500\r\nAREASFORMX=1500\r\nAREASFORMY=3000\r\n");
  const QRect screen = Frame().screen()->availableGeometry();
  ToolFrm& window = Window(ToolWindow::Clients);
  window.MoveTo({screen.right() - window.width() / 2, screen.bottom() - ToolFrm::StripHeight});
  RaiseLog raised;
  for (const ToolEntry& each : ToolEntries()) Window(each.Which).installEventFilter(&raised);
  QTest::mouseClick(&Part(ToolWindow::Clients, "CMD1"), Qt::LeftButton);
  ASSERT_TRUE(window.Expanded());
  EXPECT_TRUE(screen.contains(Placed(ToolWindow::Clients)));
  EXPECT_EQ(State(ToolWindow::Clients).X, window.pos().x() * 15);
  EXPECT_EQ(State(ToolWindow::Clients).Y, window.pos().y() * 15);
  EXPECT_EQ(raised.InOrder, QList<QObject*>{&window});
  // One with room stays; rolled up none is touched.
  QTest::mouseClick(&Part(ToolWindow::Areas, "CMD1"), Qt::LeftButton);
  EXPECT_EQ(Window(ToolWindow::Areas).pos(), QPoint(100, 200));
  raised.InOrder.clear();
  const QPoint place = window.pos();
  QTest::mouseClick(&Part(ToolWindow::Clients, "CMD1"), Qt::LeftButton);
  EXPECT_EQ(window.pos(), place);
  EXPECT_TRUE(raised.InOrder.isEmpty());
}

TEST_F(FloatingWindows, MiniMapThatGrowsWithItsTheaterComesOntoTheScreenWholeAndToTheFront) {
  Write("KESTREL.ini",
        "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=one.ini\r\nMAP2=two.ini\r\nCURRENTMAP=2\r\n[OPTIONS]\r\n"
        "MINIMAPFORMX=1500\r\nMINIMAPFORMY=1500\r\nMINIMAPFORMMIN=0\r\n"
        "CLIENTSFORMX=1500\r\nCLIENTSFORMY=1500\r\nCLIENTSFORMMIN=0\r\n");
  Start();
  const QRect screen = Frame().screen()->availableGeometry();
  ToolFrm& window = Window(ToolWindow::MiniMap);
  window.MoveTo(screen.bottomRight() + QPoint(1, 1) - QPoint(window.width(), window.height()));
  ASSERT_TRUE(screen.contains(Placed(ToolWindow::MiniMap)));
  const QSize former = window.size();
  RaiseLog raised;
  for (const ToolEntry& each : ToolEntries()) Window(each.Which).installEventFilter(&raised);
  // Twice as large a theater.
  Action("mnuTheatername_1").trigger();
  ASSERT_GT(window.height(), former.height());
  EXPECT_TRUE(screen.contains(Placed(ToolWindow::MiniMap)));
  EXPECT_EQ(raised.InOrder, QList<QObject*>{&window});
  // And back: a window that shrinks stays where it is.
  const QPoint place = window.pos();
  Action("mnuTheatername_2").trigger();
  EXPECT_EQ(window.size(), former);
  EXPECT_EQ(window.pos(), place);
  EXPECT_EQ(raised.InOrder.size(), 1);
}

/// The floating windows in the order in which they come.
class ShowLog final : public QObject {
 public:
  QStringList InOrder;
  ShowLog() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::Show && qobject_cast<ToolFrm*>(window) != nullptr) InOrder << window->objectName();
    return false;
  }
};

TEST_F(FloatingWindows, TheStartPlacesThemInItsOrder) {
  const ShowLog shown;
  Start();
  EXPECT_EQ(shown.InOrder.join(u' '),
            QStringLiteral("BullsFrm CursFrm ViewFrm ClientsFrm AreasFrm RecFrm MiniMapFrm FreqFrm"));
}

}  // namespace
}  // namespace kestrel::shell
