#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "base/file_replacement.h"

namespace kestrel::theaters {

/// Writes the heights of a theater as Elevations reads them: row by row from the southern edge, each row from west to
/// east, feet. `progress`, which may be empty, is told what is done of how much; what it throws passes through. The
/// file has its name only once it is committed.
void WriteElevations(base::FileReplacement& file, std::span<const std::int16_t> heights,
                     const std::function<void(std::uint64_t done, std::uint64_t total)>& progress);

}  // namespace kestrel::theaters
