#include "falcon/lzss.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/failure.h"

namespace kestrel::falcon {
namespace {

using namespace std::string_literals;

TEST(Lzss, LiteralsComeOutAsTheyStand) {
  EXPECT_EQ(ExpandLzss("\xFF"
                       "ABCDEFGH"
                       "\x01"
                       "I"s,
                       9),
            "ABCDEFGHI");
}

TEST(Lzss, MatchMayOverlapWhatItWrites) {
  EXPECT_EQ(ExpandLzss("\x01"
                       "A\xF0\x01"s,
                       18),
            std::string(18, 'A'));
}

TEST(Lzss, LastMatchIsCut) {
  EXPECT_EQ(ExpandLzss("\x01"
                       "A\xF0\x01"s,
                       5),
            "AAAAA");
}

TEST(Lzss, WindowBeginsAsZeros) { EXPECT_EQ(ExpandLzss("\x00\x0F\xFF"s, 2), "\0\0"s); }

TEST(Lzss, MatchReachesOverTheEndOfTheWindow) {
  // Position 4095 was never written, positions 0 and 1 follow it: 0 is empty still, 1 holds the first literal.
  EXPECT_EQ(ExpandLzss("\x01"
                       "A\x1F\xFF"s,
                       4),
            "A\0\0A"s);
}

TEST(Lzss, PositionIsOfTheWindowAndNotADistance) {
  EXPECT_EQ(ExpandLzss("\x07"
                       "ABC\x00\x02"s,
                       5),
            "ABCBC");
}

TEST(Lzss, WhatFollowsIsNotLookedAt) {
  EXPECT_EQ(ExpandLzss("\xFF"
                       "AB"
                       "\0\0\0\0\0\0"s,
                       2),
            "AB");
}

TEST(Lzss, NothingIsWantedFromNothing) { EXPECT_EQ(ExpandLzss("", 0), ""); }

TEST(Lzss, InputThatEndsEarlyIsRefused) {
  const std::string whole =
      "\x03"
      "AB\xF0\x01"s;
  ASSERT_EQ(ExpandLzss(whole, 19).size(), 19U);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THROW(ExpandLzss(whole.substr(0, length), 19), base::RuntimeFailure) << length;
  }
  EXPECT_THROW(ExpandLzss("\x01"
                          "A"s,
                          2),
               base::RuntimeFailure);
}

TEST(Lzss, SizeThatCannotBeReachedIsRefusedBeforeMemoryIsTaken) {
  EXPECT_THROW(ExpandLzss("\x01"
                          "A\xF0\x01"s,
                          std::size_t{1} << 62),
               base::RuntimeFailure);
}

TEST(Lzss, SizeThatAFileTellsIsBounded) {
  EXPECT_EQ(ExpandLzss("\xFF"
                       "AB"s,
                       std::int32_t{2}, 2),
            "AB");
  for (const std::int32_t size : {-1, 3, 0x7FFFFFFF}) {
    EXPECT_THROW(ExpandLzss("\xFF"
                            "ABCDEFGH"s,
                            size, 2),
                 base::RuntimeFailure)
        << size;
  }
}

/// The algorithm as it is told: a window of its own, a byte at a time, no bounds but those of the input.
std::string ExpandSlowly(std::string_view packed, std::size_t size) {
  std::string window(4096, '\0'), out;
  std::size_t next = 1, at = 0;
  const auto put = [&](char byte) {
    if (out.size() == size) return;
    out += byte;
    window[next] = byte;
    next = (next + 1) % 4096;
  };
  while (out.size() < size) {
    const auto flags = static_cast<unsigned char>(packed.at(at++));
    for (int bit = 0; bit < 8 && out.size() < size; ++bit) {
      const auto a = static_cast<unsigned char>(packed.at(at++));
      if ((flags >> bit & 1) != 0) {
        put(static_cast<char>(a));
        continue;
      }
      const unsigned position = (a & 15u) << 8 | static_cast<unsigned char>(packed.at(at++));
      for (unsigned k = 0; k < (a >> 4) + 2u; ++k) put(window[(position + k) % 4096]);
    }
  }
  return out;
}

TEST(Lzss, AnyInputComesOutAsByTheAlgorithm) {
  std::mt19937 random(20);
  for (int round = 0; round < 300; ++round) {
    std::string packed(1 + random() % 2000, '\0');
    // Few values, so that matches at short distances are common.
    for (char& byte : packed) byte = static_cast<char>(round % 2 == 0 ? random() : random() % 3 * 16);
    std::size_t size = packed.size() * 8;
    std::string expected;
    while (size > 0) {
      try {
        expected = ExpandSlowly(packed, size);
        break;
      } catch (const std::out_of_range&) {
        EXPECT_THROW(ExpandLzss(packed, size), base::RuntimeFailure);
        size = size * 3 / 4;
      }
    }
    ASSERT_EQ(ExpandLzss(packed, size), expected) << round;
  }
}

TEST(Lzss, WindowGoesRound) {
  // 5000 literals, then a match of the one before the last two.
  std::string plain, packed;
  for (int at = 0; at < 5000; ++at) plain += static_cast<char>('a' + at % 23);
  for (std::size_t at = 0; at < plain.size(); at += 8) packed += '\xFF' + plain.substr(at, 8);
  const unsigned position = (1 + 5000 - 3) % 4096;
  packed += '\0';
  packed += static_cast<char>(0x10 | position >> 8);
  packed += static_cast<char>(position & 255);
  EXPECT_EQ(ExpandLzss(packed, 5003), plain + plain.substr(4997));
}

}  // namespace
}  // namespace kestrel::falcon
