#include "base/picture_header.h"

#include <array>
#include <cstdlib>
#include <span>

#include "base/failure.h"
#include "base/picture.h"

namespace kestrel::base {
namespace {

using std::uint32_t;
using std::uint64_t;

// The packed kinds hold at most so many pixels in a byte: deflate packs 1032 bytes of 8 pixels into one.
constexpr uint64_t MostPixelsPerByte = 8300;

[[noreturn]] void Damaged() { throw RuntimeFailure("the picture is damaged"); }

/// Reads values in order from a source, little endian unless told. Every read past the end throws RuntimeFailure.
class HeaderReader {
 public:
  HeaderReader(const PictureSource& from, std::size_t start) : source(from) { Skip(start); }

  uint32_t U8() { return Number<1>(); }
  uint32_t U16() { return Number<2>(); }
  uint32_t U32() { return Number<4>(); }
  std::int32_t I32() { return static_cast<std::int32_t>(U32()); }
  uint32_t BigEndian16() {
    const uint32_t high = U8();
    return (high << 8) | U8();
  }
  uint32_t BigEndian32() {
    const uint32_t high = BigEndian16();
    return (high << 16) | BigEndian16();
  }
  std::string Text(std::size_t count) {
    std::string text(count, '\0');
    Take(std::as_writable_bytes(std::span(text)));
    return text;
  }
  void Skip(std::size_t count) {
    if (count > source.Size() - position) RefuseEnd();
    position += count;
  }
  uint64_t Position() const { return position; }

 private:
  [[noreturn]] static void RefuseEnd() { throw RuntimeFailure("the file ends too early"); }
  void Take(std::span<std::byte> into) {
    if (source.Read(position, into) < into.size()) RefuseEnd();
    position += into.size();
  }
  template <std::size_t count>
  uint32_t Number() {
    std::array<std::byte, count> bytes;
    Take(bytes);
    uint32_t value = 0;
    for (std::size_t at = count; at-- > 0;) value = value << 8 | std::to_integer<uint32_t>(bytes[at]);
    return value;
  }

