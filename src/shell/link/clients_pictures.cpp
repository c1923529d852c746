#include "shell/link/clients_pictures.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include "shell/parts/look.h"

namespace kestrel::shell {
namespace {

/// The pictures stand on a field of 16 by 16.
constexpr double Field = 16;

enum class Picture { None, Ring, Cross, Bar, Plugged, Pulled };

QColor ToneOf(Picture picture) {
  const QPalette palette = QGuiApplication::palette();
  const LampColours lamps = LampColoursOf(palette);
  switch (picture) {
    case Picture::Ring:
    case Picture::Plugged:
      return lamps.Connection;
    case Picture::Cross:
      return lamps.Recording;
    default:
      return palette.color(QPalette::PlaceholderText);
  }
}

/// The half of a plug that is `away` from the middle to the left or, mirrored, to the right.
void PaintPlug(QPainter& painter, double away) {
  for (const double side : {-1.0, 1.0}) {
    const double edge = 8 + side * away;
    painter.drawLine(QPointF(8 + side * 7, 8), QPointF(edge + side * 4, 8));
    painter.drawRoundedRect(QRectF(QPointF(edge, 4.5), QPointF(edge + side * 4, 11.5)).normalized(), 1, 1);
  }
}

void Paint(QPainter& painter, Picture picture) {
  switch (picture) {
    case Picture::None:
      return;
    case Picture::Ring:
      painter.drawEllipse(QPointF(8, 8), 4.2, 4.2);
      return;
    case Picture::Cross:
      painter.drawLine(QPointF(4, 4), QPointF(12, 12));
      painter.drawLine(QPointF(12, 4), QPointF(4, 12));
      return;
    case Picture::Bar:
      painter.drawLine(QPointF(3.5, 8), QPointF(12.5, 8));
      return;
    case Picture::Plugged:
      return PaintPlug(painter, 0);
    case Picture::Pulled:
      return PaintPlug(painter, 2);
  }
}

class PictureEngine final : public QIconEngine {
 public:
  explicit PictureEngine(Picture shown) : picture(shown) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / Field, rect.height() / Field);
    const QColor tone =
        mode == QIcon::Selected ? QGuiApplication::palette().color(QPalette::HighlightedText) : ToneOf(picture);
    painter->setPen(QPen(tone, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    Paint(*painter, picture);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return drawn;
  }

  QIconEngine* clone() const override { return new PictureEngine(picture); }

 private:
  Picture picture;
};

QIcon IconOf(Picture picture) { return QIcon(new PictureEngine(picture)); }

}  // namespace

QIcon StatusIcon(int picture) {
  switch (picture) {
    case 1:
      return IconOf(Picture::Ring);
    case 2:
      return IconOf(Picture::Cross);
    case 3:
      return IconOf(Picture::Bar);
    default:
      return IconOf(Picture::None);  // keeps the place, so that the names stay in one column
  }
}

QIcon LinkIcon(bool connected) { return IconOf(connected ? Picture::Plugged : Picture::Pulled); }

QIcon ColourIcon(const QColor& colour, const QSize& size) {
  const double ratio = qApp->devicePixelRatio();
  QPixmap field(size * ratio);
  field.setDevicePixelRatio(ratio);
  field.fill(colour);
  if (colour.alpha() == 0) return QIcon(field);
  QPainter painter(&field);
  painter.setPen(QGuiApplication::palette().color(QPalette::Mid));
  painter.drawRect(QRectF(0.5, 0.5, size.width() - 1, size.height() - 1));
  return QIcon(field);
}

}  // namespace kestrel::shell
