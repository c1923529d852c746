#pragma once

#include <cstddef>
#include <string>

#include "areas/area_file.h"
#include "core/program.h"

// The areas of the current theater and their file.
namespace kestrel::core {

/// LoadAreas: the catalogue becomes what the theater's file holds, and empty without one. A file of another kind is
/// told and gives none; one that ends early gives what it holds. Both are kept beside the next save. RuntimeFailure for
/// a file that cannot be read.
void LoadAreas(Program& program);

/// SaveAreas: writes the file, whole or not at all; what a rescue holds is then in it. RuntimeFailure when it cannot be
/// written, or when the former one could not be read and cannot be kept.
void SaveAreas(Station& station);

/// Logs what was not as it should be with the file `name`: whether it was damaged, and how many of its groups named no
/// folder.
void LogAreaFile(Program& program, const std::string& name, areas::AreaFileState state, std::size_t homeless);

}  // namespace kestrel::core
