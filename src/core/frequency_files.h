#pragma once

#include "core/kept_file.h"

namespace kestrel::core {

/// The frequencies of the current theater. A file that lacks keys or has others than the station writes (it is damaged,
/// or was made elsewhere) is taken as far as it can be read, and kept.
extern const KeptFile KeptFrequencies;

/// The default channels of "DefFreq.ini". A missing file leaves them empty; so does one that cannot be read, with a
/// line in the station's notes.
void LoadDefaultFrequencies(Station& station);

}  // namespace kestrel::core
