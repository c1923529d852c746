#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kestrel::link {

/// The order that sorting by plain partition exchange gives: the positions of `names` (0-based) in sorted order. Names
/// compare byte by byte; equal names stand as that exchange leaves them, with the name at (Low + High) / 2 as pivot,
/// positions counted from `Low`. Names made to drive the exchange into quadratic time are sorted with equal names in
/// order of arrival instead.
std::vector<std::uint32_t> NameOrder(std::span<const std::string_view> names, std::size_t Low);

}  // namespace kestrel::link
