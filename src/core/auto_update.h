#pragma once

#include "core/station.h"

namespace kestrel::core {

/// Writes AUTOUPDATE of section GENERAL to "common.ini", keeping the rest of the file, and takes the value into the
/// station. RuntimeFailure, with nothing changed, when the file cannot be written.
void SetAutoUpdate(Station& station, bool on);

}  // namespace kestrel::core
