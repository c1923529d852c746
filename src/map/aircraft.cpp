#include "map/aircraft.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "base/text.h"
#include "link/plot_feed.h"

namespace kestrel::map {
namespace {

constexpr double FarthestPlace = 1e9;  ///< map units: beyond it there is no place

/// False for what no line can be drawn to.
bool IsPlace(MapPoint at) { return std::abs(at.X) < FarthestPlace && std::abs(at.Y) < FarthestPlace; }

double Distance(MapPoint a, MapPoint b) { return std::hypot(a.X - b.X, a.Y - b.Y); }

MapPoint PlaceOf(const link::PlotRecord& plot) { return {plot.X, plot.Y}; }
MapPoint PlaceOf(const Scene& scene, const link::AIPlotRecord& plot) { return {plot.X, scene.View.Size - plot.Y}; }

/// From its last two positions.
std::optional<double> TrackOf(const link::PlotRecord& plot) {
  const link::PlotPoint& before = plot.History[plot.History.UpperBound()];
  if (before.X == 0 && before.Y == 0) return std::nullopt;  // it had none before
  return DirectionFrom({before.X, before.Y}, PlaceOf(plot));
}

}  // namespace

bool HasPlace(const link::PlotRecord& plot) {
  return plot.ClientId != 0 && plot.X != 0 && plot.Y != 0 && link::HasShownPosition(plot) && IsPlace(PlaceOf(plot));
}

bool HasPlace(const Scene& scene, const link::AIPlotRecord& plot) { return IsPlace(PlaceOf(scene, plot)); }

// As DrawRealPlot has it.
bool IsShown(const Scene& scene, const link::PlotRecord& plot) {
  return scene.Display.REALVISIBLE && plot.PlotVisible && HasPlace(plot);
}

bool IsShown(const Scene& scene, const link::AIPlotRecord& plot) {
  return scene.Display.AIVISIBLE && HasPlace(scene, plot);
}

SeenAircraft Seen(const Scene& scene, const link::PlotRecord& plot) {
  return {.At = PlaceOf(plot),
          .Facts = {plot.Altitude, TrackOf(plot)},
          .Shown = IsShown(scene, plot),
          .Player = &plot,
          .Plot = nullptr};
}

SeenAircraft Seen(const Scene& scene, const SnapshotTracks& tracks, const link::AIPlotRecord& plot) {
  return {.At = PlaceOf(scene, plot),
          .Facts = {plot.Altitude, tracks.TrackOf(plot.Name)},
          .Shown = IsShown(scene, plot),
          .Player = nullptr,
          .Plot = &plot};
}

std::optional<SeenAircraft> FindAircraft(const Scene& scene, const SnapshotTracks& tracks, Aircraft& wanted) {
  std::optional<SeenAircraft> found;
  if (wanted.Real) {
    const std::size_t index = scene.Plots.FindClient(wanted.Id);
    if (index != 0) found = Seen(scene, scene.Plots.Clients[index]);
  } else {
    const link::AIPlotRecord* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
      if (plot.Name != wanted.Name) continue;
      const double distance = Distance(PlaceOf(scene, plot), wanted.At);
      if (nearest != nullptr && !(distance < least)) continue;
      nearest = &plot;
      least = distance;
    }
    if (nearest != nullptr) found = Seen(scene, tracks, *nearest);
  }
  if (found) wanted.At = found->At;
  return found;
}

Aircraft AircraftOf(const link::PlotRecord& plot) {
  return {.Real = true, .Id = plot.Id, .Name = plot.Name, .At = PlaceOf(plot)};
}

Aircraft AircraftOf(const Scene& scene, const link::AIPlotRecord& plot) {
  return {.Real = false, .Id = 0, .Name = plot.Name, .At = PlaceOf(scene, plot)};
}

std::optional<Aircraft> AircraftAt(const Scene& scene, SurfacePoint at, const std::optional<Aircraft>& last) {
  std::optional<Aircraft> nearest;
  double least = PickDistance;
  bool onLast = false;
  const auto consider = [&](MapPoint place, const auto& make) {
    const SurfacePoint shown = SurfaceFromMap(scene.View, place);
    const double distance = std::hypot(shown.X - at.X, shown.Y - at.Y);
    if (!(distance <= PickDistance)) return;
    Aircraft aircraft = make();
    if (last && aircraft == *last) {
      onLast = true;
      return;
    }
    if (nearest && !(distance < least)) return;
    least = distance;
    nearest = std::move(aircraft);
  };
  for (const link::PlotRecord& plot : scene.Plots.Clients.Live()) {
    if (IsShown(scene, plot)) consider(PlaceOf(plot), [&] { return AircraftOf(plot); });
  }
  for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
    if (IsShown(scene, plot)) consider(PlaceOf(scene, plot), [&] { return AircraftOf(scene, plot); });
  }
  return nearest || !onLast ? nearest : last;
}

std::string ShortName(std::string_view name, std::size_t most) {
  name = base::Trim(name);
  std::string text(name.substr(0, most));
  for (char& letter : text) {
    if (static_cast<unsigned char>(letter) < ' ' || letter == '\x7F') letter = ' ';
  }
  text = base::Trim(text);
  if (name.size() > most) text += "...";
  return text;
}

std::string FeetText(std::int16_t hundreds) {
  const std::int32_t feet = hundreds * 100;
  std::string text = std::to_string(std::abs(feet));
  for (std::size_t place = text.size(); place > 3; place -= 3) text.insert(place - 3, " ");
  return feet < 0 ? "-" + text : text;
}

}  // namespace kestrel::map
