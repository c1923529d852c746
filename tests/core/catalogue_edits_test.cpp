#include "core/catalogue_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "base/picture_files.h"
#include "base/program_title.h"
#include "core/settings.h"
#include "core/theater_switch.h"
#include "falcon/campaign_bytes.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Answer;
using base::Changed;
using base::MessageButtons;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class CatalogueEdits : public testing::Test {
 protected:
  CatalogueEdits() {
    WriteInstallation(folder);
    EXPECT_TRUE(Begin(around));
    around.Shown.Refreshes.clear();
  }

  static bool Begin(Around& station) {
    station.Shown.WhenShown = [&station] { RunSteps(MapLoadSteps(), station.All); };
    return Main(station.All);
  }
  theaters::Theater& Korea() { return station.Catalogue.Theaters[1]; }
  TheaterEdit NewOne(const std::string& name) {
    TheaterEdit edit;
    edit.Details = {name, 512, 34, 125};
    edit.Default = {"", 10, 20};
    edit.Held = base::BlankPicture(4);
    return edit;
  }
  TheaterEdit OfKorea() {
    TheaterEdit edit;
    edit.Index = 1;
    edit.Details = {"Korea tonight", 800, 1.5, -2.5};
    return edit;
  }
  void ExpectBox(const std::string& title, const std::string& text, MessageButtons buttons = MessageButtons::Ok) {
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, title);
    EXPECT_EQ(around.Desk.Boxes[0].Text, text);
    EXPECT_EQ(around.Desk.Boxes[0].Buttons, buttons);
    EXPECT_EQ(around.Desk.Boxes[0].Enter, buttons == MessageButtons::YesNo ? Answer::No : Answer::Ok);
    around.Desk.Boxes.clear();
  }
  bool Refreshed(Changed what) { return around.Shown.Refreshes.size() == 1 && Has(around.Shown.Refreshes[0], what); }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(CatalogueEdits, NewTheaterIsStoredWithItsPicture) {
  ASSERT_TRUE(StoreTheater(around.All, NewOne("a/b")));
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
  EXPECT_EQ(station.Catalogue.Theaters[3].Name, "a/b");
  EXPECT_EQ(station.Catalogue.Theaters[3].PicSize, 4);
  EXPECT_EQ(station.Catalogue.Theaters[3].Bulls[1].Y, 20);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
  EXPECT_EQ(folder.Read("Theaters/ab.gif").substr(0, 3), "GIF");
  EXPECT_EQ(base::LoadPicture(folder.Path / "Theaters/ab.gif").Width, 4);
  ReloadEditedTheater(around.All);
  EXPECT_THAT(folder.Read("Theaters/ab.ini"), HasSubstr("NAME=a/b\r\nDISPLNAME=a/b\r\nPIC=ab.gif\r\nSIZE=512\r\n"));
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("MAP3=ab.ini\r\n"));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(CatalogueEdits, NewTheaterWithASlashHasItsDataFilesInAFolder) {
  ASSERT_TRUE(StoreTheater(around.All, NewOne("a/b")));
  SwitchTheater(around.All, 3);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 3);
  SwitchTheater(around.All, 1);
  EXPECT_TRUE(folder.Has("Theaters/a/b_ViewShort.dat"));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(CatalogueEdits, NameThatNoFileMayHoldIsKeptWithItsSettingsAndViews) {
  for (const char* name : {"Op: Korea", "???", "/x", "../x", "A:b"}) {
    SCOPED_TRACE(name);
    const ProgramFolder own;
    WriteInstallation(own);
    {
      Around now(own.Path);
      ASSERT_TRUE(Begin(now));
      ASSERT_TRUE(StoreTheater(now.All, NewOne(name)));
      SwitchTheater(now.All, 3);
      now.State.View.ViewShorts[1] = {150, 300, 4};
      SwitchTheater(now.All, 1);
      EXPECT_NE(now.State.View.ViewShorts[1].ViewCenterX, 150);
      SwitchTheater(now.All, 3);
      EXPECT_EQ(now.State.View.ViewShorts[1].ViewCenterX, 150);
      now.State.View.ViewShorts[2] = {450, 600, 2};
      Close(now.All);
      EXPECT_THAT(now.Desk.Boxes, IsEmpty()) << now.Desk.Boxes.front().Text;
    }
    Around next(own.Path);
    ASSERT_TRUE(Begin(next));
    EXPECT_EQ(next.State.Catalogue.Current().Name, name);
    EXPECT_EQ(next.State.Catalogue.Current().DisplayName, name);
    EXPECT_EQ(next.State.View.ViewShorts[1].ViewCenterX, 150);
    EXPECT_EQ(next.State.View.ViewShorts[2].Resolution, 2);
    const std::filesystem::path views =
        TheaterPath(next.State, theaters::DataFile(next.State.Catalogue.Current(), "_ViewShort.dat"));
    EXPECT_TRUE(std::filesystem::exists(views));
    SwitchTheater(next.All, 1);
    next.Desk.Answers = {Answer::Yes};
    ASSERT_TRUE(DeleteTheater(next.All, 3));
    EXPECT_FALSE(std::filesystem::exists(views));
  }
}

