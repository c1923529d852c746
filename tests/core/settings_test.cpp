#include "core/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "base/failure.h"
#include "base/files.h"
#include "core/theater_data.h"
#include "project_paths.h"
#include "settings_texts.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Settings : public testing::Test {
 protected:
  Settings() {
    WriteInstallation(folder);
    station.AppPath = folder.Path;
  }
  /// Loads a station from a main file with one theater and `lines` behind it.
  void LoadWith(const std::string& lines) {
    folder.Write("KESTREL.ini", "[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n" + lines);
    LoadSavedVars(station);
  }

  ProgramFolder folder;
  Station station;
};

TEST_F(Settings, AFileWithOneTheaterGivesEveryDefault) {
  // The station holds other values before, so that each default is really read.
  folder.Write("KESTREL.ini", ChangedFile);
  LoadSavedVars(station);
  folder.Write("KESTREL.ini", "[MAPS]\r\nTOTALMAPS=1\r\nMAP1=korea.ini\r\nCURRENTMAP=1\r\n");
  LoadSavedVars(station);
  SaveVars(station);
  EXPECT_EQ(folder.Read("KESTREL.ini"), Dos(DefaultFile));
  EXPECT_THAT(station.Notes, IsEmpty());
}

TEST_F(Settings, EveryKeyIsReadAndWrittenInItsOrderAndForm) {
  folder.Write("KESTREL.ini", ChangedFile);
  LoadSavedVars(station);
  EXPECT_THAT(station.Notes, IsEmpty());
  SaveVars(station);
  EXPECT_EQ(folder.Read("KESTREL.ini"), Dos(ChangedFile));
}

TEST_F(Settings, AMainFileInWideCharactersIsRead) {
  std::string wide = "\xFF\xFE";
  for (const char letter : Dos(ChangedFile)) {
    wide += letter;  // the file is plain ASCII, which stands in the low byte
    wide += '\0';
  }
  folder.Write("KESTREL.ini", wide);
  LoadSavedVars(station);
  EXPECT_THAT(station.Notes, IsEmpty());
  SaveVars(station);
  EXPECT_EQ(folder.Read("KESTREL.ini"), Dos(ChangedFile));
}

TEST_F(Settings, KeysReachTheFieldsOfTheirNames) {
  folder.Write("KESTREL.ini", ChangedFile);
  LoadSavedVars(station);
  EXPECT_TRUE(station.DebugLog);
  EXPECT_EQ(station.LinkOptions.CONNPORT, 70000);
  EXPECT_EQ(station.LinkOptions.AICOLOR, 1u);
  EXPECT_FALSE(station.LinkOptions.AUTOFRIENDS);
  EXPECT_FALSE(station.LinkOptions.BULLSEYEVISIBLE);
  const ToolWindowState& bulls = station.ToolWindows[static_cast<std::size_t>(ToolWindow::Bulls)];
  EXPECT_EQ(bulls.X, -15);
  EXPECT_EQ(bulls.Y, 30);
  EXPECT_FALSE(bulls.Minimized);
  EXPECT_TRUE(bulls.Hidden);
  EXPECT_EQ(bulls.Transparency, 0);
  EXPECT_EQ(station.ToolWindows[static_cast<std::size_t>(ToolWindow::Curs)].X, 105);
  EXPECT_EQ(station.ToolWindows[static_cast<std::size_t>(ToolWindow::MiniMap)].Transparency, 7);
  EXPECT_EQ(station.MapOptions.CURSOR_TEXT_COOR, 6u);
  EXPECT_EQ(station.MapOptions.MINIMAPSCALE, 9);
  EXPECT_EQ(station.MapOptions.AIRF_ILS_DIST, 12.34568);
  EXPECT_EQ(station.MapOptions.AIRF_ILS_COL[3], 13u);
  EXPECT_EQ(station.MapOptions.ILS_LABEL_FONT.Color, 14u);
  EXPECT_EQ(station.MapOptions.TACAN_LABEL_FONT.FontName, "Courier New");
  EXPECT_EQ(station.MapOptions.CURSOR_FONT.FontSize, 12.5F);
  EXPECT_EQ(station.Editors.AREAPOINTFPTOP, -8);
  EXPECT_EQ(station.ShortcutKeys[21], 700067);
  EXPECT_EQ(station.VoiceWindowName, "Voice");
  ASSERT_EQ(station.LinkOptions.ConnList.UpperBound(), 2u);
  EXPECT_EQ(station.LinkOptions.ConnList[2].Name, "Home");
  EXPECT_EQ(station.LinkOptions.ConnList[2].Ip, "relay.example");
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
}

