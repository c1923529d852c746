#include "session-sim/server.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "session-sim/encoder.h"
#include "session-sim/faults.h"

namespace kestrel::sim {
namespace {

constexpr std::size_t MostConnections = 64;
/// A command of a controller is 7 bytes; one that sends this much without an end is no controller.
constexpr std::size_t LongestCommand = 4096;
constexpr auto EndTime = std::chrono::seconds(2);
/// Between two pieces of a cut message, so that they arrive apart.
constexpr std::chrono::nanoseconds PieceGap = std::chrono::milliseconds(1);
/// Part of a cycle over which the pieces of its messages are spread at most.
constexpr double PiecesPart = 0.6;

std::chrono::nanoseconds Seconds(double seconds) {
  return std::chrono::nanoseconds(static_cast<std::int64_t>(seconds * 1e9));
}

/// Control bytes as \xNN, so that a line stays a line.
std::string Printable(std::string_view text) {
  constexpr char Hex[] = "0123456789abcdef";
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 32 && byte < 127) {
      shown += c;
    } else {
      shown += {'\\', 'x', Hex[byte >> 4], Hex[byte & 15]};
    }
  }
  return shown;
}

}  // namespace

Server::Server(const Options& given, std::ostream& lines, std::size_t limit)
    : options(given),
      report(lines),
      queueLimit(limit),
      listener(given.Port),
      world(given.World),
      start(Clock::now()),
      nextCycle(start + std::chrono::milliseconds(given.PeriodMs)) {}

bool Server::Step(std::chrono::nanoseconds most) {
  std::vector<const Socket*> open;
  for (const Connection& connection : connections) open.push_back(&connection.On);
  WaitFor(listener, open, std::min(most, std::chrono::nanoseconds(NextEvent() - Clock::now())));
  const auto now = Clock::now();
  for (Connection& connection : connections) ReadFrom(connection, now);
  AcceptNew(now);
  if (options.DurationS && !over && now >= start + Seconds(*options.DurationS)) End();
  if (!over && now >= nextCycle) Cycle(now);
  for (Connection& connection : connections) {
    KeepTimes(connection, now);
    WriteTo(connection, now);
  }
  connections.remove_if([](const Connection& connection) { return connection.Gone; });
  return !over || !connections.empty();
}

void Server::End() {
  if (over) return;
  over = true;
  const auto now = Clock::now();
  for (Connection& connection : connections) StartEnding(connection, now);
}

void Server::AcceptNew(Clock::time_point now) {
  while (auto socket = listener.Accept()) {
    if (over || connections.size() >= MostConnections) continue;
    ++lastNumber;
    Connection connection{.Number = lastNumber,
                          .On = std::move(*socket),
                          .Out = {},
                          .In = {},
                          .Known = {},
                          .Chances = Random(options.World.Seed * 1000003 + static_cast<std::uint64_t>(lastNumber)),
                          .Since = now,
                          .AnnouncedAt = {},
                          .EndLimit = {}};
    connections.push_back(std::move(connection));
    report << "connection " << lastNumber << " opened" << std::endl;
  }
}

void Server::ReadFrom(Connection& connection, Clock::time_point now) {
  const auto arrived = connection.On.Receive();
  if (!arrived) {
    Close(connection, "closed by the peer");
    return;
  }
  connection.In += *arrived;
  std::size_t from = 0;
  for (std::size_t end; (end = connection.In.find('\0', from)) != std::string::npos && !connection.Gone;
       from = end + 1) {
    Obey(connection, connection.In.substr(from, end - from), now);
  }
  connection.In.erase(0, from);
  if (connection.In.size() > LongestCommand && !connection.Gone) Close(connection, "dropped: no end of its command");
}

void Server::Obey(Connection& connection, const std::string& message, Clock::time_point now) {
  report << "connection " << connection.Number << " received " << Printable(message) << std::endl;
  if (message == "AWAEND") {
    Close(connection, "ended");
  } else if (message == "NAWACS0" || message == "NAWACS1" || message == "NAWACS2") {
    connection.Watches = static_cast<Side>(message.back() - '0');
    if (!connection.Announced) connection.AnnouncedAt = now;
    connection.Announced = true;
    if (!connection.Ending) Queue(connection, RosterChanges(connection), now);
  }
}

void Server::WriteTo(Connection& connection, Clock::time_point now) {
  while (!connection.Gone && !connection.Out.Empty() && connection.Out.Due() <= now) {
    const auto sent = connection.On.Send(connection.Out.Front());
    if (!sent) Close(connection, "lost");
    if (!sent || *sent == 0) return;
    connection.Out.Taken(*sent);
    // Pieces are to arrive apart, however late this turn comes.
    if (options.Split) return;
  }
  if (!connection.Gone && connection.Ending && !connection.EndSent && connection.Out.Empty()) {
    connection.On.EndSending();
    connection.EndSent = true;
  }
}