TEST_F(CatalogueEdits, FileOfADeletedTheaterThatStaysIsLogged) {
#ifdef __linux__
  // A file that nobody, the administrator included, can delete.
  std::filesystem::create_directory_symlink("/proc/self", folder.Path / "Theaters/x");
  station.Catalogue.Theaters[2].Pic = "x/status";
  around.Log.File.Open(folder.Path / "log");
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(DeleteTheater(around.All, 2));
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"), "The file x/status of the deleted theater Balkans could not be deleted\r\n");
#else
  GTEST_SKIP() << "no file here that nobody can delete";
#endif
}

TEST_F(CatalogueEdits, SecondTheaterOfANameHasFilesOfItsOwn) {
  ASSERT_TRUE(StoreTheater(around.All, NewOne("korea")));
  EXPECT_EQ(station.Catalogue.Theaters[3].TheaterFile, "korea(1).ini");
  EXPECT_EQ(station.Catalogue.Theaters[3].Pic, "korea.gif");
  ReloadEditedTheater(around.All);
  ASSERT_TRUE(StoreTheater(around.All, NewOne("korea")));
  EXPECT_EQ(station.Catalogue.Theaters[4].TheaterFile, "korea(2).ini");
  EXPECT_EQ(station.Catalogue.Theaters[4].Pic, "korea(1).gif");
}

TEST_F(CatalogueEdits, EditedTheaterKeepsNameAndPicture) {
  const std::string before = folder.Read("Theaters/korea.bmp");
  ASSERT_TRUE(StoreTheater(around.All, OfKorea()));
  EXPECT_EQ(Korea().DisplayName, "Korea tonight");
  EXPECT_EQ(Korea().Name, "korea");
  EXPECT_EQ(Korea().PicSize, 2);
  EXPECT_EQ(Korea().Size, 800);
  EXPECT_EQ(Korea().CoordLong, -2.5);
  EXPECT_EQ(folder.Read("Theaters/korea.bmp"), before);
  ReloadEditedTheater(around.All);
  EXPECT_EQ(station.View.Size, 800);
  EXPECT_TRUE(Refreshed(Changed::Map));
  EXPECT_TRUE(Refreshed(Changed::NameMenus));
  EXPECT_THAT(folder.Read("Theaters/korea.ini"), HasSubstr("DISPLNAME=Korea tonight\r\n"));
}

TEST_F(CatalogueEdits, HeldPictureReplacesTheFormerOne) {
  TheaterEdit edit = OfKorea();
  edit.Held = base::BlankPicture(7);
  ASSERT_TRUE(StoreTheater(around.All, edit));
  EXPECT_EQ(Korea().PicSize, 7);
  EXPECT_EQ(Korea().Pic, "korea.bmp");
  EXPECT_EQ(folder.Read("Theaters/korea.bmp").substr(0, 3), "GIF");
  ReloadEditedTheater(around.All);
  EXPECT_EQ(station.MapPicture.Width, 7);
}

TEST_F(CatalogueEdits, EditingAnotherTheaterReloadsTheCurrentOneWhole) {
  TheaterEdit edit = OfKorea();
  edit.Index = 2;
  station.View.Resolution = 8;
  ASSERT_TRUE(StoreTheater(around.All, edit));
  ReloadEditedTheater(around.All);
  EXPECT_EQ(station.View.Resolution, 1);
  EXPECT_EQ(station.View.Size, 1024);
}

