#include "shell/map/sprite.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrel::shell {
namespace {

using Pixels = std::array<std::uint32_t, BlockPixels>;

TEST(Sprite, ABlockIsLaidTheSameByVectorsByBytesAndByThePixel) {
  const Pixels below = {0xFF000000, 0xFFFFFFFF, 0xFF14171A, 0xFF80FF01};
  for (const std::uint32_t colour : {0xFF000000U, 0xFFFFFFFFU, 0xFF4FB3D9U, 0xFF01FE7FU}) {
    // Each pixel with a coverage of its own, all of them in turn.
    for (std::uint32_t coverage = 0; coverage <= 128; ++coverage) {
      InkBlock ink;
      Pixels wanted = below;
      for (std::uint32_t pixel = 0; pixel < BlockPixels; ++pixel) {
        const std::uint32_t own = (coverage + 37 * pixel) % 129;
        for (std::uint32_t channel = 0; channel < 4; ++channel) {
          ink.Coverage[pixel * 4 + channel] = static_cast<std::uint8_t>(own);
        }
        wanted[pixel] = Blend(below[pixel], colour, own);
      }
      Pixels byVectors = below;
      LayBlock(byVectors.data(), BlockOf(colour), ink);
      Pixels byBytes = below;
      LayBlockByBytes(byBytes.data(), BlockOf(colour), ink);
      EXPECT_EQ(byVectors, wanted) << std::hex << colour << ' ' << coverage;
      EXPECT_EQ(byBytes, wanted) << std::hex << colour << ' ' << coverage;
    }
  }
}

}  // namespace
}  // namespace kestrel::shell
