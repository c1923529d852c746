#include "shell/frame/tool_windows.h"

#include <QDialog>
#include <QLayout>
#include <QScreen>
#include <QSlider>
#include <QToolButton>
#include <algorithm>
#include <functional>

#include "shell/frame/floating_windows.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/slider_frm1.h"

namespace kestrel::shell {
namespace {

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

TEST_F(FloatingWindows, EachStatusButtonAndMenuEntryBelongsToItsWindow) {
  constexpr struct {
    const char *Check, *Menu, *Window;
  } pairs[] = {
      {"chkClients", "mnuFClients", "ClientsFrm"}, {"chkOPtions", "mnuFOptions", "ViewFrm"},
      {"chkBullseye", "mnuFBullseye", "BullsFrm"}, {"chkCursor", "mnuFCursor", "CursFrm"},
      {"chkAreas", "mnuFAreas", "AreasFrm"},       {"chkPlayback", "mnuFRec", "RecFrm"},
      {"chkMinimap", "mnuFMiniMap", "MiniMapFrm"}, {"chkFreq", "mnuFrequencies", "FreqFrm"},
  };
  Start();
  const auto hidden = [this, &pairs] {
    QStringList names;
    for (const auto& each : pairs) {
      auto* window = Frame().findChild<ToolFrm*>(QString::fromLatin1(each.Window));
      EXPECT_NE(window, nullptr) << each.Window;
      if (window != nullptr && !window->isVisible()) names << window->objectName();
    }
    return names;
  };
  ASSERT_TRUE(hidden().isEmpty());
  for (const auto& each : pairs) {
    SCOPED_TRACE(each.Check);
    auto* button = Frame().Strip().findChild<QToolButton*>(QString::fromLatin1(each.Check));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(hidden(), QStringList{QString::fromLatin1(each.Window)});
    EXPECT_FALSE(Action(each.Menu).isChecked());
    Action(each.Menu).trigger();
    EXPECT_TRUE(hidden().isEmpty());
    EXPECT_TRUE(button->isChecked());
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
