#include "shell/parts/remembered_place.h"

#include <QGuiApplication>
#include <QScreen>

namespace kestrel::shell {

core::WindowArea AreaOf(const QRect& pixels) {
  return {Units(pixels.left()), Units(pixels.top()), Units(pixels.right() + 1), Units(pixels.bottom() + 1)};
}

QPoint PixelsOf(const core::WindowPlace& place) {
  return {qRound(place.X / map::UnitsPerPixel), qRound(place.Y / map::UnitsPerPixel)};
}

std::vector<core::WindowArea> ScreenAreas() {
  std::vector<core::WindowArea> areas;
  const QList<QScreen*> screens = QGuiApplication::screens();
  for (const QScreen* each : screens) areas.push_back(AreaOf(each->availableGeometry()));
  return areas;
}

void TakePlace(QWidget& window, std::int32_t left, std::int32_t top) {
  if (left == 0 && top == 0) return;
  const QSize size = window.sizeHint().expandedTo(window.minimumSize());
  window.move(PixelsOf(core::OnAScreen({left, top}, SizeOf(size), ScreenAreas())));
}

}  // namespace kestrel::shell
