#include "link/snapshot_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/feed_text.h"
#include "link/friendly_index.h"
#include "link/name_order.h"
#include "link/plot_feed.h"

namespace kestrel::link {
namespace {

std::string SnapshotOf(const std::vector<std::string>& names) {
  std::string data;
  for (const std::string& name : names) data += test::AIRecord(name, "10", "20", "30");
  return data;
}

base::Table<std::string> Friends(const std::vector<std::string>& names) {
  base::Table<std::string> list;
  for (const std::string& name : names) list.Append(name);
  return list;
}

using Pairs = std::vector<std::pair<std::uint32_t, int>>;

Pairs PairsOf(std::span<const SnapshotNames::Aircraft> aircraft) {
  Pairs pairs;
  for (const SnapshotNames::Aircraft& each : aircraft) pairs.emplace_back(each.Record, each.Hostile);
  return pairs;
}

/// The same without anything that was there before: by plain sorting, and each name looked for in each entry.
Pairs Anew(const std::string& data, const base::Table<std::string>& friends) {
  std::vector<std::string_view> names;
  for (std::size_t at = 0; at + 9 <= data.size(); at += 18) names.push_back(std::string_view(data).substr(at, 10));
  Pairs pairs;
  for (const std::uint32_t record : NameOrder(names, 1)) {
    const std::string_view flight = FlightText(names[record]);
    const bool known = std::ranges::any_of(
        friends.Live(), [flight](const std::string& entry) { return entry.find(flight) != std::string::npos; });
    pairs.emplace_back(record, known ? 0 : 1);
  }
  return pairs;
}

TEST(SnapshotNames, AreSortedAndFriendsAreTold) {
  SnapshotNames names;
  EXPECT_EQ(PairsOf(names.Read(SnapshotOf({"Viper11", "Cowboy11", "Falcon21"}), Friends({"Viper1"}))),
            (Pairs{{1, 1}, {2, 1}, {0, 0}}));
  EXPECT_TRUE(names.Read("", Friends({})).empty());
}

TEST(SnapshotNames, TheSameNamesAreNotSortedAgain) {
  SnapshotNames names;
  const auto friends = Friends({"Viper1"});
  names.Read(SnapshotOf({"Viper11", "Cowboy11"}), friends);
  std::string moved = SnapshotOf({"Viper11", "Cowboy11"});
  moved.replace(10, 3, " 99");
  EXPECT_EQ(PairsOf(names.Read(moved, friends)), (Pairs{{1, 1}, {0, 0}}));
  EXPECT_EQ(names.Sorted(), 1u);
  EXPECT_EQ(names.Told(), 1u);
}

TEST(SnapshotNames, AnEditOfFriendlyListIsSeenAtOnce) {
  SnapshotNames names;
  const std::string data = SnapshotOf({"Viper11", "Cowboy11"});
  names.Read(data, Friends({"Viper1"}));
  EXPECT_EQ(PairsOf(names.Read(data, Friends({"Viper1", "Cowboy1"}))), (Pairs{{1, 0}, {0, 0}}));
  EXPECT_EQ(PairsOf(names.Read(data, Friends({"Cowboy1"}))), (Pairs{{1, 0}, {0, 1}}));
  EXPECT_EQ(PairsOf(names.Read(data, Friends({}))), (Pairs{{1, 1}, {0, 1}}));
  EXPECT_EQ(names.Sorted(), 1u);
  // Together with aircraft that come and go.
  std::vector<std::string> many;
  for (int n = 0; n < 64; ++n) many.push_back("Plane" + std::to_string(100 + n));
  names.Read(SnapshotOf(many), Friends({}));
  many.insert(many.begin() + 7, "New11");
  many.erase(many.begin() + 30);
  EXPECT_EQ(PairsOf(names.Read(SnapshotOf(many), Friends({"New1", "Plane10"}))),
            Anew(SnapshotOf(many), Friends({"New1", "Plane10"})));
  EXPECT_EQ(names.Sorted(), 2u);
}

TEST(SnapshotNames, FewThatComeAndGoAreNotSortedWithAll) {
  SnapshotNames names;
  std::vector<std::string> many;
  for (int n = 0; n < 200; ++n) many.push_back("Plane" + std::to_string(999 - n));
  names.Read(SnapshotOf(many), Friends({}));
  many.erase(many.begin(), many.begin() + 5);
  many.insert(many.begin() + 50, {"Zulu11", "Alpha11"});
  many[100] = "Middle11";
  many.push_back("Last11");
  EXPECT_EQ(PairsOf(names.Read(SnapshotOf(many), Friends({}))), Anew(SnapshotOf(many), Friends({})));
  EXPECT_EQ(names.Sorted(), 1u);
  EXPECT_EQ(names.Told(), 1u);
}

TEST(SnapshotNames, EqualNamesStandAsThePlainOrderLeavesThem) {
  SnapshotNames names;
  std::vector<std::string> many;
  for (int n = 0; n < 100; ++n) many.push_back("Plane" + std::to_string(100 + n));
  names.Read(SnapshotOf(many), Friends({}));
  many.insert(many.begin() + 20, "Plane150");
  EXPECT_EQ(PairsOf(names.Read(SnapshotOf(many), Friends({}))), Anew(SnapshotOf(many), Friends({})));
  many.insert(many.begin() + 90, "Other11");
  EXPECT_EQ(PairsOf(names.Read(SnapshotOf(many), Friends({}))), Anew(SnapshotOf(many), Friends({})));
  EXPECT_EQ(names.Sorted(), 3u);
}

TEST(SnapshotNames, ARandomTrafficIsReadAsIfNothingWereKept) {
  std::mt19937 random(16);
  for (const unsigned kinds : {40U, 5000U}) {
    SnapshotNames names;
    std::vector<std::string> present;
    std::vector<std::string> listed;
    const auto newName = [&] { return "P" + std::to_string(random() % kinds); };
    for (int n = 0; n < 150; ++n) present.push_back(newName());
    for (int round = 0; round < 400; ++round) {
      for (auto edits = random() % 6; edits > 0 && !present.empty(); --edits) {
        const auto at = present.begin() + static_cast<std::ptrdiff_t>(random() % present.size());
        switch (random() % 5) {
          case 0:
            present.insert(at, newName());
            break;
          case 1:
            present.erase(at);
            break;
          case 2:
            *at = newName();
            break;
          case 3:
            std::swap(*at, present.back());
            break;
          default:
            break;
        }
      }
      if (random() % 10 == 0) listed.push_back(newName());
      if (random() % 10 == 0 && !listed.empty()) listed.pop_back();
      if (random() % 50 == 0) std::shuffle(present.begin(), present.end(), random);
      std::string data = SnapshotOf(present);
      // Now and then the last record is cut.
      if (random() % 8 == 0 && !data.empty()) data.resize(data.size() - 1 - random() % 9);
      const auto friends = Friends(listed);
      ASSERT_EQ(PairsOf(names.Read(data, friends)), Anew(data, friends)) << "round " << round << " of " << kinds;
    }
  }
}

TEST(SnapshotNames, WhatIsKeptOutlivesTheEmptyingOfTheTables) {
  Tables tables;
  const std::string data = SnapshotOf({"Viper11", "Cowboy11"});
  ParseAI(data, {}, tables);
  tables.Clear();
  ASSERT_TRUE(tables.AIPlots.Empty());
  ParseAI(data, {}, tables);
  ASSERT_EQ(tables.AIPlots.UpperBound(), 2u);
  EXPECT_EQ(tables.AIPlots[1].Name, "Cowboy11  ");
  EXPECT_EQ(tables.AIPlots[2].Name, "Viper11   ");
  EXPECT_EQ(tables.AIPlots[2].Hostile, 1);
}

}  // namespace
}  // namespace kestrel::link
