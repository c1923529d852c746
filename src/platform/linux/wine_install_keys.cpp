#include <exception>
#include <memory>

#include "falcon/wine_registry.h"
#include "platform/linux/wine_prefixes.h"
#include "platform/make_seams.h"

namespace kestrel::platform {

falcon::InstallSources MakeInstallKeys() {
  falcon::InstallSources sources;
  for (const std::filesystem::path& prefix : FindWinePrefixes(PrefixPlaces::Own())) {
    try {
      sources.push_back(std::make_unique<falcon::WineRegistry>(falcon::WineRegistry::Load(prefix)));
    } catch (const std::exception&) {
      // A prefix that cannot be read is not looked at.
    }
  }
  return sources;
}

}  // namespace kestrel::platform
