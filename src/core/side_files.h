#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/station.h"

// The small files beside the settings: "update.txt" and "common.ini".
namespace kestrel::core {

/// DocsUrl and MailUrl from "update.txt", which is the program's: it lies in ProgramPath, so that a newer program's
/// counts. A "=" inside an address cuts it there: this stands.
/// RuntimeFailure when the file is missing.
void LoadUpdateText(Station& station);

/// AutoUpdate from "common.ini": on unless the file says otherwise.
void LoadAutoUpdate(Station& station);

/// Writes AUTOUPDATE of section GENERAL to "common.ini", keeping the rest of the file, and takes the value into the
/// station. RuntimeFailure, with nothing changed, when the file cannot be written.
void SetAutoUpdate(Station& station, bool on);

/// The lines of a text with either line end; a line end at the very end begins no further line. Views into `text`.
std::vector<std::string_view> Lines(std::string_view text);

/// A folder as text that a file name can be appended to: `separator` at its end unless it is exactly 3 characters long
/// (a drive root, which ends in one).
std::string AppPathText(std::string_view folder, char separator);

}  // namespace kestrel::core
