#include "core/program.h"

#include <exception>
#include <string>

#include "base/program_title.h"
#include "core/settings_backup.h"
#include "core/tell.h"

namespace kestrel::core {
namespace {

void EndStart(Program& program, const std::string& title, const std::string& text) {
  program.State.Loading = false;
  Tell(program, text, title, base::MessageIcon::Critical);
}

std::string StartFailureText(std::string_view where) {
  return "An error ocurred while loading the initialization files (" + std::string(where) +
         "). Please check these files, or reinstall the program. The program will exit now...";
}

}  // namespace

void RunSteps(std::span<const Step> steps, Program& program) {
  for (const Step& step : steps) {
    if (step.Run) step.Run(program);
  }
}

bool Main(Program& program) {
  for (const Step& step : MainSteps()) {
    try {
      if (step.Run) step.Run(program);
    } catch (const NoTheaters&) {
      EndStart(program, base::NoTheatersTitle(), "No Theaters are installed. Exiting now...");
      return false;
    } catch (const AnotherStation&) {
      return false;
    } catch (const std::exception& failure) {
      program.Log.LogLine(std::string(step.What) + ": " + failure.what());
      EndStart(program, "Error", StartFailureText(step.FailsAs));
      return false;
    }
  }
  KeepSettings(program);
  return true;
}

}  // namespace kestrel::core
