#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/program_title.h"
#include "core/program.h"

// What the person is told and asked, word for word.
namespace kestrel::core {

/// What could not be saved, as a word for the person ("settings"), and why.
struct Unsaved {
  std::string_view What;
  std::string Reason;
};

/// A box with OK.
void Tell(Program& program, const std::string& text, const std::string& title = base::ProgramTitle(),
          base::MessageIcon icon = base::MessageIcon::Exclamation);
/// `what` and the reason, in the log and with a full stop in a box.
void TellFailure(Program& program, const std::string& what, const std::exception& failure);
/// "The settings could not be saved: ..."; the reason is logged too. The message about saving gives way to the box.
void TellUnsaved(Program& program, const Unsaved& failure);
/// Asks with Yes and No about what cannot be undone: Enter is No. True on Yes alone.
bool IsSure(Program& program, const std::string& text, const std::string& title = base::ProgramTitle());
/// Asks with Yes and No about what is good to have: Enter is Yes. True on Yes alone.
bool Wants(Program& program, const std::string& text, const std::string& title = base::ProgramTitle());
/// Asks for a file that exists, as Desktop::OpenFile does. Nothing when the person cancels.
std::optional<std::filesystem::path> ChooseFile(Program& program, std::string_view title, std::string_view filter,
                                                std::string_view defaultName = {},
                                                const std::filesystem::path& folder = {});
/// Asks for a file to write, as Desktop::SaveFile does. Nothing when the person cancels.
std::optional<std::filesystem::path> ChooseNewFile(Program& program, std::string_view title, std::string_view filter);

}  // namespace kestrel::core
