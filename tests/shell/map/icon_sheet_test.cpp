#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <vector>

#include "map/icon_strokes.h"
#include "shell/map/painted.h"
#include "shell/map/qt_surface.h"

// The icons as they look. KESTREL_ICON_SHEET names a file for the whole sheet.
namespace kestrel::shell {
namespace {

constexpr int Cell = 32;  // pixels
constexpr int Columns = 12;
constexpr int Rows = 3;

/// Icons 1 to 35 in rows of 12, each in the middle of its cell.
QImage Sheet(QColor ground, base::Colour ink, double ratio) {
  QtSurface surface;
  surface.SetBackground(ground);
  surface.Resize(QSizeF(Columns * Cell * ratio, Rows * Cell * ratio).toSize(), ratio);
  for (int icon = 1; icon <= map::LastIcon; ++icon) {
    const int x = (icon - 1) % Columns * Cell + Cell / 2;
    const int y = (icon - 1) / Columns * Cell + Cell / 2;
    map::DrawIcon(surface, icon, x * 15.0, y * 15.0, ink);
  }
  QImage sheet = surface.Image().copy();
  sheet.setDevicePixelRatio(1);
  return sheet;
}

/// Dark on light and light on dark, in one, two and four times the pixels.
bool WriteSheet(const QString& path) {
  const int width = Columns * Cell * 4;
  const int height = Rows * Cell * 4;
  QImage all(width, 3 * height, QImage::Format_RGB32);
  all.fill(Qt::gray);
  QPainter painter(&all);
  const QColor paper(225, 225, 215);
  const QColor dark(30, 40, 50);
  painter.drawImage(0, 0, Sheet(paper, 0, 1));
  painter.drawImage(width / 2, 0, Sheet(dark, 0x80FFFF, 1));
  painter.drawImage(0, 120, Sheet(paper, 0, 2));
  painter.drawImage(width / 2, 120, Sheet(dark, 0x80FFFF, 2));
  painter.drawImage(0, height, Sheet(paper, 0, 1).scaled(width, height));
  painter.drawImage(0, 2 * height, Sheet(dark, 0x80FFFF, 4));
  painter.end();
  return all.save(path);
}

TEST(IconSheet, EveryIconWithAShapeIsSeenWithinItsBoxAndNoOtherIs) {
  const QString path = qEnvironmentVariable("KESTREL_ICON_SHEET");
  EXPECT_TRUE(path.isEmpty() || WriteSheet(path));
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QRegion ink = Painted(Sheet(Ground, 0xFFFFFF, ratio));
    for (int icon = 1; icon <= Columns * Rows; ++icon) {
      const QRectF cell((icon - 1) % Columns * Cell * ratio, (icon - 1) / Columns * Cell * ratio, Cell * ratio,
                        Cell * ratio);
      const QRect seen = (ink & cell.toRect()).boundingRect();
      EXPECT_EQ(seen.isEmpty(), icon == 23 || icon >= 30) << icon;
      // 12 pixels from the centre, and the pen.
      const QRectF box(cell.center() - QPointF(13, 13) * ratio, cell.center() + QPointF(14, 14) * ratio);
      EXPECT_TRUE(seen.isEmpty() || box.toAlignedRect().contains(seen)) << icon << " at " << ratio;
    }
  }
}

TEST(IconSheet, NoTwoIconsLookTheSame) {
  const QImage sheet = Sheet(Ground, 0xFFFFFF, 1);
  std::vector<QImage> icons;
  for (int icon = 1; icon < 30; ++icon) {
    if (icon == 23) continue;
    icons.push_back(sheet.copy((icon - 1) % Columns * Cell, (icon - 1) / Columns * Cell, Cell, Cell));
    for (std::size_t other = 0; other + 1 < icons.size(); ++other) EXPECT_FALSE(SamePixels(icons[other], icons.back()));
  }
}

}  // namespace
}  // namespace kestrel::shell
