// What the windows say of another bullseye while a session is on.

#include <QMenu>

#include "core/bullseye_steps.h"
#include "shell/frame/bullseye_windows.h"
#include "shell/map/bulls_frm.h"
#include "shell/parts/unicode_text.h"
#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {
namespace {

class BullseyeSession : public TheaterWindows {
 protected:
  static QString Note() {
    return QStringLiteral("AI positions come relative to the session's bullseye; another one moves them all");
  }
  QAction* Undo() { return Frame().findChild<QAction*>(QStringLiteral("mnuUndoBullseye")); }
  QAction* UndoOnMap() { return Frame().findChild<QAction*>(QStringLiteral("mnuUndoNewBulls")); }
  QLabel& NameShown() { return *Frame().Tools().The<BullsFrm>().findChild<QLabel*>(QStringLiteral("lblBulls")); }
  /// The details of a new bullseye, which say the note or do not; closed again.
  bool DetailsSayIt() {
    Action("mnuSetNewBulls").trigger();
    auto* details = Frame().findChild<BullsDetailsFrm*>();
    EXPECT_NE(details, nullptr);
    const auto& label = In<QLabel>(*details, "lblSession");
    const bool said = label.isVisible() && label.text() == Note() + u'.';
    Press(*details, "Command2");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return said;
  }
};

TEST_F(BullseyeSession, MenusAndDetailsSayItWhileConnectedAlone) {
  QMenu& menu = Frame().PopUp("mnuBullseyes");
  EXPECT_FALSE(menu.toolTipsVisible());
  EXPECT_NE(Action("mnuBullseyesName_2").toolTip(), Note());
  EXPECT_FALSE(DetailsSayIt());
  Connect();
  EXPECT_TRUE(menu.toolTipsVisible());
  EXPECT_TRUE(Frame().PopUp("PopUp2").toolTipsVisible());
  for (const char* entry : {"mnuModifyBullseyes", "mnuBullseyesName_1", "mnuBullseyesName_2", "mnuSetNewBulls"}) {
    EXPECT_EQ(Action(entry).toolTip(), Note()) << entry;
  }
  EXPECT_TRUE(DetailsSayIt());
  Action("mnuDisconnect").trigger();
  EXPECT_FALSE(menu.toolTipsVisible());
  EXPECT_NE(Action("mnuSetNewBulls").toolTip(), Note());
  EXPECT_FALSE(DetailsSayIt());
}

TEST_F(BullseyeSession, UndoBringsTheOneBeforeBackWithTheAircraft) {
  Connect();
  EXPECT_EQ(Undo(), nullptr);
  EXPECT_EQ(UndoOnMap(), nullptr);
  Action("mnuBullseyesName_2").trigger();
  ASSERT_NE(Undo(), nullptr);
  EXPECT_EQ(Undo()->text(), QStringLiteral("Undo: Back to Alpha"));
  EXPECT_EQ(Frame().PopUp("mnuBullseyes").actions().back(), Undo());
  ASSERT_NE(UndoOnMap(), nullptr);
  EXPECT_EQ(UndoOnMap()->text(), Undo()->text());
  EXPECT_EQ(Frame().PopUp("PopUp2").actions().back(), UndoOnMap());
  // 90 degrees, 100 miles: 185.2 to the east of Bravo, which lies at 300.
  const std::string snapshot = std::string("AILOCAViper1    09010020") + '\0';
  socket.Arrive(snapshot);
  ASSERT_EQ(station.Plots.AIPlots.UpperBound(), 1u);
  EXPECT_NEAR(station.Plots.AIPlots[1].X, 485.2, 0.01);
  Undo()->trigger();
  EXPECT_TRUE(Action("mnuBullseyesName_1").isChecked());
  EXPECT_EQ(Undo(), nullptr);
  EXPECT_EQ(UndoOnMap(), nullptr);
  socket.Arrive(snapshot);
  EXPECT_NEAR(station.Plots.AIPlots[1].X, 285.2, 0.01);
}

TEST_F(BullseyeSession, UndoStandsOnTheMapsMenuTooAndGoesWithTheSession) {
  Connect();
  Action("mnuBullseyesName_2").trigger();
  Action("mnuUndoNewBulls").trigger();
  EXPECT_EQ(Current().CurrentBull, 1);
  Action("mnuBullseyesName_2").trigger();
  socket.PeerCloses();
  EXPECT_EQ(Undo(), nullptr);
  EXPECT_EQ(UndoOnMap(), nullptr);
}

TEST_F(BullseyeSession, ALongOrOddNameIsShownAsItIs) {
  Connect();
  Current().Bulls[1].Name = std::string(10'000, 'w');
  Current().Bulls[2].Name = "R&D\t2";
  windows.Refresh(base::Changed::NameMenus);
  auto& window = Frame().Tools().The<BullsFrm>();
  window.MaxFrm();
  const QSize before = window.size();
  Action("mnuBullseyesName_2").trigger();
  Action("mnuBullseyesName_1").trigger();
  ASSERT_NE(Undo(), nullptr);
  EXPECT_EQ(Undo()->text(), QStringLiteral("Undo: Back to R&&D 2"));
  Frame().Strip().Check(core::ToolWindow::Bulls).setChecked(true);
  EXPECT_EQ(window.size(), before);
  EXPECT_TRUE(NameShown().text().endsWith(QChar(0x2026)));
  EXPECT_LE(NameShown().fontMetrics().horizontalAdvance(NameShown().text()), NameShown().width());
  EXPECT_TRUE(NameShown().toolTip().startsWith(QString(10'000, u'w')));
}

TEST_F(BullseyeSession, WindowNamesItsBullseye) {
  Frame().Strip().Check(core::ToolWindow::Bulls).setChecked(true);
  Frame().Tools().The<BullsFrm>().MaxFrm();
  EXPECT_EQ(NameShown().text(), QStringLiteral("Alpha"));
  EXPECT_EQ(NameShown().toolTip(), QStringLiteral("Alpha"));
  Action("mnuBullseyesName_2").trigger();
  EXPECT_EQ(NameShown().text(), QStringLiteral("Bravo"));
  Current().Bulls[2].Name = "Delta";
  windows.Refresh(base::Changed::NameMenus);
  EXPECT_EQ(NameShown().text(), QStringLiteral("Delta"));
  Connect();
  EXPECT_EQ(NameShown().toolTip(), QStringLiteral("Delta\n") + Note());
}

}  // namespace
}  // namespace kestrel::shell
