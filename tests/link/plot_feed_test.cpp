#include "link/plot_feed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/failure.h"
#include "link/feed_text.h"
#include "link/roster.h"

namespace kestrel::link {
namespace {

using test::AIRecord;
using test::ClientData;
using test::Describe;
using test::PositionData;

constexpr theaters::DownPoint Bull{500, 400};

Tables OnePlayer() {
  Tables tables;
  AddAWASCClient(ClientData("5", "Smith"), true, tables);
  return tables;
}

TEST(PlotFeed, PositionIsReadFromTheFixedFields) {
  Tables tables = OnePlayer();
  GetAWACSPosData(
      "5\x1e"
      "  3279980.00  6559960,00   12399.999",
      0, tables);
  EXPECT_DOUBLE_EQ(tables.Clients[1].X, 2000);
  EXPECT_DOUBLE_EQ(tables.Clients[1].Y, 1000);
  EXPECT_EQ(tables.Clients[1].Altitude, 123);
}

TEST(PlotFeed, PlayerAppearsWithSecondPosition) {
  Tables tables = OnePlayer();
  PlotRecord& client = tables.Clients[1];
  EXPECT_FALSE(HasShownPosition(client));
  GetAWACSPosData(PositionData("5", "3279.98", "6559.96", "0"), 0, tables);
  EXPECT_EQ(client.PosText, "0000.0000000.000");
  EXPECT_FALSE(HasShownPosition(client));
  GetAWACSPosData(PositionData("5", "32799.8", "65599.6", "0"), 0, tables);
  EXPECT_EQ(client.PosText, "0002.0000001.000");
  EXPECT_TRUE(HasShownPosition(client));
  ASSERT_EQ(client.History.UpperBound(), 2u);
  EXPECT_EQ(client.History[1].X, 0);
  EXPECT_DOUBLE_EQ(client.History[2].X, 2);
  EXPECT_DOUBLE_EQ(client.History[2].Y, 1);
}

TEST(PlotFeed, PositionOfAnUnknownIdMovesOnlySlotZero) {
  Tables tables = OnePlayer();
  GetAWACSPosData(PositionData("6", "3279.98", "6559.96", "500"), 0, tables);
  EXPECT_EQ(tables.Clients[1].PosText, "");
  EXPECT_TRUE(tables.Clients[1].History.Empty());
  EXPECT_DOUBLE_EQ(tables.Clients[0].X, 2);
  EXPECT_EQ(tables.Clients[0].Altitude, 5);
  EXPECT_EQ(tables.Clients[0].History.UpperBound(), 1u);
}

TEST(PlotFeed, AltitudeIsRoundedDown) {
  const std::vector<std::pair<std::string, int>> cases = {{"99.9", 0},     {"100", 1},         {"-1", -1},
                                                          {"-100", -1},    {"3276799", 32767}, {"-3276800", -32768},
                                                          {"199.9999", 1}, {"12x", 0},         {"-0.5", -1}};
  for (const auto& [text, altitude] : cases) {
    Tables tables = OnePlayer();
    GetAWACSPosData(PositionData("5", "1", "1", text), 0, tables);
    EXPECT_EQ(tables.Clients[1].Altitude, altitude) << text;
  }
}

TEST(PlotFeed, BadPositionsChangeNothing) {
  const std::vector<std::string> bad = {
      "",
      "5",
      PositionData("x", "1", "2", "3"),
      PositionData("", "1", "2", "3"),
      PositionData("32768", "1", "2", "3"),
      PositionData("-32769", "1", "2", "3"),
      PositionData("5.0", "1", "2", "3"),
      PositionData("5", "1e999", "2", "3"),
      PositionData("5", "1", "-1e999", "3"),
      PositionData("5", "1", "2", "1e999"),
      PositionData("5", "1", "2", "3276800"),
      PositionData("5", "1", "2", "-3276801"),
      PositionData("5", "1", "2", "1e300"),
  };
  for (const std::string& data : bad) {
    Tables tables = OnePlayer();
    const std::string before = Describe(tables);
    EXPECT_THROW(GetAWACSPosData(data, 5000, tables), base::RuntimeFailure) << data;
    EXPECT_EQ(Describe(tables), before) << data;
  }
}

TEST(PlotFeed, TextThatIsNoNumberReadsAsZero) {
  const std::vector<std::string> zero = {"5\x1e",
                                         "5\x1e   ",
                                         PositionData("5", "nan", "inf", "nan"),
                                         PositionData("5", "abc", "-", "."),
                                         "5\x1e"
                                         "0\x1e"
                                         "1",
                                         PositionData(" 5 ", "0x12", "-0", "0")};
  for (const std::string& data : zero) {
    Tables tables = OnePlayer();
    tables.Clients[1].X = 3;
    GetAWACSPosData(data, 0, tables);
    EXPECT_EQ(tables.Clients[1].X, 0) << data;
    EXPECT_EQ(tables.Clients[1].Y, 0) << data;
    EXPECT_EQ(tables.Clients[1].Altitude, 0) << data;
    EXPECT_EQ(tables.Clients[1].PosText, "0003.0000000.000") << data;
  }
}

TEST(PlotFeed, FurtherFieldsAndCharactersAreIgnored) {
  Tables tables = OnePlayer();
  GetAWACSPosData(PositionData("5", "3279.98", "6559.96", "500") +
                      "99999\x1e"
                      "more",
                  0, tables);
  EXPECT_DOUBLE_EQ(tables.Clients[1].Y, 1);
  EXPECT_DOUBLE_EQ(tables.Clients[1].X, 2);
  EXPECT_EQ(tables.Clients[1].Altitude, 5);
}

TEST(PlotFeed, SpeedIsTheWayOfOneCycle) {
  Tables tables = OnePlayer();
  PlotRecord& client = tables.Clients[1];
  client.PosText = "0001.0000001.000";
  client.History.Append({10, 20});
  client.X = 10 + 1.852 * 3;
  client.Y = 20 - 1.852 * 4;
  EXPECT_NEAR(CalcSpeed(client, 5000), 5 * 3600 / 5.0, 1e-9);
  EXPECT_EQ(CalcSpeed(client, 0), 0);
  client.History.Append({0, 0});
  EXPECT_EQ(CalcSpeed(client, 5000), 0);
  client.History.Append({0, 1});
  EXPECT_GT(CalcSpeed(client, 5000), 0);
  client.PosText.clear();
  EXPECT_EQ(CalcSpeed(client, 5000), 0);
}

TEST(PlotFeed, SpeedIsStoredWithThePosition) {
  Tables tables = OnePlayer();
  GetAWACSPosData(PositionData("5", "327998", "327998", "0"), 10000, tables);
  EXPECT_EQ(tables.Clients[1].Speed, 0) << "the position before was exactly 0, 0";
  // 3 map units east, 4 north: 5 / 1.852 miles in 10 s.
  GetAWACSPosData(PositionData("5", "341117.92", "337837.94", "0"), 10000, tables);
  EXPECT_EQ(tables.Clients[1].Speed, 972);
}

TEST(PlotFeed, SpeedIsRoundedHalfToEven) {
  // In a cycle of one hour the speed is the way in miles, 1.852 * 3279.98 feet each: 2.5 and 3.5 of them.
  const std::pair<const char*, double> ways[] = {{"15186.3074", 2.5}, {"21260.83036", 3.5}};
  const int rounded[] = {2, 4};
  for (std::size_t i = 0; i < std::size(ways); ++i) {
    Tables tables = OnePlayer();
    tables.Clients[1].Y = 1;  // not 0, 0, which has no speed; north stays so
    GetAWACSPosData(PositionData("5", "3279.98", ways[i].first, "0"), 3'600'000, tables);
    ASSERT_EQ(CalcSpeed(tables.Clients[1], 3'600'000), ways[i].second);
    EXPECT_EQ(tables.Clients[1].Speed, rounded[i]);
  }
}

TEST(PlotFeed, SpeedOfAJumpIsHeld) {
  for (const char* far : {"3279980", "1e300", "-1e308"}) {
    Tables tables = OnePlayer();
    GetAWACSPosData(PositionData("5", "1", "1", "0"), 1000, tables);
    GetAWACSPosData(PositionData("5", "1", far, "0"), 1000, tables);
    EXPECT_EQ(tables.Clients[1].Speed, 32767) << far;
    EXPECT_NE(tables.Clients[1].X, 1 / FeetPerMapUnit) << far;
  }
}

TEST(PlotFeed, AIRecordIsPlacedFromTheBullseye) {
  Tables tables;
  ParseAI(AIRecord("Viper11", "090", "100", "35"), Bull, tables);
  ASSERT_EQ(tables.AIPlots.UpperBound(), 1u);
  const AIPlotRecord& plot = tables.AIPlots[1];
  EXPECT_EQ(plot.Name, "Viper11   ");
  EXPECT_EQ(plot.Bearing, 90);
  EXPECT_EQ(plot.Range, 100);
  EXPECT_EQ(plot.Altitude, 350);
  EXPECT_FLOAT_EQ(plot.X, 685.2F);
  EXPECT_FLOAT_EQ(plot.Y, 400.0F);
}

TEST(PlotFeed, AIPositionsGrowDownward) {
  struct Case {
    const char* Bearing;
    double X, Y;
  };
  const Case cases[] = {{"000", 500, 214.8},
                        {"180", 500, 585.2},
                        {"270", 314.8, 400},
                        {"360", 500, 214.8},
                        {"4.5", 500 + 185.2 * 0.0784590957, 400 - 185.2 * 0.9969173337},
                        {"4,5", 500 + 185.2 * 0.0784590957, 400 - 185.2 * 0.9969173337},
                        {"-90", 314.8, 400},
                        {"450", 685.2, 400}};
  for (const Case& c : cases) {
    Tables tables;
    ParseAI(AIRecord("A", c.Bearing, "100", "0"), Bull, tables);
    EXPECT_NEAR(tables.AIPlots[1].X, c.X, 1e-3) << c.Bearing;
    EXPECT_NEAR(tables.AIPlots[1].Y, c.Y, 1e-3) << c.Bearing;
  }
}

TEST(PlotFeed, AIAltitudesAreThousandsOfFeet) {
  const std::vector<std::pair<std::string, int>> cases = {{"35", 350}, {" 5", 50},  {"05", 50}, {"00", 0},  {"5 ", 0},
                                                          {"x5", 0},   {"-5", -50}, {"  ", 0},  {"99", 990}};
  for (const auto& [text, altitude] : cases) {
    Tables tables;
    ParseAI(AIRecord("A", "0", "0", text), Bull, tables);
    EXPECT_EQ(tables.AIPlots[1].Altitude, altitude) << text;
  }
}

TEST(PlotFeed, AIFieldsThatDoNotConvertAreZero) {
  for (const char* text : {"abc", "1x2", "   ", "nan", "inf", "--1", "1e", "."}) {
    Tables tables;
    ParseAI(AIRecord("A", text, text, "10"), Bull, tables);
    EXPECT_EQ(tables.AIPlots[1].Bearing, 0) << text;
    EXPECT_EQ(tables.AIPlots[1].Range, 0) << text;
    EXPECT_FLOAT_EQ(tables.AIPlots[1].X, 500) << text;
    EXPECT_EQ(tables.AIPlots[1].Altitude, 100) << text;
  }
}

TEST(PlotFeed, SnapshotOfAnyLengthIsTaken) {
  std::string data;
  for (int i = 0; data.size() <= 200; ++i) data += AIRecord("Name" + std::to_string(1000 + i), "123", "045", "67");
  for (std::size_t length = 0; length <= 200; ++length) {
    Tables tables;
    ParseAI(std::string_view(data).substr(0, length), Bull, tables);
    const std::size_t rest = length % 18;
    const std::size_t count = length / 18 + (rest >= 9 ? 1 : 0);
    ASSERT_EQ(tables.AIPlots.UpperBound(), count) << length;
    if (count == 0) continue;
    const AIPlotRecord& last = tables.AIPlots[count];
    const bool partial = rest >= 9;
    EXPECT_EQ(last.Name.size(), partial && rest < 10 ? 9u : 10u) << length;
    const double bearing = !partial || rest >= 13 ? 123 : rest == 12 ? 12 : rest == 11 ? 1 : 0;
    const double range = !partial || rest >= 16 ? 45 : rest == 15 ? 4 : 0;
    const int altitude = !partial ? 670 : rest == 17 ? 60 : 0;
    EXPECT_EQ(last.Bearing, bearing) << length;
    EXPECT_EQ(last.Range, range) << length;
    EXPECT_EQ(last.Altitude, altitude) << length;
  }
}

TEST(PlotFeed, EmptySnapshotMovesTheOldPlotsIntoTheTrail) {
  Tables tables;
  ParseAI(AIRecord("A", "090", "100", "0"), Bull, tables);
  IncreasePlotHistories(255, tables);
  ParseAI("", Bull, tables);
  EXPECT_TRUE(tables.AIPlots.Empty());
  ASSERT_EQ(tables.AIHistory.UpperBound(), 1u);
  EXPECT_FLOAT_EQ(tables.AIHistory[1].X, 685.2F);
  EXPECT_EQ(tables.AIHistory[1].Age, 1);
}

TEST(PlotFeed, TrailKeepsSixGenerationsOldestFirst) {
  Tables tables;
  for (int cycle = 0; cycle < 20; ++cycle) {
    IncreasePlotHistories(255, tables);
    // The number of plots changes from cycle to cycle: 0, 1, 2, 3, 0, ...
    std::string data;
    for (int i = 0; i < cycle % 4; ++i) data += AIRecord("A" + std::to_string(i), "0", "0", "0");
    ParseAI(data, {1.0 * cycle, 0}, tables);
  }
  // Cycle 19 is in AIPlots; 18 down to 13 are dots of age 1 to 6.
  std::vector<std::pair<int, float>> expected, dots;
  for (int cycle = 13; cycle <= 18; ++cycle) {
    for (int i = 0; i < cycle % 4; ++i) expected.emplace_back(19 - cycle, static_cast<float>(cycle));
  }
  for (const AIHistoryPoint& dot : tables.AIHistory.Live()) dots.emplace_back(dot.Age, dot.X);
  EXPECT_EQ(dots, expected);
}

TEST(PlotFeed, FriendlyDotsAreBlueWhateverTheSettings) {
  Tables tables;
  tables.FriendlyList.Append("Viper");
  ParseAI(AIRecord("Viper1", "0", "0", "0") + AIRecord("Mig1", "0", "0", "0"), Bull, tables);
  IncreasePlotHistories(1234, tables);
  ASSERT_EQ(tables.AIHistory.UpperBound(), 2u);
  EXPECT_EQ(tables.AIHistory[1].Color, 1234u) << "Mig1 sorts first";
  EXPECT_EQ(tables.AIHistory[2].Color, 16711680u);
}

TEST(PlotFeed, EveryPlotIsHostileWithoutFriends) {
  Tables tables;
  ParseAI(AIRecord("", "0", "0", "0") + AIRecord("A", "0", "0", "0") + AIRecord("Viper1", "0", "0", "0"), Bull, tables);
  for (const AIPlotRecord& plot : tables.AIPlots.Live()) EXPECT_EQ(plot.Hostile, 1) << plot.Name;
}

TEST(PlotFeed, FriendsAreFoundInsideTheEntries) {
  struct Case {
    std::string Name;
    std::vector<std::string> Entries;
    bool Friendly;
  };
  const std::vector<Case> cases = {
      {"Viper1", {"Viper"}, true},
      {"Viper1", {"viper"}, false},
      {"Viper1", {"Mig", "The Viper!"}, true},
      {"Viper12", {"Viper"}, false},
      {"Viper12", {"Viper1"}, true},
      {" Viper1", {"Viper"}, true},
      {"", {"x"}, true},
      {"", {""}, true},
      {"7", {"x"}, true},
      {"ab", {"cab"}, true},
      {"ab", {"b"}, false},
      {"Viper1", {""}, false},
      {"Viper1", {"Vip", "er"}, false},
      {"Viper1", {"Vipe", "Viper"}, true},
      {"Viper1", {"Vipe"}, false},
      {"aaa1", {"aa", "aaaa"}, true},
  };
  for (const Case& c : cases) {
    Tables tables;
    for (const std::string& entry : c.Entries) tables.FriendlyList.Append(entry);
    ParseAI(AIRecord(c.Name, "0", "0", "0"), Bull, tables);
    EXPECT_EQ(tables.AIPlots[1].Hostile, c.Friendly ? 0 : 1) << c.Name;
  }
}

TEST(PlotFeed, PositionsAsFeet) {
  EXPECT_EQ(XYToFeetStr(100, 924, 1024), "03279980327998");
  EXPECT_EQ(XYToFeetStr(0, 1024, 1024), "00000000000000");
}

}  // namespace
}  // namespace kestrel::link
