#include "session-sim/options.h"

#include <charconv>
#include <functional>
#include <stdexcept>
#include <string_view>

#include "sample-theater/facts.h"

namespace kestrel::sim {
namespace {

template <typename T>
T NumberFrom(const std::string& option, std::string_view text, T low, T high) {
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= low && value <= high)) {
    throw std::invalid_argument(option + ": \"" + std::string(text) + "\" is no number that it takes");
  }
  return value;
}

BullseyePoint PointFrom(const std::string& option, std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) throw std::invalid_argument(option + " takes X,Y");
  return {NumberFrom(option, text.substr(0, comma), -MapSize, 2 * MapSize),
          NumberFrom(option, text.substr(comma + 1), -MapSize, 2 * MapSize)};
}

struct Entry {
  std::string_view Name;
  std::string_view Value;  ///< what stands for the value in the help; empty for a switch
  std::string_view Help;
  std::function<void(Options&, const std::string& name, const std::string& value)> Set;
};

constexpr double Day = 86400;

const std::vector<Entry>& Entries() {
  static const std::vector<Entry> entries = {
      {"--port", "N", "port to listen on (5556); 0 picks a free one",
       [](Options& o, const auto& n, const auto& v) { o.Port = NumberFrom<std::uint16_t>(n, v, 0, 65535); }},
      {"--players", "N", "places for players (12)",
       [](Options& o, const auto& n, const auto& v) { o.World.Players = NumberFrom(n, v, 0, 2000); }},
      {"--ai", "N", "AI aircraft (48)",
       [](Options& o, const auto& n, const auto& v) { o.World.AI = NumberFrom(n, v, 0, 20000); }},
      {"--period-ms", "N", "time of a cycle (1000)",
       [](Options& o, const auto& n, const auto& v) { o.PeriodMs = NumberFrom(n, v, 1, 3600000); }},
      {"--seed", "N", "another session for another number (1)",
       [](Options& o, const auto& n, const auto& v) { o.World.Seed = NumberFrom<std::uint64_t>(n, v, 0, UINT64_MAX); }},
      {"--duration-s", "S", "end the session after S seconds (never)",
       [](Options& o, const auto& n, const auto& v) { o.DurationS = NumberFrom(n, v, 0.0, Day); }},
      {"--bullseye", "X,Y", "what AI records are relative to, map units, Y to the north (the sample theater's first)",
       [](Options& o, const auto& n, const auto& v) { o.Bullseye = PointFrom(n, v); }},
      {"--split", "", "cut messages at random bytes over several sends",
       [](Options& o, const auto&, const auto&) { o.Split = true; }},
      {"--burst", "", "send all messages of a cycle at once",
       [](Options& o, const auto&, const auto&) { o.Burst = true; }},
      {"--garbage", "PERCENT", "malformed messages before so many of 100 good ones (0)",
       [](Options& o, const auto& n, const auto& v) { o.GarbagePercent = NumberFrom(n, v, 0, 100); }},
      {"--decimal-comma", "", "positions with a comma for the point",
       [](Options& o, const auto&, const auto&) { o.DecimalComma = true; }},
      {"--discon-after-s", "S", "end each controller's session with DISCON S seconds after its NAWACS (never)",
       [](Options& o, const auto& n, const auto& v) { o.DisconAfterS = NumberFrom(n, v, 0.0, Day); }},
      {"--drop-after-s", "S", "close each connection without a word S seconds after its start (never)",
       [](Options& o, const auto& n, const auto& v) { o.DropAfterS = NumberFrom(n, v, 0.0, Day); }},
      {"--help", "", "this text", [](Options& o, const auto&, const auto&) { o.Help = true; }},
  };
  return entries;
}

const Entry& Find(const std::string& name) {
  for (const Entry& entry : Entries()) {
    if (entry.Name == name) return entry;
  }
  throw std::invalid_argument(name + " is no option; --help lists them");
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& words) {
  Options options;
  options.Bullseye = {static_cast<double>(land::Bullseyes[0].X), static_cast<double>(land::Bullseyes[0].Y)};
  for (std::size_t k = 0; k < words.size(); ++k) {
    const Entry& entry = Find(words[k]);
    const std::string& name = words[k];
    if (!entry.Value.empty() && k + 1 == words.size()) throw std::invalid_argument(name + " takes a value");
    entry.Set(options, name, entry.Value.empty() ? std::string() : words[++k]);
  }
  return options;
}

std::string HelpText() {
  std::string text = "usage: session-sim [options]\nA session server to fly against, on 127.0.0.1.\n\n";
  for (const Entry& entry : Entries()) {
    std::string line = "  " + std::string(entry.Name) + " " + std::string(entry.Value);
    line.resize(26, ' ');
    text += line + std::string(entry.Help) + "\n";
  }
  return text;
}

}  // namespace kestrel::sim
