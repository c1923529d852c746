#include "session-sim/world.h"

#include <algorithm>

#include "session-sim/names.h"

namespace kestrel::sim {
namespace {

/// Goals stay this far from the edges: room for the widest turn and a wingman outside of it.
constexpr double Rim = 70;
/// Leaders keep some speed in hand, so that wingmen can close up.
constexpr double SlowLeader = 260;
constexpr double FastLeader = 600;
constexpr double RadarReach = 360;
/// Ids above this one are never given out.
constexpr std::int16_t LastPlayerId = 30000;
/// The fewest AI aircraft among which there are tankers.
constexpr int EnoughForTankers = 12;

struct Spot {
  double X, Y;
};
/// Airfield and radar of each side.
constexpr Spot BlueBase = {330, 560};
constexpr Spot RedBase = {650, 600};
Spot BaseOf(Side side) { return side == Side::Blue ? BlueBase : RedBase; }

const Limits TankerLimits = {0.42, 2, 25};
/// Places of wingmen 2, 3 and 4, map units behind and to the right of the leader.
constexpr Spot Slots[] = {{1.5, 2.0}, {3.0, -3.0}, {4.5, -5.0}};

Side SideOf(int number) { return number % 2 == 0 ? Side::Blue : Side::Red; }

Motion BehindLeader(const Motion& leader, const Spot& slot) {
  const Goal place = Formation(leader, leader, slot.X, slot.Y);
  return {std::clamp(place.X, 1.0, MapSize - 1), std::clamp(place.Y, 1.0, MapSize - 1), leader.Altitude, leader.Heading,
          leader.Speed};
}

}  // namespace

World::World(const WorldOptions& options) : random(options.Seed) {
  AddFlights(options.AI);
  for (int k = 0; k < options.Players; ++k) {
    Seat seat;
    seat.Who.Name = std::string(Pilots[static_cast<std::size_t>(k) % Pilots.size()]);
    if (static_cast<std::size_t>(k) >= Pilots.size())
      seat.Who.Name += std::to_string(k / static_cast<int>(Pilots.size()) + 1);
    seat.Who.Of = SideOf(k / 2);
    seat.Who.Info = std::string(seat.Who.Of == Side::Blue ? BlueTypes[static_cast<std::size_t>(random.Whole(0, 3))]
                                                          : RedTypes[static_cast<std::size_t>(random.Whole(0, 3))]);
    seat.Who.Id = ++lastId;
    seat.Who.At = ChanceStart(seat.Who.Of);
    seat.Aim = ChanceGoal(seat.Who.Of);
    seat.In = Phase::Flying;
    seat.Left = random.Between(45, 500);
    seats.push_back(std::move(seat));
    const Motion* leader = LeaderOf(static_cast<std::size_t>(k));
    if (leader != nullptr) seats.back().Who.At = BehindLeader(*leader, Slots[0]);
  }
}

void World::AddFlights(int count) {
  if (count >= EnoughForTankers) {
    AddTanker(Side::Blue, std::string(BlueTankers[0]) + "1", 200, 480);
    AddTanker(Side::Red, std::string(RedTankers[0]) + "1", 840, 560);
    AddTanker(Side::Blue, std::string(BlueTankers[1]) + "1", 250, 760);
    AddTanker(Side::Red, std::string(RedTankers[1]) + "1", 800, 800);
    count -= 4;
  }
  for (int k = 0; count > 0; ++k) {
    const Side side = SideOf(k);
    const auto& names = side == Side::Blue ? BlueFlights : RedFlights;
    const auto turn = static_cast<std::size_t>(k / 2);
    std::string name(names[turn % names.size()]);
    // A second flight of a name is Viper2: its members are Viper21, Viper22.
    if (turn >= names.size()) name += std::to_string(turn / names.size() + 1);
    const int members = std::min(count, random.Chance(0.5) ? 4 : 2);
    AddFlight(side, name, static_cast<std::size_t>(members));
    count -= members;
  }
}

void World::AddFlight(Side side, const std::string& name, std::size_t count) {
  const Motion start = ChanceStart(side);
  flights.push_back({ai.size(), count, {ChanceGoal(side)}, 0, Limits()});
  for (std::size_t k = 0; k < count; ++k) {
    ai.push_back({name + std::to_string(k + 1), side, k == 0 ? start : BehindLeader(start, Slots[k - 1])});
  }
}

void World::AddTanker(Side side, const std::string& name, double x, double y) {
  constexpr double Leg = 70;
  constexpr double Across = 16;
  const double altitude = random.Between(20000, 26000);
  const double speed = random.Between(290, 330);
  std::vector<Goal> route;
  for (const Spot corner : {Spot{x, y}, Spot{x, y + Leg}, Spot{x + Across, y + Leg}, Spot{x + Across, y}}) {
    route.push_back({corner.X, corner.Y, altitude, speed});
  }
  flights.push_back({ai.size(), 1, route, 1, TankerLimits});
  ai.push_back({name, side, {x, y, altitude, 0, speed}});
}

Goal World::ChanceGoal(Side side) {
  const double width = 0.66 * MapSize;
  const double west = side == Side::Blue ? Rim : MapSize - width;
  const double east = side == Side::Blue ? width : MapSize - Rim;
  const double altitude = random.Chance(0.2) ? random.Between(9000, 14000) : random.Between(15000, 42000);
  return {random.Between(west, east), random.Between(Rim, MapSize - Rim), altitude,
          random.Between(SlowLeader, FastLeader)};
}

Motion World::ChanceStart(Side side) {
  const Goal place = ChanceGoal(side);
  return {place.X, place.Y, place.Altitude, random.Between(-3, 3), place.Speed};
}

void World::Step(double seconds) {
  for (Flight& flight : flights) MoveFlight(flight, seconds);
  for (std::size_t k = 0; k < seats.size(); ++k) MoveSeat(k, seconds);
}

void World::MoveFlight(Flight& flight, double seconds) {
  Motion& leader = ai[flight.First].At;
  Goal& goal = flight.Route[flight.Leg];
  Fly(leader, goal, flight.Can, seconds);
  // A place inside of the turn would be circled for ever, so near is near enough.
  const double near = 2 + 1.2 * TurnRadius(leader, flight.Can);
  if (Distance(leader.X, leader.Y, goal.X, goal.Y) < near) {
    if (flight.Route.size() == 1) {
      goal = ChanceGoal(ai[flight.First].Of);
    } else {
      flight.Leg = (flight.Leg + 1) % flight.Route.size();
    }
  }
  for (std::size_t k = 1; k < flight.Count; ++k) {
    Motion& wingman = ai[flight.First + k].At;
    const Spot& slot = Slots[k - 1];
    const Limits limits = {1.0, 10, 110};
    Fly(wingman, Formation(wingman, leader, slot.X, slot.Y), limits, seconds);
  }
}

/// Players of uneven place follow the one before them while both fly and are not far apart.
const Motion* World::LeaderOf(std::size_t index) const {
  if (index % 2 == 0) return nullptr;
  const Seat& leader = seats[index - 1];
  return leader.In == Phase::Flying ? &leader.Who.At : nullptr;
}

void World::MoveSeat(std::size_t index, double seconds) {
  Seat& seat = seats[index];
  seat.Left -= seconds;
  if (seat.Left <= 0) NextPhase(index);
  if (seat.In != Phase::Flying) return;
  const Motion* leader = LeaderOf(index);
  Motion& at = seat.Who.At;
  if (leader != nullptr && Distance(at.X, at.Y, leader->X, leader->Y) < 25) {
    Fly(at, Formation(at, *leader, Slots[0].X, Slots[0].Y), {1.0, 10, 110}, seconds);
    return;
  }
  const Limits limits;
  Fly(at, seat.Aim, limits, seconds);
  if (Distance(at.X, at.Y, seat.Aim.X, seat.Aim.Y) < 2 + 1.2 * TurnRadius(at, limits))
    seat.Aim = ChanceGoal(seat.Who.Of);
}

void World::TakeOff(Seat& seat) {
  const Spot base = BaseOf(seat.Who.Of);
  seat.Who.At = {base.X + random.Between(-3, 3), base.Y + random.Between(-3, 3), 600, random.Between(-3, 3), 160};
  seat.Aim = ChanceGoal(seat.Who.Of);
}

void World::NextPhase(std::size_t index) {
  Seat& seat = seats[index];
  switch (seat.In) {
    case Phase::Away:
      lastId = lastId == LastPlayerId ? std::int16_t{1} : static_cast<std::int16_t>(lastId + 1);
      seat.Who.Id = lastId;
      seat.In = Phase::Parked;
      seat.Left = random.Between(8, 25);
      break;
    case Phase::Parked:
      TakeOff(seat);
      seat.In = Phase::Flying;
      seat.Left = random.Between(120, 500);
      break;
    case Phase::Flying:
      seat.In = random.Chance(0.4) ? Phase::Down : Phase::Away;
      seat.Left = random.Between(15, 40);
      break;
    case Phase::Down:
      seat.In = Phase::Parked;
      seat.Left = random.Between(8, 20);
      break;
  }
  seat.Who.Status = seat.In == Phase::Flying ? 'O' : seat.In == Phase::Down ? 'X' : '-';
}

std::vector<Player> World::Players() const {
  std::vector<Player> present;
  for (const Seat& seat : seats) {
    if (seat.In != Phase::Away) present.push_back(seat.Who);
  }
  return present;
}

bool SeesPlayer(Side side, const Player& player) { return side == Side::Both || side == player.Of; }

bool SeesAI(Side side, const AIAircraft& aircraft) {
  if (side == Side::Both || side == aircraft.Of) return true;
  const Spot radar = BaseOf(side);
  return Distance(aircraft.At.X, aircraft.At.Y, radar.X, radar.Y) < RadarReach;
}

}  // namespace kestrel::sim
