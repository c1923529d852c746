#include "core/theater_switch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "areas/area_tree.h"
#include "base/failure.h"
#include "base/program_title.h"
#include "core/settings.h"
#include "core/theater_data.h"
#include "radio/frequency_edits.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TheaterSwitch : public testing::Test {
 protected:
  TheaterSwitch() {
    WriteInstallation(folder);
    around.Shown.WhenShown = [this] { RunSteps(MapLoadSteps(), around.All); };
    EXPECT_TRUE(Main(around.All));
    around.Shown.Calls.clear();
    around.Shown.Refreshes.clear();
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(TheaterSwitch, SavesUnderTheMessageThenShowsTheOtherTheater) {
  station.LinkOptions.CONNPORT = 6200;
  station.View.ViewShorts[0] = {15, 30, 2};
  SwitchTheater(around.All, 2);
  EXPECT_EQ(around.Desk.EventRuns, 0) << "what the person does waits";
  EXPECT_THAT(around.Shown.Calls, ElementsAre("saving message", "no saving message", "Refresh"));
  EXPECT_TRUE(Has(around.Shown.Refreshes[0], Changed::Map));
  EXPECT_TRUE(Has(around.Shown.Refreshes[0], Changed::MiniMap));
  EXPECT_TRUE(Has(around.Shown.Refreshes[0], Changed::Zoom));
  EXPECT_TRUE(Has(around.Shown.Refreshes[0], Changed::NameMenus));
  // What was saved is the state before the switch.
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CURRENTMAP=1\r\n[OPTIONS]\r\nCONNPORT=6200\r\n"));
  EXPECT_EQ(folder.Read("Theaters/korea_ViewShort.dat").size(), 172u);
  EXPECT_FALSE(folder.Has("Theaters/balkans_ViewShort.dat"));

  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(station.MapPicture.Width, 3);
  EXPECT_EQ(station.View.Size, 2048);
  EXPECT_EQ(station.View.PicSize, 3);
  EXPECT_EQ(station.View.ViewShorts[0].ViewCenterX, 1024 * 15);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterSwitch, ATheaterOpensWholeAndCentredWhereverItsBullseyeLies) {
  SwitchTheater(around.All, 2);
  station.View.Resolution = 8;
  station.View.ViewCenterX = 1;
  SwitchTheater(around.All, 1);
  EXPECT_EQ(station.View.Resolution, 1);
  EXPECT_EQ(station.View.ViewCenterX, 512 * 15);
  EXPECT_EQ(station.View.ViewCenterY, 512 * 15);
  EXPECT_EQ(station.View.BullsViewX, 100 * 15);
  EXPECT_EQ(station.View.AnchorViewX, 100 * 15);
  EXPECT_EQ(station.View.AnchorViewY, (1024 - 200) * 15);
  EXPECT_EQ(station.View.MapWidth, 1024 * 15);
}

TEST_F(TheaterSwitch, ATheaterWithoutBullseyesHasItsMarksInTheMiddle) {
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.View.BullsViewX, 1024 * 15);
  EXPECT_EQ(station.View.BullsViewY, 1024 * 15);
  EXPECT_EQ(station.View.AnchorViewX, 1024 * 15);
  EXPECT_EQ(station.Session.Bull.X, 1024);
  EXPECT_EQ(station.Session.Bull.Y, 1024);
}

TEST_F(TheaterSwitch, TheViewsOfTheOtherTheaterAreLoaded) {
  SwitchTheater(around.All, 2);
  station.View.ViewShorts[1] = {450, 600, 16};
  SwitchTheater(around.All, 1);
  EXPECT_EQ(station.View.ViewShorts[1].ViewCenterX, 512 * 15);
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.View.ViewShorts[1].ViewCenterX, 450);
  EXPECT_EQ(station.View.ViewShorts[1].ViewCenterY, 600);
  EXPECT_EQ(station.View.ViewShorts[1].Resolution, 16);
}

TEST_F(TheaterSwitch, ASessionKeepsItsAircraft) {
  around.Link.ConnectTo("server");
  around.WS1.Accept();
  station.Plots.Clients.Append({}).Id = 7;
  station.Plots.IndexLast();
  station.Plots.AIPlots.Append({}).Name = "Cowboy1   ";
  SwitchTheater(around.All, 2);
  EXPECT_TRUE(station.Session.Connected);
  EXPECT_EQ(station.Plots.FindClient(7), 1u);
  EXPECT_EQ(station.Plots.AIPlots.UpperBound(), 1u);
}

TEST_F(TheaterSwitch, TheStepsOfTheFormerTheatersAreasCannotBeUndone) {
  areas::NewFolder(station.Areas, station.AreaSteps);
  areas::NewFolder(station.Areas, station.AreaSteps);
  station.AreaSteps.Undo(station.Areas);
  SwitchTheater(around.All, 3);
  EXPECT_EQ(station.AreaSteps.UndoText(), "new folder") << "there is no third theater";
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.AreaSteps.UndoText(), "");
  EXPECT_EQ(station.AreaSteps.RedoText(), "");
}

