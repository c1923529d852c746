#include "shell/parts/map_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "map/icon_strokes.h"
#include "map/units.h"

namespace kestrel::shell {
namespace {

/// What an icon is drawn on: strokes of whole pixels around the middle of a painter's device, as on the map. Nothing
/// else comes of an icon, so nothing else is drawn.
class IconSurface final : public map::Surface {
 public:
  IconSurface(QPainter& on, const QColor& ink, double devicePixelRatio)
      : painter(on), colour(ink), ratio(devicePixelRatio) {
    painter.setPen(QPen(colour, std::max(1.0, std::round(ratio)), Qt::SolidLine, Qt::RoundCap));
  }

  void CopyPicture(const base::Picture&, const map::SourceRect&) override {}
  void Line(double x1, double y1, double x2, double y2, map::Pen) override {
    if (x1 == x2 && y1 == y2) {
      painter.drawPoint(At(x1, y1));
    } else {
      painter.drawLine(At(x1, y1), At(x2, y2));
    }
  }
  void Circle(double x, double y, double radius, map::Pen pen) override {
    painter.setBrush(pen.Filled ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawEllipse(At(x, y), Length(radius), Length(radius));
  }
  void Arc(double x, double y, double radius, double fromDegrees, double toDegrees, map::Pen) override {
    const double length = Length(radius);
    const QPointF centre = At(x, y);
    painter.drawArc(QRectF(centre.x() - length, centre.y() - length, 2 * length, 2 * length),
                    static_cast<int>(fromDegrees * 16), static_cast<int>((toDegrees - fromDegrees) * 16));
  }
  void Box(double x1, double y1, double x2, double y2, map::Pen pen) override {
    const map::SurfacePoint corners[] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    Polygon(corners, pen);
  }
  void Polygon(std::span<const map::SurfacePoint> corners, map::Pen pen) override {
    QPolygonF places;
    for (const map::SurfacePoint& corner : corners) places.append(At(corner.X, corner.Y));
    painter.setBrush(pen.Filled ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawPolygon(places);
  }
  void Dot(double, double, base::Colour) override {}
  map::TextSize Measure(std::string_view, const map::TextFont&) override { return {}; }
  void Print(std::string_view, double, double, const map::TextFont&, base::Colour) override {}
  void Capture() override {}
  void Restore() override {}

 private:
  double Length(double units) const { return std::round(units / map::UnitsPerPixel * ratio); }
  QPointF At(double x, double y) const { return {Length(x), Length(y)}; }

  QPainter& painter;
  QColor colour;
  double ratio;  ///< device pixels to the pixel
};

/// In a field whose sides are device pixels.
void PaintIcon(QPainter& painter, std::int32_t number, QSize field, double ratio, const QColor& ink) {
  painter.save();
  painter.translate(field.width() / 2, field.height() / 2);
  IconSurface surface(painter, ink, ratio);
  map::DrawIcon(surface, number, 0, 0, 0);
  painter.restore();
}

class MapIconEngine final : public QIconEngine {
 public:
  explicit MapIconEngine(std::int32_t shown) : number(shown) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    painter->drawPixmap(rect, pixmap(rect.size() * painter->device()->devicePixelRatioF(), mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    // The field of a button has room for the icon and its pen.
    PaintIcon(painter, number, size, size.width() / static_cast<double>(2 * map::IconReach + 4),
              QGuiApplication::palette().color(group, QPalette::ButtonText));
    return picture;
  }

  QIconEngine* clone() const override { return new MapIconEngine(number); }

 private:
  std::int32_t number;
};

}  // namespace

QPixmap MapIconPicture(std::int32_t number, int side, double devicePixelRatio, const QColor& ink,
                       const QColor& ground) {
  QPixmap picture((QSizeF(side, side) * devicePixelRatio).toSize());
  picture.fill(ground);
  QPainter painter(&picture);
  PaintIcon(painter, number, picture.size(), devicePixelRatio, ink);
  painter.end();
  picture.setDevicePixelRatio(devicePixelRatio);
  return picture;
}

QIcon MapIcon(std::int32_t number) { return QIcon(new MapIconEngine(number)); }

}  // namespace kestrel::shell
