// One cycle of 1,000 players and 2,000 AI aircraft in one arrival, through the session (cut, parsed and applied;
// nothing drawn), against a bare loop that cuts the same bytes and converts the same numbers: with the same aircraft in
// each cycle and with some that come and go, with the log off and on. Then what a message costs beside more clients and
// behind longer histories, and what a client's leaving costs, the rows of the list among it. All ratios come from one
// run.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/debug_log.h"
#include "base/desktop.h"
#include "link/session.h"
#include "project_paths.h"
#include "shell/link/clients_models.h"

namespace {

using namespace kestrel;
using Clock = std::chrono::steady_clock;

constexpr int Players = 1000;
constexpr int AIAircraft = 2000;
constexpr int Cycles = 16;
/// Of the AI aircraft, in each cycle in which some come and go.
constexpr int Leaving = 20;
constexpr int Rounds = 400;

class StillDesktop final : public base::Desktop {
 public:
  base::Answer Ask(std::string_view, std::string_view, base::MessageIcon, base::MessageButtons, base::Answer) override {
    return base::Answer::Ok;
  }
  void LetEventsRun() override {}
  void Open(const std::string&, const std::string&, const std::string&) override {}
  std::optional<std::string> OpenFile(std::string_view, std::string_view, const std::string&,
                                      std::string_view) override {
    return std::nullopt;
  }
  std::optional<std::string> SaveFile(std::string_view, std::string_view, const std::string&,
                                      std::string_view) override {
    return std::nullopt;
  }
  std::optional<base::Colour> PickColour(base::Colour) override { return std::nullopt; }
  std::optional<base::FontRecord> PickFont(const base::FontRecord&, bool) override { return std::nullopt; }
};

class StillHost final : public link::SessionHost {
 public:
  std::optional<std::uint8_t> ChooseChannel(std::uint8_t present) override { return present; }
  void Refresh(base::Changed) override { ++Refreshes; }
  int Refreshes = 0;
};

/// A connected socket that hands out one text.
class TextSocket final : public link::Socket {
 public:
  void SetEvents(link::SocketEvents* receiver) override { events = receiver; }
  link::SocketState State() const override { return link::SocketState::Connected; }
  void Connect(const std::string&, std::int32_t) override {}
  void Send(std::string_view) override {}
  std::size_t Read(std::string& to, std::size_t limit) override {
    const std::size_t count = std::min(limit, left.size());
    to.append(left.substr(0, count));
    left.remove_prefix(count);
    return count;
  }
  void Close() override {}
  void Drop() override {}
  void Arrive(std::string_view bytes) {
    left = bytes;
    events->OnDataArrival();
  }

 private:
  link::SocketEvents* events = nullptr;
  std::string_view left;
};

struct World {
  base::SystemClock Time;
  base::DebugLog Log{Time};
  link::Capture Raw{Time};
  link::Options Options;
  link::SessionState State;
  link::Tables Tables;
  StillDesktop Desktop;
  StillHost Host;
  TextSocket Socket;
  link::Session Session{Socket, Desktop, Host, Log, Raw, State, Tables, Options};
};

/// A number as the wire has it: `pad` in front, blanks as the protocol tells it; zeros do as well.
std::string Number(double value, std::size_t width, int decimals, char pad) {
  char text[32];
  const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return std::string(width - std::min(width, static_cast<std::size_t>(length)), pad) + text;
}

std::string Joining(int players) {
  std::string text;
  for (int id = 1; id <= players; ++id) {
    text += "NEWCLT" + std::to_string(id) + "\x1ePilot" + std::to_string(id) + "\x1einfo\x1eO";
    text += '\0';
  }
  return text;
}

std::string Positions(int players, std::mt19937& random, char pad) {
  std::uniform_real_distribution<double> feet(0, 3'000'000);
  std::vector<int> ids;
  for (int id = 1; id <= players; ++id) ids.push_back(id);
  std::shuffle(ids.begin(), ids.end(), random);
  std::string text;
  for (const int id : ids) {
    text += "INDATA" + std::to_string(id) + "\x1e";
    text += Number(feet(random), 12, 2, pad) + Number(feet(random), 12, 2, pad) + Number(feet(random) / 60, 12, 2, pad);
    text += '\0';
  }
  return text;
}

/// Flights of four with names as the simulator gives them, in an order of the server's own that stays from cycle to
/// cycle.
std::vector<std::string> AINames(std::mt19937& random) {
  static const char* const calls[] = {"Viper",  "Cowboy", "Falcon", "Hound", "Jackal", "Lobo",  "Mig",    "Nomad",
                                      "Plasma", "Rambo",  "Saber",  "Tiger", "Uzi",    "Venom", "Weasel", "Zulu"};
  std::vector<std::string> names;
  for (int i = 0; i < AIAircraft; ++i) {
    const int flight = i / 4;
    std::string name = calls[flight % 16] + std::to_string(flight / 16 + 1) + std::to_string(i % 4 + 1);
    name.resize(10, ' ');
    names.push_back(name);
  }
  std::shuffle(names.begin(), names.end(), random);
  return names;
}

/// Some aircraft at random places are gone, and as many that were not there before have come.
void ComeAndGo(std::vector<std::string>& names, int cycle, std::mt19937& random) {
  for (int i = 0; i < Leaving; ++i) {
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(random() % names.size()));
    std::string name = "New" + std::to_string(cycle * Leaving + i) + "1";
    name.resize(10, ' ');
    names.insert(names.begin() + static_cast<std::ptrdiff_t>(random() % names.size()), name);
  }
}

