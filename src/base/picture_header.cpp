#include "base/picture_header.h"

#include <cstdlib>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/picture.h"

namespace kestrel::base {
namespace {

using std::uint32_t;
using std::uint64_t;

// The packed kinds hold at most so many pixels in a byte: deflate packs 1032 bytes of 8 pixels into one.
constexpr uint64_t MostPixelsPerByte = 8300;

[[noreturn]] void Damaged() { throw RuntimeFailure("the picture is damaged"); }

uint32_t BigEndian16(BinaryReader& reader) {
  const uint32_t high = reader.U8();
  return (high << 8) | reader.U8();
}

uint32_t BigEndian32(BinaryReader& reader) {
  const uint32_t high = BigEndian16(reader);
  return (high << 16) | BigEndian16(reader);
}

/// A reader of `bytes` that stands at `offset`.
BinaryReader At(std::string_view bytes, std::size_t offset) {
  BinaryReader reader(bytes);
  reader.Skip(offset);
  return reader;
}

/// Pixels that lie in the file as they are need their bytes behind `offset`.
void NeedBytes(std::string_view bytes, uint64_t offset, uint64_t count) {
  if (offset > bytes.size() || bytes.size() - offset < count) Damaged();
}

PictureHeader CheckedSize(PictureKind kind, uint64_t width, uint64_t height, std::size_t fileSize) {
  if (width == 0 || height == 0) Damaged();
  if (width > MaxPictureSide || height > MaxPictureSide) throw RuntimeFailure("the picture is too large");
  if (width * height / MostPixelsPerByte > fileSize) Damaged();
  return {kind, static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
}

PictureHeader BmpHeader(std::string_view bytes) {
  BinaryReader reader = At(bytes, 10);
  const uint32_t pixels = reader.U32();
  const uint32_t infoSize = reader.U32();
  // 12 is the oldest header, with 16-bit sizes.
  const bool old = infoSize == 12;
  if (!old && infoSize < 40) Damaged();
  const uint32_t width = old ? reader.U16() : reader.U32();
  // A negative height means rows from the top.
  const auto height = static_cast<uint32_t>(old ? reader.U16() : std::llabs(reader.I32()));
  reader.Skip(2);
  const uint32_t bits = reader.U16();
  if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32) Damaged();
  const uint32_t packing = old ? 0 : reader.U32();
  const bool packed = packing == 1 || packing == 2;
  const auto header = CheckedSize(PictureKind::Bmp, width, height, bytes.size());
  if (!packed) NeedBytes(bytes, pixels, (uint64_t{width} * bits + 31) / 32 * 4 * height);
  return header;
}

PictureHeader PngHeader(std::string_view bytes) {
  BinaryReader reader = At(bytes, 12);
  if (reader.Text(4) != "IHDR") Damaged();
  const uint32_t width = BigEndian32(reader);
  const uint32_t height = BigEndian32(reader);
  return CheckedSize(PictureKind::Png, width, height, bytes.size());
}

enum JpegMarker : uint32_t {
  EndOfPicture = 0xD9,
  StartOfScan = 0xDA,
  App0 = 0xE0,
  App14 = 0xEE,
  App15 = 0xEF,
  Comment = 0xFE
};

/// The next segment of a JPEG file: its marker, and the count of bytes that follow its length field.
struct JpegSegment {
  uint32_t Marker = 0;
  uint32_t Length = 0;
};

JpegSegment NextSegment(BinaryReader& reader) {
  for (;;) {
    if (reader.U8() != 0xFF) Damaged();
    JpegSegment segment;
    do segment.Marker = reader.U8();
    while (segment.Marker == 0xFF);
    // These stand alone, without a length.
    if (segment.Marker == 0x01 || (segment.Marker >= 0xD0 && segment.Marker <= 0xD7)) continue;
    const uint32_t length = BigEndian16(reader);
    if (segment.Marker == 0 || segment.Marker == EndOfPicture || length < 2) Damaged();
    segment.Length = length - 2;
    return segment;
  }
}

PictureHeader JpegHeader(std::string_view bytes) {
  BinaryReader reader = At(bytes, 2);
  for (;;) {
    const auto [marker, length] = NextSegment(reader);
    if (marker == StartOfScan) Damaged();
    // Start of frame: all of C0 to CF but the tables and the reserved ones.
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (!frame) {
      reader.Skip(length);
      continue;
    }
    reader.Skip(1);
    const uint32_t height = BigEndian16(reader);
    return CheckedSize(PictureKind::Jpeg, BigEndian16(reader), height, bytes.size());
  }
}

PictureHeader GifHeader(std::string_view bytes) {
  BinaryReader reader = At(bytes, 6);
  const uint32_t screenWidth = reader.U16();
  const uint32_t screenHeight = reader.U16();
  CheckedSize(PictureKind::Gif, screenWidth, screenHeight, bytes.size());
  const uint32_t flags = reader.U8();
  reader.Skip(2);
  if ((flags & 0x80) != 0) reader.Skip(std::size_t{3} << ((flags & 7) + 1));
  for (;;) {
    const uint32_t block = reader.U8();
    if (block == 0x2C) {
      // The first picture has a size of its own.
      reader.Skip(4);
      const uint32_t width = reader.U16();
      return CheckedSize(PictureKind::Gif, width, reader.U16(), bytes.size());
    }
    if (block != 0x21) Damaged();
    reader.Skip(1);
    for (uint32_t length = reader.U8(); length != 0; length = reader.U8()) reader.Skip(length);
  }
}

PictureHeader DdsHeader(std::string_view bytes) {
  constexpr uint64_t HeaderEnd = 128;
  BinaryReader reader = At(bytes, 4);
  if (reader.U32() != 124) Damaged();
  reader.Skip(4);
  const uint32_t height = reader.U32();
  const uint32_t width = reader.U32();
  const uint32_t pitch = reader.U32();
  reader.Skip(52);
  if (reader.U32() != 32) Damaged();
  const uint32_t flags = reader.U32();
  const std::string code = reader.Text(4);
  const uint32_t bits = reader.U32();
  const auto header = CheckedSize(PictureKind::Dds, width, height, bytes.size());
  constexpr uint32_t Coded = 4, Rgb = 0x40;
  if ((flags & Coded) != 0) {
    if (code != "DXT1" && code != "DXT3" && code != "DXT5") throw RuntimeFailure("the picture's packing is not known");
    const uint64_t blocks = (uint64_t{width} + 3) / 4 * ((height + 3) / 4);
    NeedBytes(bytes, HeaderEnd, blocks * (code == "DXT1" ? 8 : 16));
  } else if ((flags & Rgb) != 0) {
    if (bits != 16 && bits != 24 && bits != 32) Damaged();
    const uint64_t row = uint64_t{width} * bits / 8;
    // Some writers leave the row length out.
    if (pitch != 0 && pitch < row) Damaged();
    NeedBytes(bytes, HeaderEnd, row * height);
  } else {
    throw RuntimeFailure("the picture's packing is not known");
  }
  return header;
}

}  // namespace

PictureHeader ReadPictureHeader(std::string_view bytes) {
  if (bytes.starts_with("BM")) return BmpHeader(bytes);
  if (bytes.starts_with("\xFF\xD8\xFF")) return JpegHeader(bytes);
  if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return GifHeader(bytes);
  if (bytes.starts_with("\x89PNG\r\n\x1A\n")) return PngHeader(bytes);
  if (bytes.starts_with("DDS ")) return DdsHeader(bytes);
  throw RuntimeFailure("no picture of a known kind");
}

std::string JpegWithoutMetadata(std::string_view bytes) {
  BinaryReader reader = At(bytes, 2);
  std::string kept(bytes.substr(0, 2));
  kept.reserve(bytes.size());
  for (;;) {
    const std::size_t start = bytes.size() - reader.Left();
    const auto [marker, length] = NextSegment(reader);
    if (marker == StartOfScan) return kept.append(bytes.substr(start));
    reader.Skip(length);
    // App14 tells how the colours are coded.
    const bool metadata = marker == Comment || (marker > App0 && marker <= App15 && marker != App14);
    if (!metadata) kept.append(bytes.substr(start, bytes.size() - reader.Left() - start));
  }
}

}  // namespace kestrel::base
