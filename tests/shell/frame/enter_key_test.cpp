#include "shell/frame/enter_key.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QFontDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "shell/core/font_dialog.h"
#include "shell/link/select_channel_dialog.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

/// A desktop whose buttons take Enter as they take the space bar: stands for what the button itself does with a key.
class GreedyButtons final : public QObject {
 public:
  explicit GreedyButtons(QWidget& window) {
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) button->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* button = qobject_cast<QAbstractButton*>(watched);
    if (event->type() != QEvent::KeyPress || button == nullptr) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    ++Taken;
    button->click();
    return true;
  }
  int Taken = 0;
};

void Focus(QWidget& window, QWidget& part) {
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  part.setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&part] { return part.hasFocus(); }));
}

TEST(EnterKey, IsOkWhateverHasTheKeyboard) {
  const EnterKey enter;
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    QDialog dialog;
    auto* rows = new QVBoxLayout(&dialog);
    auto* ok = new QPushButton(&dialog);
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* plain = new QPushButton(&dialog);
    plain->setAutoDefault(false);
    const std::vector<QAbstractButton*> others = {new QRadioButton(&dialog), new QCheckBox(&dialog),
                                                  new QToolButton(&dialog), plain};
    rows->addWidget(ok);
    for (QAbstractButton* button : others) {
      button->setFocusPolicy(Qt::StrongFocus);
      button->setCheckable(true);
      rows->addWidget(button);
    }
    GreedyButtons desktop(dialog);
    for (QAbstractButton* button : others) {
      SCOPED_TRACE(button->metaObject()->className());
      dialog.setResult(QDialog::Rejected);
      Focus(dialog, *button);
      QTest::keyClick(button, key);
      EXPECT_EQ(dialog.result(), QDialog::Accepted);
      EXPECT_FALSE(dialog.isVisible());
      EXPECT_FALSE(button->isChecked()) << "it was pressed";
    }
  }
}

TEST(EnterKey, PressesTheButtonThatAsksForIt) {
  const EnterKey enter;
  QDialog dialog;
  auto* rows = new QVBoxLayout(&dialog);
  int pressed = 0;
  for (int n = 0; n < 2; ++n) {
    auto* button = new QPushButton(&dialog);
    rows->addWidget(button);
    QObject::connect(button, &QPushButton::clicked, &dialog, [&pressed, n] { pressed = 10 * pressed + n + 1; });
  }
  // Of two such as message boxes have, the one with the keyboard.
  QWidget& second = *rows->itemAt(1)->widget();
  Focus(dialog, second);
  QTest::keyClick(&second, Qt::Key_Return);
  EXPECT_EQ(pressed, 2);
}

TEST(EnterKey, IsLeftAloneOutsideDialogs) {
  const EnterKey enter;
  QWidget window;
  QCheckBox box(&window);
  GreedyButtons desktop(window);
  Focus(window, box);
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(desktop.Taken, 1);
  EXPECT_TRUE(box.isChecked());
}

TEST(EnterKey, IsOkInTheFontDialogToo) {
  const EnterKey enter;
  FontDialog dialog({.FontName = "DejaVu Sans", .FontSize = 10}, true, nullptr);
  GreedyButtons desktop(dialog);
  auto* inner = dialog.findChild<QFontDialog*>();
  for (QWidget* part : std::vector<QWidget*>{inner->findChild<QCheckBox*>(), inner,
                                             dialog.findChild<QPushButton*>(QStringLiteral("cmdColor"))}) {
    ASSERT_NE(part, nullptr);
    SCOPED_TRACE(part->metaObject()->className());
    dialog.setResult(QDialog::Rejected);
    dialog.show();
    QTest::keyClick(part, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
  }
  EXPECT_EQ(desktop.Taken, 0);
}

TEST_F(StationTest, EnterJoinsTheChannelOnADesktopWhoseButtonsTakeIt) {
  Start();
  Action("mnuConnList_1").trigger();
  InNextDialog([](QWidget& dialog) {
    GreedyButtons desktop(dialog);
    auto* red = dialog.findChild<QRadioButton*>(QStringLiteral("OptSide_1"));
    red->setChecked(true);
    Focus(dialog, *red);
    QTest::keyClick(red, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    dialog.close();
  });
  socket.Accept();
  EXPECT_EQ(socket.Sent, std::string("NAWACS2\0", 8));
}

}  // namespace
}  // namespace kestrel::shell
