#pragma once

#include <cstdint>
#include <iosfwd>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "session-sim/options.h"
#include "session-sim/outbox.h"
#include "session-sim/sockets.h"
#include "session-sim/world.h"

namespace kestrel::sim {

/// Most bytes that wait for one reader; one that lets more come together is dropped.
inline constexpr std::size_t QueueLimit = 8 << 20;

/// Serves a session to any number of controllers, in one thread, which has the toolkit's event loop.
class Server {
 public:
  /// Listens at once. `report` gets a line for each connect, close and received command. std::runtime_error when
  /// the port cannot be had.
  Server(const Options& options, std::ostream& report, std::size_t queueLimit = QueueLimit);

  std::uint16_t Port() const { return listener.Port(); }
  /// Waits at most `most` for something to do and does it. False once the session is over and all is sent.
  bool Step(std::chrono::nanoseconds most);
  /// Ends the session: DISCON to all controllers. Step goes on until they have it, for a short time at most.
  void End();
  std::size_t Connections() const { return connections.size(); }

 private:
  struct Connection {
    int Number = 0;
    Socket On;
    Outbox Out;
    std::string In;
    bool Announced = false;
    Side Watches = Side::Both;
    std::map<std::int16_t, Player> Known;  ///< players that it has been told of
    Random Chances;
    Clock::time_point Since;  ///< connect
    Clock::time_point AnnouncedAt;
    bool Ending = false;  ///< nothing more is added; closed once all is sent
    bool EndSent = false;
    Clock::time_point EndLimit;  ///< closed then in any case
    bool Gone = false;
  };

  void AcceptNew(Clock::time_point now);
  void ReadFrom(Connection& connection, Clock::time_point now);
  void Obey(Connection& connection, const std::string& message, Clock::time_point now);
  void WriteTo(Connection& connection, Clock::time_point now);
  void Cycle(Clock::time_point now);
  void KeepTimes(Connection& connection, Clock::time_point now);
  std::vector<std::string> RosterChanges(Connection& connection) const;
  std::vector<std::string> CycleMessages(Connection& connection) const;
  void Queue(Connection& connection, std::vector<std::string> messages, Clock::time_point now);
  void StartEnding(Connection& connection, Clock::time_point now);
  void Close(Connection& connection, const char* why);
  Clock::time_point NextEvent() const;

  Options options;
  std::ostream& report;
  std::size_t queueLimit;
  Listener listener;
  World world;
  std::list<Connection> connections;
  int lastNumber = 0;
  Clock::time_point start;
  Clock::time_point nextCycle;
  bool over = false;
};

}  // namespace kestrel::sim
