#include "base/bytes.h"

#include <algorithm>
#include <bit>

#include "base/failure.h"

namespace kestrel::base {
namespace {

template <class Unsigned>
Unsigned FromLittleEndian(std::span<const std::byte> source) {
  Unsigned value = 0;
  for (std::size_t at = source.size(); at-- > 0;) {
    value = static_cast<Unsigned>((value << 8) | std::to_integer<Unsigned>(source[at]));
  }
  return value;
}

}  // namespace

std::span<const std::byte> BinaryReader::Take(std::size_t count) {
  if (count > Left()) throw RuntimeFailure("the file ends too early");
  const auto taken = bytes.subspan(position, count);
  position += count;
  return taken;
}

std::uint8_t BinaryReader::U8() { return std::to_integer<std::uint8_t>(Take(1)[0]); }
std::uint16_t BinaryReader::U16() { return FromLittleEndian<std::uint16_t>(Take(2)); }
std::int16_t BinaryReader::I16() { return static_cast<std::int16_t>(U16()); }
std::uint32_t BinaryReader::U32() { return FromLittleEndian<std::uint32_t>(Take(4)); }
std::int32_t BinaryReader::I32() { return static_cast<std::int32_t>(U32()); }
float BinaryReader::F32() { return std::bit_cast<float>(U32()); }
double BinaryReader::F64() { return std::bit_cast<double>(FromLittleEndian<std::uint64_t>(Take(8))); }

std::string BinaryReader::Text(std::size_t count) {
  const auto taken = Take(count);
  return std::string(reinterpret_cast<const char*>(taken.data()), taken.size());
}

void BinaryReader::Skip(std::size_t count) { Take(count); }

void BinaryWriter::PaddedText(std::string_view text, std::size_t width) {
  text = text.substr(0, width);
  Text(text);
  std::fill_n(Next(width - text.size()), width - text.size(), ' ');
}

void BinaryWriter::Grow(std::size_t count) { buffer.resize(std::max(2 * buffer.size(), used + count)); }

}  // namespace kestrel::base