TEST_F(Settings, AFloatingWindowHasAPlaceWhenEitherOfItsKeysIsThere) {
  const auto placed = [this](ToolWindow which) { return station.ToolWindows[static_cast<std::size_t>(which)].Placed; };
  LoadWith("[OPTIONS]\nBULLFORMX=0\nBULLFORMY=0\nRECFORMX=0\nVIEWFORMY=15\nAREASFORMX=\nAREASFORMY=\nFREQFORMMIN=0\n");
  for (const ToolWindow which : {ToolWindow::Bulls, ToolWindow::Rec, ToolWindow::View}) EXPECT_TRUE(placed(which));
  for (const ToolWindow which : {ToolWindow::Areas, ToolWindow::Freq, ToolWindow::Curs}) EXPECT_FALSE(placed(which));
  LoadWith("");
  EXPECT_FALSE(placed(ToolWindow::Bulls)) << "of the file before";
  SaveVars(station);
  LoadSavedVars(station);
  EXPECT_TRUE(placed(ToolWindow::Bulls)) << "a save writes every place";
}

TEST_F(Settings, AShortcutStoredAsZeroTakesItsDefaultWhenItIsRead) {
  folder.Write("KESTREL.ini", "[SHORTCUTS]\nKEY0=0\nKEY1=\nKEY18=0\nKEY21=88\nKEY22=none\n");
  LoadSavedVars(station);
  EXPECT_EQ(station.ShortcutKeys[0], 33);
  EXPECT_EQ(station.ShortcutKeys[1], 34);
  EXPECT_EQ(station.ShortcutKeys[18], 200049);
  EXPECT_EQ(station.ShortcutKeys[21], 88);
  EXPECT_EQ(station.ShortcutKeys[22], 112);
  station.ShortcutKeys[0] = 0;
  SaveVars(station);
  EXPECT_NE(folder.Read("KESTREL.ini").find("\r\nKEY0=0\r\n"), std::string::npos) << "written as it is";
  LoadSavedVars(station);
  EXPECT_EQ(station.ShortcutKeys[0], 33);
}

TEST_F(Settings, OnlyBoldOfTheAreaTitleFontSurvivesARestart) {
  map::FontRecord& font = station.MapOptions.AREAS_TITLE_FONT;
  LoadWith("");
  font = {
      .FontName = "Arial", .FontSize = 14, .FontBold = true, .FontItalic = true, .FontStrike = true, .FontUnder = true};
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("AREAS_TITLE_FONT_NAME=Arial\r\nAREAS_TITLE_FONT_SIZE=14.00\r\n"));
  LoadSavedVars(station);
  EXPECT_TRUE(font.FontBold);
  EXPECT_FALSE(font.FontItalic);
  EXPECT_EQ(font.FontName, "Verdana");
  EXPECT_EQ(font.FontSize, 10);
  EXPECT_FALSE(font.FontStrike);
  EXPECT_FALSE(font.FontUnder);
}

