#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/colour.h"
#include "base/picture.h"
#include "map/geometry.h"
#include "map/map_options.h"

namespace kestrel::map {

enum class PenStyle : std::uint8_t {
  Smooth,  ///< softened edges: what moves, and small shapes
  Solid,   ///< whole pixels: what stands
  Dotted   ///< whole pixels, one of three drawn, counted from the line's first end; arcs and circles are Solid then
};

/// A pen for one call.
struct Pen {
  base::Colour Color = 0;
  int DrawWidth = 1;  ///< pixels
  PenStyle Style = PenStyle::Smooth;
  bool Filled = false;  ///< circles, boxes and polygons are filled with Color as well
};

/// A font for one call, without its colour.
struct TextFont {
  std::string_view Name;
  float Size = 8;  ///< points
  bool Bold = false;
  bool Italic = false;
  bool Strike = false;
  bool Under = false;
};

struct TextSize {
  double Width = 0;   ///< surface units
  double Height = 0;  ///< surface units: one line, the step to the next line of print
};

/// Seam: what the map is drawn on. All positions and sizes in surface units (15 to a pixel, Y down); any finite value
/// is accepted, what lies outside is not drawn, what is no number is not drawn. Pen and font come with each call.
class Surface {
 public:
  virtual ~Surface() = default;
  /// Copies `from` of the picture, scaled, to the whole surface; what lies beyond the picture gets the background
  /// colour.
  virtual void CopyPicture(const base::Picture& picture, const SourceRect& from) = 0;
  virtual void Line(double x1, double y1, double x2, double y2, Pen pen) = 0;
  /// A circle; one of radius 0 is a dot.
  virtual void Circle(double x, double y, double radius, Pen pen) = 0;
  /// Part of a circle, degrees anticlockwise from east.
  virtual void Arc(double x, double y, double radius, double fromDegrees, double toDegrees, Pen pen) = 0;
  /// A box with two opposite corners, both of them pixels of its edge.
  virtual void Box(double x1, double y1, double x2, double y2, Pen pen) = 0;
  /// A closed polygon between whole pixels; of two points it is the line between them. Where edges cross, every second
  /// field is filled. With a corner that whole pixels of 32 bits cannot name, nothing of it is drawn.
  virtual void Polygon(std::span<const SurfacePoint> corners, Pen pen) = 0;
  /// Each two points as the polygon of two that they are: many thousands of lines in one pen. Not filled.
  virtual void Segments(std::span<const SurfacePoint> ends, Pen pen) {
    pen.Filled = false;
    for (std::size_t end = 0; end + 1 < ends.size(); end += 2) Polygon(ends.subspan(end, 2), pen);
  }
  /// A history dot: a disc of radius one pixel. Many thousands of them are drawn in one redraw.
  virtual void Dot(double x, double y, base::Colour color) = 0;
  /// History dots of one trail on what stands. Of two trails the one of the higher `rank` (from 1) lies above wherever
  /// they cross, whichever comes first, until CopyPicture begins another picture. Millions of them are drawn with a
  /// map.
  virtual void Dots(std::span<const SurfacePoint> at, base::Colour color, [[maybe_unused]] std::uint16_t rank) {
    for (const SurfacePoint& dot : at) Dot(dot.X, dot.Y, color);
  }
  virtual TextSize Measure(std::string_view text, const TextFont& font) = 0;
  /// One line of text, upper left corner at (x, y); code page bytes.
  virtual void Print(std::string_view text, double x, double y, const TextFont& font, base::Colour color) = 0;
  /// Keeps what is on the surface as MapSnapshot.
  virtual void Capture() = 0;
  /// Puts MapSnapshot back.
  virtual void Restore() = 0;
};

}  // namespace kestrel::map
