#pragma once

#include <filesystem>
#include <functional>

#include "core/global_keys.h"
#include "falcon/install_keys.h"
#include "radio/voice_windows.h"

namespace kestrel::shell {

/// What the operating system fills.
struct SystemSeams {
  core::GlobalKeys& Keys;
  radio::VoiceWindows& Voice;
  std::function<falcon::InstallSources()> Registered = {};  ///< as core::Program has it
};

/// Puts the station together, runs it from start to stop and returns the exit code of the process: 0, or 1 when the
/// start ended with its message box. A QApplication is there; `appPath` is the folder of the executable;
/// `system` outlives the call. `started` is
/// called in the event loop once the first map is on the screen.
int RunStation(const std::filesystem::path& appPath, SystemSeams system, const std::function<void()>& started = {});

}  // namespace kestrel::shell
