#pragma once

#include "sample-theater/raster.h"

namespace kestrel::land {

/// A colour in parts of full light, 0 to 1.
struct Rgb {
  double R = 0, G = 0, B = 0;
};
constexpr Rgb FromBytes(int red, int green, int blue) { return {red / 255.0, green / 255.0, blue / 255.0}; }
Rgb Blend(Rgb below, Rgb above, double part);
Rgb Scale(Rgb colour, double light);

/// A line between two pixel positions; its width in pixels at either end.
struct Stroke {
  double AX, AY, WidthA;
  double BX, BY, WidthB;
};

/// The coverage of strokes, 0 to 1, gathered first and painted once, so that joints and crossings do not darken.
class StrokeLayer {
 public:
  explicit StrokeLayer(int side) : cover(side, 0.0f) {}
  void Add(const Stroke& stroke);
  double At(int x, int y) const { return cover.At(x, y); }

 private:
  Raster<float> cover;
};

}  // namespace kestrel::land
