// A pilot's file, the configuration and the registry of a Wine prefix from a stranger. Presets that are written must
// come back, and writing them again changes nothing. The first byte is the size of the pieces in which the registry
// comes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "falcon/config_file.h"
#include "falcon/pilot_file.h"
#include "falcon/wine_registry.h"

namespace {
namespace falcon = kestrel::falcon;

void Demand(bool holds) {
  if (!holds) std::abort();
}

void WritePresets(std::string_view text) {
  falcon::RadioPresets presets;
  for (std::size_t at = 1; at <= falcon::PresetCount; ++at) {
    presets.Uhf[at] = std::to_string(300000 + at);
    presets.Vhf[at] = std::to_string(59400 + at);
  }
  falcon::PresetsOf(text);
  try {
    const std::string written = falcon::WithPresets(text, presets);
    const falcon::RadioPresets read = falcon::PresetsOf(written);
    Demand(read.Uhf == presets.Uhf && read.Vhf == presets.Vhf);
    Demand(falcon::WithPresets(written, presets) == written);
  } catch (const kestrel::base::RuntimeFailure&) {
    Demand(text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"));
  }
}

void ReadRegistry(std::string_view text, std::size_t piece) {
  falcon::WineRegistry whole("prefix"), byPieces("prefix");
  whole.Take(text);
  for (std::size_t at = 0; at < text.size(); at += piece) byPieces.Take(text.substr(at, piece));
  const std::string above = "SOFTWARE\\Benchmark Sims";
  Demand(whole.SubKeys(above) == byPieces.SubKeys(above));
  for (const std::string& name : whole.SubKeys(above)) {
    const auto value = whole.ReadValue(above + "\\" + name, "baseDir");
    Demand(value.has_value() == byPieces.ReadValue(above + "\\" + name, "baseDir").has_value());
    if (value) Demand(value->Bytes.size() <= falcon::WineRegistry::LongestLine);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  WritePresets(text);
  // At most one line is added, and the end of the one before it.
  const std::string written = falcon::WithCfgValue(text, true, "339750");
  const auto added = std::count(written.begin(), written.end(), '\n') - std::count(text.begin(), text.end(), '\n');
  Demand(added >= 0 && added <= 2);
  ReadRegistry(text, data[0] + std::size_t{1});
  return 0;
}
