#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string_view>

#include "base/debug_log.h"
#include "base/desktop.h"
#include "base/failure.h"
#include "core/global_keys.h"
#include "core/station.h"
#include "core/windows.h"
#include "falcon/install_keys.h"
#include "link/capture.h"
#include "link/session.h"
#include "radio/voice_bridge.h"

// The life of the process as lists of steps. A step whose window or file does not exist yet stands in its list without
// a procedure, so that later work has its place.
namespace kestrel::core {

/// Everything that a step may touch.
struct Program {
  Station& State;
  base::Desktop& Desk;
  Windows& Shown;
  base::DebugLog& Log;
  link::Capture& Raw;
  link::Session& Link;
  GlobalKeys& Keys;
  radio::VoiceBridge& Voice;
  /// Where installations of the simulator have registered themselves, as it is now; without one there are none.
  std::function<falcon::InstallSources()> Registered = {};
  /// Takes a folder that can be written for this station until its end; false when another has it. Without one there is
  /// no other.
  std::function<bool(const std::filesystem::path&)> TakeFolder = {};
};

struct Step {
  std::string_view What;
  void (*Run)(Program&) = nullptr;  ///< null: its window or file is not there yet
  /// What the error box of the start names when this step fails.
  std::string_view FailsAs = "Main";
};

/// Thrown by the step that loads the settings when no theater is left: ends the start with a box of its own.
class NoTheaters : public base::RuntimeFailure {
 public:
  NoTheaters() : RuntimeFailure("no theaters are installed") {}
};

/// Thrown by the step that takes the folder when another station has it and the person wants no second one: ends the
/// start without a word.
class AnotherStation : public base::RuntimeFailure {
 public:
  AnotherStation() : RuntimeFailure("another station runs in this folder") {}
};

/// The start, from the entry to the first map.
std::span<const Step> MainSteps();
/// Load of the frame MDIForm1, run by Windows::ShowMainFrm.
std::span<const Step> FrameLoadSteps();
/// Load of the map window MainFrm, run after the frame's.
std::span<const Step> MapLoadSteps();
/// The closing of the frame.
std::span<const Step> StopSteps();
/// Unload of the map window, within the closing.
std::span<const Step> MapUnloadSteps();

/// Runs the steps that have a procedure, in order.
void RunSteps(std::span<const Step> steps, Program& program);

/// Runs MainSteps. False when the start ended with its message box (shown): the process then ends without saving.
bool Main(Program& program);
/// Runs StopSteps. A file that cannot be saved is told in a box and the closing goes on.
void Close(Program& program);

}  // namespace kestrel::core
