#include "shell/parts/line_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace kestrel::shell {
namespace {

/// The icons stand on a field of 16 by 16.
constexpr double Field = 16;
constexpr double Stroke = 1.4;

void Dot(QPainter& painter, QPointF centre, double radius) {
  painter.save();
  painter.setBrush(painter.pen().color());
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(centre, radius, radius);
  painter.restore();
}

void PaintOptions(QPainter& painter) {
  constexpr struct { double Y, Knob; } sliders[] = {{3.5, 10.5}, {8, 5}, {12.5, 9}};
  for (const auto& slider : sliders) {
    painter.drawLine(QPointF(2, slider.Y), QPointF(14, slider.Y));
    Dot(painter, {slider.Knob, slider.Y}, 2);
  }
}

void PaintClients(QPainter& painter) {
  painter.drawEllipse(QPointF(8, 5), 2.8, 2.8);
  QPainterPath shoulders(QPointF(2.8, 13.8));
  shoulders.cubicTo(2.8, 11, 5, 9.9, 8, 9.9);
  shoulders.cubicTo(11, 9.9, 13.2, 11, 13.2, 13.8);
  painter.drawPath(shoulders);
}

void PaintAreas(QPainter& painter) {
  const QPointF corners[] = {{3, 5.5}, {9.5, 2.5}, {13.5, 8}, {10, 13.5}, {4, 11.5}};
  painter.drawPolygon(corners, std::size(corners));
  for (const QPointF& corner : corners) Dot(painter, corner, 1.4);
}

void PaintCursor(QPainter& painter) {
  painter.drawEllipse(QPointF(4, 12), 2, 2);
  painter.drawLine(QPointF(5.6, 10.4), QPointF(13, 3));
  const QPointF head[] = {{8.6, 3}, {13, 3}, {13, 7.4}};
  painter.drawPolyline(head, std::size(head));
}

void PaintFreq(QPainter& painter) {
  painter.drawLine(QPointF(8, 7), QPointF(8, 14));
  Dot(painter, {8, 6}, 1.5);
  for (const double radius : {3.6, 6.2}) {
    const QRectF circle(8 - radius, 6 - radius, 2 * radius, 2 * radius);
    painter.drawArc(circle, -40 * 16, 80 * 16);
    painter.drawArc(circle, 140 * 16, 80 * 16);
  }
}

void PaintOpacity(QPainter& painter) {
  painter.drawEllipse(QPointF(8, 8), 5.5, 5.5);
  painter.setBrush(painter.pen().color());
  painter.drawChord(QRectF(2.5, 2.5, 11, 11), -90 * 16, 180 * 16);
}

void PaintOpenFile(QPainter& painter) {
  const QPointF folder[] = {{2, 12.5}, {2, 3.5}, {6, 3.5}, {7.5, 5.5}, {12.5, 5.5}, {12.5, 7.5}};
  painter.drawPolyline(folder, std::size(folder));
  const QPointF flap[] = {{2, 12.5}, {4.5, 7.5}, {14.5, 7.5}, {12, 12.5}};
  painter.drawPolygon(flap, std::size(flap));
}

void PaintEject(QPainter& painter) {
  const QPointF triangle[] = {{8, 3}, {13, 9}, {3, 9}};
  painter.drawPolygon(triangle, std::size(triangle));
  painter.drawLine(QPointF(3, 12.5), QPointF(13, 12.5));
}

void PaintToTop(QPainter& painter) {
  painter.drawLine(QPointF(3, 3), QPointF(13, 3));
  painter.drawLine(QPointF(8, 13.5), QPointF(8, 6));
  const QPointF head[] = {{4.2, 9.8}, {8, 6}, {11.8, 9.8}};
  painter.drawPolyline(head, std::size(head));
}

void PaintAreaFolder(QPainter& painter) {
  const QPointF folder[] = {{2, 13}, {2, 3.5}, {6.2, 3.5}, {7.7, 5.5}, {14, 5.5}, {14, 13}};
  painter.drawPolygon(folder, std::size(folder));
}

void PaintAreaGroup(QPainter& painter) {
  painter.drawRect(QRectF(2.5, 5.5, 8, 8));
  const QPointF behind[] = {{5.5, 5.5}, {5.5, 2.5}, {13.5, 2.5}, {13.5, 10.5}, {10.5, 10.5}};
  painter.drawPolyline(behind, std::size(behind));
}

void PaintRegion(QPainter& painter) {
  const QPointF corners[] = {{2.5, 6}, {9, 2.5}, {13.5, 7.5}, {10.5, 13.5}, {4.5, 12}};
  painter.drawPolygon(corners, std::size(corners));
}

void PaintMapIcon(QPainter& painter) {
  painter.drawLine(QPointF(8, 2.5), QPointF(8, 13.5));
  painter.drawLine(QPointF(2.5, 8), QPointF(13.5, 8));
  painter.drawEllipse(QPointF(8, 8), 3, 3);
}

void PaintText(QPainter& painter) {
  const QPointF top[] = {{3.5, 5}, {3.5, 3}, {12.5, 3}, {12.5, 5}};
  painter.drawPolyline(top, std::size(top));
  painter.drawLine(QPointF(8, 3), QPointF(8, 13));
  painter.drawLine(QPointF(6, 13), QPointF(10, 13));
}

void PaintFlightPlan(QPainter& painter) {
  const QPointF points[] = {{3, 12.5}, {6, 5}, {10.5, 9.5}, {13, 3.5}};
  painter.drawPolyline(points, std::size(points));
  for (const QPointF& point : points) Dot(painter, point, 1.6);
}

/// A letter with as many waves as tell the radios apart where the letters are hard to read.
void PaintRadio(QPainter& painter, bool uhf) {
  QPainterPath letter(QPointF(1.8, 3.5));
  if (uhf) {
    letter.lineTo(1.8, 9.2);
    letter.cubicTo(1.8, 13.6, 8, 13.6, 8, 9.2);
    letter.lineTo(8, 3.5);
  } else {
    letter.lineTo(5, 12.6);
    letter.lineTo(8.2, 3.5);
  }
  painter.drawPath(letter);
  painter.drawArc(QRectF(5.4, 4.5, 6, 7), -50 * 16, 100 * 16);
  if (uhf) painter.drawArc(QRectF(4.2, 1.9, 10.2, 12.2), -50 * 16, 100 * 16);
}

void PaintAirfield(QPainter& painter) {
  painter.drawEllipse(QPointF(8, 8), 5.8, 5.8);
  painter.save();
  painter.translate(8, 8);
  painter.rotate(-35);
  painter.drawRect(QRectF(-4, -1.1, 8, 2.2));
  painter.restore();
}

void PaintTACAN(QPainter& painter) {
  const QPointF hexagon[] = {{5, 3.2}, {11, 3.2}, {14, 8.2}, {11, 13.2}, {5, 13.2}, {2, 8.2}};
  painter.drawPolygon(hexagon, std::size(hexagon));
  Dot(painter, {8, 8.2}, 1.6);
  // A channel, not a course: three leaves on every other side.
  QPen thick = painter.pen();
  thick.setWidthF(2.6);
  thick.setCapStyle(Qt::FlatCap);
  painter.setPen(thick);
  painter.drawLine(QPointF(5.6, 2.7), QPointF(10.4, 2.7));
  painter.drawLine(QPointF(13.9, 9.4), QPointF(11.7, 13));
  painter.drawLine(QPointF(2.1, 9.4), QPointF(4.3, 13));
}

void PaintILS(QPainter& painter) {
  const QPointF feather[] = {{2, 8}, {14, 3.4}, {11.8, 8}, {14, 12.6}};
  painter.drawPolygon(feather, std::size(feather));
  painter.drawLine(QPointF(2, 8), QPointF(11.8, 8));
}

void PaintUnknown(QPainter& painter) {
  QPainterPath hook(QPointF(4.8, 5.6));
  hook.cubicTo(4.8, 1.6, 11.4, 1.4, 11.4, 5.4);
  hook.cubicTo(11.4, 8, 8, 7.8, 8, 10.4);
  painter.drawPath(hook);
  Dot(painter, {8, 13.2}, 1.1);
}

/// Plug and socket, one in the other or apart.
void PaintVoiceLink(QPainter& painter, bool connected) {
  const double gap = connected ? 0 : 2;
  painter.drawLine(QPointF(1, 8), QPointF(4.4 - gap, 8));
  painter.drawLine(QPointF(11.6 + gap, 8), QPointF(15, 8));
  painter.save();
  if (connected) painter.setBrush(painter.pen().color());
  painter.drawChord(QRectF(4.4 - gap, 3.8, 7.2, 8.4), 90 * 16, 180 * 16);
  painter.drawChord(QRectF(4.4 + gap, 3.8, 7.2, 8.4), -90 * 16, 180 * 16);
  painter.restore();
}

/// A window with a tick or a cross.
void PaintProgram(QPainter& painter, bool runs) {
  painter.drawRect(QRectF(1.8, 2.5, 12.4, 11));
  painter.drawLine(QPointF(1.8, 5), QPointF(14.2, 5));
  if (runs) {
    const QPointF tick[] = {{5, 9.2}, {7.2, 11.2}, {11, 7.2}};
    painter.drawPolyline(tick, std::size(tick));
    return;
  }
  painter.drawLine(QPointF(6, 7.2), QPointF(10, 11.2));
  painter.drawLine(QPointF(10, 7.2), QPointF(6, 11.2));
}

void PaintIcon(QPainter& painter, IconKind kind) {
  switch (kind) {
    case IconKind::Clients:
      return PaintClients(painter);
    case IconKind::Options:
      return PaintOptions(painter);
    case IconKind::Bullseye:
      painter.drawEllipse(QPointF(8, 8), 5.8, 5.8);
      painter.drawEllipse(QPointF(8, 8), 2.8, 2.8);
      return;
    case IconKind::Cursor:
      return PaintCursor(painter);
    case IconKind::Areas:
      return PaintAreas(painter);
    case IconKind::Playback: {
      const QPointF triangle[] = {{4.5, 3}, {13, 8}, {4.5, 13}};
      painter.drawPolygon(triangle, std::size(triangle));
      return;
    }
    case IconKind::MiniMap:
      painter.drawRoundedRect(QRectF(2.2, 2.2, 11.6, 11.6), 1, 1);
      painter.drawRect(QRectF(7.5, 5, 3.8, 3.8));
      return;
    case IconKind::Freq:
      return PaintFreq(painter);
    case IconKind::RollUp:
    case IconKind::RollDown: {
      const double tip = kind == IconKind::RollUp ? 5 : 11;
      const QPointF chevron[] = {{3, 16 - tip}, {8, tip}, {13, 16 - tip}};
      painter.drawPolyline(chevron, std::size(chevron));
      return;
    }
    case IconKind::Leftward:
    case IconKind::Rightward: {
      const double tip = kind == IconKind::Leftward ? 5 : 11;
      const QPointF chevron[] = {{16 - tip, 3}, {tip, 8}, {16 - tip, 13}};
      painter.drawPolyline(chevron, std::size(chevron));
      return;
    }
    case IconKind::Centre:
      painter.drawEllipse(QPointF(8, 8), 5, 5);
      painter.drawEllipse(QPointF(8, 8), 1, 1);
      return;
    case IconKind::Opacity:
      return PaintOpacity(painter);
    case IconKind::Close:
      painter.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
      painter.drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
      return;
    case IconKind::OpenFile:
      return PaintOpenFile(painter);
    case IconKind::Pause:
      painter.drawRect(QRectF(4, 3, 2.4, 10));
      painter.drawRect(QRectF(9.6, 3, 2.4, 10));
      return;
    case IconKind::Stop:
      painter.drawRect(QRectF(3.5, 3.5, 9, 9));
      return;
    case IconKind::Eject:
      return PaintEject(painter);
    case IconKind::ToTop:
      return PaintToTop(painter);
    case IconKind::ToBottom:
      painter.translate(0, Field);
      painter.scale(1, -1);
      return PaintToTop(painter);
    case IconKind::AreaFolder:
      return PaintAreaFolder(painter);
    case IconKind::AreaGroup:
      return PaintAreaGroup(painter);
    case IconKind::Region:
      return PaintRegion(painter);
    case IconKind::Circle:
      painter.drawEllipse(QPointF(8, 8), 5.5, 5.5);
      return;
    case IconKind::MapIcon:
      return PaintMapIcon(painter);
    case IconKind::Text:
      return PaintText(painter);
    case IconKind::FlightPlan:
      return PaintFlightPlan(painter);
    case IconKind::RadioUHF:
    case IconKind::RadioVHF:
      return PaintRadio(painter, kind == IconKind::RadioUHF);
    case IconKind::Airfield:
      return PaintAirfield(painter);
    case IconKind::TACAN:
      return PaintTACAN(painter);
    case IconKind::ILS:
      return PaintILS(painter);
    case IconKind::Unknown:
      return PaintUnknown(painter);
    case IconKind::VoiceConnected:
    case IconKind::VoiceApart:
      return PaintVoiceLink(painter, kind == IconKind::VoiceConnected);
    case IconKind::ProgramRuns:
    case IconKind::ProgramMissing:
      return PaintProgram(painter, kind == IconKind::ProgramRuns);
  }
}

class LineIconEngine final : public QIconEngine {
 public:
  explicit LineIconEngine(IconKind shown) : kind(shown) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / Field, rect.height() / Field);
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto tone = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
    painter->setPen(
        QPen(QGuiApplication::palette().color(group, tone), Stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    PaintIcon(*painter, kind);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new LineIconEngine(kind); }

 private:
  IconKind kind;
};

}  // namespace

QIcon LineIcon(IconKind kind) { return QIcon(new LineIconEngine(kind)); }

}  // namespace kestrel::shell