TEST_F(CatalogueEdits, TheaterThatCannotBeTakenIsToldAndNothingChanges) {
  TheaterEdit nameless = NewOne("");
  EXPECT_FALSE(StoreTheater(around.All, nameless));
  ExpectBox("Error", "Theater needs a name...");
  for (const double size : {0.0, 8193.0}) {
    TheaterEdit edit = OfKorea();
    edit.Details.Size = size;
    EXPECT_FALSE(StoreTheater(around.All, edit));
    ExpectBox("Error", "The size of a theater must lie between 1 and 8192.");
  }
  TheaterEdit far = NewOne("Far");
  far.Default.X = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(StoreTheater(around.All, far));
  ExpectBox("Error", "X and Y of a bullseye must lie between -100000 and 100000.");
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(Korea().DisplayName, "Korea");
  EXPECT_FALSE(folder.Has("Theaters/Far.gif"));
}

TEST_F(CatalogueEdits, PictureThatCannotBeSavedChangesNothing) {
  std::filesystem::create_directories(folder.Path / "Theaters/Taken.gif.new");
  EXPECT_FALSE(StoreTheater(around.All, NewOne("Taken")));
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, StartsWith("The theater could not be stored: "));
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_FALSE(folder.Has("Theaters/Taken.gif"));
}

TEST_F(CatalogueEdits, PictureOfATheaterThatNamesNoneIsToldAsSuch) {
  for (const char* pic : {"", ".", "x/.."}) {
    Korea().Pic = pic;
    TheaterEdit edit = OfKorea();
    edit.Held = base::BlankPicture(7);
    EXPECT_FALSE(StoreTheater(around.All, edit));
    ExpectBox(base::ProgramTitle(),
              "The theater could not be stored: its settings file korea.ini names no picture (PIC) that could be "
              "written.");
    EXPECT_EQ(Korea().DisplayName, "Korea");
    EXPECT_EQ(Korea().PicSize, 2);
  }
}

TEST_F(CatalogueEdits, PictureIsNotStoredOutsideTheFolder) {
  folder.Write("outside.gif", "mine");
  for (const std::string& pic : {std::string("../outside.gif"), (folder.Path / "outside.gif").string(),
                                 (folder.Path / "Theaters/../outside.gif").string()}) {
    Korea().Pic = pic;
    TheaterEdit edit = OfKorea();
    edit.Held = base::BlankPicture(7);
    EXPECT_FALSE(StoreTheater(around.All, edit));
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("leaves"));
    around.Desk.Boxes.clear();
    EXPECT_EQ(folder.Read("outside.gif"), "mine");
  }
}

TEST_F(CatalogueEdits, PictureThatCannotBeLoadedIsToldAndTheFormerStays) {
  folder.Write("Theaters/korea.bmp", "no picture");
  ASSERT_TRUE(StoreTheater(around.All, OfKorea()));
  ReloadEditedTheater(around.All);
  ExpectBox("Error",
            "An error ocurred while loading the initialization files for this Theater. Please check these files, or "
            "reinstall the program. The former picture stays in use.");
  EXPECT_EQ(station.MapPicture.Width, 2);
  EXPECT_EQ(station.View.Size, 800) << "the view fits what was entered";
  EXPECT_TRUE(Refreshed(Changed::Map));
}

TEST_F(CatalogueEdits, CurrentTheaterCannotBeDeleted) {
  EXPECT_FALSE(DeleteTheater(around.All, 1));
  ExpectBox("Theater delete...",
            "The Theater you selected is the currently active Theater. This Theater can't be deleted.");
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_TRUE(folder.Has("Theaters/korea.ini"));
}

TEST_F(CatalogueEdits, TheaterIsDeletedOnYesOnly) {
  for (const Answer answer : {Answer::No, Answer::Cancel, Answer::Yes}) {
    around.Desk.Answers = {answer};
    EXPECT_EQ(DeleteTheater(around.All, 2), answer == Answer::Yes);
    ExpectBox("Theater delete...", "Are you sure you want to delete the Balkans Theater?", MessageButtons::YesNo);
    EXPECT_EQ(folder.Has("Theaters/balkans.ini"), answer != Answer::Yes);
    EXPECT_EQ(folder.Has("Theaters/balkans.bmp"), answer != Answer::Yes);
  }
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 1u);
  EXPECT_TRUE(Refreshed(Changed::NameMenus));
}

TEST_F(CatalogueEdits, DeletedTheaterIsOffTheListOfTheNextStartAtOnce) {
  station.LinkOptions.CONNPORT = 6200;
  around.Desk.Answers = {Answer::Yes};
  ASSERT_TRUE(DeleteTheater(around.All, 2));
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("TOTALMAPS=1\r\nMAP1=korea.ini\r\nCURRENTMAP=1\r\n"));
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6200\r\n"));
  EXPECT_FALSE(folder.Has("Theaters/balkans.ini")) << "saving brings no file back";
  // The station is killed: the next one finds its list in order.
  Around next(folder.Path);
  ASSERT_TRUE(Begin(next));
  EXPECT_THAT(next.Desk.Boxes, IsEmpty());
  EXPECT_THAT(next.State.Notes, IsEmpty());
}

