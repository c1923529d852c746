#include "shell/frame/tool_windows.h"

#include <QDialog>
#include <QLayout>
#include <QScreen>
#include <QSlider>
#include <QToolButton>
#include <algorithm>
#include <functional>

#include "shell/core/dialogs.h"
#include "shell/frame/slider_frm1.h"
#include "shell/frame/tool_table.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

using core::ToolWindow;

/// The windows that it watches, in the order in which they are raised.
class RaiseLog final : public QObject {
 public:
  QList<QObject*> InOrder;
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::ZOrderChange) InOrder << window;
    return false;
  }
};

/// Width of the frame at which its status strip has room for everything, whatever the font.
constexpr int WideEnough = 2000;

class FloatingWindows : public StationTest {
 protected:
  /// Starts with these keys of the section OPTIONS, "\r\n" after each.
  void StartWith(const QByteArray& options, const QByteArray& debug = "0") {
    Write("KESTREL.ini", "[LOG]\r\nDEBUG=" + debug +
                             "\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=one.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\n" + options);
    Start();
  }

  ToolFrm& Window(ToolWindow which) { return Frame().Tools().Window(which); }
  QToolButton& Check(ToolWindow which) { return Frame().Strip().Check(which); }
  core::ToolWindowState& State(ToolWindow which) { return Window(which).State(); }
  template <class Widget = QToolButton>
  Widget& Part(ToolWindow which, const char* name) {
    auto* part = Window(which).findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(part, nullptr) << name;
    return *part;
  }
  QImage IconOf(ToolWindow which, const char* button) {
    return Part(which, button).icon().pixmap(Part(which, button).iconSize()).toImage();
  }
  void FrameHasKeyboard() {
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().hasFocus(); }));
  }
  /// A key for whoever has the keyboard.
  static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick(menu != nullptr ? menu : QApplication::focusWidget(), key, modifiers);
  }
  /// Presses Tab until that control has the keyboard.
  static bool TabTo(const char* name) {
    for (int step = 0; step < 100; ++step) {
      if (QApplication::focusWidget() == nullptr) return false;
      if (QApplication::focusWidget()->objectName() == QString::fromLatin1(name)) return true;
      Key(Qt::Key_Tab);
    }
    return false;
  }
  QRect Placed(ToolWindow which) { return {Window(which).pos(), Window(which).size()}; }
  void ExpectNoneOverlaps(const std::function<bool(const ToolFrm&)>& counts = [](const ToolFrm&) { return true; }) {
    for (const ToolEntry& a : ToolEntries()) {
      for (const ToolEntry& b : ToolEntries()) {
        if (a.Which >= b.Which || !counts(Window(a.Which)) || !counts(Window(b.Which))) continue;
        EXPECT_FALSE(Placed(a.Which).intersects(Placed(b.Which))) << a.Window << " over " << b.Window;
      }
    }
  }
};

TEST_F(FloatingWindows, EachIsOnTopWithItsNameAndCaption) {
  Start();
  for (const ToolEntry& each : ToolEntries()) {
    SCOPED_TRACE(each.Window);
    ToolFrm& window = Window(each.Which);
    EXPECT_EQ(window.objectName(), QString::fromLatin1(each.Window));
    EXPECT_EQ(Part<QLabel>(each.Which, "Label1").text(), QString::fromLatin1(each.Caption));
    EXPECT_TRUE(window.isWindow());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    for (const char* button : {"CMD1", "Command_TR", "Command4"}) {
      EXPECT_FALSE(Part(each.Which, button).toolTip().isEmpty()) << button;
    }
  }
}

TEST_F(FloatingWindows, ShowingThemTakesNoKeyboard) {
  Start();
  for (const ToolEntry& each : ToolEntries()) {
    EXPECT_TRUE(Window(each.Which).testAttribute(Qt::WA_ShowWithoutActivating)) << each.Window;
    EXPECT_EQ(Check(each.Which).focusPolicy(), Qt::TabFocus) << each.Check;
  }
}

TEST_F(FloatingWindows, BroughtToTheFrontTheyLeaveTheKeyboardWithTheFrame) {
  Start();
  FrameHasKeyboard();
  Frame().Tools().RaiseToolWindows();
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), &Frame());
}

