#include "base/picture.h"

#include <FreeImage.h>
#ifdef __linux__
#include <sys/mman.h>
#endif

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "base/picture_header.h"
#include "base/picture_replacement.h"
#include "base/picture_source.h"
#include "base/positioned_file.h"

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

/// Parts of a source as one file that the library reads by its own calls. They answer as those of the library's for
/// memory do, also behind the end. Nothing may be thrown through its frames.
class LibraryFile {
 public:
  LibraryFile(const PictureSource& from, std::vector<FilePart> wanted) : source(from), parts(std::move(wanted)) {
    for (const FilePart& part : parts) {
      starts.push_back(size);
      size += part.End - part.Begin;
    }
  }

  FIBITMAP* Load(FREE_IMAGE_FORMAT format, int flags) {
    FreeImageIO calls{};
    calls.read_proc = [](void* into, unsigned bytes, unsigned count, fi_handle file) {
      return static_cast<LibraryFile*>(file)->Read(static_cast<std::byte*>(into), bytes, count);
    };
    calls.seek_proc = [](fi_handle file, long offset, int origin) {
      return static_cast<LibraryFile*>(file)->Seek(offset, origin);
    };
    calls.tell_proc = [](fi_handle file) { return static_cast<long>(static_cast<LibraryFile*>(file)->position); };
    Bitmap bitmap(FreeImage_LoadFromHandle(format, &calls, this, flags));
    if (failure) std::rethrow_exception(failure);
    return bitmap.release();
  }

 private:
  unsigned Read(std::byte* into, unsigned bytes, unsigned count) {
    if (bytes == 0 || count == 0) return count;
    const std::uint64_t left = size - std::min(position, size);
    const std::uint64_t wanted = std::min(std::uint64_t{bytes} * count, left);
    std::size_t got = 0;
    try {
      got = ReadParts({into, static_cast<std::size_t>(wanted)});
    } catch (...) {
      failure = std::current_exception();
    }
    position = got == std::uint64_t{bytes} * count ? position + got : size;
    return static_cast<unsigned>(got / bytes);
  }

  std::size_t ReadParts(std::span<std::byte> into) {
    std::size_t count = 0;
    while (count < into.size()) {
      const std::uint64_t at = position + count;
      const auto n = static_cast<std::size_t>(std::upper_bound(starts.begin(), starts.end(), at) - starts.begin()) - 1;
      const std::uint64_t from = parts[n].Begin + (at - starts[n]);
      const std::uint64_t there = std::min<std::uint64_t>(parts[n].End - from, into.size() - count);
      const std::size_t got = source.Read(from, into.subspan(count, static_cast<std::size_t>(there)));
      count += got;
      if (got < there) break;
    }
    return count;
  }

  int Seek(long offset, int origin) {
    const std::uint64_t from = origin == SEEK_CUR ? position : origin == SEEK_END ? size : 0;
    const auto to = static_cast<std::int64_t>(from) + std::int64_t{offset};
    if (to < 0) return -1;
    position = static_cast<std::uint64_t>(to);
    return 0;
  }

  const PictureSource& source;
  std::vector<FilePart> parts;
  std::vector<std::uint64_t> starts;  ///< of each part in the file that the library sees
  std::uint64_t size = 0;
  std::uint64_t position = 0;
  std::exception_ptr failure;
};

Bitmap LoadBitmap(const PictureSource& source) {
  BeginLibrary();
  FreeImage_SetOutputMessage(KeepMessage);
  if (source.Size() > MaxPictureFileBytes) throw RuntimeFailure("the picture is too large");
  const PictureHeader header = ReadPictureHeader(source);
  std::vector<FilePart> parts = {{0, static_cast<std::uint32_t>(source.Size())}};
  if (header.Kind == PictureKind::Jpeg) parts = JpegPartsWithoutMetadata(source);
  libraryMessage.clear();
  Bitmap bitmap(LibraryFile(source, std::move(parts)).Load(FormatOf(header.Kind), FlagsOf(header.Kind)));
  if (!bitmap || !FreeImage_HasPixels(bitmap.get())) {
    throw RuntimeFailure("the picture is damaged" + (libraryMessage.empty() ? "" : ": " + libraryMessage));
  }
  if (FreeImage_GetWidth(bitmap.get()) != header.Width || FreeImage_GetHeight(bitmap.get()) != header.Height) {
    throw RuntimeFailure("the picture is damaged: its size is not the one of its header");
  }
  return bitmap;
}