TEST_F(Settings, TheAreaTitleFontIsReadUnderItsOtherNames) {
  LoadWith(
      "[OPTIONS]\nAREAS_FONT_ITALIC=1\nAREAS_FONT_NAME=Arial\nAREAS_FONT_SIZE=7,5\nAREAS_FONT_STRIKE=1\n"
      "AREAS_FONT_UNDER=1\n");
  const map::FontRecord& font = station.MapOptions.AREAS_TITLE_FONT;
  EXPECT_TRUE(font.FontItalic && font.FontStrike && font.FontUnder);
  EXPECT_FALSE(font.FontBold);
  EXPECT_EQ(font.FontName, "Arial");
  EXPECT_EQ(font.FontSize, 7.5F);
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("AREAS_FONT_")));
}

TEST_F(Settings, ACommaEndsAPlainNumberAndIsTheDecimalSignOfAnInvariantOne) {
  LoadWith("[OPTIONS]\nAIRF_ILS_DIST=3,5\nCURSOR_FONT_SIZE=3,5\nILS_LABEL_COLOR=1,5\nMINIMAPSCALE=3,9\n");
  EXPECT_EQ(station.MapOptions.AIRF_ILS_DIST, 3);
  EXPECT_EQ(station.MapOptions.CURSOR_FONT.FontSize, 3.5F);
  EXPECT_EQ(station.MapOptions.ILS_LABEL_FONT.Color, 2u);
  EXPECT_EQ(station.MapOptions.MINIMAPSCALE, 3);
}

TEST_F(Settings, OnlyTheTextOneIsTrue) {
  for (const std::string_view text : {"0", "2", "01", "1.0", "true", "-1", "x"}) {
    LoadWith("[OPTIONS]\nSHOWGRID=" + std::string(text) + "\n");
    EXPECT_FALSE(station.MapOptions.SHOWGRID) << text;
  }
  LoadWith("[options]\nshowgrid = 1\n");
  EXPECT_TRUE(station.MapOptions.SHOWGRID);
}

TEST_F(Settings, AMissingOrEmptyPortIs5556) {
  for (const std::string_view lines : {"", "[OPTIONS]\nCONNPORT=\n", "[OPTIONS]\nCONNPORT=\"\"\n"}) {
    station.LinkOptions.CONNPORT = 1;
    LoadWith(std::string(lines));
    EXPECT_EQ(station.LinkOptions.CONNPORT, 5556) << lines;
  }
}

TEST_F(Settings, AnEmptyVoiceWindowNameBecomesTheVoiceClient) {
  LoadWith("[IVC_WINDOW_NAME]\nNAME=\n");
  EXPECT_EQ(station.VoiceWindowName, "IVC Client");
}

struct NumberCase {
  std::string Line;
  std::string Saved;
  std::size_t Notes;

  friend void PrintTo(const NumberCase& shown, std::ostream* out) { *out << shown.Saved; }
};

class NumbersThatDoNotFit : public Settings, public testing::WithParamInterface<NumberCase> {};

