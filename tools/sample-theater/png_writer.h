#pragma once

#include <string>

#include "sample-theater/painter.h"

namespace kestrel::land {

/// The picture as the bytes of a PNG file, 8 bits a channel, truecolour. std::runtime_error when it cannot be packed.
std::string WritePng(const Image& image);

}  // namespace kestrel::land
