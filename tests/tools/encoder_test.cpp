#include "session-sim/encoder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::sim {
namespace {

using namespace std::string_literals;

Player SomePlayer() {
  Player player;
  player.Id = 7;
  player.Name = "Echo";
  player.Info = "F-15C";
  player.Status = 'O';
  player.At = {100, 200.5, 25412.345, 0, 420};
  return player;
}

AIAircraft At(const std::string& name, double x, double y, double altitude) {
  return {name, Side::Blue, {x, y, altitude, 0, 300}};
}

TEST(Encoder, ClientMessagesHoldFourFields) {
  EXPECT_EQ(NewClt(SomePlayer()),
            "NEWCLT7\x1e"
            "Echo\x1e"
            "F-15C\x1e"
            "O\0"s);
  EXPECT_EQ(PlsUpd(SomePlayer()),
            "PLSUPD7\x1e"
            "Echo\x1e"
            "F-15C\x1e"
            "O\0"s);
}

TEST(Encoder, ClientThatLeavesIsNamedByItsId) { EXPECT_EQ(DelClt(-12), "DELCLT-12\0"s); }

TEST(Encoder, TicksHaveNoData) {
  EXPECT_EQ(Syncro(), "SYNCRO\0"s);
  EXPECT_EQ(DisCon(), "DISCON\0"s);
}

TEST(Encoder, PositionIsNorthEastAltitudeInFeet) {
  // 200.5 and 100 map units of 3279.98 feet.
  EXPECT_EQ(InData(SomePlayer(), '.'),
            "INDATA7\x1e"
            "   657635.99   327998.00    25412.35\0"s);
  EXPECT_EQ(InData(SomePlayer(), ','),
            "INDATA7\x1e"
            "   657635,99   327998,00    25412,35\0"s);
}

TEST(Encoder, WideNumbersFillTwelveCharacters) {
  EXPECT_EQ(WideNumber(0, '.'), "        0.00");
  EXPECT_EQ(WideNumber(-0.05, '.'), "       -0.05");
  EXPECT_EQ(WideNumber(3358699.515, ','), "  3358699,52");
}

TEST(Encoder, AIRecordIsBearingRangeAltitudeFromTheBullseye) {
  const BullseyePoint bullseye = {500, 500};
  struct Case {
    AIAircraft Aircraft;
    std::string Record;
  };
  // 18.52 map units are 10 nautical miles.
  const std::vector<Case> cases = {{At("Viper1", 500, 518.52, 24600), "Viper1    00001025"},
                                   {At("Viper2", 518.52, 500, 900), "Viper2    09001001"},
                                   {At("Korshun12", 500, 481.48, 9400), "Korshun12 18001009"},
                                   {At("ElevenLetter", 481.48, 500, 0), "ElevenLett27001000"},
                                   {At("Almost1", 499.99, 600, 120000), "Almost1   00005499"},
                                   {At("There1", 500, 500, 10000), "There1    00000010"}};
  for (const Case& one : cases) EXPECT_EQ(AiRecord(one.Aircraft, bullseye), one.Record);
}

TEST(Encoder, SnapshotIsRecordsWithoutSeparators) {
  EXPECT_EQ(AiLoca({}, {}), "AILOCA\0"s);
  EXPECT_EQ(AiLoca({At("A1", 0, 18.52, 1000), At("B1", 18.52, 0, 2000)}, {}),
            "AILOCAA1        00001001B1        09001002\0"s);
}

}  // namespace
}  // namespace kestrel::sim
