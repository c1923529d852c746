#include "tape-info/options.h"

#include <memory>
#include <stdexcept>

#include "command_line.h"

namespace kestrel::tapeinfo {
namespace {

/// What stands on the line before it is known to belong together.
struct Line {
  std::vector<std::string> Names;
  bool Repair = false;
  bool Help = false;
};

std::unique_ptr<CLI::App> CommandLine(Line& line) {
  auto app = std::make_unique<CLI::App>(
      "Tells what a tape holds: times, records, players, AI aircraft, and the bytes of each part.", "tape-info");
  app->set_help_flag();
  app->add_option("FILE", line.Names, "the tape; with --repair the new file behind it")->type_name("");
  app->add_flag("--repair", line.Repair,
                "--repair FILE NEW writes a copy of FILE to NEW whose count is that of the whole records found; what "
                "stands behind them is left out. FILE stays as it is, NEW must not exist");
  app->add_flag("--help", line.Help, "this text");
  app->footer(
      "What follows \"--\" are names.\n"
      "Ends with 0 for a whole tape and a written copy, 1 when that cannot be done, 2 for a wrong command line,\n"
      "3 for a tape whose count does not fit its records, or with other bytes behind them.");
  return app;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& words) {
  Line line;
  tools::Parse(*CommandLine(line), words);
  if (line.Help) return {.File = {}, .RepairTo = {}, .Help = true};
  if (line.Repair && line.Names.size() != 2) {
    throw std::invalid_argument("--repair takes a tape and the name of a new file");
  }
  if (!line.Repair && line.Names.size() != 1) throw std::invalid_argument("one tape is wanted; --help says more");
  return {.File = line.Names[0], .RepairTo = line.Repair ? line.Names[1] : std::string(), .Help = false};
}

std::string HelpText() {
  Line line;
  return CommandLine(line)->help();
}

}  // namespace kestrel::tapeinfo
