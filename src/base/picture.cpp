#include "base/picture.h"

#include <FreeImage.h>
#ifdef __linux__
#include <sys/mman.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "base/failure.h"
#include "base/files.h"
#include "base/picture_header.h"

namespace kestrel::base {
namespace {

constexpr std::size_t MaxPictureFileBytes = std::size_t{256} << 20;
constexpr std::uint32_t Opaque = 0xFF000000;

struct Unload {
  void operator()(FIBITMAP* bitmap) const { FreeImage_Unload(bitmap); }
};
using Bitmap = std::unique_ptr<FIBITMAP, Unload>;

// What the library said last, for the text of a failure.
thread_local std::string libraryMessage;

/// Linked statically, the library waits to be told to begin. Its plugins from outside stay out.
void BeginLibrary() {
#ifdef FREEIMAGE_LIB
  [[maybe_unused]] static const bool begun = (FreeImage_Initialise(TRUE), true);
#endif
}

void KeepMessage(FREE_IMAGE_FORMAT, const char* message) { libraryMessage = message; }

FREE_IMAGE_FORMAT FormatOf(PictureKind kind) {
  switch (kind) {
    case PictureKind::Bmp:
      return FIF_BMP;
    case PictureKind::Jpeg:
      return FIF_JPEG;
    case PictureKind::Gif:
      return FIF_GIF;
    case PictureKind::Png:
      return FIF_PNG;
    case PictureKind::Dds:
      return FIF_DDS;
  }
  return FIF_UNKNOWN;
}

int FlagsOf(PictureKind kind) {
  switch (kind) {
    case PictureKind::Jpeg:
      return JPEG_ACCURATE;
    case PictureKind::Png:
      return PNG_IGNOREGAMMA;
    default:
      return 0;
  }
}

Bitmap LoadBitmap(std::string_view bytes) {
  BeginLibrary();
  FreeImage_SetOutputMessage(KeepMessage);
  if (bytes.size() > MaxPictureFileBytes) throw RuntimeFailure("the picture is too large");
  const PictureHeader header = ReadPictureHeader(bytes);
  std::string cleaned;
  if (header.Kind == PictureKind::Jpeg) bytes = cleaned = JpegWithoutMetadata(bytes);
  libraryMessage.clear();
  // The library only reads from memory that it is given so, whatever its signature says.
  auto* data = reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data()));
  FIMEMORY* memory = FreeImage_OpenMemory(data, static_cast<DWORD>(bytes.size()));
  Bitmap bitmap(FreeImage_LoadFromMemory(FormatOf(header.Kind), memory, FlagsOf(header.Kind)));
  FreeImage_CloseMemory(memory);
  if (!bitmap || !FreeImage_HasPixels(bitmap.get())) {
    throw RuntimeFailure("the picture is damaged" + (libraryMessage.empty() ? "" : ": " + libraryMessage));
  }
  if (FreeImage_GetWidth(bitmap.get()) != header.Width || FreeImage_GetHeight(bitmap.get()) != header.Height) {
    throw RuntimeFailure("the picture is damaged: its size is not the one of its header");
  }
  return bitmap;
}

/// One row of 48 or 64 bits for each pixel.
template <class Pixel>
void ConvertDeepRow(std::uint32_t* target, const BYTE* source, int width) {
  const auto* pixel = reinterpret_cast<const Pixel*>(source);
  for (int x = 0; x < width; ++x, ++pixel) {
    target[x] = Opaque | (pixel->red >> 8u) << 16u | (pixel->green >> 8u) << 8u | pixel->blue >> 8u;
  }
}

void ConvertGreyRow(std::uint32_t* target, const BYTE* source, int width) {
  const auto* pixel = reinterpret_cast<const WORD*>(source);
  for (int x = 0; x < width; ++x) target[x] = Opaque | (pixel[x] >> 8u) * 0x010101u;
}

/// One row of a standard bitmap. False when its depth is not known.
bool ConvertPlainRow(BYTE* target, BYTE* source, int width, FIBITMAP* bitmap) {
  RGBQUAD* palette = FreeImage_GetPalette(bitmap);
  switch (FreeImage_GetBPP(bitmap)) {
    case 1:
      FreeImage_ConvertLine1To32(target, source, width, palette);
      return true;
    case 4:
      FreeImage_ConvertLine4To32(target, source, width, palette);
      return true;
    case 8:
      FreeImage_ConvertLine8To32(target, source, width, palette);
      return true;
    case 16:
      if (FreeImage_GetGreenMask(bitmap) == FI16_565_GREEN_MASK) {
        FreeImage_ConvertLine16To32_565(target, source, width);
      } else {
        FreeImage_ConvertLine16To32_555(target, source, width);
      }
      return true;
    case 24:
      FreeImage_ConvertLine24To32(target, source, width);
      return true;
    default:
      return false;
  }
}

