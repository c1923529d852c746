#include "map/ties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "map/scene_fixture.h"

namespace kestrel::map {
namespace {

using test::SurfaceCall;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A map unit is a pixel, 15 surface units: (512, 512) is surface point (6000, 4500), Y up. A nautical mile is 1.852
/// map units.
class TiesOnTheMap : public testing::Test, protected test::SceneFixture {
 protected:
  map::Scene Tied() const {
    map::Scene scene = Scene();
    scene.Tied = &Lines;
    return scene;
  }
  std::vector<std::string> Follow(std::int32_t record = 0) { return FollowTies(Tied(), Extra, record, Lines); }
  /// A press at a map point; the tables are followed before and after, as the map window does.
  TiePress Press(double x, double y) {
    Follow();
    const SurfacePoint at = SurfaceFromMap(View, {x, y});
    const TiePress done = PressTies(Tied(), Surface, at, Lines);
    Follow();
    return done;
  }
  link::PlotRecord& Player(std::int16_t id, double x, double y) {
    link::PlotRecord& plot = AddPlayer(x, y);
    plot.Id = plot.ClientId = id;
    plot.Name = "Pilot" + std::to_string(id);
    Plots.RebuildIndex();
    return plot;
  }
  link::AIPlotRecord& Other(const char* name, double x, double y, std::uint8_t hostile = 1) {
    link::AIPlotRecord& plot = AddAI(static_cast<float>(x), static_cast<float>(View.Size - y), hostile);
    plot.Name = name;
    return plot;
  }
  void Tie(double x1, double y1, double x2, double y2) {
    ASSERT_TRUE(Press(x1, y1).Taken);
    ASSERT_TRUE(Press(x2, y2).Taken);
  }

