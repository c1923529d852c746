#include <algorithm>
#include <cstddef>
#include <vector>

#include "shell/map/nearest.h"
#include "shell/map/qt_surface.h"

// Trails of many thousands of dots.
namespace kestrel::shell {

void QtSurface::Dots(std::span<const map::SurfacePoint> at, base::Colour color, std::uint16_t rank) {
  const int width = image.width();
  const int height = image.height();
  const int radius = static_cast<int>(dotHalfWidths.size() / 2);
  const qsizetype stride = image.bytesPerLine() / 4;
  dotRanks.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height));
  std::vector<std::ptrdiff_t> shape;  // the pixels of a dot from its centre
  for (int row = -radius; row <= radius && !dotHalfWidths.empty(); ++row) {
    const int halfWidth = dotHalfWidths[static_cast<std::size_t>(row + radius)];
    for (int column = -halfWidth; column <= halfWidth; ++column) shape.push_back(row * stride + column);
  }
  const std::uint32_t colour = PixelColour(color);
  std::uint32_t* pixels = Pixels();
  std::uint16_t* ranks = dotRanks.data();
  const auto lay = [&](std::ptrdiff_t pixel) {
    if (ranks[pixel] > rank) return;
    ranks[pixel] = rank;
    pixels[pixel] = colour;
  };

  // Beyond these nothing of a dot is seen; what is no number is there too.
  const double least = -radius - 1;
  const double mostX = width + radius;
  const double mostY = height + radius;
  int lastX = -FarPixel;
  int lastY = -FarPixel;
  for (const map::SurfacePoint& dot : at) {
    const double exactX = dot.X * scale;
    const double exactY = dot.Y * scale;
    if (!(exactX > least && exactX < mostX && exactY > least && exactY < mostY)) continue;
    const int x = Nearest(exactX);
    const int y = Nearest(exactY);
    if (x == lastX && y == lastY) continue;
    lastX = x;
    lastY = y;
    const int left = std::max(x - radius, 0);
    const int top = std::max(y - radius, 0);
    const int right = std::min(x + radius, width - 1);
    const int bottom = std::min(y + radius, height - 1);
    if (left > right || top > bottom) continue;
    Touch(left, top, right - left + 1, bottom - top + 1);
    if (right - left == 2 * radius && bottom - top == 2 * radius) {
      const std::ptrdiff_t centre = y * stride + x;
      for (const std::ptrdiff_t pixel : shape) lay(centre + pixel);
      continue;
    }
    for (int row = top; row <= bottom; ++row) {
      const int halfWidth = dotHalfWidths[static_cast<std::size_t>(row - y + radius)];
      const int end = std::min(x + halfWidth, right);
      for (int column = std::max(x - halfWidth, left); column <= end; ++column) lay(row * stride + column);
    }
  }
}

}  // namespace kestrel::shell
