#include "link/tables.h"

#include <gtest/gtest.h>

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

TEST(Tables, EmptyKeepsTheFriendlyList) {
  Tables tables;
  Add(tables, 3);
  tables.AIPlots.Append({});
  tables.AIHistory.Append({});
  tables.FriendlyList.Append("Viper");
  tables.Empty();
  EXPECT_TRUE(tables.Clients.Empty());
  EXPECT_TRUE(tables.AIPlots.Empty());
  EXPECT_TRUE(tables.AIHistory.Empty());
  EXPECT_EQ(tables.FriendlyList.UpperBound(), 1u);
  EXPECT_EQ(tables.FindClient(3), 0u);
}

}  // namespace
}  // namespace kestrel::link