TEST_P(NumbersThatDoNotFit, GiveTheDefaultAndANote) {
  LoadWith("[OPTIONS]\n" + GetParam().Line + "\n");
  EXPECT_THAT(station.Notes, SizeIs(GetParam().Notes));
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("\r\n" + GetParam().Saved + "\r\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, NumbersThatDoNotFit,
    testing::Values(
        NumberCase{"CONNPORT=99999999999", "CONNPORT=5556", 1}, NumberCase{"CONNPORT=1e400", "CONNPORT=5556", 1},
        NumberCase{"CONNPORT=nan", "CONNPORT=0", 0}, NumberCase{"CONNPORT=\xff\x01\x80", "CONNPORT=0", 0},
        NumberCase{"CONNPORT=2147483647", "CONNPORT=2147483647", 0},
        NumberCase{"CONNPORT=2147483648", "CONNPORT=5556", 1}, NumberCase{"CONNPORT=2.5", "CONNPORT=2", 0},
        NumberCase{"AICOLOR=-1", "AICOLOR=255", 1}, NumberCase{"AICOLOR=4294967295", "AICOLOR=4294967295", 0},
        NumberCase{"AICOLOR=4294967296", "AICOLOR=255", 1}, NumberCase{"MINIMAPSCALE=32767", "MINIMAPSCALE=32767", 0},
        NumberCase{"MINIMAPSCALE=32768", "MINIMAPSCALE=5", 1}, NumberCase{"VIEWFORMTR=-32769", "VIEWFORMTR=255", 1},
        NumberCase{"CURSORFORMX=-1e99", "CURSORFORMX=0", 1},
        NumberCase{"AIRF_ILS_DIST=1e999", "AIRF_ILS_DIST=10.00000", 1},
        NumberCase{"CURSOR_FONT_SIZE=1e39", "CURSOR_FONT_SIZE=10.00", 1}));

TEST_F(Settings, TheBannerStandsOnLineOneAndIsIgnoredByTheNextLoad) {
  LoadWith("[OPTIONS]\nCONNPORT=6000\n");
  for (int round = 0; round < 2; ++round) {
    SaveVars(station);
    EXPECT_TRUE(folder.Read("KESTREL.ini").starts_with("\"KESTREL v1.0.0 Main INI File\"\r\n[LOG]\r\n"));
    EXPECT_TRUE(folder.Read("Theaters/korea.ini").starts_with("\"KESTREL v1.0.0 Theater INI File\"\r\n[MAP]\r\n"));
    LoadSavedVars(station);
    EXPECT_EQ(station.LinkOptions.CONNPORT, 6000);
  }
}

TEST_F(Settings, UnknownKeysAreDroppedByASave) {
  LoadWith("[OPTIONS]\nNOT_OURS=7\n[ELSEWHERE]\nX=1\n");
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("NOT_OURS")));
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("ELSEWHERE")));
}

TEST_F(Settings, InstallationsThatAreWrittenByHandStay) {
  const std::string section =
      "[Installations]\r\n; mine\r\nBMS1=/games/Falcon BMS 4.38\r\n bms1_name = \"4.38\"\r\nodd line\r\nBMS100=x\r\n";
  LoadWith("[OPTIONS]\nCONNPORT=6000\n" + section + "\r\n[ELSEWHERE]\nX=1\n");
  for (int round = 0; round < 3; ++round) {
    SaveVars(station);
    EXPECT_TRUE(folder.Read("KESTREL.ini").ends_with("\r\n" + section + "\r\n")) << folder.Read("KESTREL.ini");
  }
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6000"));
  // As the file is when it is saved.
  folder.Write("KESTREL.ini", "[INSTALLATIONS]\nFALCON1=/old");
  SaveVars(station);
  EXPECT_TRUE(folder.Read("KESTREL.ini").ends_with("\r\n[INSTALLATIONS]\r\nFALCON1=/old\r\n"));
  SaveConnList(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("\r\n[INSTALLATIONS]\r\nFALCON1=/old\r\n"));
}

TEST_F(Settings, FileWhoseInstallationsCannotBeReadIsNotWrittenOver) {
  LoadWith("[INSTALLATIONS]\nBMS1=/games/Sim\n");
  std::filesystem::resize_file(folder.Path / "KESTREL.ini", base::MaxTextFileBytes + 1);
  EXPECT_THROW(SaveVars(station), base::RuntimeFailure);
  EXPECT_EQ(std::filesystem::file_size(folder.Path / "KESTREL.ini"), base::MaxTextFileBytes + 1);
}

TEST_F(Settings, ALongValueComesBackCut) {
  LoadWith("[IVC_WINDOW_NAME]\nNAME=" + std::string(5000, 'v') + "\n");
  EXPECT_EQ(station.VoiceWindowName, std::string(749, 'v'));
}

TEST_F(Settings, TheSizeOfATheaterLosesItsFractionAtASave) {
  folder.Write("Theaters/korea.ini", "[MAP]\nNAME=korea\nSIZE=1024,7\nPICSIZE=2\n");
  LoadWith("");
  EXPECT_EQ(station.Catalogue.Current().Size, 1024.7);
  SaveVars(station);
  LoadSavedVars(station);
  EXPECT_EQ(station.Catalogue.Current().Size, 1025);
}

