#pragma once

#include <string>
#include <string_view>

#include "base/profile_file.h"
#include "theaters/theater.h"

namespace kestrel::theaters {

/// Reads the sections MAP and BULLS<n>. A missing file (empty profile) gives a theater of defaults: nothing is checked
/// here (MendTheater does). Of the bullseyes that BULLSEYES counts, those that are missing are skipped, and CurrentBull
/// goes with its bullseye; a count below 0 gives none.
Theater ReadTheaterFile(const base::ProfileFile& file, std::string_view theaterFile);

/// The file as it is written, below `banner`, its first line as it stands, double quotes included. SIZE, PICSIZE, X and
/// Y lose their fraction.
base::ProfileFile WriteTheaterFile(const Theater& theater, std::string_view banner);

}  // namespace kestrel::theaters
