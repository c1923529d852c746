#include "shell/link/select_channel_dialog.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace kestrel::shell {
namespace {

struct Choice {
  const char* Option;
  Qt::Key Key;
  std::uint8_t Channel;
};
constexpr Choice Choices[] = {{"OptSide_0", Qt::Key_B, 1}, {"OptSide_1", Qt::Key_R, 2}, {"OptSide_2", Qt::Key_C, 0}};

/// Another channel than `channel`, to start from.
std::uint8_t Other(std::uint8_t channel) { return channel == 0 ? 1 : 0; }

QRadioButton& Option(frmSelectChannel& dialog, const char* name) {
  return *dialog.findChild<QRadioButton*>(QString::fromLatin1(name));
}

TEST(SelectChannel, EachOptionIsPickedWithTheMouse) {
  for (const Choice& each : Choices) {
    SCOPED_TRACE(each.Option);
    frmSelectChannel dialog(Other(each.Channel), nullptr);
    dialog.show();
    QRadioButton& option = Option(dialog, each.Option);
    QTest::mouseClick(&option, Qt::LeftButton, {}, QPoint(8, option.height() / 2));
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.Channel(), each.Channel);
  }
}

TEST(SelectChannel, EachOptionIsPickedWithTheKeyboard) {
  for (const Choice& each : Choices) {
    SCOPED_TRACE(each.Option);
    frmSelectChannel dialog(Other(each.Channel), nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, each.Key, Qt::AltModifier);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Channel(), each.Channel);
  }
}

TEST(SelectChannel, ArrowsMoveThroughTheOptions) {
  frmSelectChannel dialog(1, nullptr);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
  EXPECT_EQ(dialog.Channel(), 2);
  QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
  EXPECT_EQ(dialog.Channel(), 0);
}

TEST(SelectChannel, PresentChannelIsPickedAndHasTheFocus) {
  for (const Choice& each : Choices) {
    frmSelectChannel dialog(each.Channel, nullptr);
    dialog.show();
    EXPECT_TRUE(Option(dialog, each.Option).isChecked()) << each.Option;
    EXPECT_EQ(dialog.focusWidget(), &Option(dialog, each.Option));
  }
}

TEST(SelectChannel, EscapeCloseAndCancelChooseNothing) {
  const std::pair<const char*, void (*)(frmSelectChannel&)> ways[] = {
      {"Esc", [](frmSelectChannel& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape); }},
      {"close", [](frmSelectChannel& dialog) { dialog.close(); }},
      {"Cancel",
       [](frmSelectChannel& dialog) {
         auto* cancel = dialog.findChild<QPushButton*>(QStringLiteral("Command2"));
         ASSERT_NE(cancel, nullptr);
         EXPECT_EQ(cancel->text(), QStringLiteral("Cancel"));
         EXPECT_FALSE(cancel->toolTip().isEmpty());
         QTest::mouseClick(cancel, Qt::LeftButton);
       }},
  };
  for (const auto& [name, leave] : ways) {
    SCOPED_TRACE(name);
    frmSelectChannel dialog(2, nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    leave(dialog);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
  }
}

}  // namespace
}  // namespace kestrel::shell