  Ties Lines;
  Extras Extra;
};

TEST_F(TiesOnTheMap, ACallTellsBearingRangeAltitudeAndAspect) {
  // 3 east and 4 north of it at 10 nautical miles: 30 * 1.852 / 5 = 11.112 and 40 * 1.852 / 5 = 14.816 map units for 50
  // miles over 5. atan(3 / 4) is 36.87 degrees: 037. A track of 217 comes straight back.
  const MapPoint first{500, 500};
  const MapPoint second{500 + 30 * 1.852, 500 + 40 * 1.852};
  EXPECT_EQ(CallText(View, first, second, {250, 217}), "BRAA 037/50, 25 000, hot");
  EXPECT_EQ(CallText(View, second, first, {9, 217}), "BRAA 217/50, 900, drag");
  EXPECT_EQ(CallText(View, first, second, {10, {}}), "BRAA 037/50, 1 000, manoeuvring");
  EXPECT_EQ(CallText(View, first, second, {0, 37}), "BRAA 037/50, 0, drag");
  EXPECT_EQ(CallText(View, first, second, {32767, 127}), "BRAA 037/50, 3 276 700, beam");
  EXPECT_EQ(CallText(View, first, second, {-12, 127}), "BRAA 037/50, -1 200, beam");
  // Due north is 360.
  EXPECT_EQ(CallText(View, first, {500, 500 + 1.852 * 7}, {5, 0}), "BRAA 360/7, 500, drag");
  View.Resolution = 16;
  RefreshPositions(View);
  EXPECT_EQ(CallText(View, first, second, {250, 217}), "BRAA 037/50, 25 000, hot") << "whatever the zoom";
}

TEST_F(TiesOnTheMap, AspectIsTheTurnFromTheWayToTheFirst) {
  // The first is due west of the second: the way there is 270.
  const MapPoint first{400, 500}, second{500, 500};
  const std::pair<double, const char*> tracks[] = {
      {270, "hot"},    {300, "hot"}, {240, "hot"}, {300.5, "flank"}, {239.5, "flank"}, {330, "flank"},  {210, "flank"},
      {330.5, "beam"}, {0, "beam"},  {30, "beam"}, {150, "beam"},    {30.5, "drag"},   {149.5, "drag"}, {90, "drag"}};
  for (const auto& [track, aspect] : tracks) EXPECT_EQ(AspectOf(first, second, track), aspect) << track;
  // Across north: the first is due north of the second.
  EXPECT_EQ(AspectOf({500, 600}, second, 350), "hot");
  EXPECT_EQ(AspectOf({500, 600}, second, 10), "hot");
  EXPECT_EQ(AspectOf({500, 600}, second, 310), "flank");
  EXPECT_EQ(AspectOf(first, second, {}), "manoeuvring");
  EXPECT_EQ(AspectOf(first, first, 90), "manoeuvring") << "there is no way between them";
}

TEST_F(TiesOnTheMap, TwoPressesTieTwoAircraftAndTheLineFollowsThem) {
  // From the player due east to the AI, 100 map units: 53.996 miles.
  Player(7, 400, 512);
  link::AIPlotRecord& other = Other("Mig21", 500, 512);
  other.Altitude = 250;
  EXPECT_TRUE(Press(405, 512).Taken);
  ASSERT_TRUE(Lines.Picked);
  DrawTies(Tied(), Surface);
  // 112 pixels left of the middle.
  EXPECT_THAT(Surface.Calls, ElementsAre(SurfaceCall{"circle", {4320, 4500, 120}, 16711935, 1})) << "the picked one";
  EXPECT_TRUE(Press(500, 515).Taken);
  EXPECT_FALSE(Lines.Picked);
  Surface.Calls.clear();
  DrawTies(Tied(), Surface);
  // "BRAA 090/54, 25 000, manoeuvring": 32 characters of 90 units, 2880 wide, 195 high; its middle is at 5070. The line
  // is 1500 long, less than its text, which therefore stands 45 above it.
  EXPECT_THAT(Surface.Calls,
              ElementsAre(SurfaceCall{"line", {4320, 4500, 5820, 4500}, 16711935, 1},
                          SurfaceCall{"print", {5070 - 1440, 4260}, 16711935, 0, "BRAA 090/54, 25 000, manoeuvring"}));

  other.X = 700;  // 300 map units, 161.99 miles
  Extra.TIECOLOR = 99;
  EXPECT_THAT(Follow(), IsEmpty());
  Surface.Calls.clear();
  DrawTies(Tied(), Surface);
  // From 4320 to 8820 on the surface, the middle 6570; "BRAA 090/162, ..." has 33 characters: 1485 to either side and
  // 45 more of room.
  EXPECT_THAT(Surface.Calls,
              ElementsAre(SurfaceCall{"line", {4320, 4500, 5040, 4500}, 99, 1},
                          SurfaceCall{"line", {8100, 4500, 8820, 4500}, 99, 1},
                          SurfaceCall{"print", {5085, 4402.5}, 99, 0, "BRAA 090/162, 25 000, manoeuvring"}));
}

TEST_F(TiesOnTheMap, APlayersTrackIsThatOfHisLastTwoPositions) {
  Other("Mig21", 400, 500);
  link::PlotRecord& player = Player(7, 500, 500);
  player.Altitude = 100;
  Tie(400, 500, 500, 500);
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 10 000, manoeuvring") << "he was nowhere before";
  player.History.Append({501, 500});
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 10 000, hot");
  player.History.Append({499, 500});
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 10 000, drag");
  player.History.Append({500, 500});
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 10 000, manoeuvring") << "he stands";
}

TEST_F(TiesOnTheMap, AnAIsTrackIsThatOfTheLastTwoSnapshots) {
  Player(7, 400, 512);
  link::AIPlotRecord& other = Other("Mig21", 500, 512);
  other.Bearing = 90;
  other.Range = 60;
  Tie(400, 512, 500, 512);
  other.Range = 58;
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 5 000, hot");
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 5 000, hot") << "another draw of the same snapshot";
  other.Range = 60;
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 5 000, drag");
  // In a tape: record 5 follows 4, 9 does not follow 5.
  Follow(4);
  other.Range = 58;
  Follow(5);
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 5 000, hot");
  other.Range = 50;
  Follow(9);
  EXPECT_EQ(Lines.Lines.at(0).Text, "BRAA 090/54, 5 000, manoeuvring");
}

TEST_F(TiesOnTheMap, TheNearestWithinTwelvePixelsIsMeant) {
  Player(7, 400, 512);
  Player(8, 410, 512);
  EXPECT_FALSE(Press(387.9, 512).Taken) << "12.1 pixels away";
  EXPECT_TRUE(Press(388, 512).Taken);
  EXPECT_EQ(Lines.Picked->Id, 7);
  ClearTies(Lines);
  Press(406, 512);
  EXPECT_EQ(Lines.Picked->Id, 8);
  Press(406, 512);
  EXPECT_FALSE(Lines.Picked);
  ASSERT_THAT(Lines.All, SizeIs(1)) << "the other is meant then";
  EXPECT_EQ(Lines.All[0].First.Id, 8);
  EXPECT_EQ(Lines.All[0].Second.Id, 7);
}

TEST_F(TiesOnTheMap, ThePickedOneItselfIsLetGo) {
  Player(7, 400, 512);
  Press(400, 512);
  EXPECT_TRUE(Press(400, 512).Taken);
  EXPECT_FALSE(Lines.Picked);
  EXPECT_THAT(Lines.All, IsEmpty());
}

TEST_F(TiesOnTheMap, APlotThatIsNotShownIsNotPickedAndItsLineWaits) {
  Player(7, 400, 512);
  Other("Mig21", 700, 512);
  Tie(400, 512, 700, 512);
  for (bool* shown : {&Display.REALVISIBLE, &Display.AIVISIBLE, &Plots.Clients[1].PlotVisible}) {
    *shown = false;
    EXPECT_THAT(Follow(), IsEmpty()) << "it is not gone";
    Surface.Calls.clear();
    DrawTies(Tied(), Surface);
    EXPECT_THAT(Surface.Calls, IsEmpty());
    *shown = true;
  }
  Follow();
  DrawTies(Tied(), Surface);
  EXPECT_THAT(Surface.Of("print"), SizeIs(1));
  Display.AIVISIBLE = false;
  EXPECT_FALSE(Press(700, 512).Taken);
}

TEST_F(TiesOnTheMap, APressOnTheTextTakesTheLineAway) {
  Player(7, 300, 512);
  Other("Mig21", 700, 512);
  Tie(300, 512, 700, 512);
  // The text stands around (500, 512): 32 characters of 6 pixels, 13 high.
  EXPECT_FALSE(Press(500, 519).Taken) << "below it";
  EXPECT_FALSE(Press(602, 512).Taken) << "beside it";
  Player(8, 450, 512);
  EXPECT_TRUE(Press(450, 512).Taken);
  EXPECT_TRUE(Lines.Picked) << "an aircraft below the text is meant";
  EXPECT_THAT(Lines.All, SizeIs(1));
  EXPECT_TRUE(Press(500, 518).Taken);
  EXPECT_THAT(Lines.All, IsEmpty());
  EXPECT_THAT(Lines.Lines, IsEmpty());
  EXPECT_TRUE(Lines.Picked) << "what is picked stays so";
}

TEST_F(TiesOnTheMap, ATieEndsWithALineForTheLogWhenOneIsGone) {
  Player(7, 300, 512);
  Player(8, 300, 612);
  Other("Mig21     ", 700, 512);
  Tie(300, 512, 700, 512);
  Tie(700, 512, 300, 612);
  ASSERT_THAT(Lines.All, SizeIs(2));
  Plots.TakeOut(Plots.FindClient(7));
  EXPECT_THAT(Follow(), ElementsAre("A tie has ended: Pilot7 to Mig21, Pilot7 is gone"));
  EXPECT_THAT(Lines.All, SizeIs(1));
  EXPECT_THAT(Follow(), IsEmpty()) << "told once";
  Plots.AIPlots.Clear();
  EXPECT_THAT(Follow(), ElementsAre("A tie has ended: Mig21 to Pilot8, Mig21 is gone"));
  EXPECT_THAT(Lines.All, IsEmpty());
  Press(300, 612);
  Plots.Clear();
  EXPECT_THAT(Follow(), IsEmpty());
  EXPECT_FALSE(Lines.Picked) << "what is picked goes without a word";
}

TEST_F(TiesOnTheMap, OfTwoOfOneNameTheLineKeepsToTheNearerOne) {
  Player(7, 300, 512);
  Other("Mig21", 700, 512);
  Other("Mig21", 700, 612);
  Tie(300, 512, 700, 612);
  Plots.AIPlots[1].Y -= 10;
  Plots.AIPlots[2].X += 10;
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).To.X, 710);
  EXPECT_EQ(Lines.Lines.at(0).To.Y, 612);
  std::swap(Plots.AIPlots[1], Plots.AIPlots[2]);
  Follow();
  EXPECT_EQ(Lines.Lines.at(0).To.X, 710) << "wherever the table has it";
}

