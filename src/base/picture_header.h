#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/picture_source.h"

// What a picture file says about itself, read here so that a lying file is refused before the picture library sees it.
namespace kestrel::base {

enum class PictureKind { Bmp, Jpeg, Gif, Png, Dds };

struct PictureHeader {
  PictureKind Kind{};
  std::uint32_t Width = 0;   ///< pixels
  std::uint32_t Height = 0;  ///< pixels
};

/// Tells the kind by the first bytes and reads the size of the (first) picture. RuntimeFailure when the kind is none of
/// ours, the header is damaged, a side is 0 or above MaxPictureSide, or the file is too short to hold so many pixels.
PictureHeader ReadPictureHeader(const PictureSource& source);

/// Bytes of a file that lie behind each other. Files of pictures are below 4 GB.
struct FilePart {
  std::uint32_t Begin = 0;
  std::uint32_t End = 0;  ///< the first that is not of it
};

/// The parts of a JPEG file without its comments and camera, colour and press data, which the map has no use for and
/// whose readers are the most fragile part of the picture library. RuntimeFailure when what stands before its pixels is
/// damaged.
std::vector<FilePart> JpegPartsWithoutMetadata(const PictureSource& source);
/// The bytes of these parts.
std::string JpegWithoutMetadata(std::string_view bytes);

}  // namespace kestrel::base
