#pragma once

#include <string>
#include <vector>

namespace kestrel::tapeinfo {

/// What the command line says.
struct Options {
  std::string File;
  std::string RepairTo;  ///< empty: only tell
  bool Help = false;
  std::string AcmiTo;   ///< to be exported; empty: only tell
  std::string Theater;  ///< settings file of the theater of an export; empty: that of the station which has the tape
};

/// Reads the words after the program's name. std::invalid_argument, with a text for the user, for what cannot be read.
Options ParseOptions(const std::vector<std::string>& words);

/// The text of --help.
std::string HelpText();

}  // namespace kestrel::tapeinfo
