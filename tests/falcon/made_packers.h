#pragma once

#include <string>
#include <string_view>

// The plainest streams that the packings of models allow, written without the libraries that expand them.
namespace kestrel::made {

/// An LZ4 block of one sequence of literals.
std::string PackLz4(std::string_view plain);

/// Five bytes of properties (lc 3, lp 0, pb 2, a dictionary of 64 KB) and an LZMA stream of literals, without end mark.
std::string PackLzma(std::string_view plain);

}  // namespace kestrel::made