TEST_F(TiesOnTheMap, ThereAreEightAtTheMostAndEachPairOnce) {
  for (std::int16_t id = 1; id <= 10; ++id) Player(id, 50 + 100.0 * id, 512);
  for (int second = 2; second <= 9; ++second) Tie(150, 512, 50 + 100.0 * second, 512);
  EXPECT_THAT(Lines.All, SizeIs(8));
  Press(150, 512);
  EXPECT_EQ(Press(1050, 512).Note, "There are 8 ties already: no other is made");
  EXPECT_THAT(Lines.All, SizeIs(8));
  EXPECT_FALSE(Lines.Picked);
  ASSERT_TRUE(ClearTies(Lines));
  EXPECT_FALSE(ClearTies(Lines));
  Tie(150, 512, 250, 512);
  Tie(150, 512, 250, 512);
  EXPECT_THAT(Lines.All, SizeIs(1));
  Tie(250, 512, 150, 512);
  EXPECT_THAT(Lines.All, SizeIs(2)) << "the other way round it is another call";
}

TEST_F(TiesOnTheMap, TwoAircraftOnOneSpotAreTiedWithoutALine) {
  Player(7, 400, 512);
  Other("Mig21", 400, 512);
  Tie(400, 512, 400, 512);
  ASSERT_THAT(Lines.All, SizeIs(1));
  EXPECT_NE(Lines.All[0].First.Real, Lines.All[0].Second.Real);
  DrawTies(Tied(), Surface);
  EXPECT_THAT(Surface.Of("line"), IsEmpty());
  ASSERT_THAT(Surface.Of("print"), SizeIs(1));
  EXPECT_EQ(Surface.Of("print")[0].Text, "BRAA 360/0, 5 000, manoeuvring");
}

