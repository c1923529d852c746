#include "base/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/picture_header.h"
#include "picture_files.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

using namespace std::string_literals;
using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t Red = 0xFFFF0000, Green = 0xFF00FF00, Blue = 0xFF0000FF, White = 0xFFFFFFFF, Black = 0xFF000000;

/// All pixels, row by row from the top.
Pixels PixelsOf(const Picture& picture) {
  Pixels pixels;
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x) {
      std::uint32_t pixel;
      std::memcpy(&pixel, picture.Pixels + std::ptrdiff_t{y} * picture.Stride + std::ptrdiff_t{x} * 4, 4);
      pixels.push_back(pixel);
    }
  }
  return pixels;
}

struct Golden {
  std::string Name;
  std::string Bytes;
  int Width;
  Pixels Wanted;
};

// 2 by 2: red and green above, blue and white below.
std::vector<Golden> Goldens() {
  const Pixels four = {Red, Green, Blue, White};
  const std::string upper24 = "\0\0\xFF\0\xFF\0\0\0"s, lower24 = "\xFF\0\0\xFF\xFF\xFF\0\0"s;
  const std::string upper32 = "\0\0\xFF\0\0\xFF\0\0"s, lower32 = "\xFF\0\0\0\xFF\xFF\xFF\0"s;
  const std::string palette = "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0\xFF\xFF\xFF\0"s;
  const std::string colours = "\xFF\0\0\0\xFF\0\0\0\xFF\xFF\xFF\xFF"s;
  const std::string upperDeep = "\xFF\xFF\0\0\0\0\0\0\xFF\xFF\0\0"s,
                    lowerDeep = "\0\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s;
  using test::Bmp, test::Png, test::Dds;
  return {
      {"bmp 24", Bmp(2, 2, 24, "", lower24 + upper24), 2, four},
      {"bmp 24 from the top", Bmp(2, -2, 24, "", upper24 + lower24), 2, four},
      {"bmp 32", Bmp(2, 2, 32, "", lower32 + upper32), 2, four},
      {"bmp 16", Bmp(2, 2, 16, "", "\x1F\0\xFF\x7F\0\x7C\xE0\x03"s), 2, four},
      {"bmp 8", Bmp(2, 2, 8, palette, "\2\3\0\0\0\1\0\0"s), 2, four},
      {"bmp 4", Bmp(2, 2, 4, palette, "\x23\0\0\0\x01\0\0\0"s), 2, four},
      {"bmp 1", Bmp(2, 2, 1, "\0\0\0\0\xFF\xFF\xFF\0"s, "\x40\0\0\0\x80\0\0\0"s), 2, {White, Black, Black, White}},
      {"png 24", Png(2, 2, 8, 2, "", {"\xFF\0\0\0\xFF\0"s, "\0\0\xFF\xFF\xFF\xFF"s}), 2, four},
      {"png 32", Png(2, 2, 8, 6, "", {"\xFF\0\0\x7F\0\xFF\0\0"s, "\0\0\xFF\x01\xFF\xFF\xFF\xFF"s}), 2, four},
      {"png 48", Png(2, 2, 16, 2, "", {upperDeep, lowerDeep}), 2, four},
      {"png 8 in colours", Png(2, 2, 8, 3, colours, {"\0\1"s, "\2\3"s}), 2, four},
      {"png 2 in colours", Png(2, 2, 2, 3, colours, {"\x10"s, "\xB0"s}), 2, four},
      {"png 8 grey", Png(2, 2, 8, 0, "", {"\xFF\x10"s, "\0\x80"s}), 2, {White, 0xFF101010, Black, 0xFF808080}},
      {"png 16 grey",
       Png(2, 2, 16, 0, "", {"\xFF\xFF\x10\0"s, "\0\0\x80\1"s}),
       2,
       {White, 0xFF101010, Black, 0xFF808080}},
      {"png 1 grey", Png(2, 2, 1, 0, "", {"\x80"s, "\x40"s}), 2, {White, Black, Black, White}},
      {"gif", test::Gif(2, 2, colours, {0, 1, 2, 3}), 2, four},
      {"dds 32", Dds(2, 2, 8, test::Argb32Format(), upper32 + lower32), 2, four},
      {"dds dxt1", Dds(4, 4, 8, test::Dxt1Format(), "\0\xF8\0\0\0\0\0\0"s), 4, Pixels(16, Red)},
  };
}

