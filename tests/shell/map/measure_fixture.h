#pragma once

#include <QCheckBox>

#include "shell/map/bulls_frm.h"
#include "shell/map/curs_frm.h"
#include "shell/map/mini_map_frm.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

/// The whole station with the floating windows of the measurements open, and a mouse over its map.
class MeasureTest : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    for (const core::ToolWindow which : {core::ToolWindow::Curs, core::ToolWindow::Bulls, core::ToolWindow::MiniMap}) {
      Frame().Strip().Check(which).setChecked(true);
      Frame().Tools().Window(which).MaxFrm();
    }
    draws = Picture().MapDraws();
  }

  CursFrm& Curs() { return Frame().Tools().The<CursFrm>(); }
  BullsFrm& Bulls() { return Frame().Tools().The<BullsFrm>(); }
  MiniMapFrm& MiniMap() { return Frame().Tools().The<MiniMapFrm>(); }
  QCheckBox& Check1() { return *Curs().findChild<QCheckBox*>(QStringLiteral("Check1")); }
  static QString Text(const QWidget& window, const char* label) {
    return window.findChild<QLabel*>(QString::fromLatin1(label))->text();
  }

  /// A real mouse move over the map, with `buttons` held down.
  void Move(QPointF to, Qt::MouseButtons buttons = Qt::NoButton) {
    QMouseEvent event(QEvent::MouseMove, to, Picture().mapToGlobal(to), Qt::NoButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&Picture(), &event);
  }
  /// How many pixels of the map on the screen are of the line's colour, nearly.
  int LinePixels() {
    const QImage shown = Picture().grab().toImage();
    int found = 0;
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        const QColor pixel = shown.pixelColor(x, y);
        found += pixel.red() > 180 && pixel.blue() > 180 && pixel.green() < 80;
      }
    }
    return found;
  }

  std::uint64_t draws = 0;
};

}  // namespace kestrel::shell
