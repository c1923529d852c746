#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// The simulator's configuration: lines "set <name> <value>", comments behind "//". The station touches the two
// frequencies of the teams alone.
namespace kestrel::falcon {

/// Where the files stand below an installation, for base::FindFile.
inline constexpr std::string_view ConfigFolderName = "User\\Config";
inline constexpr std::string_view ConfigFileName = "User\\Config\\falcon bms.cfg";
/// The person's own lines, which the simulator reads after the configuration and which win.
inline constexpr std::string_view OwnConfigFileName = "User\\Config\\Falcon BMS User.cfg";

/// Whether a line is a statement; if so, what it names and its value, without the blanks and tabs around it. The text
/// from the first "//" on counts for nothing. The word "set", in any case, begins the line with one blank behind it,
/// and a blank ends the name: a statement that is indented, or has a tab there, is none. That stands.
bool ParseSetLine(std::string_view line, std::string& name, std::string& value);

/// The frequency of team 1 or 2, as the last statement of the file tells it; empty when none does. RuntimeFailure when
/// the file is missing or cannot be read.
std::string ReadCfgValue(const std::filesystem::path& cfgFile, bool isF1);

/// Whether the file has a statement for the frequency; a missing file has none. For the file that wins over the
/// configuration. RuntimeFailure when it is there and cannot be read.
bool SetsCfgValue(const std::filesystem::path& cfgFile, bool isF1);

/// A configuration with the frequency of team 1 or 2 in each statement that names it, or in a line that is added at the
/// end. In the statement every occurrence of the old value behind the name is replaced, also in its comment; one whose
/// value is empty stays as it is. All other bytes stay.
std::string WithCfgValue(std::string_view text, bool isF1, std::string_view value);

/// Gives a file that frequency. Before the first time the file is copied to "<file>_backup", which is never written
/// over. RuntimeFailure when that fails, and nothing has changed then.
void WriteCfgValue(const std::filesystem::path& cfgFile, bool isF1, std::string_view value);

}  // namespace kestrel::falcon