bool ConvertRow(std::uint32_t* target, BYTE* source, int width, FIBITMAP* bitmap) {
  switch (FreeImage_GetImageType(bitmap)) {
    case FIT_BITMAP:
      return ConvertPlainRow(reinterpret_cast<BYTE*>(target), source, width, bitmap);
    case FIT_UINT16:
      ConvertGreyRow(target, source, width);
      return true;
    case FIT_RGB16:
      ConvertDeepRow<FIRGB16>(target, source, width);
      return true;
    case FIT_RGBA16:
      ConvertDeepRow<FIRGBA16>(target, source, width);
      return true;
    default:
      return false;
  }
}

/// The bitmap's own pixels, turned in place: no second copy of a large picture.
Picture TakeOver(Bitmap bitmap) {
  FIBITMAP* held = bitmap.get();
  FreeImage_FlipVertical(held);
  const int width = static_cast<int>(FreeImage_GetWidth(held));
  const int height = static_cast<int>(FreeImage_GetHeight(held));
  const int stride = static_cast<int>(FreeImage_GetPitch(held));
  BYTE* pixels = FreeImage_GetBits(held);
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(pixels + std::ptrdiff_t{y} * stride);
    for (int x = 0; x < width; ++x) row[x] |= Opaque;
  }
  return Picture(width, height, stride, pixels, std::shared_ptr<void>(bitmap.release(), [](void* owned) {
                   FreeImage_Unload(static_cast<FIBITMAP*>(owned));
                 }));
}

/// Memory for `count` pixels, to be freed; null when there is none. A map picture fills many pages: where the system
/// can hand out large ones, it is asked for them, which makes loading noticeably quicker.
std::uint32_t* NewPixels(std::size_t count) {
  const std::size_t bytes = count * sizeof(std::uint32_t);
#ifdef __linux__
  constexpr std::size_t largePage = std::size_t{2} << 20;
  if (bytes >= 2 * largePage) {
    const std::size_t whole = (bytes + largePage - 1) / largePage * largePage;
    void* memory = std::aligned_alloc(largePage, whole);
    if (memory != nullptr) madvise(memory, whole, MADV_HUGEPAGE);
    return static_cast<std::uint32_t*>(memory);
  }
#endif
  return static_cast<std::uint32_t*>(std::malloc(bytes));
}

Picture Convert(Bitmap bitmap) {
  FIBITMAP* held = bitmap.get();
  if (FreeImage_GetImageType(held) == FIT_BITMAP && FreeImage_GetBPP(held) == 32) return TakeOver(std::move(bitmap));
  const int width = static_cast<int>(FreeImage_GetWidth(held));
  const int height = static_cast<int>(FreeImage_GetHeight(held));
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  const std::shared_ptr<std::uint32_t> pixels(NewPixels(count), std::free);
  if (!pixels) throw RuntimeFailure("no memory for the picture");
  for (int y = 0; y < height; ++y) {
    // The library's rows begin at the bottom.
    auto* target = pixels.get() + std::ptrdiff_t{y} * width;
    if (!ConvertRow(target, FreeImage_GetScanLine(held, height - 1 - y), width, held)) {
      throw RuntimeFailure("the picture's kind of pixels is not known");
    }
  }
  const auto* top = reinterpret_cast<const std::uint8_t*>(pixels.get());
  return Picture(width, height, width * 4, top, std::shared_ptr<void>(pixels, pixels.get()));
}

/// A bitmap of 24 bits for each pixel, the depth that the library's filters and quantisers work on.
Bitmap To24Bits(const Picture& picture) {
  BeginLibrary();
  Bitmap bitmap(FreeImage_Allocate(picture.Width, picture.Height, 24));
  if (!bitmap) throw RuntimeFailure("no memory for the picture");
  for (int y = 0; y < picture.Height; ++y) {
    // The library does not write to its source.
    auto* source = const_cast<BYTE*>(picture.Pixels + std::ptrdiff_t{y} * picture.Stride);
    FreeImage_ConvertLine32To24(FreeImage_GetScanLine(bitmap.get(), picture.Height - 1 - y), source, picture.Width);
  }
  return bitmap;
}

/// What the library has written to `memory`.
std::string BytesOf(FIMEMORY* memory) {
  BYTE* bytes = nullptr;
  DWORD size = 0;
  FreeImage_AcquireMemory(memory, &bytes, &size);
  return std::string(reinterpret_cast<const char*>(bytes), size);
}

