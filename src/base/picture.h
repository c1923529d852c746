#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/colour.h"

namespace kestrel::base {

/// Largest side of a picture that is loaded, in pixels. Pictures beyond it are refused before their pixels are
/// allocated.
inline constexpr int MaxPictureSide = 16384;

/// A picture in memory: rows from the top, `Stride` bytes apart, each pixel 32 bits 0xFFRRGGBB in the machine's order.
/// The pixels are shared by copies and never change, but for those that ReplacePicture gives up.
class Picture {
 public:
  Picture() = default;
  /// Takes the pixels: `height` rows of `stride` bytes, the first row on top; `owner` keeps them alive.
  Picture(int width, int height, int stride, const std::uint8_t* pixels, std::shared_ptr<void> owner)
      : Width(width), Height(height), Stride(stride), Pixels(pixels), keeper(std::move(owner)) {}
  bool Empty() const { return Width == 0; }

  int Width = 0;                         ///< pixels
  int Height = 0;                        ///< pixels
  int Stride = 0;                        ///< bytes from one row to the next, positive
  const std::uint8_t* Pixels = nullptr;  ///< the top row

 private:
  std::shared_ptr<void> keeper;
};

/// Loads a BMP, JPEG, GIF, PNG or DDS file, told by its first bytes. RuntimeFailure with a clear text when the file is
/// missing, of another kind, damaged or too large.
Picture LoadPicture(const std::filesystem::path& path);
/// The picture in the bytes of a file, as LoadPicture gives it.
Picture DecodePicture(std::string_view bytes);

/// Largest side of a picture that a new map is made from, in pixels: squaring and saving hold it several times.
inline constexpr int MaxMapSide = 8192;

/// A black picture of `side` by `side` pixels.
Picture BlankPicture(int side);
/// `picture` stretched to a square whose side is its larger one, with the bicubic filter; itself when it is square.
/// RuntimeFailure when it is empty, a side is above MaxMapSide or there is no memory.
Picture SquarePicture(const Picture& picture);
/// `picture` in the lower left of a square whose side is its larger one, black beside it; itself when it is square.
/// RuntimeFailure as SquarePicture.
Picture FilledPicture(const Picture& picture);
/// The bytes of a GIF file of `picture`, its colours brought down to 256. RuntimeFailure when that fails.
std::string EncodeGif(const Picture& picture);

/// Writes a GIF file of `side` (1 to MaxMapSide) by `side` pixels: `pixels` are entries of `palette` (1 to 256 colours,
/// kept exactly), the LOWER row first. The file comes to `write` in small pieces while it is made. What `write` throws
/// passes through, at the end of the making; it is not called again. RuntimeFailure when the making fails.
void WriteGif(int side, std::span<const std::uint8_t> pixels, std::span<const Colour> palette,
              const std::function<void(std::span<const std::byte>)>& write);

}  // namespace kestrel::base
