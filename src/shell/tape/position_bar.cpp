#include "shell/tape/position_bar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>

namespace kestrel::shell {

PositionBar::PositionBar(QWidget* owner) : QSlider(Qt::Horizontal, owner) {}

void PositionBar::PutTo(int value) {
  if (value == this->value()) return;
  const QSignalBlocker quiet(this);
  LetGo();
  setValue(value);
}

void PositionBar::paintEvent(QPaintEvent* event) {
  QSlider::paintEvent(event);
  if (tickPosition() == NoTicks) return;
  // Those of the style can hardly be seen.
  constexpr int length = 4;
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
  const int handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).width();
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::PlaceholderText));
  for (int value = minimum(); value <= maximum(); value += qMax(1, tickInterval())) {
    const int x = groove.left() + handle / 2 +
                  QStyle::sliderPositionFromValue(minimum(), maximum(), value, groove.width() - handle);
    painter.drawLine(x, height() - length, x, height() - 1);
  }
}

void PositionBar::LetGo() {
  if (!isSliderDown()) return;
  const QPointF place = rect().center();
  QMouseEvent release(QEvent::MouseButtonRelease, place, mapToGlobal(place), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
  mouseReleaseEvent(&release);
}

void PositionBar::mousePressEvent(QMouseEvent* event) {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const auto part = [this, &option](QStyle::SubControl which) {
    return style()->subControlRect(QStyle::CC_Slider, &option, which, this);
  };
  const QRect handle = part(QStyle::SC_SliderHandle);
  const QRect groove = part(QStyle::SC_SliderGroove);
  const QPoint place = event->position().toPoint();
  if (event->button() == Qt::LeftButton && !handle.contains(place)) {
    const int wanted = QStyle::sliderValueFromPosition(
        minimum(), maximum(), place.x() - groove.left() - handle.width() / 2, groove.width() - handle.width());
    setValue(wanted);
    // It may have been put back at once, and is then not under the pointer.
    if (value() != wanted) return;
  }
  QSlider::mousePressEvent(event);
}

}  // namespace kestrel::shell
