#include "shell/map/sprite.h"

#include <algorithm>

namespace kestrel::shell {
namespace {

/// The part of `drawn` that has ink.
QRect InkBox(const QImage& drawn) {
  QRect box;
  for (int y = 0; y < drawn.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
    for (int x = 0; x < drawn.width(); ++x) {
      if (qAlpha(row[x]) != 0) box |= QRect(x, y, 1, 1);
    }
  }
  return box;
}

}  // namespace

Sprite SpriteFromAlpha(const QImage& drawn, QPoint origin) {
  Sprite sprite;
  const QRect ink = InkBox(drawn);
  for (int y = ink.top(); y <= ink.bottom(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
    for (int x = ink.left(); x <= ink.right(); x += BlockPixels) {
      InkBlock block;
      bool inked = false;
      for (int pixel = 0; pixel < std::min(BlockPixels, drawn.width() - x); ++pixel) {
        const int coverage = (qAlpha(row[x + pixel]) * 128 + 127) / 255;
        if (coverage == 0) continue;
        inked = true;
        std::fill_n(block.Coverage.begin() + pixel * 4, 4, static_cast<std::uint8_t>(coverage));
      }
      if (!inked) continue;
      const QPoint place = QPoint(x, y) - origin;
      block.X = static_cast<std::int16_t>(place.x());
      block.Y = static_cast<std::int16_t>(place.y());
      sprite.Ink.push_back(block);
      sprite.Box |= QRect(place, QSize(BlockPixels, 1));
    }
  }
  sprite.Ink.shrink_to_fit();
  return sprite;
}

}  // namespace kestrel::shell