Bitmap LoadFile(const std::filesystem::path& path) {
  if (!FileExists(path)) throw RuntimeFailure(NameForMessage(path) + " is no file");
  const PositionedFile file(path, PositionedFile::Mode::Read);
  if (file.Size() > MaxPictureFileBytes) throw RuntimeFailure(NameForMessage(path) + " is too large");
  return LoadBitmap(PictureSource(file));
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

/// Where the orders agree, four bytes are taken at once, of which the last is the next pixel's: several times as fast
/// as byte by byte.
void ConvertRow24(std::uint32_t* target, const BYTE* source, int width) {
  int x = 0;
  if constexpr (std::endian::native == std::endian::little && FI_RGBA_BLUE == 0) {
    for (; x < width - 1; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, source + std::ptrdiff_t{x} * 3, sizeof pixel);
      target[x] = Opaque | pixel;
    }
  }
  for (; x < width; ++x) {
    const BYTE* const pixel = source + std::ptrdiff_t{x} * 3;
    target[x] = Opaque | std::uint32_t{pixel[FI_RGBA_RED]} << 16 | std::uint32_t{pixel[FI_RGBA_GREEN]} << 8 |
                pixel[FI_RGBA_BLUE];
  }
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
      ConvertRow24(reinterpret_cast<std::uint32_t*>(target), source, width);
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

/// Gives what lies from `from` to `end`, read and not needed any more, back to the system, so that a large picture is
/// never held in both depths; returns where what is left ends. Large pages stay whole.
BYTE* GiveBack(BYTE* from, BYTE* end) {
#ifdef __linux__
  constexpr std::uintptr_t atOnce = std::uintptr_t{2} << 20;
  const auto first = (reinterpret_cast<std::uintptr_t>(from) + atOnce - 1) / atOnce * atOnce;
  const auto last = reinterpret_cast<std::uintptr_t>(end) / atOnce * atOnce;
  if (first >= last) return end;
  madvise(reinterpret_cast<void*>(first), last - first, MADV_DONTNEED);
  return reinterpret_cast<BYTE*>(first);
#else
  return end;
#endif
}

/// The pixels of a large picture in three bytes each, within its own memory, while another is read that is to take its
/// place. Where no memory can be given back they stay as they are.
class PackedPixels {
 public:
  explicit PackedPixels(const Picture& picture) {
    if constexpr (!mayGiveBack) return;
    count = static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height);
    if (count < fewest || picture.Stride != picture.Width * 4) return;
    // They are the memory of a picture that was loaded, made to be written.
    pixels = const_cast<BYTE*>(picture.Pixels);
    // What is written over has been read.
    for (std::size_t n = 0; n < count; ++n) std::memmove(pixels + 3 * n, pixels + 4 * n, 4);
    GiveBack(pixels + 3 * count, pixels + 4 * count);
  }
  /// As they were, unless they have been given up.
  ~PackedPixels() {
    if (pixels == nullptr) return;
    for (std::size_t n = count; n-- > 0;) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, pixels + 3 * n, 3);
      pixel |= Opaque;
      std::memcpy(pixels + 4 * n, &pixel, 4);
    }
  }
  PackedPixels(const PackedPixels&) = delete;
  PackedPixels& operator=(const PackedPixels&) = delete;

  void GiveUp() {
    if (pixels != nullptr) GiveBack(pixels, pixels + 4 * count);
    pixels = nullptr;
  }

 private:
