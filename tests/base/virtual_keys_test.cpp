#include "base/virtual_keys.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kestrel::base {
namespace {

TEST(VirtualKeys, ALetterIsItsCapital) {
  for (char32_t letter = U'a'; letter <= U'z'; ++letter) {
    const auto number = static_cast<std::int32_t>(letter - U'a') + 65;
    EXPECT_EQ(KeyOfLetter(letter), number);
    EXPECT_EQ(KeyOfLetter(letter - U'a' + U'A'), number);
  }
  for (const char32_t other : {U'@', U'[', U'`', U'{', U'0', U'\u00e4', U'\0'}) EXPECT_EQ(KeyOfLetter(other), 0);
}

TEST(VirtualKeys, ASignIsTheSameKeyWithShift) {
  constexpr std::u32string_view plain = U"0123456789;=,-./`[\\]'", shifted = U")!@#$%^&*(:+<_>?~{|}\"";
  constexpr std::int32_t numbers[] = {48,  49,  50,  51,  52,  53,  54,  55,  56,  57, 186,
                                      187, 188, 189, 190, 191, 192, 219, 220, 221, 222};
  ASSERT_EQ(plain.size(), std::size(numbers));
  for (std::size_t n = 0; n < plain.size(); ++n) {
    EXPECT_EQ(KeyOfSign(plain[n]), numbers[n]);
    EXPECT_EQ(KeyOfSign(shifted[n]), numbers[n]);
  }
  EXPECT_EQ(KeyOfSign(U'a'), 0);
  EXPECT_EQ(KeyOfSign(0), 0);
}

TEST(VirtualKeys, EachPlaceIsTheKeyOfAUSKeyboard) {
  struct {
    std::uint32_t First;
    std::u32string_view Written;
  } const rows[] = {{2, U"1234567890-="}, {16, U"qwertyuiop[]"}, {30, U"asdfghjkl;'`"}, {43, U"\\zxcvbnm,./"}};
  for (const auto& row : rows) {
    for (std::size_t n = 0; n < row.Written.size(); ++n) {
      const auto place = static_cast<std::uint32_t>(row.First + n);
      const std::int32_t sign = KeyOfSignPlace(place), letter = KeyOfLetterPlace(place);
      EXPECT_EQ(sign, KeyOfSign(row.Written[n])) << place;
      EXPECT_EQ(letter, KeyOfLetter(row.Written[n])) << place;
    }
  }
  for (const std::uint32_t place : {0U, 1U, 14U, 15U, 28U, 29U, 42U, 54U, 57U, 200U}) {
    EXPECT_EQ(KeyOfSignPlace(place) + KeyOfLetterPlace(place), 0) << place;
  }
}

TEST(VirtualKeys, OtherLayoutsGiveTheNumbersOfTheirWindowsKeys) {
  EXPECT_EQ(KeyOfWriting(U'\u00f6', 39), 186) << "German: its o with dots stands where ; does";
  EXPECT_EQ(KeyOfWriting(U'&', 2), 49) << "French: 1 without Shift";
  EXPECT_EQ(KeyOfWriting(U'm', 39), 77) << "French: a letter is a letter wherever it stands";
  EXPECT_EQ(KeyOfWriting(U'a', 16), 65) << "French: where Q stands";
  EXPECT_EQ(KeyOfWriting(U',', 50), 188) << "French: a comma where M stands";
  EXPECT_EQ(KeyOfWriting(U'\u0444', 30), 65) << "Cyrillic: the place of A";
  EXPECT_EQ(KeyOfWriting(0, 30), 65) << "unknown character";
  EXPECT_EQ(KeyOfWriting(U';', 0), 186) << "unknown place";
  EXPECT_EQ(KeyOfWriting(0, 0), 0);
}

}  // namespace
}  // namespace kestrel::base
