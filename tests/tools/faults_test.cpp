#include "session-sim/faults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "session-sim/encoder.h"

namespace kestrel::sim {
namespace {

std::string Joined(const std::vector<std::string>& pieces) {
  std::string all;
  for (const std::string& piece : pieces) all += piece;
  return all;
}

std::string SomeMessage(std::uint64_t seed) {
  const World world({2, 8, seed});
  return seed % 2 == 0 ? AiLoca(world.AI(), {400, 600}) : InData(world.Players()[0], '.');
}

TEST(Faults, CuttingKeepsEveryByteInOrder) {
  Random random(11);
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    const std::string message = SomeMessage(seed);
    const auto pieces = CutAtRandom(message, random);
    EXPECT_EQ(Joined(pieces), message);
    EXPECT_GE(pieces.size(), 2u);
    for (const std::string& piece : pieces) EXPECT_FALSE(piece.empty());
  }
}

TEST(Faults, OneByteAndNoneAreNotCut) {
  Random random(1);
  EXPECT_EQ(CutAtRandom("x", random), std::vector<std::string>{"x"});
  EXPECT_TRUE(CutAtRandom("", random).empty());
}

TEST(Faults, GarbageComesAsOftenAsAsked) {
  for (const int percent : {0, 5, 50, 100}) {
    Random random(3);
    const std::vector<std::string> good(20000, Syncro());
    const auto mixed = MixGarbage(good, percent, random);
    EXPECT_NEAR(static_cast<double>(mixed.size() - good.size()), percent * 200.0, 400) << percent;
  }
}

TEST(Faults, GoodMessagesKeepTheirOrderAmongGarbage) {
  Random random(4);
  std::vector<std::string> good;
  for (std::int16_t id = 1; id <= 500; ++id) good.push_back(DelClt(id));
  std::vector<std::string> kept;
  const std::set<std::string> wanted(good.begin(), good.end());
  for (const std::string& message : MixGarbage(good, 60, random)) {
    if (wanted.count(message) != 0) kept.push_back(message);
  }
  EXPECT_EQ(kept, good);
}

/// True when a station may take `text` for an Id that a player can have.
bool MayBeRealId(const std::string& text) {
  if (text.empty() || text.size() > 5 || text.find_first_not_of("0123456789") != std::string::npos) return false;
  return std::stoi(text) < FirstUnusedId;
}

TEST(Faults, GarbageIsNoChangeForARealAircraft) {
  Random random(6);
  std::set<std::string> words;
  const World world({2, 8, 1});
  const std::string good = InData(world.Players()[0], '.');
  for (int k = 0; k < 20000; ++k) {
    const std::string message = Garbage(good, random);
    ASSERT_EQ(message.back(), '\0');
    const std::string text = message.substr(0, message.find('\0'));
    const std::string word = text.substr(0, 6);
    words.insert(word);
    const std::string data = text.size() > 6 ? text.substr(6) : "";
    const std::size_t separator = data.find(RecordSeparator);
    if (word == "DELCLT") {
      EXPECT_FALSE(MayBeRealId(data)) << data;
    }
    if (word == "NEWCLT") {
      // With four fields and a good Id it would be a new player.
      const bool whole = std::count(data.begin(), data.end(), RecordSeparator) >= 3;
      EXPECT_FALSE(whole && data.find_first_not_of("0123456789") == separator && separator == 5 &&
                   std::stoi(data.substr(0, 5)) <= 32767)
          << data;
    }
    if ((word == "INDATA" || word == "PLSUPD") && separator != std::string::npos) {
      EXPECT_FALSE(MayBeRealId(data.substr(0, separator))) << data;
    }
    EXPECT_NE(word, "AILOCA");
    EXPECT_NE(word, "SYNCRO");
    EXPECT_NE(word, "DISCON");
  }
  for (const char* word : {"DELCLT", "NEWCLT", "INDATA", "PLSUPD", "QWERTY", ""})
    EXPECT_EQ(words.count(word), 1u) << word;
}

TEST(Faults, BrokenSnapshotIsThePartOfTheOneThatFollows) {
  Random random(8);
  const std::string good = AiLoca(World({0, 12, 1}).AI(), {});
  std::set<std::size_t> lengths;
  for (int k = 0; k < 4000; ++k) {
    std::string message = Garbage(good, random);
    if (message.substr(0, 6) != "AILOCA") continue;
    message.pop_back();
    EXPECT_EQ(good.substr(0, message.size()), message);
    lengths.insert(message.size());
  }
  EXPECT_GT(lengths.size(), 100u);
}

}  // namespace
}  // namespace kestrel::sim
