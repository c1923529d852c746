#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The only code that touches raw offsets of binary files. Little endian.
namespace kestrel::base {

/// Reads values in order from a span. Every read past the end throws RuntimeFailure.
class BinaryReader {
 public:
  explicit BinaryReader(std::span<const std::byte> source) : bytes(source) {}
  explicit BinaryReader(std::string_view source) : bytes(std::as_bytes(std::span(source))) {}

  std::uint8_t U8();
  std::uint16_t U16();
  std::int16_t I16();
  std::uint32_t U32();
  std::int32_t I32();
  float F32();
  double F64();
  /// `count` bytes as text.
  std::string Text(std::size_t count);
  void Skip(std::size_t count);
  std::size_t Left() const { return bytes.size() - position; }

 private:
  std::span<const std::byte> Take(std::size_t count);
  std::span<const std::byte> bytes;
  std::size_t position = 0;
};

/// Appends values in order to a buffer.
class BinaryWriter {
 public:
  void U8(std::uint8_t value);
  void U16(std::uint16_t value);
  void I16(std::int16_t value);
  void U32(std::uint32_t value);
  void I32(std::int32_t value);
  void F32(float value);
  void F64(double value);
  void Text(std::string_view text);
  /// `text` cut or padded with blanks to `width` characters.
  void PaddedText(std::string_view text, std::size_t width);
  const std::string& Bytes() const { return buffer; }

 private:
  std::string buffer;
};

}  // namespace kestrel::base
