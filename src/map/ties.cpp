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

constexpr double MarkRadius = 120;          ///< around the picked aircraft, surface units
constexpr double RingRadii[] = {240, 285};  ///< around the one that was looked for
constexpr double TextMargin = 45;           ///< between a text and its line, surface units
constexpr std::size_t LongestName = 40;     ///< in the log
constexpr double MillisecondsOfDay = 86'400'000;

/// A foreign name as a part of a line.
std::string Short(const Aircraft& aircraft) {
  std::string name = aircraft.Name.substr(0, LongestName);
  while (!name.empty() && name.back() == ' ') name.pop_back();
  for (char& letter : name) {
    if (static_cast<unsigned char>(letter) < ' ') letter = '?';
  }
  return name;
}

CallLine LineTo(const ViewState& view, const SeenAircraft& first, const SeenAircraft& second, base::Colour color) {
  if (!first.Shown || !second.Shown) return {.From = {}, .To = {}, .Text = {}, .Color = color, .Shown = false};
  return {first.At, second.At, CallText(view, first.At, second.At, second.Facts), color, true};
}

std::vector<std::string> FollowTied(const Scene& scene, base::Colour color, Ties& ties) {
  std::vector<std::string> ended;
  ties.Lines.clear();
  std::erase_if(ties.All, [&](Tie& tie) {
    const std::optional<SeenAircraft> first = FindAircraft(scene, ties.Tracks, tie.First);
    const std::optional<SeenAircraft> second = FindAircraft(scene, ties.Tracks, tie.Second);
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
  const std::optional<SeenAircraft> found = FindAircraft(scene, ties.Tracks, *ties.Picked);
  ties.PickedShown = found && found->Shown;
  if (!found) ties.Picked.reset();
}

void FollowRinged(const Scene& scene, Ties& ties) {
  if (ties.Ringed && !FindAircraft(scene, ties.Tracks, *ties.Ringed)) ties.Ringed.reset();
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
        LineTo(scene.View, Seen(scene, player), Seen(scene, ties.Tracks, *nearest), extras.THREATCOLOR));
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

std::vector<std::string> FollowTies(const Scene& scene, const Extras& extras, std::int32_t record, Ties& ties,
                                    SnapshotTimes times) {
  const bool follows = record == 0 || record == ties.Record + 1;
  const bool jumped = record != ties.Record && !follows;
  const bool fresh = ties.Tracks.Take(scene.Plots.AIPlots, follows);
  if (record == 0) {
    ties.Cycle = times.SyncInterval;
  } else if (fresh) {
    ties.Cycle = follows ? (times.RecordTime - ties.SnapshotTime) * MillisecondsOfDay : 0;
  }
  if (fresh || jumped) ties.SnapshotTime = times.RecordTime;
  ties.Record = record;
  ties.Color = extras.TIECOLOR;
  std::vector<std::string> ended = FollowTied(scene, extras.TIECOLOR, ties);
  FollowPicked(scene, ties);
  FollowRinged(scene, ties);
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
  const auto mark = [&](const Aircraft& marked, double radius) {
    DrawGuarded([&] {
      const SurfacePoint at = SurfaceFromMap(scene.View, marked.At);
      surface.Circle(at.X, at.Y, radius, {.Color = ties.Color});
    });
  };
  if (ties.Picked && ties.PickedShown) mark(*ties.Picked, MarkRadius);
  if (!ties.Ringed) return;
  for (const double radius : RingRadii) mark(*ties.Ringed, radius);
}

}  // namespace kestrel::map