TEST(Picture, EachKindGivesItsPixelsOpaqueAndFromTheTop) {
  for (const Golden& golden : Goldens()) {
    SCOPED_TRACE(golden.Name);
    const Picture picture = DecodePicture(golden.Bytes);
    EXPECT_FALSE(picture.Empty());
    EXPECT_EQ(picture.Width, golden.Width);
    EXPECT_GE(picture.Stride, picture.Width * 4);
    EXPECT_EQ(PixelsOf(picture), golden.Wanted);
  }
}

TEST(Picture, AJpegGivesItsPixelsNearly) {
  const Picture picture = DecodePicture(test::Jpeg());
  const Pixels pixels = PixelsOf(picture);
  ASSERT_EQ(pixels.size(), 64u);
  const auto near = [](std::uint32_t pixel, int red) {
    const auto part = [pixel](int shift) { return static_cast<int>((pixel >> shift) & 255); };
    return part(24) == 255 && std::abs(part(16) - red) < 8 && std::abs(part(8) - 60) < 8 && std::abs(part(0) - 100) < 8;
  };
  EXPECT_TRUE(near(pixels.front(), 30)) << std::hex << pixels.front();
  EXPECT_TRUE(near(pixels.back(), 200)) << std::hex << pixels.back();
}

TEST(Picture, WhatAJpegTellsBesideItsPixelsIsNotRead) {
  const auto segment = [](char marker, const std::string& data) {
    const auto length = static_cast<std::uint32_t>(data.size() + 2);
    return "\xFF"s + marker + static_cast<char>(length >> 8) + static_cast<char>(length) + data;
  };
  std::string bytes = test::Jpeg();
  bytes.insert(20, segment('\xE1', "Exif\0\0II*\0\xFF\xFF\xFF\xFF"s) + segment('\xFE', "comment") +
                       segment('\xED',
                               "Photoshop 3.0\0"
                               "8BIM\xFF\xFF"s) +
                       segment('\xE2', "ICC_PROFILE\0\1\1"s));
  EXPECT_EQ(JpegWithoutMetadata(bytes), test::Jpeg());
  EXPECT_EQ(PixelsOf(DecodePicture(bytes)), PixelsOf(DecodePicture(test::Jpeg())));
}

TEST(Picture, CopiesKeepThePixelsAlive) {
  Picture kept;
  {
    const Picture first = DecodePicture(Goldens().front().Bytes);
    kept = first;
  }
  EXPECT_EQ(PixelsOf(kept), (Pixels{Red, Green, Blue, White}));
}

TEST(Picture, FilesAreLoadedWhateverTheirNames) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "map.gif", test::Jpeg());
  EXPECT_EQ(LoadPicture(folder / "map.gif").Width, 8);
}

TEST(Picture, FilesThatAreNoPictureThrow) {
  const test::TempFolder folder;
  EXPECT_THROW(LoadPicture(folder / "missing.png"), RuntimeFailure);
  EXPECT_THROW(LoadPicture(folder.Path()), RuntimeFailure);
  for (const std::string& bytes :
       {""s, "B"s, "BM"s, "text"s, "II*\0"s, "RIFF\0\0\0\0WEBP"s, "8BPS"s, std::string(5000, '\0')}) {
    EXPECT_THROW(DecodePicture(bytes), RuntimeFailure) << bytes;
  }
}

/// Loads `bytes` and touches every pixel. True when it was taken; false for RuntimeFailure, the only one allowed.
bool Taken(const std::string& bytes) {
  // A copy of its own size, so that a sanitizer sees a read past the end.
  const std::vector<char> exact(bytes.begin(), bytes.end());
  try {
    const Picture picture = DecodePicture(std::string_view(exact.data(), exact.size()));
    EXPECT_EQ(PixelsOf(picture).size(),
              static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height));
    return true;
  } catch (const RuntimeFailure&) {
    return false;
  }
}

TEST(Picture, EveryTruncationIsTakenOrRefused) {
  std::vector<Golden> goldens = Goldens();
  goldens.push_back({"jpeg", test::Jpeg(), 8, {}});
  for (const Golden& golden : goldens) {
    SCOPED_TRACE(golden.Name);
    EXPECT_TRUE(Taken(golden.Bytes));
    // In no kind are 24 bytes enough for the header and a pixel.
    for (std::size_t length = 0; length < golden.Bytes.size(); ++length) {
      const bool taken = Taken(golden.Bytes.substr(0, length));
      EXPECT_FALSE(taken && length < 24) << length;
    }
  }
}

TEST(Picture, EveryDamagedByteIsTakenOrRefused) {
  std::vector<Golden> goldens = Goldens();
  goldens.push_back({"jpeg", test::Jpeg(), 8, {}});
  int refused = 0;
  for (const Golden& golden : goldens) {
    for (std::size_t at = 0; at < golden.Bytes.size(); ++at) {
      for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
        std::string damaged = golden.Bytes;
        damaged[at] = static_cast<char>(value);
        if (!Taken(damaged)) ++refused;
      }
    }
  }
  EXPECT_GT(refused, 0);
}

