#pragma once

#include <string>
#include <string_view>

#include "core/station.h"

// The small files beside the settings: "update.txt", "common.ini" and "FriendlyNames.ini".
namespace kestrel::core {

/// DocsUrl and MailUrl from "update.txt", which is the program's: it lies in ProgramPath, so that a newer program's
/// counts. A "=" inside an address cuts it there: this stands.
/// RuntimeFailure when the file is missing.
void LoadUpdateText(Station& station);

/// AutoUpdate from "common.ini": on unless the file says otherwise.
void LoadAutoUpdate(Station& station);

/// The lines of "FriendlyNames.ini" as they stand, blank ones too; none when the file does not exist.
/// RuntimeFailure when it cannot be read.
void LoadFriendsDef(Station& station);

/// A folder as text that a file name can be appended to: `separator` at its end unless it is exactly 3 characters long
/// (a drive root, which ends in one).
std::string AppPathText(std::string_view folder, char separator);

}  // namespace kestrel::core
