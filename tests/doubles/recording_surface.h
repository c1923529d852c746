#pragma once

#include <cmath>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "map/surface.h"

// A surface that draws nothing and keeps every call, so that tests compare calls and numbers.
namespace kestrel::test {

struct SurfaceCall {
  std::string What;
  std::vector<double> Numbers;
  base::Colour Color = 0;
  int DrawWidth = 0;
  std::string Text = {};
  map::PenStyle Style = map::PenStyle::Smooth;
  bool Filled = false;
};

inline bool operator==(const SurfaceCall& a, const SurfaceCall& b) {
  if (a.What != b.What || a.Text != b.Text || a.Color != b.Color || a.DrawWidth != b.DrawWidth) return false;
  if (a.Style != b.Style || a.Filled != b.Filled) return false;
  if (a.Numbers.size() != b.Numbers.size()) return false;
  for (std::size_t index = 0; index < a.Numbers.size(); ++index) {
    if (!(std::abs(a.Numbers[index] - b.Numbers[index]) <= 1e-6)) return false;
  }
  return true;
}

inline void PrintTo(const SurfaceCall& call, std::ostream* out) {
  *out << call.What;
  for (const double number : call.Numbers) *out << ' ' << number;
  *out << " colour " << call.Color << " width " << call.DrawWidth << " \"" << call.Text << '"';
  if (call.Style != map::PenStyle::Smooth) *out << (call.Style == map::PenStyle::Solid ? " solid" : " dotted");
  if (call.Filled) *out << " filled";
}

class RecordingSurface : public map::Surface {
 public:
  /// What every character measures, surface units.
  double CharacterWidth = 90;
  double LineHeight = 195;

  void CopyPicture(const base::Picture&, const map::SourceRect& from) override {
    Calls.push_back({"picture", {from.Left, from.Top, from.Width, from.Height}});
  }
  void Line(double x1, double y1, double x2, double y2, map::Pen pen) override { Keep("line", {x1, y1, x2, y2}, pen); }
  void Circle(double x, double y, double radius, map::Pen pen) override { Keep("circle", {x, y, radius}, pen); }
  void Arc(double x, double y, double radius, double from, double to, map::Pen pen) override {
    Keep("arc", {x, y, radius, from, to}, pen);
  }
  void Box(double x1, double y1, double x2, double y2, map::Pen pen) override { Keep("box", {x1, y1, x2, y2}, pen); }
  void Polygon(std::span<const map::SurfacePoint> corners, map::Pen pen) override {
    std::vector<double> numbers;
    for (const map::SurfacePoint& corner : corners) numbers.insert(numbers.end(), {corner.X, corner.Y});
    Keep("polygon", std::move(numbers), pen);
  }
  void Dot(double x, double y, base::Colour color) override { Calls.push_back({"dot", {x, y}, color}); }
  map::TextSize Measure(std::string_view text, const map::TextFont&) override {
    return {CharacterWidth * static_cast<double>(text.size()), LineHeight};
  }
  void Print(std::string_view text, double x, double y, const map::TextFont& font, base::Colour color) override {
    Calls.push_back({"print", {x, y}, color, 0, std::string(text)});
    LastFontName = font.Name;
    LastFontSize = font.Size;
    LastFont = font;
    LastFont.Name = {};
  }
  void Capture() override { Calls.push_back({"capture", {}}); }
  void Restore() override { Calls.push_back({"restore", {}}); }

  /// The calls of one kind.
  std::vector<SurfaceCall> Of(const std::string& what) const {
    std::vector<SurfaceCall> found;
    for (const SurfaceCall& call : Calls) {
      if (call.What == what) found.push_back(call);
    }
    return found;
  }

  std::vector<SurfaceCall> Calls;
  std::string LastFontName;
  float LastFontSize = 0;
  map::TextFont LastFont;  ///< without its name

 private:
  void Keep(const char* what, std::vector<double> numbers, map::Pen pen) {
    Calls.push_back({what, std::move(numbers), pen.Color, pen.DrawWidth, {}, pen.Style, pen.Filled});
  }
};

}  // namespace kestrel::test
