#include "sample-theater/canvas.h"

#include <algorithm>
#include <cmath>

#include "sample-theater/noise.h"

namespace kestrel::land {

Rgb Blend(Rgb below, Rgb above, double part) {
  return {Mix(below.R, above.R, part), Mix(below.G, above.G, part), Mix(below.B, above.B, part)};
}

Rgb Scale(Rgb colour, double light) { return {colour.R * light, colour.G * light, colour.B * light}; }

void StrokeLayer::Add(const Stroke& stroke) {
  const double reach = std::max(stroke.WidthA, stroke.WidthB) / 2 + 1;
  const int last = cover.Side() - 1;
  const int left = std::max(0, static_cast<int>(std::floor(std::min(stroke.AX, stroke.BX) - reach)));
  const int right = std::min(last, static_cast<int>(std::floor(std::max(stroke.AX, stroke.BX) + reach)));
  const int top = std::max(0, static_cast<int>(std::floor(std::min(stroke.AY, stroke.BY) - reach)));
  const int low = std::min(last, static_cast<int>(std::floor(std::max(stroke.AY, stroke.BY) + reach)));
  const double dx = stroke.BX - stroke.AX;
  const double dy = stroke.BY - stroke.AY;
  const double squared = dx * dx + dy * dy;
  for (int y = top; y <= low; ++y) {
    for (int x = left; x <= right; ++x) {
      const double px = x + 0.5 - stroke.AX;
      const double py = y + 0.5 - stroke.AY;
      const double along = squared > 0 ? Clamp01((px * dx + py * dy) / squared) : 0;
      const double ox = px - along * dx;
      const double oy = py - along * dy;
      const double half = Mix(stroke.WidthA, stroke.WidthB, along) / 2;
      const double covered = Clamp01(half + 0.5 - std::sqrt(ox * ox + oy * oy));
      cover.At(x, y) = std::max(cover.At(x, y), static_cast<float>(covered));
    }
  }
}

}  // namespace kestrel::land
