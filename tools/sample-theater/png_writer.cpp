#include "sample-theater/png_writer.h"

#include <zlib.h>

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace kestrel::land {
namespace {

constexpr int PackLevel = 6;
/// Each byte of a row is kept as its difference to the byte above: filter 2 of the format.
constexpr char FilterUp = 2;

void AppendBigEndian(std::string& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>((value >> shift) & 0xff));
}

void AppendChunk(std::string& out, std::string_view kind, std::string_view data) {
  AppendBigEndian(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out += kind;
  out += data;
  const auto* bytes = reinterpret_cast<const Bytef*>(out.data() + start);
  AppendBigEndian(out, static_cast<std::uint32_t>(crc32(0, bytes, static_cast<uInt>(out.size() - start))));
}

std::string FilteredRows(const Image& image) {
  const std::size_t stride = static_cast<std::size_t>(image.Side) * 3;
  std::string rows;
  rows.reserve((stride + 1) * image.Side);
  for (std::size_t y = 0; y < static_cast<std::size_t>(image.Side); ++y) {
    rows.push_back(FilterUp);
    for (std::size_t k = 0; k < stride; ++k) {
      const int above = y == 0 ? 0 : image.Bytes[(y - 1) * stride + k];
      rows.push_back(static_cast<char>((image.Bytes[y * stride + k] - above) & 0xff));
    }
  }
  return rows;
}

std::string Packed(const std::string& rows) {
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  std::string packed(size, '\0');
  const int result = compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                               reinterpret_cast<const Bytef*>(rows.data()), static_cast<uLong>(rows.size()), PackLevel);
  if (result != Z_OK) throw std::runtime_error("the map picture cannot be packed");
  packed.resize(size);
  return packed;
}

}  // namespace

std::string WritePng(const Image& image) {
  std::string png = "\x89PNG\r\n\x1a\n";
  std::string header;
  AppendBigEndian(header, static_cast<std::uint32_t>(image.Side));
  AppendBigEndian(header, static_cast<std::uint32_t>(image.Side));
  // 8 bits a channel, truecolour, deflate, the standard filters, not interlaced.
  header += std::string("\x08\x02\x00\x00\x00", 5);
  AppendChunk(png, "IHDR", header);
  AppendChunk(png, "IDAT", Packed(FilteredRows(image)));
  AppendChunk(png, "IEND", "");
  return png;
}

}  // namespace kestrel::land
