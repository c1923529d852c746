// The keys of the player's window.

#include <QAbstractButton>
#include <QDir>

#include "shell/parts/tool_frm.h"
#include "shell/station_fixture.h"
#include "shell/tape/position_bar.h"
#include "shell/tape/rec_frm.h"
#include "tape/golden_tape.h"

namespace kestrel::shell {
namespace {

using tape::PlayerPhase;

class PlayerKeys : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    Frame().Strip().Check(core::ToolWindow::Rec).setChecked(true);
    Rec().MaxFrm();
  }

  /// A tape of `records`, a second apart.
  void Load(int records) {
    std::string bytes = test::GoldenHeader(records, 1000, 46347.5, 512, 512);
    for (int n = 0; n < records; ++n) {
      bytes += test::BytesF64(46347.5 + n / 86400.0) + test::TapeArray(0) + test::TapeArray(0);
    }
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("TAPES")));
    Write("TAPES/a.tap", QByteArray::fromStdString(bytes));
    desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/a.tap")).toStdString()};
    In<QAbstractButton>("Command1").setFocus();
    QTest::mouseClick(&In<QAbstractButton>("Command1"), Qt::LeftButton);
    ASSERT_TRUE(Player().Loaded());
  }

  RecFrm& Rec() { return Frame().Tools().The<RecFrm>(); }
  template <class Control>
  Control& In(const char* name) {
    auto* control = Rec().findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  const tape::PlayerState& Player() { return station.Tapes.Player.State(); }
  QString Focus() { return Rec().focusWidget() == nullptr ? QString() : Rec().focusWidget()->objectName(); }
};

TEST_F(PlayerKeys, SpacePlaysAndPauses) {
  QTest::keyClick(&Rec(), Qt::Key_Space);
  EXPECT_EQ(Player().Phase, PlayerPhase::NoFile);
  Load(5);
  for (QWidget* where : {static_cast<QWidget*>(&Rec()), static_cast<QWidget*>(&In<QSlider>("HScroll1")),
                         static_cast<QWidget*>(&In<QSlider>("Slider1"))}) {
    QTest::keyClick(where, Qt::Key_Space);
    EXPECT_EQ(Player().Phase, PlayerPhase::Playing) << qPrintable(where->objectName());
    QTest::keyClick(where, Qt::Key_Space);
    EXPECT_EQ(Player().Phase, PlayerPhase::Paused) << qPrintable(where->objectName());
  }
}

TEST_F(PlayerKeys, AButtonThatHasTheKeyboardIsPressedBySpace) {
  Load(5);
  QTest::keyClick(&In<QAbstractButton>("Command6"), Qt::Key_Space);
  EXPECT_EQ(Player().Phase, PlayerPhase::NoFile);
}

TEST_F(PlayerKeys, AfterAPressOfAButtonTheKeysGoToTheTapeAndNotToTheNextButton) {
  Load(5);
  EXPECT_EQ(Focus(), QStringLiteral("HScroll1"));
  for (const char* name : {"Command2", "Command3", "Command2", "Command5"}) {
    auto& button = In<QAbstractButton>(name);
    button.setFocus();
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(Focus(), QStringLiteral("HScroll1")) << name;
  }
}

TEST_F(PlayerKeys, PlusAndMinusChangeTheSpeed) {
  Load(5);
  const auto press = [this](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(&In<QSlider>("HScroll1"), key, with);
    EXPECT_EQ(1 << In<QSlider>("Slider1").value(), Player().Speed);
    return Player().Speed;
  };
  EXPECT_EQ(press(Qt::Key_Minus), 1);
  EXPECT_EQ(press(Qt::Key_Plus, Qt::ShiftModifier), 2);
  EXPECT_EQ(press(Qt::Key_Plus, Qt::KeypadModifier), 4);
  EXPECT_EQ(press(Qt::Key_Plus), 8);
  EXPECT_EQ(press(Qt::Key_Plus), 16);
  EXPECT_EQ(press(Qt::Key_Plus), 16);
  EXPECT_EQ(press(Qt::Key_Minus), 8);
  EXPECT_EQ(press(Qt::Key_Plus, Qt::ControlModifier), 8) << "not a key of the player";
}

TEST_F(PlayerKeys, ArrowsStepOneRecordAndHomeAndEndGoToTheEnds) {
  Load(5);
  for (QWidget* where : {static_cast<QWidget*>(&Rec()), static_cast<QWidget*>(&In<QSlider>("HScroll1")),
                         static_cast<QWidget*>(&In<QAbstractButton>("Command6"))}) {
    const auto press = [&](Qt::Key key) {
      QTest::keyClick(where, key);
      EXPECT_EQ(In<QSlider>("HScroll1").value(), Player().CurPoint);
      return Player().CurPoint;
    };
    EXPECT_EQ(press(Qt::Key_Left), 1);
    EXPECT_EQ(press(Qt::Key_Right), 2);
    EXPECT_EQ(press(Qt::Key_Right), 3);
    EXPECT_EQ(press(Qt::Key_Left), 2);
    EXPECT_EQ(press(Qt::Key_End), 5);
    EXPECT_EQ(press(Qt::Key_Right), 5);
    EXPECT_EQ(press(Qt::Key_Home), 1);
  }
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(PlayerKeys, OnALongTapeEveryRecordIsReached) {
  Load(40000);
  ASSERT_EQ(Player().ScrollScale, 2);
  auto& bar = In<QSlider>("HScroll1");
  const auto press = [&](Qt::Key key) {
    QTest::keyClick(&bar, key);
    return Player().CurPoint;
  };
  EXPECT_EQ(press(Qt::Key_Right), 2);
  EXPECT_EQ(press(Qt::Key_Right), 3);
  EXPECT_EQ(press(Qt::Key_End), 40000);
  EXPECT_EQ(press(Qt::Key_Left), 39999);
  EXPECT_EQ(press(Qt::Key_Home), 1);
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(PlayerKeys, OfTheSpeedSliderTheArrowsAreItsOwn) {
  Load(5);
  QTest::keyClick(&In<QSlider>("Slider1"), Qt::Key_Right);
  EXPECT_EQ(Player().Speed, 2);
  QTest::keyClick(&In<QSlider>("Slider1"), Qt::Key_End);
  EXPECT_EQ(Player().Speed, 16);
  EXPECT_EQ(Player().CurPoint, 1);
}

}  // namespace
}  // namespace kestrel::shell
