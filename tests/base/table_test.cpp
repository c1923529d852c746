#include "base/table.h"

#include <gmock/gmock.h>

#include <string>

namespace kestrel::base {
namespace {

TEST(Table, AnEmptyTableHasItsDummy) {
  Table<std::string> table;
  EXPECT_EQ(table.UpperBound(), 0u);
  EXPECT_TRUE(table.Empty());
  EXPECT_TRUE(table.Live().empty());
  table[0] = "kept";
  EXPECT_EQ(table[0], "kept");
}

TEST(Table, RemovingKeepsTheOrderOfTheRest) {
  Table<std::string> table;
  for (const char* name : {"a", "b", "c"}) table.Append(name);
  table.Remove(2);
  EXPECT_THAT(table.Live(), testing::ElementsAre("a", "c"));
  EXPECT_EQ(table[2], "c");
}

TEST(Table, ResizingKeepsWhatStays) {
  Table<std::string> table;
  table[0] = "dummy";
  table.Append("a");
  table.Resize(3);
  EXPECT_THAT(table.Live(), testing::ElementsAre("a", "", ""));
  table.Resize(0);
  EXPECT_TRUE(table.Empty());
  EXPECT_EQ(table[0], "dummy");
}

TEST(Table, ClearMakesTheDummyNew) {
  Table<std::string> table;
  table[0] = "old";
  table.Append("a");
  table.Clear();
  EXPECT_TRUE(table.Empty());
  EXPECT_EQ(table[0], "");
}

}  // namespace
}  // namespace kestrel::base
