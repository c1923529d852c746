#include "shell/map/qt_surface.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "map/units.h"
#include "shell/map/nearest.h"
#include "shell/map/whole_pixels.h"

namespace kestrel::shell {
namespace {

constexpr QRgb Graphite = 0xFF14171A;
/// Fonts kept at the same time, and the bytes of their shapes; with more, all are made anew.
constexpr std::size_t MostSheets = 256;
constexpr std::size_t MostInk = std::size_t{128} << 20;
/// Small circles kept at the same time, and the largest that is, device pixels.
constexpr std::size_t MostRings = 64;
constexpr double LargestRing = 48;
/// Lines are cut at this distance before their slope is taken, device pixels.
constexpr double FarLine = 1e12;
/// Circles of a smaller radius are a dot, device pixels.
constexpr double LeastCircle = 0.5;

template <class... Values>
bool AllFinite(Values... values) {
  return (std::isfinite(values) && ...);
}

QPointF Bounded(double x, double y) { return {std::clamp(x, -FarLine, FarLine), std::clamp(y, -FarLine, FarLine)}; }

void CopyRuns(const PaintedCells& cells, const QImage& from, QImage& to) {
  const uchar* source = from.constBits();
  uchar* target = to.bits();
  const qsizetype stride = to.bytesPerLine();
  cells.ForEachRun([&](int x, int y, int width) {
    const qsizetype offset = y * stride + x * 4;
    std::memcpy(target + offset, source + offset, static_cast<std::size_t>(width) * 4);
  });
}

/// Paints a sprite that lies within the image; `origin`: the pixel of its position.
void Paint(const Sprite& sprite, std::uint32_t* origin, qsizetype stride, const BlockBytes& colour) {
  for (const InkBlock& ink : sprite.Ink) LayBlock(origin + ink.Y * stride + ink.X, colour, ink);
}

/// `all` and `box` moved right by `shift`.
QRect Joined(const QRect& all, const QRect& box, int shift) {
  QRect joined;
  joined.setCoords(std::min(all.left(), box.left() + shift), std::min(all.top(), box.top()),
                   std::max(all.right(), box.right() + shift), std::max(all.bottom(), box.bottom()));
  return joined;
}

bool Within(const QRect& box, const QImage& image) {
  return box.left() >= 0 && box.top() >= 0 && box.right() < image.width() && box.bottom() < image.height();
}

/// Asks for the memory of all rows at once, since each lies in another line of the cache.
void Prefetch([[maybe_unused]] const QImage& image, [[maybe_unused]] const QRect& box) {
#ifdef __GNUC__
  constexpr int line = 64;  // bytes
  const uchar* row = image.constBits() + box.top() * image.bytesPerLine() + box.left() * 4;
  for (int y = 0; y < box.height(); ++y, row += image.bytesPerLine()) {
    for (int byte = 0; byte < box.width() * 4 + line; byte += line) __builtin_prefetch(row + byte, 1);
  }
#endif
}

}  // namespace

QtSurface::QtSurface() : background(Graphite) {}

void QtSurface::Resize(QSize pixels, double devicePixelRatio) {
  Restore();
  const QImage before = image;
  canvas.reset();
  ratio = devicePixelRatio;
  scale = devicePixelRatio / map::UnitsPerPixel;
  image = QImage(pixels, QImage::Format_RGB32);
  image.fill(background);
  const QSize common = pixels.boundedTo(before.size());
  for (int y = 0; y < common.height(); ++y) {
    std::memcpy(image.scanLine(y), before.constScanLine(y), static_cast<std::size_t>(common.width()) * 4);
  }
  image.setDevicePixelRatio(ratio);
  snapshot = QImage();
  captured = true;
  for (PaintedCells* cells : {&kept, &painted, &fresh, &restored}) cells->Reset(image.size());
  restored.MarkAll();

  DropSheets();
  dotRanks.clear();
  rings.clear();
  const int radius = std::max(1, static_cast<int>(std::lround(ratio)));
  dotHalfWidths.clear();
  for (int y = -radius; y <= radius; ++y) {
    dotHalfWidths.push_back(static_cast<int>(std::sqrt(radius * radius + radius / 2 - y * y)));
  }
}

void QtSurface::SetBackground(QColor colour) { background = colour; }

QRegion QtSurface::TakeDirty() {
  restored.Join(fresh);
  painted.Join(fresh);
  fresh.Clear();
  const QRegion region = restored.Region();
  restored.Clear();
  return region;
}

void QtSurface::Line(double x1, double y1, double x2, double y2, map::Pen pen) {
  if (!AllFinite(x1, y1, x2, y2)) return;
  if (pen.Style != map::PenStyle::Smooth) {
    StrokeWhole({Bounded(x1 * scale, y1 * scale), Bounded(x2 * scale, y2 * scale)}, pen);
    return;
  }
  PixelLine(Bounded(x1 * scale, y1 * scale), Bounded(x2 * scale, y2 * scale), pen.DrawWidth * ratio,
            PixelColour(pen.Color));
}

void QtSurface::Circle(double x, double y, double radius, map::Pen pen) {
  if (radius >= 0 && radius * scale < LeastCircle) return Dot(x, y, pen.Color);
  if (pen.Filled && AllFinite(x, y, radius) && radius > 0) {
    Fill(ArcCorners(WholePixels(Bounded(x * scale, y * scale)), std::min(radius * scale, FarLine), 0, 360), pen);
  }
  Arc(x, y, radius, 0, 360, pen);
}

void QtSurface::Arc(double x, double y, double radius, double fromDegrees, double toDegrees, map::Pen pen) {
  if (!AllFinite(x, y, radius, fromDegrees, toDegrees) || radius < 0) return;
  const double pixels = radius * scale;
  if (pen.Style != map::PenStyle::Smooth) {
    WholeArc(WholePixels(Bounded(x * scale, y * scale)), std::min(pixels, FarLine), fromDegrees, toDegrees, pen);
    return;
  }
  if (pixels <= LargestRing && pen.DrawWidth <= LargestRing) {
    Blit(RingShape(pixels, fromDegrees, toDegrees, pen.DrawWidth), PixelOf(x), PixelOf(y), PixelColour(pen.Color));
  } else {
    PixelArc(Bounded(x * scale, y * scale), std::min(pixels, FarLine), fromDegrees, toDegrees, pen.DrawWidth * ratio,
             PixelColour(pen.Color));
  }
}

void QtSurface::Box(double x1, double y1, double x2, double y2, map::Pen pen) {
  const map::SurfacePoint corners[] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
  Polygon(corners, pen);
}

void QtSurface::Polygon(std::span<const map::SurfacePoint> corners, map::Pen pen) {
  QPolygonF pixels;
  pixels.reserve(static_cast<qsizetype>(corners.size()) + 1);
  for (const map::SurfacePoint& corner : corners) {
    const QPointF pixel = WholePixels({corner.X * scale, corner.Y * scale});
    if (!IsCorner(pixel)) return;
    pixels.append(pixel);
  }
  if (pen.Filled) Fill(pixels, pen);
  if (pixels.size() > 2) pixels.append(pixels.front());
  Stroke(pixels, pen);
}

const Sprite& QtSurface::RingShape(double radius, double fromDegrees, double toDegrees, int drawWidth) {
  for (const Ring& ring : rings) {
    if (ring.Radius == radius && ring.FromDegrees == fromDegrees && ring.ToDegrees == toDegrees &&
        ring.DrawWidth == drawWidth) {
      return ring.Shape;
    }
  }
  if (rings.size() >= MostRings) rings.clear();
  const double penWidth = std::max(1.0, drawWidth * ratio);
  const int reach = static_cast<int>(std::ceil(radius + penWidth)) + 1;
  QImage drawn(2 * reach + 1, 2 * reach + 1, QImage::Format_ARGB32_Premultiplied);
  drawn.fill(Qt::transparent);
  const QPointF centre(reach + 0.5, reach + 0.5);
  const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
  QPainterPath path;
  path.arcMoveTo(box, fromDegrees);
  path.arcTo(box, fromDegrees, std::clamp(toDegrees - fromDegrees, -360.0, 360.0));
  QPainter painter(&drawn);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::white, penWidth, Qt::SolidLine, Qt::FlatCap));
  painter.drawPath(path);
  painter.end();
  return rings.emplace_back(Ring{radius, fromDegrees, toDegrees, drawWidth, SpriteFromAlpha(drawn, {reach, reach})})
      .Shape;
}

