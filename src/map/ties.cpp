#include "map/ties.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <span>
#include <utility>

#include "link/plot_feed.h"
#include "map/fault_guard.h"
#include "map/units.h"

namespace kestrel::map {
namespace {

constexpr double MarkRadius = 120;       ///< around the picked aircraft, surface units
constexpr double TextMargin = 45;        ///< between a text and its line, surface units
constexpr double FarthestPlace = 1e9;    ///< map units: beyond it there is no place
constexpr std::size_t LongestName = 40;  ///< in the log

/// An aircraft as the tables have it now.
struct Found {
  MapPoint At;
  CallFacts Facts;
  bool Shown = false;
};

/// False for what no line can be drawn to.
bool IsPlace(MapPoint at) { return std::abs(at.X) < FarthestPlace && std::abs(at.Y) < FarthestPlace; }

double Distance(MapPoint a, MapPoint b) { return std::hypot(a.X - b.X, a.Y - b.Y); }

MapPoint PlaceOf(const link::PlotRecord& plot) { return {plot.X, plot.Y}; }
MapPoint PlaceOf(const Scene& scene, const link::AIPlotRecord& plot) { return {plot.X, scene.View.Size - plot.Y}; }

/// As DrawRealPlot has it.
bool IsShown(const Scene& scene, const link::PlotRecord& plot) {
  return scene.Display.REALVISIBLE && plot.PlotVisible && plot.ClientId != 0 && plot.X != 0 && plot.Y != 0 &&
         link::HasShownPosition(plot) && IsPlace(PlaceOf(plot));
}

bool IsShown(const Scene& scene, const link::AIPlotRecord& plot) {
  return scene.Display.AIVISIBLE && IsPlace(PlaceOf(scene, plot));
}

/// From its last two positions.
std::optional<double> TrackOf(const link::PlotRecord& plot) {
  const link::PlotPoint& before = plot.History[plot.History.UpperBound()];
  if (before.X == 0 && before.Y == 0) return std::nullopt;  // it had none before
  return DirectionFrom({before.X, before.Y}, PlaceOf(plot));
}

Found FoundAs(const Scene& scene, const link::PlotRecord& plot) {
  return {PlaceOf(plot), {plot.Altitude, TrackOf(plot)}, IsShown(scene, plot)};
}

Found FoundAs(const Scene& scene, const SnapshotTracks& tracks, const link::AIPlotRecord& plot) {
  return {PlaceOf(scene, plot), {plot.Altitude, tracks.TrackOf(plot.Name)}, IsShown(scene, plot)};
}

/// Nothing when it is gone; its place is noted otherwise.
std::optional<Found> Find(const Scene& scene, const SnapshotTracks& tracks, Aircraft& wanted) {
  std::optional<Found> found;
  if (wanted.Real) {
    const std::size_t index = scene.Plots.FindClient(wanted.Id);
    if (index != 0) found = FoundAs(scene, scene.Plots.Clients[index]);
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
    if (nearest != nullptr) found = FoundAs(scene, tracks, *nearest);
  }
  if (found) wanted.At = found->At;
  return found;
}

/// A foreign name as a part of a line.
std::string Short(const Aircraft& aircraft) {
  std::string name = aircraft.Name.substr(0, LongestName);
  while (!name.empty() && name.back() == ' ') name.pop_back();
  for (char& letter : name) {
    if (static_cast<unsigned char>(letter) < ' ') letter = '?';
  }
  return name;
}

/// Feet with a blank before each three digits.
std::string FeetText(std::int16_t hundreds) {
  const std::int32_t feet = hundreds * 100;
  std::string text = std::to_string(std::abs(feet));
  for (std::size_t place = text.size(); place > 3; place -= 3) text.insert(place - 3, " ");
  return feet < 0 ? "-" + text : text;
}

CallLine LineTo(const ViewState& view, const Found& first, const Found& second, base::Colour color) {
  if (!first.Shown || !second.Shown) return {.From = {}, .To = {}, .Text = {}, .Color = color, .Shown = false};
  return {first.At, second.At, CallText(view, first.At, second.At, second.Facts), color, true};
}

std::vector<std::string> FollowTied(const Scene& scene, base::Colour color, Ties& ties) {
  std::vector<std::string> ended;
  ties.Lines.clear();
  std::erase_if(ties.All, [&](Tie& tie) {
    const std::optional<Found> first = Find(scene, ties.Tracks, tie.First);
    const std::optional<Found> second = Find(scene, ties.Tracks, tie.Second);
    if (first && second) {
      ties.Lines.push_back(LineTo(scene.View, *first, *second, color));
      return false;
    }
    ended.push_back("A tie has ended: " + Short(tie.First) + " to " + Short(tie.Second) + ", " +
                    Short(first ? tie.Second : tie.First) + " is gone");
    return true;
  });
  return ended;
}

void FollowPicked(const Scene& scene, Ties& ties) {
  if (!ties.Picked) return;
  const std::optional<Found> found = Find(scene, ties.Tracks, *ties.Picked);
  ties.PickedShown = found && found->Shown;
  if (!found) ties.Picked.reset();
}

void FollowThreats(const Scene& scene, const Extras& extras, Ties& ties) {
  ties.Threats.clear();
  const double range = extras.THREATRANGE * link::MapUnitsPerMile;
  if (!extras.THREATRING || !(range >= 0)) return;
  std::vector<const link::AIPlotRecord*> hostile;
  for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
    if (plot.Hostile != 0 && IsShown(scene, plot)) hostile.push_back(&plot);
  }
  for (const link::PlotRecord& player : scene.Plots.Clients.Live()) {
    if (!IsShown(scene, player)) continue;
    const link::AIPlotRecord* nearest = nullptr;
    double least = range * range;
    for (const link::AIPlotRecord* plot : hostile) {
      const double dX = plot->X - player.X;
      const double dY = scene.View.Size - plot->Y - player.Y;
      const double square = dX * dX + dY * dY;
      // Of two that are equally near the first counts; one at the very edge counts too.
      if (square > least || (square == least && nearest != nullptr)) continue;
      least = square;
      nearest = plot;
    }
    if (nearest == nullptr) continue;
    ties.Threats.push_back(
        LineTo(scene.View, FoundAs(scene, player), FoundAs(scene, ties.Tracks, *nearest), extras.THREATCOLOR));
  }
}

/// A line as it stands on the surface.
struct Placed {
  SurfacePoint From, To;
  double HalfX = 0, HalfY = 0;  ///< from From to the middle
  double Behind = 0;            ///< how much of each half its text covers; from 1 on there is no room for it
  double Left = 0, Top = 0;     ///< of the text
  TextSize Size;
};

TextFont CallFont(const Scene& scene) {
  return {.Name = LabelFont::Name, .Size = scene.Labels.Size, .Bold = scene.Labels.Bold, .Italic = scene.Labels.Italic};
}

Placed Place(const Scene& scene, Surface& surface, const CallLine& line) {
  Placed at;
  at.From = SurfaceFromMap(scene.View, line.From);
  at.To = SurfaceFromMap(scene.View, line.To);
  at.HalfX = (at.To.X - at.From.X) / 2;
  at.HalfY = (at.To.Y - at.From.Y) / 2;
  at.Size = surface.Measure(line.Text, CallFont(scene));
  const auto part = [](double room, double way) { return way == 0 ? 1 : (room / 2 + TextMargin) / std::abs(way); };
  at.Behind = std::min(part(at.Size.Width, at.HalfX), part(at.Size.Height, at.HalfY));
  at.Left = at.From.X + at.HalfX - at.Size.Width / 2;
  at.Top = at.From.Y + at.HalfY - at.Size.Height / 2;
  // On a line that is too short for it the text stands above the middle.
  if (at.Behind >= 1) at.Top -= at.Size.Height / 2 + TextMargin;
  return at;
}

/// The line leaves room for its text where it can.
void DrawLine(const Scene& scene, Surface& surface, const CallLine& line) {
  if (!line.Shown) return;
  const Placed at = Place(scene, surface, line);
  const Pen pen{.Color = line.Color};
  if (at.Behind < 1) {
    const double shownX = at.HalfX * (1 - at.Behind);
    const double shownY = at.HalfY * (1 - at.Behind);
    surface.Line(at.From.X, at.From.Y, at.From.X + shownX, at.From.Y + shownY, pen);
    surface.Line(at.To.X - shownX, at.To.Y - shownY, at.To.X, at.To.Y, pen);
  } else if (at.HalfX != 0 || at.HalfY != 0) {
    surface.Line(at.From.X, at.From.Y, at.To.X, at.To.Y, pen);
  }
  surface.Print(line.Text, at.Left, at.Top, CallFont(scene), line.Color);
}

/// The uppermost tie whose text is there, from 0.
std::optional<std::size_t> TextAt(const Scene& scene, Surface& surface, SurfacePoint at, const Ties& ties) {
  for (std::size_t index = ties.Lines.size(); index-- > 0;) {
    if (!ties.Lines[index].Shown) continue;
    const Placed text = Place(scene, surface, ties.Lines[index]);
    const double x = at.X - text.Left;
    const double y = at.Y - text.Top;
    if (x >= 0 && y >= 0 && x <= text.Size.Width && y <= text.Size.Height) return index;
  }
  return std::nullopt;
}

/// The nearest that is shown within PickDistance. The picked one counts only where there is no other.
std::optional<Aircraft> AircraftAt(const Scene& scene, SurfacePoint at, const std::optional<Aircraft>& picked) {
  std::optional<Aircraft> nearest;
  double least = PickDistance;
  bool onPicked = false;
  const auto consider = [&](Aircraft aircraft) {
    const SurfacePoint place = SurfaceFromMap(scene.View, aircraft.At);
    const double distance = std::hypot(place.X - at.X, place.Y - at.Y);
    if (!(distance <= PickDistance)) return;
    if (picked && aircraft == *picked) {
      onPicked = true;
      return;
    }
    if (nearest && !(distance < least)) return;
    least = distance;
    nearest = std::move(aircraft);
  };
  for (const link::PlotRecord& plot : scene.Plots.Clients.Live()) {
    if (IsShown(scene, plot)) consider({.Real = true, .Id = plot.Id, .Name = plot.Name, .At = PlaceOf(plot)});
  }
  for (const link::AIPlotRecord& plot : scene.Plots.AIPlots.Live()) {
    if (IsShown(scene, plot)) consider({.Real = false, .Id = 0, .Name = plot.Name, .At = PlaceOf(scene, plot)});
  }
  return nearest || !onPicked ? nearest : picked;
}

}  // namespace

