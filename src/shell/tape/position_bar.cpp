#include "shell/tape/position_bar.h"

#include <QMouseEvent>
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
