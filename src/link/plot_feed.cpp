#include "link/plot_feed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include "base/failure.h"
#include "base/numbers.h"
#include "link/fields.h"
#include "link/friendly_index.h"
#include "link/snapshot_names.h"

namespace kestrel::link {
namespace {

constexpr std::size_t PositionFieldLength = 12;
constexpr std::size_t AngleLength = 3;
constexpr double RadiansPerDegree = 3.14159265358979 / 180;

/// Characters from..from+count of `text`, as many as there are.
std::string_view Piece(std::string_view text, std::size_t from, std::size_t count) {
  return from < text.size() ? text.substr(from, count) : std::string_view();
}

double PositionNumber(std::string_view Position, std::size_t index) {
  return base::InvariantNumber(Piece(Position, index * PositionFieldLength, PositionFieldLength));
}

double Finite(double value) {
  if (!std::isfinite(value)) throw base::RuntimeFailure("the position is not finite");
  return value;
}

/// A jump across the map gives a speed beyond 16 bits: it is held there, so that the aircraft still moves.
std::int16_t HeldSpeed(double knots) {
  using Limits = std::numeric_limits<std::int16_t>;
  return base::ToInt16(std::clamp(knots, double{Limits::min()}, double{Limits::max()}));
}

/// Thousands of feet in two characters as hundreds: "35" gives 350. Three characters always fit 16 bits.
std::int16_t AIAltitude(std::string_view thousands) {
  char hundreds[3];
  const std::size_t length = thousands.copy(hundreds, 2);
  hundreds[length] = '0';
  return base::ToInt16(base::WholeNumberOrZero({hundreds, length + 1}));
}

struct Direction {
  double Sin;
  double Cos;
};

Direction DirectionOf(double degrees) {
  const double radians = degrees * RadiansPerDegree;
  return {std::sin(radians), std::cos(radians)};
}

/// DirectionOf from a table for the whole degrees of the circle, which is what servers send.
Direction KnownDirection(double degrees) {
  constexpr std::size_t circle = 360;
  static const std::array<Direction, circle> table = [] {
    std::array<Direction, circle> made;
    for (std::size_t i = 0; i < circle; ++i) made[i] = DirectionOf(static_cast<double>(i));
    return made;
  }();
  if (!(degrees >= 0 && degrees < circle)) return DirectionOf(degrees);
  const auto whole = static_cast<std::size_t>(degrees);
  return static_cast<double>(whole) == degrees ? table[whole] : DirectionOf(degrees);
}

/// X and Y from Bearing and Range. The way through surface units that the position is told by cancels out.
void PlaceAIPlot(theaters::DownPoint bullseye, AIPlotRecord& plot) {
  const Direction direction = KnownDirection(plot.Bearing);
  plot.X = static_cast<float>(bullseye.X + direction.Sin * plot.Range * MapUnitsPerMile);
  plot.Y = static_cast<float>(bullseye.Y - direction.Cos * plot.Range * MapUnitsPerMile);
}

AIHistoryPoint DotOf(const AIPlotRecord& plot, base::Colour AICOLOR) {
  return {plot.X, plot.Y, 1, plot.Hostile != 0 ? AICOLOR : FriendlyHistoryColour};
}

/// One record of the wire as it is drawn.
void ReadAIRecord(std::string_view record, theaters::DownPoint bullseye, AIPlotRecord& plot) {
  plot.Name = Piece(record, 0, AINameLength);
  plot.Bearing = base::WholeNumberOrZero(Piece(record, AINameLength, AngleLength));
  plot.Range = base::WholeNumberOrZero(Piece(record, AINameLength + AngleLength, AngleLength));
  plot.Altitude = AIAltitude(Piece(record, AINameLength + 2 * AngleLength, 2));
  PlaceAIPlot(bullseye, plot);
}

}  // namespace

void GetAWACSPosData(std::string_view Data, std::int32_t SyncInterval, Tables& tables) {
  const auto [idText, position] = FirstFields<2>(Data);
  const std::int16_t id = base::Int16FromText(idText);
  const double north = Finite(PositionNumber(position, 0) / FeetPerMapUnit);
  const double east = Finite(PositionNumber(position, 1) / FeetPerMapUnit);
  const std::int16_t altitude = base::ToInt16(std::floor(PositionNumber(position, 2) / 100));

  PlotRecord& client = tables.Clients[tables.FindClient(id)];
  client.History.Append({client.X, client.Y});
  // One update behind the position: this stands, and it is why a player appears with his second INDATA.
  client.PosText.Set(client.X, client.Y);
  client.X = east;
  client.Y = north;
  client.Speed = HeldSpeed(CalcSpeed(client, SyncInterval));
  client.Altitude = altitude;
}

double CalcSpeed(const PlotRecord& client, std::int32_t IntervalMs) {
  if (IntervalMs == 0 || client.PosText.empty()) return 0;
  const PlotPoint& last = client.History[client.History.UpperBound()];
  if (last.X == 0 && last.Y == 0) return 0;
  const double dX = client.X - last.X;
  const double dY = client.Y - last.Y;
  return std::sqrt(dX * dX + dY * dY) / MapUnitsPerMile * 3600 / (IntervalMs / 1000.0);
}

void IncreasePlotHistories(base::Colour AICOLOR, Tables& tables) {
  base::Table<AIHistoryPoint>& dots = tables.AIHistory;
  const std::span<AIHistoryPoint> live = dots.Live();
  std::size_t kept = 0;
  for (const AIHistoryPoint& dot : live) {
    if (dot.Age + 1 >= DroppedAge) continue;
    live[kept] = dot;
    ++live[kept++].Age;
  }
  // The new dots first take the places of the dropped ones.
  for (const AIPlotRecord& plot : tables.AIPlots.Live()) {
    if (kept < dots.UpperBound()) {
      dots[++kept] = DotOf(plot, AICOLOR);
    } else {
      dots.Append(DotOf(plot, AICOLOR));
      kept = dots.UpperBound();
    }
  }
  while (dots.UpperBound() > kept) dots.Remove(dots.UpperBound());
}

void ParseAI(std::string_view Data, theaters::DownPoint bullseye, Tables& tables) {
  // Read in sorted order: the table is the same as if it had been filled first and sorted then.
  const std::span<const SnapshotNames::Aircraft> aircraft = tables.LastSnapshot.Read(Data, tables.FriendlyList);
  tables.AIPlots[0] = {};
  tables.AIPlots.Resize(aircraft.size());
  AIPlotRecord* plot = tables.AIPlots.Live().data();
  for (const SnapshotNames::Aircraft& each : aircraft) {
    ReadAIRecord(Piece(Data, each.Record * AIRecordLength, AIRecordLength), bullseye, *plot);
    (plot++)->Hostile = each.Hostile;
  }
}

void PlaceAIPlots(theaters::DownPoint bullseye, Tables& tables) {
  HostileTest isHostile(tables.FriendlyList);
  for (AIPlotRecord& plot : tables.AIPlots.Live()) {
    PlaceAIPlot(bullseye, plot);
    plot.Hostile = isHostile(plot.Name);
  }
}

void AddPlotDots(base::Colour AICOLOR, Tables& tables) {
  for (const AIPlotRecord& plot : tables.AIPlots.Live()) tables.AIHistory.Append(DotOf(plot, AICOLOR));
}

bool HasShownPosition(const PlotRecord& client) { return client.PosText.IsPlace(); }

std::string XYToFeetStr(double X, double Y, double size) {
  std::string feet = base::FormatInvariant((size - Y) * FeetPerMapUnit, "0000000");
  base::AppendFormat(feet, X * FeetPerMapUnit, "0000000");
  return feet;
}

}  // namespace kestrel::link