  const PictureSource& source;
  uint64_t position = 0;
};

/// Pixels that lie in the file as they are need their bytes behind `offset`.
void NeedBytes(const PictureSource& source, uint64_t offset, uint64_t count) {
  if (offset > source.Size() || source.Size() - offset < count) Damaged();
}

PictureHeader CheckedSize(PictureKind kind, uint64_t width, uint64_t height, uint64_t fileSize) {
  if (width == 0 || height == 0) Damaged();
  if (width > MaxPictureSide || height > MaxPictureSide) throw RuntimeFailure("the picture is too large");
  if (width * height / MostPixelsPerByte > fileSize) Damaged();
  return {kind, static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
}

PictureHeader BmpHeader(const PictureSource& source) {
  HeaderReader reader(source, 10);
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
  const auto header = CheckedSize(PictureKind::Bmp, width, height, source.Size());
  if (!packed) NeedBytes(source, pixels, (uint64_t{width} * bits + 31) / 32 * 4 * height);
  return header;
}

PictureHeader PngHeader(const PictureSource& source) {
  HeaderReader reader(source, 12);
  if (reader.Text(4) != "IHDR") Damaged();
  const uint32_t width = reader.BigEndian32();
  const uint32_t height = reader.BigEndian32();
  return CheckedSize(PictureKind::Png, width, height, source.Size());
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

JpegSegment NextSegment(HeaderReader& reader) {
  for (;;) {
    if (reader.U8() != 0xFF) Damaged();
    JpegSegment segment;
    do segment.Marker = reader.U8();
    while (segment.Marker == 0xFF);
    // These stand alone, without a length.
    if (segment.Marker == 0x01 || (segment.Marker >= 0xD0 && segment.Marker <= 0xD7)) continue;
    const uint32_t length = reader.BigEndian16();
    if (segment.Marker == 0 || segment.Marker == EndOfPicture || length < 2) Damaged();
    segment.Length = length - 2;
    return segment;
  }
}

PictureHeader JpegHeader(const PictureSource& source) {
  HeaderReader reader(source, 2);
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
    const uint32_t height = reader.BigEndian16();
    return CheckedSize(PictureKind::Jpeg, reader.BigEndian16(), height, source.Size());
  }
}

PictureHeader GifHeader(const PictureSource& source) {
  HeaderReader reader(source, 6);
  const uint32_t screenWidth = reader.U16();
  const uint32_t screenHeight = reader.U16();
  CheckedSize(PictureKind::Gif, screenWidth, screenHeight, source.Size());
  const uint32_t flags = reader.U8();
  reader.Skip(2);
  if ((flags & 0x80) != 0) reader.Skip(std::size_t{3} << ((flags & 7) + 1));
  for (;;) {
    const uint32_t block = reader.U8();
    if (block == 0x2C) {
      // The first picture has a size of its own.
      reader.Skip(4);
      const uint32_t width = reader.U16();
      return CheckedSize(PictureKind::Gif, width, reader.U16(), source.Size());
    }
    if (block != 0x21) Damaged();
    reader.Skip(1);
    for (uint32_t length = reader.U8(); length != 0; length = reader.U8()) reader.Skip(length);
  }
}

PictureHeader DdsHeader(const PictureSource& source) {
  constexpr uint64_t HeaderEnd = 128;
  HeaderReader reader(source, 4);
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
  const auto header = CheckedSize(PictureKind::Dds, width, height, source.Size());
  constexpr uint32_t Coded = 4, Rgb = 0x40;
  if ((flags & Coded) != 0) {
    if (code != "DXT1" && code != "DXT3" && code != "DXT5") throw RuntimeFailure("the picture's packing is not known");
    const uint64_t blocks = (uint64_t{width} + 3) / 4 * ((height + 3) / 4);
    NeedBytes(source, HeaderEnd, blocks * (code == "DXT1" ? 8 : 16));
  } else if ((flags & Rgb) != 0) {
    if (bits != 16 && bits != 24 && bits != 32) Damaged();
    const uint64_t row = uint64_t{width} * bits / 8;
    // Some writers leave the row length out.
    if (pitch != 0 && pitch < row) Damaged();
    NeedBytes(source, HeaderEnd, row * height);
  } else {
    throw RuntimeFailure("the picture's packing is not known");
  }
  return header;
}

}  // namespace

PictureHeader ReadPictureHeader(const PictureSource& source) {
  std::string head(8, '\0');
  head.resize(source.Read(0, std::as_writable_bytes(std::span(head))));
  if (head.starts_with("BM")) return BmpHeader(source);
  if (head.starts_with("\xFF\xD8\xFF")) return JpegHeader(source);
  if (head.starts_with("GIF87a") || head.starts_with("GIF89a")) return GifHeader(source);
  if (head.starts_with("\x89PNG\r\n\x1A\n")) return PngHeader(source);
  if (head.starts_with("DDS ")) return DdsHeader(source);
  throw RuntimeFailure("no picture of a known kind");
}

std::vector<FilePart> JpegPartsWithoutMetadata(const PictureSource& source) {
  HeaderReader reader(source, 2);
  std::vector<FilePart> kept = {{0, 2}};
  const auto keep = [&kept](uint64_t begin, uint64_t end) {
    const FilePart part = {static_cast<uint32_t>(begin), static_cast<uint32_t>(end)};
    if (kept.back().End == part.Begin) {
      kept.back().End = part.End;
    } else {
      kept.push_back(part);
    }
  };
  for (;;) {
    const uint64_t start = reader.Position();
    const auto [marker, length] = NextSegment(reader);
    if (marker == StartOfScan) {
      keep(start, source.Size());
      return kept;
    }
    reader.Skip(length);
    // App14 tells how the colours are coded.
    const bool metadata = marker == Comment || (marker > App0 && marker <= App15 && marker != App14);
    if (!metadata) keep(start, reader.Position());
  }
}

std::string JpegWithoutMetadata(std::string_view bytes) {
  std::string kept;
  for (const FilePart& part : JpegPartsWithoutMetadata(PictureSource(bytes))) {
    kept += bytes.substr(part.Begin, part.End - part.Begin);
  }
  return kept;
}

}  // namespace kestrel::base
