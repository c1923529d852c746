#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QPolygonF>
#include <QRegion>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "map/surface.h"
#include "shell/map/glyph_sheet.h"
#include "shell/map/painted_cells.h"
#include "shell/map/picture_levels.h"
#include "shell/map/sprite.h"

// The map's drawing surface on an image. Here alone logical units become pixels. What moves is painted without
// QPainter: glyphs and small circles are kept as lists of inked pixels, dots and lines are set pixel by pixel, and
// Restore copies back only what has been painted over. Pens of whole pixels and filled shapes are QPainter's. A
// position names a pixel: the nearest one.
namespace kestrel::shell {

class QtSurface final : public map::Surface {
 public:
  /// Empty: everything drawn is dropped until Resize.
  QtSurface();

  /// Gives the image its size in device pixels; one device pixel is 15 / devicePixelRatio units. What was on the
  /// surface without the plots stays at the upper left, the rest is background.
  void Resize(QSize pixels, double devicePixelRatio);
  /// What lies beyond the picture; seen from the next CopyPicture or Resize on.
  void SetBackground(QColor colour);
  /// How bright the picture is drawn, percent of its own, 100 at the most; seen from the next CopyPicture on. Nothing
  /// but the picture is darker.
  void SetBrightness(int percent) { brightness = percent; }
  /// The picture with its devicePixelRatio set; it changes with each call, so who keeps it takes a copy().
  const QImage& Image() const { return image; }
  /// What has changed since the last call, device pixels; rounded outward.
  QRegion TakeDirty();
  /// How much of what was captured has been copied since, in order to be put back, bytes: the cells that were painted.
  std::size_t KeptBytes() const { return kept.Count() * PaintedCells::CellPixels * 4; }

  void CopyPicture(const base::Picture& picture, const map::SourceRect& from) override;
  void Line(double x1, double y1, double x2, double y2, map::Pen pen) override;
  void Circle(double x, double y, double radius, map::Pen pen) override;
  void Arc(double x, double y, double radius, double fromDegrees, double toDegrees, map::Pen pen) override;
  void Box(double x1, double y1, double x2, double y2, map::Pen pen) override;
  void Polygon(std::span<const map::SurfacePoint> corners, map::Pen pen) override;
  void Segments(std::span<const map::SurfacePoint> ends, map::Pen pen) override;
  void Dot(double x, double y, base::Colour color) override;
  void Dots(std::span<const map::SurfacePoint> at, base::Colour color, std::uint16_t rank) override;
  map::TextSize Measure(std::string_view text, const map::TextFont& font) override;
  void Print(std::string_view text, double x, double y, const map::TextFont& font, base::Colour color) override;
  void Capture() override;
  void Restore() override;

 private:
  struct Canvas {
    explicit Canvas(QImage target) : Target(std::move(target)), Brush(&Target) {}
    QImage Target;
    QPainter Brush;
  };

  struct Ring {
    double Radius = 0;  ///< device pixels
    double FromDegrees = 0;
    double ToDegrees = 0;
    int DrawWidth = 1;
    Sprite Shape;
  };

  /// A line step by step along its longer axis: at each whole step the pixels across that the pen covers. Device
  /// pixels; pixel n reaches from n to n + 1 across.
  struct Way {
    int From = 0;  ///< first and last step
    int To = 0;
    double Low = 0;      ///< where the pen begins across, at the first step
    double Width = 0;    ///< how much it covers across
    double Slope = 0;    ///< across for each step
    bool Steep = false;  ///< the longer axis is Y
  };

  class WholeLines;

  static std::uint32_t PixelColour(base::Colour colour) {
    return 0xFF000000U | static_cast<std::uint32_t>(base::RedOf(colour)) << 16 |
           static_cast<std::uint32_t>(base::GreenOf(colour)) << 8 | base::BlueOf(colour);
  }
  int PixelOf(double units) const;
  std::uint32_t* Pixels() { return reinterpret_cast<std::uint32_t*>(image.bits()); }
  /// To be told of a box within the image BEFORE anything is painted there: keeps what was captured in it and marks it.
  void Touch(int x, int y, int width, int height);
  void Blit(const Sprite& sprite, int x, int y, std::uint32_t colour);
  /// Lines and arcs between points in device pixels, the pen's width in device pixels.
  void PixelLine(QPointF from, QPointF to, double width, std::uint32_t colour);
  void DrawAlong(const Way& way, std::uint32_t colour);
  void PixelArc(QPointF centre, double radius, double fromDegrees, double toDegrees, double width,
                std::uint32_t colour);
  /// The corners of an arc, whole device pixels, and lines from corner to corner: by QPainter in whole pixels, but for
  /// Smooth.
  static QPolygonF ArcCorners(QPointF centre, double radius, double fromDegrees, double toDegrees);
  void WholeArc(QPointF centre, double radius, double fromDegrees, double toDegrees, map::Pen pen);
  void Stroke(const QPolygonF& corners, map::Pen pen);
  void StrokeWhole(const QPolygonF& corners, map::Pen pen);
  void StrokeDotted(const QPolygonF& corners, map::Pen pen);
  /// The field within the corners, device pixels, closed by itself.
  void Fill(QPolygonF corners, map::Pen pen);
  /// The image's own memory without its devicePixelRatio, so that it counts device pixels; good until the next stroke.
  QImage DevicePixels();
  /// QPainter on that, of whole pixels, its pen and brush any. It stays open, since beginning anew costs more than a
  /// line; what sets pixels by itself may paint in turn with it.
  QPainter& Painter();
  /// Touch of the part of `box` within the image; false when there is none.
  bool TouchSeen(const QRectF& box);
  const Sprite& RingShape(double radius, double fromDegrees, double toDegrees, int drawWidth);
  /// Good until the next call.
  GlyphSheet& Sheet(const map::TextFont& font);
  void DropSheets();

  double ratio = 1;         ///< devicePixelRatio
  double scale = 1.0 / 15;  ///< device pixels to the unit
  QColor background;
  int brightness = 100;  ///< of the picture, percent
  QImage image;
  QImage snapshot;                 ///< MapSnapshot, as far as `kept` tells; what is not kept shows on the image
  std::unique_ptr<Canvas> canvas;  ///< of Painter
  bool captured = false;           ///< false: nothing is to be put back, and nothing is kept
  PaintedCells kept;               ///< cells of the snapshot that hold what was captured; each is copied once
  PaintedCells painted;            ///< since the last Capture or Restore, told by TakeDirty
  PaintedCells fresh;              ///< since then, not yet told by TakeDirty
  PaintedCells restored;           ///< put back since the last TakeDirty
  PictureLevels levels;
  std::vector<std::unique_ptr<GlyphSheet>> sheets;  ///< one for each font in use
  std::size_t lastSheet = 0;                        ///< used last, and so most likely next
  std::size_t sheetBytes = 0;                       ///< bytes of the shapes of all sheets
  std::vector<Ring> rings;
  std::vector<int> dotHalfWidths;       ///< a dot, row by row from its top
  std::vector<std::uint16_t> dotRanks;  ///< of each pixel's trail of Dots, 0 for none; empty until there are any
};

}  // namespace kestrel::shell
