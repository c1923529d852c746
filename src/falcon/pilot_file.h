#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// The pilots of an installation and the channels that each has in the simulator.
namespace kestrel::falcon {

inline constexpr std::size_t PresetCount = 20;

/// Texts of the presets 1 to 20; slot 0 is not used.
using PresetTexts = std::array<std::string, PresetCount + 1>;

struct RadioPresets {
  PresetTexts Uhf;
  PresetTexts Vhf;
};

struct Callsign {
  std::string Name;            ///< bytes of the code page, "?" for what it does not hold
  std::filesystem::path File;  ///< the pilot's file
};

/// The pilots of a folder: each has a log book, a file whose name ends in "lbk", and beside it "<name>.ini", where the
/// name is that of the log book without its last four characters. The case of either ending does not count. In the
/// order of their names without regard to case; none when the folder cannot be read.
std::vector<Callsign> ListCallsigns(const std::filesystem::path& folder);

/// The keys "UHF_1" to "UHF_20" and "VHF_1" to "VHF_20" of section "Radio", "000000" where one is missing or empty.
RadioPresets PresetsOf(std::string_view text);
/// The text of a pilot's file with these keys written where they stand, those that are missing behind the last line of
/// the section, and the section at the end when it is missing. All other bytes stay, the blanks around a value too.
/// RuntimeFailure for a text in UTF-16.
std::string WithPresets(std::string_view text, const RadioPresets& presets);

/// The presets of a file. RuntimeFailure when it is missing or cannot be read.
RadioPresets LoadRadioFile(const std::filesystem::path& pilotFile);

/// Gives a file its presets. RuntimeFailure when it is missing, write-protected, in UTF-16 or cannot be written, and
/// nothing has changed then.
void SaveRadioFile(const std::filesystem::path& pilotFile, const RadioPresets& presets);

}  // namespace kestrel::falcon
