#include "falcon-info/options.h"

#include <charconv>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "base/files.h"
#include "base/text.h"
#include "command_line.h"
#include "falcon-info/fields.h"
#include "falcon-info/tables.h"

namespace kestrel::falconinfo {
namespace {

/// What stands on the line before it is known what it means.
struct Line {
  std::vector<std::string> Paths;
  std::vector<std::string> Objects;
  std::string Campaign, Strings;
  std::vector<std::string> Records, Classes, Objectives, Models, At;
  bool Help = false;
};

std::unique_ptr<CLI::App> CommandLine(Line& line) {
  auto app = std::make_unique<CLI::App>(
      "Prints as JSON what the station reads of the simulator's files, and of folders: installations, Wine prefixes, "
      "folders of "
      "campaigns, objects, terrain and models.",
      "falcon-info");
  app->set_help_flag();
  const auto many = [&app](const char* name, std::vector<std::string>& values, const char* what, const char* meaning) {
    app->add_option(name, values, meaning)->type_name(what)->allow_extra_args(false);
  };
  app->add_option("PATH", line.Paths, "files and folders; several give a list, in their order")->type_name("");
  many("--objects", line.Objects, "FOLDER",
       "a folder of object tables, instead of those found from the path's own place; several: the first that has a "
       "table");
  app->add_option("--campaign", line.Campaign,
                  "the folder of campaigns: a mission's scenario, and the ground cover for heights")
      ->type_name("FOLDER");
  app->add_option("--strings", line.Strings, "the folder of names and general strings, instead of that of campaigns")
      ->type_name("FOLDER");
  many("--record", line.Records, "TABLE:INDEX", "also this record of a table, as ct:123");
  many("--class", line.Classes, "N", "also this class of objectives, by its index in the class table");
  many("--objective", line.Objectives, "N", "of a campaign only the objective with this campaign id, with its class");
  many("--model", line.Models, "N", "of models, in any form, this one");
  many("--at", line.At, "X,Y", "with heights that of a place in map units from the lower left corner");
  app->add_flag("--help", line.Help, "this text");
  app->footer("Tables: " + TableNames() +
              "\nOptions that take something can be given many times, but for --campaign and --strings.\n"
              "Ends with 0, with 1 when anything could not be read (its place has \"error\"), with 2 for a wrong "
              "command line.\n\n" +
              std::string(FieldsText()));
  return app;
}

template <class Number>
Number NumberOf(std::string_view text, const char* option) {
  Number number{};
  const auto [end, wrong] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (wrong != std::errc() || end != text.data() + text.size()) {
    throw std::invalid_argument(std::string(option) + ": \"" + std::string(text) + "\" is no number");
  }
  return number;
}

RecordName RecordOf(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::string table = base::Lower(text.substr(0, colon));
  if (colon == std::string_view::npos || !IsTableName(table)) {
    throw std::invalid_argument("--record: \"" + std::string(text) + "\" is none of " + TableNames() +
                                " with a colon and an index");
  }
  return {table, NumberOf<std::size_t>(text.substr(colon + 1), "--record")};
}

MapPlace PlaceOf(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) {
    throw std::invalid_argument("--at: \"" + std::string(text) + "\" is no X,Y");
  }
  return {NumberOf<double>(text.substr(0, comma), "--at"), NumberOf<double>(text.substr(comma + 1), "--at")};
}

/// What `one` makes of each.
template <class Value, class Make>
std::vector<Value> Each(const std::vector<std::string>& texts, const Make& one) {
  std::vector<Value> values;
  for (const std::string& text : texts) values.push_back(one(text));
  return values;
}

template <class Number>
std::vector<Number> Numbers(const std::vector<std::string>& texts, const char* option) {
  return Each<Number>(texts, [option](const std::string& text) { return NumberOf<Number>(text, option); });
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& words) {
  Line line;
  tools::Parse(*CommandLine(line), words);
  Options options;
  options.Help = line.Help;
  if (options.Help) return options;
  if (line.Paths.empty()) throw std::invalid_argument("a file or folder is wanted; --help says more");
  options.Paths = Each<std::filesystem::path>(line.Paths, base::PathOfText);
  options.Objects = Each<std::filesystem::path>(line.Objects, base::PathOfText);
  options.Campaign = base::PathOfText(line.Campaign);
  options.Strings = base::PathOfText(line.Strings);
  options.Records = Each<RecordName>(line.Records, RecordOf);
  options.Classes = Numbers<std::int32_t>(line.Classes, "--class");
  options.Objectives = Numbers<std::int32_t>(line.Objectives, "--objective");
  options.Models = Numbers<std::size_t>(line.Models, "--model");
  options.At = Each<MapPlace>(line.At, PlaceOf);
  return options;
}

std::string HelpText() {
  Line line;
  return CommandLine(line)->help();
}

}  // namespace kestrel::falconinfo
