// The simulator's strings, stations and definitions of theaters from a stranger. The first two bytes tell how many of
// the others are the index of strings; refused with RuntimeFailure is nothing but such an index.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "falcon/stations.h"
#include "falcon/string_table.h"
#include "falcon/theater_definition.h"

namespace {

/// Every text must be one of the file; `most` bytes is the longest that it can be.
void Walk(const kestrel::falcon::StringTable& table, std::size_t most) {
  for (std::size_t number = 0; number <= table.Count(); ++number) {
    if (table[number].size() > most) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace falcon = kestrel::falcon;
  if (size < 2) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::size_t index = std::min<std::size_t>(data[0] | static_cast<std::size_t>(data[1]) << 8, bytes.size());
  try {
    Walk(falcon::ReadStringTable(bytes.substr(0, index), std::string(bytes.substr(index))), bytes.size());
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  Walk(falcon::ReadStringLines(bytes), bytes.size());
  for (const falcon::Station& station : falcon::ReadStations(bytes).Stations) {
    if (station.Told == 0) std::abort();
  }
  falcon::ReadTheaterDefinition(bytes);
  for (const std::string& file : falcon::ReadTheaterList(bytes)) {
    if (file.empty() || file[0] == '#') std::abort();
  }
  return 0;
}