void Server::KeepTimes(Connection& connection, Clock::time_point now) {
  if (connection.Gone) return;
  if (options.DropAfterS && now >= connection.Since + Seconds(*options.DropAfterS)) {
    Close(connection, "dropped as asked");
  } else if (connection.Ending && now >= connection.EndLimit) {
    Close(connection, "closed");
  } else if (options.DisconAfterS && connection.Announced && !connection.Ending &&
             now >= connection.AnnouncedAt + Seconds(*options.DisconAfterS)) {
    StartEnding(connection, now);
  }
}

void Server::StartEnding(Connection& connection, Clock::time_point now) {
  if (connection.Ending || connection.Gone) return;
  if (connection.Announced) Queue(connection, {DisCon()}, now);
  connection.Ending = true;
  connection.EndLimit = now + EndTime;
}

void Server::Close(Connection& connection, const char* why) {
  connection.Gone = true;
  report << "connection " << connection.Number << " " << why << std::endl;
}

void Server::Cycle(Clock::time_point now) {
  world.Step(options.PeriodMs / 1000.0);
  for (Connection& connection : connections) {
    if (connection.Announced && !connection.Ending && !connection.Gone)
      Queue(connection, CycleMessages(connection), now);
  }
  nextCycle += std::chrono::milliseconds(options.PeriodMs);
  // After a pause of the whole process the cycles that were missed are not made up for.
  if (nextCycle < now) nextCycle = now + std::chrono::milliseconds(options.PeriodMs);
}

std::vector<std::string> Server::RosterChanges(Connection& connection) const {
  std::vector<std::string> messages;
  std::map<std::int16_t, Player> present;
  for (const Player& player : world.Players()) {
    if (SeesPlayer(connection.Watches, player)) present.emplace(player.Id, player);
  }
  for (const auto& [id, player] : connection.Known) {
    if (present.count(id) == 0) messages.push_back(DelClt(id));
  }
  for (const auto& [id, player] : present) {
    const auto known = connection.Known.find(id);
    if (known == connection.Known.end()) {
      messages.push_back(NewClt(player));
    } else if (known->second.Status != player.Status) {
      messages.push_back(PlsUpd(player));
    }
  }
  connection.Known = std::move(present);
  return messages;
}

std::vector<std::string> Server::CycleMessages(Connection& connection) const {
  std::vector<std::string> messages = RosterChanges(connection);
  for (const auto& [id, player] : connection.Known) {
    if (player.Status == 'O') messages.push_back(InData(player, options.DecimalComma ? ',' : '.'));
  }
  std::vector<AIAircraft> seen;
  for (const AIAircraft& aircraft : world.AI()) {
    if (SeesAI(connection.Watches, aircraft)) seen.push_back(aircraft);
  }
  messages.push_back(AiLoca(seen, options.Bullseye));
  messages.push_back(Syncro());
  return messages;
}

void Server::Queue(Connection& connection, std::vector<std::string> messages, Clock::time_point now) {
  std::vector<std::string> sends = MixGarbage(std::move(messages), options.GarbagePercent, connection.Chances);
  if (options.Burst && sends.size() > 1) {
    std::string all;
    for (const std::string& message : sends) all += message;
    sends = {std::move(all)};
  }
  std::chrono::nanoseconds gap(0);
  if (options.Split) {
    std::vector<std::string> pieces;
    for (const std::string& message : sends) {
      for (std::string& piece : CutAtRandom(message, connection.Chances)) pieces.push_back(std::move(piece));
    }
    sends = std::move(pieces);
    const auto whole = Seconds(options.PeriodMs / 1000.0 * PiecesPart);
    gap = std::min(PieceGap, whole / static_cast<std::int64_t>(std::max<std::size_t>(1, sends.size())));
  }
  for (std::string& piece : sends) {
    connection.Out.Add(std::move(piece), now);
    now += gap;
  }
  if (connection.Out.Bytes() > queueLimit) Close(connection, "dropped: it does not read what it is sent");
}

Clock::time_point Server::NextEvent() const {
  Clock::time_point next = nextCycle;
  if (over) next = Clock::now() + std::chrono::milliseconds(20);
  if (options.DurationS && !over) next = std::min(next, start + Seconds(*options.DurationS));
  for (const Connection& connection : connections) {
    // Without room the wait itself reports when there is some.
    if (!connection.Out.Empty() && connection.On.HasRoom()) next = std::min(next, connection.Out.Due());
    if (connection.Ending) next = std::min(next, connection.EndLimit);
    if (options.DropAfterS) next = std::min(next, connection.Since + Seconds(*options.DropAfterS));
    if (options.DisconAfterS && connection.Announced && !connection.Ending) {
      next = std::min(next, connection.AnnouncedAt + Seconds(*options.DisconAfterS));
    }
  }
  return next;
}

}  // namespace kestrel::sim
