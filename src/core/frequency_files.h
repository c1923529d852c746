#pragma once

#include "core/station.h"

namespace kestrel::core {

/// The default channels of "DefFreq.ini". A missing file leaves them empty; so does one that cannot be read, with a
/// line in the station's notes.
void LoadDefaultFrequencies(Station& station);

}  // namespace kestrel::core
