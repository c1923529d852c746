#include "tape/acmi_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "tape/acmi_reader.h"

namespace kestrel::tape {
namespace {

constexpr double Start = 46347.25;  // 2026-11-21 06:00:00
constexpr double Second = 1 / 86400.0;
const std::string Head =
    "\xEF\xBB\xBF"
    "FileType=text/acmi/tacview\nFileVersion=2.2\n0,ReferenceTime=2026-11-21T06:00:00Z\n0,DataRecorder=KESTREL\n";
/// Of a bullseye at 512, 512.
const std::string Bullseye =
    "1,T=125.1200000|35.1200000|0.00,Type=Navaid+Static+Bullseye,Coalition=Allies,Color=Blue,Name=Bullseye\n";

link::PlotRecord Player(std::int16_t id, const std::string& name, double X, double Y, std::int16_t altitude) {
  link::PlotRecord client;
  client.Id = client.ClientId = id;
  client.Name = name;
  client.X = X;
  client.Y = Y;
  client.Altitude = altitude;
  client.PosText = "0300.0000400.000";
  return client;
}

link::AIPlotRecord Flight(const std::string& name, float X, float Y, std::int16_t altitude, bool hostile) {
  link::AIPlotRecord plot;
  plot.Name = name;
  plot.Name.resize(std::max<std::size_t>(name.size(), 10), ' ');
  plot.X = X;
  plot.Y = Y;
  plot.Altitude = altitude;
  plot.Hostile = hostile ? 1 : 0;
  return plot;
}

TapeRecord Record(double time, const std::vector<link::PlotRecord>& players,
                  const std::vector<link::AIPlotRecord>& flights = {}) {
  TapeRecord record;
  record.Time = time;
  for (const auto& each : players) record.Clients.Append(each);
  for (const auto& each : flights) record.AI.Append(each);
  return record;
}

/// Over an earth that is flat: a degree to 100 map units.
std::string Text(const std::vector<TapeRecord>& records, double bullX = 512, double bullY = 512) {
  AcmiWriter writer([](double X, double Y) { return EarthPlace{30 + Y / 100, 120 + X / 100}; }, 1024, bullX, bullY);
  std::string text;
  for (const TapeRecord& each : records) writer.Append(each, text);
  return text;
}

/// Of the first frame, the thing with this name.
test::AcmiThing Named(const std::string& text, const std::string& name) {
  const test::Acmi read = test::ReadAcmi(text);
  for (const auto& [id, thing] : read.Frames.at(0).Things) {
    if (thing.Properties.at("Name") == name) return thing;
  }
  ADD_FAILURE() << name << " is not there\n" << text;
  return {};
}

TEST(AcmiWriter, TellsEachRecordByteForByte) {
  // Altitudes: hundreds of feet by 30.48. Viper11 is 1024 - 1000 map units north.
  const std::string text =
      Text({Record(Start, {Player(5, "Smith", 100, 200.5, 250)},
                   {Flight("Viper11", 50.25F, 1000, 15, true), Flight("Cowboy1", 300, 524, 0, false)}),
            Record(Start + 2 * Second, {Player(5, "Smith", 101, 200.5, -3)}, {Flight("Cowboy1", 300, 524, 0, true)}),
            Record(Start + 3.5 * Second, {},
                   {Flight("Viper11", 50.25F, 1000, 15, true), Flight("Cowboy1", 300, 524, 327, true)})});
  EXPECT_EQ(text, Head + "#0.00\n" + Bullseye +
                      "2,T=121.0000000|32.0050000|7620.00,Type=Air+FixedWing,Coalition=Allies,Color=Blue,Name=Smith\n"
                      "3,T=120.5025000|30.2400000|457.20,Type=Air+FixedWing,Coalition=Enemies,Color=Red,Name=Viper11\n"
                      "4,T=123.0000000|35.0000000|0.00,Type=Air+FixedWing,Coalition=Allies,Color=Blue,Name=Cowboy1\n"
                      "#2.00\n"
                      "2,T=121.0100000|32.0050000|-91.44\n"
                      "4,T=123.0000000|35.0000000|0.00,Coalition=Enemies,Color=Red\n"
                      "-3\n"
                      "#3.50\n"
                      "5,T=120.5025000|30.2400000|457.20,Type=Air+FixedWing,Coalition=Enemies,Color=Red,Name=Viper11\n"
                      "4,T=123.0000000|35.0000000|9966.96\n"
                      "-2\n");
}

TEST(AcmiWriter, NoNameBreaksALine) {
  std::string everyByte;
  for (int byte = 1; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& name : {std::string(10000, 'x'), std::string("a,b\\"), std::string("\r\n#1\n-2\n", 8),
                                  std::string("a\0b", 3), everyByte, std::string(10000, ',')}) {
    const std::string text = Text({Record(Start, {Player(1, name, 0, 0, 0)}, {Flight(name, 0, 0, 0, true)})});
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 8) << name;
    const test::Acmi read = test::ReadAcmi(text);
    ASSERT_EQ(read.Frames.size(), 1U);
    EXPECT_EQ(read.Frames[0].Things.size(), 3U);
    EXPECT_EQ(read.Frames[0].Things.at("3").Properties.at("Color"), "Red");
  }
  EXPECT_EQ(Named(Text({Record(Start, {Player(1, "a,b\\c=\"d\"", 1, 1, 0)})}), "a,b\\c=\"d\"").Lat, 30.01);
  // What is no letter is a blank; the rest is UTF-8.
  Named(Text({Record(Start, {Player(1, "J\xE4ger\t\x81\n2", 1, 1, 0)})}), "J\xC3\xA4ger   2");
  Named(Text({Record(Start, {Player(1, std::string(10000, 'y'), 1, 1, 0)})}), std::string(10000, 'y'));
}

TEST(AcmiWriter, OfThoseThatShareANameEachIsAnObject) {
  const auto pair = [](float first, float second) {
    return std::vector{Flight("Twin", first, 0, 0, true), Flight("Twin", second, 0, 0, true)};
  };
  const test::Acmi read =
      test::ReadAcmi(Text({Record(Start, {}, pair(100, 200)), Record(Start + Second, {}, pair(101, 201)),
                           Record(Start + 2 * Second, {}, {Flight("Twin", 102, 0, 0, true)})}));
  ASSERT_EQ(read.Frames.size(), 3U);
  EXPECT_EQ(read.Frames[1].Things.at("2").Long, 121.01);
  EXPECT_EQ(read.Frames[1].Things.at("3").Long, 122.01);
  EXPECT_EQ(read.Frames[2].Things.at("2").Long, 121.02);
  EXPECT_FALSE(read.Frames[2].Things.contains("3"));
}

TEST(AcmiWriter, ManyWithOneNameCostNoMoreThanManyWithNamesOfTheirOwn) {
  // Looking for each among its namesakes would take hours.
  const std::vector<link::AIPlotRecord> same(200'000, Flight("", 1, 1, 0, true));
  const std::string text =
      Text({Record(Start, {}, same), Record(Start + Second, {}, same), Record(Start + 2 * Second, {})});
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4 + 3 + 1 + 3 * 200'000);
}

TEST(AcmiWriter, AnIdThatIsGivenAnewIsAnotherPlayer) {
  const test::Acmi read = test::ReadAcmi(
      Text({Record(Start, {Player(7, "Smith", 0, 0, 0)}), Record(Start + Second, {Player(7, "Jones", 0, 0, 0)})}));
  EXPECT_EQ(read.Frames[0].Things.at("2").Properties.at("Name"), "Smith");
  EXPECT_FALSE(read.Frames[1].Things.contains("2"));
  EXPECT_EQ(read.Frames[1].Things.at("3").Properties.at("Name"), "Jones");
}

TEST(AcmiWriter, APlayerWithoutAPositionIsNotThere) {
  link::PlotRecord announced = Player(1, "New", 300, 400, 0), moved = announced;
  announced.PosText = "";
  moved.PosText = "0000.0000000.000";
  EXPECT_EQ(Text({Record(Start, {announced}), Record(Start + Second, {moved})}),
            Head + "#0.00\n" + Bullseye + "#1.00\n");
}

TEST(AcmiWriter, WhatHasNoPlaceOnTheEarthIsNotThere) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const std::string text = Text({Record(Start, {Player(1, "a", none, 0, 0), Player(2, "b", 0, 1e300, 0),
                                                Player(3, "c", std::numeric_limits<double>::infinity(), 0, 0),
                                                Player(4, "d", 0, -12001, 0), Player(5, "e", 0, -12000, 0)})},
                                none, 0);
  EXPECT_EQ(text, Head +
                      "#0.00\n"
                      "2,T=120.0000000|-90.0000000|0.00,Type=Air+FixedWing,Coalition=Allies,Color=Blue,Name=e\n");
}

TEST(AcmiWriter, LongitudesGoToEitherSideOfTheFirstMeridian) {
  const std::string text =
      Text({Record(Start, {Player(1, "a", 6100, 0, 0), Player(2, "b", 6000, 0, 0), Player(3, "c", -12100, 0, 0)})});
  EXPECT_EQ(Named(text, "a").Long, -179);
  EXPECT_EQ(Named(text, "b").Long, 180);
  EXPECT_EQ(Named(text, "c").Long, -1);
}

TEST(AcmiWriter, RecordsWithoutATimeAreLeftOut) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const std::vector<link::PlotRecord> one = {Player(1, "a", 0, 0, 0)};
  const test::Acmi read = test::ReadAcmi(Text({Record(none, one), Record(-1, one), Record(Start, one),
                                               Record(2958466, one), Record(1e300, one), Record(Start + Second, one)}));
  EXPECT_EQ(read.Global.at("ReferenceTime"), "2026-11-21T06:00:00Z");
  ASSERT_EQ(read.Frames.size(), 2U);
  EXPECT_EQ(read.Frames[1].Seconds, 1);
  EXPECT_EQ(read.Frames[1].Things.size(), 2U);
  EXPECT_EQ(Text({Record(none, one)}), "");
}

TEST(AcmiWriter, TimesAreThoseOfTheRecordsAlsoWhereTheyGoBack) {
  std::vector<TapeRecord> records;
  for (const double seconds : {0.0, 10.0, 5.25, -3600.0}) records.push_back(Record(Start + seconds * Second, {}));
  const test::Acmi read = test::ReadAcmi(Text(records));
  ASSERT_EQ(read.Frames.size(), 4U);
  EXPECT_EQ(read.Frames[2].Seconds, 5.25);
  EXPECT_EQ(read.Frames[3].Seconds, -3600);
}

}  // namespace
}  // namespace kestrel::tape