void QtSurface::Dot(double x, double y, base::Colour color) {
  if (!AllFinite(x, y)) return;
  const int centreX = PixelOf(x);
  const int radius = static_cast<int>(dotHalfWidths.size() / 2);
  const int top = PixelOf(y) - radius;
  const int left = centreX - radius;
  const int side = 2 * radius + 1;
  if (left <= -side || top <= -side || left >= image.width() || top >= image.height()) return;
  const std::uint32_t colour = PixelColour(color);
  const qsizetype stride = image.bytesPerLine() / 4;
  std::uint32_t* pixels = Pixels();
  const int firstRow = std::max(top, 0);
  const int endRow = std::min(top + side, image.height());
  const int firstColumn = std::max(left, 0);
  Touch(firstColumn, firstRow, std::min(left + side, image.width()) - firstColumn, endRow - firstRow);
  for (int row = firstRow; row < endRow; ++row) {
    const int halfWidth = dotHalfWidths[static_cast<std::size_t>(row - top)];
    const int first = std::max(centreX - halfWidth, 0);
    const int end = std::min(centreX + halfWidth + 1, image.width());
    for (int column = first; column < end; ++column) pixels[row * stride + column] = colour;
  }
}

map::TextSize QtSurface::Measure(std::string_view text, const map::TextFont& font) {
  GlyphSheet& sheet = Sheet(font);
  double width = 0;
  for (const char byte : text) width += sheet.At(byte).Advance;
  return {width / scale, sheet.LineHeight() / scale};
}

