#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel::falcon {

/// Expands what the simulator has packed: a window of 4096 bytes written from position 1, matches of 2 to 17 bytes at
/// absolute positions, one byte of flags before every eight tokens. Exactly `size` bytes come out; what follows them is
/// not looked at. RuntimeFailure when `packed` ends before that, which is told before memory is taken when it never
/// could reach.
std::string ExpandLzss(std::string_view packed, std::size_t size);

/// ExpandLzss for a size that a file tells: RuntimeFailure too when that is below 0 or above `most`.
std::string ExpandLzss(std::string_view packed, std::int32_t size, std::size_t most);

}  // namespace kestrel::falcon
