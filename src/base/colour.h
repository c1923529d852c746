#pragma once

#include <cstdint>

namespace kestrel::base {

/// 0x00BBGGRR: red in the low byte, as in the settings and on tapes. 255 is red, 16711680 blue.
using Colour = std::uint32_t;

constexpr std::uint8_t RedOf(Colour colour) { return static_cast<std::uint8_t>(colour); }
constexpr std::uint8_t GreenOf(Colour colour) { return static_cast<std::uint8_t>(colour >> 8); }
constexpr std::uint8_t BlueOf(Colour colour) { return static_cast<std::uint8_t>(colour >> 16); }

}  // namespace kestrel::base
