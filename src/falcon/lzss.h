#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel::falcon {

/// Expands what the simulator has packed: a window of 4096 bytes written from position 1, matches of 2 to 17 bytes at
/// absolute positions, one byte of flags before every eight tokens. Exactly `size` bytes come out; what follows them is
/// not looked at. RuntimeFailure when `packed` ends before that, which is told before memory is taken when it never
/// could reach.
std::string ExpandLzss(std::string_view packed, std::size_t size);

}  // namespace kestrel::falcon
