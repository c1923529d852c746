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
  bool Acmi = false;
  std::string Theater;
  bool Help = false;
};

std::unique_ptr<CLI::App> CommandLine(Line& line) {
  auto app = std::make_unique<CLI::App>(
      "Tells what a tape holds: times, records, players, AI aircraft, and the bytes of each part.", "tape-info");
  app->set_help_flag();
  app->add_option("FILE", line.Names, "the tape; with --repair or --acmi the new file behind it")->type_name("");
  app->add_flag("--repair", line.Repair,
                "--repair FILE NEW writes a copy of FILE to NEW whose count is that of the whole records found; what "
                "stands behind them is left out. FILE stays as it is, NEW must not exist");
  app->add_flag("--acmi", line.Acmi,
                "--acmi FILE OUT writes where the aircraft of FILE were as text of the form ACMI 2.2, packed when OUT "
                "ends with .zip.acmi. An older OUT is replaced")
      ->excludes("--repair");
  app->add_option(
         "--theater", line.Theater,
         "--theater INI names the theater over which FILE was flown, a file of the folder Theaters; without it "
         "that is the one in use by the station whose folder TAPES has FILE")
      ->type_name("")
      ->needs("--acmi");
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
  Options options;
  options.Help = line.Help;
  if (line.Help) return options;
  if (line.Repair && line.Names.size() != 2) {
    throw std::invalid_argument("--repair takes a tape and the name of a new file");
  }
  if (line.Acmi && line.Names.size() != 2) throw std::invalid_argument("--acmi takes a tape and the name of a file");
  if (!line.Repair && !line.Acmi && line.Names.size() != 1) {
    throw std::invalid_argument("one tape is wanted; --help says more");
  }
  options.File = line.Names[0];
  if (line.Repair) options.RepairTo = line.Names[1];
  if (line.Acmi) options.AcmiTo = line.Names[1];
  options.Theater = line.Theater;
  return options;
}

std::string HelpText() {
  Line line;
  return CommandLine(line)->help();
}

}  // namespace kestrel::tapeinfo