void QtSurface::Print(std::string_view text, double x, double y, const map::TextFont& font, base::Colour color) {
  if (!AllFinite(x, y)) return;
  GlyphSheet& sheet = Sheet(font);
  const std::uint32_t colour = PixelColour(color);
  const int top = PixelOf(y);
  const int start = PixelOf(x);
  const int end = image.width() + sheet.LineHeight();
  // Most texts lie within the image: they are marked once and need no look at each pixel.
  int left = start;
  QRect box;
  box.setCoords(FarPixel, FarPixel, -FarPixel, -FarPixel);
  for (const char byte : text) {
    const GlyphSheet::Glyph& glyph = sheet.At(byte);
    if (!glyph.Shape.Ink.empty()) box = Joined(box, glyph.Shape.Box, left);
    left += glyph.Advance;
    if (left >= end) break;
  }
  box.translate(0, top);
  const bool whole = !box.isEmpty() && Within(box, image);
  if (whole) {
    Prefetch(image, box);
    Touch(box.left(), box.top(), box.width(), box.height());
  }
  std::uint32_t* pixels = Pixels();
  const qsizetype stride = image.bytesPerLine() / 4;
  const BlockBytes colours = BlockOf(colour);
  left = start;
  for (const char byte : text) {
    const GlyphSheet::Glyph& glyph = sheet.At(byte);
    if (whole) {
      Paint(glyph.Shape, pixels + top * stride + left, stride, colours);
    } else {
      Blit(glyph.Shape, left, top, colour);
    }
    left += glyph.Advance;
    if (left >= end) break;
  }
}

