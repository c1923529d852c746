// A floating window that is held back while another window works on what it shows.

#include <QDialog>
#include <QToolButton>

#include "shell/frame/tool_table.h"
#include "shell/parts/dialogs.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class WithheldWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    ASSERT_TRUE(Areas().isVisible());
  }

  ToolFrm& Areas() { return Frame().Tools().Window(core::ToolWindow::Areas); }
  QToolButton& Check() { return Frame().Strip().Check(core::ToolWindow::Areas); }
  void Withhold(bool withheld) { Frame().Withhold(core::ToolWindow::Areas, withheld); }
  /// A dialog that opens and closes, as around each of them the floating windows go and come.
  void RunOther() {
    QDialog dialog(&Frame());
    QTimer::singleShot(0, &dialog, &QDialog::reject);
    RunDialog(dialog, dialogs);
  }
};

TEST_F(WithheldWindow, IsHiddenWithItsButtonAndMenuEntryDisabled) {
  Withhold(true);
  EXPECT_FALSE(Areas().isVisible());
  EXPECT_FALSE(Check().isEnabled());
  EXPECT_FALSE(Action("mnuFAreas").isEnabled());
  EXPECT_TRUE(Frame().Tools().Window(core::ToolWindow::Clients).isVisible()) << "that one alone";
  EXPECT_TRUE(Action("mnuFClients").isEnabled());
}

TEST_F(WithheldWindow, WhatIsKeptOfItDoesNotChange) {
  Withhold(true);
  EXPECT_FALSE(Areas().State().Hidden);
  EXPECT_TRUE(Check().isChecked());
  EXPECT_TRUE(Action("mnuFAreas").isChecked());
}

TEST_F(WithheldWindow, ComesBackAsItWas) {
  QTest::mouseClick(Areas().findChild<QToolButton*>(QStringLiteral("CMD1")), Qt::LeftButton);
  const bool rolledDown = Areas().Expanded();
  const QPoint place = Areas().pos();
  Withhold(true);
  Withhold(false);
  EXPECT_TRUE(Areas().isVisible());
  EXPECT_EQ(Areas().pos(), place);
  EXPECT_EQ(Areas().Expanded(), rolledDown);
  EXPECT_TRUE(Check().isEnabled());
  EXPECT_TRUE(Action("mnuFAreas").isEnabled());
  QTest::mouseClick(&Check(), Qt::LeftButton);
  EXPECT_FALSE(Areas().isVisible()) << "its button works again";
}

TEST_F(WithheldWindow, WindowThatWasHiddenStaysHidden) {
  QTest::mouseClick(&Check(), Qt::LeftButton);
  ASSERT_FALSE(Areas().isVisible());
  Withhold(true);
  Withhold(false);
  EXPECT_FALSE(Areas().isVisible());
  EXPECT_TRUE(Areas().State().Hidden);
  QTest::mouseClick(&Check(), Qt::LeftButton);
  EXPECT_TRUE(Areas().isVisible());
}

TEST_F(WithheldWindow, ItsButtonAndMenuEntryDoNothing) {
  Withhold(true);
  QTest::mouseClick(&Check(), Qt::LeftButton);
  Action("mnuFAreas").trigger();
  EXPECT_TRUE(Check().isChecked());
  EXPECT_FALSE(Areas().State().Hidden);
  EXPECT_FALSE(Areas().isVisible());
}

TEST_F(WithheldWindow, AllShownOrHiddenLeavesItOut) {
  Withhold(true);
  Action("mnuHideAll").trigger();
  EXPECT_FALSE(Frame().Tools().Window(core::ToolWindow::Clients).isVisible());
  EXPECT_FALSE(Areas().State().Hidden);
  Action("mnuShowAll").trigger();
  EXPECT_TRUE(Frame().Tools().Window(core::ToolWindow::Clients).isVisible());
  EXPECT_FALSE(Areas().isVisible());
}

TEST_F(WithheldWindow, StaysAwayWhenADialogGivesTheOthersBack) {
  Withhold(true);
  RunOther();
  EXPECT_TRUE(Frame().Tools().Window(core::ToolWindow::Clients).isVisible());
  EXPECT_FALSE(Areas().isVisible());
}

TEST_F(WithheldWindow, HeldBackInsideADialogItStaysAwayAfterIt) {
  QDialog dialog(&Frame());
  QTimer::singleShot(0, &dialog, [this, &dialog] {
    Withhold(true);
    dialog.reject();
  });
  RunDialog(dialog, dialogs);
  EXPECT_FALSE(Areas().isVisible());
}

TEST_F(WithheldWindow, GivenBackInsideADialogItComesWithTheOthers) {
  Withhold(true);
  QDialog dialog(&Frame());
  bool early = true;
  QTimer::singleShot(0, &dialog, [this, &dialog, &early] {
    Withhold(false);
    early = Areas().isVisible();
    dialog.reject();
  });
  RunDialog(dialog, dialogs);
  EXPECT_FALSE(early) << "over the dialog";
  EXPECT_TRUE(Areas().isVisible());
}

TEST_F(WithheldWindow, WithdrawnTwiceItIsGivenBackOnce) {
  Withhold(true);
  Withhold(true);
  Withhold(false);
  EXPECT_TRUE(Areas().isVisible());
}

}  // namespace
}  // namespace kestrel::shell
