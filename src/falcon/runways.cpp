#include "falcon/runways.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "base/numbers.h"

namespace kestrel::falcon {
namespace {

/// Points that are less far to the side of each other, feet, are in line.
constexpr double InLine = 0.01;

/// A heading turned into 0 to 360 degrees by whole turns, no more of them than needed.
double Turned(double heading) {
  if (heading >= 0 && heading <= 360) return heading;
  const double rest = std::fmod(heading, 360);
  if (heading > 0) return rest == 0 ? 360 : rest;
  return rest == 0 ? 0 : rest + 360;
}

RunwayEnd EndOf(const ObjectTables& tables, const PointHeader& header) {
  RunwayEnd end;
  end.Heading = Turned(header.Data);
  for (const ObjectPoint& point : PointsOf(tables, header)) {
    if (!IsPossibleOffset(point.East) || !IsPossibleOffset(point.North)) continue;
    // Of several of a kind the last one counts.
    if (point.Kind == ObjectPoint::Threshold) end.Begin = {point.East, point.North};
    if (point.Kind == ObjectPoint::FarEnd) end.FarEnd = {point.East, point.North};
  }
  return end;
}

bool IsUsed(const std::array<std::optional<RunwayEnd>, 2>& runway) {
  return std::any_of(runway.begin(), runway.end(), [](const auto& end) { return end.has_value(); });
}

void NameEnds(Runways& runways) {
  const bool both = IsUsed(runways[0]) && IsUsed(runways[1]);
  for (std::size_t runway = 0; runway < 2; ++runway) {
    for (auto& end : runways[runway]) {
      if (!end) continue;
      end->Name = RunwayNumber(end->Heading);
      if (!both) continue;
      for (const auto& other : runways[1 - runway]) {
        if (other) end->Name += RunwaySide(*end, *other);
      }
    }
  }
}

}  // namespace

std::string RunwayNumber(double heading) {
  const auto tens = static_cast<int>(base::RoundHalfEven(heading / 10));
  return base::FormatInvariant(tens == 0 ? 36 : tens, "00");
}

std::string RunwaySide(const RunwayEnd& a, const RunwayEnd& b) {
  if (RunwayNumber(a.Heading) != RunwayNumber(b.Heading) || !a.Begin || !b.Begin) return "";
  const double radians = a.Heading * std::numbers::pi / 180;
  const double alongEast = std::sin(radians), alongNorth = std::cos(radians);
  const double middleEast = (a.Begin->East + b.Begin->East) / 2, middleNorth = (a.Begin->North + b.Begin->North) / 2;
  const double cross = alongEast * (a.Begin->North - middleNorth) - (a.Begin->East - middleEast) * alongNorth;
  if (std::abs(cross) < InLine) return "";
  return cross > 0 ? "L" : "R";
}

Runways CollectRunways(const ObjectTables& tables, const ObjectiveClass& objective) {
  Runways runways;
  for (const PointHeader* const header : PointHeadersOf(tables, objective)) {
    const bool known = header->RunwayNumber >= 0 && header->RunwayNumber < static_cast<std::int32_t>(runways.size());
    if (header->Kind != PointHeader::Runway || !known || !std::isfinite(header->Data)) continue;
    auto& ends = runways[static_cast<std::size_t>(header->RunwayNumber)];
    const auto free = std::find(ends.begin(), ends.end(), std::nullopt);
    if (free != ends.end()) *free = EndOf(tables, *header);
  }
  NameEnds(runways);
  return runways;
}

}  // namespace kestrel::falcon
