#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel::test {

/// Packs with literals and matches: the nearest earlier place with the same two bytes is taken. Matches may overlap
/// what they write.
inline std::string Packed(std::string_view plain) {
  constexpr std::size_t window = 4096;
  constexpr std::size_t longest = 17;
  std::array<std::size_t, 65536> seen{};  // one more than the place
  std::string packed;
  std::size_t flagsAt = 0;
  unsigned token = 0;
  for (std::size_t at = 0; at < plain.size(); ++token) {
    if (token % 8 == 0) {
      flagsAt = packed.size();
      packed += '\0';
    }
    const auto keyOf = [plain](std::size_t place) {
      return static_cast<unsigned char>(plain[place]) << 8 | static_cast<unsigned char>(plain[place + 1]);
    };
    std::size_t length = 0;
    std::size_t from = 0;
    if (at + 1 < plain.size() && seen[static_cast<std::size_t>(keyOf(at))] > 0) {
      from = seen[static_cast<std::size_t>(keyOf(at))] - 1;
      const std::size_t most = at - from < window ? std::min(longest, plain.size() - at) : 0;
      while (length < most && plain[from + length] == plain[at + length]) ++length;
    }
    if (length >= 2) {
      const std::size_t position = (1 + from) % window;  // the window is written from 1 on
      packed += static_cast<char>((length - 2) << 4 | position >> 8);
      packed += static_cast<char>(position & 255);
    } else {
      length = 1;
      packed[flagsAt] = static_cast<char>(static_cast<unsigned char>(packed[flagsAt]) | 1u << (token % 8));
      packed += plain[at];
    }
    for (const std::size_t end = at + length; at < end; ++at) {
      if (at + 1 < plain.size()) seen[static_cast<std::size_t>(keyOf(at))] = at + 1;
    }
  }
  return packed;
}

}  // namespace kestrel::test