TEST_F(Settings, TheSavedViewsOfTheCurrentTheaterAreWrittenWithTheSettings) {
  LoadSavedVars(station);
  for (map::ViewShort& slot : station.View.ViewShorts) slot = {7680, 7680, 1};
  station.View.ViewShorts[1] = {1500, 3000, 8};
  SaveAll(station);
  std::string expected = "ViewShort File v3";
  expected.resize(100, ' ');
  using namespace std::string_literals;
  const std::string whole = "\0\0\0\0\0\0\xbe\x40\0\0\0\0\0\0\xbe\x40\0\0\0\0\0\0\xf0\x3f"s;
  const std::string second = "\0\0\0\0\0\x70\x97\x40\0\0\0\0\0\x70\xa7\x40\0\0\0\0\0\0\x20\x40"s;
  EXPECT_EQ(folder.Read("Theaters/korea_ViewShort.dat"), expected + whole + second + whole);
  EXPECT_FALSE(folder.Has("Theaters/balkans_ViewShort.dat"));
}

TEST_F(Settings, ASlashInATheatersNameMakesAFolderForItsData) {
  LoadWith("");
  station.Catalogue.Current().Name = "a/b";
  SaveAll(station);
  EXPECT_TRUE(folder.Has("Theaters/a/b_ViewShort.dat"));
}

TEST_F(Settings, SaveConnListKeepsTheRestOfTheFile) {
  folder.Write("KESTREL.ini",
               "; mine\r\n[OPTIONS]\r\nNOT_OURS=7\r\n[CONNLIST]\r\nNUM=2\r\n[CONNLIST1]\r\nNAME=a\r\nIP=1\r\n"
               "[CONNLIST2]\r\nNAME=b\r\nIP=2\r\n");
  station.LinkOptions.ConnList.Append({"Demo session", "127.0.0.1"});
  SaveConnList(station);
  // The entry beyond NUM stays and is ignored.
  EXPECT_EQ(folder.Read("KESTREL.ini"),
            "; mine\r\n[OPTIONS]\r\nNOT_OURS=7\r\n[CONNLIST]\r\nNUM=1\r\n[CONNLIST1]\r\nNAME=Demo session\r\n"
            "IP=127.0.0.1\r\n[CONNLIST2]\r\nNAME=b\r\nIP=2\r\n");
}

TEST_F(Settings, CountsThatLieGiveWhatIsThereAndOneNoteEach) {
  folder.Write("KESTREL.ini",
               "[MAPS]\nTOTALMAPS=99999\nMAP1=korea.ini\nMAP2=balkans.ini\nMAP4=korea.ini\nCURRENTMAP=2\n"
               "[CONNLIST]\nNUM=1e300\n[CONNLIST1]\nNAME=a\nIP=b\n");
  LoadSavedVars(station);
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(station.LinkOptions.ConnList.UpperBound(), 1u);
  EXPECT_THAT(station.Notes,
              ElementsAre("KESTREL.ini: TOTALMAPS promises a theater that is not there: MAP3 and 32763 more",
                          "KESTREL.ini: NUM promises a phonebook entry that is not there: CONNLIST2 and 32765 more"));
}

