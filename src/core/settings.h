#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/table.h"
#include "core/station.h"

// The settings files. Each key of the main file is a row of one table; reading and writing walk it in file order. Keys
// that are read under one name and written under another are rows of their own, each with one direction.
namespace kestrel::core {

enum class Access { ReadWrite, ReadOnly, WriteOnly };

/// How the text of a number is read. Leading stops at a ",": "3,5" is 3. Invariant takes it for the decimal sign.
enum class Reading { Leading, Invariant };

/// What a key is bound to. Flags are "1" and "0" and only "1" is true; numbers are rounded half to even where the field
/// is whole; texts are as held. A table stands for the count of its entries, which have sections or keys of their own.
using Field = std::variant<bool*, std::int16_t*, std::int32_t*, std::uint32_t*, float*, double*, std::string*,
                           base::Table<theaters::Theater>*, base::Table<link::ConnEntry>*>;

struct SettingsRow {
  std::string Section;
  std::string Key;  ///< upper case
  Field Bound;
  std::string_view Picture = "0";  ///< how a number is written
  Reading As = Reading::Leading;
  Access Use = Access::ReadWrite;
  bool ZeroIsMissing = false;  ///< a stored 0, though written, is read as the default: this stands
  bool* Found = nullptr;       ///< becomes true when the file holds a value for the key
  bool Spared = false;         ///< not written while it has its default, so that the file is as other stations know it
};

/// Every key of "KESTREL.ini" with a fixed name, in the order of writing. The pointers go into `station`. The default
/// of a key is what a fresh Station has in its field.
std::vector<SettingsRow> SettingsTable(Station& station);

/// "KESTREL.ini".
std::filesystem::path MainIniFile(const Station& station);

/// `name` below the folder "Theaters". RuntimeFailure for a name that leaves that folder or is absolute.
std::filesystem::path TheaterPath(const Station& station, std::string_view name);

/// Reads "KESTREL.ini", all theater files and the callsigns into `station`; a missing file gives the defaults. A number
/// that does not fit its field gives the key's default, counts that promise more than there is give what is there, a
/// CURRENTMAP that names no theater becomes 1, a theater file outside the folder "Theaters" is skipped: each with a
/// line in Notes. Returns the names of the theater files that are gone: their theaters are left out, unless no listed
/// file is there. RuntimeFailure for a file that cannot be read. No theater is no failure here.
std::vector<std::string> LoadSavedVars(Station& station);
/// The same of another main file.
std::vector<std::string> LoadSavedVars(Station& station, const std::filesystem::path& mainFile);

/// Writes every theater file, the callsigns and "KESTREL.ini", each whole or not at all. The section of installations
/// that a person has written by hand stays as it is on the disk. RuntimeFailure naming the first file that failed; the
/// others have been tried.
void SaveVars(const Station& station);

/// The phonebook alone: NUM and the CONNLIST<n> sections, leaving the rest of the file as it is. RuntimeFailure.
void SaveConnList(const Station& station);

}  // namespace kestrel::core
