#include "falcon/key_lines.h"

#include <gtest/gtest.h>

namespace kestrel::falcon {
namespace {

TEST(KeyLines, ValueIsWhatStandsBehindTheSeparator) {
  const auto lines = KeyLines("a = 1\r\n\tTheater size in KM\t=  1024 \r\nlast==x", '=');
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(ValueOf(lines, "A"), "1");
  EXPECT_EQ(ValueOf(lines, "theater SIZE in km"), "1024");
  EXPECT_EQ(ValueOf(lines, "last"), "=x");
  EXPECT_EQ(ValueOf(lines, "size"), std::nullopt);
}

TEST(KeyLines, BlankOrTabSeparatesAsWell) {
  const auto lines = KeyLines("NROWS\t1024\n  NCOLS   2048  \nLAYOUT BIL of heights\nalone\n", ' ');
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(ValueOf(lines, "nrows"), "1024");
  EXPECT_EQ(ValueOf(lines, "ncols"), "2048");
  EXPECT_EQ(ValueOf(lines, "layout"), "BIL of heights");
}

TEST(KeyLines, LinesWithoutKeyOrValueAreLeftOutAndTheFirstOfAKeyCounts) {
  const auto lines = KeyLines("\n=\n=1\nkey=\nkey = \nkey=first\nkey=second", '=');
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(ValueOf(lines, "key"), "first");
  EXPECT_TRUE(KeyLines("", '=').empty());
}

}  // namespace
}  // namespace kestrel::falcon
