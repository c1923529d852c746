#include "core/execute_shortcut.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/tapes.h"

// The lists of the closing: the frame, then the map window within it.
namespace kestrel::core {
namespace {

constexpr Step stopSteps[] = {
    {"close the raw capture", [](Program& program) { program.Raw.Close(); }},
    {"show the saving message", [](Program& program) { program.Shown.ShowSavingMessage(true); }},
    {"save the areas"},
    {"save the frequencies"},
    {"save the settings", [](Program& program) { SaveVars(program.State); }},
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

}  // namespace kestrel::core
