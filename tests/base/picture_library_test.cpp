// The pictures of all kinds and depths against what the picture library itself makes of their files, whole and cut.
#if __has_include(<FreeImage.h>) && !defined(_WIN32)

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/picture.h"
#include "base/picture_header.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

using Pixels = std::vector<std::uint32_t>;
struct Unloaded {
  void operator()(FIBITMAP* bitmap) const { FreeImage_Unload(bitmap); }
};
using Bitmap = std::unique_ptr<FIBITMAP, Unloaded>;

struct Kind {
  const char* Name;
  FREE_IMAGE_FORMAT Format;
  FREE_IMAGE_TYPE Type;
  int Bits;
  int SaveFlags = 0;
  unsigned Red = 0, Green = 0, Blue = 0;
};

constexpr Kind kinds[] = {
    {"bmp 1", FIF_BMP, FIT_BITMAP, 1},
    {"bmp 4", FIF_BMP, FIT_BITMAP, 4},
    {"bmp 8", FIF_BMP, FIT_BITMAP, 8},
    {"bmp 16 of 5, 5 and 5", FIF_BMP, FIT_BITMAP, 16, 0, FI16_555_RED_MASK, FI16_555_GREEN_MASK, FI16_555_BLUE_MASK},
    {"bmp 16 of 5, 6 and 5", FIF_BMP, FIT_BITMAP, 16, 0, FI16_565_RED_MASK, FI16_565_GREEN_MASK, FI16_565_BLUE_MASK},
    {"bmp 24", FIF_BMP, FIT_BITMAP, 24},
    {"bmp 32", FIF_BMP, FIT_BITMAP, 32},
    {"png 1", FIF_PNG, FIT_BITMAP, 1},
    {"png 4", FIF_PNG, FIT_BITMAP, 4},
    {"png 8", FIF_PNG, FIT_BITMAP, 8},
    {"png 24", FIF_PNG, FIT_BITMAP, 24, PNG_Z_BEST_SPEED},
    {"png 24 interlaced", FIF_PNG, FIT_BITMAP, 24, PNG_INTERLACED | PNG_Z_BEST_SPEED},
    {"png 32", FIF_PNG, FIT_BITMAP, 32, PNG_Z_NO_COMPRESSION},
    {"png 48", FIF_PNG, FIT_RGB16, 48, PNG_Z_NO_COMPRESSION},
    {"png 64", FIF_PNG, FIT_RGBA16, 64, PNG_Z_NO_COMPRESSION},
    {"gif 4", FIF_GIF, FIT_BITMAP, 4},
    {"gif 8", FIF_GIF, FIT_BITMAP, 8},
    {"jpeg 8", FIF_JPEG, FIT_BITMAP, 8},
    {"jpeg 24", FIF_JPEG, FIT_BITMAP, 24},
    {"jpeg 24 in passes", FIF_JPEG, FIT_BITMAP, 24, JPEG_PROGRESSIVE},
};

/// A file of noise in colours of noise, so that each bit of each pixel tells.
std::string FileOf(const Kind& kind, int width, int height) {
  std::mt19937 random(static_cast<unsigned>(width * 100 + kind.Bits));
  const Bitmap bitmap(FreeImage_AllocateT(kind.Type, width, height, kind.Bits, kind.Red, kind.Green, kind.Blue));
  if (RGBQUAD* palette = FreeImage_GetPalette(bitmap.get())) {
    for (unsigned n = 0; n < FreeImage_GetColorsUsed(bitmap.get()); ++n) {
      palette[n] = {static_cast<BYTE>(random()), static_cast<BYTE>(random()), static_cast<BYTE>(random()), 0};
    }
  }
  // A file of grey has no palette: shades in order are written so.
  if (kind.Format == FIF_JPEG && kind.Bits == 8) {
    RGBQUAD* palette = FreeImage_GetPalette(bitmap.get());
    for (unsigned n = 0; n < 256; ++n) palette[n].rgbRed = palette[n].rgbGreen = palette[n].rgbBlue = BYTE(n);
  }
  std::string noise(std::size_t{1} << 16, '\0');
  for (char& byte : noise) byte = static_cast<char>(random());
  for (int y = 0; y < height; ++y) {
    const unsigned bytes = FreeImage_GetLine(bitmap.get());
    std::memcpy(FreeImage_GetScanLine(bitmap.get(), y), noise.data() + random() % (noise.size() - bytes), bytes);
  }
  FIMEMORY* const memory = FreeImage_OpenMemory();
  EXPECT_TRUE(FreeImage_SaveToMemory(kind.Format, bitmap.get(), memory, kind.SaveFlags)) << kind.Name;
  BYTE* bytes = nullptr;
  DWORD size = 0;
  FreeImage_AcquireMemory(memory, &bytes, &size);
  std::string file(reinterpret_cast<const char*>(bytes), size);
  FreeImage_CloseMemory(memory);
  return file;
}

