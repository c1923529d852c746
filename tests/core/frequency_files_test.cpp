// The frequencies of the theaters and of the installation over a start, a change of theater and a closing.
#include "core/frequency_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/files.h"
#include "core/default_files.h"
#include "core/theater_data.h"
#include "core/theater_switch.h"
#include "radio/frequency_file.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr const char* koreaFile = "Theaters/korea_Frequencies.dat";
constexpr const char* formerFile = "Theaters/korea_Frequencies.dat.old";

class FrequencyFiles : public testing::Test {
 protected:
  FrequencyFiles() {
    WriteInstallation(folder);
    folder.Write("KESTREL.ini",
                 "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=2\nMAP1=korea.ini\nMAP2=balkans.ini\nCURRENTMAP=1\n");
    for (Around* each : {&around, &next}) each->Shown.WhenShown = [each] { RunSteps(MapLoadSteps(), each->All); };
  }
  /// A start of another run, after `around` has been closed.
  void StartNext() { ASSERT_TRUE(Main(next.All)); }

  ProgramFolder folder;
  Around around{folder.Path};
  Around next{folder.Path};
  radio::Frequencies& tables = around.State.Frequencies;
};

TEST_F(FrequencyFiles, ChangesComeBackAtTheNextStart) {
  ASSERT_TRUE(Main(around.All));
  EXPECT_EQ(tables.CustomUHF[1], "000000");
  EXPECT_FALSE(folder.Has(koreaFile));
  tables.CustomUHF[1] = "297500";
  tables.FreqFolders.Append({"Package", {}}).Entries.Append({"Tanker", "235100"});
  tables.Airfields.Append({}).TACANX = 12.5;
  EXPECT_FALSE(folder.Has(koreaFile)) << "nothing is written before a save";
  Close(around.All);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  StartNext();
  EXPECT_EQ(next.State.Frequencies.CustomUHF[1], "297500");
  EXPECT_EQ(next.State.Frequencies.FreqFolders[1].Entries[1].Description, "Tanker");
  EXPECT_EQ(next.State.Frequencies.Airfields[1].TACANX, 12.5);
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("Loaded the frequencies"));
}

TEST_F(FrequencyFiles, TheirLoadingIsShownInThePanelAndOnTheMap) {
  ASSERT_TRUE(Main(around.All));
  const base::Changed shows = LoadTheaterData(around.All);
  EXPECT_TRUE(Has(shows, base::Changed::Frequencies));
  EXPECT_TRUE(Has(shows, base::Changed::Map));
}

TEST_F(FrequencyFiles, EachTheaterHasItsOwn) {
  ASSERT_TRUE(Main(around.All));
  tables.CustomF1 = "297500";
  tables.Airfields.Append({});
  SwitchTheater(around.All, 2);
  EXPECT_EQ(tables.CustomF1, "000000");
  EXPECT_TRUE(tables.Airfields.Empty());
  tables.CustomF1 = "243000";
  SwitchTheater(around.All, 1);
  EXPECT_EQ(tables.CustomF1, "297500");
  EXPECT_EQ(tables.Airfields.UpperBound(), 1u);
  EXPECT_THAT(folder.Read("Theaters/balkans_Frequencies.dat"), HasSubstr("\r\nF1=243000\r\n"));
}

TEST_F(FrequencyFiles, OneThatIsTooLargeCostsTheFrequenciesAlone) {
  folder.Write(koreaFile, "[CUS_UI]\nF1=297500\n");
  std::filesystem::resize_file(folder.Path / koreaFile, base::MaxTextFileBytes);
  ASSERT_TRUE(Main(around.All));
  EXPECT_EQ(tables.CustomF1, "297500") << "16 MB are read";
  std::filesystem::resize_file(folder.Path / koreaFile, base::MaxTextFileBytes + 1);
  StartNext();
  EXPECT_THAT(next.Desk.Boxes, IsEmpty());
  EXPECT_EQ(next.State.Frequencies.CustomF1, "000000");
  EXPECT_EQ(next.State.MapPicture.Width, 2);
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("The frequencies are left out: "));
}

