#pragma once

#include "core/station.h"

// "Callsigns.ini": what players have been given, kept beside the settings while that is asked for.
namespace kestrel::core {

/// Reads it into the station; without the file nothing is known. What cannot be used of it is left out. RuntimeFailure
/// when it cannot be read.
void LoadCallsigns(Station& station);
/// Writes it whole while callsigns are to come back, unless it holds the same already. RuntimeFailure; one that is
/// there and cannot be read is not written over.
void SaveCallsigns(const Station& station);

}  // namespace kestrel::core
