#include "base/code_page.h"

#include <gtest/gtest.h>

#include <string>
#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace kestrel::base {
namespace {

/// True on Windows where the code page is one of several bytes to a character: nothing here holds then.
bool SeveralBytes() {
#ifdef _WIN32
  CPINFO info;
  return !GetCPInfo(CP_ACP, &info) || info.MaxCharSize != 1;
#else
  return false;
#endif
}

/// The code page that other systems use, and that of Windows in western Europe and America.
bool Western() {
#ifdef _WIN32
  return GetACP() == 1252;
#else
  return true;
#endif
}

TEST(CodePage, EveryByteComesBack) {
  if (SeveralBytes()) GTEST_SKIP() << "a code page of several bytes to a character";
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(ToUnicode(all).size(), 256u);
  EXPECT_EQ(FromUnicode(ToUnicode(all)), all);
}

TEST(CodePage, MiddleBytesAreTheTypographicCharacters) {
  if (!Western()) GTEST_SKIP() << "another code page";
  EXPECT_EQ(ToUnicode("\x80\x92\x9F\xB0\xE9"), u"\u20AC\u2019\u0178\u00B0\u00E9");
  EXPECT_EQ(ToUnicode("\x81"), std::u16string(1, char16_t{0x81}));
}

TEST(CodePage, ForeignCharactersBecomeOneQuestionMark) {
  if (!Western()) GTEST_SKIP() << "another code page";
  EXPECT_EQ(FromUnicode(u"a\u0416b"), "a?b");
  EXPECT_EQ(FromUnicode(u"\u2126"), "?") << "not the letter that looks like it";
  EXPECT_EQ(FromUnicode(u"\U0001F600x"), "?x");
  EXPECT_EQ(FromUnicode(std::u16string(1, char16_t{0xD83D})), "?");
}

TEST(CodePage, NulsAndEmptyTextsStand) {
  EXPECT_EQ(ToUnicode(""), u"");
  EXPECT_EQ(FromUnicode(u""), "");
  EXPECT_EQ(FromUnicode(ToUnicode(std::string("a\0b", 3))), std::string("a\0b", 3));
}

}  // namespace
}  // namespace kestrel::base
