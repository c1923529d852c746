// A campaign file from a stranger: its bullseye is read, or it is refused with RuntimeFailure.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "falcon/campaign_bullseye.h"
#include "falcon/lzss.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace falcon = kestrel::falcon;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  try {
    const falcon::CampaignBullseye place = falcon::ReadCampaignBullseye(falcon::CampaignFile(bytes));
    if (place.X < 0 || place.X >= 8192 || place.Y < 0 || place.Y >= 8192) std::abort();
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  // The same bytes as a packed piece; the first two tell how much is wanted of it.
  if (size < 2) return 0;
  const std::size_t wanted = data[0] | static_cast<std::size_t>(data[1]) << 8;
  try {
    if (falcon::ExpandLzss(std::string_view(bytes).substr(2), wanted).size() != wanted) std::abort();
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  return 0;
}
