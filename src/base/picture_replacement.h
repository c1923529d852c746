#pragma once

#include <filesystem>

#include "base/picture.h"

namespace kestrel::base {

/// Loads a picture, as LoadPicture does, that is to take the place of `former`, which may be empty. So that two large
/// ones are not held whole, on Linux the pixels of a large `former` are packed within their memory while the file is
/// read. They are as they were after a RuntimeFailure; without one they are given up and those that copies of `former`
/// still show are lost. Nobody else may look at them before it returns.
Picture ReplacePicture(const std::filesystem::path& path, const Picture& former);

}  // namespace kestrel::base
