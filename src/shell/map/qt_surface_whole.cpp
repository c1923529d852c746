#include <QLineF>
#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "shell/map/lines_and_arcs.h"
#include "shell/map/qt_surface.h"
#include "shell/map/whole_pixels.h"

// Lines and arcs in whole pixels, by QPainter. It counts in less than 32 bits and is given only what can be seen.
namespace kestrel::shell {
namespace {

constexpr double WidestPen = 256;  // device pixels
/// Up to this radius a circle is walked around whole, however little of it is seen, so that its pixels stay the same
/// while the map is moved. Device pixels.
constexpr double WholeCircle = 4096;
/// How many pixels a dot and the gap behind it are, pen widths.
constexpr double DotAndGap = 3;
/// A slanted line is marked in pieces of this length, device pixels, since its box holds much that it does not touch.
constexpr double MarkedTogether = 32;

double WidthOf(map::Pen pen, double ratio) { return std::clamp(std::round(pen.DrawWidth * ratio), 1.0, WidestPen); }

/// The image with room around it for the pen.
QRectF Near(const QImage& image, double width) {
  const double margin = width + 2;
  return QRectF(image.rect()).adjusted(-margin, -margin, margin, margin);
}

/// A pen of one pixel goes by the pixels' names, a wider one by their areas.
QPointF PenShift(double width) { return width > 1 ? QPointF(0.5, 0.5) : QPointF(); }

double Longer(QPointF way) { return std::max(std::abs(way.x()), std::abs(way.y())); }
double Shorter(QPointF way) { return std::min(std::abs(way.x()), std::abs(way.y())); }

struct Span {
  double From = 0;  ///< degrees
  double To = 360;
};

/// The directions from its centre in which a circle may be seen in the box; nothing when it does not meet the box.
std::optional<Span> SeenSpan(QPointF centre, double radius, const QRectF& box) {
  const QPointF upperLeft = box.topLeft() - centre;
  const QPointF lowerRight = box.bottomRight() - centre;
  const double nearest =
      std::hypot(std::max({upperLeft.x(), -lowerRight.x(), 0.0}), std::max({upperLeft.y(), -lowerRight.y(), 0.0}));
  const double furthest =
      std::hypot(std::max(-upperLeft.x(), lowerRight.x()), std::max(-upperLeft.y(), lowerRight.y()));
  if (radius < nearest || radius > furthest) return std::nullopt;
  if (radius <= WholeCircle || nearest == 0) return Span{};
  constexpr double degrees = 180 / 3.14159265358979323846;
  const QPointF middle = box.center() - centre;
  const double towards = std::atan2(-middle.y(), middle.x()) * degrees;
  Span span{towards, towards};
  for (const QPointF corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()}) {
    const QPointF way = corner - centre;
    const double turned = std::atan2(middle.y() * way.x() - middle.x() * way.y(), QPointF::dotProduct(middle, way));
    span.From = std::min(span.From, towards + turned * degrees);
    span.To = std::max(span.To, towards + turned * degrees);
  }
  return span;
}

}  // namespace

/// Lines of one pen, drawn some hundreds at a time.
class QtSurface::WholeLines {
 public:
  WholeLines(QtSurface& target, map::Pen pen)
      : surface(target),
        width(WidthOf(pen, target.ratio)),
        near(Near(target.image, width)),
        shift(PenShift(width)),
        drawn(QColor::fromRgb(PixelColour(pen.Color)), width, Qt::SolidLine, Qt::RoundCap) {}

  /// Ends in device pixels.
  void Add(QPointF from, QPointF to) {
    if (!(IsNear(from) && IsNear(to)) && !CutToBox(from, to, near)) return;
    if (!surface.fresh.All() && !Mark(from, to)) return;
    if (from == to) return DrawPoint(from);
    lines[count++] = QLineF(from + shift, to + shift);
    if (count == lines.size()) Draw();
  }

  /// Draws what has been added; to be called at the end.
  void Draw() {
    if (count == 0) return;
    QPainter& painter = surface.Painter();
    painter.setPen(drawn);
    painter.drawLines(lines.data(), static_cast<int>(count));
    count = 0;
  }

 private:
  void DrawPoint(QPointF at) {
    QPainter& painter = surface.Painter();
    painter.setPen(drawn);
    painter.drawPoint(at + shift);
  }

  bool IsNear(QPointF at) const {
    return at.x() >= near.left() && at.x() <= near.right() && at.y() >= near.top() && at.y() <= near.bottom();
  }

