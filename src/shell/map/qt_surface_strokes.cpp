#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <optional>

#include "shell/map/nearest.h"
#include "shell/map/qt_surface.h"

// Lines and large arcs, smoothed, set pixel by pixel; lines in whole pixels and filled fields by QPainter.
namespace kestrel::shell {
namespace {

/// A large circle is drawn as chords that leave it by at most this, device pixels.
constexpr double ChordError = 0.05;
constexpr int MostChords = 16384;

/// Cuts the line to the box; false when nothing is left.
bool CutToBox(QPointF& from, QPointF& to, const QRectF& box) {
  double first = 0;
  double last = 1;
  const QPointF way = to - from;
  const auto cut = [&](double step, double room) {  // keeps what fulfils t * step <= room
    if (step == 0) return room >= 0;
    const double t = room / step;
    if (step > 0) {
      last = std::min(last, t);
    } else {
      first = std::max(first, t);
    }
    return first <= last;
  };
  if (!cut(-way.x(), from.x() - box.left()) || !cut(way.x(), box.right() - from.x()) ||
      !cut(-way.y(), from.y() - box.top()) || !cut(way.y(), box.bottom() - from.y())) {
    return false;
  }
  to = from + way * last;
  from += way * first;
  return true;
}

/// What of the field within the corners lies in the box; where it is cut, the box's edge takes its place.
QPolygonF CutField(QPolygonF corners, const QRectF& box) {
  // Each side keeps the corners at which this is not below 0.
  const auto room = [&](int side, QPointF at) {
    switch (side) {
      case 0:
        return at.x() - box.left();
      case 1:
        return box.right() - at.x();
      case 2:
        return at.y() - box.top();
      default:
        return box.bottom() - at.y();
    }
  };
  for (int side = 0; side < 4; ++side) {
    QPolygonF kept;
    for (qsizetype index = 0; index < corners.size(); ++index) {
      const QPointF from = corners[index == 0 ? corners.size() - 1 : index - 1];
      const QPointF to = corners[index];
      const double before = room(side, from);
      const double after = room(side, to);
      if ((before < 0) != (after < 0)) kept.append(from + (to - from) * (before / (before - after)));
      if (after >= 0) kept.append(to);
    }
    corners = kept;
  }
  return corners;
}

/// Calls corner(point) for the ends of the chords of an arc, device pixels.
template <class Corner>
void ForEachCorner(QPointF centre, double radius, double fromDegrees, double toDegrees, Corner&& corner) {
  constexpr double radian = 3.14159265358979323846 / 180;
  const double span = std::clamp(toDegrees - fromDegrees, -360.0, 360.0) * radian;
  const double chord = 2 * std::sqrt(2 * ChordError / radius);
  // By fours: a whole circle has corners at its utmost left, right, top and bottom.
  const int fours = static_cast<int>(std::min(std::abs(span) / chord, 1.0 * MostChords) / 4) + 1;
  const int chords = 4 * fours;
  for (int step = 0; step <= chords; ++step) {
    const double angle = fromDegrees * radian + span * step / chords;
    corner(centre + QPointF(std::cos(angle), -std::sin(angle)) * radius);
  }
}

/// How many pixels a dot and the gap behind it are, pen widths.
constexpr double DotAndGap = 3;
/// The way along the longer axis.
double Longer(QPointF way) { return std::max(std::abs(way.x()), std::abs(way.y())); }
/// A position names the middle of its pixel.
constexpr QPointF Middle(0.5, 0.5);

}  // namespace

void QtSurface::PixelLine(QPointF from, QPointF to, double width, std::uint32_t colour) {
  width = std::clamp(width, 1.0, 256.0);
  const double margin = width + 2;
  if (!CutToBox(from, to, QRectF(image.rect()).adjusted(-margin, -margin, margin, margin))) return;
  // For each pixel of the longer way, the pixels across it that the pen covers, and how much of each.
  const bool steep = std::abs(to.y() - from.y()) > std::abs(to.x() - from.x());
  if (steep) {
    from = from.transposed();
    to = to.transposed();
  }
  if (from.x() > to.x()) std::swap(from, to);
  const double slope = to.x() > from.x() ? (to.y() - from.y()) / (to.x() - from.x()) : 0;
  const double half = width / 2 * std::sqrt(1 + slope * slope);
  DrawAlong({.From = Nearest(from.x()),
             .To = Nearest(to.x()),
             .Low = from.y() + slope * (Nearest(from.x()) - from.x()) + 0.5 - half,
             .Width = 2 * half,
             .Slope = slope,
             .Steep = steep},
            colour);
}

void QtSurface::DrawAlong(const Way& way, std::uint32_t colour) {
  constexpr int marked = 8;  // pixels along that are marked together
  const int alongEnd = way.Steep ? image.height() : image.width();
  const int acrossEnd = way.Steep ? image.width() : image.height();
  const qsizetype stride = image.bytesPerLine() / 4;
  const qsizetype alongStep = way.Steep ? stride : 1;
  const qsizetype acrossStep = way.Steep ? 1 : stride;
  std::uint32_t* pixels = Pixels();
  // In 1/65536 of a pixel; pixel n covers n..n+1.
  const auto fixed = [](double value) { return static_cast<std::int64_t>(value * 65536); };
  const std::int64_t slope = fixed(way.Slope);
  const std::int64_t width = fixed(way.Width);
  int along = std::max(way.From, 0);
  const int end = std::min(way.To + 1, alongEnd);
  std::int64_t low = fixed(way.Low + way.Slope * (along - way.From));
  while (along < end) {
    const int chunk = along;
    int least = acrossEnd;
    int most = -1;
    for (; along < std::min(chunk + marked, end); ++along, low += slope) {
      const std::int64_t high = low + width;
      const int first = std::max(static_cast<int>(low >> 16), 0);
      const int last = std::min(static_cast<int>((high - 1) >> 16), acrossEnd - 1);
      for (int across = first; across <= last; ++across) {
        const std::int64_t start = static_cast<std::int64_t>(across) << 16;
        const std::int64_t covered = std::min(high, start + 65536) - std::max(low, start);
        std::uint32_t& pixel = pixels[along * alongStep + across * acrossStep];
        pixel = Blend(pixel, colour, static_cast<std::uint32_t>(covered >> 9));
      }
      least = std::min(least, first);
      most = std::max(most, last);
    }
    if (most < least) continue;
    if (way.Steep) {
      fresh.Mark(least, chunk, most - least + 1, along - chunk);
    } else {
      fresh.Mark(chunk, least, along - chunk, most - least + 1);
    }
  }
}

void QtSurface::PixelArc(QPointF centre, double radius, double fromDegrees, double toDegrees, double width,
                         std::uint32_t colour) {
  const QRectF seen = QRectF(image.rect()).adjusted(-width, -width, width, width);
  if (!seen.intersects(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius))) return;
  std::optional<QPointF> from;
  ForEachCorner(centre, radius, fromDegrees, toDegrees, [&](QPointF to) {
    if (from) PixelLine(*from, to, width, colour);
    from = to;
  });
}