TEST_F(FrequencyFiles, OneThatIsNoneIsLoggedAndKeptWhenItIsSavedOver) {
  const std::string binary("\0\xFF[CUS\x01=\r\n[]\0", 14);
  folder.Write(koreaFile, binary);
  ASSERT_TRUE(Main(around.All));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_EQ(tables.CustomF1, "000000");
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("korea_Frequencies.dat is no file of frequencies\r\n"));
  EXPECT_EQ(folder.Read(koreaFile), binary);
  EXPECT_FALSE(folder.Has(formerFile)) << "it is still there";
  Close(around.All);
  EXPECT_EQ(folder.Read(formerFile), binary);
  EXPECT_EQ(folder.Read(koreaFile), radio::WriteFrequencies(radio::Frequencies()));
  // Once.
  StartNext();
  next.State.Frequencies.CustomF1 = "297500";
  EXPECT_THAT(SaveAll(next.State), IsEmpty());
  EXPECT_THAT(SaveAll(next.State), IsEmpty());
  EXPECT_EQ(folder.Read(formerFile), binary);
}

TEST_F(FrequencyFiles, OneThatIsTooLargeIsKeptWhenItIsSavedOver) {
  folder.Write(koreaFile, "[CUS_UI]\nF1=297500\n");
  std::filesystem::resize_file(folder.Path / koreaFile, base::MaxTextFileBytes + 1);
  ASSERT_TRUE(Main(around.All));
  EXPECT_THAT(SaveAll(around.State), IsEmpty());
  EXPECT_EQ(std::filesystem::file_size(folder.Path / formerFile), base::MaxTextFileBytes + 1);
  std::string head(19, '-');
  std::ifstream(folder.Path / formerFile).read(head.data(), 19);
  EXPECT_EQ(head, "[CUS_UI]\nF1=297500\n");
  EXPECT_EQ(folder.Read(koreaFile), radio::WriteFrequencies(radio::Frequencies()));
}

TEST_F(FrequencyFiles, OneWithOtherKeysThanTheStationsIsKept) {
  radio::Frequencies written;
  written.FreqFolders.Append({"Package", {}}).Entries.Append({"Tanker", "235100"});
  written.Airfields.Append({}).Name = "Kunsan";
  const std::string whole = radio::WriteFrequencies(written);
  std::string zeros = whole;
  std::fill(zeros.begin() + 700, zeros.end() - 200, '\0');
  for (const std::string& bytes : {whole.substr(0, 900), whole.substr(0, whole.size() - 3), zeros,
                                   "; my own list\n" + whole, std::string("[CUS_UI]\nF1=1\n")}) {
    SCOPED_TRACE(bytes.size());
    std::filesystem::remove(folder.Path / formerFile);
    folder.Write(koreaFile, bytes);
    ASSERT_TRUE(Main(around.All));
    EXPECT_THAT(folder.Read("KESTRELLog.txt"),
                HasSubstr("korea_Frequencies.dat is damaged or not by the station: there is what could be read\r\n"));
    EXPECT_THAT(SaveAll(around.State), IsEmpty());
    EXPECT_EQ(folder.Read(formerFile), bytes);
    EXPECT_EQ(folder.Read(koreaFile), radio::WriteFrequencies(tables));
  }
}

TEST_F(FrequencyFiles, OneOfTheStationIsNotKept) {
  ASSERT_TRUE(Main(around.All));
  // These come back otherwise than they were typed.
  tables.CustomUHF[1] = "";
  tables.FreqFolders.Append({" Package ", {}}).Entries.Append({"\"Tanker=\"", std::string(800, '2')});
  tables.Airfields.Append({}).TACANX = 12.345678;
  Close(around.All);
  StartNext();
  Close(next.All);
  EXPECT_FALSE(folder.Has(formerFile));
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), Not(HasSubstr("damaged")));
}

TEST_F(FrequencyFiles, OneThatCannotBeKeptIsNotSavedOver) {
  folder.Write(koreaFile, "no frequencies");
  std::filesystem::create_directories(folder.Path / formerFile / "in the way");
  ASSERT_TRUE(Main(around.All));
  around.State.LinkOptions.CONNPORT = 6100;
  const std::vector<Unsaved> failures = SaveAll(around.State);
  ASSERT_THAT(failures, SizeIs(1));
  EXPECT_EQ(failures[0].What, "frequencies");
  EXPECT_EQ(failures[0].Reason, "korea_Frequencies.dat.old cannot be written");
  EXPECT_EQ(folder.Read(koreaFile), "no frequencies");
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6100"));
}

