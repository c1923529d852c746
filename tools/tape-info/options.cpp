#include "tape-info/options.h"

#include <stdexcept>

namespace kestrel::tapeinfo {

Options ParseOptions(const std::vector<std::string>& words) {
  Options options;
  std::vector<std::string> names;
  bool repair = false, onlyNames = false;
  for (const std::string& word : words) {
    if (onlyNames || !word.starts_with("--")) {
      names.push_back(word);
    } else if (word == "--") {
      onlyNames = true;
    } else if (word == "--repair") {
      repair = true;
    } else if (word == "--help") {
      options.Help = true;
    } else {
      throw std::invalid_argument(word + " is no option; --help lists them");
    }
  }
  if (options.Help) return options;
  if (repair && names.size() != 2) throw std::invalid_argument("--repair takes a tape and the name of a new file");
  if (!repair && names.size() != 1) throw std::invalid_argument("one tape is wanted; --help says more");
  options.File = names[0];
  if (repair) options.RepairTo = names[1];
  return options;
}

std::string HelpText() {
  return "usage: tape-info FILE\n"
         "       tape-info --repair FILE NEW\n"
         "Tells what a tape holds: times, records, players, AI aircraft, and the bytes of each part.\n"
         "\n"
         "  --repair FILE NEW  write a copy of FILE to NEW whose count is that of the whole records found; what\n"
         "                     stands behind them is left out. FILE stays as it is, NEW must not exist.\n"
         "  --help             this text\n"
         "  --                 what follows are names\n"
         "\n"
         "Ends with 0 for a whole tape and a written copy, 1 when that cannot be done, 2 for a wrong command line,\n"
         "3 for a tape whose count does not fit its records, or with other bytes behind them.\n";
}

}  // namespace kestrel::tapeinfo
