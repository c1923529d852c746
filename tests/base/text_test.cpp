#include "base/text.h"

#include <gmock/gmock.h>

namespace kestrel::base {
namespace {

using testing::ElementsAre;

TEST(Text, TrimDropsBlanksOnlyAtTheEnds) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim("\ta\n"), "\ta\n");
}

TEST(Text, CaseChangesOnlyAsciiLetters) {
  EXPECT_EQ(Upper("aZ{`\xE4 1"), "AZ{`\xE4 1");
  EXPECT_EQ(Lower("aZ[@\xC4 1"), "az[@\xC4 1");
}

TEST(Text, SameNoCaseComparesWholeTexts) {
  EXPECT_TRUE(SameNoCase("Foo", "fOO"));
  EXPECT_FALSE(SameNoCase("Foo", "Foo "));
  EXPECT_FALSE(SameNoCase("\xE4", "\xC4"));
  EXPECT_FALSE(SameNoCase("@", "`"));
}

TEST(Text, SplitKeepsEmptyPieces) {
  EXPECT_THAT(Split("a;;b;", ';'), ElementsAre("a", "", "b", ""));
  EXPECT_THAT(Split("abc", ';'), ElementsAre("abc"));
  EXPECT_THAT(Split("", ';'), ElementsAre(""));
}

}  // namespace
}  // namespace kestrel::base
