#include "core/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/files.h"
#include "base/program_title.h"
#include "core/theater_data.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

template <class Row>
std::vector<std::string> Texts(std::span<const Row> rows) {
  std::vector<std::string> texts;
  for (const Row& row : rows) texts.emplace_back(row.What);
  return texts;
}

class Life : public testing::Test {
 protected:
  Life() {
    WriteInstallation(folder);
    around.Shown.WhenShown = [this] {
      RunSteps(FrameLoadSteps(), around.All);
      RunSteps(MapLoadSteps(), around.All);
    };
    around.Shown.WhenUnloaded = [this] { RunSteps(MapUnloadSteps(), around.All); };
  }
  bool Start() { return Main(around.All); }
  void ExpectStartFailure(const std::string& where) {
    EXPECT_FALSE(Start());
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, "Error");
    EXPECT_EQ(around.Desk.Boxes[0].Text,
              "An error ocurred while loading the initialization files (" + where +
                  "). Please check these files, or reinstall the program. The program will exit now...");
    EXPECT_FALSE(around.State.Loading);
  }

  ProgramFolder folder;
  Around around{folder.Path};
};

TEST_F(Life, TheStepsOfTheStartStandInTheirOrder) {
  EXPECT_THAT(Texts(MainSteps()),
              ElementsAre("Clear the flags", "Install the keyboard hook",
                          "AppPath: the program folder, or the person's own where that cannot be written",
                          "Read update.txt", "Read common.ini", "LoadSavedVars", "LoadFriendsDef", "Read DefFreq.ini",
                          "Open the log", "Load the theater picture", "Show MainFrm",
                          "Place BullsFrm, CursFrm, ViewFrm, ClientsFrm, AreasFrm, RecFrm, MiniMapFrm, FreqFrm",
                          "Copy the view options into ViewFrm", "Clear Loading",
                          "Show FreqFrm, its first tab, its check boxes; hide it again", "ChangeRes 1: the first map"));
  EXPECT_THAT(Texts(TheaterDataRows()),
              ElementsAre("areas", "rescued areas", "saved views", "frequencies", "rescued frequencies", "elevations"));
  EXPECT_THAT(Texts(FrameLoadSteps()),
              ElementsAre("Icon", "Caption", "Subclass the frame's window", "Start the updater"));
  EXPECT_THAT(Texts(MapLoadSteps()),
              ElementsAre("Default font", "Folder TAPES", "Caption", "Empty the tables", "Size the map",
                          "ReloadNameMenu", "ResetTheaterData", "Status pictures", "LoadConnectionMenus"));
}

TEST_F(Life, TheStepsOfTheClosingStandInTheirOrder) {
  EXPECT_THAT(Texts(StopSteps()),
              ElementsAre("close the raw capture", "show the saving message",
                          "save the data of the theater and the settings", "free the map bitmap",
                          "put the frame's window procedure back", "remove the keyboard hook", "unload the windows"));
  EXPECT_THAT(Texts(MapUnloadSteps()), ElementsAre("close the log", "leave the session", "RecordingEnd"));
}

TEST_F(Life, AStartShowsTheFirstMapWithoutABox) {
  bool loading = false;
  int width = 0;
  const auto load = around.Shown.WhenShown;
  around.Shown.WhenShown = [&] {
    loading = around.State.Loading;
    width = around.State.MapPicture.Width;
    load();
  };
  EXPECT_TRUE(Start());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_TRUE(loading) << "nothing is drawn while windows are placed";
  EXPECT_EQ(width, 2) << "the picture is there before the map window";
  EXPECT_FALSE(around.State.Loading);
  EXPECT_THAT(around.Shown.Calls, ElementsAre("ShowMainFrm", "Refresh", "Refresh", "Refresh", "PlaceToolWindows",
                                              "OpenFreqFrm", "Refresh"));
  ASSERT_THAT(around.Shown.Refreshes, SizeIs(4));
  EXPECT_EQ(around.Shown.Refreshes[0], base::Changed::NameMenus);
  EXPECT_EQ(around.Shown.Refreshes[1], base::Changed::Connection | base::Changed::Tape);
  EXPECT_EQ(around.Shown.Refreshes[2], base::Changed::ConnectionMenus);
  EXPECT_TRUE(Has(around.Shown.Refreshes[3], base::Changed::Map));
  EXPECT_TRUE(Has(around.Shown.Refreshes[3], base::Changed::Zoom));
  EXPECT_EQ(around.State.DocsUrl, "http://docs.example");
  EXPECT_EQ(around.State.MailUrl, "desk@mail.example");
  EXPECT_EQ(around.State.Session.Channel, 1);
  EXPECT_EQ(around.State.View.Resolution, 1);
  EXPECT_EQ(around.State.View.ViewCenterX, 512 * 15);
  EXPECT_EQ(around.State.View.BullsViewX, 100 * 15);
  EXPECT_EQ(around.State.View.BullsViewY, (1024 - 200) * 15);
  EXPECT_EQ(around.State.Session.Bull.Y, 1024 - 200);
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path / "TAPES"));
  EXPECT_FALSE(folder.Has("KESTREL.probe"));
}

