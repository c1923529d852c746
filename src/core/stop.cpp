#include <exception>
#include <string>

#include "core/execute_shortcut.h"
#include "core/kept_view.h"
#include "core/program.h"
#include "core/tapes.h"
#include "core/theater_data.h"

// The lists of the closing: the frame, then the map window within it.
namespace kestrel::core {
namespace {

void TellAndGoOn(Program& program, const std::string& what, const std::string& reason) {
  // The message about saving would lie over the box.
  program.Shown.ShowSavingMessage(false);
  Tell(program, "The station could not " + what + ": " + reason + ".\n\nThe closing goes on.");
}

void Save(Program& program) {
  for (const Unsaved& failure : SaveAll(program.State)) {
    TellAndGoOn(program, "save the " + std::string(failure.What), failure.Reason);
  }
}

constexpr Step stopSteps[] = {
    {"close the raw capture", [](Program& program) { program.Raw.Close(); }},
    {"show the saving message", [](Program& program) { program.Shown.ShowSavingMessage(true); }},
    {"save the data of the theater and the settings", Save},
    {"free the map bitmap", [](Program& program) { program.State.MapPicture = {}; }},
    {"put the frame's window procedure back"},
    {"remove the keyboard hook", StopHook},
    {"unload the windows", [](Program& program) { program.Shown.UnloadWindows(); }},
};

constexpr Step mapUnloadSteps[] = {
    // Before the session is left, so the last AWAEND is not in the log: this stands.
    {"close the log", [](Program& program) { program.Log.File.Close(); }},
    {"leave the session", [](Program& program) { program.Link.Leave(); }},
    {"RecordingEnd", UnloadTapes},
};

}  // namespace

std::span<const Step> StopSteps() { return stopSteps; }
std::span<const Step> MapUnloadSteps() { return mapUnloadSteps; }

void Close(Program& program) {
  program.State.Closing = true;
  KeepView(program.State);
  for (const Step& step : StopSteps()) {
    try {
      if (step.Run) step.Run(program);
    } catch (const std::exception& failure) {
      TellAndGoOn(program, std::string(step.What), failure.what());
    }
  }
}

}  // namespace kestrel::core
