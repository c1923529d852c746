#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/program.h"

// KESTREL.ini.bak: the KESTREL.ini with which a start last succeeded, for when the present one is of no use.
namespace kestrel::core {

/// "KESTREL.ini.bak".
std::filesystem::path BackupIniFile(const Station& station);

/// The start has succeeded: keeps KESTREL.ini as it stands, where its copy differs. What cannot be written is logged.
void KeepSettings(Program& program);

/// LoadSavedVars. Where KESTREL.ini names no theater or cannot be read, and its copy can be and does, the person is
/// asked whether to take that: the one that is of no use is then kept as "KESTREL.ini.old", or under the next name that
/// is free, and the copy becomes KESTREL.ini. One that cannot be put in place is told and used for this run alone.
/// Otherwise throws what LoadSavedVars threw, or NoTheaters.
std::vector<std::string> LoadSettingsOrBackup(Program& program);

}  // namespace kestrel::core