TEST_F(FrequencyFiles, ANumberThatDoesNotFitIsLogged) {
  folder.Write(koreaFile, "[AIRFIELDS]\nNUM=1\n[AIRFIELD_1]\nNAME=Kunsan\nTEAM_INDEX=4711\n");
  ASSERT_TRUE(Main(around.All));
  EXPECT_EQ(tables.Airfields[1].Name, "Kunsan");
  EXPECT_THAT(folder.Read("KESTRELLog.txt"),
              HasSubstr("korea_Frequencies.dat, [AIRFIELD_1] TEAM_INDEX: the number does not fit, \"4711\""));
}

TEST_F(FrequencyFiles, OnesThatCannotBeSavedAreToldAndTheRestIsSaved) {
  ASSERT_TRUE(Main(around.All));
  std::filesystem::create_directories(folder.Path / koreaFile / "in the way");
  around.State.LinkOptions.CONNPORT = 6100;
  Close(around.All);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(
      around.Desk.Boxes[0].Text,
      "The station could not save the frequencies: korea_Frequencies.dat cannot be written.\n\nThe closing goes on.");
  EXPECT_TRUE(folder.Has("Theaters/korea_ViewShort.dat"));
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=6100"));
}

TEST_F(FrequencyFiles, AFailureBeforeThemDoesNotStopThem) {
  ASSERT_TRUE(Main(around.All));
  std::filesystem::create_directories(folder.Path / "Theaters/korea_ViewShort.dat/in the way");
  tables.CustomF1 = "297500";
  EXPECT_THAT(SaveAll(around.State), SizeIs(1));
  EXPECT_THAT(folder.Read(koreaFile), HasSubstr("F1=297500"));
}

TEST_F(FrequencyFiles, DefaultsAreReadAtTheStart) {
  folder.Write("DefFreq.ini", "[UHF]\nU_1=225000\n[NAMES]\nN_20=Open\n[UI]\nF2=307300\n");
  ASSERT_TRUE(Main(around.All));
  EXPECT_EQ(around.State.DefaultFrequencies.DefaultUHF[1], "225000");
  EXPECT_EQ(around.State.DefaultFrequencies.ChannelNames[20], "Open");
  EXPECT_EQ(around.State.DefaultFrequencies.DefaultF2, "307300");
  EXPECT_EQ(tables.CustomUHF[1], "000000") << "nobody has asked for them";
}

TEST_F(FrequencyFiles, DefaultsThatAreMissingEmptyOrBinaryAreEmptyTexts) {
  const std::string none = "(no file)";
  for (const std::string& bytes : {none, std::string(), std::string("\0\xFF[U\x01=\r", 8), std::string(5000, '[')}) {
    std::filesystem::remove(folder.Path / "DefFreq.ini");
    if (bytes != none) folder.Write("DefFreq.ini", bytes);
    around.State.DefaultFrequencies.DefaultF1 = "former";
    ASSERT_TRUE(Main(around.All));
    EXPECT_EQ(around.State.DefaultFrequencies.DefaultF1, "");
    EXPECT_THAT(around.Desk.Boxes, IsEmpty());
    EXPECT_THAT(folder.Read("KESTRELLog.txt"), Not(HasSubstr("default channels")));
  }
}

TEST_F(FrequencyFiles, DefaultsThatCannotBeReadAreLoggedAndTheStartGoesOn) {
  std::filesystem::create_directory(folder.Path / "DefFreq.ini");
  ASSERT_TRUE(Main(around.All));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("There are no default channels: "));
}

TEST_F(FrequencyFiles, ANewProgramLaysItsOwnOverNone) {
  const ProgramFolder packed;
  std::filesystem::create_directories(packed.Path / "defaults/Theaters");
  for (const char* name : {"DefFreq.ini", "Theaters/korea_Frequencies.dat", "Theaters/korea_Areas.dat"}) {
    packed.Write(std::string("defaults/") + name, "shipped");
    folder.Write(name, "mine");
  }
  packed.Write("defaults/Theaters/balkans_Frequencies.dat", "shipped");
  BringFiles(packed.Path, folder.Path);
  for (const char* name : {"DefFreq.ini", "Theaters/korea_Frequencies.dat", "Theaters/korea_Areas.dat"}) {
    EXPECT_EQ(folder.Read(name), "mine") << name;
  }
  EXPECT_EQ(folder.Read("Theaters/balkans_Frequencies.dat"), "shipped");
}

}  // namespace
}  // namespace kestrel::core