TEST_F(FloatingWindows, OptionsAreReachedAndChangedByKeysAlone) {
  StartWith("VIEWFORMX=1500\r\nVIEWFORMHID=1\r\n");
  ToolFrm& options = Window(ToolWindow::View);
  FrameHasKeyboard();
  // Screen > Show... > Options: the fifth menu, its first entry, there the fourth.
  Key(Qt::Key_F, Qt::AltModifier);
  for (int menu = 1; menu < 5; ++menu) Key(Qt::Key_Right);
  Key(Qt::Key_Return);
  for (int entry = 1; entry < 4; ++entry) Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  ASSERT_TRUE(options.isVisible());
  ASSERT_TRUE(QTest::qWaitFor([&options] { return QApplication::activeWindow() == &options; }));
  ASSERT_FALSE(options.Expanded());
  ASSERT_TRUE(TabTo("CMD1"));
  Key(Qt::Key_Space);
  EXPECT_TRUE(options.Expanded());
  ASSERT_TRUE(TabTo("Check3"));
  const bool before = station.LinkOptions.BULLSEYEVISIBLE;
  Key(Qt::Key_Space);
  EXPECT_NE(station.LinkOptions.BULLSEYEVISIBLE, before);
  ASSERT_TRUE(TabTo("Command4"));
  Key(Qt::Key_Space);
  EXPECT_FALSE(options.isVisible());
}

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

TEST_F(FloatingWindows, FreqFrmIsOpenAfterTheStartUnlessItIsKeptHidden) {
  StartWith("FREQFORMX=600\r\n");
  EXPECT_TRUE(Window(ToolWindow::Freq).isVisible());
}

TEST_F(FloatingWindows, RolledUpWindowKeepsItsFullHeight) {
  StartWith("BULLFORMX=1500\r\nBULLFORMMIN=0\r\n");
  ToolFrm& window = Window(ToolWindow::Bulls);
  const QSize full = window.size();
  ASSERT_GT(full.height(), ToolFrm::StripHeight + 8);
  window.MinFrm();
  EXPECT_FALSE(window.Expanded());
  EXPECT_EQ(window.height(), ToolFrm::StripHeight + 2);
  EXPECT_EQ(window.width(), full.width());
  window.MinFrm();
  window.MaxFrm();
  EXPECT_TRUE(window.Expanded());
  EXPECT_EQ(window.size(), full);
}

TEST_F(FloatingWindows, WindowThatStartsRolledUpHasItsFullHeightToo) {
  StartWith("BULLFORMX=1500\r\nBULLFORMMIN=1\r\nCURSORFORMX=1500\r\nCURSORFORMMIN=0\r\n");
  EXPECT_EQ(Window(ToolWindow::Bulls).height(), ToolFrm::StripHeight + 2);
  Window(ToolWindow::Bulls).MaxFrm();
  EXPECT_GT(Window(ToolWindow::Bulls).height(), ToolFrm::StripHeight + 8);
}

TEST_F(FloatingWindows, RollButtonKeepsWhatItDid) {
  StartWith("AREASFORMX=1500\r\nAREASFORMMIN=1\r\n");
  QTest::mouseClick(&Part(ToolWindow::Areas, "CMD1"), Qt::LeftButton);
  EXPECT_TRUE(Window(ToolWindow::Areas).Expanded());
  EXPECT_FALSE(State(ToolWindow::Areas).Minimized);
  EXPECT_EQ(Part(ToolWindow::Areas, "CMD1").toolTip(), QStringLiteral("Roll up"));
  const QImage collapse = IconOf(ToolWindow::Areas, "CMD1");
  EXPECT_EQ(collapse, LineIcon(IconKind::RollUp).pixmap(Part(ToolWindow::Areas, "CMD1").iconSize()).toImage());
  QTest::mouseClick(&Part(ToolWindow::Areas, "CMD1"), Qt::LeftButton);
  EXPECT_FALSE(Window(ToolWindow::Areas).Expanded());
  EXPECT_TRUE(State(ToolWindow::Areas).Minimized);
  EXPECT_EQ(Part(ToolWindow::Areas, "CMD1").toolTip(), QStringLiteral("Roll down"));
  const QImage expand = IconOf(ToolWindow::Areas, "CMD1");
  EXPECT_EQ(expand, LineIcon(IconKind::RollDown).pixmap(Part(ToolWindow::Areas, "CMD1").iconSize()).toImage());
  EXPECT_NE(expand, collapse);
}

TEST_F(FloatingWindows, CloseButtonUnticksTheStatusButtonAndTheMenuEntry) {
  Start();
  for (const ToolEntry& each : ToolEntries()) {
    SCOPED_TRACE(each.Window);
    ASSERT_TRUE(Window(each.Which).isVisible());
    QTest::mouseClick(&Part(each.Which, "Command4"), Qt::LeftButton);
    EXPECT_FALSE(Window(each.Which).isVisible());
    EXPECT_FALSE(Check(each.Which).isChecked());
    EXPECT_FALSE(Action(each.Menu).isChecked());
    EXPECT_TRUE(State(each.Which).Hidden);
  }
}

