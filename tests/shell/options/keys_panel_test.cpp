#include "shell/options/keys_panel.h"

#include <QLineEdit>

#include "core/execute_shortcut.h"
#include "core/shortcuts.h"
#include "shell/options/options_fixture.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

class KeysPages : public OptionsTest {
 protected:
  void SetUp() override {
    OptionsTest::SetUp();
    if (HasFatalFailure()) return;
    Activate();
  }

  static std::string Numbered(const char* stem, std::size_t index) { return stem + std::to_string(index); }
  QLineEdit& Box(std::size_t index) { return Part<QLineEdit>(Numbered("txtKey_", index)); }
  QColor Back(std::size_t index) { return Box(index).palette().color(QPalette::Base); }
  /// What is seen of it.
  QColor Seen(std::size_t index) {
    const QImage shown = Box(index).grab().toImage();
    return shown.pixelColor(shown.width() - 6, shown.height() / 2);
  }
  void Set(std::size_t index) { Press(Numbered("cmdSet_", index)); }
  std::string SavedKey(std::size_t index) { return Saved(Numbered("KEY", index), "SHORTCUTS"); }
  void ExpectBox(std::size_t index, const char* text, const QColor& back) {
    EXPECT_EQ(Box(index).text(), QString::fromLatin1(text)) << index;
    EXPECT_EQ(Back(index), back) << index;
    EXPECT_EQ(Seen(index), back) << index;
  }

  // 00BBGGRR C0FFFF, C0C0FF and C0FFC0.
  static constexpr QColor Yellow{0xff, 0xff, 0xc0};
  static constexpr QColor Red{0xff, 0xc0, 0xc0};
  static constexpr QColor Green{0xc0, 0xff, 0xc0};
};

TEST_F(KeysPages, EachCommandHasItsNameKeyAndButton) {
  for (std::size_t index = 0; index < core::ShortcutCount; ++index) {
    QLabel& label = Part<QLabel>(Numbered("lblKey_", index));
    EXPECT_EQ(label.text().toStdString(), core::Shortcuts[index].Name);
    EXPECT_EQ(Box(index).text().toStdString(), core::KeyName(core::Shortcuts[index].Default));
    EXPECT_EQ(Back(index), Green);
    QWidget& panel = Panel(index < 12 ? 3 : 4);
    for (const char* stem : {"lblKey_", "txtKey_", "cmdSet_"}) {
      EXPECT_TRUE(panel.isAncestorOf(Window().findChild<QWidget*>(QString::fromStdString(Numbered(stem, index)))));
    }
    EXPECT_TRUE(Box(index).accessibleName().endsWith(label.text()));
  }
}

TEST_F(KeysPages, EachCommandTakesTheKeyThatIsPressed) {
  for (std::size_t index = 0; index < core::ShortcutCount; ++index) {
    SCOPED_TRACE(index);
    Set(index);
    ExpectBox(index, "<Press Key or ESC to clear>", Yellow);
    EXPECT_TRUE(Box(index).hasFocus());
    EXPECT_EQ(station.ShortcutKeys[index], 0);
    EXPECT_FALSE(globalKeys.Listening());
    QTest::keyClick(&Box(index), Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
    ExpectBox(index, "SHIFT+CTRL+Q", Green);
    EXPECT_EQ(SavedKey(index), "300081");
    EXPECT_TRUE(globalKeys.Listening());
  }
}

TEST_F(KeysPages, EscLeavesTheCommandWithoutAKey) {
  Set(3);
  QTest::keyClick(&Box(3), Qt::Key_Escape);
  ExpectBox(3, "NO KEY", Red);
  EXPECT_EQ(SavedKey(3), "0");
  EXPECT_TRUE(globalKeys.Listening());
}

TEST_F(KeysPages, LosingTheFocusLeavesTheCommandWithoutAKey) {
  Set(14);
  Part<>("cmdSet_20").setFocus();
  ExpectBox(14, "NO KEY", Red);
  EXPECT_EQ(SavedKey(14), "0");
  EXPECT_TRUE(globalKeys.Listening());
  QTest::keyClick(&Box(14), Qt::Key_Q);
  ExpectBox(14, "NO KEY", Red);
}

TEST_F(KeysPages, TheOtherTabEndsTheCapture) {
  Set(2);
  QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(0).center());
  EXPECT_TRUE(globalKeys.Listening());
  ExpectBox(2, "NO KEY", Red);
}

