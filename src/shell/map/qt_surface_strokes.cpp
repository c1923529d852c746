#include <QRectF>
#include <algorithm>
#include <cmath>

#include "shell/map/nearest.h"
#include "shell/map/qt_surface.h"

// Lines and large arcs, smoothed, set pixel by pixel.
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
  constexpr double radian = 3.14159265358979323846 / 180;
  const double span = std::clamp(toDegrees - fromDegrees, -360.0, 360.0) * radian;
  const double chord = 2 * std::sqrt(2 * ChordError / radius);
  const int chords =
      std::clamp(static_cast<int>(std::min(std::abs(span) / chord, 1.0 * MostChords)) + 1, 1, MostChords);
  QPointF from;
  for (int step = 0; step <= chords; ++step) {
    const double angle = fromDegrees * radian + span * step / chords;
    const QPointF to = centre + QPointF(std::cos(angle), -std::sin(angle)) * radius;
    if (step > 0) PixelLine(from, to, width, colour);
    from = to;
  }
}

}  // namespace kestrel::shell
