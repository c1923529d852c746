#pragma once

#include <bit>
#include <cstdint>
#include <string>

// Numbers as bytes, put together by a writer of the tests' own.
namespace kestrel::test {

inline std::string Bytes8(std::uint64_t value) {
  std::string bytes;
  for (int n = 0; n < 8; ++n) bytes.push_back(static_cast<char>(value >> (8 * n) & 0xFF));
  return bytes;
}
inline std::string Bytes1(unsigned value) { return Bytes8(value).substr(0, 1); }
inline std::string Bytes2(int value) { return Bytes8(static_cast<std::uint64_t>(value)).substr(0, 2); }
inline std::string Bytes4(std::int64_t value) { return Bytes8(static_cast<std::uint64_t>(value)).substr(0, 4); }
inline std::string BytesF32(float value) { return Bytes4(std::bit_cast<std::uint32_t>(value)); }
inline std::string BytesF64(double value) { return Bytes8(std::bit_cast<std::uint64_t>(value)); }

}  // namespace kestrel::test