TEST_F(Life, TheFriendlyListIsTheFileOnlyWithAutoFriends) {
  EXPECT_TRUE(Start());
  ASSERT_EQ(around.State.Plots.FriendlyList.UpperBound(), 3u);
  EXPECT_EQ(around.State.Plots.FriendlyList[3], " Falcon ");

  folder.Write("KESTREL.ini", "[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\n[OPTIONS]\nAUTOFRIENDS=0\nBULLSEYEVISIBLE=0\n");
  EXPECT_TRUE(around.State.View.BullseyeVisible);
  EXPECT_TRUE(Start());
  EXPECT_TRUE(around.State.Plots.FriendlyList.Empty());
  EXPECT_FALSE(around.State.View.BullseyeVisible);
}

TEST_F(Life, APictureOutsideTheFolderOfTheTheatersEndsTheStartAsOneThatCannotBeRead) {
  folder.Write("outside.bmp", TinyBmp(2));
  folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\n");
  const std::string outside = (folder.Path / "outside.bmp").string();
  folder.Write("Theaters/korea.ini", "[MAP]\nNAME=korea\nSIZE=1024\nPICSIZE=2\nPIC=" + outside + "\n");
  ExpectStartFailure("Main");
  EXPECT_THAT(folder.Read("KESTRELLog.txt"),
              HasSubstr("Load the theater picture: the name " + outside + " leaves the folder of the theaters"));
}

TEST_F(Life, ATheaterWhoseFileIsGoneIsLeftOutAndTold) {
  std::filesystem::remove(folder.Path / "Theaters/korea.ini");
  EXPECT_TRUE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The theater file korea.ini is gone. Its theater is left out.");
  EXPECT_EQ(around.State.Catalogue.Theaters.UpperBound(), 1u);
  EXPECT_EQ(around.State.Catalogue.Current().Name, "balkans") << "the first that is there is current";
  EXPECT_EQ(around.State.MapPicture.Width, 3);
  Close(around.All);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("TOTALMAPS=1\r\nMAP1=balkans.ini\r\nCURRENTMAP=1\r\n"));
  EXPECT_FALSE(folder.Has("Theaters/korea.ini"));
}

TEST_F(Life, TheaterFilesThatAreGoneAreToldInOneBox) {
  folder.Write("KESTREL.ini",
               "[MAPS]\nTOTALMAPS=9\nMAP1=a.ini\nMAP2=b.ini\nMAP3=balkans.ini\nMAP4=c.ini\nMAP5=korea.ini\n"
               "MAP6=d.ini\nMAP7=e.ini\nMAP8=f.ini\nMAP9=g.ini\nCURRENTMAP=5\n");
  EXPECT_TRUE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "The theater files a.ini, b.ini, c.ini, d.ini, e.ini and 2 more are gone. Their theaters are left out.");
  EXPECT_EQ(around.State.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(around.State.Catalogue.Current().Name, "korea") << "the current one is there and stays";
}

TEST_F(Life, AListOfWhichNoFileIsThereEndsTheStart) {
  std::filesystem::remove(folder.Path / "Theaters/korea.ini");
  std::filesystem::remove(folder.Path / "Theaters/balkans.ini");
  ExpectStartFailure("Main");
}

TEST_F(Life, APictureThatIsGoneEndsTheStartThoughAnotherTheaterIsThere) {
  std::filesystem::remove(folder.Path / "Theaters/korea.bmp");
  ExpectStartFailure("Main");
}

TEST_F(Life, WithoutDebugNoLogIsWritten) {
  EXPECT_TRUE(Start());
  EXPECT_FALSE(around.Log.On());
  EXPECT_FALSE(folder.Has("KESTRELLog.txt"));
  Close(around.All);
  EXPECT_FALSE(folder.Has("KESTRELLog.txt"));
}

