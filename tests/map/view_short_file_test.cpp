#include "map/view_short_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "base/failure.h"

namespace kestrel::map {
namespace {

/// The file written a second way: each float's bits, lowest byte first.
std::string Golden(const ViewShorts& shorts) {
  std::string bytes = "ViewShort File v3";
  while (bytes.size() < 100) bytes += ' ';
  for (const ViewShort& slot : shorts) {
    for (const double value : {slot.ViewCenterX, slot.ViewCenterY, slot.Resolution}) {
      const auto bits = std::bit_cast<std::uint64_t>(value);
      for (int shift = 0; shift < 64; shift += 8) bytes += static_cast<char>(bits >> shift & 0xFF);
    }
  }
  return bytes;
}

constexpr ViewShorts Sample = {{{7680, 7680, 1}, {1234.5, 0.25, 0.125}, {15360, 3, 1024}}};

bool Same(const ViewShorts& a, const ViewShorts& b) { return Golden(a) == Golden(b); }

TEST(ViewShortFile, HasItsBytes) {
  const std::string bytes = WriteViewShorts(Sample);
  EXPECT_EQ(bytes.size(), 172U);
  EXPECT_EQ(bytes, Golden(Sample));
  // Slot 1 by hand: 7680, 7680, 1.
  EXPECT_EQ(bytes.substr(100, 24), std::string("\0\0\0\0\0\0\xBE\x40\0\0\0\0\0\0\xBE\x40\0\0\0\0\0\0\xF0\x3F", 24));
}

TEST(ViewShortFile, ComesBack) { EXPECT_TRUE(Same(ReadViewShorts(Golden(Sample), DefaultViewShorts(1)), Sample)); }

TEST(ViewShortFile, DefaultsShowTheWholeTheater) {
  for (const ViewShort& slot : DefaultViewShorts(1024)) {
    EXPECT_EQ(slot.ViewCenterX, 7680);
    EXPECT_EQ(slot.ViewCenterY, 7680);
    EXPECT_EQ(slot.Resolution, 1);
  }
}

TEST(ViewShortFile, AnotherFirstTextLeavesTheDefaults) {
  std::string older = Golden(Sample);
  older[16] = '2';
  const ViewShorts defaults = DefaultViewShorts(512);
  for (const std::string& bytes : {older, std::string(), std::string("ViewShort"), std::string(172, '\0')}) {
    EXPECT_TRUE(Same(ReadViewShorts(bytes, defaults), defaults));
  }
}

TEST(ViewShortFile, EveryCutAfterTheTextIsDroppedWhole) {
  const std::string bytes = Golden(Sample);
  for (std::size_t length = 17; length < bytes.size(); ++length) {
    EXPECT_THROW(ReadViewShorts(bytes.substr(0, length), DefaultViewShorts(1)), base::RuntimeFailure) << length;
  }
}

TEST(ViewShortFile, NumbersThatNoViewCanHaveAreDroppedWhole) {
  const double none = std::nan("");
  const double far = std::numeric_limits<double>::infinity();
  for (const ViewShort wrong : {ViewShort{none, 0, 1}, ViewShort{0, far, 1}, ViewShort{0, 0, none}, ViewShort{0, 0, 0},
                                ViewShort{0, 0, 1025}, ViewShort{0, 0, -1}}) {
    for (std::size_t slot = 0; slot < 3; ++slot) {
      ViewShorts shorts = Sample;
      shorts[slot] = wrong;
      EXPECT_THROW(ReadViewShorts(Golden(shorts), DefaultViewShorts(1)), base::RuntimeFailure);
    }
  }
}

TEST(ViewShortFile, RandomBytesNeverGiveAViewThatCannotBe) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 numbers(seed);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = Golden(Sample);
    for (std::size_t at = 100; at < bytes.size(); ++at) {
      if (numbers() % 4 == 0) bytes[at] = static_cast<char>(numbers());
    }
    try {
      for (const ViewShort& slot : ReadViewShorts(bytes, Sample)) {
        EXPECT_TRUE(std::isfinite(slot.ViewCenterX) && std::isfinite(slot.ViewCenterY));
        EXPECT_TRUE(slot.Resolution >= 0.125 && slot.Resolution <= 1024);
      }
    } catch (const base::RuntimeFailure&) {
      continue;
    }
  }
}

}  // namespace
}  // namespace kestrel::map