TEST(Picture, LyingSizesAreRefused) {
  const auto withBytes = [](std::string bytes, std::size_t offset, const std::string& patch) {
    return bytes.replace(offset, patch.size(), patch);
  };
  const auto goldens = Goldens();
  const auto bytesOf = [&](std::string_view name) {
    for (const Golden& golden : goldens) {
      if (golden.Name == name) return golden.Bytes;
    }
    return ""s;
  };
  const std::string littleHuge = test::Little(100000, 4), bigHuge = test::Big32(100000);
  std::string hugePng = test::Png(100000, 100000, 8, 2, "", {"\xFF\0\0\0\xFF\0"s});
  std::string jpeg = test::Jpeg();
  const std::size_t frame = jpeg.find("\xFF\xC0");
  const std::pair<const char*, std::string> lies[] = {
      {"bmp", withBytes(bytesOf("bmp 24"), 18, littleHuge + littleHuge)},
      {"bmp below 0", withBytes(bytesOf("bmp 24"), 18, test::Little(0xFFFFFFFF, 4))},
      {"bmp lowest height", withBytes(bytesOf("bmp 24"), 22, test::Little(0x80000000, 4))},
      {"bmp of nothing", withBytes(bytesOf("bmp 24"), 18, test::Little(0, 4))},
      {"bmp within bounds, but short",
       withBytes(bytesOf("bmp 24"), 18, test::Little(16384, 4) + test::Little(16384, 4))},
      {"png", hugePng},
      {"png within bounds, but short", test::Png(16384, 16384, 8, 2, "", {"\xFF\0\0\0\xFF\0"s})},
      {"png of nothing", test::Png(0, 2, 8, 2, "", {""s})},
      {"gif screen", withBytes(bytesOf("gif"), 6, "\xFF\xFF\xFF\xFF")},
      {"gif picture", withBytes(bytesOf("gif"), 30, "\xFF\xFF\xFF\xFF")},
      {"dds", withBytes(bytesOf("dds dxt1"), 12, littleHuge + littleHuge)},
      {"dds short", withBytes(bytesOf("dds 32"), 12, test::Little(64, 4) + test::Little(64, 4))},
      {"jpeg", withBytes(jpeg, frame + 5, "\xFF\xFF\xFF\xFF")},
      {"jpeg of nothing", withBytes(jpeg, frame + 5, "\0\0"s)},
  };
  for (const auto& [name, bytes] : lies) EXPECT_THROW(DecodePicture(bytes), RuntimeFailure) << name;
}

/// A picture of the pixels; `width` of them make a row.
Picture PictureOf(const Pixels& pixels, int width) {
  const auto kept = std::make_shared<Pixels>(pixels);
  const int height = static_cast<int>(kept->size()) / width;
  const auto* top = reinterpret_cast<const std::uint8_t*>(kept->data());
  return Picture(width, height, width * 4, top, std::shared_ptr<void>(kept, kept->data()));
}

TEST(SquarePicture, SideIsTheLargerOne) {
  for (const auto& [width, height] : {std::pair(8, 10), std::pair(10, 8), std::pair(1, 10), std::pair(10, 10)}) {
    const Picture square = SquarePicture(PictureOf(Pixels(static_cast<std::size_t>(width * height), Green), width));
    EXPECT_EQ(square.Width, 10) << width << " by " << height;
    EXPECT_EQ(square.Height, 10) << width << " by " << height;
    EXPECT_EQ(PixelsOf(square), Pixels(100, Green)) << width << " by " << height;
  }
}

TEST(SquarePicture, OrderOfRowsAndColumnsStays) {
  // Red above blue, twice as wide as high.
  Pixels pixels(32 * 16, Red);
  std::fill(pixels.begin() + 32 * 8, pixels.end(), Blue);
  const Pixels square = PixelsOf(SquarePicture(PictureOf(pixels, 32)));
  ASSERT_EQ(square.size(), 1024U);
  EXPECT_EQ(square[5], Red);
  EXPECT_EQ(square[32 * 10 + 31], Red);
  EXPECT_EQ(square[32 * 21], Blue);
  EXPECT_EQ(square[1023], Blue);
}

