#include "map/label_places.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

#include "doubles/recording_surface.h"

namespace kestrel::map {
namespace {

/// A surface of 800 by 600 pixels; a character is 90 wide, a line 195 high.
class PlacesOfLabels : public testing::Test {
 protected:
  static constexpr double Right = 12000, Bottom = 9000;

  void Begin(double zoom = 1) { Places.Begin(Right, Bottom, zoom); }
  /// An AI aircraft with altitude and name: 540 wide, 390 high, its altitude at the plot's height.
  static Label Aircraft(std::string_view name, double x, double y) {
    return {.At = {x, y},
            .Width = 540,
            .Height = 390,
            .Gap = 285,
            .Rise = 97.5,
            .Name = name,
            .Altitude = 50,
            .Color = 255};
  }
  void Add(const Label& label) {
    Places.AddSymbol(label.At);
    Places.AddLabel(label);
  }
  const std::vector<Label>& Arrange() {
    Places.Arrange(Surface, {});
    return Places.Labels();
  }
  /// A symbol in the middle of each of the eight places of an aircraft at (x, y) but the first: (x - 555, y + 97.5) is
  /// the middle of that; its own height and 30 above it begin those above, their middles 195 + 30 + 195 higher; across
  /// they are 300 + 270 to a side.
  void BlockAllButTheFirst(double x, double y) {
    for (const double across : {-570.0, 0.0, 570.0}) {
      Places.AddSymbol({x + across, y - 97.5 - 30 - 195});
      Places.AddSymbol({x + across, y + 292.5 + 30 + 195});
    }
    Places.AddSymbol({x + 555, y + 97.5});
  }
  /// A two-ship that has room for one label on its left side alone.
  const std::vector<Label>& TwoShip(const Label& leader, const Label& wing) {
    Begin();
    BlockAllButTheFirst(6000, 4560);
    Add(leader);
    Add(wing);
    return Arrange();
  }

