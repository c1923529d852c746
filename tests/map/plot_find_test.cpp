#include "map/plot_find.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "map/scene_fixture.h"
#include "map/ties.h"

namespace kestrel::map {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::IsEmpty;

class FindingPlots : public testing::Test, protected test::SceneFixture {
 protected:
  link::PlotRecord& Player(std::int16_t id, const char* name, const char* callsign) {
    link::PlotRecord& plot = AddPlayer(512, 500);
    plot.Id = plot.ClientId = id;
    plot.Name = name;
    plot.Label = callsign;
    Plots.RebuildIndex();
    return plot;
  }
  link::AIPlotRecord& Other(const char* name, float x = 300) {
    link::AIPlotRecord& plot = AddAI(x, 400, 1);
    plot.Name = name;
    return plot;
  }
  std::vector<std::string> Found(std::string_view typed) const {
    std::vector<std::string> texts;
    for (const FoundPlot& plot : FindPlots(Scene(), typed).Shown) texts.push_back(plot.Text);
    return texts;
  }
  Changed Show(Aircraft who) {
    map::Scene scene = Scene();
    return ShowAircraft(scene, std::move(who), View, Lines);
  }
  std::vector<test::SurfaceCall> Drawn() {
    map::Scene scene = Scene();
    scene.Tied = &Lines;
    FollowTies(scene, {}, 0, Lines);
    Surface.Calls.clear();
    DrawTies(scene, Surface);
    return Surface.Calls;
  }

  Ties Lines;
};

TEST_F(FindingPlots, LooksIntoNamesAndCallsignsWhateverTheCase) {
  Player(1, "Adams", "Viper11");
  Player(2, "Baker", "Cobra21");
  Other("Bandit1   ");
  Other("Viper99   ");
  EXPECT_THAT(Found("viper"), ElementsAre("Adams (Viper11)", "Viper99"));
  EXPECT_THAT(Found("BA"), ElementsAre("Baker (Cobra21)", "Bandit1"));
  EXPECT_THAT(Found("  dit1 "), ElementsAre("Bandit1"));
  EXPECT_THAT(Found("nobody"), IsEmpty());
  EXPECT_THAT(Found(""), ElementsAre("Adams (Viper11)", "Baker (Cobra21)", "Bandit1", "Viper99")) << "all";
}

TEST_F(FindingPlots, LeavesOutWhoHasNoPlaceAndFindsWhoIsHidden) {
  Player(1, "Adams", "One").PosText = link::PositionText();
  Player(2, "Baker", "Two").X = 0;
  Player(3, "Clark", "Three").PlotVisible = false;
  Display.AIVISIBLE = false;
  Other("Bandit1");
  EXPECT_THAT(Found(""), ElementsAre("Clark (Three)", "Bandit1"));
}

TEST_F(FindingPlots, TellsHowManyThereAreAndShowsTheFirst) {
  for (int n = 0; n < 250; ++n) Other("Bandit");
  Player(1, "Adams", "Adams");
  const FoundPlots found = FindPlots(Scene(), "");
  EXPECT_EQ(found.Total, 251U);
  ASSERT_EQ(found.Shown.size(), MostFound);
  EXPECT_EQ(found.Shown[0].Text, "Adams") << "a callsign that is the name is told once";
  EXPECT_EQ(FindPlots(Scene(), "adam").Total, 1U);
}

TEST_F(FindingPlots, ShortensLongNamesAndShowsControlCharactersAsBlanks) {
  const std::string name(10'000, 'x');
  Player(1, name.c_str(), "a\nb");
  EXPECT_THAT(Found("a\nb"), ElementsAre(std::string(60, 'x') + "... (a b)"));
  EXPECT_THAT(Found(std::string(9'999, 'X')), ElementsAre(std::string(60, 'x') + "... (a b)"));
}

TEST_F(FindingPlots, CentresTheMapAndRingsThePlotUntilItEnds) {
  View.Resolution = 2;
  RefreshPositions(View);
  const Changed shown = Show(AircraftOf(Player(1, "Adams", "One")));
  EXPECT_EQ(shown & (Changed::Map | Changed::Plots), Changed::Map | Changed::Plots);
  // Map point (512, 500) is 524 map units from the north edge; 15 view units each.
  EXPECT_EQ(View.ViewCenterX, 512 * 15);
  EXPECT_EQ(View.ViewCenterY, 524 * 15);
  EXPECT_EQ(View.Resolution, 2) << "the zoom stays";
  // It is in the middle of the surface of 12000 by 9000.
  std::vector<test::SurfaceCall> calls = Drawn();
  ASSERT_EQ(calls.size(), 2U);
  for (const test::SurfaceCall& call : calls) {
    EXPECT_EQ(call.Numbers[0], 6000);
    EXPECT_EQ(call.Numbers[1], 4500);
  }
  // It follows: ten map units to the east are 300 surface units at this zoom.
  Plots.Clients[1].X += 10;
  EXPECT_EQ(Drawn()[0].Numbers[0], 6300);
  EXPECT_TRUE(EndRing(Lines));
  EXPECT_THAT(Drawn(), IsEmpty());
  EXPECT_FALSE(EndRing(Lines));
}

TEST_F(FindingPlots, MeansOfTwoOfOneNameTheOneThatWasThere) {
  Other("Bandit", 300);
  Other("Bandit", 700);
  Show(FindPlots(Scene(), "ban").Shown[1].Who);
  EXPECT_EQ(View.ViewCenterX, 700 * 15);
}

TEST_F(FindingPlots, ShowsNothingOfOneThatIsGoneOrHasNoPlace) {
  const double centre = View.ViewCenterX;
  EXPECT_EQ(Show({.Real = true, .Id = 9}), Changed::Nothing);
  link::PlotRecord& plot = Player(1, "Adams", "One");
  plot.X = 0;
  EXPECT_EQ(Show(AircraftOf(plot)), Changed::Nothing);
  EXPECT_EQ(View.ViewCenterX, centre);
  EXPECT_FALSE(Lines.Ringed);
  Show(AircraftOf(Scene(), Other("Bandit")));
  EXPECT_TRUE(Lines.Ringed);
  Plots.AIPlots.Clear();
  EXPECT_THAT(Drawn(), IsEmpty()) << "it ends with its aircraft";
}

}  // namespace
}  // namespace kestrel::map