TEST_F(KeysPages, ModifiersAloneAreWaitedOut) {
  Set(5);
  for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt}) {
    QTest::keyClick(&Box(5), key);
    ExpectBox(5, "<Press Key or ESC to clear>", Yellow);
  }
  QTest::keyClick(&Box(5), Qt::Key_F5, Qt::AltModifier);
  ExpectBox(5, "ALT+F5", Green);
  EXPECT_EQ(SavedKey(5), "400116");
}

TEST_F(KeysPages, AnotherButtonEndsTheFormerCapture) {
  Set(5);
  Set(6);
  ExpectBox(5, "NO KEY", Red);
  ExpectBox(6, "<Press Key or ESC to clear>", Yellow);
  QTest::keyClick(&Box(6), Qt::Key_Q);
  EXPECT_EQ(station.ShortcutKeys[5], 0);
  EXPECT_EQ(station.ShortcutKeys[6], 81);
}

TEST_F(KeysPages, KeysThatDoSomethingInAWindowAreTakenToo) {
  const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*> keys[] = {
      {Qt::Key_Tab, Qt::NoModifier, "TAB"},       {Qt::Key_Space, Qt::NoModifier, "SPACEBAR"},
      {Qt::Key_Return, Qt::NoModifier, "ENTER"},  {Qt::Key_O, Qt::AltModifier, "ALT+O"},
      {Qt::Key_C, Qt::ControlModifier, "CTRL+C"}, {Qt::Key_Left, Qt::NoModifier, "LEFTARROW"},
      {Qt::Key_F1, Qt::ShiftModifier, "SHIFT+F1"}};
  for (const auto& [key, modifiers, name] : keys) {
    Set(7);
    QTest::keyClick(&Box(7), key, modifiers);
    ExpectBox(7, name, Green);
    EXPECT_EQ(Tabs().currentIndex(), 2) << name;
  }
}

TEST_F(KeysPages, OutsideACaptureKeysChangeNothing) {
  Box(4).setFocus();
  QTest::keyClick(&Box(4), Qt::Key_Q);
  QTest::keyClick(&Box(4), Qt::Key_Escape);
  ExpectBox(4, "UPARROW", Green);
  QTest::keyClick(&Box(4), Qt::Key_Tab);
  EXPECT_FALSE(Box(4).hasFocus()) << "the next field";
  EXPECT_EQ(station.ShortcutKeys, core::DefaultBindings());
}

TEST_F(KeysPages, DefaultsComeBackInTwoHalves) {
  core::Bindings changed;
  for (std::size_t index = 0; index < core::ShortcutCount; ++index) changed[index] = index % 2 == 0 ? 0 : 90;
  station.ShortcutKeys = changed;
  Press("cmdLoadDefaults");
  for (std::size_t index = 0; index < 12; ++index) {
    EXPECT_EQ(SavedKey(index), std::to_string(core::Shortcuts[index].Default));
    ExpectBox(index, core::KeyName(core::Shortcuts[index].Default).c_str(), Green);
  }
  for (std::size_t index = 12; index < 25; ++index) EXPECT_EQ(station.ShortcutKeys[index], changed[index]);
  station.ShortcutKeys = changed;
  Press("cmdLoadDefaults2");
  for (std::size_t index = 0; index < 12; ++index) EXPECT_EQ(station.ShortcutKeys[index], changed[index]);
  for (std::size_t index = 12; index < 25; ++index) {
    EXPECT_EQ(SavedKey(index), std::to_string(core::Shortcuts[index].Default));
    ExpectBox(index, core::KeyName(core::Shortcuts[index].Default).c_str(), Green);
  }
}

TEST_F(KeysPages, TwoCommandsMayHaveOneKeyAndTheLowerActs) {
  Set(1);
  QTest::keyClick(&Box(1), Qt::Key_PageUp);
  ExpectBox(0, "PAGEUP", Green);
  ExpectBox(1, "PAGEUP", Green);
  core::MapKey(program, 33, 0);
  EXPECT_EQ(View().Resolution, 2) << "Zoom In, not Zoom Out";
}

