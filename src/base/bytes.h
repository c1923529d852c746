#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The only code that touches raw offsets of binary files. Little endian.
namespace kestrel::base {

/// Reads values in order from a span. Every read past the end throws RuntimeFailure. Inline, since a file of areas has
/// millions of them.
class BinaryReader {
 public:
  explicit BinaryReader(std::span<const std::byte> source) : bytes(source) {}
  explicit BinaryReader(std::string_view source) : bytes(std::as_bytes(std::span(source))) {}

  std::uint8_t U8() { return LittleEndian<std::uint8_t>(); }
  std::uint16_t U16() { return LittleEndian<std::uint16_t>(); }
  std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
  std::uint32_t U32() { return LittleEndian<std::uint32_t>(); }
  std::int32_t I32() { return static_cast<std::int32_t>(U32()); }
  float F32() { return std::bit_cast<float>(U32()); }
  double F64() { return std::bit_cast<double>(LittleEndian<std::uint64_t>()); }
  /// A number of one of these types.
  template <class T>
  T Number() {
    if constexpr (std::same_as<T, std::uint8_t>) return U8();
    if constexpr (std::same_as<T, std::uint16_t>) return U16();
    if constexpr (std::same_as<T, std::int16_t>) return I16();
    if constexpr (std::same_as<T, std::uint32_t>) return U32();
    if constexpr (std::same_as<T, std::int32_t>) return I32();
    if constexpr (std::same_as<T, float>) return F32();
    if constexpr (std::same_as<T, double>) return F64();
  }
  /// `count` bytes as text.
  std::string Text(std::size_t count);
  void Skip(std::size_t count);
  std::size_t Left() const { return bytes.size() - position; }

 private:
  std::span<const std::byte> Take(std::size_t count) {
    if (count > Left()) RefuseEnd();
    const auto taken = bytes.subspan(position, count);
    position += count;
    return taken;
  }
  template <class Unsigned>
  Unsigned LittleEndian() {
    const std::byte* const source = Take(sizeof(Unsigned)).data();
    Unsigned value = 0;
    for (std::size_t at = 0; at < sizeof(Unsigned); ++at) {
      value = static_cast<Unsigned>(value | std::to_integer<Unsigned>(source[at]) << (8 * at));
    }
    return value;
  }
  [[noreturn]] static void RefuseEnd();

  std::span<const std::byte> bytes;
  std::size_t position = 0;
};

/// Appends values in order to a buffer. Inline, since a tape's record has thousands of them.
class BinaryWriter {
 public:
  void U8(std::uint8_t value) { LittleEndian(value); }
  void U16(std::uint16_t value) { LittleEndian(value); }
  void I16(std::int16_t value) { LittleEndian(static_cast<std::uint16_t>(value)); }
  void U32(std::uint32_t value) { LittleEndian(value); }
  void I32(std::int32_t value) { LittleEndian(static_cast<std::uint32_t>(value)); }
  void F32(float value) { LittleEndian(std::bit_cast<std::uint32_t>(value)); }
  void F64(double value) { LittleEndian(std::bit_cast<std::uint64_t>(value)); }
  void Number(std::uint8_t value) { U8(value); }
  void Number(std::uint16_t value) { U16(value); }
  void Number(std::int16_t value) { I16(value); }
  void Number(std::uint32_t value) { U32(value); }
  void Number(std::int32_t value) { I32(value); }
  void Number(float value) { F32(value); }
  void Number(double value) { F64(value); }
  void Text(std::string_view text) { text.copy(Next(text.size()), text.size()); }
  /// `text` cut or padded with blanks to `width` characters.
  void PaddedText(std::string_view text, std::size_t width);
  /// All that was written; good until more is.
  std::string_view Bytes() const { return {buffer.data(), used}; }
  /// Empties the buffer; its memory is kept for the next filling.
  void Clear() { used = 0; }

 private:
  /// Room for the next `count` bytes.
  char* Next(std::size_t count) {
    if (count > buffer.size() - used) Grow(count);
    char* const room = buffer.data() + used;
    used += count;
    return room;
  }
  template <class Unsigned>
  void LittleEndian(Unsigned value) {
    char* const bytes = Next(sizeof(Unsigned));
    for (std::size_t at = 0; at < sizeof(Unsigned); ++at) bytes[at] = static_cast<char>(value >> (8 * at));
  }
  void Grow(std::size_t count);

  std::vector<char> buffer;
  std::size_t used = 0;
};

}  // namespace kestrel::base
