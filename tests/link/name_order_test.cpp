#include "link/name_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::link {
namespace {

using Named = std::pair<std::string, std::size_t>;

/// Plain partition exchange of whole records, counted from `low` as the table counts.
void NaiveSort(std::vector<Named>& table, int low, int high) {
  const std::string pivot = table[static_cast<std::size_t>((low + high) / 2)].first;
  int i = low;
  int j = high;
  do {
    while (table[static_cast<std::size_t>(i)].first < pivot) ++i;
    while (table[static_cast<std::size_t>(j)].first > pivot) --j;
    if (i <= j) std::swap(table[static_cast<std::size_t>(i++)], table[static_cast<std::size_t>(j--)]);
  } while (i <= j);
  if (low < j) NaiveSort(table, low, j);
  if (i < high) NaiveSort(table, i, high);
}

/// Names from few letters, so that many are equal; lengths around the 10 of the wire when `longest` asks for them.
std::vector<std::string> RandomNames(std::mt19937& random, std::size_t count, std::size_t shortest,
                                     std::size_t longest) {
  std::vector<std::string> names(count);
  for (std::string& name : names) {
    name.resize(shortest + random() % (longest - shortest + 1), ' ');
    for (char& c : name) c = "\0a\xff "[random() % 4];
    if (random() % 2) std::fill(name.begin() + static_cast<std::ptrdiff_t>(name.size() / 4), name.end(), ' ');
  }
  return names;
}

TEST(NameOrder, IsThatOfPlainPartitionExchange) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (int round = 0; round < 2000; ++round) {
    const bool longNames = round % 4 == 3;
    const auto names = RandomNames(random, 1 + random() % 60, longNames ? 0 : 9, longNames ? 14 : 10);
    const std::size_t low = 1 + random() % 60;
    std::vector<Named> naive(low);
    for (std::size_t i = 0; i < names.size(); ++i) naive.emplace_back(names[i], i);
    NaiveSort(naive, static_cast<int>(low), static_cast<int>(naive.size()) - 1);
    const std::vector<std::uint32_t> order = NameOrder(std::vector<std::string_view>(names.begin(), names.end()), low);
    ASSERT_EQ(order.size(), names.size());
    for (std::size_t i = 0; i < order.size(); ++i) ASSERT_EQ(order[i], naive[low + i].second) << round;
  }
}

TEST(NameOrder, OfNoNamesIsEmpty) { EXPECT_TRUE(NameOrder({}, 1).empty()); }

/// Names that make the middle name the smallest one of each part: quadratic for the plain exchange.
std::vector<std::string> SlowNames(std::size_t count) {
  // Play the exchange on places, deciding each pivot's rank when it is asked for.
  std::vector<std::size_t> place(count);
  for (std::size_t i = 0; i < count; ++i) place[i] = i;
  std::vector<std::size_t> rank(count);
  for (std::size_t low = 0; low < count; ++low) {
    const std::size_t middle = (low + 1 + count) / 2 - 1;
    rank[place[middle]] = low;
    std::swap(place[low], place[middle]);
  }
  std::vector<std::string> names(count);
  for (std::size_t i = 0; i < count; ++i) {
    std::string digits = std::to_string(rank[i]);
    names[i] = std::string(10 - digits.size(), '0') + digits;
  }
  return names;
}

TEST(NameOrder, NamesMadeToBeSlowAreSortedAsWell) {
  // 200,000 would need 10,000,000,000 steps of the plain exchange: without its limit this would not end.
  const std::vector<std::string> names = SlowNames(200000);
  const std::vector<std::string_view> views(names.begin(), names.end());
  const auto order = NameOrder(views, 1);
  ASSERT_EQ(order.size(), names.size());
  for (std::size_t i = 1; i < order.size(); ++i) ASSERT_LT(names[order[i - 1]], names[order[i]]);
}

}  // namespace
}  // namespace kestrel::link