TEST_F(TiesOnTheMap, ATiedAircraftThatJumpsIsFollowedAndOneThatIsNowhereIsNot) {
  Player(7, 400, 512);
  link::AIPlotRecord& other = Other("Mig21", 500, 512);
  Tie(400, 512, 500, 512);
  other.X = -900000;
  EXPECT_THAT(Follow(), IsEmpty());
  DrawTies(Tied(), Surface);
  // 900,400 map units are 486,177 miles.
  EXPECT_EQ(Surface.Of("print").at(0).Text, "BRAA 270/486177, 5 000, manoeuvring");
  for (const float nowhere :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -1e30F}) {
    other.X = nowhere;
    EXPECT_THAT(Follow(), IsEmpty());
    Surface.Calls.clear();
    DrawTies(Tied(), Surface);
    EXPECT_THAT(Surface.Calls, IsEmpty());
  }
  other.X = 500;
  Follow();
  DrawTies(Tied(), Surface);
  EXPECT_THAT(Surface.Of("print"), SizeIs(1));
}

TEST_F(TiesOnTheMap, EndlessNamesAreCutInTheLog) {
  Player(7, 300, 512).Name = std::string(10000, 'x') + "\r\n";
  Other("Mig\r\n21", 700, 512);
  Tie(300, 512, 700, 512);
  Plots.AIPlots.Clear();
  const std::string cut(40, 'x');
  EXPECT_THAT(Follow(), ElementsAre("A tie has ended: " + cut + " to Mig??21, Mig??21 is gone"));
}

TEST_F(TiesOnTheMap, AThreatRingTiesEachPlayerToTheNearestHostileAircraftWithinReach) {
  Extra.THREATRING = true;
  Extra.THREATRANGE = 30;
  // 30 miles are 55.56 map units.
  Player(7, 300, 512);
  Player(8, 600, 512);
  Player(9, 900, 512).PlotVisible = false;
  Other("Near", 300, 552);
  Other("Nearer", 300, 482);
  Other("Friend", 300, 511, 0);
  Other("Edge", 600 - 55.5, 512);
  Other("Hidden", 900, 512);
  Follow();
  ASSERT_THAT(Lines.Threats, SizeIs(2));
  // 30 map units south are 16.2 miles; 55.5 to the west are 29.97.
  EXPECT_EQ(Lines.Threats[0].Text, "BRAA 180/16, 5 000, manoeuvring");
  EXPECT_EQ(Lines.Threats[1].Text, "BRAA 270/30, 5 000, manoeuvring");
  EXPECT_EQ(Lines.Threats[1].Color, 33023U);
  DrawTies(Tied(), Surface);
  EXPECT_THAT(Surface.Of("print"), SizeIs(2));
  Extra.THREATRANGE = 29;
  Follow();
  EXPECT_THAT(Lines.Threats, SizeIs(1));
  for (const double none : {0.0, -30.0, std::nan("")}) {
    Extra.THREATRANGE = none;
    Follow();
    EXPECT_THAT(Lines.Threats, IsEmpty()) << none;
  }
  Extra.THREATRANGE = 30;
  Display.AIVISIBLE = false;
  Follow();
  EXPECT_THAT(Lines.Threats, IsEmpty());
  Display.AIVISIBLE = true;
  Extra.THREATRING = false;
  Follow();
  EXPECT_THAT(Lines.Threats, IsEmpty());
}

TEST_F(TiesOnTheMap, TheyAreDrawnWithWhatMovesAndCostOneRestore) {
  Player(7, 300, 512);
  Other("Mig21", 900, 512);
  Tie(300, 512, 900, 512);
  const auto count = [this](const map::Scene& scene) {
    Surface.Calls.clear();
    RedrawPlots(scene, Surface);
    EXPECT_THAT(Surface.Of("restore"), SizeIs(1));
    EXPECT_THAT(Surface.Of("capture"), IsEmpty());
    return Surface.Calls.size();
  };
  EXPECT_EQ(count(Tied()), count(Scene()) + 3) << "two strokes and a text";
}

}  // namespace
}  // namespace kestrel::map