TEST_F(KeysPages, WithASourceNoLineStandsBesideTheTransmitKeys) {
  Part<QLineEdit>("txtKey_24");
  EXPECT_FALSE(Window().findChild<QLabel*>(QStringLiteral("lblGlobalKeys"))->isVisible());
}

TEST_F(KeysPages, AClosingStationEndsACaptureThatStillWaits) {
  Set(8);
  Frame().close();
  EXPECT_EQ(Window().findChild<QLineEdit*>(QStringLiteral("txtKey_8"))->text(), QStringLiteral("NO KEY"));
  EXPECT_FALSE(globalKeys.Listening());
  const auto file = base::ProfileFile::Load(station.AppPath / "KESTREL.ini");
  EXPECT_EQ(file.ReadIniValue("SHORTCUTS", "KEY8", "missing"), "0") << "as the closing has saved it";
}

TEST_F(KeysPages, ATransmitKeyThatIsNotHeardIsNamedBelowThem) {
  globalKeys.Unheard = {400116};
  Part<QLineEdit>("txtKey_24");
  QLabel& note = *Window().findChild<QLabel*>(QStringLiteral("lblGlobalKeys"));
  EXPECT_FALSE(note.isVisible());
  const int height = Panel(4).height();
  Set(23);
  QTest::keyClick(&Box(23), Qt::Key_F5, Qt::AltModifier);
  ExpectBox(23, "ALT+F5", Green);
  EXPECT_TRUE(note.isVisible());
  EXPECT_EQ(note.text(), QStringLiteral("Not heard here: ALT+F5 (Transm VHF). Choose another key."));
  EXPECT_EQ(Panel(4).height(), height);
  EXPECT_GE(Panel(4).height(), Panel(4).heightForWidth(Panel(4).width())) << "there is room for it";
  Set(23);
  EXPECT_FALSE(note.isVisible()) << "it has no key now";
  QTest::keyClick(&Box(23), Qt::Key_F5, Qt::AltModifier);
  EXPECT_TRUE(note.isVisible());
  Press("cmdLoadDefaults2");
  EXPECT_FALSE(note.isVisible());
}

TEST_F(KeysPages, DefaultsReleaseATransmitKeyThatIsHeld) {
  station.ShortcutKeys[22] = 120;
  globalKeys.Press(120);
  EXPECT_TRUE(station.Transmit.TransmittingUHF);
  Press("cmdLoadDefaults2");
  EXPECT_FALSE(station.Transmit.TransmittingUHF);
  ASSERT_EQ(voiceWindows.Keys.size(), 2U);
  EXPECT_EQ(voiceWindows.Keys.back(), std::pair(112, false));
}

TEST_F(KeysPages, TipsTellWhatEscMeans) {
  const QString meaning = QStringLiteral("Esc leaves it without one until the next start, which gives it its default");
  for (std::size_t index = 0; index < core::ShortcutCount; ++index) {
    EXPECT_TRUE(Box(index).toolTip().contains(meaning)) << index;
    EXPECT_TRUE(Part<>(Numbered("cmdSet_", index)).toolTip().contains(meaning)) << index;
  }
}

class KeysAtTheStart : public StationTest {};

TEST_F(KeysAtTheStart, WithoutASourceALineSaysSoBesideTheTransmitKeys) {
  globalKeys.Why = "Nobody hears them here.";
  Start();
  station.ShortcutKeys[23] = 0;
  ViewFrm& window = Frame().Tools().The<ViewFrm>();
  window.MaxFrm();
  Frame().Strip().Check(core::ToolWindow::View).setChecked(true);
  window.findChild<QTabBar*>(QStringLiteral("TabStrip1"))->setCurrentIndex(3);
  auto* line = window.findChild<QLabel*>(QStringLiteral("lblGlobalKeys"));
  EXPECT_TRUE(line->isVisible());
  EXPECT_EQ(line->text(), QStringLiteral("Nobody hears them here."));
  auto* box = window.findChild<QLineEdit*>(QStringLiteral("txtKey_23"));
  EXPECT_EQ(box->text(), QStringLiteral("NO KEY"));
  EXPECT_EQ(box->palette().color(QPalette::Base), QColor(0xff, 0xc0, 0xc0));
}

}  // namespace
}  // namespace kestrel::shell
