#include "shell/frame/lamp.h"

#include <QPainter>

namespace kestrel::shell {
namespace {

constexpr int Diameter = 10;
constexpr int Gap = 6;

}  // namespace

Lamp::Lamp(const QString& name, const QString& word, QColor lit, QWidget* owner)
    : QWidget(owner), label(word), colour(lit) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Lamp::Set(bool lit, const QString& toolTip) {
  isLit = lit;
  setToolTip(toolTip);
  setAccessibleName(toolTip);
  update();
}

QSize Lamp::sizeHint() const {
  return {Diameter + 2 + Gap + fontMetrics().horizontalAdvance(label), qMax(Diameter + 2, fontMetrics().height())};
}

void Lamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF disc(1, (height() - Diameter) / 2.0, Diameter, Diameter);
  if (isLit) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(disc);
  } else {
    painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(disc.adjusted(1, 1, -1, -1));
  }
  painter.setPen(palette().color(isLit ? QPalette::WindowText : QPalette::PlaceholderText));
  painter.drawText(rect().adjusted(Diameter + 2 + Gap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, label);
}

}  // namespace kestrel::shell
