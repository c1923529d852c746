#pragma once

#include <filesystem>

namespace kestrel::demo {

/// How often the demo session cycles, seconds.
inline constexpr int PeriodS = 2;
/// Records of the demo tape: five minutes.
inline constexpr int Records = 150;

/// Records a session of session-sim's aircraft on a tape, the same bytes every time: what the server would send to a
/// controller of both sides goes through the station's own handlers into its tables, and from there on the tape.
/// `file` is written over; its folder is made when missing. RuntimeFailure when that fails.
void WriteDemoTape(const std::filesystem::path& file);

}  // namespace kestrel::demo