/// Hands on what the library writes. Nothing may be thrown through its frames.
struct PieceWriter {
  const std::function<void(std::span<const std::byte>)>& Take;
  std::exception_ptr Failure;

  static unsigned DLL_CALLCONV Write(void* buffer, unsigned size, unsigned count, fi_handle handle) {
    auto& writer = *static_cast<PieceWriter*>(handle);
    if (writer.Failure) return 0;
    try {
      writer.Take({static_cast<const std::byte*>(buffer), std::size_t{size} * count});
      return count;
    } catch (...) {
      writer.Failure = std::current_exception();
      return 0;
    }
  }
};

}  // namespace

Picture LoadPicture(const std::filesystem::path& path) {
  Bitmap bitmap;
  {
    // The file's bytes go before the pixels are converted.
    const std::string bytes = ReadWholeFile(path, MaxPictureFileBytes);
    bitmap = LoadBitmap(bytes);
  }
  return Convert(std::move(bitmap));
}

Picture DecodePicture(std::string_view bytes) { return Convert(LoadBitmap(bytes)); }

Picture BlankPicture(int side) {
  const auto count = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
  const std::shared_ptr<std::uint32_t> pixels(NewPixels(count), std::free);
  if (!pixels) throw RuntimeFailure("no memory for the picture");
  std::fill_n(pixels.get(), count, Opaque);
  const auto* top = reinterpret_cast<const std::uint8_t*>(pixels.get());
  return Picture(side, side, side * 4, top, std::shared_ptr<void>(pixels, pixels.get()));
}

Picture SquarePicture(const Picture& picture) {
  if (picture.Empty()) throw RuntimeFailure("there is no picture");
  const int side = std::max(picture.Width, picture.Height);
  if (side > MaxMapSide) throw RuntimeFailure("the picture is too large for a map");
  if (picture.Width == picture.Height) return picture;
  Bitmap square(FreeImage_Rescale(To24Bits(picture).get(), side, side, FILTER_BICUBIC));
  if (!square) throw RuntimeFailure("no memory for the picture");
  return Convert(std::move(square));
}

std::string EncodeGif(const Picture& picture) {
  if (picture.Empty()) throw RuntimeFailure("there is no picture");
  const Bitmap reduced(FreeImage_ColorQuantize(To24Bits(picture).get(), FIQ_WUQUANT));
  if (!reduced) throw RuntimeFailure("no memory for the picture");
  const std::unique_ptr<FIMEMORY, void (*)(FIMEMORY*)> memory(FreeImage_OpenMemory(),
                                                              [](FIMEMORY* open) { FreeImage_CloseMemory(open); });
  if (!FreeImage_SaveToMemory(FIF_GIF, reduced.get(), memory.get(), GIF_DEFAULT)) {
    throw RuntimeFailure("the picture cannot be turned into a GIF file");
  }
  return BytesOf(memory.get());
}

void WriteGif(int side, std::span<const std::uint8_t> pixels, std::span<const Colour> palette,
              const std::function<void(std::span<const std::byte>)>& write) {
  BeginLibrary();
  const auto width = static_cast<std::size_t>(std::max(side, 0));
  if (side < 1 || side > MaxMapSide || pixels.size() != width * width || palette.empty() || palette.size() > 256) {
    throw RuntimeFailure("there is no such picture");
  }
  const Bitmap bitmap(FreeImage_Allocate(side, side, 8));
  if (!bitmap) throw RuntimeFailure("no memory for the picture");
  RGBQUAD* const colours = FreeImage_GetPalette(bitmap.get());
  for (std::size_t n = 0; n < 256; ++n) {
    const Colour colour = n < palette.size() ? palette[n] : 0;
    colours[n].rgbRed = RedOf(colour);
    colours[n].rgbGreen = GreenOf(colour);
    colours[n].rgbBlue = BlueOf(colour);
  }
  // The library's rows begin at the bottom, as these do.
  for (std::size_t y = 0; y < width; ++y) {
    std::memcpy(FreeImage_GetScanLine(bitmap.get(), static_cast<int>(y)), pixels.data() + y * width, width);
  }
  PieceWriter writer{write, {}};
  FreeImageIO calls{};
  calls.write_proc = PieceWriter::Write;
  calls.tell_proc = [](fi_handle) { return 0L; };
  calls.seek_proc = [](fi_handle, long, int) { return -1; };
  const bool made = FreeImage_SaveToHandle(FIF_GIF, bitmap.get(), &calls, &writer, GIF_DEFAULT);
  if (writer.Failure) std::rethrow_exception(writer.Failure);
  if (!made) throw RuntimeFailure("the picture cannot be turned into a GIF file");
}

}  // namespace kestrel::base
