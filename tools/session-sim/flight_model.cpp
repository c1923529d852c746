#include "session-sim/flight_model.h"

#include <algorithm>
#include <cmath>

namespace kestrel::sim {
namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double Gravity = 9.80665;
constexpr double MetresPerSecond = 1852.0 / 3600.0;  ///< to a knot
constexpr double MetresPerUnit = 999.738;            ///< 3279.98 feet
constexpr double LongestStep = 0.5;                  ///< seconds

double Towards(double value, double aim, double most) { return value + std::clamp(aim - value, -most, most); }

/// An angle as one from -pi to pi.
double Wrapped(double angle) { return std::remainder(angle, 2 * Pi); }

void FlyStep(Motion& motion, const Goal& goal, const Limits& limits, double seconds) {
  motion.Speed = Towards(motion.Speed, std::clamp(goal.Speed, MinSpeed, MaxSpeed), limits.Acceleration * seconds);
  motion.Altitude = Towards(motion.Altitude, goal.Altitude, limits.Climb * seconds);
  const double wanted = std::atan2(goal.X - motion.X, goal.Y - motion.Y);
  const double rate = Gravity * std::tan(limits.Bank) / (motion.Speed * MetresPerSecond);
  motion.Heading = Wrapped(Towards(0, Wrapped(wanted - motion.Heading), rate * seconds) + motion.Heading);
  const double way = motion.Speed / 3600 * UnitsPerMile * seconds;
  motion.X += std::sin(motion.Heading) * way;
  motion.Y += std::cos(motion.Heading) * way;
}

}  // namespace

void Fly(Motion& motion, const Goal& goal, const Limits& limits, double seconds) {
  while (seconds > 0) {
    const double step = std::min(seconds, LongestStep);
    FlyStep(motion, goal, limits, step);
    seconds -= step;
  }
}

double TurnRadius(const Motion& motion, const Limits& limits) {
  const double speed = motion.Speed * MetresPerSecond;
  return speed * speed / (Gravity * std::tan(limits.Bank)) / MetresPerUnit;
}

double Distance(double ax, double ay, double bx, double by) {
  return std::sqrt((ax - bx) * (ax - bx) + (ay - by) * (ay - by));
}

Goal Formation(const Motion& wingman, const Motion& leader, double behind, double right) {
  const double ahead = std::sin(leader.Heading);
  const double up = std::cos(leader.Heading);
  const double slotX = leader.X - behind * ahead + right * up;
  const double slotY = leader.Y - behind * up - right * ahead;
  // He looks to a point before his place, or he would swing about it.
  const double lead = 3 + 0.5 * Distance(wingman.X, wingman.Y, slotX, slotY);
  const double lag = (slotX - wingman.X) * ahead + (slotY - wingman.Y) * up;
  return {slotX + lead * ahead, slotY + lead * up, leader.Altitude, leader.Speed + std::clamp(60 * lag, -80.0, 80.0)};
}

}  // namespace kestrel::sim
