#pragma once

#include <string_view>

#include "base/colour.h"
#include "link/session.h"
#include "link/tables.h"
#include "tape/format.h"

namespace kestrel::tape {

/// Label of the dummy client while a tape's first record is still to come: nothing of the tables before it is kept.
inline constexpr std::string_view FirstTime = "First_Time";

/// Puts a record into the tables as if it had just arrived. Positions and sides of AI aircraft are computed afresh from
/// bearing, range and name with the bullseye in force; what the person has set of a client (callsign, colour, what is
/// shown) stays with its slot. Recorded X, Y and Hostile of AI aircraft and the recorded looks of clients are not used.
/// SelectedPlot goes with the client that the details show; they are hidden when he is not in the record.
void ShowTapeRecord(TapeRecord record, base::Colour AICOLOR, link::Tables& tables, link::SessionState& session);

}  // namespace kestrel::tape
