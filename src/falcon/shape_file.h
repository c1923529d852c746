#pragma once

#include <cstddef>
#include <filesystem>

#include "falcon/model_directory.h"
#include "falcon/model_shape.h"

namespace kestrel::falcon {

/// Largest shape that is read.
inline constexpr std::size_t MaxShapeBytes = std::size_t{16} << 20;

/// Reads the most detailed shape of a model from the file of shapes (KoreaObj.LOD, KoreaObj.DXL), in whichever form it
/// begins as. RuntimeFailure, naming the file, when the directory has no such model or no shape of it, its place lies
/// outside of the file, or it cannot be read: the box of the model is what is left then.
ModelShape ReadDirectoryShape(const std::filesystem::path& file, const ModelDirectory& directory, std::size_t model);

}  // namespace kestrel::falcon
