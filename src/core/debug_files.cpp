#include "core/debug_files.h"

#include <string>

#include "base/files.h"
#include "core/tell.h"

namespace kestrel::core {
namespace {

void MakeLog(Program& program) {
  program.Log.Open(base::FindFile(program.State.AppPath, "KESTRELLog.txt"));
  for (const std::string& note : program.State.Notes) program.Log.LogLine(note);
  program.State.Notes.clear();
}

void MakeCapture(Program& program) { program.Raw.Open(base::FindFile(program.State.AppPath, "debug_out.dat")); }

/// Tells why a file cannot be made.
void Make(Program& program, void (*make)(Program&), std::string_view refused) {
  try {
    make(program);
  } catch (const base::RuntimeFailure& failure) {
    Tell(program, std::string(refused) + failure.what() + ".");
  }
}

}  // namespace

void OpenLog(Program& program) {
  if (!program.State.DebugLog) return;
  try {
    MakeLog(program);
  } catch (const base::RuntimeFailure& failure) {
    program.State.Notes.push_back(std::string("No log is written: ") + failure.what());
  }
}

void OpenCapture(Program& program) {
  if (!program.State.DebugLog) return;
  try {
    MakeCapture(program);
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(std::string("No capture is written: ") + failure.what());
  }
}

void FollowDebug(Program& program) {
  if (program.State.DebugLog) {
    Make(program, MakeLog, "No log is written: ");
    Make(program, MakeCapture, "No capture is written: ");
    return;
  }
  program.Raw.Close();
  program.Log.File.Close();
}

}  // namespace kestrel::core
