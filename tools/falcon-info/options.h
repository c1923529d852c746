#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::falconinfo {

/// A record of a table, as "ct:123" names it.
struct RecordName {
  std::string Table;  ///< in lower case
  std::size_t Index = 0;
};

/// A place on the map, map units.
struct MapPlace {
  double X = 0;
  double Y = 0;
};

/// What the command line says.
struct Options {
  std::vector<std::filesystem::path> Paths;
  std::vector<std::filesystem::path> Objects;  ///< folders of object tables; none: found from each path's own place
  std::filesystem::path Campaign;              ///< folder of campaigns; likewise
  std::filesystem::path Strings;               ///< folder of names and general strings; empty: that of campaigns
  std::vector<RecordName> Records;
  std::vector<std::int32_t> Classes;     ///< indices of the class table
  std::vector<std::int32_t> Objectives;  ///< campaign ids; empty: all
  std::vector<std::size_t> Models;
  std::vector<MapPlace> At;
  bool Help = false;
};

/// Reads the words after the program's name. std::invalid_argument, with a text for the user, for what cannot be read.
Options ParseOptions(const std::vector<std::string>& words);

/// The text of --help, which names every field that is printed.
std::string HelpText();

}  // namespace kestrel::falconinfo