  LabelPlaces Places;
  test::RecordingSurface Surface;
};

TEST_F(PlacesOfLabels, ALabelAloneStandsAtTheLeftOfItsPlot) {
  Begin();
  Add(Aircraft("Viper1", 6000, 4500));
  const Label& label = Arrange()[0];
  EXPECT_EQ(label.Area, (Box{6000 - 285 - 540, 4500 - 97.5, 6000 - 285, 4500 - 97.5 + 390}));
  EXPECT_EQ(label.Alignment(), 1);
  EXPECT_TRUE(label.IsBeside());
}

TEST_F(PlacesOfLabels, OnOneSpotEightStandClearOfEachOtherAndTheNinthIsCrowded) {
  Begin();
  for (int count = 0; count < 9; ++count) Add(Aircraft("Mig", 6000, 4500));
  const std::vector<Label>& labels = Arrange();
  const Box expected[] = {{5175, 4402.5, 5715, 4792.5},   // left
                          {6285, 4402.5, 6825, 4792.5},   // right
                          {5730, 3982.5, 6270, 4372.5},   // above: 30 over it
                          {5730, 4822.5, 6270, 5212.5},   // below
                          {5160, 3982.5, 5700, 4372.5},   // above at the left: 30 left of the middle one
                          {5160, 4822.5, 5700, 5212.5},   // below at the left
                          {6300, 3982.5, 6840, 4372.5},   // above at the right
                          {6300, 4822.5, 6840, 5212.5}};  // below at the right
  for (std::size_t place = 0; place < 8; ++place) {
    EXPECT_EQ(labels[place].Place, place);
    EXPECT_EQ(labels[place].Area, expected[place]) << place;
    EXPECT_FALSE(labels[place].Crowded);
  }
  EXPECT_TRUE(labels[8].Crowded);
  EXPECT_EQ(labels[8].Area, expected[0]) << "none is left out";
}

TEST_F(PlacesOfLabels, ASymbolIsInTheWayAsALabelIs) {
  Begin();
  Add(Aircraft("Viper1", 6000, 4500));
  // 4 pixels to each side: its right edge is the label's left edge and one unit more.
  Places.AddSymbol({5175 - 60 + 1, 4500});
  EXPECT_EQ(Arrange()[0].Place, 1);
  Places.Forget();
  Begin();
  Add(Aircraft("Viper1", 6000, 4500));
  Places.AddSymbol({5175 - 60, 4500});
  EXPECT_EQ(Arrange()[0].Place, 0) << "they only touch";
}

TEST_F(PlacesOfLabels, APlaceIsHeldWhileItIsFree) {
  const auto fly = [this](double blocker, double zoom = 1) {
    Begin(zoom);
    Add(Aircraft("Viper1", 6000, 4500));
    Places.AddSymbol({blocker, 4500});
    return Arrange()[0].Place;
  };
  EXPECT_EQ(fly(5400), 1) << "in the way at the left";
  EXPECT_EQ(fly(3000), 1) << "it has gone, and there is no need to move";
  EXPECT_EQ(fly(3000, 2), 0) << "another zoom begins anew";
}

TEST_F(PlacesOfLabels, OneThatComesMovesNoneThatIsThere) {
  Begin();
  Add(Aircraft("Viper1", 6000, 4500));
  Arrange();
  Begin();
  Add(Aircraft("Bandit1", 6000, 4500));  // it stands before it in the table
  Add(Aircraft("Viper1", 6000, 4500));
  const std::vector<Label>& labels = Arrange();
  EXPECT_EQ(labels[0].Place, 1);
  EXPECT_EQ(labels[1].Place, 0);
}

TEST_F(PlacesOfLabels, ThoseOfOneNameAreHeldInTheirOrder) {
  for (int redraw = 0; redraw < 3; ++redraw) {
    Begin();
    for (int count = 0; count < 5; ++count) Add(Aircraft("Mig", 6000, 4500));
    const std::vector<Label>& labels = Arrange();
    for (std::size_t place = 0; place < 5; ++place) EXPECT_EQ(labels[place].Place, place) << redraw;
  }
}

TEST_F(PlacesOfLabels, TheFixedOneHasTheFirstPlaceWhateverItCovers) {
  Begin();
  Places.AddSymbol({5400, 4500});
  Add(Aircraft("Viper1", 6000, 4500));
  Label fixed = Aircraft("Viper3", 6000, 4500);
  fixed.Fixed = true;
  Add(fixed);
  const std::vector<Label>& labels = Arrange();
  EXPECT_EQ(labels[0].Place, 1);
  EXPECT_EQ(labels[1].Place, 0);
}

TEST_F(PlacesOfLabels, OnlyTheFirstPlaceMayLieBeyondTheEdge) {
  // Of an aircraft at the upper left corner the places above and at the left do not fit on the surface.
  Begin();
  for (int count = 0; count < 5; ++count) Add(Aircraft("Mig", 300, 100));
  std::multiset<int> places;
  for (const Label& label : Arrange()) places.insert(label.Place);
  // The middle below begins at 300 - 270 = 30.
  EXPECT_EQ(places, (std::multiset<int>{0, 0, 1, 3, 7})) << "the last one is crowded";
  EXPECT_TRUE(Places.Labels()[4].Crowded);
}

TEST_F(PlacesOfLabels, ATwoShipWithoutRoomIsJoined) {
  const std::vector<Label>& labels = TwoShip(Aircraft("Viper1", 6000, 4500), Aircraft("Viper2", 6000, 4560));
  EXPECT_EQ(labels[0].Partner, 1U);
  EXPECT_EQ(labels[1].Partner, 0U);
  EXPECT_TRUE(labels[0].HasArea());
  EXPECT_FALSE(labels[1].HasArea());
  EXPECT_FALSE(labels[0].Crowded);
  // "Viper1-2, 050", 13 characters of 90, left of the leader and in the middle of its height.
  EXPECT_EQ(labels[0].Area, (Box{5715 - 1170, 4500 - 97.5, 5715, 4500 + 97.5}));
}

TEST_F(PlacesOfLabels, TheLeaderLeadsWhereverItStandsInTheTable) {
  const std::vector<Label>& labels = TwoShip(Aircraft("Viper4", 6000, 4560), Aircraft("Viper3", 6000, 4500));
  EXPECT_TRUE(labels[1].Leads);
  EXPECT_FALSE(labels[0].HasArea());
}

TEST_F(PlacesOfLabels, OthersAreNotJoined) {
  const Label leader = Aircraft("Viper1", 6000, 4500);
  const Label wing = Aircraft("Viper2", 6000, 4560);
  const auto crowdedWith = [&](Label first, Label second) {
    Places.Forget();
    const std::vector<Label>& labels = TwoShip(first, second);
    EXPECT_TRUE(labels[0].HasArea() && labels[1].HasArea());
    return labels[1].Crowded;
  };
  const auto changed = [](Label label, auto change) {
    change(label);
    return label;
  };
  const auto named = [](std::string_view name) { return [name](Label& label) { label.Name = name; }; };
  EXPECT_TRUE(crowdedWith(leader, changed(wing, named("Viper3"))));
  EXPECT_TRUE(crowdedWith(changed(leader, named("Viper2")), changed(wing, named("Viper3"))));
  EXPECT_TRUE(crowdedWith(leader, changed(wing, named("Wiper2"))));
  EXPECT_TRUE(crowdedWith(leader, changed(wing, named("Viper12"))));
  EXPECT_TRUE(crowdedWith(changed(leader, named("Viper")), changed(wing, named("Viper"))));
  EXPECT_TRUE(crowdedWith(changed(leader, named("")), changed(wing, named(""))));
  EXPECT_TRUE(crowdedWith(leader, changed(wing, [](Label& label) { label.Color = 1; })));
  EXPECT_TRUE(crowdedWith(leader, changed(wing, [](Label& label) { label.Real = true; })));
  EXPECT_TRUE(crowdedWith(changed(leader, [](Label& label) { label.Fixed = true; }), wing));
  EXPECT_TRUE(crowdedWith(changed(leader, [](Label& label) { label.TellsName = label.TellsAltitude = false; }),
                          changed(wing, [](Label& label) { label.TellsName = label.TellsAltitude = false; })));
}

TEST_F(PlacesOfLabels, AJoinedLabelSaysWhatBothWouldSay) {
  Label leader = Aircraft("Viper1", 0, 0);
  Label wing = Aircraft("Viper2", 0, 0);
  const auto says = [&] {
    std::string text;
    AppendJoinedText(leader, wing, text);
    return text;
  };
  leader.Altitude = wing.Altitude = 250;
  EXPECT_EQ(says(), "Viper1-2, 250");
  wing.Altitude = 5;
  EXPECT_EQ(says(), "Viper1-2, 250/005");
  leader.TellsName = false;
  EXPECT_EQ(says(), "250/005");
  leader.TellsName = true;
  leader.TellsAltitude = false;
  EXPECT_EQ(says(), "Viper1-2");
}

TEST_F(PlacesOfLabels, AJoinedTwoShipComesApartWhenBothHaveRoom) {
  TwoShip(Aircraft("Viper1", 6000, 4500), Aircraft("Viper2", 6000, 4560));
  int redraws = 0;
  for (; redraws < 20; ++redraws) {
    EXPECT_EQ(TwoShip(Aircraft("Viper1", 6000, 4500), Aircraft("Viper2", 6000, 4560))[0].Partner, 1U) << "it holds";
  }
  const auto apart = [this] {
    Begin();
    Add(Aircraft("Viper1", 6000, 4500));
    Add(Aircraft("Viper2", 6000, 4560));
    return Arrange()[0].Partner == Label::Alone;
  };
  redraws = 1;
  while (!apart() && redraws < 100) ++redraws;
  EXPECT_LE(redraws, 8);
  EXPECT_FALSE(Overlap(Places.Labels()[0].Area, Places.Labels()[1].Area));
}

TEST_F(PlacesOfLabels, AJoinedTwoShipComesApartWithTheDistance) {
  const Label leader = Aircraft("Viper1", 6000, 4500);
  TwoShip(leader, Aircraft("Viper2", 6000, 4560));
  EXPECT_EQ(TwoShip(leader, Aircraft("Viper2", 7490, 4560))[0].Partner, 1U) << "100 pixels";
  const std::vector<Label>& labels = TwoShip(leader, Aircraft("Viper2", 7510, 4560));
  EXPECT_EQ(labels[0].Partner, Label::Alone);
  EXPECT_EQ(labels[1].Partner, Label::Alone);
  // To be joined they must be nearer: the wing's places are all taken at 81 pixels.
  for (const double across : {1185.0, 1215.0}) {
    Places.Forget();
    Begin();
    BlockAllButTheFirst(6000 + across, 4500);
    Places.AddSymbol({6000 + across - 555, 4500 + 97.5});
    Add(leader);
    Add(Aircraft("Viper2", 6000 + across, 4500));
    EXPECT_EQ(Arrange()[0].Partner == 1U, across < JoinDistance) << across;
  }
}

TEST_F(PlacesOfLabels, WhenItsPartnerHasGoneALabelStandsAlone) {
  TwoShip(Aircraft("Viper1", 6000, 4500), Aircraft("Viper2", 6000, 4560));
  for (const char* left : {"Viper1", "Viper2"}) {
    Begin();
    Add(Aircraft(left, 6000, 4500));
    EXPECT_EQ(Arrange()[0].Partner, Label::Alone);
    EXPECT_EQ(Places.Labels()[0].Place, 0);
  }
}

TEST_F(PlacesOfLabels, WhatIsNoPlaceOrNoSizeHarmsNone) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  Begin();
  for (const double odd : {nan, infinite, -infinite, 1e300, -1e300}) {
    Add(Aircraft("Odd1", odd, 4500));
    Add(Aircraft("Odd2", 6000, odd));
  }
  Add(Aircraft("Viper1", 6000, 4500));
  EXPECT_EQ(Arrange().back().Place, 0);
  Places.Begin(0, 0, 1);
  Add(Aircraft("Viper1", 6000, 4500));
  EXPECT_EQ(Arrange().size(), 1U);
}

TEST_F(PlacesOfLabels, ACrowdOnOneSpotIsSoonDone) {
  // What lies in one cell is looked at up to a limit: without it this would be 8 times 20,000 times 20,000 looks.
  Begin();
  for (int count = 0; count < 20000; ++count) Add(Aircraft("Mig21", 6000, 4500));
  std::size_t crowded = 0;
  for (const Label& label : Arrange()) crowded += label.Crowded ? 1 : 0;
  EXPECT_GE(crowded, 20000U - 8U);
}

}  // namespace
}  // namespace kestrel::map
