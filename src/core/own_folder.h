#pragma once

#include <filesystem>

#include "core/program.h"

// Where the station keeps its files when the program folder cannot be written, as below "Program Files".
namespace kestrel::core {

/// Step of the start: settles AppPath. The program folder stands when it can be written. Otherwise the person's own
/// folder (Station::OwnFolder) is offered, once: a KESTREL.ini in it is the memory that the offer was taken, and from
/// then on the folder is used without a word. Sets ProgramPath, AppPath, FolderReadOnly.
void ChooseFolder(Program& program);

/// Copies the files below `from` that `to` does not have: all but programs, their libraries, logs and the folder of the
/// tapes. KESTREL.ini comes last, so that a copy that was cut short does not count as one. RuntimeFailure when a file
/// cannot be copied.
void CopyMissing(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace kestrel::core
