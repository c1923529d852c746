#include "falcon/made_packers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/little_endian.h"

namespace kestrel::made {
namespace {

/// The range coder of LZMA.
class RangeCoder {
 public:
  using Chance = std::uint16_t;  ///< that a bit is 0, of 2048
  static constexpr Chance Even = 1024;

  void Put(Chance& chance, unsigned bit) {
    const std::uint32_t bound = (range >> 11) * chance;
    if (bit == 0) {
      range = bound;
      chance = static_cast<Chance>(chance + (2048 - chance) / 32);
    } else {
      low += bound;
      range -= bound;
      chance = static_cast<Chance>(chance - chance / 32);
    }
    while (range < 1U << 24) {
      range <<= 8;
      Shift();
    }
  }
  std::string Take() {
    for (int n = 0; n < 5; ++n) Shift();
    return bytes;
  }

 private:
  /// Puts out the highest byte of what is settled; a run of 0xFF waits for the carry.
  void Shift() {
    if (low < 0xFF000000U || low > 0xFFFFFFFFU) {
      const auto carry = static_cast<unsigned char>(low >> 32);
      do {
        bytes += static_cast<char>(first + carry);
        first = 0xFF;
      } while (--waiting > 0);
      first = static_cast<unsigned char>(low >> 24);
    }
    ++waiting;
    low = (low & 0x00FFFFFFU) << 8;
  }

  std::uint64_t low = 0;
  std::uint32_t range = 0xFFFFFFFF;
  unsigned char first = 0;
  std::uint64_t waiting = 1;
  std::string bytes;
};

}  // namespace

std::string PackLz4(std::string_view plain) {
  std::string packed;
  std::size_t more = plain.size();
  if (more < 15) return static_cast<char>(more << 4) + std::string(plain);
  packed += '\xF0';
  for (more -= 15; more >= 255; more -= 255) packed += '\xFF';
  return packed + static_cast<char>(more) + std::string(plain);
}

std::string PackLzma(std::string_view plain) {
  RangeCoder coder;
  std::array<RangeCoder::Chance, 4> isMatch{};  // by the place; the state is that of literals throughout
  isMatch.fill(RangeCoder::Even);
  std::vector<RangeCoder::Chance> literals(std::size_t{8} * 0x300,
                                           RangeCoder::Even);  // by three bits of the former byte
  unsigned char former = 0;
  for (std::size_t at = 0; at < plain.size(); ++at) {
    coder.Put(isMatch[at & 3], 0);
    RangeCoder::Chance* const chances = literals.data() + std::size_t{0x300} * (former >> 5);
    former = static_cast<unsigned char>(plain[at]);
    unsigned symbol = 1;
    for (int bit = 7; bit >= 0; --bit) {
      const unsigned value = former >> bit & 1U;
      coder.Put(chances[symbol], value);
      symbol = symbol << 1 | value;
    }
  }
  return test::Bytes1((2 * 5 + 0) * 9 + 3) + test::Bytes4(1 << 16) + coder.Take();
}

}  // namespace kestrel::made
