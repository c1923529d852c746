#pragma once

#include "core/kept_file.h"

// What a crash would lose of a theater's data is written beside their file now and then, as <Name><Stem>.rescue. A
// successful save removes it; one that is there when a theater is loaded was left by a crash.
namespace kestrel::core {

/// To be called now and then, each second or so: writes the rescue once a change is 10 s old. After a writing that has
/// taken more than 50 ms the next comes later in proportion, so that no more than a two hundredth of the time goes
/// there. A failure is logged and tried again as late.
void WriteRescue(Program& program, const KeptFile& kept);

/// Asks whether to take up the rescue of the current theater, if there is one: it then takes the place of the data that
/// were loaded, as far as it can be read. Otherwise it is deleted. RuntimeFailure when it cannot be read.
void OfferRescue(Program& program, const KeptFile& kept);

}  // namespace kestrel::core