TEST_F(FloatingWindows, CloseByTheSystemIsTheCloseButton) {
  Start();
  Window(ToolWindow::Rec).close();
  EXPECT_FALSE(Window(ToolWindow::Rec).isVisible());
  EXPECT_FALSE(Check(ToolWindow::Rec).isChecked());
  EXPECT_TRUE(State(ToolWindow::Rec).Hidden);
}

TEST_F(FloatingWindows, StatusButtonAndMenuEntryToggleTogether) {
  Start();
  for (const ToolEntry& each : ToolEntries()) {
    SCOPED_TRACE(each.Window);
    EXPECT_EQ(Check(each.Which).objectName(), QString::fromLatin1(each.Check));
    QTest::mouseClick(&Check(each.Which), Qt::LeftButton);
    EXPECT_FALSE(Window(each.Which).isVisible());
    EXPECT_FALSE(Action(each.Menu).isChecked());
    Action(each.Menu).trigger();
    EXPECT_TRUE(Window(each.Which).isVisible());
    EXPECT_TRUE(Check(each.Which).isChecked());
    EXPECT_TRUE(Action(each.Menu).isChecked());
    EXPECT_FALSE(State(each.Which).Hidden);
  }
}

TEST_F(FloatingWindows, StatusButtonsAndLampsKeepTheirOrderFromTheLeft) {
  Start();
  Frame().resize(WideEnough, 700);
  int last = -1;
  for (const char* name :
       {"chkClients", "chkOPtions", "chkBullseye", "chkCursor", "chkAreas", "chkPlayback", "chkMinimap", "chkFreq",
        "StatPic_Conn", "StatPic_Act", "StatPic_Rec", "StatPic_UHF", "StatPic_VHF", "StatPic_Guard", "lblPosition",
        "lblZoom", "lblLat", "lblLong", "lblElevation"}) {
    auto* part = Frame().Strip().findChild<QWidget*>(QString::fromLatin1(name));
    ASSERT_NE(part, nullptr) << name;
    EXPECT_TRUE(part->isVisible()) << name;
    EXPECT_GT(part->mapTo(&Frame().Strip(), QPoint(0, 0)).x(), last) << name;
    last = part->mapTo(&Frame().Strip(), QPoint(0, 0)).x();
  }
}

TEST_F(FloatingWindows, WiderFrameMovesTheReadOutsWithItsRightSideAndNothingElse) {
  Start();
  StatusStrip& strip = Frame().Strip();
  const auto part = [&strip](const char* name) { return strip.findChild<QWidget*>(QString::fromLatin1(name)); };
  const auto fromTheRight = [&](const char* name) { return strip.width() - part(name)->geometry().right(); };
  constexpr const char* fixed[] = {"chkClients", "chkFreq", "StatPic_Conn", "StatPic_Guard"};
  constexpr const char* readOuts[] = {"lblPosition", "lblZoom", "lblLat", "lblLong", "lblElevation"};
  std::vector<std::vector<int>> places;
  for (const int width : {WideEnough, WideEnough + 220}) {
    Frame().resize(width, 700);
    ASSERT_TRUE(QTest::qWaitFor([&strip, width] { return strip.width() > width - 40; }));
    strip.layout()->activate();
    std::vector<int>& at = places.emplace_back();
    for (const char* name : fixed) at.push_back(part(name)->x());
    for (const char* name : readOuts) at.push_back(fromTheRight(name));
  }
  EXPECT_EQ(places[0], places[1]);
  EXPECT_LT(fromTheRight("lblElevation"), 20) << "the last one ends at the right side";
}

TEST_F(FloatingWindows, ShowAllAndHideAllPressEveryButton) {
  Start();
  Action("mnuHideAll").trigger();
  for (const ToolEntry& each : ToolEntries()) {
    EXPECT_FALSE(Check(each.Which).isChecked()) << each.Check;
    EXPECT_FALSE(Window(each.Which).isVisible()) << each.Window;
  }
  Action("mnuShowAll").trigger();
  for (const ToolEntry& each : ToolEntries()) {
    EXPECT_TRUE(Check(each.Which).isChecked()) << each.Check;
    EXPECT_TRUE(Window(each.Which).isVisible()) << each.Window;
  }
}

