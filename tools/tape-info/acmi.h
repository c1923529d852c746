#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "theaters/theater.h"

namespace kestrel::tapeinfo {

/// The theater whose settings file is `theaterFile`; without a name the one in use by the station in whose folder TAPES
/// the tape lies. base::RuntimeFailure when there is none.
theaters::Theater TheaterOf(const std::filesystem::path& tape, const std::string& theaterFile);

/// Exports a tape; how many records it has. base::RuntimeFailure when that cannot be done; no new file is left then.
std::int32_t WriteAcmi(const std::filesystem::path& tape, const std::filesystem::path& file,
                       const theaters::Theater& theater);

}  // namespace kestrel::tapeinfo
