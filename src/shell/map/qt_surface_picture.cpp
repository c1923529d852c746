#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "shell/map/qt_surface.h"

// The picture under all else, scaled and smoothed, and the background beside it.
namespace kestrel::shell {
namespace {

/// Beyond this scale (level pixels become so many) no pixel is taken for covered without a look.
constexpr double MostScale = 65536;

/// Pixels that a picture drawn to `place` covers for certain, however its edges are rounded; empty where none are.
QRect Covered(const QRectF& place, QSize size) {
  constexpr double quarter = 0.25;  // an edge nearer than this to that of the image has all pixels up to there
  const auto first = [](double edge) { return edge < quarter ? 0 : static_cast<int>(std::ceil(edge)) + 1; };
  const auto end = [](double edge, int most) {
    return edge > most - quarter ? most : static_cast<int>(std::floor(edge)) - 1;
  };
  QRect covered;
  covered.setCoords(first(place.left()), first(place.top()), end(place.right(), size.width()) - 1,
                    end(place.bottom(), size.height()) - 1);
  return covered.isValid() ? covered : QRect();
}

void FillAround(QImage& target, const QRect& but, std::uint32_t colour) {
  for (int y = 0; y < target.height(); ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(target.scanLine(y));
    if (y < but.top() || y > but.bottom()) {
      std::fill_n(row, target.width(), colour);
    } else {
      std::fill_n(row, but.left(), colour);
      std::fill(row + but.right() + 1, row + target.width(), colour);
    }
  }
}

}  // namespace

void QtSurface::CopyPicture(const base::Picture& picture, const map::SourceRect& from) {
  if (image.isNull()) return;
  captured = false;  // nothing of it shows any more
  kept.Clear();
  dotRanks.clear();
  fresh.MarkAll();
  QImage target = DevicePixels();
  const std::uint32_t ground = background.rgb();
  const QRectF wanted(from.Left, from.Top, from.Width, from.Height);
  const QRectF source = wanted & QRectF(0, 0, picture.Width, picture.Height);
  const bool numbers =
      std::isfinite(from.Left) && std::isfinite(from.Top) && std::isfinite(from.Width) && std::isfinite(from.Height);
  if (picture.Empty() || !numbers || from.Width <= 0 || from.Height <= 0 || source.isEmpty()) {
    return FillAround(target, QRect(), ground);
  }
  const double scaleX = image.width() / wanted.width();
  const double scaleY = image.height() / wanted.height();
  const QRectF place((source.left() - wanted.left()) * scaleX, (source.top() - wanted.top()) * scaleY,
                     source.width() * scaleX, source.height() * scaleY);
  const bool usual = std::max(scaleX, scaleY) < MostScale;
  FillAround(target, usual ? Covered(place, image.size()) : QRect(), ground);
  const QImage& level = levels.Level(picture, std::max(scaleX, scaleY), source);
  const double levelX = static_cast<double>(level.width()) / picture.Width;
  const double levelY = static_cast<double>(level.height()) / picture.Height;
  QPainter painter(&target);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(
      place, level,
      QRectF(source.left() * levelX, source.top() * levelY, source.width() * levelX, source.height() * levelY));
  if (brightness >= 100) return;
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.fillRect(place, QColor(0, 0, 0, 255 - std::max(brightness, 0) * 255 / 100));
}

}  // namespace kestrel::shell
