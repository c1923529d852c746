#pragma once

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "map/navaid_layer.h"
#include "map/scene_fixture.h"

// On the surface of the fixture map point (512, 512) lies at (6000, 4500) and a map unit is 15 units; the surface is
// 12000 by 9000. A character is 90 units wide, a line 195 high.
namespace kestrel::map {

using test::SurfaceCall;
using Calls = std::vector<SurfaceCall>;

inline constexpr base::Colour Range = 0x010101;
inline constexpr base::Colour Icon = 0x020202;
inline constexpr base::Colour TacanText = 0x030303;
inline constexpr base::Colour IlsText = 0x040404;

inline SurfaceCall Solid(const char* what, std::vector<double> numbers, base::Colour color) {
  return {what, std::move(numbers), color, 1, {}, PenStyle::Solid, false};
}
inline SurfaceCall Dotted(std::vector<double> numbers, base::Colour color) {
  return {"line", std::move(numbers), color, 1, {}, PenStyle::Dotted, false};
}
inline SurfaceCall Text(const char* text, double x, double y, base::Colour color) {
  return {"print", {x, y}, color, 0, text};
}

/// Counts the texts that are measured; refuses to print one of them, and circles and polygons when told to.
class Watching : public test::RecordingSurface {
 public:
  TextSize Measure(std::string_view text, const TextFont& font) override {
    ++Measured;
    return RecordingSurface::Measure(text, font);
  }
  void Print(std::string_view text, double x, double y, const TextFont& font, base::Colour color) override {
    if (text == Refused) throw std::length_error("text");
    RecordingSurface::Print(text, x, y, font, color);
  }
  void Circle(double x, double y, double radius, Pen pen) override {
    if (RefusesShapes) throw std::bad_alloc();
    RecordingSurface::Circle(x, y, radius, pen);
  }
  void Line(double x1, double y1, double x2, double y2, Pen pen) override {
    if (RefusesShapes && pen.Style == PenStyle::Dotted) throw std::bad_alloc();
    RecordingSurface::Line(x1, y1, x2, y2, pen);
  }

  int Measured = 0;
  std::string Refused = "none";
  bool RefusesShapes = false;
};

class NavaidLayer : public testing::Test, protected test::SceneFixture {
 protected:
  NavaidLayer() {
    Display.AIRF_TACAN_RANGE_COL = Range;
    Display.AIRF_TACAN_COL = Icon;
    Display.AIRF_TACAN_ICO = 2;
    Display.TACAN_LABEL_FONT.Color = TacanText;
    Display.ILS_LABEL_FONT.Color = IlsText;
    Display.AIRF_ILS_COL = {11, 12, 13, 14};
  }

  const Calls& Drawn(void (*layer)(const map::Scene&, map::Surface&)) {
    Surface.Calls.clear();
    Surface.Measured = 0;
    layer(Scene(), Surface);
    return Surface.Calls;
  }
  std::string Texts() const {
    std::string all;
    for (const SurfaceCall& call : Surface.Calls) all += call.Text;
    return all;
  }

  Watching Surface;
};

}  // namespace kestrel::map
