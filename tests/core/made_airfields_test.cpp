// The airfields of whole installations: what core/airfield_import makes of a mission of each generation. What is
// expected is worked out by hand from falcon/made_world.h.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/temp_folder.h"
#include "core/airfield_import.h"
#include "doubles/station_around.h"
#include "falcon/made_installation.h"

namespace kestrel::core {
namespace {

using made::Generation;
using testing::ElementsAre;
using testing::IsEmpty;

class MadeAirfields : public testing::TestWithParam<Generation> {};

TEST_P(MadeAirfields, AreThoseOfTheWorld) {
  const test::TempFolder disk;
  const made::Installation made = made::WriteInstallation(disk / "install", GetParam());
  doubles::StationAround<> around;
  ASSERT_TRUE(ImportAirfields(around.All, {made.Campaign, {made.Objects}}, made.Campaign / "Mission.tac"));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  const radio::Frequencies& tables = around.State.Frequencies;
  EXPECT_THAT(tables.Teams,
              ElementsAre("XX", "Azuria", "Borealia", "Cordova", "Dunmark", "Estoria", "Fenland", "Gorania"));
  ASSERT_EQ(tables.Airfields.UpperBound(), 4U);

  const radio::Airfield& anvil = tables.Airfields[1];
  EXPECT_EQ(anvil.Name, "Anvil Airbase");
  EXPECT_EQ(anvil.TEAM_INDEX, 2);
  EXPECT_EQ(anvil.TACANX, 20.5);
  EXPECT_EQ(anvil.TACANY, 12.5);
  EXPECT_EQ(anvil.TACAN, "042");
  EXPECT_EQ(anvil.UHF, "250200");
  EXPECT_THAT(anvil.ILS, ElementsAre("11030", "11050", "11070", "-"));
  EXPECT_THAT(anvil.ILS_DES, ElementsAre("27R", "09L", "27L", "09R"));
  // The threshold of 27R is 4000 feet east and 1000 north of the middle, that of 27L 3000 east and 500 south.
  EXPECT_NEAR(anvil.ILS_R[0].RX, 21.719519, 1e-6);
  EXPECT_NEAR(anvil.ILS_R[0].RY, 12.804880, 1e-6);
  EXPECT_NEAR(anvil.ILS_R[2].RX, 21.414639, 1e-6);
  EXPECT_NEAR(anvil.ILS_R[2].RY, 12.347560, 1e-6);
  EXPECT_NEAR(anvil.ILS_DRAW_HEADING[0], 0, 1e-6) << "whoever lands westward comes from the east";
  EXPECT_NEAR(anvil.ILS_DRAW_HEADING[1], 180, 1e-6);

  const radio::Airfield& birch = tables.Airfields[2];
  EXPECT_EQ(birch.Name, "Birch Airbase");
  EXPECT_EQ(birch.TEAM_INDEX, 2) << "the mission has changed its owner";
  EXPECT_EQ(birch.TACAN, "007");
  EXPECT_EQ(birch.TACAN_BAND, "Y");
  EXPECT_THAT(birch.ILS, ElementsAre("-", "11130", "-", "-"));
  EXPECT_THAT(birch.ILS_DES, ElementsAre("20", "02", "-", "-"));
  // The threshold of 02 is 1500 feet west and 3500 south, from where its far end lies 2700 east and 7500 north.
  EXPECT_NEAR(birch.ILS_R[1].RX, 50.042680, 1e-6);
  EXPECT_NEAR(birch.ILS_R[1].RY, 39.432920, 1e-6);
  EXPECT_NEAR(birch.ILS_DRAW_HEADING[1], 250.201123, 1e-6);

  EXPECT_EQ(tables.Airfields[3].Name, "Dorn");
  EXPECT_EQ(tables.Airfields[3].TACANX, 30.5);
  EXPECT_THAT(tables.Airfields[3].ILS_DES, ElementsAre("-", "-", "-", "-"));
  EXPECT_EQ(tables.Airfields[4].Name, "**Not an Airbase!");
}

INSTANTIATE_TEST_SUITE_P(OfEachBms, MadeAirfields,
                         testing::Values(Generation::Bms433, Generation::Bms435, Generation::Bms437,
                                         Generation::Bms438));

}  // namespace
}  // namespace kestrel::core