TEST_F(Life, WithDebugTheLogBeginsWithWhatWasPutRight) {
  folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=5\nMAP1=korea.ini\nCURRENTMAP=9\n");
  folder.Write("KESTRELLog.txt", "former");
  EXPECT_TRUE(Start());
  EXPECT_TRUE(around.Log.On());
  const std::string log = folder.Read("KESTRELLog.txt");
  EXPECT_THAT(log, HasSubstr("MAP2"));
  EXPECT_THAT(log, HasSubstr("CURRENTMAP"));
  EXPECT_THAT(log, HasSubstr("Loaded the map picture in 0 ms"));
  EXPECT_THAT(log, Not(HasSubstr("former")));
}

TEST_F(Life, ALogThatCannotBeOpenedCostsNothingElse) {
  folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n");
  std::filesystem::create_directory(folder.Path / "KESTRELLog.txt");
  EXPECT_TRUE(Start());
  EXPECT_FALSE(around.Log.On());
  EXPECT_THAT(around.State.Notes, ElementsAre(HasSubstr("No log is written")));
}

TEST_F(Life, TheUpdaterIsStartedWhenTheFileDoesNotForbidIt) {
  EXPECT_TRUE(Start());
  EXPECT_THAT(around.Desk.Files, IsEmpty());
  std::filesystem::remove(folder.Path / "common.ini");
  EXPECT_TRUE(Start());
  ASSERT_THAT(around.Desk.Files, SizeIs(1));
  EXPECT_EQ(base::PathOfText(around.Desk.Files[0].File), folder.Path / "ravenfix.exe");
  EXPECT_EQ(around.Desk.Files[0].Argument, "-s");
  EXPECT_EQ(base::PathOfText(around.Desk.Files[0].Folder), folder.Path / "");
}

TEST_F(Life, AMissingUpdateTextEndsTheStart) {
  std::filesystem::remove(folder.Path / "update.txt");
  ExpectStartFailure("Main");
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

TEST_F(Life, AMissingMapPictureEndsTheStart) {
  std::filesystem::remove(folder.Path / "Theaters/korea.bmp");
  ExpectStartFailure("Main");
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

TEST_F(Life, ABrokenMapPictureEndsTheStart) {
  for (const std::string& bytes : {std::string(), std::string("BM"), TinyBmp(2).substr(0, 60), std::string(500, 'x')}) {
    around.Desk.Boxes.clear();
    folder.Write("Theaters/korea.bmp", bytes);
    ExpectStartFailure("Main");
  }
}

TEST_F(Life, AMainFileThatCannotBeReadEndsTheStart) {
  std::filesystem::resize_file(folder.Path / "KESTREL.ini", base::MaxTextFileBytes + 1);
  ExpectStartFailure("LoadSavedVars");
}

TEST_F(Life, AFriendsFileThatCannotBeReadEndsTheStart) {
  std::filesystem::resize_file(folder.Path / "FriendlyNames.ini", base::MaxTextFileBytes + 1);
  ExpectStartFailure("LoadFriendsDef");
}

TEST_F(Life, AFailureWhileTheWindowsLoadEndsTheStart) {
  around.Shown.WhenShown = [] { throw std::runtime_error("no window"); };
  ExpectStartFailure("Main");
}

TEST_F(Life, AFailedStartSavesNothing) {
  const std::string before = folder.Read("KESTREL.ini");
  std::filesystem::remove(folder.Path / "Theaters/korea.bmp");
  EXPECT_FALSE(Start());
  EXPECT_EQ(folder.Read("KESTREL.ini"), before);
}

TEST_F(Life, WithoutTheatersABoxSaysSoAndTheStartEnds) {
  for (const std::string_view text : {"", "[MAPS]\nTOTALMAPS=0\n", "[MAPS]\nTOTALMAPS=3\n", "[MAPS]\nTOTALMAPS=-2\n",
                                      "[MAPS]\nTOTALMAPS=1\nMAP1=../korea.ini\n"}) {
    around.Desk.Boxes.clear();
    folder.Write("KESTREL.ini", text);
    EXPECT_FALSE(Start());
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1)) << text;
    EXPECT_EQ(around.Desk.Boxes[0].Title, "KESTRELS v1.0");
    EXPECT_EQ(around.Desk.Boxes[0].Text, "No Theaters are installed. Exiting now...");
  }
}