TEST_F(FloatingWindows, OpacityIsTakenFromTheSettings) {
  StartWith("RECFORMTR=0\r\nVIEWFORMTR=255\r\nAREASFORMTR=51\r\nMINIMAPFORMTR=300\r\nFREQFORMTR=-7\r\n");
  EXPECT_EQ(Window(ToolWindow::Rec).windowOpacity(), 0);
  EXPECT_TRUE(Window(ToolWindow::Rec).isVisible()) << "invisible, though it stays open";
  EXPECT_EQ(Window(ToolWindow::View).windowOpacity(), 1);
  EXPECT_NEAR(Window(ToolWindow::Areas).windowOpacity(), 0.2, 0.01);
  EXPECT_EQ(Window(ToolWindow::MiniMap).windowOpacity(), 1);
  EXPECT_EQ(Window(ToolWindow::Freq).windowOpacity(), 0);
}

TEST_F(FloatingWindows, ResetTransparencyChangesWhatIsSeenAndNotWhatIsKept) {
  StartWith("RECFORMTR=0\r\nAREASFORMTR=51\r\n");
  constexpr struct {
    const char* Menu;
    int Alpha;
  } cases[] = {{"mnuTR5", 13}, {"mnuTR25", 64}, {"mnuTR50", 127}, {"mnuTR75", 191}, {"mnuTR100", 255}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Menu);
    Action(each.Menu).trigger();
    for (const ToolEntry& entry : ToolEntries()) {
      EXPECT_NEAR(Window(entry.Which).windowOpacity() * 255, each.Alpha, 0.5) << entry.Window;
    }
    EXPECT_EQ(State(ToolWindow::Rec).Transparency, 0);
    EXPECT_EQ(State(ToolWindow::Areas).Transparency, 51);
    EXPECT_EQ(State(ToolWindow::Curs).Transparency, 255);
  }
}

TEST_F(FloatingWindows, OpacitySliderActsAtOnceAndIsKept) {
  StartWith("CURSORFORMX=1500\r\nCURSORFORMTR=51\r\n");
  QTest::mouseClick(&Part(ToolWindow::Curs, "Command_TR"), Qt::LeftButton);
  QPointer<SliderFrm1> popUp = Window(ToolWindow::Curs).findChild<SliderFrm1*>(QStringLiteral("SliderFrm1"));
  ASSERT_TRUE(popUp);
  EXPECT_TRUE(popUp->isVisible());
  auto* slider = popUp->findChild<QSlider*>(QStringLiteral("Slider1"));
  EXPECT_EQ(slider->value(), 51);
  EXPECT_EQ(slider->toolTip(), QStringLiteral("20%"));
  slider->setValue(128);
  EXPECT_NEAR(Window(ToolWindow::Curs).windowOpacity() * 255, 128, 0.5);
  EXPECT_EQ(State(ToolWindow::Curs).Transparency, 128);
  EXPECT_EQ(slider->toolTip(), QStringLiteral("50%"));
  slider->setValue(0);
  EXPECT_EQ(Window(ToolWindow::Curs).windowOpacity(), 0);
  EXPECT_EQ(slider->toolTip(), QStringLiteral("0%"));
  EXPECT_EQ(State(ToolWindow::Bulls).Transparency, 255) << "of its own window only";
}

