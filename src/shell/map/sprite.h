#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace kestrel::shell {

/// Pixels of one row that are laid on together, so that the compiler makes one vector of their bytes.
inline constexpr int BlockPixels = 4;
using BlockBytes = std::array<std::uint8_t, BlockPixels * 4>;

/// Some neighbouring pixels of a sprite, at least one of them inked.
struct InkBlock {
  std::int16_t X = 0;  ///< the first pixel, relative to the sprite's position
  std::int16_t Y = 0;
  BlockBytes Coverage = {};  ///< 0..128 for each channel of each pixel: 0 leaves and 128 hides what is below
};

/// A small shape without colour: only the parts that it inks. The colour comes with each drawing.
struct Sprite {
  QRect Box;  ///< the blocks, relative to the position; empty without ink
  std::vector<InkBlock> Ink;
};

/// The shape in the alpha channel of `drawn` (ARGB32 premultiplied), whose pixel `origin` is the sprite's position.
Sprite SpriteFromAlpha(const QImage& drawn, QPoint origin);

/// `colour` (0xFFRRGGBB) in each pixel of a block.
inline BlockBytes BlockOf(std::uint32_t colour) {
  BlockBytes bytes;
  for (std::size_t pixel = 0; pixel < BlockPixels; ++pixel) std::memcpy(&bytes[pixel * 4], &colour, 4);
  return bytes;
}

/// LayBlock for every compiler.
inline void LayBlockByBytes(std::uint32_t* below, const BlockBytes& colour, const InkBlock& ink) {
  BlockBytes bytes;
  std::memcpy(bytes.data(), below, bytes.size());
  for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
    const unsigned share = ink.Coverage[byte];
    bytes[byte] = static_cast<std::uint8_t>((bytes[byte] * (128 - share) + colour[byte] * share) >> 7);
  }
  std::memcpy(below, bytes.data(), bytes.size());
}

/// Lays `colour` over the pixels from `below` on.
inline void LayBlock(std::uint32_t* below, const BlockBytes& colour, const InkBlock& ink) {
#ifdef __GNUC__
  // The compiler's own vectors: it makes nothing as good of the plain loop.
  using Bytes = std::uint8_t __attribute__((vector_size(sizeof(BlockBytes))));
  using Words = std::uint16_t __attribute__((vector_size(2 * sizeof(BlockBytes))));
  Bytes under, over, coverage;
  std::memcpy(&under, below, sizeof under);
  std::memcpy(&over, colour.data(), sizeof over);
  std::memcpy(&coverage, ink.Coverage.data(), sizeof coverage);
  const Words share = __builtin_convertvector(coverage, Words);
  const Words mixed =
      (__builtin_convertvector(under, Words) * (128 - share) + __builtin_convertvector(over, Words) * share) >> 7;
  under = __builtin_convertvector(mixed, Bytes);
  std::memcpy(below, &under, sizeof under);
#else
  LayBlockByBytes(below, colour, ink);
#endif
}

/// `colour` laid over one pixel with a coverage of 0..128; both 0xFFRRGGBB. Gives what LayBlock gives.
inline std::uint32_t Blend(std::uint32_t below, std::uint32_t colour, std::uint32_t coverage) {
  constexpr std::uint32_t redBlue = 0x00FF00FF;
  constexpr std::uint32_t green = 0x0000FF00;
  const std::uint32_t rest = 128 - coverage;
  return 0xFF000000 | ((((colour & redBlue) * coverage + (below & redBlue) * rest) >> 7) & redBlue) |
         ((((colour & green) * coverage + (below & green) * rest) >> 7) & green);
}

}  // namespace kestrel::shell
