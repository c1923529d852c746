#include "shell/link/height_grip.h"

#include <QMouseEvent>

namespace kestrel::shell {
namespace {

constexpr int GripHeight = 6;

}  // namespace

HeightGrip::HeightGrip(QWidget* owner) : QWidget(owner) {
  setObjectName(QStringLiteral("HeightGrip"));
  setCursor(Qt::SizeVerCursor);
  setToolTip(QStringLiteral("Drag to make the window taller"));
  owner->installEventFilter(this);
  Fit();
}

void HeightGrip::Fit() {
  const QRect room = parentWidget()->rect();
  setGeometry(0, room.height() - GripHeight, room.width(), GripHeight);
  raise();
}

bool HeightGrip::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize) Fit();
  return false;
}

void HeightGrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  from = event->globalPosition().toPoint().y();
  Q_EMIT Held();
}

void HeightGrip::mouseMoveEvent(QMouseEvent* event) {
  if (from) Q_EMIT Dragged(event->globalPosition().toPoint().y() - *from);
}

void HeightGrip::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !from) return;
  from.reset();
}

}  // namespace kestrel::shell
