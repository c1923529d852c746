// A picture file from a stranger: it is decoded, or refused with RuntimeFailure.
#include "base/picture.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/failure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const kestrel::base::Picture picture =
        kestrel::base::DecodePicture(std::string_view(reinterpret_cast<const char*>(data), size));
    if (picture.Width < 1 || picture.Height < 1 || picture.Stride < picture.Width * 4) std::abort();
    if (picture.Width > kestrel::base::MaxPictureSide || picture.Height > kestrel::base::MaxPictureSide) std::abort();
    // The ends of the first and the last row are there and opaque.
    const std::uint8_t* lastRow = picture.Pixels + std::ptrdiff_t{picture.Height - 1} * picture.Stride;
    for (const std::uint8_t* row : {picture.Pixels, lastRow}) {
      if (row[3] != 0xFF || row[std::ptrdiff_t{picture.Width} * 4 - 1] != 0xFF) std::abort();
    }
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  return 0;
}
