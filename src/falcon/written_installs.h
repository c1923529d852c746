#pragma once

#include <string_view>

#include "base/profile_file.h"
#include "falcon/install_keys.h"

// Installations that a person has named by hand, in the station's settings.
namespace kestrel::falcon {

/// The section of the main settings file. "BMS1" to "BMS99" and "FALCON1" to "FALCON99" are folders of this system, and
/// "BMS1_NAME" is the version of the first of them.
inline constexpr std::string_view InstallSection = "INSTALLATIONS";

/// A source for each installation that the section names, in their order, BMS first. A BMS is named by its key, or else
/// by its folder where that bears the name of a version; "4.38" alone is "Falcon BMS 4.38". A folder that does not
/// begin at a root, and one that is not there, is none.
InstallSources ReadWrittenInstalls(const base::ProfileFile& settings);

}  // namespace kestrel::falcon
