#include "falcon/foreign_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;

TEST(ForeignText, Utf8BecomesTheCodePage) {
  EXPECT_EQ(FromForeignText("Malm\xC3\xB6"), "Malm\xF6");
  EXPECT_EQ(FromForeignText("survivor\xE2\x80\x99s"), "survivor\x92s");
  EXPECT_EQ(FromForeignText("\xEF\xBB\xBFname"), "name") << "an editor's mark";
  EXPECT_EQ(FromForeignText("Wroc\xC5\x82"
                            "aw \xF0\x9F\x9B\xA9"),
            "Wroc?aw ?")
      << "what the code page does not hold";
}

TEST(ForeignText, BytesThatAreNoUtf8StandAsTheyAre) {
  const char* const others[] = {
      "Malm\xF6",                  // the code page already
      "Malm\xF6 \xC3\xB6",         // one wrong byte: all of it is the code page
      "\xC3",                      // cut
      "\xC0\x80",                  // longer than it need be
      "\xE0\x80\x80",              // the same
      "\xED\xA0\x80",              // half of a pair
      "\xF4\x90\x80\x80",          // beyond the last character
      "\xF8\x88\x80\x80\x80 old",  // five bytes
      "\x80",                      // nothing before it
  };
  for (const char* const text : others) EXPECT_EQ(FromForeignText(text), text);
}

TEST(ForeignText, LinesEndInEitherWayOrNotAtAll) {
  EXPECT_THAT(LinesOf("a\nb\r\n\r\nc"), ElementsAre("a", "b", "", "c"));
  EXPECT_THAT(LinesOf("a\n"), ElementsAre("a"));
  EXPECT_THAT(LinesOf("a\r"), ElementsAre("a"));
  EXPECT_THAT(LinesOf(""), ElementsAre());
}

TEST(ForeignText, FieldEndsAtItsFirstNul) {
  base::BinaryReader reader(
      std::string_view("ab\0xx"
                       "cde",
                       8));
  EXPECT_EQ(FieldText(reader, 5), "ab");
  EXPECT_EQ(FieldText(reader, 3), "cde") << "without one all of it";
  EXPECT_THROW(FieldText(reader, 1), base::RuntimeFailure);
}

TEST(ForeignText, ControlCharactersAreNotPrintable) {
  EXPECT_TRUE(IsPrintable("K\xF6ln [2]"));
  EXPECT_FALSE(IsPrintable("a\tb"));
  EXPECT_FALSE(IsPrintable("\x7F"));
}

TEST(ForeignText, FailureTellsWhereItHappened) {
  try {
    Within("objective 7", []() -> int { throw base::RuntimeFailure("it ends"); });
    FAIL();
  } catch (const base::RuntimeFailure& failure) {
    EXPECT_STREQ(failure.what(), "objective 7: it ends");
  }
}

}  // namespace
}  // namespace kestrel::falcon