TEST(SquarePicture, FilterIsBicubic) {
  // A bicubic filter reaches beyond the values on both sides of an edge; a linear one does not.
  // Stretched eightfold along the rows, the edge between the columns lies in the middle.
  Pixels two(16 * 2);
  for (int y = 0; y < 16; ++y) two[2 * y] = 0xFF404040, two[2 * y + 1] = 0xFFC0C0C0;
  const Pixels square = PixelsOf(SquarePicture(PictureOf(two, 2)));
  const auto [low, top] = std::minmax_element(square.begin(), square.end());
  EXPECT_LT(*low, 0xFF404040u);
  EXPECT_GT(*top, 0xFFC0C0C0u);
}

TEST(SquarePicture, SquareOneIsTheSame) {
  const Picture picture = PictureOf({Red, Green, Blue, White}, 2);
  EXPECT_EQ(SquarePicture(picture).Pixels, picture.Pixels);
}

TEST(SquarePicture, EmptyAndTooLargeOnesAreRefused) {
  EXPECT_THROW(SquarePicture(Picture()), RuntimeFailure);
  EXPECT_THROW(SquarePicture(PictureOf(Pixels(MaxMapSide + 1, Red), 1)), RuntimeFailure);
  EXPECT_THROW(SquarePicture(PictureOf(Pixels(MaxMapSide + 1, Red), MaxMapSide + 1)), RuntimeFailure);
}

TEST(FilledPicture, AWideOneLiesAtTheFootAndATallOneAtTheLeft) {
  const Pixels wide = PixelsOf(FilledPicture(PictureOf({Red, Green, Blue, White, Red, Green}, 3)));
  EXPECT_EQ(wide, (Pixels{Black, Black, Black, Red, Green, Blue, White, Red, Green}));
  const Pixels tall = PixelsOf(FilledPicture(PictureOf({Red, Green, Blue, White, Red, Green}, 2)));
  EXPECT_EQ(tall, (Pixels{Red, Green, Black, Blue, White, Black, Red, Green, Black}));
}

TEST(FilledPicture, RowsMayHaveBytesBesideThem) {
  // Two pixels of three count.
  const auto kept = std::make_shared<Pixels>(Pixels{Red, Green, White, Blue, Red, White, Green, Blue, White});
  const auto* top = reinterpret_cast<const std::uint8_t*>(kept->data());
  const Picture narrow(2, 3, 3 * 4, top, std::shared_ptr<void>(kept, kept->data()));
  EXPECT_EQ(PixelsOf(FilledPicture(narrow)), (Pixels{Red, Green, Black, Blue, Red, Black, Green, Blue, Black}));
}

TEST(FilledPicture, TakesAndRefusesWhatASquareOneDoes) {
  const Picture picture = PictureOf({Red, Green, Blue, White}, 2);
  EXPECT_EQ(FilledPicture(picture).Pixels, picture.Pixels);
  EXPECT_THROW(FilledPicture(Picture()), RuntimeFailure);
  EXPECT_THROW(FilledPicture(PictureOf(Pixels(MaxMapSide + 1, Red), 1)), RuntimeFailure);
}

TEST(EncodeGif, FewColoursComeBackAsTheyWere) {
  const Pixels four = {Red, Green, Blue, White, Black, Red};
  const std::string bytes = EncodeGif(PictureOf(four, 3));
  EXPECT_EQ(bytes.substr(0, 3), "GIF");
  EXPECT_EQ(PixelsOf(DecodePicture(bytes)), four);
}

TEST(EncodeGif, BlankPictureComesBack) {
  const Picture blank = BlankPicture(1024);
  EXPECT_EQ(PixelsOf(blank), Pixels(1024 * 1024, Black));
  const Picture read = DecodePicture(EncodeGif(blank));
  EXPECT_EQ(read.Width, 1024);
  EXPECT_EQ(PixelsOf(read), PixelsOf(blank));
}

TEST(EncodeGif, ManyColoursAreBroughtDownTo256) {
  Pixels many;
  for (std::uint32_t at = 0; at < 64 * 64; ++at) many.push_back(0xFF000000 | at % 64 * 4 << 16 | at / 64 * 4);
  const Pixels read = PixelsOf(DecodePicture(EncodeGif(PictureOf(many, 64))));
  ASSERT_EQ(read.size(), many.size());
  EXPECT_LE(std::set<std::uint32_t>(read.begin(), read.end()).size(), 256U);
  for (std::size_t at = 0; at < many.size(); ++at) {
    const auto channel = [at](const Pixels& of, int shift) { return static_cast<int>(of[at] >> shift & 255); };
    for (const int shift : {16, 8, 0}) ASSERT_NEAR(channel(read, shift), channel(many, shift), 24) << at;
  }
}

TEST(EncodeGif, EmptyPictureIsRefused) { EXPECT_THROW(EncodeGif(Picture()), RuntimeFailure); }

}  // namespace
}  // namespace kestrel::base
