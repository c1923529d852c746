#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <optional>

#include "shell/map/lines_and_arcs.h"
#include "shell/map/nearest.h"
#include "shell/map/qt_surface.h"

// Lines and large arcs, smoothed, set pixel by pixel; filled fields by QPainter.
namespace kestrel::shell {
namespace {

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

/// Asks for the memory of a pixel that will be written.
void PrefetchPixel([[maybe_unused]] const std::uint32_t* pixel) {
#ifdef __GNUC__
  __builtin_prefetch(pixel, 1);
#endif
}

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
  constexpr int touched = 8;  // pixels along that are touched together
  constexpr int ahead = 16;   // of a steep line, whose rows lie far apart: rows that are asked for before their turn
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
  const auto covered = [](std::int64_t low, std::int64_t high, int across) {
    const std::int64_t start = static_cast<std::int64_t>(across) << 16;
    return static_cast<std::uint32_t>((std::min(high, start + 65536) - std::max(low, start)) >> 9);
  };
  int along = std::max(way.From, 0);
  const int end = std::min(way.To + 1, alongEnd);
  std::int64_t low = fixed(way.Low + way.Slope * (along - way.From));
  if (way.Steep) {
    const int first = std::clamp(static_cast<int>(low >> 16), 0, acrossEnd - 1);
    for (int row = along; row < std::min(along + ahead, end); ++row) PrefetchPixel(pixels + row * stride + first);
  }
  while (along < end) {
    const int chunkEnd = slope == 0 ? end : std::min(along + touched, end);
    const std::int64_t lastLow = low + slope * (chunkEnd - along - 1);
    const int least = std::max(static_cast<int>(std::min(low, lastLow) >> 16), 0);
    const int most = std::min(static_cast<int>((std::max(low, lastLow) + width - 1) >> 16), acrossEnd - 1);
    if (least <= most) {
      if (way.Steep) {
        Touch(least, along, most - least + 1, chunkEnd - along);
      } else {
        Touch(along, least, chunkEnd - along, most - least + 1);
      }
    }
    if (slope == 0 && !way.Steep) {
      // The same all along: row by row.
      for (int across = least; across <= most; ++across) {
        const std::uint32_t coverage = covered(low, low + width, across);
        std::uint32_t* row = pixels + across * stride;
        for (int column = along; column < chunkEnd; ++column) row[column] = Blend(row[column], colour, coverage);
      }
      return;
    }
    for (; along < chunkEnd; ++along, low += slope) {
      const std::int64_t high = low + width;
      const int first = std::max(static_cast<int>(low >> 16), 0);
      const int last = std::min(static_cast<int>((high - 1) >> 16), acrossEnd - 1);
      if (way.Steep && along + ahead < end) PrefetchPixel(pixels + (along + ahead) * stride + first);
      for (int across = first; across <= last; ++across) {
        std::uint32_t& pixel = pixels[along * alongStep + across * acrossStep];
        pixel = Blend(pixel, colour, covered(low, high, across));
      }
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

void QtSurface::Stroke(const QPolygonF& corners, map::Pen pen) {
  if (pen.Style != map::PenStyle::Smooth) return StrokeWhole(corners, pen);
  for (qsizetype index = 1; index < corners.size(); ++index) {
    PixelLine(corners[index - 1], corners[index], pen.DrawWidth * ratio, PixelColour(pen.Color));
  }
}

void QtSurface::Fill(QPolygonF corners, map::Pen pen) {
  corners = CutField(std::move(corners), QRectF(image.rect()).adjusted(-2, -2, 2, 2));
  if (!TouchSeen(corners.boundingRect().adjusted(-1, -1, 2, 2))) return;
  QPainter& painter = Painter();
  painter.setRenderHint(QPainter::Antialiasing, pen.Style == map::PenStyle::Smooth);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(PixelColour(pen.Color)));
  painter.drawPolygon(corners.translated(Middle), Qt::OddEvenFill);
}

}  // namespace kestrel::shell