std::string Snapshot(const std::vector<std::string>& names, std::mt19937& random, char pad) {
  std::uniform_int_distribution<int> bearing(0, 359), range(0, 400), altitude(0, 45);
  std::string text = "AILOCA";
  for (const std::string& name : names) {
    text += name + Number(bearing(random), 3, 0, pad) + Number(range(random), 3, 0, pad) +
            Number(altitude(random), 2, 0, pad);
  }
  text += '\0';
  return text;
}

double sink = 0;

template <class T>
void Convert(std::string_view text) {
  T value = 0;
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  std::from_chars(text.data(), text.data() + text.size(), value);
  sink += static_cast<double>(value);
}

/// The bare loop: cut at NUL, convert the same numbers behind their blanks.
void Bare(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\0');
    const std::string_view message = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
    const std::string_view data = message.substr(6);
    if (message.starts_with("INDATA")) {
      const std::size_t separator = data.find('\x1e');
      Convert<int>(data.substr(0, separator));
      for (std::size_t i = 0; i < 3; ++i) Convert<double>(data.substr(separator + 1 + i * 12, 12));
    } else if (message.starts_with("AILOCA")) {
      for (std::size_t at = 0; at + 18 <= data.size(); at += 18) {
        Convert<double>(data.substr(at + 10, 3));
        Convert<double>(data.substr(at + 13, 3));
        Convert<int>(data.substr(at + 16, 2));
      }
    }
  }
}

/// What a log costs at the least: the system takes the bytes of each message in a write of its own.
void BareWrites(std::string_view bytes, int file) {
  while (!bytes.empty()) {
    const std::string_view message = bytes.substr(0, bytes.find('\0'));
    sink += static_cast<double>(write(file, message.data(), message.size()));
    bytes.remove_prefix(message.size() + 1);
  }
}