/// What the library makes of all bytes of the file and of its own rows; nothing when it makes none.
std::optional<Pixels> ByTheLibrary(const Kind& kind, std::string bytes) {
  try {
    const PictureHeader header = ReadPictureHeader(PictureSource(bytes));
    if (kind.Format == FIF_JPEG) bytes = JpegWithoutMetadata(bytes);
    FIMEMORY* const memory =
        FreeImage_OpenMemory(reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
    const int flags = kind.Format == FIF_JPEG ? JPEG_ACCURATE : kind.Format == FIF_PNG ? PNG_IGNOREGAMMA : 0;
    const Bitmap bitmap(FreeImage_LoadFromMemory(kind.Format, memory, flags));
    FreeImage_CloseMemory(memory);
    if (!bitmap || FreeImage_GetWidth(bitmap.get()) != header.Width) return std::nullopt;
    const Bitmap wide(FreeImage_ConvertTo32Bits(bitmap.get()));
    if (!wide) return std::nullopt;
    Pixels pixels;
    pixels.reserve(std::size_t{header.Width} * header.Height);
    for (std::uint32_t y = header.Height; y-- > 0;) {
      const BYTE* row = FreeImage_GetScanLine(wide.get(), static_cast<int>(y));
      for (std::uint32_t x = 0; x < header.Width; ++x, row += 4) {
        pixels.push_back(0xFF000000u | unsigned{row[FI_RGBA_RED]} << 16 | unsigned{row[FI_RGBA_GREEN]} << 8 |
                         row[FI_RGBA_BLUE]);
      }
    }
    return pixels;
  } catch (const RuntimeFailure&) {
    return std::nullopt;
  }
}

Pixels PixelsOf(const Picture& picture) {
  Pixels pixels(static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height));
  for (int y = 0; y < picture.Height; ++y) {
    std::memcpy(pixels.data() + std::ptrdiff_t{y} * picture.Width, picture.Pixels + std::ptrdiff_t{y} * picture.Stride,
                static_cast<std::size_t>(picture.Width) * 4);
  }
  return pixels;
}

std::optional<Pixels> FromFile(const std::filesystem::path& path, const std::string& bytes) {
  test::WriteBytes(path, bytes);
  try {
    return PixelsOf(LoadPicture(path));
  } catch (const RuntimeFailure&) {
    return std::nullopt;
  }
}

TEST(PictureLibrary, EachDepthOfEachKindHasThePixelsThatTheLibraryGives) {
  const test::TempFolder folder;
  for (const Kind& kind : kinds) {
    for (const int width : {1, 2, 3, 5, 8, 130}) {
      SCOPED_TRACE(std::string(kind.Name) + " of " + std::to_string(width));
      const std::string file = FileOf(kind, width, 47);
      const std::optional<Pixels> wanted = ByTheLibrary(kind, file);
      ASSERT_TRUE(wanted);
      EXPECT_GT(std::set<std::uint32_t>(wanted->begin(), wanted->end()).size(), 1U) << "not one colour throughout";
      EXPECT_EQ(FromFile(folder / "f", file), wanted);
      EXPECT_EQ(PixelsOf(DecodePicture(file)), *wanted);
    }
  }
}

TEST(PictureLibrary, LargeOnesWhosePixelsAreGivenBackMeanwhileHaveThemToo) {
  const test::TempFolder folder;
  for (const Kind& kind : kinds) {
    if (kind.Bits < 16 || (kind.Format != FIF_BMP && kind.Type != FIT_RGB16)) continue;
    SCOPED_TRACE(kind.Name);
    // With 16 bits for a pixel they take more than 4 MB.
    const std::string file = FileOf(kind, 1603, 1400);
    const std::optional<Pixels> wanted = ByTheLibrary(kind, file);
    ASSERT_TRUE(wanted);
    EXPECT_TRUE(FromFile(folder / "f", file) == wanted);
  }
}

TEST(PictureLibrary, CutFilesAreTakenOrRefusedAsTheLibraryDoes) {
  const test::TempFolder folder;
  int taken = 0, refused = 0;
  for (const Kind& kind : kinds) {
    const std::string file = FileOf(kind, 61, 47);
    for (std::size_t part = 0; part < 50; ++part) {
      SCOPED_TRACE(std::string(kind.Name) + " cut at fiftieth " + std::to_string(part));
      const std::string cut = file.substr(0, file.size() * part / 50);
      const std::optional<Pixels> wanted = ByTheLibrary(kind, cut);
      EXPECT_EQ(FromFile(folder / "f", cut), wanted);
      ++(wanted ? taken : refused);
    }
  }
  // A JPEG that is cut shows what there is; the others mostly do not.
  EXPECT_GT(taken, 50);
  EXPECT_GT(refused, 500);
}

}  // namespace
}  // namespace kestrel::base

#endif