std::string_view AspectOf(MapPoint first, MapPoint second, std::optional<double> track) {
  const std::optional<double> way = DirectionFrom(second, first);
  if (!track || !way) return "manoeuvring";
  const double turned = std::abs(*track - *way);
  const double angle = std::min(turned, 360 - turned);
  struct Sector {
    double End;  ///< degrees
    std::string_view Name;
  };
  static constexpr Sector sectors[] = {{30, "hot"}, {60, "flank"}, {120, "beam"}};
  constexpr double hair = 1e-6;  // what sines leave of a whole degree
  for (const Sector& sector : sectors) {
    if (angle <= sector.End + hair) return sector.Name;
  }
  return "drag";
}

std::string CallText(const ViewState& view, MapPoint first, MapPoint second, const CallFacts& facts) {
  const ViewPoint from = ViewFromMap(view, first);
  const ViewPoint to = ViewFromMap(view, second);
  const BearingAndRange there = BearingRange(from.X, from.Y, to.X, to.Y);
  std::string text = "BRAA " + SafeFormat(there.Bearing, "000") + "/" + SafeFormat(there.Range, "0") + ", ";
  text.append(FeetText(facts.Altitude)).append(", ").append(AspectOf(first, second, facts.Track));
  return text;
}

std::vector<std::string> FollowTies(const Scene& scene, const Extras& extras, std::int32_t record, Ties& ties) {
  ties.Tracks.Take(scene.Plots.AIPlots, record == 0 || record == ties.Record + 1);
  ties.Record = record;
  ties.Color = extras.TIECOLOR;
  std::vector<std::string> ended = FollowTied(scene, extras.TIECOLOR, ties);
  FollowPicked(scene, ties);
  FollowThreats(scene, extras, ties);
  return ended;
}

