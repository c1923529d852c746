#pragma once

#include <string_view>

#include "theaters/theater.h"

namespace kestrel::theaters {

/// Takes the corner out of the bytes of the simulator's map file ("theater.map"), a record of 1112 bytes of which
/// nothing else is used here. Older files end before it. RuntimeFailure for those, and when the corner is no place on
/// the earth.
Corner ReadTheaterMapCorner(std::string_view bytes);

}  // namespace kestrel::theaters
