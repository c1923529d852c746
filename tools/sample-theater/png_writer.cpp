#include "sample-theater/png_writer.h"

#include <FreeImage.h>

#include <memory>
#include <stdexcept>

namespace kestrel::land {

std::string WritePng(const Image& image) {
  // Rows of an Image begin at the top and are red, green, blue; the library turns both about.
  const std::size_t stride = static_cast<std::size_t>(image.Side) * 3;
  const std::unique_ptr<FIBITMAP, decltype(&FreeImage_Unload)> bitmap(
      FreeImage_Allocate(image.Side, image.Side, 24, 0, 0, 0), &FreeImage_Unload);
  const std::unique_ptr<FIMEMORY, decltype(&FreeImage_CloseMemory)> file(FreeImage_OpenMemory(nullptr, 0),
                                                                         &FreeImage_CloseMemory);
  if (!bitmap || !file) throw std::runtime_error("no memory for the map picture");
  for (int y = 0; y < image.Side; ++y) {
    const std::uint8_t* from = image.Bytes.data() + static_cast<std::size_t>(y) * stride;
    BYTE* to = FreeImage_GetScanLine(bitmap.get(), image.Side - 1 - y);
    for (int x = 0; x < image.Side; ++x, from += 3, to += 3) {
      to[FI_RGBA_RED] = from[0];
      to[FI_RGBA_GREEN] = from[1];
      to[FI_RGBA_BLUE] = from[2];
    }
  }
  BYTE* bytes = nullptr;
  DWORD size = 0;
  if (!FreeImage_SaveToMemory(FIF_PNG, bitmap.get(), file.get(), PNG_DEFAULT) ||
      !FreeImage_AcquireMemory(file.get(), &bytes, &size)) {
    throw std::runtime_error("the map picture cannot be packed");
  }
  return std::string(reinterpret_cast<const char*>(bytes), size);
}

}  // namespace kestrel::land
