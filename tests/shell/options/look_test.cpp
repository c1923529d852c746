#include "shell/parts/look.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "map/geometry.h"
#include "shell/frame/lamp.h"
#include "shell/options/options_fixture.h"

// Light and dark windows, chosen while the station runs.
namespace kestrel::shell {
namespace {

/// Whatever a test leaves, the next one begins light.
class LookOfTheWindows : public OptionsTest {
 protected:
  void TearDown() override {
    OptionsTest::TearDown();
    qApp->setProperty("SystemIsDark", QVariant());
    ChooseLook(1);
    QCoreApplication::processEvents();
  }

  QComboBox& List() { return Part<QComboBox>("cmbLook"); }
  /// By the keyboard; the palette comes to the windows with the next events.
  void Choose(int look) {
    List().setFocus();
    while (List().currentIndex() != look) {
      QTest::keyClick(&List(), List().currentIndex() < look ? Qt::Key_Down : Qt::Key_Up);
    }
    ASSERT_TRUE(QTest::qWaitFor([this] {
      return Picture().palette().color(QPalette::Window) == QGuiApplication::palette().color(QPalette::Window);
    }));
  }
  /// The windows that are there, with all that stands in them.
  static QList<QWidget*> Parts() {
    QList<QWidget*> parts;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      parts.append(window);
      parts.append(window->findChildren<QWidget*>());
    }
    return parts;
  }
  void ExpectAll(bool dark) {
    const QPalette wanted = QGuiApplication::palette();
    EXPECT_EQ(wanted.color(QPalette::Window).lightness() < 128, dark);
    int windows = 0;
    for (const QWidget* part : Parts()) {
      const QPalette palette = part->palette();
      EXPECT_EQ(palette.color(QPalette::Window), wanted.color(QPalette::Window)) << qPrintable(part->objectName());
      EXPECT_EQ(palette.color(QPalette::Active, QPalette::WindowText),
                wanted.color(QPalette::Active, QPalette::WindowText))
          << qPrintable(part->objectName());
      windows += part->isWindow() && part->isVisible() ? 1 : 0;
    }
    EXPECT_GE(windows, 2) << "the frame and the options at the least";
  }
  QImage Icon() { return Frame().Strip().Check(core::ToolWindow::Clients).grab().toImage(); }
  static int Lightest(const QImage& image) {
    int lightest = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) lightest = std::max(lightest, image.pixelColor(x, y).lightness());
    }
    return lightest;
  }
};

TEST_F(LookOfTheWindows, ChangesAllThatIsOpenAtOnceAndIsKept) {
  ExpectAll(false);
  EXPECT_EQ(Saved("LOOK", "KESTREL"), "missing");
  EXPECT_EQ(List().currentText(), QStringLiteral("As the System"));
  const QImage lightIcon = Icon();
  const QImage lightMap = Map();
  Choose(2);
  ExpectAll(true);
  EXPECT_EQ(Saved("LOOK", "KESTREL"), "2");
  EXPECT_GT(Lightest(Icon()), 180) << "the strokes are light now";
  EXPECT_NE(Icon(), lightIcon);
  Choose(1);
  ExpectAll(false);
  EXPECT_EQ(Saved("LOOK", "KESTREL"), "1");
  EXPECT_EQ(Icon(), lightIcon);
  EXPECT_EQ(Map(), lightMap);
  Choose(0);
  EXPECT_EQ(Saved("LOOK", "KESTREL"), "missing");
}

TEST_F(LookOfTheWindows, AsTheSystemIsAsTheSystemsWereAtTheStart) {
  qApp->setProperty("SystemIsDark", true);
  Choose(1);
  ExpectAll(false);
  Choose(0);
  ExpectAll(true);
}

TEST_F(LookOfTheWindows, LampsTakeTheirColours) {
  auto& lamp = *Frame().findChild<Lamp*>(QStringLiteral("StatPic_Conn"));
  ASSERT_TRUE(lamp.Lit()) << "connected";
  const auto disc = [&lamp] { return lamp.grab().toImage().pixelColor(6, lamp.height() / 2); };
  EXPECT_EQ(disc(), LampColoursOf(QGuiApplication::palette()).Connection);
  const QColor light = disc();
  Choose(2);
  EXPECT_EQ(disc(), LampColoursOf(QGuiApplication::palette()).Connection);
  EXPECT_NE(disc(), light);
}

TEST_F(LookOfTheWindows, PicturesThatLabelsKeepAreMadeAnew) {
  Frame().Strip().Check(core::ToolWindow::Clients).setChecked(true);
  Frame().Tools().Window(core::ToolWindow::Clients).MaxFrm();
  const auto* plug = Frame().Tools().Window(core::ToolWindow::Clients).findChild<QLabel*>(QStringLiteral("ImageCon"));
  const QImage light = plug->pixmap(Qt::ReturnByValue).toImage();
  Choose(2);
  EXPECT_NE(plug->pixmap(Qt::ReturnByValue).toImage(), light);
}

TEST_F(LookOfTheWindows, WhatLiesBeyondTheTheaterTakesTheColourToo) {
  for (int step = 0; step < 3; ++step) windows.Refresh(map::MoveScreen(View(), 3));
  const auto corner = [this] { return Map().pixelColor(3, Picture().height() / 2); };
  EXPECT_EQ(corner(), MapSurround(QGuiApplication::palette()));
  const QColor light = corner();
  Choose(2);
  EXPECT_EQ(corner(), MapSurround(QGuiApplication::palette()));
  EXPECT_NE(corner(), light);
}

TEST_F(LookOfTheWindows, AKeyFieldAndItsColoursOutlastAChange) {
  auto& field = Part<QLineEdit>("txtKey_0");
  const QColor back = field.palette().color(QPalette::Base);
  const QColor text = field.palette().color(QPalette::Text);
  Choose(2);
  EXPECT_EQ(field.palette().color(QPalette::Base), back);
  EXPECT_EQ(field.palette().color(QPalette::Text), text);
}

class LookAtTheStart : public StationTest {
 protected:
  void TearDown() override {
    StationTest::TearDown();
    ChooseLook(1);
    QCoreApplication::processEvents();
  }
};

TEST_F(LookAtTheStart, IsWhatWasChosen) {
  Write("KESTREL.ini", Read("KESTREL.ini") + "[KESTREL]\r\nLOOK=2\r\n");
  Start();
  EXPECT_LT(Frame().palette().color(QPalette::Window).lightness(), 128);
  EXPECT_EQ(Frame().findChild<Lamp*>(QStringLiteral("StatPic_Conn"))->palette().color(QPalette::Window),
            Frame().palette().color(QPalette::Window));
}

TEST_F(LookAtTheStart, OfAnotherNumberIsTheSystems) {
  Write("KESTREL.ini", Read("KESTREL.ini") + "[KESTREL]\r\nLOOK=7\r\n");
  Start();
  EXPECT_GT(Frame().palette().color(QPalette::Window).lightness(), 128);
}

}  // namespace
}  // namespace kestrel::shell
