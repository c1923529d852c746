#include "map/plot_card.h"

#include <algorithm>
#include <cmath>

#include "map/ties.h"

namespace kestrel::map {
namespace {

constexpr std::string_view Unknown = "-";
constexpr double HourOfMilliseconds = 3'600'000;
/// From the pointer to the card, pixels.
constexpr double CardGap = 16;

std::string SpeedText(std::optional<double> knots) {
  return knots ? SafeFormat(*knots, "0") + " kt" : std::string(Unknown);
}

/// North is 360, as bearings have it.
std::string TrackText(std::optional<double> track) {
  if (!track) return std::string(Unknown);
  const double whole = std::round(*track);
  return SafeFormat(whole < 1 ? 360 : whole, "000");
}

std::string WayText(ViewPoint from, ViewPoint to) {
  const BearingAndRange way = BearingRange(from.X, from.Y, to.X, to.Y);
  return SafeFormat(way.Bearing, "000") + "/" + SafeFormat(way.Range, "0") + " NM";
}

std::optional<double> SpeedOf(const Ties& ties, const SeenAircraft& seen) {
  if (seen.Player != nullptr) return seen.Player->Speed;
  const std::optional<double> miles = ties.Tracks.MilesOf(seen.Plot->Name);
  if (!miles || !(ties.Cycle > 0)) return std::nullopt;
  return *miles * HourOfMilliseconds / ties.Cycle;
}

/// Beside the pointer on one axis.
double Beside(double pointer, double card, double room) {
  const double after = pointer + CardGap;
  if (after + card <= room) return after;
  return std::max(0.0, std::min(pointer - CardGap - card, room - card));
}

}  // namespace

std::optional<PlotCard> CardOf(const Scene& scene, const Ties& ties, Aircraft& who) {
  const std::optional<SeenAircraft> seen = FindAircraft(scene, ties.Tracks, who);
  if (!seen || !seen->Shown) return std::nullopt;
  const ViewState& view = scene.View;
  const ViewPoint at = ViewFromMap(view, seen->At);
  PlotCard card{.Title = ShortName(seen->Player != nullptr ? seen->Player->Name : seen->Plot->Name), .Rows = {}};
  if (card.Title.empty()) card.Title = Unknown;
  if (seen->Player != nullptr) card.Rows.push_back({"Callsign", ShortName(seen->Player->Label)});
  card.Rows.push_back({"Altitude", FeetText(seen->Facts.Altitude) + " ft"});
  card.Rows.push_back({"Speed", SpeedText(SpeedOf(ties, *seen))});
  card.Rows.push_back({"Track", TrackText(seen->Facts.Track)});
  card.Rows.push_back({"Bullseye", WayText({view.BullsViewX, view.BullsViewY}, at)});
  card.Rows.push_back({"Anchor", WayText({view.AnchorViewX, view.AnchorViewY}, at)});
  return card;
}

SurfacePoint CardPlace(SurfacePoint pointer, SurfacePoint card, SurfacePoint room) {
  return {Beside(pointer.X, card.X, room.X), Beside(pointer.Y, card.Y, room.Y)};
}

}  // namespace kestrel::map
