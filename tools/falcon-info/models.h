#pragma once

#include <filesystem>

#include "falcon-info/context.h"

namespace kestrel::falconinfo {

/// A directory of models: KoreaObj.HDR, .DXH.
Json ModelDirectoryReport(Context& context, const std::filesystem::path& file);
/// The shapes of a directory, which stands beside them: KoreaObj.LOD, .DXL.
Json ShapesReport(Context& context, const std::filesystem::path& file);
/// A shape of a folder of its own.
Json BmlReport(Context& context, const std::filesystem::path& file);
/// The description of such a folder with its shapes.
Json ParentReport(Context& context, const std::filesystem::path& file);

}  // namespace kestrel::falconinfo
