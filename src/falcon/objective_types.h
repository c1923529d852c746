#pragma once

#include <cstdint>
#include <string>

namespace kestrel::falcon {

// Types of objectives (EntityClass::Type) that are more than a name.
inline constexpr std::uint8_t AirbaseType = 1;
inline constexpr std::uint8_t AirstripType = 2;

/// "Airbase": what a type of objectives is called; "Unknown 0" for one that has no name.
std::string ObjectiveTypeName(std::uint8_t type);

}  // namespace kestrel::falcon
