// Another bullseye during a session, and the way back.

#include "core/bullseye_steps.h"

#include "core/catalogue_edits.h"
#include "core/theater_switch.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

/// Korea with Anvil (100, 200), which is current, and Hammer (300, 400); a session is on.
class BullseyeSteps : public testing::Test {
 protected:
  BullseyeSteps() {
    WriteInstallation(folder);
    around.Shown.WhenShown = [this] { RunSteps(MapLoadSteps(), around.All); };
    EXPECT_TRUE(Main(around.All));
    around.Link.ConnectToEntry(1);
    around.WS1.Accept();
    EXPECT_TRUE(station.Session.Connected);
  }
  theaters::Theater& Korea() { return station.Catalogue.Theaters[1]; }
  std::string Before() const { return BullseyeBefore(station).value_or("nothing"); }
  void Undo() { around.Shown.Refresh(UndoBullseye(around.All)); }
  void ExpectCurrent(const std::string& name, double x, double y) {
    EXPECT_EQ(BullseyeInUse(station), name);
    // AI positions are told from it, Y growing downward from 1024.
    EXPECT_EQ(station.Session.Bull.X, x);
    EXPECT_EQ(station.Session.Bull.Y, 1024 - y);
    EXPECT_EQ(station.View.BullsViewX, x * 15);
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(BullseyeSteps, EachChangeCanBeUndoneInTurn) {
  EXPECT_EQ(Before(), "nothing");
  SelectBullseye(around.All, 2);
  EXPECT_EQ(Before(), "Anvil");
  ASSERT_TRUE(StoreBullseye(around.All, 0, {"New", 10, 20}));
  EXPECT_EQ(Before(), "Hammer");
  ExpectCurrent("New", 10, 20);
  Undo();
  ExpectCurrent("Hammer", 300, 400);
  EXPECT_EQ(Korea().Bulls.UpperBound(), 3u) << "the new one stays in the list";
  Undo();
  ExpectCurrent("Anvil", 100, 200);
  EXPECT_EQ(Before(), "nothing");
  EXPECT_EQ(UndoBullseye(around.All), base::Changed::Nothing);
}

TEST_F(BullseyeSteps, AnotherPlaceOfTheCurrentOneIsTakenBack) {
  ASSERT_TRUE(StoreBullseye(around.All, 1, {"Anvil", 500, 600}));
  ExpectCurrent("Anvil", 500, 600);
  EXPECT_EQ(Before(), "Anvil");
  Undo();
  ExpectCurrent("Anvil", 100, 200);
}

TEST_F(BullseyeSteps, WhatMovesNoAircraftIsNoStep) {
  ASSERT_TRUE(StoreBullseye(around.All, 1, {"Renamed", 100, 200}));
  ASSERT_TRUE(StoreBullseye(around.All, 2, {"Hammer", 1, 2}));
  SelectBullseye(around.All, 1);
  EXPECT_FALSE(StoreBullseye(around.All, 1, {"Far", 1e9, 0}));
  EXPECT_EQ(Before(), "nothing");
}

TEST_F(BullseyeSteps, AnEditMadeMeanwhileStays) {
  SelectBullseye(around.All, 2);
  ASSERT_TRUE(StoreBullseye(around.All, 1, {"Anvil two", 110, 210}));
  EXPECT_EQ(Before(), "Anvil two");
  Undo();
  ExpectCurrent("Anvil two", 110, 210);
}

TEST_F(BullseyeSteps, WhatIsDeletedIsSkippedAndTheRestIsFound) {
  ASSERT_TRUE(StoreBullseye(around.All, 0, {"Third", 10, 20}));
  SelectBullseye(around.All, 2);
  SelectBullseye(around.All, 3);
  // Back would be: Hammer, Third, Anvil.
  around.Desk.Answers = {base::Answer::Yes};
  ASSERT_TRUE(DeleteBullseye(around.All, 1));
  EXPECT_EQ(Before(), "Hammer");
  Undo();
  ExpectCurrent("Hammer", 300, 400);
  Undo();
  ExpectCurrent("Third", 10, 20);
  EXPECT_EQ(Before(), "nothing");
}

TEST_F(BullseyeSteps, WithoutASessionThereAreNone) {
  SelectBullseye(around.All, 2);
  around.Link.Disconnect();
  EXPECT_EQ(Before(), "nothing");
  EXPECT_EQ(UndoBullseye(around.All), base::Changed::Nothing);
  SelectBullseye(around.All, 1);
  SelectBullseye(around.All, 2);
  around.Link.ConnectToEntry(1);
  around.WS1.Accept();
  EXPECT_EQ(Before(), "Anvil") << "that of the session alone";
}

TEST_F(BullseyeSteps, EndWithTheTheater) {
  SelectBullseye(around.All, 2);
  SwitchTheater(around.All, 2);
  EXPECT_EQ(Before(), "nothing");
  EXPECT_EQ(BullseyeInUse(station), "Middle of the map");
  ASSERT_TRUE(StoreBullseye(around.All, 0, {"First", 10, 20}));
  EXPECT_EQ(Before(), "nothing") << "before it was none";
}

TEST_F(BullseyeSteps, ATapesOwnIsNamedSo) {
  station.Tapes.Bullseye = tape::BullseyePlace{1, 2};
  EXPECT_EQ(BullseyeInUse(station), "The tape's bullseye");
}

}  // namespace
}  // namespace kestrel::core
