#include "map/plot_find.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "map/ties.h"

namespace kestrel::map {
namespace {

bool HasText(std::string_view text, std::string_view wanted) {
  return wanted.empty() || base::Lower(text).find(wanted) != std::string::npos;
}

std::string FoundText(const link::PlotRecord& plot) {
  const std::string name = ShortName(plot.Name);
  const std::string callsign = ShortName(plot.Label);
  if (name.empty() || callsign.empty() || name == callsign) return name.empty() ? callsign : name;
  return name + " (" + callsign + ")";
}

}  // namespace

FoundPlots FindPlots(const Scene& scene, std::string_view typed) {
  const std::string wanted = base::Lower(base::Trim(typed));
  FoundPlots found;
  const auto take = [&found](const auto& make) {
    if (++found.Total <= MostFound) found.Shown.push_back(make());
  };
  for (const link::PlotRecord& plot : scene.Plots.Clients.Live()) {
    if (!HasPlace(plot) || (!HasText(plot.Name, wanted) && !HasText(plot.Label, wanted))) continue;
    take([&] { return FoundPlot{AircraftOf(plot), FoundText(plot)}; });
  }
  for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
    if (!HasPlace(scene, plot) || !HasText(plot.Name, wanted)) continue;
    take([&] { return FoundPlot{AircraftOf(scene, plot), ShortName(plot.Name)}; });
  }
  return found;
}

base::Changed ShowAircraft(const Scene& scene, Aircraft who, ViewState& view, Ties& ties) {
  const std::optional<SeenAircraft> seen = FindAircraft(scene, ties.Tracks, who);
  if (!seen) return base::Changed::Nothing;
  if (seen->Player != nullptr ? !HasPlace(*seen->Player) : !HasPlace(scene, *seen->Plot)) return base::Changed::Nothing;
  ties.Ringed = who;
  return ShowPart(view, who.At.X, who.At.Y, who.At.X, who.At.Y) | base::Changed::Plots;
}

bool EndRing(Ties& ties) {
  const bool was = ties.Ringed.has_value();
  ties.Ringed.reset();
  return was;
}

}  // namespace kestrel::map
