#pragma once

#include "core/program.h"

namespace kestrel::core {

/// Opens the guide that the program ships, "docs/guide.html" of the program folder or of its defaults, with the
/// system's viewer. Where it is missing a box says so and names the folder.
void OpenGuide(Program& program);

}  // namespace kestrel::core
