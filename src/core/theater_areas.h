#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "areas/area_file.h"
#include "core/kept_file.h"

// The areas of the current theater and their file.
namespace kestrel::core {

/// A file of another kind is told and gives none; one that ends early gives what it holds.
extern const KeptFile KeptAreas;

/// What was not as it should be with a file, for the log: whether it was damaged, and how many of its groups named no
/// folder.
std::vector<std::string> AreaFileNotes(const std::filesystem::path& path, areas::AreaFileState state,
                                       std::size_t homeless);

}  // namespace kestrel::core