TiePress PressTies(const Scene& scene, Surface& surface, SurfacePoint at, Ties& ties) {
  // A text is long and may lie over aircraft, which are small.
  std::optional<Aircraft> pressed = AircraftAt(scene, at, ties.Picked);
  if (!pressed) {
    const std::optional<std::size_t> text = TextAt(scene, surface, at, ties);
    if (!text) return {};
    const auto index = static_cast<std::ptrdiff_t>(*text);
    ties.All.erase(ties.All.begin() + index);
    ties.Lines.erase(ties.Lines.begin() + index);
    return {.Taken = true};
  }
  if (!ties.Picked) {
    ties.Picked = std::move(pressed);
    return {.Taken = true};
  }
  const Tie tie{*std::exchange(ties.Picked, std::nullopt), *std::move(pressed)};
  const auto same = [&tie](const Tie& other) { return other.First == tie.First && other.Second == tie.Second; };
  if (tie.First == tie.Second || std::any_of(ties.All.begin(), ties.All.end(), same)) return {.Taken = true};
  if (ties.All.size() >= MostTies) {
    return {.Taken = true, .Note = "There are " + std::to_string(MostTies) + " ties already: no other is made"};
  }
  ties.All.push_back(tie);
  return {.Taken = true};
}

bool ClearTies(Ties& ties) {
  if (ties.All.empty() && !ties.Picked) return false;
  ties.All.clear();
  ties.Lines.clear();
  ties.Picked.reset();
  return true;
}

void DrawTies(const Scene& scene, Surface& surface) {
  if (scene.Tied == nullptr) return;
  const Ties& ties = *scene.Tied;
  for (const CallLine& line : ties.Threats) DrawGuarded([&] { DrawLine(scene, surface, line); });
  for (const CallLine& line : ties.Lines) DrawGuarded([&] { DrawLine(scene, surface, line); });
  if (!ties.Picked || !ties.PickedShown) return;
  DrawGuarded([&] {
    const SurfacePoint at = SurfaceFromMap(scene.View, ties.Picked->At);
    surface.Circle(at.X, at.Y, MarkRadius, {.Color = ties.Color});
  });
}

}  // namespace kestrel::map
