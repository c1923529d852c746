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

void Lamp::Set(bool lit, const QString& toolTip) { Take(lit ? State::Lit : State::Dark, toolTip); }

void Lamp::SetFailed(QColor failed, const QString& toolTip) {
  failedColour = failed;
  Take(State::Failed, toolTip);
}

void Lamp::Recolor(QColor lit, QColor failed) {
  colour = lit;
  failedColour = failed;
  update();
}

void Lamp::Take(State shown, const QString& toolTip) {
  state = shown;
  setToolTip(toolTip);
  setAccessibleName(toolTip);
  update();
}

void Lamp::ShowWord(bool shown) {
  if (wordShown == shown) return;
  wordShown = shown;
  updateGeometry();
}

int Lamp::WordWidth() const { return Gap + fontMetrics().horizontalAdvance(label); }

QSize Lamp::sizeHint() const {
  return {Diameter + 2 + (wordShown ? WordWidth() : 0), qMax(Diameter + 2, fontMetrics().height())};
}

void Lamp::PaintDisc(QPainter& painter, const QRectF& disc) const {
  if (state == State::Lit) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(disc);
    return;
  }
  if (state == State::Failed) {
    const QRectF cross = disc.adjusted(1.5, 1.5, -1.5, -1.5);
    painter.setPen(QPen(failedColour, 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.bottomLeft(), cross.topRight());
    return;
  }
  painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(disc.adjusted(1, 1, -1, -1));
}

void Lamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintDisc(painter, QRectF(1, (height() - Diameter) / 2.0, Diameter, Diameter));
  if (!wordShown) return;
  painter.setPen(palette().color(state == State::Dark ? QPalette::PlaceholderText : QPalette::WindowText));
  painter.drawText(rect().adjusted(Diameter + 2 + Gap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, label);
}

}  // namespace kestrel::shell
