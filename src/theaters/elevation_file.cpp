#include "theaters/elevation_file.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

namespace kestrel::theaters {

void WriteElevations(base::FileReplacement& file, std::span<const std::int16_t> heights,
                     const std::function<void(std::uint64_t done, std::uint64_t total)>& progress) {
  constexpr std::size_t atOnce = std::size_t{256} << 10;
  for (std::size_t begin = 0; begin < heights.size(); begin += atOnce) {
    const std::span<const std::int16_t> part = heights.subspan(begin, std::min(atOnce, heights.size() - begin));
    if constexpr (std::endian::native == std::endian::little) {
      file.Write(std::as_bytes(part));
    } else {
      std::vector<std::byte> bytes;
      for (const std::int16_t height : part) {
        const auto bits = static_cast<std::uint16_t>(height);
        bytes.push_back(static_cast<std::byte>(bits));
        bytes.push_back(static_cast<std::byte>(bits >> 8));
      }
      file.Write(bytes);
    }
    if (progress) progress(begin + part.size(), heights.size());
  }
}

}  // namespace kestrel::theaters
