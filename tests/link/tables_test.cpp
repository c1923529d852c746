#include "link/tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace kestrel::link {
namespace {

void Add(Tables& tables, std::int16_t id) {
  PlotRecord client;
  client.Id = id;
  tables.Clients.Append(client);
  tables.IndexLast();
}

TEST(Tables, FindClientGivesTheFirstSlotOfAnId) {
  Tables tables;
  EXPECT_EQ(tables.FindClient(0), 0u);
  for (const int id : {7, -32768, 32767, 7, 0}) Add(tables, static_cast<std::int16_t>(id));
  EXPECT_EQ(tables.FindClient(7), 1u);
  EXPECT_EQ(tables.FindClient(-32768), 2u);
  EXPECT_EQ(tables.FindClient(32767), 3u);
  EXPECT_EQ(tables.FindClient(0), 5u);
  EXPECT_EQ(tables.FindClient(8), 0u);
  tables.Clients.Remove(1);
  tables.RebuildIndex();
  EXPECT_EQ(tables.FindClient(7), 3u);
  EXPECT_EQ(tables.FindClient(-32768), 1u);
}

TEST(Tables, TakingOneOutMovesNoOther) {
  constexpr int count = 2000;
  Tables tables;
  for (int id = 1; id <= count; ++id) Add(tables, static_cast<std::int16_t>(id));
  const auto at = [&tables](int id) { return &tables.Clients[tables.FindClient(static_cast<std::int16_t>(id))]; };
  std::map<int, const PlotRecord*> where;
  for (int id = 1; id <= count; ++id) where[id] = at(id);
  // Every second one of the first half, from the front: the slots of all that stay shift.
  for (int id = 1; id <= count / 2; id += 2) tables.TakeOut(tables.FindClient(static_cast<std::int16_t>(id)));
  ASSERT_EQ(tables.Clients.UpperBound(), 1500u);
  for (int id = 1; id <= count; ++id) {
    if (id > count / 2 || id % 2 == 0) {
      ASSERT_EQ(at(id), where[id]) << id;
    }
  }
  EXPECT_EQ(tables.FindClient(2), 1u);
  EXPECT_EQ(tables.FindClient(1001), 501u);
}

TEST(Tables, AnyComingAndGoingFindsWhatAScanFinds) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Tables tables;
  std::vector<std::int16_t> list;
  constexpr int ids = 60;  // so few that many come twice
  const auto scan = [&list](std::int16_t id) {
    const auto found = std::find(list.begin(), list.end(), id);
    return found == list.end() ? 0 : static_cast<std::size_t>(found - list.begin()) + 1;
  };
  for (int step = 0; step < 20000; ++step) {
    const auto id = static_cast<std::int16_t>(random() % ids);
    // In waves of coming and of going, so that the table closes its gaps now and then.
    if (random() % 100 < (step / 2000 % 2 == 0 ? 90U : 10U)) {
      Add(tables, id);
      list.push_back(id);
    } else if (const std::size_t at = scan(id); at != 0) {
      ASSERT_EQ(tables.FindClient(id), at);
      tables.TakeOut(at);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(at) - 1);
    }
    if (step % 50 != 0) continue;
    for (std::int16_t each = 0; each < ids; ++each) ASSERT_EQ(tables.FindClient(each), scan(each)) << step;
  }
}

TEST(Tables, TellsWhichClientsAreUntouched) {
  Tables tables;
  for (const int id : {1, 2, 3, 4, 5}) Add(tables, static_cast<std::int16_t>(id));
  EXPECT_EQ(tables.TakeUntouched().Front, 0u) << "all are new";
  tables.TakeOut(3);  // 1 2 4 5
  UntouchedClients left = tables.TakeUntouched();
  EXPECT_EQ(left.Front, 2u);
  EXPECT_EQ(left.Back, 2u);
  tables.Touch(2);
  left = tables.TakeUntouched();
  EXPECT_EQ(left.Front, 1u);
  EXPECT_EQ(left.Back, 2u);
  Add(tables, 6);
  left = tables.TakeUntouched();
  EXPECT_EQ(left.Front, 4u);
  EXPECT_EQ(left.Back, 0u);
  tables.RebuildIndex();
  left = tables.TakeUntouched();
  EXPECT_EQ(left.Front + left.Back, 0u);
  left = tables.TakeUntouched();
  EXPECT_GE(left.Front, 5u);
  tables.Clear();
  left = tables.TakeUntouched();
  EXPECT_EQ(left.Front + left.Back, 0u);
}

TEST(Tables, ClearKeepsTheFriendlyList) {
  Tables tables;
  Add(tables, 3);
  tables.AIPlots.Append({});
  tables.AIHistory.Append({});
  tables.FriendlyList.Append("Viper");
  tables.Clear();
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_TRUE(tables.AIPlots.Empty());
  EXPECT_TRUE(tables.AIHistory.Empty());
  EXPECT_EQ(tables.FriendlyList.UpperBound(), 1u);
  EXPECT_EQ(tables.FindClient(3), 0u);
}

}  // namespace
}  // namespace kestrel::link
