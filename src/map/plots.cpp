#include "map/plots.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "base/numbers.h"
#include "link/plot_feed.h"
#include "map/fault_guard.h"
#include "map/label_places.h"
#include "map/trail_layer.h"

namespace kestrel::map {
namespace {

constexpr double AITrailShift = -60;  // the AI trail lies 4 pixels up and left of the true positions; this stands
// Percent.
constexpr double LeastLabelSize = 50;
constexpr double GreatestLabelSize = 300;

/// A number as the text of a label. Short enough to need no memory of its own.
std::string_view NumberText(std::string& text, double value, std::string_view pattern) {
  text.clear();
  base::AppendFormat(text, value, pattern);
  return text;
}

double SignOf(double value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

void DrawRealLabels(const Scene& scene, Surface& surface, const link::PlotRecord& plot, SurfacePoint at) {
  const TextFont font = LabelTextFont(scene.Labels);
  LabelNumbers numbers;
  const PlayerLines lines = LinesOf(plot, scene.Shown, numbers);
  std::array<TextSize, 5> sizes;
  double height = 0;
  for (std::size_t line = 0; line < lines.Count; ++line) {
    sizes[line] = surface.Measure(lines.All[line], font);
    height += sizes[line].Height;
  }
  double top = at.Y - height / 2;
  for (std::size_t line = 0; line < lines.Count; ++line) {
    surface.Print(lines.All[line], at.X - sizes[line].Width - RealLabelGap, top, font, plot.Color);
    top += sizes[line].Height;
  }
}

void DrawSpeedVector(Surface& surface, const link::PlotRecord& plot, SurfacePoint at) {
  const link::PlotPoint& before = plot.History[plot.History.UpperBound()];
  const double dX = plot.X - before.X;
  const double dY = plot.Y - before.Y;
  const float length = static_cast<float>(plot.Speed) / 10;  // pixels
  double vX = length * SignOf(dX);
  double vY = 0;
  if (dY != 0) {
    const double m = dX / dY;
    vY = length / std::sqrt(m * m + 1) * SignOf(dY);
    vX = vY * m;
  }
  surface.Line(at.X, at.Y, at.X + UnitsPerPixelX * vX, at.Y - UnitsPerPixelY * vY, {.Color = plot.Color});
}

/// What of the trail has not been laid down on what stands.
void DrawTrail(const Scene& scene, Surface& surface, std::size_t index) {
  const link::PlotRecord& plot = scene.Plots.Clients[index];
  const std::size_t top = plot.History.UpperBound();
  const std::size_t laid = scene.Trails != nullptr ? scene.Trails->Laid(index) : 0;
  const std::size_t first = plot.ShowAllHistory || top < RecentPoints ? laid + 1 : top - RecentPoints + 1;
  for (std::size_t number = first; number <= top; ++number) {
    const link::PlotPoint& point = plot.History[number];
    if (point.X == 0 || point.Y == 0) continue;
    DrawGuarded([&] {
      const SurfacePoint at = SurfaceFromMap(scene.View, {point.X, point.Y});
      surface.Dot(at.X, at.Y, plot.Color);
    });
  }
}

void DrawAISymbol(const Scene& scene, Surface& surface, bool hostile, SurfacePoint at) {
  if (!hostile) {
    surface.Arc(at.X, at.Y, SymbolRadius, 205, 335, {.Color = scene.Display.AICOLOR_FRIENDS});
    return;
  }
  const Pen pen{.Color = scene.LinkOptions.AICOLOR};
  surface.Line(at.X - SymbolRadius, at.Y + SymbolRadius, at.X, at.Y - SymbolRadius, pen);
  surface.Line(at.X, at.Y - SymbolRadius, at.X + SymbolRadius, at.Y + SymbolRadius, pen);
}

}  // namespace

TextFont LabelTextFont(const LabelFont& font) {
  return {.Name = LabelFont::Name, .Size = font.Size, .Bold = font.Bold, .Italic = font.Italic};
}

LabelFont SizedLabelFont(double percent) {
  LabelFont font;
  font.Size = static_cast<float>(
      font.Size * (percent > LeastLabelSize ? std::min(percent, GreatestLabelSize) : LeastLabelSize) / 100);
  return font;
}

PlayerLines LinesOf(const link::PlotRecord& plot, const LabelLines& shown, LabelNumbers& numbers) {
  PlayerLines lines;
  const auto add = [&lines](bool isShown, std::string_view text) {
    if (isShown) lines.All[lines.Count++] = text;
  };
  add(shown.Id, NumberText(numbers.Id, plot.ClientId, "0"));
  add(shown.Callsign, plot.Label);
  add(shown.Name, plot.Name);
  add(shown.Altitude, NumberText(numbers.Altitude, plot.Altitude, "000"));
  add(shown.Speed, NumberText(numbers.Speed, plot.Speed, "0"));
  return lines;
}

bool IsPlotShown(const link::PlotRecord& plot) {
  return plot.ClientId != 0 && plot.PlotVisible && plot.X != 0 && plot.Y != 0 && link::HasShownPosition(plot);
}

void RepositAllPlots(const Scene& scene, Surface& surface) {
  for (std::size_t index = 1; index <= scene.Plots.Clients.UpperBound(); ++index) {
    if (scene.Plots.Clients[index].ClientId != 0) DrawGuarded([&] { RepositPlot(scene, surface, index); });
  }
}

void RepositPlot(const Scene& scene, Surface& surface, std::size_t index) {
  if (index == 0 || !scene.Display.REALVISIBLE || !scene.Plots.Clients[index].PlotVisible) return;
  DrawRealPlot(scene, surface, index);
}

void DrawRealPlot(const Scene& scene, Surface& surface, std::size_t index) {
  const link::PlotRecord& plot = scene.Plots.Clients[index];
  // The trail of one that is not shown is drawn all the same.
  if (plot.X != 0 && plot.Y != 0 && link::HasShownPosition(plot)) {
    const SurfacePoint at = SurfaceFromMap(scene.View, {plot.X, plot.Y});
    surface.Circle(at.X, at.Y, SymbolRadius, {.Color = plot.Color});
    if (scene.Display.REALLABELSVISIBLE && scene.Apart == nullptr) DrawRealLabels(scene, surface, plot, at);
    DrawSpeedVector(surface, plot, at);
  }
  if (scene.Display.SHOWHISTORY) DrawTrail(scene, surface, index);
}

void DrawAIPlots(const Scene& scene, Surface& surface) {
  if (!scene.Display.AIVISIBLE) return;
  for (std::size_t index = 1; index <= scene.Plots.AIPlots.UpperBound(); ++index) {
    const link::AIPlotRecord& plot = scene.Plots.AIPlots[index];
    DrawGuarded([&] { DrawAIPlot(scene, surface, index, plot.X, plot.Y); });
  }
}

void DrawAIPlot(const Scene& scene, Surface& surface, std::size_t index, double x, double y) {
  const link::AIPlotRecord& plot = scene.Plots.AIPlots[index];
  const SurfacePoint at = SurfaceFromDown(scene.View, {x, y});
  const bool hostile = plot.Hostile != 0;
  if (scene.Apart != nullptr) return DrawAISymbol(scene, surface, hostile, at);
  const TextFont font = LabelTextFont(scene.Labels);
  const base::Colour colour = hostile ? scene.LinkOptions.AICOLOR : scene.Display.AICOLOR_FRIENDS;
  std::string altitude;
  TextSize size;
  SurfacePoint origin{at.X - AIBareBlock, at.Y - AIBareBlock};
  if (scene.Display.AILABELSVISIBLE) {
    NumberText(altitude, plot.Altitude, "000");
    size = surface.Measure(altitude, font);
    origin = {at.X - base::RoundHalfEven(size.Width + AILabelGap), at.Y - base::RoundHalfEven(size.Height / 2)};
  }
  DrawAISymbol(scene, surface, hostile, at);
  if (scene.Display.AILABELSVISIBLE) surface.Print(altitude, origin.X, origin.Y, font, colour);
  if (scene.Display.SHOWAINAMES) {
    // Under the altitude, or at the height of the origin where there is none.
    const double left = origin.X + size.Width - surface.Measure(plot.Name, font).Width;
    surface.Print(plot.Name, left, origin.Y + size.Height, font, colour);
  }
}

void CalculateAndDrawPlotHistories(const Scene& scene, Surface& surface) {
  if (!scene.Display.SHOWHISTORY) return;
  for (const link::AIHistoryPoint& point : scene.Plots.AIHistory.Live()) {
    DrawGuarded([&] {
      const SurfacePoint at = SurfaceFromDown(scene.View, {point.X, point.Y});
      surface.Dot(at.X + AITrailShift, at.Y + AITrailShift, point.Color);
    });
  }
}

}  // namespace kestrel::map
