// The file of callsigns and colours.

#include "core/callsign_file.h"

#include <gmock/gmock.h>

#include "core/settings.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

class CallsignFiles : public testing::Test {
 protected:
  CallsignFiles() {
    WriteInstallation(folder);
    station.AppPath = folder.Path;
    LoadSavedVars(station);
    station.Plots.Given.GiveLabel("Smith", "Viper 1");
    station.Plots.Given.GiveColor("Smith", 0xFFFFFF);
    station.Plots.Given.GiveColor("\"Red\" Jones", 255);
    station.Plots.Given.GiveLabel("Brown", "  \"B\" ");
  }
  /// The station that starts next.
  Station Next() const {
    Station next;
    next.AppPath = folder.Path;
    LoadSavedVars(next);
    return next;
  }

  ProgramFolder folder;
  Station station;
};

TEST_F(CallsignFiles, IsNotWrittenAsTheStationShips) {
  SaveVars(station);
  EXPECT_FALSE(folder.Has("Callsigns.ini"));
  EXPECT_EQ(folder.Read("KESTREL.ini").find("REMEMBERCALLSIGNS"), std::string::npos);
}

TEST_F(CallsignFiles, BringsBackAfterARestartWhatWasGiven) {
  station.Plots.Given.REMEMBERCALLSIGNS = true;
  SaveVars(station);
  EXPECT_EQ(folder.Read("Callsigns.ini"),
            "\"KESTREL v1.0.0 Callsigns INI File\"\r\n[CALLSIGNS]\r\nNUM=3\r\n"
            "[PLAYER1]\r\nNAME=\"\"Red\" Jones\"\r\nLABEL=\"\"\r\nCOLOR=255\r\n"
            "[PLAYER2]\r\nNAME=\"Brown\"\r\nLABEL=\"  \"B\" \"\r\nCOLOR=0\r\n"
            "[PLAYER3]\r\nNAME=\"Smith\"\r\nLABEL=\"Viper 1\"\r\nCOLOR=16777215\r\n");
  const Station next = Next();
  EXPECT_TRUE(next.Plots.Given.REMEMBERCALLSIGNS);
  ASSERT_EQ(next.Plots.Given.All().size(), 3u);
  EXPECT_EQ(next.Plots.Given.All().at("Smith").Label, "Viper 1");
  EXPECT_EQ(next.Plots.Given.All().at("Smith").Color, 0xFFFFFFU);
  EXPECT_EQ(next.Plots.Given.All().at("\"Red\" Jones").Color, 255U);
  EXPECT_EQ(next.Plots.Given.All().at("Brown").Label, "  \"B\" ");
}

TEST_F(CallsignFiles, IsWrittenOnlyWhenItIsAnother) {
  station.Plots.Given.REMEMBERCALLSIGNS = true;
  SaveVars(station);
  const auto old = std::filesystem::last_write_time(folder.Path / "Callsigns.ini") - std::chrono::hours(1);
  std::filesystem::last_write_time(folder.Path / "Callsigns.ini", old);
  SaveVars(station);
  EXPECT_EQ(std::filesystem::last_write_time(folder.Path / "Callsigns.ini"), old);
  station.Plots.Given.GiveLabel("Smith", "Viper 2");
  SaveVars(station);
  EXPECT_NE(folder.Read("Callsigns.ini").find("Viper 2"), std::string::npos);
}

TEST_F(CallsignFiles, OfAnythingCostsTheStartNothing) {
  folder.Write("Callsigns.ini",
               "[CALLSIGNS]\r\nNUM=99999999999\r\n[PLAYER1]\r\nNAME=\r\nLABEL=x\r\n[PLAYER2]\r\nNAME=Smith\r\n"
               "LABEL=Viper\r\nCOLOR=-1\r\n[PLAYER3]\r\nNAME=Jones\r\nCOLOR=16777216\r\n[PLAYER4]\r\nCOLOR=nan\r\n");
  const Station next = Next();
  ASSERT_EQ(next.Plots.Given.All().size(), 1u);
  EXPECT_EQ(next.Plots.Given.All().at("Smith").Label, "Viper");
  EXPECT_EQ(next.Plots.Given.All().at("Smith").Color, 0U);
}

TEST_F(CallsignFiles, ThatCannotBeReadIsNotedAndNotWrittenOver) {
  std::filesystem::create_directory(folder.Path / "Callsigns.ini");
  Station next = Next();
  ASSERT_FALSE(next.Notes.empty());
  EXPECT_EQ(next.Notes.back().find("The callsigns are left out: "), 0u) << next.Notes.back();
  next.Plots.Given.REMEMBERCALLSIGNS = true;
  next.Plots.Given.GiveLabel("Smith", "Viper");
  EXPECT_THROW(SaveVars(next), base::RuntimeFailure);
  EXPECT_NE(folder.Read("KESTREL.ini").find("REMEMBERCALLSIGNS=1\r\n"), std::string::npos) << "the rest is saved";
}

}  // namespace
}  // namespace kestrel::core