void QtSurface::Touch(int x, int y, int width, int height) {
  if (captured && !kept.Holds(x, y, width, height)) {
    if (snapshot.isNull()) snapshot = QImage(image.size(), image.format());
    uchar* to = snapshot.bits();
    const uchar* from = image.constBits();
    const qsizetype stride = image.bytesPerLine();
    kept.MarkNew(x, y, width, height, [&](int runX, int row, int runWidth) {
      const qsizetype offset = row * stride + runX * 4;
      std::memcpy(to + offset, from + offset, static_cast<std::size_t>(runWidth) * 4);
    });
  }
  if (!fresh.All()) fresh.Mark(x, y, width, height);
}

QImage QtSurface::DevicePixels() {
  return {reinterpret_cast<uchar*>(Pixels()), image.width(), image.height(), image.bytesPerLine(), image.format()};
}

QPainter& QtSurface::Painter() {
  const auto* pixels = reinterpret_cast<uchar*>(Pixels());
  if (!canvas || canvas->Target.constBits() != pixels || canvas->Target.size() != image.size()) {
    canvas = std::make_unique<Canvas>(DevicePixels());
  }
  canvas->Brush.setRenderHint(QPainter::Antialiasing, false);
  return canvas->Brush;
}

bool QtSurface::TouchSeen(const QRectF& box) {
  const QRect seen = box.toAlignedRect() & image.rect();
  if (seen.isEmpty()) return false;
  Touch(seen.left(), seen.top(), seen.width(), seen.height());
  return true;
}

void QtSurface::Capture() {
  captured = true;
  // What has been painted is captured anew; the rest is kept as it was.
  kept.Remove(painted);
  kept.Remove(fresh);
  restored.Join(fresh);
  painted.Clear();
  fresh.Clear();
}

void QtSurface::Restore() {
  painted.Join(fresh);
  // Without a capture, or with nothing painted since, there is nothing to put back.
  if (captured && !snapshot.isNull()) CopyRuns(painted, snapshot, image);
  restored.Join(painted);
  painted.Clear();
  fresh.Clear();
}

int QtSurface::PixelOf(double units) const {
  return Nearest(std::clamp(units * scale, -FarPixel / 2.0, FarPixel / 2.0));
}

void QtSurface::Blit(const Sprite& sprite, int x, int y, std::uint32_t colour) {
  if (sprite.Ink.empty()) return;
  const QRect box = sprite.Box.translated(x, y);
  const QRect visible = box & image.rect();
  if (visible.isEmpty()) return;
  Touch(visible.left(), visible.top(), visible.width(), visible.height());
  const qsizetype stride = image.bytesPerLine() / 4;
  std::uint32_t* origin = Pixels() + y * stride + x;
  if (visible == box) {
    Paint(sprite, origin, stride, BlockOf(colour));
    return;
  }
  for (const InkBlock& ink : sprite.Ink) {
    for (int pixel = 0; pixel < BlockPixels; ++pixel) {
      if (!visible.contains(x + ink.X + pixel, y + ink.Y)) continue;
      std::uint32_t& below = origin[ink.Y * stride + ink.X + pixel];
      below = Blend(below, colour, ink.Coverage[static_cast<std::size_t>(pixel * 4)]);
    }
  }
}

void QtSurface::DropSheets() {
  sheets.clear();
  sheetBytes = 0;
}

GlyphSheet& QtSurface::Sheet(const map::TextFont& font) {
  if (lastSheet < sheets.size()) sheetBytes += sheets[lastSheet]->TakeGrowth();
  if (sheetBytes > MostInk) DropSheets();
  if (lastSheet < sheets.size() && sheets[lastSheet]->Holds(font)) return *sheets[lastSheet];
  for (lastSheet = 0; lastSheet < sheets.size(); ++lastSheet) {
    if (sheets[lastSheet]->Holds(font)) return *sheets[lastSheet];
  }
  if (sheets.size() >= MostSheets) DropSheets();
  lastSheet = sheets.size();
  return *sheets.emplace_back(std::make_unique<GlyphSheet>(font, ratio));
}

}  // namespace kestrel::shell
