#pragma once

#include <filesystem>
#include <vector>

#include "core/program.h"
#include "falcon/installations.h"

// The channels of the current theater and those that the pilots of an installation have.
namespace kestrel::core {

/// What is done with the channels of a pilot.
enum class ChannelUse {
  Load = 1,
  Save = 2,          ///< those of the theater
  SaveDefaults = 3,  ///< those of "DefFreq.ini"
};

/// The installations of BMS that there are, the newest first. None when there is none, which has been told in a box, or
/// when the person does not want what the pilots have to be replaced.
std::vector<falcon::FalconInstall> BeginExchange(Program& program, ChannelUse use);

/// Loads a pilot's channels and the frequencies of the teams, as one step, or saves them: first into the pilot's file,
/// then into the configuration. What fails is told in a box; what was done before it stays, and what was to follow is
/// not done. Told as well is that the person's own configuration sets a frequency of the teams, which then counts.
void ExchangeChannels(Program& program, ChannelUse use, const falcon::FalconInstall& install,
                      const std::filesystem::path& pilotFile);

}  // namespace kestrel::core
