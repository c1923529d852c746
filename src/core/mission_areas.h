#pragma once

#include "core/program.h"

namespace kestrel::core {

/// Asks for a mission's ini file of the simulator and adds what it holds to the areas. A file without a title is warned
/// of and taken; one that cannot be read is told in a box and changes nothing.
void ImportMissionAreas(Program& program);

}  // namespace kestrel::core
