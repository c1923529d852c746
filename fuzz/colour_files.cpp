// Palettes and lists of criteria: any bytes are a palette, and a list that is taken is written as it was read.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "falcon/colour_files.h"

using namespace kestrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  falcon::ColourPalette palette{};
  falcon::TakeActColours(bytes, palette);
  falcon::TakePalColours(bytes, palette);
  falcon::ColourChoice choice, again;
  if (!falcon::ReadCxp(bytes, choice)) return 0;
  if (choice.Criteria.size() > falcon::MostCriteria) std::abort();
  if (!falcon::ReadCxp(falcon::WriteCxp(choice), again) || again.Criteria != choice.Criteria) std::abort();
  return 0;
}