TEST_F(CatalogueEdits, DeletionThatCannotBeSavedIsTold) {
  std::filesystem::remove(folder.Path / "KESTREL.ini");
  std::filesystem::create_directories(folder.Path / "KESTREL.ini/in the way");
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(DeleteTheater(around.All, 2));
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_EQ(around.Desk.Boxes[1].Text, "The settings could not be saved: KESTREL.ini cannot be written.");
  EXPECT_TRUE(Refreshed(Changed::NameMenus));
}

TEST_F(CatalogueEdits, DeletingTheTheaterBelowKeepsTheSameOneCurrent) {
  SwitchTheater(around.All, 2);
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(DeleteTheater(around.All, 1));
  EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
}

TEST_F(CatalogueEdits, MapImageIsMadeSquare) {
  folder.Write("map.bmp", test::Bmp(800, 1000, 24, "", std::string(800 * 3 * 1000, '\x40')));
  const auto picture = OpenMapImage(around.All, folder.Path / "map.bmp");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width, 1000);
  EXPECT_EQ(picture->Height, 1000);
  TheaterEdit edit = NewOne("Tall");
  edit.Held = *picture;
  ASSERT_TRUE(StoreTheater(around.All, edit));
  EXPECT_EQ(station.Catalogue.Theaters[3].PicSize, 1000);
  EXPECT_EQ(base::LoadPicture(folder.Path / "Theaters/Tall.gif").Height, 1000);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(CatalogueEdits, MapImageGetsAMarginWhereThatIsAskedFor) {
  folder.Write("map.bmp", test::Bmp(800, 1000, 24, "", std::string(800 * 3 * 1000, '\x40')));
  const auto edge = [this] {
    const auto picture = OpenMapImage(around.All, folder.Path / "map.bmp");
    EXPECT_TRUE(picture && picture->Width == 1000 && picture->Height == 1000);
    // Blue of the pixels 799 and 800 of the upper row.
    return std::pair(int{picture->Pixels[799 * 4]}, int{picture->Pixels[800 * 4]});
  };
  EXPECT_EQ(edge(), std::pair(0x40, 0x40)) << "stretched";
  station.Extras.PICTUREMARGIN = true;
  EXPECT_EQ(edge(), std::pair(0x40, 0));
}

TEST_F(CatalogueEdits, ImageThatCannotBeLoadedIsTold) {
  for (const std::string& bytes : {std::string(), std::string("no picture"), TinyBmp(2).substr(0, 60)}) {
    folder.Write("map.bmp", bytes);
    EXPECT_FALSE(OpenMapImage(around.All, folder.Path / "map.bmp"));
    ExpectBox(base::ProgramTitle(), "Error loading image file.");
  }
  EXPECT_FALSE(OpenMapImage(around.All, folder.Path / "missing.bmp"));
  ExpectBox(base::ProgramTitle(), "Error loading image file.");
  EXPECT_FALSE(OpenMapImage(around.All, folder.Path));
}

TEST_F(CatalogueEdits, CornerIsReadFromAMapFile) {
  folder.Write("theater.map", std::string(1104, 'x') + std::string("\0\0\xFA\x42\0\0\x0A\x42", 8));
  const auto corner = OpenMapFile(around.All, folder.Path / "theater.map");
  ASSERT_TRUE(corner);
  EXPECT_EQ(corner->Lat, 34.5);
  EXPECT_EQ(corner->Long, 125);
}

TEST_F(CatalogueEdits, MapFileThatIsTooShortIsTold) {
  folder.Write("theater.map", std::string(1100, 'x'));
  EXPECT_FALSE(OpenMapFile(around.All, folder.Path / "theater.map"));
  ExpectBox(base::ProgramTitle(), "The corner cannot be read from \"theater.map\": the file ends too early.");
}

