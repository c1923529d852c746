#include "base/table.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <memory>
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

TEST(Table, MovingShiftsThoseBetween) {
  struct Case {
    std::size_t From, To;
    std::array<const char*, 4> After;
  };
  const Case cases[] = {
      {1, 4, {"b", "c", "d", "a"}}, {4, 1, {"d", "a", "b", "c"}}, {2, 3, {"a", "c", "b", "d"}},
      {3, 2, {"a", "c", "b", "d"}}, {1, 3, {"b", "c", "a", "d"}}, {4, 2, {"a", "d", "b", "c"}},
      {1, 1, {"a", "b", "c", "d"}}, {3, 3, {"a", "b", "c", "d"}}, {4, 4, {"a", "b", "c", "d"}},
  };
  for (const Case& one : cases) {
    Table<std::string> table;
    table[0] = "dummy";
    for (const char* name : {"a", "b", "c", "d"}) table.Append(name);
    table.Move(one.From, one.To);
    EXPECT_THAT(table.Live(), testing::ElementsAreArray(one.After)) << one.From << " to " << one.To;
    EXPECT_EQ(table[0], "dummy");
  }
}

TEST(Table, MovingTakesElementsThatCannotBeCopied) {
  Table<std::unique_ptr<int>> table;
  for (const int value : {1, 2, 3}) table.Append(std::make_unique<int>(value));
  table.Move(3, 1);
  EXPECT_EQ(*table[1], 3);
  EXPECT_EQ(*table[2], 1);
  EXPECT_EQ(*table[3], 2);
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
