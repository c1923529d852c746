#include "core/station.h"

#include "base/files.h"

namespace kestrel::core {

std::filesystem::path TheatersFolder(const Station& station) { return base::FindFile(station.AppPath, "Theaters"); }

}  // namespace kestrel::core
