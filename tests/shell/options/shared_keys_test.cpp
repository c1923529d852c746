// Two commands on one key, and keys that are put back.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/shortcuts.h"
#include "shell/options/options_fixture.h"

namespace kestrel::shell {
namespace {

class SharedKeys : public OptionsTest {
 protected:
  void SetUp() override {
    OptionsTest::SetUp();
    if (HasFatalFailure()) return;
    Activate();
  }
  QLineEdit& Box(int index) { return Part<QLineEdit>("txtKey_" + std::to_string(index)); }
  /// The word in the field of a key; nothing while it is hidden.
  QString Clash(int index) {
    Box(index);
    auto* word = Window().findChild<QLabel*>(QStringLiteral("lblClash_%1").arg(index));
    return word->isVisible() ? word->text() : QString();
  }
  /// What the panel lists.
  QString Listed(int panel) { return Panel(panel).findChild<QLabel*>(QStringLiteral("lblShadowed"))->text(); }
  QPushButton& Undo(int panel) { return *Panel(panel).findChild<QPushButton*>(QStringLiteral("cmdUndoKey")); }
  void Bind(int index, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    Press("cmdSet_" + std::to_string(index));
    QTest::keyClick(&Box(index), key, modifiers);
  }
};

TEST_F(SharedKeys, AreToldBesideBothAndListed) {
  EXPECT_EQ(Clash(0), QString());
  Bind(1, Qt::Key_PageUp);
  EXPECT_EQ(Clash(0), QStringLiteral("shared with Zoom Out"));
  EXPECT_EQ(Clash(1), QStringLiteral("taken by Zoom In"));
  EXPECT_EQ(Clash(2), QString());
  EXPECT_EQ(Listed(3), QStringLiteral("No effect: Zoom Out (PAGEUP is Zoom In)"));
  Bind(1, Qt::Key_Q);
  EXPECT_EQ(Clash(0), QString());
  EXPECT_EQ(Clash(1), QString());
  EXPECT_EQ(Listed(3), QString());
}

TEST_F(SharedKeys, AreToldOnTheOtherPageToo) {
  Bind(23, Qt::Key_B);
  EXPECT_EQ(Clash(23), QStringLiteral("taken by Bullseye"));
  EXPECT_EQ(Clash(11), QStringLiteral("shared with Transm VHF"));
  EXPECT_EQ(Listed(3), QStringLiteral("No effect: Transm VHF (B is Bullseye)"));
  EXPECT_EQ(Listed(4), Listed(3));
}

TEST_F(SharedKeys, AreListedInFullInTheTip) {
  station.ShortcutKeys.fill(65);
  Bind(0, Qt::Key_A);
  EXPECT_TRUE(Listed(3).endsWith(QStringLiteral(" and 22 more"))) << Listed(3).toStdString();
  const QString tip = Panel(3).findChild<QLabel*>(QStringLiteral("lblShadowed"))->toolTip();
  EXPECT_EQ(tip.count(u'\n'), 23);
  EXPECT_TRUE(tip.endsWith(QStringLiteral("Transm GUARD (A is Zoom In)")));
}

TEST_F(SharedKeys, HaveRoomForTheirWords) {
  station.ShortcutKeys.fill(200065);
  station.OwnKeys.fill(200065);
  const QSize size = Window().size();
  Bind(0, Qt::Key_A, Qt::ControlModifier);
  for (const int index : {0, 11, 12, 24, 100, 102}) {
    Box(index);
    auto* word = Window().findChild<QLabel*>(QStringLiteral("lblClash_%1").arg(index));
    EXPECT_TRUE(word->isVisible()) << index;
    EXPECT_GE(word->width(), word->sizeHint().width()) << index;
    EXPECT_TRUE(Box(index).rect().contains(word->geometry())) << index;
    EXPECT_GT(word->x(), Box(index).fontMetrics().horizontalAdvance(Box(index).text()) + 8) << index;
  }
  EXPECT_EQ(Window().size(), size);
}

TEST_F(SharedKeys, ArePutBackByUndoOnce) {
  Box(1);
  QTest::mouseClick(&Undo(3), Qt::LeftButton);
  EXPECT_EQ(station.ShortcutKeys, core::DefaultBindings()) << "nothing to put back";
  Bind(2, Qt::Key_Q);
  Bind(1, Qt::Key_PageUp);
  QTest::mouseClick(&Undo(3), Qt::LeftButton);
  EXPECT_EQ(Box(1).text(), QStringLiteral("PAGEDOWN"));
  EXPECT_EQ(Clash(0), QString());
  QTest::mouseClick(&Undo(3), Qt::LeftButton);
  EXPECT_EQ(Box(2).text(), QStringLiteral("Q")) << "no further back";
}

TEST_F(SharedKeys, UndoOnTheOtherPageShowsThemThere) {
  Bind(1, Qt::Key_Q);
  Box(12);
  QTest::mouseClick(&Undo(4), Qt::LeftButton);
  EXPECT_EQ(Box(1).text(), QStringLiteral("PAGEDOWN"));
  EXPECT_EQ(station.ShortcutKeys, core::DefaultBindings());
}

TEST_F(SharedKeys, UndoEndsACaptureThatWaits) {
  Press("cmdSet_5");
  EXPECT_FALSE(globalKeys.Listening());
  QTest::mouseClick(&Undo(3), Qt::LeftButton);
  EXPECT_EQ(Box(5).text(), QStringLiteral("DOWNARROW"));
  EXPECT_TRUE(globalKeys.Listening());
}

TEST_F(SharedKeys, CommandsOfOurOwnStandOnTheFirstPage) {
  EXPECT_EQ(Box(100).text(), QStringLiteral("NO KEY"));
  EXPECT_EQ(Box(101).text(), QStringLiteral("CTRL+K"));
  EXPECT_EQ(Box(102).text(), QStringLiteral("CTRL+P"));
  EXPECT_TRUE(Panel(3).isAncestorOf(&Box(102)));
  Bind(100, Qt::Key_I);
  EXPECT_EQ(Saved("KEY_AINAMES", "KESTREL"), "73");
  EXPECT_TRUE(Box(100).toolTip().endsWith(QStringLiteral("Esc leaves it without one.")));
  Press("cmdLoadDefaults");
  EXPECT_EQ(Box(100).text(), QStringLiteral("NO KEY"));
  EXPECT_EQ(Saved("KEY_AINAMES", "KESTREL"), "missing");
}

}  // namespace
}  // namespace kestrel::shell
