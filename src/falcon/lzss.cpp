#include "falcon/lzss.h"

#include <array>
#include <cstdint>

#include "base/bytes.h"
#include "base/failure.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t WindowSize = 4096;
constexpr std::size_t ShortestMatch = 2;
/// Eight matches of 17 bytes from 17 bytes of input: nothing can grow more.
constexpr std::size_t MostGrowth = 8;

/// The bytes that have come out, with the window that matches look back into.
class Output {
 public:
  explicit Output(std::size_t size) : wanted(size) { bytes.reserve(size); }
  bool Full() const { return bytes.size() == wanted; }

  void Literal(std::uint8_t value) {
    bytes += static_cast<char>(value);
    window[next] = value;
    next = (next + 1) % WindowSize;
  }

  /// Byte by byte, because a match may overlap what it writes. The last match of a piece may be longer than the piece.
  void Match(std::size_t position, std::size_t length) {
    for (std::size_t at = 0; at < length && !Full(); ++at) Literal(window[(position + at) % WindowSize]);
  }

  std::string Take() { return std::move(bytes); }

 private:
  std::size_t wanted;
  std::string bytes;
  std::array<std::uint8_t, WindowSize> window = {};
  std::size_t next = 1;
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

}  // namespace kestrel::falcon