TEST_F(CatalogueEdits, NewBullseyeBecomesCurrentAndIsPlaced) {
  EXPECT_TRUE(StoreBullseye(around.All, 0, {"Third", 500.5, 100}));
  EXPECT_EQ(Korea().CurrentBull, 3);
  EXPECT_EQ(Korea().Bulls[3].Name, "Third");
  EXPECT_EQ(station.View.BullsViewX, 500.5 * 15);
  EXPECT_EQ(station.Session.Bull.Y, 924);
  EXPECT_TRUE(Refreshed(Changed::Map));
  EXPECT_TRUE(Refreshed(Changed::NameMenus));
}

TEST_F(CatalogueEdits, EditedBullseyeIsWrittenInPlace) {
  EXPECT_TRUE(StoreBullseye(around.All, 1, {"Moved", 10, 20}));
  EXPECT_EQ(Korea().CurrentBull, 1);
  EXPECT_EQ(Korea().Bulls.UpperBound(), 2u);
  EXPECT_EQ(station.View.BullsViewX, 150);
  EXPECT_TRUE(StoreBullseye(around.All, 2, {"Other", 1, 2}));
  EXPECT_EQ(Korea().CurrentBull, 1) << "editing does not make it current";
  EXPECT_EQ(station.View.BullsViewX, 150);
}

TEST_F(CatalogueEdits, BullseyeThatCannotBeTakenIsTold) {
  EXPECT_FALSE(StoreBullseye(around.All, 0, {"Far", 1e9, 0}));
  ExpectBox("Error", "X and Y of a bullseye must lie between -100000 and 100000.");
  while (Korea().Bulls.UpperBound() < 32767) Korea().Bulls.Append({});
  EXPECT_FALSE(StoreBullseye(around.All, 0, {"Too many", 0, 0}));
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, StartsWith("The bullseye could not be stored: "));
  EXPECT_EQ(Korea().CurrentBull, 1);
}

TEST_F(CatalogueEdits, CurrentBullseyeCannotBeDeleted) {
  EXPECT_FALSE(DeleteBullseye(around.All, 1));
  ExpectBox("Bullseye delete...",
            "The Bullseye you selected is the currently active Bullseye. This Bullseye can't be deleted.");
  EXPECT_EQ(Korea().Bulls.UpperBound(), 2u);
}

TEST_F(CatalogueEdits, BullseyeIsDeletedOnYesOnly) {
  SelectBullseye(around.All, 2);
  for (const Answer answer : {Answer::No, Answer::Cancel, Answer::Yes}) {
    around.Desk.Answers = {answer};
    EXPECT_EQ(DeleteBullseye(around.All, 1), answer == Answer::Yes);
    ExpectBox("Bullseye delete...", "Are you sure you want to delete the Anvil Bullseye?", MessageButtons::YesNo);
  }
  ASSERT_EQ(Korea().Bulls.UpperBound(), 1u);
  EXPECT_EQ(Korea().Bulls[1].Name, "Hammer");
  EXPECT_EQ(Korea().CurrentBull, 1);
  EXPECT_TRUE(Refreshed(Changed::NameMenus));
}

TEST_F(CatalogueEdits, BullseyeOfACampaignIsNamedAsItsFileAndCurrent) {
  for (const char* name : {"save0.cam", "Ground.TAC", "03 training.trn"}) {
    folder.Write(name, test::CampaignBytes({.X = 585, .Y = 821}));
    EXPECT_TRUE(AddCampaignBullseye(around.All, folder.Path / name)) << name;
    const theaters::Bullseye& bullseye = Korea().Bulls[static_cast<std::size_t>(Korea().CurrentBull)];
    EXPECT_EQ(bullseye.Name, name);
    EXPECT_EQ(bullseye.X, 585);
    EXPECT_EQ(bullseye.Y, 821);
  }
  EXPECT_EQ(Korea().Bulls.UpperBound(), 5u);
  EXPECT_EQ(station.View.BullsViewX, 585 * 15);
  EXPECT_TRUE(Has(around.Shown.Refreshes.back(), Changed::NameMenus));
}

TEST_F(CatalogueEdits, CampaignThatCannotBeReadLeavesTheList) {
  folder.Write("bad.cam", "no campaign");
  EXPECT_FALSE(AddCampaignBullseye(around.All, folder.Path / "bad.cam"));
  ExpectBox(base::ProgramTitle(), "The bullseye cannot be read from \"bad.cam\": it is no campaign file.");
  EXPECT_FALSE(AddCampaignBullseye(around.All, folder.Path / "missing.cam"));
  EXPECT_EQ(Korea().Bulls.UpperBound(), 2u);
  EXPECT_EQ(Korea().CurrentBull, 1);
  EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
}

}  // namespace
}  // namespace kestrel::core