TEST_F(FloatingWindows, OpacitySliderStandsBesideItsButtonAndGoesWithTheFocus) {
  StartWith("CURSORFORMX=1500\r\nCURSORFORMY=1500\r\n");
  QToolButton& button = Part(ToolWindow::Curs, "Command_TR");
  QTest::mouseClick(&button, Qt::LeftButton);
  QPointer<SliderFrm1> popUp = Window(ToolWindow::Curs).findChild<SliderFrm1*>(QStringLiteral("SliderFrm1"));
  ASSERT_TRUE(popUp);
  EXPECT_EQ(popUp->pos(), button.mapToGlobal(QPoint(0, button.height())));
  QEvent lost(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(popUp, &lost);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(popUp);
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

TEST_F(FloatingWindows, PressedCaptionBringsAllToTheFrontAndItsOwnOverTheOthers) {
  Start();
  for (const ToolWindow which : {ToolWindow::Clients, ToolWindow::Bulls, ToolWindow::Freq}) {
    SCOPED_TRACE(qPrintable(Window(which).objectName()));
    RaiseLog raised;
    for (const ToolEntry& each : ToolEntries()) Window(each.Which).installEventFilter(&raised);
    QTest::mousePress(&Part<QLabel>(which, "Label1"), Qt::LeftButton);
    QTest::mouseRelease(&Part<QLabel>(which, "Label1"), Qt::LeftButton);
    for (const ToolEntry& each : ToolEntries()) {
      EXPECT_TRUE(raised.InOrder.contains(&Window(each.Which))) << each.Window;
    }
    ASSERT_FALSE(raised.InOrder.isEmpty());
    EXPECT_EQ(raised.InOrder.back(), &Window(which));
  }
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
  StartWith("CLIENTSFORMX=1501\r\nCLIENTSFORMMIN=0\r\n");
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

TEST_F(FloatingWindows, DialogTakesThemAwayAndBringsBackThoseThatWereThere) {
  StartWith("FREQFORMHID=1\r\n", "1");
  InNextDialog([this](QWidget& dialog) {
    for (const ToolEntry& each : ToolEntries()) EXPECT_FALSE(Window(each.Which).isVisible()) << each.Window;
    EXPECT_TRUE(Frame().isVisible());
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
  });
  QDialog dialog(&Frame());
  RunDialog(dialog, dialogs);
  for (const ToolEntry& each : ToolEntries()) {
    EXPECT_EQ(Window(each.Which).isVisible(), each.Which != ToolWindow::Freq) << each.Window;
  }
  EXPECT_TRUE(State(ToolWindow::Freq).Hidden);
  EXPECT_FALSE(State(ToolWindow::Clients).Hidden) << "suspended is not hidden";
  Frame().close();
  const QByteArray text = Read("KESTRELLog.txt");
  EXPECT_EQ(text.count("Showallwindows"), 2) << text.constData();
  EXPECT_LT(text.indexOf("Showallwindows False"), text.indexOf("Showallwindows True"));
}

TEST_F(FloatingWindows, DialogOnADialogTakesThemAwayOnce) {
  StartWith({}, "1");
  {
    const ModalCount::Scope outer(dialogs);
    {
      const ModalCount::Scope inner(dialogs);
      EXPECT_FALSE(Window(ToolWindow::Clients).isVisible());
    }
    EXPECT_FALSE(Window(ToolWindow::Clients).isVisible());
  }
  EXPECT_TRUE(Window(ToolWindow::Clients).isVisible());
  Frame().close();
  EXPECT_EQ(Read("KESTRELLog.txt").count("Showallwindows"), 2);
}

TEST_F(FloatingWindows, SuspendingTwiceKeepsWhatWasThere) {
  Start();
  Frame().Tools().ShowAllWindows(false);
  Frame().Tools().ShowAllWindows(false);
  Frame().Tools().ShowAllWindows(true);
  EXPECT_TRUE(Window(ToolWindow::Clients).isVisible());
}

TEST_F(FloatingWindows, NothingIsSuspendedWhileStarting) {
  Start();
  station.Loading = true;
  Frame().Tools().ShowAllWindows(false);
  EXPECT_TRUE(Window(ToolWindow::Clients).isVisible());
}

TEST_F(FloatingWindows, ToggledWhileSuspendedItCountsAtTheReturn) {
  StartWith("FREQFORMHID=1\r\n");
  Frame().Tools().ShowAllWindows(false);
  Check(ToolWindow::Clients).setChecked(false);
  Check(ToolWindow::Freq).setChecked(true);
  EXPECT_FALSE(Window(ToolWindow::Freq).isVisible());
  Frame().Tools().ShowAllWindows(true);
  EXPECT_FALSE(Window(ToolWindow::Clients).isVisible());
  EXPECT_TRUE(Window(ToolWindow::Freq).isVisible());
}

TEST_F(FloatingWindows, OtherWindowsOfTheFrameAreSuspendedToo) {
  Start();
  QWidget other(&Frame(), Qt::Window);
  other.show();
  QWidget closed(&Frame(), Qt::Window);
  Frame().Tools().ShowAllWindows(false);
  EXPECT_FALSE(other.isVisible());
  Frame().Tools().ShowAllWindows(true);
  EXPECT_TRUE(other.isVisible());
  EXPECT_FALSE(closed.isVisible());
}

TEST_F(FloatingWindows, NoneIsLeftAfterTheClosing) {
  Start();
  Frame().Tools().ShowAllWindows(false);
  Frame().close();
  Frame().Tools().ShowAllWindows(true);
  for (const ToolEntry& each : ToolEntries()) EXPECT_FALSE(Window(each.Which).isVisible()) << each.Window;
}

}  // namespace
}  // namespace kestrel::shell
