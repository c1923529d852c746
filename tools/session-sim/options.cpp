#include "session-sim/options.h"

#include <memory>

#include "command_line.h"
#include "sample-theater/facts.h"

namespace kestrel::sim {
namespace {

constexpr double Day = 86400;

/// Unlike the library's own, it refuses what is no number at all.
CLI::Validator Within(double low, double high) {
  return CLI::Validator(
      [low, high](std::string& text) {
        double number = 0;
        const bool good = CLI::detail::lexical_cast(text, number) && number >= low && number <= high;
        return good ? std::string() : "\"" + text + "\" is no number that it takes";
      },
      "", "");
}

std::unique_ptr<CLI::App> CommandLine(Options& options) {
  auto app = std::make_unique<CLI::App>("A session server to fly against, on 127.0.0.1.", "session-sim");
  app->set_help_flag();
  const auto number = [&app](const char* name, auto& value, double low, double high, const char* help) {
    app->add_option(name, value, help)->check(Within(low, high))->type_name("N");
  };
  number("--port", options.Port, 0, 65535, "port to listen on (5556); 0 picks a free one");
  number("--players", options.World.Players, 0, 2000, "places for players (12)");
  number("--ai", options.World.AI, 0, 20000, "AI aircraft (48)");
  number("--period-ms", options.PeriodMs, 1, 3600000, "time of a cycle, milliseconds (1000)");
  number("--seed", options.World.Seed, 0, static_cast<double>(UINT64_MAX), "another session for another number (1)");
  number("--duration-s", options.DurationS, 0, Day, "end the session after so many seconds (never)");
  app->add_option_function<std::vector<double>>(
         "--bullseye",
         [&options](const std::vector<double>& place) {
           options.Bullseye = {place[0], place[1]};
         },
         "what AI records are relative to, map units, Y to the north (the sample theater's first)")
      ->delimiter(',')
      ->expected(2)
      ->check(Within(-MapSize, 2 * MapSize))
      ->type_name("X,Y");
  app->add_flag("--split", options.Split, "cut messages at random bytes over several sends");
  app->add_flag("--burst", options.Burst, "send all messages of a cycle at once");
  number("--garbage", options.GarbagePercent, 0, 100, "malformed messages before so many of 100 good ones (0)");
  app->add_flag("--decimal-comma", options.DecimalComma, "positions with a comma for the point");
  number("--discon-after-s", options.DisconAfterS, 0, Day,
         "end each controller's session with DISCON so many seconds after its NAWACS (never)");
  number("--drop-after-s", options.DropAfterS, 0, Day,
         "close each connection without a word so many seconds after its start (never)");
  app->add_flag("--help", options.Help, "this text");
  return app;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& words) {
  Options options;
  options.Bullseye = {static_cast<double>(land::Bullseyes[0].X), static_cast<double>(land::Bullseyes[0].Y)};
  tools::Parse(*CommandLine(options), words);
  return options;
}

std::string HelpText() {
  Options options;
  return CommandLine(options)->help();
}

}  // namespace kestrel::sim
