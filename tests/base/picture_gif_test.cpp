#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/picture.h"

namespace kestrel::base {
namespace {

/// A GIF file of entries of a palette, the lower row first.
std::string Written(int side, const std::vector<std::uint8_t>& pixels, const std::vector<Colour>& palette) {
  std::string bytes;
  WriteGif(side, pixels, palette, [&bytes](std::span<const std::byte> piece) {
    bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  });
  return bytes;
}

/// The pixel at column x of row y from the TOP, 0xFFRRGGBB.
std::uint32_t PixelAt(const Picture& picture, int x, int y) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, picture.Pixels + std::ptrdiff_t{y} * picture.Stride + std::ptrdiff_t{x} * 4, 4);
  return pixel;
}

TEST(WriteGif, TheFirstRowIsTheLowerOneAndRedIsRed) {
  // 255 is red, 0xFF0000 blue.
  const Picture read = DecodePicture(Written(2, {0, 1, 2, 3}, {255, 0xFF0000, 0x00FF00, 0x332211}));
  ASSERT_EQ(read.Width, 2);
  ASSERT_EQ(read.Height, 2);
  EXPECT_EQ(PixelAt(read, 0, 1), 0xFFFF0000u);
  EXPECT_EQ(PixelAt(read, 1, 1), 0xFF0000FFu);
  EXPECT_EQ(PixelAt(read, 0, 0), 0xFF00FF00u);
  EXPECT_EQ(PixelAt(read, 1, 0), 0xFF112233u);
}

TEST(WriteGif, All256EntriesStandInTheFileAsTheyAre) {
  std::vector<Colour> palette;
  std::vector<std::uint8_t> pixels(std::size_t{256} * 256);
  // Colours that a reduction would merge: each a step beside the other.
  std::string table;
  for (unsigned n = 0; n < 256; ++n) {
    palette.push_back(0x504000 + n);
    table += std::string{static_cast<char>(n), '\x40', '\x50'};
  }
  for (std::size_t at = 0; at < pixels.size(); ++at) pixels[at] = static_cast<std::uint8_t>(at * 7 + at / 256);
  const std::string bytes = Written(256, pixels, palette);
  ASSERT_EQ(bytes.substr(0, 6), "GIF89a");
  EXPECT_NE(bytes.find(table), std::string::npos) << "red, green and blue of each";
  const Picture read = DecodePicture(bytes);
  for (int y = 0; y < 256; ++y) {
    for (int x = 0; x < 256; ++x) {
      const Colour colour = palette[pixels[static_cast<std::size_t>((255 - y) * 256 + x)]];
      ASSERT_EQ(PixelAt(read, x, y), 0xFF004050u | static_cast<unsigned>(RedOf(colour)) << 16) << x << " " << y;
    }
  }
}

TEST(WriteGif, ASinglePixelIsAPicture) {
  const Picture read = DecodePicture(Written(1, {0}, {0x0000FF}));
  EXPECT_EQ(read.Width, 1);
  EXPECT_EQ(PixelAt(read, 0, 0), 0xFFFF0000u);
}

TEST(WriteGif, WhatIsThrownWhileItIsWrittenPassesThrough) {
  const std::vector<std::uint8_t> pixels(std::size_t{300} * 300);
  const Colour white = 0xFFFFFF;
  int calls = 0;
  EXPECT_THROW(WriteGif(300, pixels, {&white, 1},
                        [&calls](std::span<const std::byte>) {
                          if (++calls == 3) throw RuntimeFailure("the disk is full");
                        }),
               RuntimeFailure);
  EXPECT_EQ(calls, 3) << "it is not called again";
}

TEST(WriteGif, ThePiecesAreSmall) {
  std::vector<std::uint8_t> pixels(std::size_t{300} * 300);
  for (std::size_t at = 0; at < pixels.size(); ++at) pixels[at] = static_cast<std::uint8_t>(at * at >> 3);
  const std::vector<Colour> palette(256, 0);
  std::size_t largest = 0, count = 0;
  WriteGif(300, pixels, palette, [&](std::span<const std::byte> piece) {
    largest = std::max(largest, piece.size());
    ++count;
  });
  EXPECT_LE(largest, 1024u);
  EXPECT_GT(count, 100u);
}

TEST(WriteGif, PicturesThatCannotBeAreRefused) {
  EXPECT_THROW(Written(0, {}, {0}), RuntimeFailure);
  EXPECT_THROW(Written(2, {0, 0, 0}, {0}), RuntimeFailure);
  EXPECT_THROW(Written(1, {0}, {}), RuntimeFailure);
  EXPECT_THROW(Written(1, {0}, std::vector<Colour>(257)), RuntimeFailure);
  EXPECT_THROW(Written(MaxMapSide + 1, {}, {0}), RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::base
