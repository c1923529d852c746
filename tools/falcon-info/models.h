#pragma once

#include <filesystem>
#include <vector>

#include "falcon-info/context.h"

namespace kestrel::falconinfo {

/// A directory of models: KoreaObj.HDR, .DXH.
Json ModelDirectoryReport(Context& context, const std::filesystem::path& file);
/// The shapes of a directory, which stands beside them: KoreaObj.LOD, .DXL.
Json ShapesReport(Context& context, const std::filesystem::path& file);
/// A shape of a folder of its own.
Json BmlReport(Context& context, const std::filesystem::path& file);
/// The models that were asked for, of whichever generation, from folders of 3D data and objects.
void TellModels(Context& context, const std::vector<std::filesystem::path>& folders, Json& into);
/// The description of such a folder with its shapes.
Json ParentReport(Context& context, const std::filesystem::path& file);

}  // namespace kestrel::falconinfo
