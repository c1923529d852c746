#pragma once

#include "core/program.h"

// The two files of DEBUG, beside the executable: the log "KESTRELLog.txt" and the raw capture "debug_out.dat".
namespace kestrel::core {

/// Start: makes the log when DEBUG is on, and writes what Notes holds. A log that cannot be made costs the log, not the
/// session.
void OpenLog(Program& program);
/// Start: makes the capture when DEBUG is on; the same holds for it.
void OpenCapture(Program& program);
/// DEBUG has been changed: both files are opened, or closed. The log goes on after what this run has written, the
/// capture is made anew. What cannot be made is told in a box.
void FollowDebug(Program& program);

}  // namespace kestrel::core
