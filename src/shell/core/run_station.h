#pragma once

#include <filesystem>
#include <functional>

namespace kestrel::shell {

/// Puts the station together, runs it from start to stop and returns the exit code of the process: 0, or 1 when the
/// start ended with its message box. A QApplication is there; `appPath` is the folder of the executable. `started` is
/// called in the event loop once the first map is on the screen.
int RunStation(const std::filesystem::path& appPath, const std::function<void()>& started = {});

}  // namespace kestrel::shell
