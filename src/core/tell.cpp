#include "core/tell.h"

#include "base/files.h"

namespace kestrel::core {
namespace {

bool AskYesNo(Program& program, const std::string& text, const std::string& title, base::Answer enter) {
  return program.Desk.Ask(title, text, base::MessageIcon::Question, base::MessageButtons::YesNo, enter) ==
         base::Answer::Yes;
}

}  // namespace

void Tell(Program& program, const std::string& text, const std::string& title, base::MessageIcon icon) {
  program.Desk.Message(title, text, icon);
}

void TellFailure(Program& program, const std::string& what, const std::exception& failure) {
  program.Log.LogLine(what + failure.what());
  Tell(program, what + failure.what() + ".");
}

void TellUnsaved(Program& program, const Unsaved& failure) {
  program.Log.LogLine(failure.Reason);
  // The message about saving would lie over the box.
  program.Shown.ShowSavingMessage(false);
  Tell(program, "The " + std::string(failure.What) + " could not be saved: " + failure.Reason + ".");
}

bool IsSure(Program& program, const std::string& text, const std::string& title) {
  return AskYesNo(program, text, title, base::Answer::No);
}

bool Wants(Program& program, const std::string& text, const std::string& title) {
  return AskYesNo(program, text, title, base::Answer::Yes);
}

std::optional<std::filesystem::path> ChooseFile(Program& program, std::string_view title, std::string_view filter,
                                                std::string_view defaultName, const std::filesystem::path& folder) {
  const std::optional<std::string> file = program.Desk.OpenFile(title, filter, base::TextOfPath(folder), defaultName);
  if (!file) return std::nullopt;
  return base::PathOfText(*file);
}

std::optional<std::filesystem::path> ChooseNewFile(Program& program, std::string_view title, std::string_view filter) {
  const std::optional<std::string> file = program.Desk.SaveFile(title, filter, {}, {});
  if (!file) return std::nullopt;
  return base::PathOfText(*file);
}

}  // namespace kestrel::core
