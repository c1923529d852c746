#include "base/steady_table.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace kestrel::base {
namespace {

/// Counts how often one of its kind is moved or copied.
struct Counted {
  static inline long Moves = 0;
  int Number = 0;

  Counted() = default;
  explicit Counted(int number) : Number(number) {}
  Counted(const Counted& other) : Number(other.Number) { ++Moves; }
  Counted(Counted&& other) noexcept : Number(other.Number) { ++Moves; }
  Counted& operator=(const Counted& other) {
    Number = other.Number;
    ++Moves;
    return *this;
  }
  Counted& operator=(Counted&& other) noexcept {
    Number = other.Number;
    ++Moves;
    return *this;
  }
};

std::vector<int> Numbers(const SteadyTable<Counted>& table) {
  std::vector<int> numbers;
  for (const Counted& element : table.Live()) numbers.push_back(element.Number);
  return numbers;
}

TEST(SteadyTable, AnEmptyTableHasItsDummy) {
  SteadyTable<std::string> table;
  EXPECT_EQ(table.UpperBound(), 0u);
  EXPECT_TRUE(table.Empty());
  EXPECT_TRUE(table.Live().empty());
  table[0] = "kept";
  EXPECT_THAT(table.Slots(), testing::ElementsAre("kept"));
}

TEST(SteadyTable, RemovingKeepsTheOrderOfTheRest) {
  SteadyTable<std::string> table;
  for (const char* name : {"a", "b", "c"}) table.Append(name);
  table.Remove(2);
  EXPECT_THAT(table.Live(), testing::ElementsAre("a", "c"));
  EXPECT_EQ(table[2], "c");
  table.Append("d");
  EXPECT_THAT(table.Live(), testing::ElementsAre("a", "c", "d"));
  EXPECT_THAT(table.Slots(), testing::ElementsAre("", "a", "c", "d"));
}

TEST(SteadyTable, ClearMakesTheDummyNew) {
  SteadyTable<std::string> table;
  table[0] = "old";
  table.Append("a");
  table.Clear();
  EXPECT_TRUE(table.Empty());
  EXPECT_EQ(table[0], "");
  EXPECT_EQ(table.Append("b"), "b");
  EXPECT_EQ(table[1], "b");
}

TEST(SteadyTable, TakesTheElementsOfATableWithoutMovingThem) {
  Table<Counted> source;
  for (int number = 1; number <= 100; ++number) source.Append(Counted(number));
  Counted::Moves = 0;
  const SteadyTable<Counted> table = std::move(source);
  EXPECT_EQ(Counted::Moves, 0);
  EXPECT_EQ(table.UpperBound(), 100u);
  EXPECT_EQ(table[100].Number, 100);
}

TEST(SteadyTable, EmptyingItOneByOneMovesEachElementAFewTimesOnly) {
  constexpr int count = 20000;
  SteadyTable<Counted> table;
  for (int number = 1; number <= count; ++number) table.Append(Counted(number));
  Counted::Moves = 0;
  while (!table.Empty()) table.Remove(1);
  // Each is overwritten as it goes, and of those that stay half as many are moved each time as the time before.
  EXPECT_LT(Counted::Moves, 3 * count);
}

TEST(SteadyTable, AnElementIsFoundByItsPlaceUntilTheGapsAreClosed) {
  SteadyTable<Counted> table;
  for (int number = 1; number <= 5000; ++number) table.Append(Counted(number));
  std::mt19937 random(1);
  std::vector<std::size_t> placeOf(5001);
  const auto note = [&] {
    for (std::size_t index = 1; index <= table.UpperBound(); ++index) {
      placeOf[static_cast<std::size_t>(table[index].Number)] = table.PlaceOf(index);
    }
  };
  note();
  int closed = 0;
  while (!table.Empty()) {
    if (table.Remove(1 + random() % table.UpperBound())) {
      ++closed;
      note();
    }
    if (table.UpperBound() % 50 != 0) continue;
    for (std::size_t index = 1; index <= table.UpperBound(); ++index) {
      const std::size_t place = placeOf[static_cast<std::size_t>(table[index].Number)];
      ASSERT_EQ(table.PlaceOf(index), place);
      ASSERT_EQ(table.IndexAt(place), index);
    }
  }
  EXPECT_GE(closed, 2);
}

TEST(SteadyTable, AnyComingAndGoingGivesWhatAListGives) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  SteadyTable<Counted> table;
  std::vector<int> list;
  for (int step = 0; step < 20000; ++step) {
    // In waves of coming and of going, so that gaps are closed now and then.
    if (list.empty() || random() % 100 < (step / 4000 % 2 == 0 ? 80U : 20U)) {
      table.Append(Counted(step));
      list.push_back(step);
    } else {
      const std::size_t at = random() % list.size();
      table.Remove(at + 1);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
    }
    if (step % 100 != 0) continue;
    ASSERT_EQ(Numbers(table), list);
  }
  EXPECT_EQ(Numbers(table), list);
}

}  // namespace
}  // namespace kestrel::base
