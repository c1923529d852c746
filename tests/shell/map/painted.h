#pragma once

#include <QColor>
#include <QImage>
#include <QRegion>
#include <cstring>

#include "shell/map/qt_surface.h"

// Surfaces for tests, and what has been painted on them.
namespace kestrel::shell {

inline const QColor Ground(10, 20, 30);

/// A surface of some logical pixels, all ground, captured.
inline QtSurface Made(QSize logical, double ratio) {
  QtSurface surface;
  surface.SetBackground(Ground);
  surface.Resize((QSizeF(logical) * ratio).toSize(), ratio);
  surface.Capture();
  surface.TakeDirty();
  return surface;
}

/// What differs from the ground.
inline QRegion Painted(const QImage& image) {
  QRegion painted;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixel(x, y) != Ground.rgb()) painted += QRect(x, y, 1, 1);
    }
  }
  return painted;
}

inline bool SamePixels(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return false;
  for (int y = 0; y < a.height(); ++y) {
    if (std::memcmp(a.constScanLine(y), b.constScanLine(y), static_cast<std::size_t>(a.width()) * 4) != 0) return false;
  }
  return true;
}

}  // namespace kestrel::shell