#ifdef __linux__
  static constexpr bool mayGiveBack = std::endian::native == std::endian::little;
#else
  static constexpr bool mayGiveBack = false;
#endif
  static constexpr std::size_t fewest = std::size_t{4} << 20;

  BYTE* pixels = nullptr;  ///< null when they are not packed
  std::size_t count = 0;
};

/// `former` is what the picture is to take the place of, given up as soon as nothing can fail any more.
Picture Convert(Bitmap bitmap, PackedPixels* former = nullptr) {
  FIBITMAP* held = bitmap.get();
  if (FreeImage_GetImageType(held) == FIT_BITMAP && FreeImage_GetBPP(held) == 32) return TakeOver(std::move(bitmap));
  const int width = static_cast<int>(FreeImage_GetWidth(held));
  const int height = static_cast<int>(FreeImage_GetHeight(held));
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  const std::shared_ptr<std::uint32_t> pixels(NewPixels(count), std::free);
  if (!pixels) throw RuntimeFailure("no memory for the picture");
  BYTE* end = FreeImage_GetBits(held) + std::size_t{FreeImage_GetPitch(held)} * static_cast<std::size_t>(height);
  for (int y = 0; y < height; ++y) {
    // The library's rows begin at the bottom.
    auto* target = pixels.get() + std::ptrdiff_t{y} * width;
    BYTE* const row = FreeImage_GetScanLine(held, height - 1 - y);
    if (!ConvertRow(target, row, width, held)) {
      throw RuntimeFailure("the picture's kind of pixels is not known");
    }
    // The rows are all of one kind.
    if (former != nullptr && y == 0) former->GiveUp();
    end = GiveBack(row, end);
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

using PixelMemory = std::shared_ptr<std::uint32_t>;

/// `side` by `side` black pixels.
PixelMemory BlackPixels(int side) {
  const auto count = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
  PixelMemory pixels(NewPixels(count), std::free);
  if (!pixels) throw RuntimeFailure("no memory for the picture");
  std::fill_n(pixels.get(), count, Opaque);
  return pixels;
}

Picture SquareOf(int side, const PixelMemory& pixels) {
  const auto* top = reinterpret_cast<const std::uint8_t*>(pixels.get());
  return Picture(side, side, side * 4, top, std::shared_ptr<void>(pixels, pixels.get()));
}

/// The side of the map that is made of a picture.
int MapSide(const Picture& picture) {
  if (picture.Empty()) throw RuntimeFailure("there is no picture");
  const int side = std::max(picture.Width, picture.Height);
  if (side > MaxMapSide) throw RuntimeFailure("the picture is too large for a map");
  return side;
}

}  // namespace

Picture LoadPicture(const std::filesystem::path& path) { return Convert(LoadFile(path)); }

Picture ReplacePicture(const std::filesystem::path& path, const Picture& former) {
  PackedPixels packed(former);
  Picture picture = Convert(LoadFile(path), &packed);
  packed.GiveUp();
  return picture;
}

Picture DecodePicture(std::string_view bytes) { return Convert(LoadBitmap(PictureSource(bytes))); }

Picture BlankPicture(int side) { return SquareOf(side, BlackPixels(side)); }

Picture FilledPicture(const Picture& picture) {
  const int side = MapSide(picture);
  if (picture.Width == picture.Height) return picture;
  const PixelMemory pixels = BlackPixels(side);
  const auto width = static_cast<std::size_t>(picture.Width);
  std::uint32_t* row = pixels.get() + static_cast<std::size_t>(side - picture.Height) * static_cast<std::size_t>(side);
  for (int y = 0; y < picture.Height; ++y, row += side) {
    std::memcpy(row, picture.Pixels + std::ptrdiff_t{y} * picture.Stride, width * 4);
  }
  return SquareOf(side, pixels);
}

Picture SquarePicture(const Picture& picture) {
  const int side = MapSide(picture);
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
