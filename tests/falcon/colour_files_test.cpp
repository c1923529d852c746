#include "falcon/colour_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/little_endian.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Colour n is red n, green n + 1, blue n + 2, as far as a byte goes; `behind` follows each.
std::string ColourBytes(const std::string& behind = "") {
  std::string bytes;
  for (unsigned n = 0; n < 256; ++n) {
    bytes += test::Bytes1(n) + test::Bytes1((n + 1) & 255) + test::Bytes1((n + 2) & 255) + behind;
  }
  return bytes;
}

TEST(ActFile, HasRedGreenAndBlueFromTheFirstByte) {
  ColourPalette palette{};
  TakeActColours(ColourBytes(), palette);
  EXPECT_EQ(palette[0], 0x020100u);
  EXPECT_EQ(palette[1], 0x030201u);
  EXPECT_EQ(palette[0x10], 0x121110u);
  EXPECT_EQ(palette[255], 0x0100FFu);
}

TEST(ActFile, ColoursThatAreCutStay) {
  const std::string whole = ColourBytes();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    ColourPalette palette;
    palette.fill(0xABCDEF);
    TakeActColours(whole.substr(0, length), palette);
    for (std::size_t n = 0; n < 256; ++n) {
      ASSERT_EQ(palette[n] != 0xABCDEFu, n < length / 3) << length << " at " << n;
    }
  }
}

TEST(ActFile, WhatFollowsIsNotLookedAt) {
  ColourPalette palette{};
  TakeActColours(ColourBytes() + "more", palette);
  EXPECT_EQ(palette[255], 0x0100FFu);
}

TEST(PalFile, HasColoursWithFlagsBehind24Bytes) {
  ColourPalette palette{};
  TakePalColours(std::string(24, 'R') + ColourBytes("\x7F"), palette);
  EXPECT_EQ(palette[0], 0x020100u);
  EXPECT_EQ(palette[2], 0x040302u);
  EXPECT_EQ(palette[255], 0x0100FFu);
}

TEST(PalFile, ColoursThatAreCutStay) {
  const std::string whole = std::string(24, 'R') + ColourBytes("\x7F");
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    ColourPalette palette;
    palette.fill(0xABCDEF);
    TakePalColours(whole.substr(0, length), palette);
    // A colour counts once its three parts are there.
    const std::size_t held = length < 24 ? 0 : (length - 24 + 1) / 4;
    for (std::size_t n = 0; n < 256; ++n) ASSERT_EQ(palette[n] != 0xABCDEFu, n < held) << length << " at " << n;
  }
}

const std::string Mark = "Color Export File (KESTREL) v2          ";

TEST(CxpFile, IsWrittenByteForByte) {
  ColourChoice choice;
  choice.Sea = 0x00332211;
  choice.Criteria = {{0x00030201, -2}, {0x00FFFFFF, 32767}};
  ASSERT_EQ(Mark.size(), 40u);
  EXPECT_EQ(WriteCxp(choice), Mark + std::string("\x11\x22\x33\0"
                                                 "\2\0\0\0"
                                                 "\1\2\3\0\xFE\xFF"
                                                 "\xFF\xFF\xFF\0\xFF\x7F",
                                                 20));
}

TEST(CxpFile, ComesBackSortedByHeight) {
  ColourChoice choice;
  const std::string bytes = Mark + test::Bytes4(5) + test::Bytes4(2) + test::Bytes4(7) + test::Bytes2(900) +
                            test::Bytes4(8) + test::Bytes2(-900);
  ASSERT_TRUE(ReadCxp(bytes, choice));
  EXPECT_EQ(choice.Sea, 5u);
  EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{8, -900}, ColourCriterion{7, 900}));
}

TEST(CxpFile, MayHaveNoCriteria) {
  ColourChoice choice;
  choice.Criteria = {{1, 1}};
  EXPECT_TRUE(ReadCxp(Mark + test::Bytes4(5) + test::Bytes4(0), choice));
  EXPECT_THAT(choice.Criteria, IsEmpty());
}

TEST(CxpFile, The255ThCriterionIsTheLast) {
  ColourChoice choice;
  EXPECT_TRUE(ReadCxp(Mark + test::Bytes4(5) + test::Bytes4(255) + std::string(255 * 6, '\1'), choice));
  EXPECT_THAT(choice.Criteria, SizeIs(255));
  EXPECT_FALSE(ReadCxp(Mark + test::Bytes4(5) + test::Bytes4(256) + std::string(256 * 6, '\1'), choice));
  EXPECT_THAT(choice.Criteria, SizeIs(255));
}

TEST(CxpFile, AnythingElseIsRefusedAndChangesNothing) {
  ColourChoice choice;
  choice.Sea = 77;
  choice.Criteria = {{1, 10}};
  const std::string rest = test::Bytes4(5) + test::Bytes4(1) + test::Bytes4(7) + test::Bytes2(900);
  std::string first = Mark;
  first[29] = '1';
  for (const std::string& bytes :
       {first + rest, "color" + Mark.substr(5) + rest, Mark + test::Bytes4(5) + test::Bytes4(-1) + rest,
        Mark + test::Bytes4(5) + test::Bytes4(0x7FFFFFFF) + rest, std::string(60, '\0'), std::string()}) {
    EXPECT_FALSE(ReadCxp(bytes, choice));
    EXPECT_EQ(choice.Sea, 77u);
    EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{1, 10}));
  }
}

TEST(CxpFile, IsRefusedWhereverItIsCut) {
  const std::string whole = Mark + test::Bytes4(5) + test::Bytes4(2) + std::string(12, '\3');
  for (std::size_t length = 0; length < whole.size(); ++length) {
    ColourChoice choice;
    EXPECT_FALSE(ReadCxp(whole.substr(0, length), choice)) << length;
    EXPECT_THAT(choice.Criteria, IsEmpty());
  }
  ColourChoice choice;
  EXPECT_TRUE(ReadCxp(whole, choice));
}

}  // namespace
}  // namespace kestrel::falcon
