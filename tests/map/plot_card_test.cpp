#include "map/plot_card.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "map/scene_fixture.h"
#include "map/ties.h"

namespace kestrel::map {
namespace {

using testing::ElementsAre;

/// A nautical mile is 1.852 map units. The bullseye is at (500, 1024 - 300).
class CardOfAPlot : public testing::Test, protected test::SceneFixture {
 protected:
  void Follow(std::int32_t record = 0, SnapshotTimes times = {.SyncInterval = 10'000}) {
    FollowTies(Scene(), {}, record, Lines, times);
  }
  PlotCard Card(Aircraft who) { return CardOf(Scene(), Lines, who).value_or(PlotCard{.Title = "none", .Rows = {}}); }
  PlotCard CardOfAI(std::size_t index = 1) { return Card(AircraftOf(Scene(), Plots.AIPlots[index])); }
  std::string Value(const PlotCard& card, std::string_view label) {
    const auto row = std::find_if(card.Rows.begin(), card.Rows.end(), [&](const auto& r) { return r.Label == label; });
    return row == card.Rows.end() ? "no row" : row->Value;
  }
  static std::vector<std::string> Told(const PlotCard& card) {
    std::vector<std::string> lines{card.Title};
    for (const PlotCard::Row& row : card.Rows) lines.push_back(std::string(row.Label) + ": " + row.Value);
    return lines;
  }
  link::PlotRecord& Player(double x, double y) {
    link::PlotRecord& plot = AddPlayer(x, y);
    Plots.RebuildIndex();
    return plot;
  }
  /// One AI aircraft, told by bearing and range.
  link::AIPlotRecord& Snapshot(const char* name, double bearing, double range) {
    link::AIPlotRecord& plot = AddAI(600, 400, 1);
    plot.Name = name;
    plot.Bearing = bearing;
    plot.Range = range;
    return plot;
  }
  void Move(std::size_t index, double bearing, double range) {
    Plots.AIPlots[index].Bearing = bearing;
    Plots.AIPlots[index].Range = range;
  }

  Ties Lines;
};

TEST_F(CardOfAPlot, TellsOfAPlayerAllThatIsKnown) {
  // 30 miles east and 40 north of the bullseye: 50 miles, atan(3 / 4) is 36.87 degrees.
  link::PlotRecord& plot = Player(500 + 30 * 1.852, 724 + 40 * 1.852);
  plot.Altitude = 250;
  // From 1 east and 1 south of where he is: he flies to the north-west.
  plot.History.Append({plot.X + 1, plot.Y - 1});
  // The anchor 20 miles due east of him: he is at 270 from there.
  View.AnchorViewX = (plot.X + 20 * 1.852) * 15;
  View.AnchorViewY = (1024 - plot.Y) * 15;
  const std::vector<std::string> told = {"Ann",        "Callsign: Viper11",   "Altitude: 25 000 ft", "Speed: 400 kt",
                                         "Track: 315", "Bullseye: 037/50 NM", "Anchor: 270/20 NM"};
  EXPECT_EQ(Told(Card(AircraftOf(plot))), told);
  View.Resolution = 16;
  RefreshPositions(View);
  EXPECT_EQ(Told(Card(AircraftOf(plot))), told) << "whatever the zoom";
}

TEST_F(CardOfAPlot, TellsSpeedAndTrackOfAnAIAircraftByItsLastTwoSnapshots) {
  Snapshot("Mig1      ", 0, 10).Altitude = 90;
  Follow();
  EXPECT_EQ(CardOfAI().Title, "Mig1");
  EXPECT_EQ(Value(CardOfAI(), "Callsign"), "no row");
  EXPECT_EQ(Value(CardOfAI(), "Altitude"), "9 000 ft");
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "-");
  EXPECT_EQ(Value(CardOfAI(), "Track"), "-");
  // From 10 miles north of the bullseye to 11: a mile in 10 seconds is 360 knots.
  Move(1, 0, 11);
  Follow();
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "360 kt");
  EXPECT_EQ(Value(CardOfAI(), "Track"), "360");
  // Back through the bullseye: 22 miles south.
  Move(1, 180, 11);
  Follow(0, {.SyncInterval = 0});
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "-") << "no cycle, no speed";
  EXPECT_EQ(Value(CardOfAI(), "Track"), "180");
}

