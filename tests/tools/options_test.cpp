#include "session-sim/options.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace kestrel::sim {
namespace {

TEST(SimOptions, AreTheDefaultsWithoutWords) {
  const Options options = ParseOptions({});
  EXPECT_EQ(options.Port, 5556);
  EXPECT_EQ(options.PeriodMs, 1000);
  EXPECT_EQ(options.Bullseye.X, 400);
  EXPECT_EQ(options.Bullseye.Y, 676);
  EXPECT_FALSE(options.Split || options.Burst || options.DecimalComma || options.Help);
  EXPECT_FALSE(options.DurationS || options.DisconAfterS || options.DropAfterS);
}

TEST(SimOptions, AllAreRead) {
  const Options options = ParseOptions({"--port",
                                        "0",
                                        "--players",
                                        "3",
                                        "--ai",
                                        "7",
                                        "--period-ms",
                                        "50",
                                        "--seed",
                                        "18446744073709551615",
                                        "--duration-s",
                                        "9.5",
                                        "--bullseye",
                                        "12.5,900",
                                        "--split",
                                        "--burst",
                                        "--garbage",
                                        "5",
                                        "--decimal-comma",
                                        "--discon-after-s",
                                        "0",
                                        "--drop-after-s",
                                        "2",
                                        "--help"});
  EXPECT_EQ(options.Port, 0);
  EXPECT_EQ(options.World.Players, 3);
  EXPECT_EQ(options.World.AI, 7);
  EXPECT_EQ(options.PeriodMs, 50);
  EXPECT_EQ(options.World.Seed, UINT64_MAX);
  EXPECT_EQ(options.DurationS, 9.5);
  EXPECT_EQ(options.Bullseye.X, 12.5);
  EXPECT_EQ(options.Bullseye.Y, 900);
  EXPECT_TRUE(options.Split && options.Burst && options.DecimalComma && options.Help);
  EXPECT_EQ(options.GarbagePercent, 5);
  EXPECT_EQ(options.DisconAfterS, 0);
  EXPECT_EQ(options.DropAfterS, 2);
}

TEST(SimOptions, WrongWordsAreRefused) {
  const std::vector<std::vector<std::string>> cases = {
      {"--unknown"},         {"--port"},           {"--port", "65536"},    {"--port", "-1"},
      {"--ai", "12x"},       {"--garbage", "101"}, {"--period-ms", "0"},   {"--bullseye", "12"},
      {"--bullseye", "a,b"}, {"--seed", ""},       {"--duration-s", "nan"}};
  for (const auto& words : cases) EXPECT_THROW(ParseOptions(words), std::invalid_argument) << words.front();
}

TEST(SimOptions, HelpNamesEachOption) {
  for (const char* name :
       {"--port", "--players", "--ai", "--period-ms", "--seed", "--duration-s", "--bullseye", "--split", "--burst",
        "--garbage", "--decimal-comma", "--discon-after-s", "--drop-after-s"}) {
    EXPECT_NE(HelpText().find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace kestrel::sim