  /// False when nothing of the line lies within the image.
  bool Mark(QPointF from, QPointF to) {
    const QPointF way = to - from;
    const int pieces = Shorter(way) < MarkedTogether ? 1 : static_cast<int>(Longer(way) / MarkedTogether) + 1;
    bool seen = false;
    for (int piece = 0; piece < pieces; ++piece) {
      const QRectF box = QRectF(from + way * piece / pieces, from + way * (piece + 1) / pieces).normalized();
      seen |= surface.TouchSeen(box.adjusted(-width, -width, width + 1, width + 1));
    }
    return seen;
  }

  QtSurface& surface;
  double width;
  QRectF near;
  QPointF shift;
  QPen drawn;
  std::array<QLineF, 256> lines;
  std::size_t count = 0;
};

void QtSurface::Segments(std::span<const map::SurfacePoint> ends, map::Pen pen) {
  if (pen.Style != map::PenStyle::Solid) return Surface::Segments(ends, pen);
  WholeLines lines(*this, pen);
  for (std::size_t end = 0; end + 1 < ends.size(); end += 2) {
    const QPointF from = WholePixels({ends[end].X * scale, ends[end].Y * scale});
    const QPointF to = WholePixels({ends[end + 1].X * scale, ends[end + 1].Y * scale});
    if (IsCorner(from) && IsCorner(to)) lines.Add(from, to);
  }
  lines.Draw();
}

void QtSurface::StrokeWhole(const QPolygonF& corners, map::Pen pen) {
  if (pen.Style == map::PenStyle::Dotted) return StrokeDotted(corners, pen);
  WholeLines lines(*this, pen);
  for (qsizetype index = 1; index < corners.size(); ++index) lines.Add(corners[index - 1], corners[index]);
  lines.Draw();
}

void QtSurface::StrokeDotted(const QPolygonF& corners, map::Pen pen) {
  const double width = WidthOf(pen, ratio);
  const QPointF shift = PenShift(width);
  const QPen drawn(QColor::fromRgb(PixelColour(pen.Color)), width, Qt::SolidLine, Qt::SquareCap);
  for (qsizetype index = 1; index < corners.size(); ++index) {
    const QPointF start = corners[index - 1];
    const QPointF way = corners[index] - start;
    QPointF from = start;
    QPointF to = corners[index];
    if (!CutToBox(from, to, Near(image, width))) continue;
    if (!TouchSeen(QRectF(from, to).normalized().adjusted(-width, -width, width + 1, width + 1))) continue;
    QPainter& painter = Painter();
    painter.setPen(drawn);
    // Counted from the uncut end, so that dots stay where they are on the line, however much of it is seen.
    const double length = Longer(way);
    const double gap = DotAndGap * width;
    const double last = Longer(to - start);
    for (double at = std::ceil(Longer(from - start) / gap) * gap; at <= last; at += gap) {
      painter.drawPoint(WholePixels(length > 0 ? start + way * (at / length) : start) + shift);
    }
  }
}

QPolygonF QtSurface::ArcCorners(QPointF centre, double radius, double fromDegrees, double toDegrees) {
  QPolygonF corners;
  ForEachCorner(centre, radius, fromDegrees, toDegrees,
                [&](QPointF corner) { corners.append(QPointF(std::round(corner.x()), std::round(corner.y()))); });
  return corners;
}

void QtSurface::WholeArc(QPointF centre, double radius, double fromDegrees, double toDegrees, map::Pen pen) {
  pen.Style = map::PenStyle::Solid;
  const std::optional<Span> seen = SeenSpan(centre, radius, Near(image, WidthOf(pen, ratio)));
  if (!seen) return;
  if (seen->To - seen->From >= 360) return StrokeWhole(ArcCorners(centre, radius, fromDegrees, toDegrees), pen);
  // Of a large one only what can be seen is walked: all of it would be too many chords, or too coarse ones.
  const double turn = std::clamp(toDegrees - fromDegrees, -360.0, 360.0);
  const double from = std::fmod(std::min(fromDegrees, fromDegrees + turn), 360);
  const double to = from + std::abs(turn);
  for (int turns = -2; turns <= 2; ++turns) {
    const double first = std::max(from, seen->From + 360 * turns);
    const double last = std::min(to, seen->To + 360 * turns);
    if (first < last) StrokeWhole(ArcCorners(centre, radius, first, last), pen);
  }
}

}  // namespace kestrel::shell