QPolygonF QtSurface::ArcCorners(QPointF centre, double radius, double fromDegrees, double toDegrees) {
  QPolygonF corners;
  ForEachCorner(centre, radius, fromDegrees, toDegrees,
                [&](QPointF corner) { corners.append(QPointF(std::round(corner.x()), std::round(corner.y()))); });
  return corners;
}

void QtSurface::Stroke(const QPolygonF& corners, map::Pen pen) {
  if (pen.Style != map::PenStyle::Smooth) return StrokeWhole(corners, pen);
  for (qsizetype index = 1; index < corners.size(); ++index) {
    PixelLine(corners[index - 1], corners[index], pen.DrawWidth * ratio, PixelColour(pen.Color));
  }
}

void QtSurface::StrokeWhole(const QPolygonF& corners, map::Pen pen) {
  const double width = std::clamp(std::round(pen.DrawWidth * ratio), 1.0, 256.0);
  const double margin = width + 2;
  // QPainter counts in less than 32 bits: it is given only what can be seen.
  const QRectF near = QRectF(image.rect()).adjusted(-margin, -margin, margin, margin);
  const bool dotted = pen.Style == map::PenStyle::Dotted;
  const QPen drawn(QColor::fromRgb(PixelColour(pen.Color)), width, Qt::SolidLine,
                   dotted ? Qt::SquareCap : Qt::RoundCap);
  // A pen of one pixel goes by the pixels' names, a wider one by their areas.
  const QPointF middle = width > 1 ? Middle : QPointF();
  QImage canvas;
  QPainter painter;
  for (qsizetype index = 1; index < corners.size(); ++index) {
    QPointF from = corners[index - 1];
    QPointF to = corners[index];
    if (!CutToBox(from, to, near)) continue;
    if (!MarkSeen(QRectF(from, to).normalized().adjusted(-width, -width, width + 1, width + 1))) continue;
    if (!painter.isActive()) {
      canvas = Canvas();
      painter.begin(&canvas);
      painter.setPen(drawn);
    }
    if (dotted) {
      // Counted from the uncut end, so that dots stay where they are on the line, however much of it is seen.
      const QPointF start = corners[index - 1];
      const QPointF way = corners[index] - start;
      const double length = Longer(way);
      const double gap = DotAndGap * width;
      const double last = Longer(to - start);
      for (double at = std::ceil(Longer(from - start) / gap) * gap; at <= last; at += gap) {
        const QPointF dot = length > 0 ? start + way * (at / length) : start;
        painter.drawPoint(QPointF(std::floor(dot.x() + 0.5), std::floor(dot.y() + 0.5)) + middle);
      }
      continue;
    }
    if (from == to) {
      painter.drawPoint(from + middle);
    } else {
      painter.drawLine(from + middle, to + middle);
    }
  }
}

void QtSurface::Fill(QPolygonF corners, map::Pen pen) {
  corners = CutField(std::move(corners), QRectF(image.rect()).adjusted(-2, -2, 2, 2));
  if (!MarkSeen(corners.boundingRect().adjusted(-1, -1, 2, 2))) return;
  QImage canvas = Canvas();
  QPainter painter(&canvas);
  painter.setRenderHint(QPainter::Antialiasing, pen.Style == map::PenStyle::Smooth);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(PixelColour(pen.Color)));
  painter.drawPolygon(corners.translated(Middle), Qt::OddEvenFill);
}

}  // namespace kestrel::shell
