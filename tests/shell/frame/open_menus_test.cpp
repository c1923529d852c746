#include "shell/frame/open_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolTip>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class OpenMenus : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().hasFocus(); }));
  }
  void TearDown() override {
    while (QWidget* open = QApplication::activePopupWidget()) open->close();
    StationTest::TearDown();
  }
  QMenu& Open(const char* name) {
    QMenu& menu = Frame().PopUp(name);
    menu.popup(Frame().mapToGlobal(QPoint(50, 50)));
    return menu;
  }
  void Type(QWidget& menu, Qt::Key key) { QTest::keyClick(&menu, key); }
};

TEST_F(OpenMenus, GreyTheEntriesWithoutActionAndTellWhatToDoInstead) {
  struct {
    const char* Menu;
    const char* Entry;
    const char* Tip;
  } const rows[] = {
      {"mnuFile", "mnuOpenSession", "Not in this version: Load File in the window Playback opens a tape"},
      {"mnuFile", "mnuOpenFlight", "Not in this version: Load File in the window Playback opens a tape"},
      {"mnuScreen", "mnuResetMainWindowPosition", "Not in this version"},
      {"mnuRecording", "mnuPlaybackMode", "Not in this version: Load File in the window Playback opens a tape"},
      {"mnuRecording", "mnuOpenPlaybackFile", "Not in this version: Load File in the window Playback opens a tape"},
      {"mnuLinks", "mnuManageLinks", "Not in this version"},
      {"mnuLinks", "mnuLinksNames", "Not in this version"},
  };
  for (const auto& row : rows) {
    QAction& entry = Action(row.Entry);
    QMenu& menu = Open(row.Menu);
    EXPECT_FALSE(entry.isEnabled()) << row.Entry;
    EXPECT_EQ(entry.toolTip(), QString::fromLatin1(row.Tip)) << row.Entry;
    EXPECT_TRUE(menu.toolTipsVisible()) << row.Menu;
    menu.close();
    EXPECT_TRUE(entry.isEnabled()) << row.Entry << ", by its name it can be run as ever";
  }
}

TEST_F(OpenMenus, ShowTheTipOfAGreyedEntry) {
  QMenu& menu = Open("mnuLinks");
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  const QPoint place = menu.actionGeometry(&Action("mnuManageLinks")).center();
  QHelpEvent help(QEvent::ToolTip, place, menu.mapToGlobal(place));
  QApplication::sendEvent(&menu, &help);
  EXPECT_EQ(QToolTip::text(), QStringLiteral("Not in this version"));
  QToolTip::hideText();
}

TEST_F(OpenMenus, LeaveWhatIsDisabledAndWhatHasAnAction) {
  Open("mnuConnection");
  EXPECT_TRUE(Action("mnuConnCustom").isEnabled());
  EXPECT_TRUE(Action("mnuConnPort").isEnabled());
  EXPECT_FALSE(Action("mnuDisconnect").isEnabled());
  QApplication::activePopupWidget()->close();
  EXPECT_FALSE(Action("mnuDisconnect").isEnabled());
}

TEST_F(OpenMenus, HaveLettersForConnectToAndThePhonebook) {
  QMenu& menu = Open("mnuConnection");
  EXPECT_TRUE(Action("mnuConnCustom").text().startsWith(QStringLiteral("&Connect to...")));
  EXPECT_EQ(Action("mnuPhonebook").text(), QStringLiteral("&Phonebook"));
  Type(menu, Qt::Key_P);
  QWidget* inner = QApplication::activePopupWidget();
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->objectName(), QStringLiteral("mnuPhonebook"));
  bool asked = false;
  InNextDialog([&asked](QWidget& dialog) {
    asked = dialog.objectName() == QStringLiteral("PreferForm");
    dialog.close();
  });
  Type(*inner, Qt::Key_E);
  EXPECT_TRUE(QTest::qWaitFor([&asked] { return asked; }));
  EXPECT_EQ(Action("mnuPhonebook").text(), QStringLiteral("Phonebook"));
}

TEST_F(OpenMenus, ShowTheKeysAsTheyAreBoundNow) {
  Open("mnuConnection").close();
  EXPECT_EQ(Action("mnuConnCustom").text(), QStringLiteral("Connect to..."));
  Open("mnuConnection");
  EXPECT_EQ(Action("mnuConnCustom").text(), QStringLiteral("&Connect to...\tCTRL+K"));
  QApplication::activePopupWidget()->close();
  Open("mnuPhonebook");
  EXPECT_EQ(Action("mnuPhonebookEdit").text(), QStringLiteral("&Edit...\tCTRL+P"));
  EXPECT_EQ(Action("mnuConnList_1").text(), QStringLiteral("Home"));
  QApplication::activePopupWidget()->close();
  station.OwnKeys = {0, 0, 300081};
  Open("mnuConnection");
  EXPECT_EQ(Action("mnuConnCustom").text(), QStringLiteral("&Connect to..."));
  QApplication::activePopupWidget()->close();
  Open("mnuPhonebook");
  EXPECT_EQ(Action("mnuPhonebookEdit").text(), QStringLiteral("&Edit...\tSHIFT+CTRL+Q"));
}

TEST_F(OpenMenus, OpenByF10) {
  QTest::keyClick(&Picture(), Qt::Key_F10);
  QWidget* open = QApplication::activePopupWidget();
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(open->objectName(), QStringLiteral("mnuFile"));
  Type(*open, Qt::Key_Right);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget()->objectName(), QStringLiteral("mnuConnection"));
}

TEST_F(OpenMenus, LeaveF10ToTheCommandThatHasIt) {
  station.ShortcutKeys[0] = 121;
  QTest::keyClick(&Picture(), Qt::Key_F10);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(View().Resolution, 2);
}

TEST_F(OpenMenus, EntriesRunByTheKeysOfTheMap) {
  for (const auto& [key, window] : {std::pair(Qt::Key_K, "VldFrom2"), std::pair(Qt::Key_P, "PreferForm")}) {
    QString opened;
    InNextDialog([&opened](QWidget& dialog) {
      opened = dialog.objectName();
      dialog.close();
    });
    QTest::keyClick(&Picture(), key, Qt::ControlModifier);
    EXPECT_EQ(opened, QString::fromLatin1(window));
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
  }
}

TEST_F(OpenMenus, AKeyRunsNoEntryOfAMenuThatIsDisabled) {
  EXPECT_TRUE(MayChoose(Action("mnuPhonebookEdit")));
  Action("mnuConnection").setEnabled(false);
  EXPECT_FALSE(MayChoose(Action("mnuConnCustom")));
  EXPECT_FALSE(MayChoose(Action("mnuPhonebookEdit"))) << "two menus up";
  QTest::keyClick(&Picture(), Qt::Key_K, Qt::ControlModifier);
  QTest::keyClick(&Picture(), Qt::Key_PageUp);
  EXPECT_EQ(View().Resolution, 2) << "the window went on at once: no dialog had been opened";
}

}  // namespace
}  // namespace kestrel::shell
