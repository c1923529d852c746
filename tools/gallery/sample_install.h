#pragma once

#include <filesystem>

#include "falcon/installations.h"

namespace kestrel::gallery {

/// An installation of the simulator with the heights of the sample theater of the program folder `station`, made there.
falcon::FalconInstall SampleInstall(const std::filesystem::path& station);

}  // namespace kestrel::gallery