TEST_F(CardOfAPlot, KnowsNoSpeedOfANameThatStandsTwice) {
  Snapshot("Mig1", 0, 10);
  Snapshot("Mig1", 90, 10);
  Follow();
  Move(1, 0, 11);
  Follow();
  for (const std::size_t index : {1U, 2U}) {
    EXPECT_EQ(Value(CardOfAI(index), "Speed"), "-");
    EXPECT_EQ(Value(CardOfAI(index), "Track"), "-");
  }
}

TEST_F(CardOfAPlot, TakesTheTimeBetweenTheRecordsOfATape) {
  constexpr double second = 1.0 / 86400;
  Snapshot("Mig1", 0, 10);
  Follow(1, {.SyncInterval = 1, .RecordTime = 46000});
  Move(1, 0, 11);
  Follow(2, {.SyncInterval = 1, .RecordTime = 46000 + 5 * second});
  // A mile in 5 seconds.
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "720 kt");
  // The same snapshot once more: it took 10 seconds to the next.
  Follow(3, {.RecordTime = 46000 + 10 * second});
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "720 kt");
  Move(1, 0, 12);
  Follow(4, {.RecordTime = 46000 + 15 * second});
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "360 kt");
  Move(1, 0, 30);
  Follow(40, {.RecordTime = 46000 + 195 * second});
  EXPECT_EQ(Value(CardOfAI(), "Speed"), "-") << "after a jump nothing is known";
}

TEST_F(CardOfAPlot, IsNoneWhereTheAircraftIsNotShown) {
  link::PlotRecord& plot = Player(600, 600);
  EXPECT_EQ(Card(AircraftOf(plot)).Title, "Ann");
  plot.PlotVisible = false;
  EXPECT_EQ(Card(AircraftOf(plot)).Title, "none");
  Snapshot("Mig1", 0, 10);
  EXPECT_EQ(CardOfAI().Title, "Mig1");
  Display.AIVISIBLE = false;
  EXPECT_EQ(CardOfAI().Title, "none");
  EXPECT_EQ(Card({.Real = false, .Id = 0, .Name = "Mig2", .At = {}}).Title, "none");
}

TEST_F(CardOfAPlot, ShortensLongNamesAndShowsControlCharactersAsBlanks) {
  link::PlotRecord& plot = Player(600, 600);
  plot.Name = std::string(10'000, 'x');
  plot.Label = "a\nb\x01\x7F";
  PlotCard card = Card(AircraftOf(plot));
  EXPECT_EQ(card.Title, std::string(60, 'x') + "...");
  EXPECT_EQ(Value(card, "Callsign"), "a b");
  plot.Name = "\t";
  EXPECT_EQ(Card(AircraftOf(plot)).Title, "-");
  EXPECT_EQ(ShortName("  a\tb  "), "a b");
  EXPECT_EQ(ShortName("abcd", 3), "abc...");
  EXPECT_EQ(ShortName("abc", 3), "abc");
}

TEST_F(CardOfAPlot, StandsBesideThePointerAndOnTheMap) {
  const auto place = [](double x, double y) {
    const SurfacePoint at = CardPlace({x, y}, {100, 50}, {400, 300});
    return std::pair(at.X, at.Y);
  };
  EXPECT_EQ(place(10, 20), std::pair(26.0, 36.0));
  EXPECT_EQ(place(284, 234), std::pair(300.0, 250.0)) << "it just fits";
  EXPECT_EQ(place(285, 235), std::pair(169.0, 169.0)) << "it does not: 16 before the pointer";
  const SurfacePoint small = CardPlace({30, 20}, {100, 50}, {80, 300});
  EXPECT_EQ(small.X, 0);
}

TEST_F(CardOfAPlot, IsOfTheNearestWithinTwelvePixels) {
  Player(600, 600);
  Snapshot("Mig1", 0, 10);
  Plots.AIPlots[1].X = 610;
  Plots.AIPlots[1].Y = 1024 - 600;
  const auto at = [this](double x, double y) {
    const auto found = AircraftAt(Scene(), SurfaceFromMap(View, {x, y}), std::nullopt);
    return found ? found->Name : "none";
  };
  EXPECT_EQ(at(604, 600), "Ann");
  EXPECT_EQ(at(606, 600), "Mig1");
  EXPECT_EQ(at(600, 612), "Ann");
  EXPECT_EQ(at(600, 613), "none");
}

}  // namespace
}  // namespace kestrel::map
