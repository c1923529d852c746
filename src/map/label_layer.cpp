#include "map/label_layer.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "map/fault_guard.h"
#include "map/plots.h"

namespace kestrel::map {
namespace {

/// From a plot to the end of the line to its label, surface units.
constexpr double LeaderStart = 90;
/// Between its other end and the label, surface units.
constexpr double LeaderMargin = 30;
/// A shorter line is left out: the label stands at the symbol. Surface units.
constexpr double ShortestLeader = 45;

std::string_view WithoutBlanks(std::string_view name) {
  const std::size_t last = name.find_last_not_of(' ');
  return name.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

}  // namespace

void LabelLayer::Draw(const Scene& scene, Surface& surface) {
  font = LabelTextFont(scene.Labels);
  const ViewState& view = scene.View;
  places.Begin(view.SurfaceWidth, view.SurfaceHeight, view.Resolution);
  // What is said stays where it is while more is added.
  texts.resize(std::max(texts.size(), scene.Plots.Clients.UpperBound() + scene.Plots.AIPlots.UpperBound()));
  if (scene.Display.REALVISIBLE) AddPlayers(scene, surface);
  if (scene.Display.AIVISIBLE) AddAircraft(scene, surface);
  places.Arrange(surface, font);
  const std::vector<Label>& labels = places.Labels();
  for (const bool fixed : {false, true}) {
    for (std::size_t index = 0; index < labels.size(); ++index) {
      if (labels[index].Fixed == fixed) DrawGuarded([&] { DrawLabel(surface, index); });
    }
  }
}

void LabelLayer::AddPlayers(const Scene& scene, Surface& surface) {
  for (std::size_t index = 1; index <= scene.Plots.Clients.UpperBound(); ++index) {
    const link::PlotRecord& plot = scene.Plots.Clients[index];
    if (!IsPlotShown(plot)) continue;
    DrawGuarded([&] {
      const SurfacePoint at = SurfaceFromMap(scene.View, {plot.X, plot.Y});
      places.AddSymbol(at);
      if (!scene.Display.REALLABELSVISIBLE) return;
      Lines& lines = NextLines();
      const PlayerLines said = LinesOf(plot, scene.Shown, lines.Numbers);
      for (lines.Count = 0; lines.Count < said.Count; ++lines.Count) lines.All[lines.Count] = {said.All[lines.Count]};
      if (lines.Count == 0) return;
      Add(scene, surface, lines,
          {.At = at,
           .Gap = RealLabelGap,
           .Name = WithoutBlanks(plot.Label.empty() ? plot.Name : plot.Label),
           .Altitude = plot.Altitude,
           .Color = plot.Color,
           .Real = true,
           .TellsName = scene.Shown.Callsign || scene.Shown.Name,
           .TellsAltitude = scene.Shown.Altitude,
           .Fixed = index == scene.SelectedPlot});
    });
  }
}

void LabelLayer::AddAircraft(const Scene& scene, Surface& surface) {
  const bool altitudes = scene.Display.AILABELSVISIBLE;
  const bool names = scene.Display.SHOWAINAMES;
  for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
    DrawGuarded([&] {
      const SurfacePoint at = SurfaceFromDown(scene.View, {plot.X, plot.Y});
      places.AddSymbol(at);
      if (!altitudes && !names) return;
      Lines& lines = NextLines();
      lines.Count = 0;
      const std::string_view name = WithoutBlanks(plot.Name);
      if (altitudes) {
        lines.Numbers.Altitude.clear();
        base::AppendFormat(lines.Numbers.Altitude, plot.Altitude, "000");
        lines.All[lines.Count++] = {lines.Numbers.Altitude};
      }
      if (names) lines.All[lines.Count++] = {name};
      Add(scene, surface, lines,
          {.At = at,
           .Gap = altitudes ? AILabelGap : AIBareBlock,
           .Rise = altitudes ? 0 : AIBareBlock,
           .Name = name,
           .Altitude = plot.Altitude,
           .Color = plot.Hostile != 0 ? scene.LinkOptions.AICOLOR : scene.Display.AICOLOR_FRIENDS,
           .TellsName = names,
           .TellsAltitude = altitudes});
    });
  }
}

void LabelLayer::Add(const Scene& scene, Surface& surface, Lines& lines, Label label) {
  for (std::size_t line = 0; line < lines.Count; ++line) {
    const TextSize size = surface.Measure(lines.All[line].Text, font);
    lines.All[line].Width = size.Width;
    lines.Height = size.Height;
    label.Width = std::max(label.Width, size.Width);
    label.Height += size.Height;
  }
  // A player's stands in the middle of his plot's height; of an AI aircraft's its altitude does.
  if (label.Rise == 0) label.Rise = (label.Real ? label.Height : lines.Height) / 2;
  const double reach = label.Gap + label.Width;
  const ViewState& view = scene.View;
  const bool seen = std::abs(label.At.X - view.SurfaceWidth / 2) < view.SurfaceWidth / 2 + reach &&
                    std::abs(label.At.Y - view.SurfaceHeight / 2) < view.SurfaceHeight / 2 + label.Height;
  if (seen) places.AddLabel(label);
}

void LabelLayer::DrawLabel(Surface& surface, std::size_t index) {
  const Label& label = places.Labels()[index];
  const bool isJoined = label.Partner != Label::Alone;
  if (isJoined || !label.IsBeside()) DrawLeader(surface, label, label.Area);
  if (!label.HasArea()) return;
  if (isJoined) {
    joined.clear();
    AppendJoinedText(label, places.Labels()[label.Partner], joined);
    surface.Print(joined, label.Area.Left, label.Area.Top, font, label.Color);
    return;
  }
  const Lines& lines = texts[index];
  double top = label.Area.Top;
  for (std::size_t line = 0; line < lines.Count; ++line) {
    const double left = label.Area.Left + (label.Width - lines.All[line].Width) * label.Alignment();
    surface.Print(lines.All[line].Text, left, top, font, label.Color);
    top += lines.Height;
  }
}

void LabelLayer::DrawLeader(Surface& surface, const Label& label, const Box& to) {
  const double x = std::clamp(label.At.X, to.Left, to.Right) - label.At.X;
  const double y = std::clamp(label.At.Y, to.Top, to.Bottom) - label.At.Y;
  const double length = std::hypot(x, y);
  if (!(length >= LeaderStart + ShortestLeader + LeaderMargin)) return;
  const double start = LeaderStart / length;
  const double end = 1 - LeaderMargin / length;
  surface.Line(label.At.X + x * start, label.At.Y + y * start, label.At.X + x * end, label.At.Y + y * end,
               {.Color = label.Color});
}

void DrawLabelsApart(const Scene& scene, Surface& surface) {
  if (scene.Apart != nullptr) scene.Apart->Draw(scene, surface);
}

}  // namespace kestrel::map
