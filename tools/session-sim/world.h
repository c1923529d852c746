#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session-sim/flight_model.h"
#include "session-sim/random.h"

// The aircraft of a session and what they do. The same seed and the same steps give the same session.
namespace kestrel::sim {

/// Whose aircraft, and what a controller asks for. The values are those of the line protocol.
enum class Side : std::uint8_t { Both = 0, Blue = 1, Red = 2 };

/// Extent of the map on both axes, map units; nothing leaves it.
inline constexpr double MapSize = 1024;

struct WorldOptions {
  int Players = 12;  ///< places for players
  int AI = 48;       ///< AI aircraft
  std::uint64_t Seed = 1;
};

/// A player of the session.
struct Player {
  std::int16_t Id = 0;  ///< from 1; a player who comes back has a new one
  std::string Name;
  std::string Info;   ///< aircraft type
  char Status = 'O';  ///< 'O' flying, 'X' shot down, '-' on the ground
  Side Of = Side::Blue;
  Motion At;
};

struct AIAircraft {
  std::string Name;  ///< flight name and number in the flight, at most 10 characters
  Side Of = Side::Blue;
  Motion At;
};

class World {
 public:
  explicit World(const WorldOptions& options);

  /// Lets `seconds` pass.
  void Step(double seconds);

  /// Those who are in the session now.
  std::vector<Player> Players() const;
  const std::vector<AIAircraft>& AI() const { return ai; }

 private:
  enum class Phase { Away, Parked, Flying, Down };
  struct Seat {
    Player Who;
    Phase In = Phase::Away;
    double Left = 0;  ///< seconds in this phase
    Goal Aim;
  };
  /// Aircraft First .. First + Count - 1 of `ai`; the first one leads.
  struct Flight {
    std::size_t First = 0;
    std::size_t Count = 0;
    std::vector<Goal> Route;  ///< flown round and round; a single goal is followed by another one by chance
    std::size_t Leg = 0;
    Limits Can;
  };

  void AddFlights(int count);
  void AddFlight(Side side, const std::string& name, std::size_t count);
  void AddTanker(Side side, const std::string& name, double x, double y);
  Goal ChanceGoal(Side side);
  Motion ChanceStart(Side side);
  void MoveFlight(Flight& flight, double seconds);
  void MoveSeat(std::size_t index, double seconds);
  void NextPhase(std::size_t index);
  void TakeOff(Seat& seat);
  const Motion* LeaderOf(std::size_t index) const;

  Random random;
  std::vector<Seat> seats;
  std::vector<AIAircraft> ai;
  std::vector<Flight> flights;
  std::int16_t lastId = 0;
};

/// What a controller of `side` gets: its own players only, all of them for Both.
bool SeesPlayer(Side side, const Player& player);
/// Its own AI aircraft and those of the other side that its radar on the ground reaches; all for Both.
bool SeesAI(Side side, const AIAircraft& aircraft);

}  // namespace kestrel::sim
