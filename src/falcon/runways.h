#pragma once

#include <array>
#include <optional>
#include <string>

#include "falcon/object_tables.h"

namespace kestrel::falcon {

/// A place on the ground, feet from the objective.
struct RunwayPoint {
  double East = 0;
  double North = 0;
};

/// One direction of take-off and landing.
struct RunwayEnd {
  double Heading = 0;                 ///< degrees, 0 to 360
  std::optional<RunwayPoint> Begin;   ///< the threshold, where the direction begins; nothing when no point tells
  std::optional<RunwayPoint> FarEnd;  ///< where it ends
  std::string Name;                   ///< two digits and a side letter where another runway has the same: "09L"
};

/// The two runways of an objective, each with two ends; what is not there is empty.
using Runways = std::array<std::array<std::optional<RunwayEnd>, 2>, 2>;

/// The runways that the lists of points of a class of objectives tell. Only lists of kind 1 are ends: the outline of a
/// runway has the heading of one of its ends or none. A third end of a runway and a third runway are left out, and so
/// are ends whose heading is no number.
Runways CollectRunways(const ObjectTables& tables, const ObjectiveClass& objective);

/// The two digits of a heading of 0 to 360 degrees: tens of degrees, halves to the even ten; 36 for north.
std::string RunwayNumber(double heading);

/// Which of two parallel runway ends `a` is, seen along their common heading: "L", "R", or empty when they are in line
/// or their numbers differ.
std::string RunwaySide(const RunwayEnd& a, const RunwayEnd& b);

}  // namespace kestrel::falcon
