#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/little_endian.h"

// Small picture files put together byte by byte, without the library under test.
namespace kestrel::test {

inline std::string Little(std::uint32_t value, std::size_t bytes) { return Bytes8(value).substr(0, bytes); }

inline std::string Big32(std::uint32_t value) {
  const std::string little = Little(value, 4);
  return std::string(little.rbegin(), little.rend());
}

/// A BMP with the 40-byte header. `rows` are the rows in file order, already padded to 4 bytes.
inline std::string Bmp(std::uint32_t width, std::int32_t height, std::uint32_t bits, std::string_view palette,
                       std::string_view rows) {
  const auto start = static_cast<std::uint32_t>(54 + palette.size());
  const auto size = static_cast<std::uint32_t>(start + rows.size());
  return "BM" + Little(size, 4) + Little(0, 4) + Little(start, 4) + Little(40, 4) + Little(width, 4) +
         Little(static_cast<std::uint32_t>(height), 4) + Little(1, 2) + Little(bits, 2) + Little(0, 4) +
         Little(static_cast<std::uint32_t>(rows.size()), 4) + Little(2835, 4) + Little(2835, 4) +
         Little(static_cast<std::uint32_t>(palette.size() / 4), 4) + Little(0, 4) + std::string(palette) +
         std::string(rows);
}

inline std::string PngChunk(std::string_view kind, std::string_view data) {
  std::uint32_t crc = 0xFFFFFFFF;
  const std::string body = std::string(kind) + std::string(data);
  for (const char letter : body) {
    crc ^= static_cast<std::uint8_t>(letter);
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320u : 0u);
  }
  return Big32(static_cast<std::uint32_t>(data.size())) + body + Big32(~crc);
}

/// A zlib stream of one stored block, so nothing is packed.
inline std::string Stored(std::string_view data) {
  std::uint32_t a = 1, b = 0;
  for (const char letter : data) {
    a = (a + static_cast<std::uint8_t>(letter)) % 65521;
    b = (b + a) % 65521;
  }
  const auto length = static_cast<std::uint32_t>(data.size());
  return std::string("\x78\x01\x01", 3) + Little(length, 2) + Little(~length, 2) + std::string(data) +
         Big32((b << 16) | a);
}

/// A PNG. `kind` is the colour type of the format; `rows` have no filter bytes.
inline std::string Png(std::uint32_t width, std::uint32_t height, char bits, char kind, std::string_view palette,
                       const std::vector<std::string>& rows) {
  std::string data;
  for (const std::string& row : rows) data += '\0' + row;
  std::string head = Big32(width) + Big32(height) + bits + kind;
  head.append(3, '\0');
  return "\x89PNG\r\n\x1A\n" + PngChunk("IHDR", head) + (palette.empty() ? "" : PngChunk("PLTE", palette)) +
         PngChunk("IDAT", Stored(data)) + PngChunk("IEND", "");
}

/// A GIF of four colours; `pixels` are their numbers. A clear code stands before every two, so all codes have 3 bits.
inline std::string Gif(std::uint32_t width, std::uint32_t height, std::string_view palette,
                       const std::vector<unsigned>& pixels) {
  constexpr unsigned Clear = 4, End = 5;
  std::vector<unsigned> codes;
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    if (at % 2 == 0) codes.push_back(Clear);
    codes.push_back(pixels[at]);
  }
  codes.push_back(End);
  std::string packed;
  unsigned held = 0, bits = 0;
  for (const unsigned code : codes) {
    held |= code << bits;
    for (bits += 3; bits >= 8; bits -= 8, held >>= 8) packed += static_cast<char>(held);
  }
  packed += static_cast<char>(held);
  return "GIF89a" + Little(width, 2) + Little(height, 2) + "\x81" + Little(0, 2) + std::string(palette) + "," +
         Little(0, 4) + Little(width, 2) + Little(height, 2) + Little(0, 1) + "\x02" +
         static_cast<char>(packed.size()) + packed + Little(0, 1) + ";";
}

/// A DDS without smaller levels. `format` is the pixel format from its flags on: 28 bytes.
inline std::string Dds(std::uint32_t width, std::uint32_t height, std::uint32_t pitch, std::string_view format,
                       std::string_view data) {
  return "DDS " + Little(124, 4) + Little(0x1007, 4) + Little(height, 4) + Little(width, 4) + Little(pitch, 4) +
         std::string(52, '\0') + Little(32, 4) + std::string(format) + Little(0x1000, 4) + std::string(16, '\0') +
         std::string(data);
}

inline std::string Dxt1Format() { return Little(4, 4) + "DXT1" + std::string(20, '\0'); }
inline std::string Argb32Format() {
  return Little(0x41, 4) + Little(0, 4) + Little(32, 4) + Little(0xFF0000, 4) + Little(0xFF00, 4) + Little(0xFF, 4) +
         Little(0xFF000000, 4);
}

/// 8 by 8 pixels: the upper half about (30, 60, 100), the lower half about (200, 60, 100).
inline std::string Jpeg() {
  constexpr std::string_view Hex =
      "FFD8FFE000104A46494600010101004800480000FFDB0043000201010101010201010102020202020403020202020504040304060506"
      "060605060606070908060709070606080B08090A0A0A0A0A06080B0C0B0A0C090A0A0AFFDB004301020202020202050303050A070607"
      "0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0A0AFFC00011"
      "080008000803011100021101031101FFC40014000100000000000000000000000000000008FFC4001810000203000000000000000000"
      "00000000001867A5E3FFC4001501010100000000000000000000000000000607FFC4001C110001030500000000000000000000000000"
      "16186365A2A3E2E3FFDA000C03010002110311003F0021A9520556A2A5AC176A589B2D5B0763FFD9";
  std::string bytes;
  const auto digit = [](char letter) { return letter <= '9' ? letter - '0' : letter - 'A' + 10; };
  for (std::size_t at = 0; at < Hex.size(); at += 2) {
    bytes += static_cast<char>(digit(Hex[at]) * 16 + digit(Hex[at + 1]));
  }
  return bytes;
}

}  // namespace kestrel::test