TEST_F(Life, ADamagedViewFileCostsTheViewsNotTheStart) {
  folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n");
  std::string bytes = "ViewShort File v3";
  bytes.resize(100, ' ');
  folder.Write("Theaters/korea_ViewShort.dat", bytes + "short");
  EXPECT_TRUE(Start());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_EQ(around.State.View.ViewShorts[0].ViewCenterX, 512 * 15);
  EXPECT_EQ(around.State.View.ViewShorts[2].Resolution, 1);
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("saved views"));
  Close(around.All);
  EXPECT_EQ(folder.Read("Theaters/korea_ViewShort.dat.old"), bytes + "short");
}

TEST_F(Life, AViewFileOfAnotherKindIsKeptWhenItIsSavedOver) {
  const std::string other = "ViewShort File v9" + std::string(155, ' ');
  folder.Write("Theaters/korea_ViewShort.dat", other);
  EXPECT_TRUE(Start());
  EXPECT_EQ(around.State.View.ViewShorts[0].ViewCenterX, 512 * 15);
  Close(around.All);
  EXPECT_EQ(folder.Read("Theaters/korea_ViewShort.dat.old"), other);
  EXPECT_EQ(folder.Read("Theaters/korea_ViewShort.dat").size(), 172U);
}

TEST_F(Life, SavedViewsComeBackAtTheNextStart) {
  EXPECT_TRUE(Start());
  around.State.View.ViewShorts[2] = {150, 300, 4};
  Close(around.All);
  Around next(folder.Path);
  next.Shown.WhenShown = [&next] { RunSteps(MapLoadSteps(), next.All); };
  EXPECT_TRUE(Main(next.All));
  EXPECT_EQ(next.State.View.ViewShorts[2].ViewCenterX, 150);
  EXPECT_EQ(next.State.View.ViewShorts[2].ViewCenterY, 300);
  EXPECT_EQ(next.State.View.ViewShorts[2].Resolution, 4);
  Close(next.All);
  EXPECT_FALSE(folder.Has("Theaters/korea_ViewShort.dat.old"));
}

TEST_F(Life, TheClosingSavesThenUnloads) {
  EXPECT_TRUE(Start());
  around.Raw.Open(folder.Path / "debug_out.dat");
  around.Shown.Calls.clear();
  around.State.LinkOptions.CONNPORT = 6100;
  std::string savedAtUnload;
  const auto unload = around.Shown.WhenUnloaded;
  around.Shown.WhenUnloaded = [&] {
    savedAtUnload = folder.Read("KESTREL.ini");
    unload();
  };
  Close(around.All);
  EXPECT_THAT(around.Shown.Calls, ElementsAre("saving message", "UnloadWindows"));
  EXPECT_THAT(savedAtUnload, HasSubstr("CONNPORT=6100"));
  EXPECT_FALSE(around.Raw.IsOpen());
  EXPECT_TRUE(around.State.MapPicture.Empty());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(Life, TheClosingLeavesTheServerAfterTheLogIsClosed) {
  folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n");
  EXPECT_TRUE(Start());
  around.Link.ConnectTo("server");
  around.WS1.Accept();
  around.WS1.Log.clear();
  const std::string log = folder.Read("KESTRELLog.txt");
  EXPECT_THAT(log, HasSubstr("NAWACS"));
  Close(around.All);
  EXPECT_THAT(around.WS1.Log, ElementsAre("send AWAEND", "close"));
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), Not(HasSubstr("AWAEND")));
}

TEST_F(Life, AFailedSaveIsToldAndTheClosingGoesOn) {
  EXPECT_TRUE(Start());
  std::filesystem::remove(folder.Path / "KESTREL.ini");
  std::filesystem::create_directories(folder.Path / "KESTREL.ini/in the way");
  around.Shown.Calls.clear();
  Close(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("save the settings"));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("KESTREL.ini"));
  EXPECT_THAT(around.Shown.Calls, ElementsAre("saving message", "no saving message", "UnloadWindows"));
}

TEST_F(Life, KeptViewsThatCannotBeSavedAreToldAsSuch) {
  EXPECT_TRUE(Start());
  std::filesystem::create_directories(folder.Path / "Theaters/korea_ViewShort.dat/in the way");
  Close(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(
      around.Desk.Boxes[0].Text,
      "The station could not save the kept views: korea_ViewShort.dat cannot be written.\n\nThe closing goes on.");
}

}  // namespace
}  // namespace kestrel::core
