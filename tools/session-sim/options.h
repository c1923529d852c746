#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session-sim/encoder.h"
#include "session-sim/world.h"

namespace kestrel::sim {

/// What the command line says.
struct Options {
  std::uint16_t Port = 5556;  ///< 0: any free one
  WorldOptions World;
  int PeriodMs = 1000;              ///< from one cycle to the next
  std::optional<double> DurationS;  ///< the whole session ends then
  BullseyePoint Bullseye;           ///< that of the sample theater unless told
  bool Split = false;
  bool Burst = false;
  int GarbagePercent = 0;
  bool DecimalComma = false;
  std::optional<double> DisconAfterS;  ///< each controller, from its NAWACS on
  std::optional<double> DropAfterS;    ///< each connection, from its connect on
  bool Help = false;
};

/// Reads the words after the program's name. std::invalid_argument, with a text for the user, for what cannot be read.
Options ParseOptions(const std::vector<std::string>& words);

/// The text of --help.
std::string HelpText();

}  // namespace kestrel::sim
