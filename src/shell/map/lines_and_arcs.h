#pragma once

#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <cmath>

// What of lines and arcs is drawn, device pixels.
namespace kestrel::shell {

/// A large circle is drawn as chords that leave it by at most this.
inline constexpr double ChordError = 0.05;
inline constexpr int MostChords = 16384;

/// Cuts the line to the box; false when nothing is left.
inline bool CutToBox(QPointF& from, QPointF& to, const QRectF& box) {
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

}  // namespace kestrel::shell