TEST_F(TheaterSwitch, TheStepsOfTheFormerTheatersFrequenciesCannotBeUndone) {
  for (int n = 0; n < 2; ++n) radio::AddFolder(station.Frequencies, station.FrequencySteps);
  station.FrequencySteps.Undo(station.Frequencies);
  const std::uint64_t former = station.Frequencies.Revision;
  SwitchTheater(around.All, 3);
  EXPECT_EQ(station.FrequencySteps.UndoText(), "new folder") << "there is no third theater";
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.FrequencySteps.UndoText(), "");
  EXPECT_EQ(station.FrequencySteps.RedoText(), "");
  EXPECT_GT(station.Frequencies.Revision, former) << "others are there now";
}

TEST_F(TheaterSwitch, APictureThatCannotBeReadLeavesTheFormerTheater) {
  station.View.Resolution = 4;
  station.View.ViewCenterX = 3000;
  for (const std::string& bytes : {std::string(), TinyBmp(3).substr(0, 70), std::string(100, 'x')}) {
    folder.Write("Theaters/balkans.bmp", bytes);
    around.Desk.Boxes.clear();
    around.Shown.Refreshes.clear();
    SwitchTheater(around.All, 2);
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, "Error");
    EXPECT_EQ(around.Desk.Boxes[0].Text,
              "An error ocurred while loading the initialization files for this Theater. Please check these files, or "
              "reinstall the program. The former theater stays in use.");
    EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
    EXPECT_EQ(station.MapPicture.Width, 2);
    EXPECT_EQ(station.View.Size, 1024);
    EXPECT_EQ(station.View.Resolution, 4);
    EXPECT_EQ(station.View.ViewCenterX, 3000);
    EXPECT_EQ(station.Session.Bull.X, 100);
    EXPECT_THAT(around.Shown.Refreshes, ElementsAre(Changed::NameMenus));
  }
}

TEST_F(TheaterSwitch, AMissingPictureLeavesTheFormerTheater) {
  std::filesystem::remove(folder.Path / "Theaters/balkans.bmp");
  SwitchTheater(around.All, 2);
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(station.Catalogue.Current().Name, "korea");
}

TEST_F(TheaterSwitch, APictureOutsideTheFolderOfTheTheatersIsNotOpened) {
  folder.Write("outside.bmp", TinyBmp(5));
  const std::string above = (folder.Path / "Theaters/../outside.bmp").string();
  for (const std::string& pic :
       {std::string("../outside.bmp"), std::string("..\\outside.bmp"), (folder.Path / "outside.bmp").string(), above,
        (folder.Path / "Theaters/balkans.bmp").string()}) {
    SCOPED_TRACE(pic);
    station.Catalogue.Theaters[2].Pic = pic;
    around.Desk.Boxes.clear();
    around.Log.File.Open(folder.Path / "log");
    SwitchTheater(around.All, 2);
    around.Log.File.Close();
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The former theater stays in use."));
    EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
    EXPECT_EQ(station.MapPicture.Width, 2);
    EXPECT_THAT(folder.Read("log"), HasSubstr(pic));
    EXPECT_THAT(folder.Read("log"), HasSubstr("leaves"));
  }
}

TEST_F(TheaterSwitch, APictureThatCannotBeReadThrowsBeforeAnythingChanges) {
  folder.Write("Theaters/korea.bmp", "no picture");
  station.View.Resolution = 4;
  EXPECT_THROW(LoadMapPicture(around.All), base::RuntimeFailure);
  EXPECT_EQ(station.MapPicture.Width, 2);
  EXPECT_EQ(station.View.Resolution, 4);
}

TEST_F(TheaterSwitch, EachTheaterHasItsHeightsOnceThePointerAsksForThem) {
  folder.Write("Theaters/korea_Elevation.dat", std::string("\x64\0\xC8\0", 4));
  folder.Write("Theaters/balkans_Elevation.dat", std::string("\x2C\x01", 2));
  EXPECT_EQ(station.Elevations.At(0, 0), std::nullopt);
  ReadElevations(around.All);
  EXPECT_EQ(station.Elevations.At(1, 0), 200);
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.Elevations.At(0, 0), std::nullopt);
  ReadElevations(around.All);
  EXPECT_EQ(station.Elevations.At(0, 0), 300);
  EXPECT_EQ(station.Elevations.At(2047.5, 2047.5), 0);
}

TEST_F(TheaterSwitch, AFormerTheaterThatStaysKeepsItsHeights) {
  folder.Write("Theaters/korea_Elevation.dat", std::string("\x64\0", 2));
  ReadElevations(around.All);
  folder.Write("Theaters/balkans.bmp", "no picture");
  SwitchTheater(around.All, 2);
  EXPECT_EQ(station.Elevations.At(0, 0), 100);
}

