#include "base/code_page.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel::base {
namespace {

#ifndef _WIN32
TEST(CodePage, EveryByteComesBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(ToUnicode(all).size(), 256u);
  EXPECT_EQ(FromUnicode(ToUnicode(all)), all);
}

TEST(CodePage, MiddleBytesAreTheTypographicCharacters) {
  EXPECT_EQ(ToUnicode("\x80\x92\x9F\xB0\xE9"), u"\u20AC\u2019\u0178\u00B0\u00E9");
  EXPECT_EQ(ToUnicode("\x81"), std::u16string(1, char16_t{0x81}));
}
#endif

TEST(CodePage, ForeignCharactersBecomeOneQuestionMark) {
  EXPECT_EQ(FromUnicode(u"a\u0416b"), "a?b");
#ifndef _WIN32
  EXPECT_EQ(FromUnicode(u"\U0001F600x"), "?x");
  EXPECT_EQ(FromUnicode(std::u16string(1, char16_t{0xD83D})), "?");
#endif
}

TEST(CodePage, NulsAndEmptyTextsStand) {
  EXPECT_EQ(ToUnicode(""), u"");
  EXPECT_EQ(FromUnicode(u""), "");
  EXPECT_EQ(FromUnicode(ToUnicode(std::string("a\0b", 3))), std::string("a\0b", 3));
}

}  // namespace
}  // namespace kestrel::base
