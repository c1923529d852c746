#include "shell/options/extras_panel.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QWheelEvent>
#include <algorithm>

#include "core/eye_colours.h"
#include "shell/options/options_fixture.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

class ExtrasPage : public OptionsTest {};

TEST_F(ExtrasPage, HasTheSizeOfTheOthersAndShowsAlone) {
  QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(0).center());
  const QSize first = Panel(1).size();
  QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(4).center());
  for (int panel = 1; panel <= 5; ++panel) EXPECT_EQ(Panel(panel).isVisible(), panel == 5);
  EXPECT_EQ(Panel(5).size(), first);
  EXPECT_GE(Panel(5).height(), Panel(5).sizeHint().height()) << "nothing is cut off";
  EXPECT_GE(Panel(5).width(), Panel(5).sizeHint().width());
}

TEST_F(ExtrasPage, WhatDoesNotFitIsScrolledToAndComesIntoViewWithTheKeyboard) {
  Activate();
  Tabs().setCurrentIndex(4);
  auto& scroll = *Panel(5).findChild<QScrollArea*>(QStringLiteral("ExtrasScroll"));
  EXPECT_EQ(scroll.size(), Panel(5).size());
  EXPECT_GE(scroll.viewport()->width(), scroll.widget()->minimumSizeHint().width()) << "no column is cut off";
  scroll.widget()->setMinimumHeight(3 * Panel(5).height());
  ASSERT_TRUE(QTest::qWaitFor([&scroll] { return scroll.verticalScrollBar()->maximum() > 0; }));
  EXPECT_GE(scroll.viewport()->width(), scroll.widget()->minimumSizeHint().width()) << "with the bar beside it";
  EXPECT_FALSE(scroll.horizontalScrollBar()->isVisible());
  scroll.verticalScrollBar()->setValue(scroll.verticalScrollBar()->maximum());
  auto& first = *Window().findChild<QWidget*>(QStringLiteral("cmdTieCol"));
  const auto seen = [&] {
    const QRect place(first.mapTo(scroll.viewport(), QPoint()), first.size());
    return scroll.viewport()->rect().contains(place);
  };
  EXPECT_FALSE(seen());
  Tabs().setFocus();
  for (int step = 0; step < 80 && QApplication::focusWidget() != &first; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_TRUE(first.hasFocus());
  EXPECT_TRUE(seen());
}

TEST_F(ExtrasPage, TheWheelTurnsOnlyWhatHasTheKeyboard) {
  Activate();
  auto& slider = Part<QSlider>("sldMapBrightness");
  slider.setValue(50);
  const auto turn = [&slider] {
    const QPointF middle = QRectF(slider.rect()).center();
    QWheelEvent event(middle, slider.mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&slider, &event);
  };
  Tabs().setFocus();
  turn();
  EXPECT_EQ(slider.value(), 50);
  slider.setFocus();
  turn();
  EXPECT_LT(slider.value(), 50);
}

TEST_F(ExtrasPage, TheMapsControlsStoreTheirSettings) {
  auto& slider = Part<QSlider>("sldMapBrightness");
  const auto& number = *Window().findChild<QLabel*>(QStringLiteral("lblMapBrightnessNumber"));
  EXPECT_EQ(slider.value(), 100);
  EXPECT_EQ(slider.minimum(), 20);
  EXPECT_EQ(number.text(), QStringLiteral("100 %"));
  EXPECT_EQ(Saved("MAPBRIGHTNESS", "KESTREL"), "missing");
  slider.setFocus();
  const QImage before = Map();
  EXPECT_EQ(Drawn([&slider] { QTest::keyClick(&slider, Qt::Key_Left); }), DrawMap);
  EXPECT_NE(Map(), before);
  EXPECT_EQ(Saved("MAPBRIGHTNESS", "KESTREL"), "95");
  EXPECT_EQ(number.text(), QStringLiteral("95 %"));
  EXPECT_EQ(Drawn([&slider] { QTest::keyClick(&slider, Qt::Key_Right); }), DrawMap);
  EXPECT_EQ(Map(), before);
  EXPECT_EQ(Saved("MAPBRIGHTNESS", "KESTREL"), "missing");
  EXPECT_EQ(Drawn([this] { Press("chkGridDegrees"); }), DrawMap);
  EXPECT_EQ(Saved("GRIDDEGREES", "KESTREL"), "1");
  EXPECT_NE(Map(), before) << "the grid is shown, and so are its degrees";
  EXPECT_EQ(Drawn([this] { Press("chkWheelAtPointer"); }), None);
  EXPECT_EQ(Saved("WHEELATPOINTER", "KESTREL"), "1");
}

TEST_F(ExtrasPage, EachControlStoresItsSettingAndRedrawsWhatMoves) {
  EXPECT_EQ(Saved("THREATRING", "KESTREL"), "missing");
  EXPECT_EQ(Drawn([this] { Press("chkThreatRing"); }), Redraw);
  EXPECT_EQ(Saved("THREATRING", "KESTREL"), "1");
  auto& range = Part<QLineEdit>("txtThreatRange");
  EXPECT_EQ(range.text(), QStringLiteral("30.00"));
  range.setFocus();
  range.selectAll();
  EXPECT_EQ(Drawn([&range] { QTest::keyClicks(&range, QStringLiteral("7")); }), Redraw);
  EXPECT_EQ(station.Extras.THREATRANGE, 7);
  const std::pair<const char*, const char*> colours[] = {{"cmdTieCol", "TIECOLOR"}, {"cmdThreatCol", "THREATCOLOR"}};
  for (const auto& [control, key] : colours) {
    desk.ColourAnswers = {0x30A0F0};
    EXPECT_EQ(Drawn([this, name = control] { Press(name); }), Redraw) << control;
    EXPECT_EQ(Saved(key, "KESTREL"), std::to_string(0x30A0F0));
  }
  EXPECT_EQ(Drawn([this] { Press("chkThreatRing"); }), Redraw);
  EXPECT_EQ(Saved("THREATRING", "KESTREL"), "missing") << "as it ships";
}

TEST_F(ExtrasPage, LostConnectionIsLeftToThePersonAsTheStationShips) {
  const std::pair<const char*, const char*> boxes[] = {{"chkReconnect", "RECONNECT"},
                                                       {"chkRecordAgain", "RECORDAGAIN"}};
  for (const auto& [control, key] : boxes) {
    EXPECT_EQ(Saved(key, "KESTREL"), "missing");
    Press(control);
    EXPECT_EQ(Saved(key, "KESTREL"), "1");
    Press(control);
    EXPECT_EQ(Saved(key, "KESTREL"), "missing");
  }
}

TEST_F(ExtrasPage, ColorsForEveryEyeAreTakenAndPutBack) {
  auto& back = Part<QPushButton>("cmdFormerColors");
  EXPECT_FALSE(back.isEnabled());
  const QImage before = Map();
  EXPECT_EQ(Drawn([this] { Press("cmdEyeColors"); }), DrawMap);
  EXPECT_TRUE(back.isEnabled());
  EXPECT_NE(Map(), before);
  EXPECT_EQ(Part<ColourButton>("cmdAIEnemy").Colour(), core::EyeColours::Foe) << "its control shows it";
  EXPECT_EQ(Saved("EYECOLORS", "KESTREL"), "1");
  EXPECT_EQ(Drawn([this] { Press("cmdFormerColors"); }), DrawMap);
  EXPECT_FALSE(back.isEnabled());
  EXPECT_EQ(Map(), before);
  EXPECT_EQ(Part<ColourButton>("cmdAIEnemy").Colour(), 255U);
  EXPECT_EQ(Saved("EYECOLORS", "KESTREL"), "missing");
}

TEST_F(ExtrasPage, EveryControlIsReachedByTabAndSaysWhatItIs) {
  Activate();
  Tabs().setCurrentIndex(4);
  Tabs().setFocus();
  std::vector<QString> reached;
  for (int step = 0; step < 80; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (QApplication::focusWidget() == &Tabs()) break;
    reached.push_back(QApplication::focusWidget()->objectName());
  }
  int controls = 0;
  for (const QWidget* part : Panel(5).findChildren<QWidget*>()) {
    if (part->focusPolicy() == Qt::NoFocus || !part->isEnabled()) continue;
    ++controls;
    EXPECT_EQ(std::count(reached.begin(), reached.end(), part->objectName()), 1) << qPrintable(part->objectName());
    EXPECT_FALSE(part->toolTip().isEmpty()) << qPrintable(part->objectName());
  }
  EXPECT_GE(controls, 4);
}

}  // namespace
}  // namespace kestrel::shell
