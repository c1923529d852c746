#include "shell/map/picture_levels.h"

#include <array>
#include <cstdint>

namespace kestrel::shell {
namespace {

/// The mean of four pixels, channel by channel.
std::uint32_t Mean(std::array<std::uint32_t, 4> pixels) {
  constexpr std::uint32_t redBlue = 0x00FF00FF;
  std::uint32_t even = 0x00020002;  // rounds to nearest
  std::uint32_t odd = 0x00020002;
  for (const std::uint32_t pixel : pixels) {
    even += pixel & redBlue;
    odd += (pixel >> 8) & redBlue;
  }
  return ((even >> 2) & redBlue) | (((odd >> 2) & redBlue) << 8);
}

QImage Halved(const QImage& whole) {
  QImage half(whole.width() / 2, whole.height() / 2, QImage::Format_RGB32);
  for (int y = 0; y < half.height(); ++y) {
    const auto* upper = reinterpret_cast<const std::uint32_t*>(whole.constScanLine(2 * y));
    const auto* lower = reinterpret_cast<const std::uint32_t*>(whole.constScanLine(2 * y + 1));
    auto* out = reinterpret_cast<std::uint32_t*>(half.scanLine(y));
    for (int x = 0; x < half.width(); ++x) {
      out[x] = Mean({upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]});
    }
  }
  return half;
}

}  // namespace

const QImage& PictureLevels::Level(const base::Picture& picture, double scale) {
  if (levels.empty() || source.Pixels != picture.Pixels || source.Width != picture.Width) {
    source = picture;
    levels.assign(1, QImage(source.Pixels, source.Width, source.Height, source.Stride, QImage::Format_RGB32));
  }
  std::size_t level = 0;
  for (; scale < 0.499; scale *= 2, ++level) {
    if (level + 1 < levels.size()) continue;
    if (levels[level].width() < 2 || levels[level].height() < 2) break;
    levels.push_back(Halved(levels[level]));
  }
  return levels[level];
}

}  // namespace kestrel::shell