TEST_F(TheaterSwitch, HeightsThatCannotBeReadAreLoggedOnce) {
  folder.Write("Theaters/korea_Elevation.dat", std::string("\x64\0", 2));
  station.Catalogue.Current().Size = 100000;
  ResetTheaterData(around.All);
  around.Log.File.Open(folder.Path / "log");
  ReadElevations(around.All);
  ReadElevations(around.All);
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"), "The elevations are left out: korea_Elevation.dat is too large\r\n");
  EXPECT_EQ(station.Elevations.At(0, 0), std::nullopt);
}

TEST_F(TheaterSwitch, TheLogTellsWhatWasLoadedAndHowLongItTook) {
  folder.Write("Theaters/balkans_Elevation.dat", std::string("\x64\0", 2));
  SwitchTheater(around.All, 2);
  SwitchTheater(around.All, 1);  // keeps the views, areas and frequencies of "balkans"
  around.Clock.WhenRead = [this] { around.Clock.Ticks += 7; };
  around.Log.File.Open(folder.Path / "log");
  SwitchTheater(around.All, 2);
  ReadElevations(around.All);
  ReadElevations(around.All);
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"),
            "Loaded the map picture in 7 ms\r\nLoaded the areas in 7 ms\r\nLoaded the view shortcuts in 7 ms\r\n"
            "Loaded the frequencies in 7 ms\r\nLoaded the elevations in 7 ms\r\n");
}

TEST_F(TheaterSwitch, ANameThatPointsOutOfTheFolderHasItsHeightsWithin) {
  for (const char* place : {"elsewhere", "Theaters/_/elsewhere"}) {
    std::filesystem::create_directories(folder.Path / place);
    folder.Write(std::string(place) + "/x_Elevation.dat", std::string(*place == 'e' ? "\x64\0" : "\xC8\0", 2));
  }
  station.Catalogue.Current().Name = "../elsewhere/x";
  ResetTheaterData(around.All);
  ReadElevations(around.All);
  EXPECT_EQ(station.Elevations.At(0, 0), 200);
}

TEST_F(TheaterSwitch, AFailedSaveIsToldAndTheSwitchGoesOn) {
  std::filesystem::remove(folder.Path / "KESTREL.ini");
  std::filesystem::create_directories(folder.Path / "KESTREL.ini/in the way");
  SwitchTheater(around.All, 2);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("KESTREL.ini"));
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
}

TEST_F(TheaterSwitch, ViewsThatCannotBeSavedAreToldAsSuch) {
  std::filesystem::create_directories(folder.Path / "Theaters/korea_ViewShort.dat/in the way");
  SwitchTheater(around.All, 2);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The kept views could not be saved: korea_ViewShort.dat cannot be written.");
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
}

TEST_F(TheaterSwitch, EachKindThatCannotBeSavedIsToldAndStopsNoOther) {
  std::filesystem::create_directories(folder.Path / "Theaters/korea_ViewShort.dat/in the way");
  std::filesystem::remove(folder.Path / "Theaters/korea.ini");
  std::filesystem::create_directories(folder.Path / "Theaters/korea.ini/in the way");
  station.LinkOptions.CONNPORT = 6200;
  SwitchTheater(around.All, 2);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The kept views could not be saved: korea_ViewShort.dat cannot be written.");
  EXPECT_EQ(around.Desk.Boxes[1].Text, "The settings could not be saved: korea.ini cannot be written.");
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6200"));
}

TEST_F(TheaterSwitch, AnEntryThatIsNotThereChangesNothing) {
  for (const std::size_t index : {0, 3, 70000}) {
    SwitchTheater(around.All, index);
    EXPECT_EQ(SelectBullseye(around.All, index), Changed::Nothing);
  }
  EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
  EXPECT_EQ(station.Catalogue.Current().CurrentBull, 1);
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

TEST_F(TheaterSwitch, AChosenBullseyeMovesTheMarkAndTheOriginOfTheFeed) {
  const Changed changed = SelectBullseye(around.All, 2);
  EXPECT_TRUE(Has(changed, Changed::NameMenus));
  EXPECT_TRUE(Has(changed, Changed::Map));
  EXPECT_EQ(station.Catalogue.Current().CurrentBull, 2);
  EXPECT_EQ(station.View.BullsViewX, 300 * 15);
  EXPECT_EQ(station.View.BullsViewY, (1024 - 400) * 15);
  EXPECT_EQ(station.Session.Bull.X, 300);
  EXPECT_EQ(station.Session.Bull.Y, 1024 - 400);
  // The anchor stays where it was.
  EXPECT_EQ(station.View.AnchorViewX, 100 * 15);
}

TEST_F(TheaterSwitch, ATapesBullseyeMovesTheMarkUntilTheNextReload) {
  ReloadBulls(station, map::MapPoint{10, 24});
  EXPECT_EQ(station.View.BullsViewX, 150);
  EXPECT_EQ(station.View.BullsViewY, 15000);
  EXPECT_EQ(station.Session.Bull.Y, 1000);
  EXPECT_EQ(station.Catalogue.Current().CurrentBull, 1);
  ReloadBulls(station);
  EXPECT_EQ(station.View.BullsViewX, 1500);
}

}  // namespace
}  // namespace kestrel::core