TEST_F(Settings, WhatStandsBehindAGapIsKept) {
  folder.Write("KESTREL.ini",
               "[MAPS]\nTOTALMAPS=3\nMAP1=korea.ini\nMAP3=balkans.ini\nCURRENTMAP=3\n"
               "[CONNLIST]\nNUM=3\n[CONNLIST2]\nNAME=a\nIP=b\n[CONNLIST3]\nNAME=c\nIP=d\n");
  LoadSavedVars(station);
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
  ASSERT_EQ(station.LinkOptions.ConnList.UpperBound(), 2u);
  EXPECT_EQ(station.LinkOptions.ConnList[2].Name, "c");
  EXPECT_THAT(station.Notes, ElementsAre("KESTREL.ini: TOTALMAPS promises a theater that is not there: MAP2",
                                         "KESTREL.ini: NUM promises a phonebook entry that is not there: CONNLIST1"));
  SaveVars(station);
  EXPECT_THAT(folder.Read("KESTREL.ini"),
              HasSubstr("TOTALMAPS=2\r\nMAP1=korea.ini\r\nMAP2=balkans.ini\r\nCURRENTMAP=2\r\n"));
}

TEST_F(Settings, ATheaterWhoseBullseyeCountLiesIsRead) {
  folder.Write("Theaters/korea.ini", "[MAP]\nNAME=korea\nSIZE=1024\nPICSIZE=2\nBULLSEYES=-5\nCURRENTBULL=3\n");
  LoadWith("");
  EXPECT_TRUE(station.Catalogue.Current().Bulls.Empty());
  EXPECT_EQ(station.Catalogue.Current().CurrentBull, 0);
  EXPECT_THAT(station.Notes, ElementsAre(HasSubstr("korea.ini")));
}

TEST_F(Settings, CountsBelowOneOrWithoutANumberGiveNothing) {
  for (const std::string_view count : {"0", "-5", "none", "0.5", "-1e300", "\xff"}) {
    folder.Write("KESTREL.ini", "[MAPS]\nTOTALMAPS=" + std::string(count) + "\nMAP1=korea.ini\n[CONNLIST]\nNUM=" +
                                    std::string(count) + "\n[CONNLIST1]\nNAME=a\n");
    LoadSavedVars(station);
    EXPECT_TRUE(station.Catalogue.Theaters.Empty()) << count;
    EXPECT_TRUE(station.LinkOptions.ConnList.Empty()) << count;
  }
}

TEST_F(Settings, CountsAndTheCurrentTheaterRoundHalvesToTheEvenNumber) {
  folder.Write("KESTREL.ini",
               "[MAPS]\nTOTALMAPS=2.5\nMAP1=korea.ini\nMAP2=balkans.ini\nMAP3=korea.ini\nCURRENTMAP=1.5\n"
               "[CONNLIST]\nNUM=1.5\n[CONNLIST1]\nNAME=a\n[CONNLIST2]\nNAME=b\n");
  LoadSavedVars(station);
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(station.LinkOptions.ConnList.UpperBound(), 2u);
}

TEST_F(Settings, ATheaterWhoseFileIsGoneIsLeftOutWhileAnotherIsThere) {
  folder.Write("KESTREL.ini",
               "[MAPS]\nTOTALMAPS=4\nMAP1=a.ini\nMAP2=korea.ini\nMAP3=b.ini\nMAP4=BALKANS.ini\nCURRENTMAP=4\n");
  EXPECT_THAT(LoadSavedVars(station), ElementsAre("a.ini", "b.ini"));
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(station.Catalogue.Current().Name, "balkans");
}

TEST_F(Settings, ACurrentTheaterThatIsNotThereBecomesTheFirst) {
  for (const std::string_view current : {"", "0", "-1", "3", "40000", "x"}) {
    station.Notes.clear();
    folder.Write("KESTREL.ini",
                 "[MAPS]\nTOTALMAPS=2\nMAP1=korea.ini\nMAP2=balkans.ini\nCURRENTMAP=" + std::string(current) + "\n");
    LoadSavedVars(station);
    EXPECT_EQ(station.Catalogue.CurrentTheater, 1) << current;
    EXPECT_THAT(station.Notes, testing::Contains(HasSubstr("CURRENTMAP"))) << current;
  }
}