double Microseconds(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

struct CycleRun {
  const char* Title;
  char Pad = ' ';  ///< in front of the numbers
  bool Changing = false;
  bool Logged = false;
  const char* Goal = "";
};

void OneCycle(const CycleRun& run) {
  std::mt19937 random(1);
  World world;
  for (int i = 1; i <= 64; ++i) world.Tables.FriendlyList.Append("Viper" + std::to_string(i));
  world.Socket.Arrive(Joining(Players));
  std::vector<std::string> names = AINames(random);
  std::vector<std::string> cycles;
  for (int i = 0; i < Cycles; ++i) {
    if (run.Changing) ComeAndGo(names, i, random);
    std::string cycle = Positions(Players, random, run.Pad) + Snapshot(names, random, run.Pad) + "SYNCRO";
    cycle += '\0';
    cycles.push_back(std::move(cycle));
  }
  const std::filesystem::path log =
      std::filesystem::path(KESTREL_BINARY_DIR) / ("bench-arrival-" + std::to_string(getpid()) + ".log");
  if (run.Logged) world.Log.Open(log);
  const std::filesystem::path other = log.string() + ".bare";
  const int file = run.Logged ? open(other.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666) : -1;
  std::vector<double> bare, whole, writes;
  for (int round = 0; round < Rounds; ++round) {
    const std::string& cycle = cycles[static_cast<std::size_t>(round % Cycles)];
    bare.push_back(Microseconds([&] { Bare(cycle); }));
    whole.push_back(Microseconds([&] { world.Socket.Arrive(cycle); }));
    if (file >= 0) writes.push_back(Microseconds([&] { BareWrites(cycle, file); }));
  }
  if (file >= 0) close(file);
  if (run.Logged) {
    std::filesystem::remove(other);
    world.Log.File.Close();
    std::filesystem::remove(log);
  }
  std::printf("%s (medians of %d):\n", run.Title, Rounds);
  std::printf("  bare loop %8.3f ms\n  session   %8.3f ms\n  ratio     %8.2f%s\n", Median(bare) / 1000,
              Median(whole) / 1000, Median(whole) / Median(bare), run.Goal);
  if (!writes.empty()) {
    std::printf("  a bare write for each message %.3f ms, %.2f of the bare loop\n", Median(writes) / 1000,
                Median(writes) / Median(bare));
  }
}

/// Nanoseconds for one INDATA with that many clients, each with that many earlier positions.
double MessageCost(int players, int history) {
  std::mt19937 random(2);
  World world;
  world.Socket.Arrive(Joining(players));
  for (link::PlotRecord& client : world.Tables.Clients.Live()) {
    client.History.Reserve(static_cast<std::size_t>(history) + 300);
    for (int i = 0; i < history; ++i) client.History.Append({1.0 * i, 2.0 * i});
  }
  std::vector<std::string> cycles;
  // As many different messages however few clients: the processor would learn a few by heart.
  const int repeats = std::max(1, 20000 / players);
  for (int i = 0; i < std::max(4, repeats); ++i) cycles.push_back(Positions(players, random, ' '));
  std::vector<double> costs;
  for (int round = 0; round < 20; ++round) {
    costs.push_back(Microseconds([&] {
      for (int i = 0; i < repeats; ++i) world.Socket.Arrive(cycles[static_cast<std::size_t>(i) % cycles.size()]);
    }));
    // Back to the length that is measured, outside of the timing.
    for (link::PlotRecord& client : world.Tables.Clients.Live()) {
      while (client.History.UpperBound() > static_cast<std::size_t>(history))
        client.History.Remove(client.History.UpperBound());
    }
  }
  return Median(costs) * 1000 / (1.0 * repeats * players);
}

/// Nanoseconds for each DELCLT when `leaving` of `players` leave, the first first, each in an arrival of its own that
/// is followed by the rows of the list.
double LeavingCost(int players, int leaving, int rounds) {
  std::vector<std::string> arrivals;
  for (int id = 1; id <= leaving; ++id) arrivals.push_back("DELCLT" + std::to_string(id) + '\0');
  std::vector<double> costs;
  for (int round = 0; round < rounds; ++round) {
    World world;
    shell::ClientsModel rows;
    world.Socket.Arrive(Joining(players));
    rows.Load(world.Tables);
    costs.push_back(Microseconds([&] {
      for (const std::string& arrival : arrivals) {
        world.Socket.Arrive(arrival);
        rows.Load(world.Tables);
      }
    }));
    sink += rows.rowCount();
  }
  return Median(costs) * 1000 / leaving;
}

/// The same of those who leave in one arrival.
double LeavingTogetherCost(int players, int rounds) {
  std::string arrival;
  for (int id = 1; id <= players; ++id) arrival += "DELCLT" + std::to_string(id) + '\0';
  std::vector<double> costs;
  for (int round = 0; round < rounds; ++round) {
    World world;
    world.Socket.Arrive(Joining(players));
    costs.push_back(Microseconds([&] { world.Socket.Arrive(arrival); }));
  }
  return Median(costs) * 1000 / players;
}

void OneByOne() {
  constexpr int few = 1000;
  constexpr int most = 32767;
  const double beside = LeavingCost(few, 500, 41);
  std::printf("one DELCLT of 500 one by one beside 1,000 clients %.0f ns; against it:\n", beside);
  std::printf("  beside 32,767 clients     ratio %.2f\n", LeavingCost(most, 500, 15) / beside);
  const double all = LeavingCost(most, most, 3);
  std::printf("  32,767 until none is left ratio %.2f   (%.0f ms in all)\n", all / beside, all * most / 1e6);
  const double together = LeavingTogetherCost(few, 41);
  std::printf("one DELCLT of 1,000 in one arrival %.0f ns; of 32,767 ratio %.2f\n", together,
              LeavingTogetherCost(most, 5) / together);
}

}  // namespace

int main() {
  std::printf("one cycle of %d players and %d AI aircraft:\n", Players, AIAircraft);
  OneCycle({.Title = "the same aircraft", .Goal = "   (goal: at most 1.5)"});
  OneCycle({.Title = "aircraft come and go", .Changing = true, .Goal = "   (goal: at most 2.5)"});
  OneCycle({.Title = "the same aircraft, log on", .Logged = true, .Goal = "   (goal: at most 4)"});
  OneCycle({.Title = "aircraft come and go, log on", .Changing = true, .Logged = true});
  OneCycle({.Title = "the same aircraft, numbers padded with zeros", .Pad = '0'});
  const double few = MessageCost(100, 10);
  std::printf("one INDATA beside 100 clients %.0f ns; against it:\n", few);
  std::printf("  1,000 clients             ratio %.2f\n", MessageCost(1000, 10) / few);
  std::printf("  10,000 clients            ratio %.2f\n", MessageCost(10000, 10) / few);
  std::printf("  10,000 earlier positions  ratio %.2f\n", MessageCost(100, 10000) / few);
  OneByOne();
  return sink == 0 ? 1 : 0;
}
