#include "falcon/lzss.h"

#include <algorithm>
#include <cstring>

#include "base/bytes.h"
#include "base/failure.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t WindowSize = 4096;
constexpr std::size_t ShortestMatch = 2;
constexpr std::size_t LongestMatch = 17;
/// Eight matches of 17 bytes from 17 bytes of input: nothing can grow more.
constexpr std::size_t MostGrowth = 8;

/// The bytes that come out. The window holds nothing but the last 4096 of them, and zeros before the first, so that
/// matches are copied from the output itself.
class Output {
 public:
  explicit Output(std::size_t size) : bytes(size, '\0') {}
  bool Full() const { return used == bytes.size(); }

  /// The output must not be full.
  void Literal(std::uint8_t value) { bytes[used++] = static_cast<char>(value); }

  /// `position`: of the window. The last match of a piece may be longer than the piece.
  void Match(std::size_t position, std::size_t length) {
    // The place that is written next holds the oldest byte of the window.
    const std::size_t sinceOldest = (position - used - 1) % WindowSize;
    const std::size_t back = WindowSize - sinceOldest;
    const std::size_t room = bytes.size() - used;
    char* const to = bytes.data() + used;
    length = std::min(length, room);
    used += length;
    if (back <= static_cast<std::size_t>(to - bytes.data())) {
      // A fixed length is a move or two of the processor; what is too much of it is written over.
      if (back >= LongestMatch && room >= LongestMatch) {
        std::memcpy(to, to - back, LongestMatch);
        return;
      }
      // Byte by byte, because a match may overlap what it writes.
      const char* const from = to - back;
      for (std::size_t at = 0; at < length; ++at) to[at] = from[at];
      return;
    }
    const std::size_t before = back - static_cast<std::size_t>(to - bytes.data());
    const std::size_t zeros = std::min(before, length);
    std::fill_n(to, zeros, '\0');
    for (std::size_t at = zeros; at < length; ++at) to[at] = bytes[at - before];
  }

  std::string Take() { return std::move(bytes); }

 private:
  std::string bytes;
  std::size_t used = 0;
};

void ExpandToken(base::BinaryReader& input, bool literal, Output& output) {
  const std::uint8_t first = input.U8();
  if (literal) {
    output.Literal(first);
    return;
  }
  const std::size_t position = (first & 15u) << 8 | input.U8();
  output.Match(position, (first >> 4u) + ShortestMatch);
}

}  // namespace

std::string ExpandLzss(std::string_view packed, std::size_t size) {
  if (size / MostGrowth > packed.size()) throw base::RuntimeFailure("a packed piece ends too early");
  base::BinaryReader input(packed);
  Output output(size);
  while (!output.Full()) {
    const unsigned flags = input.U8();
    for (unsigned bit = 0; bit < 8 && !output.Full(); ++bit) ExpandToken(input, (flags >> bit & 1u) != 0, output);
  }
  return output.Take();
}

std::string ExpandLzss(std::string_view packed, std::int32_t size, std::size_t most) {
  if (size < 0 || static_cast<std::size_t>(size) > most) {
    throw base::RuntimeFailure("a packed piece has an impossible size");
  }
  return ExpandLzss(packed, static_cast<std::size_t>(size));
}

}  // namespace kestrel::falcon
