// The section of the settings that other stations do not know.

#include <gmock/gmock.h>

#include "core/settings.h"
#include "settings_texts.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::Not;

class ExtraSettings : public testing::Test {
 protected:
  ExtraSettings() {
    WriteInstallation(folder);
    station.AppPath = folder.Path;
  }

  ProgramFolder folder;
  Station station;
};

TEST_F(ExtraSettings, AreNotWrittenWhileTheyAreAsTheStationShips) {
  folder.Write("KESTREL.ini", ChangedFile);
  LoadSavedVars(station);
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("[KESTREL]")));
}

TEST_F(ExtraSettings, EachThatDiffersIsWrittenAloneInASectionOfItsOwn) {
  LoadSavedVars(station);
  station.Extras.THREATRING = true;
  station.Extras.THREATRANGE = 12.5;
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"),
              HasSubstr("NAME=IVC Client\r\n[KESTREL]\r\nTHREATRING=1\r\nTHREATRANGE=12.50\r\n[CONNLIST1]"));
  Station next;
  next.AppPath = folder.Path;
  LoadSavedVars(next);
  EXPECT_TRUE(next.Extras.THREATRING);
  EXPECT_EQ(next.Extras.THREATRANGE, 12.5);
  next.Extras = {};
  SaveVars(next);
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("[KESTREL]"))) << "back at their defaults they go";
}

TEST_F(ExtraSettings, OfWindowsAreWrittenWhereTheyDiffer) {
  LoadSavedVars(station);
  station.WindowOptions.SNAPWINDOWS = true;
  station.WindowOptions.FRAMELEFT = -1500;
  station.WindowOptions.LASTZOOM = 0.5;
  station.WindowOptions.LASTTHEATER = "korea.ini";
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"),
              HasSubstr("[KESTREL]\r\nSNAPWINDOWS=1\r\nFRAMELEFT=-1500\r\nLASTZOOM=0.500000\r\nLASTTHEATER=korea.ini"));
  Station next;
  next.AppPath = folder.Path;
  LoadSavedVars(next);
  EXPECT_TRUE(next.WindowOptions.SNAPWINDOWS);
  EXPECT_EQ(next.WindowOptions.FRAMELEFT, -1500);
  EXPECT_EQ(next.WindowOptions.LASTZOOM, 0.5);
  EXPECT_EQ(next.WindowOptions.LASTTHEATER, "korea.ini");
}

TEST_F(ExtraSettings, WhatTheFileLacksIsTheDefaultAndNotWhatWasThere) {
  station.Extras.THREATRING = true;
  station.Extras.TIECOLOR = 1;
  LoadSavedVars(station);
  EXPECT_FALSE(station.Extras.THREATRING);
  EXPECT_EQ(station.Extras.TIECOLOR, 16711935U);
}

TEST_F(ExtraSettings, AnotherKeyIsWrittenThoughItHasItsDefault) {
  LoadSavedVars(station);
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("AICOLOR=255\r\n"));
}

}  // namespace
}  // namespace kestrel::core