TEST_F(Settings, ATheaterOutsideItsFolderIsSkippedAndTheCurrentOneStays) {
  for (const std::string_view outside : {"../KESTREL.ini", "..\\..\\x.ini", "/etc/hostname", "C:\\x.ini"}) {
    station.Notes.clear();
    folder.Write("KESTREL.ini", "[MAPS]\nTOTALMAPS=3\nMAP1=" + std::string(outside) +
                                    "\nMAP2=korea.ini\nMAP3=balkans.ini\nCURRENTMAP=3\n");
    LoadSavedVars(station);
    EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u) << outside;
    EXPECT_EQ(station.Catalogue.Current().Name, "balkans") << outside;
    EXPECT_THAT(station.Notes, ElementsAre(HasSubstr("skipped"))) << outside;
  }
}

TEST_F(Settings, AMissingTheaterFileGivesATheaterThatCanBeMended) {
  std::filesystem::remove(folder.Path / "Theaters/korea.ini");
  LoadWith("");
  EXPECT_EQ(station.Catalogue.Current().Name, "");
  EXPECT_EQ(station.Catalogue.Current().Size, 1024);
  EXPECT_THAT(station.Notes, SizeIs(1));
}

TEST_F(Settings, AMissingOrEmptyOrBinaryMainFileGivesNoTheater) {
  std::string binary;
  for (int i = 0; i < 100000; ++i) binary += static_cast<char>(i * 7919 >> 3);
  for (const std::string& bytes : {std::string(), binary}) {
    folder.Write("KESTREL.ini", bytes);
    LoadSavedVars(station);
    EXPECT_TRUE(station.Catalogue.Theaters.Empty());
    EXPECT_EQ(station.LinkOptions.CONNPORT, 5556);
  }
  std::filesystem::remove(folder.Path / "KESTREL.ini");
  LoadSavedVars(station);
  EXPECT_TRUE(station.Catalogue.Theaters.Empty());
}

TEST_F(Settings, AFileThatIsTooLargeIsAFailure) {
  folder.Write("KESTREL.ini", "[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\n");
  std::filesystem::resize_file(folder.Path / "KESTREL.ini", base::MaxTextFileBytes + 1);
  EXPECT_THROW(LoadSavedVars(station), base::RuntimeFailure);
  LoadWith("");
  std::filesystem::resize_file(folder.Path / "Theaters/korea.ini", base::MaxTextFileBytes + 1);
  EXPECT_THROW(LoadSavedVars(station), base::RuntimeFailure);
}

TEST_F(Settings, SaveVarsTriesTheOtherFilesWhenOneFails) {
  LoadSavedVars(station);
  std::filesystem::remove(folder.Path / "Theaters/korea.ini");
  std::filesystem::create_directories(folder.Path / "Theaters/korea.ini/in the way");
  station.LinkOptions.CONNPORT = 6001;
  try {
    SaveVars(station);
    FAIL() << "no failure";
  } catch (const base::RuntimeFailure& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("korea.ini"));
  }
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6001"));
  EXPECT_THAT(folder.Read("Theaters/balkans.ini"), HasSubstr("Theater INI File"));
}

TEST_F(Settings, EveryKeyIsToldInTheDocumentation) {
  std::ifstream file(std::filesystem::path(KESTREL_SOURCE_DIR) / "docs/settings.md");
  std::stringstream page;
  page << file.rdbuf();
  const std::string text = page.str();
  ASSERT_FALSE(text.empty());
  for (const SettingsRow& row : SettingsTable(station)) {
    EXPECT_THAT(text, HasSubstr("`" + row.Key + "`")) << row.Section;
    EXPECT_THAT(text, HasSubstr("`" + row.Section + "`"));
  }
}

TEST_F(Settings, NoKeyIsBoundTwice) {
  std::set<std::pair<std::string, std::string>> keys;
  for (const SettingsRow& row : SettingsTable(station)) {
    EXPECT_TRUE(keys.emplace(row.Section, row.Key).second) << row.Key;
  }
}

}  // namespace
}  // namespace kestrel::core
