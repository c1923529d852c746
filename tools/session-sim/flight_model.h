#pragma once

// How an aircraft moves: it turns with a limited bank, gathers speed and climbs at limited rates.
namespace kestrel::sim {

inline constexpr double FeetPerUnit = 3279.98;  ///< feet to a map unit
inline constexpr double UnitsPerMile = 1.852;   ///< map units to a nautical mile
inline constexpr double MinSpeed = 150;         ///< knots; nothing in the air is slower
inline constexpr double MaxSpeed = 700;         ///< knots

/// Where an aircraft is and how it moves. Y grows north.
struct Motion {
  double X = 0;         ///< map units
  double Y = 0;         ///< map units
  double Altitude = 0;  ///< feet
  double Heading = 0;   ///< radians clockwise from north
  double Speed = 0;     ///< knots over ground
};

/// Where it wants to be.
struct Goal {
  double X = 0;         ///< map units
  double Y = 0;         ///< map units
  double Altitude = 0;  ///< feet
  double Speed = 0;     ///< knots
};

struct Limits {
  double Bank = 0.8;        ///< radians
  double Acceleration = 6;  ///< knots a second
  double Climb = 90;        ///< feet a second, up and down
};

/// Moves towards `goal` for `seconds`.
void Fly(Motion& motion, const Goal& goal, const Limits& limits, double seconds);

/// Radius of its tightest turn, map units.
double TurnRadius(const Motion& motion, const Limits& limits);

/// Distance between two places, map units.
double Distance(double ax, double ay, double bx, double by);

/// The goal of a wingman: `behind` and `right` of the leader, map units, and faster or slower until he is there.
Goal Formation(const Motion& wingman, const Motion& leader, double behind, double right);

}  // namespace kestrel::sim
