#include "session-sim/world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

#include "session-sim/encoder.h"

namespace kestrel::sim {
namespace {

constexpr WorldOptions Busy = {24, 96, 5};

std::string Picture(const World& world) {
  std::string text = AiLoca(world.AI(), {});
  for (const Player& player : world.Players()) text += PlsUpd(player) + InData(player, '.');
  return text;
}

void ExpectFlyable(const Motion& at, const std::string& name) {
  ASSERT_TRUE(at.X > 0 && at.X < MapSize && at.Y > 0 && at.Y < MapSize) << name << " at " << at.X << ", " << at.Y;
  ASSERT_TRUE(at.Speed >= MinSpeed && at.Speed <= MaxSpeed) << name << " flies " << at.Speed << " knots";
  ASSERT_TRUE(at.Altitude >= 0 && at.Altitude < 60000) << name << " at " << at.Altitude << " feet";
}

TEST(World, HoldsAsManyAircraftAsAsked) {
  for (const int count : {0, 1, 3, 11, 12, 13, 48, 500}) {
    const World world({count, count, 9});
    EXPECT_EQ(world.AI().size(), static_cast<std::size_t>(count));
    EXPECT_EQ(world.Players().size(), static_cast<std::size_t>(count));
  }
}

TEST(World, AnHourStaysOnTheMapAndWithinSpeeds) {
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    World world({24, 96, seed});
    for (int second = 0; second < 3600; ++second) {
      world.Step(1);
      for (const AIAircraft& aircraft : world.AI()) ExpectFlyable(aircraft.At, aircraft.Name);
      for (const Player& player : world.Players()) {
        if (player.Status == 'O') ExpectFlyable(player.At, player.Name);
      }
      if (HasFatalFailure()) return;
    }
  }
}

TEST(World, PositionsMoveAsFastAsTheSpeedTells) {
  World world(Busy);
  for (int second = 0; second < 600; ++second) {
    const auto before = world.AI();
    world.Step(1);
    for (std::size_t k = 0; k < before.size(); ++k) {
      const Motion& now = world.AI()[k].At;
      const double knots = Distance(before[k].At.X, before[k].At.Y, now.X, now.Y) / UnitsPerMile * 3600;
      ASSERT_NEAR(knots, (before[k].At.Speed + now.Speed) / 2, 15) << before[k].Name;
    }
  }
}

TEST(World, TurnsAreLimitedByTheBank) {
  World world(Busy);
  for (int second = 0; second < 600; ++second) {
    const auto before = world.AI();
    world.Step(1);
    for (std::size_t k = 0; k < before.size(); ++k) {
      const double turn = std::remainder(world.AI()[k].At.Heading - before[k].At.Heading, 2 * 3.14159265358979);
      // 1 radian of bank at the slowest speed.
      ASSERT_LE(std::fabs(turn), 9.81 * std::tan(1.0) / (MinSpeed * 0.514) + 0.01) << before[k].Name;
    }
  }
}

TEST(World, WingmenKeepTheirPlaces) {
  World world({0, 8, 3});
  const auto wingmanOf = [&](std::size_t k) {
    return world.AI()[k].Name.back() != '1' && world.AI()[k].Of == world.AI()[k - 1].Of;
  };
  for (int second = 0; second < 300; ++second) world.Step(1);
  int near = 0;
  int all = 0;
  for (int second = 0; second < 1800; ++second) {
    world.Step(1);
    for (std::size_t k = 1; k < world.AI().size(); ++k) {
      if (!wingmanOf(k)) continue;
      ++all;
      const Motion& a = world.AI()[k - 1].At;
      const Motion& b = world.AI()[k].At;
      near += Distance(a.X, a.Y, b.X, b.Y) < 15;
    }
  }
  EXPECT_GT(all, 0);
  EXPECT_GT(near, all * 9 / 10);
}

TEST(World, TankersStayAtTheirStation) {
  World world({0, 12, 2});
  const Motion start = world.AI()[0].At;
  ASSERT_EQ(world.AI()[0].Name, "Texaco1");
  double farthest = 0;
  for (int second = 0; second < 3600; ++second) {
    world.Step(1);
    const Motion& at = world.AI()[0].At;
    farthest = std::max(farthest, Distance(start.X, start.Y, at.X, at.Y));
  }
  EXPECT_GT(farthest, 60);
  EXPECT_LT(farthest, 110);
}

TEST(World, SameSeedGivesTheSameSession) {
  World a(Busy);
  World b(Busy);
  World other({Busy.Players, Busy.AI, Busy.Seed + 1});
  for (int second = 0; second < 900; ++second) {
    a.Step(1);
    b.Step(1);
    other.Step(1);
  }
  EXPECT_EQ(Picture(a), Picture(b));
  EXPECT_NE(Picture(a), Picture(other));
}

TEST(World, PlayersJoinChangeStatusAndLeave) {
  World world(Busy);
  std::map<std::int16_t, char> before;
  int joined = 0;
  int left = 0;
  std::set<std::string> changes;
  for (int second = 0; second < 1800; ++second) {
    world.Step(1);
    std::map<std::int16_t, char> now;
    for (const Player& player : world.Players()) EXPECT_TRUE(now.emplace(player.Id, player.Status).second);
    for (const auto& [id, status] : now) {
      const auto old = before.find(id);
      if (old == before.end()) {
        ++joined;
      } else if (old->second != status) {
        changes.insert({old->second, status});
      }
    }
    for (const auto& [id, status] : before) left += now.count(id) == 0;
    before = std::move(now);
  }
  EXPECT_GT(joined, Busy.Players);
  EXPECT_GT(left, 0);
  EXPECT_EQ(changes, (std::set<std::string>{"-O", "OX", "X-"}));
}

TEST(World, SidesSeeDifferentAircraftAndBothSeesAll) {
  const World world(Busy);
  int onlyBlue = 0;
  int onlyRed = 0;
  for (const Player& player : world.Players()) {
    EXPECT_TRUE(SeesPlayer(Side::Both, player));
    EXPECT_NE(SeesPlayer(Side::Blue, player), SeesPlayer(Side::Red, player));
  }
  for (const AIAircraft& aircraft : world.AI()) {
    EXPECT_TRUE(SeesAI(Side::Both, aircraft));
    EXPECT_TRUE(SeesAI(aircraft.Of, aircraft));
    onlyBlue += !SeesAI(Side::Red, aircraft);
    onlyRed += !SeesAI(Side::Blue, aircraft);
  }
  EXPECT_GT(onlyBlue, 0);
  EXPECT_GT(onlyRed, 0);
}

TEST(World, NamesFitARecordAndDiffer) {
  const World world({0, 1000, 1});
  std::set<std::string> names;
  for (const AIAircraft& aircraft : world.AI()) {
    EXPECT_LE(aircraft.Name.size(), 10u) << aircraft.Name;
    EXPECT_TRUE(names.insert(aircraft.Name).second) << aircraft.Name;
  }
}

}  // namespace
}  // namespace kestrel::sim
