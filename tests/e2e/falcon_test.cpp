// The simulator's own data in the built station, from made installations of its generations.

#include <gtest/gtest.h>

#include "e2e/falcon_on_screen.h"

namespace kestrel::e2e {
namespace {

using StationWithFalcon = FalconOnScreen;

TEST_F(StationWithFalcon, TakesTheBullseyeOfACampaignOfEachGeneration) {
  ASSERT_NO_FATAL_FAILURE(StartFalconStation());
  for (const made::Generation which : made::Generations) {
    const made::Installation made = made::WriteInstallation(disk / made::KeyName(which), which);
    ASSERT_NO_FATAL_FAILURE(FalconTool(2));
    ASSERT_NO_FATAL_FAILURE(ChooseCampaign(made.Campaign / "Save0.cam"));
  }
  ASSERT_NO_FATAL_FAILURE(Exit());
  // Each is a new bullseye of the same name, in the cell 40, 22.
  const QString theater = ReadText(folder + S("/Theaters/SampleStrait.ini"));
  EXPECT_EQ(theater.count(S("NAME=Save0.cam\r\nX=40\r\nY=22\r\n")), 5) << qPrintable(theater);
}

}  // namespace
}  // namespace kestrel::e2e
