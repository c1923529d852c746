#include "radio/frequency_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "base/files.h"

namespace kestrel::radio {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// `text` with CR LF at its line ends.
std::string Dos(std::string_view text) {
  std::string dos;
  for (const char letter : text) {
    if (letter == '\n') dos += '\r';
    dos += letter;
  }
  return dos;
}

struct Result {
  Frequencies Tables;
  std::vector<std::string> Notes;
};

Result Read(std::string_view text) {
  Result result;
  result.Tables = ReadFrequencies(base::ProfileFile(text), result.Notes);
  return result;
}

std::string Channels(const char* section, const char* stem, const char* first) {
  std::string text = std::string("[") + section + "]\n" + stem + "1=" + first + "\n";
  for (int i = 2; i <= 20; ++i) text += stem + std::to_string(i) + "=000000\n";
  return text;
}

constexpr const char* teams =
    "[TEAMS]\nTEAM_0=Team #0\nTEAM_1=Team #1\nTEAM_2=Team #2\nTEAM_3=Team #3\nTEAM_4=Team #4\nTEAM_5=Team #5\n"
    "TEAM_6=Team #6\nTEAM_7=Team #7\n";

Airfield Kunsan() {
  Airfield airfield;
  airfield.Name = "Kunsan";
  airfield.UHF = "292300";
  airfield.VHF = "124100";
  airfield.TACAN = "075";
  airfield.TACANX = 400.5;
  airfield.TACANY = 331.123456;
  airfield.TACANR = 150;
  airfield.TACAN_BAND = "X";
  airfield.TEAM_INDEX = 2;
  airfield.VIS = true;
  airfield.ILS = {"11030", "-", "10930", "0"};
  airfield.ILS_DES = {"36", "18", "-", ""};
  airfield.ILS_R[0] = {401.25, -0.000004};
  airfield.ILS_R[3] = {1, 1e6};
  airfield.ILS_DRAW_HEADING[0] = 90;
  airfield.ILS_DRAW_HEADING[1] = -90.000015;
  airfield.ILS_VIS[1] = true;
  return airfield;
}

TEST(FrequencyFile, IsWrittenInItsOrder) {
  Frequencies tables;
  tables.CustomUHF[1] = "297500";
  tables.CustomVHF[1] = "138050";
  tables.CustomF1 = "0";
  FreqFolder& folder = tables.FreqFolders.Append({"Package", {}});
  folder.Entries.Append({"Tanker", "235100"});
  folder.Entries.Append({" a=b ", "\"x\""});
  tables.FreqFolders.Append({});
  tables.Airfields.Append(Kunsan());
  EXPECT_EQ(WriteFrequencies(tables),
            Dos(Channels("CUS_UHF", "UHF_", "297500") + Channels("CUS_VHF", "VHF_", "138050") +
                "[CUS_UI]\nF1=0\nF2=000000\n"
                "[CUS_FREQ]\nNUM=2\n"
                "[CUS_FREQ_1]\nNAME=Package\nNUM=2\nDESC_1=Tanker\nVAL_1=235100\nDESC_2= a=b \nVAL_2=\"x\"\n"
                "[CUS_FREQ_2]\nNAME=\nNUM=0\n"
                "[AIRFIELDS]\nNUM=1\n"
                "[AIRFIELD_1]\nNAME=Kunsan\nUHF=292300\nVHF=124100\nTACAN=075\nTACANX=400.50000\nTACANY=331.12346\n"
                "TACANR=150.00000\nTACAN_BAND=X\nTEAM_INDEX=2\nTACAN_VIS=0\nVIS=1\n"
                "ILS_0=11030\nILS_DES_0=36\nILS_RX_0=401.25000\nILS_RY_0=0.00000\nILS_DRAW_HEADING_0=90.00000\n"
                "ILS_VIS_0=0\n"
                "ILS_1=-\nILS_DES_1=18\nILS_RX_1=0.00000\nILS_RY_1=0.00000\nILS_DRAW_HEADING_1=-90.00002\nILS_VIS_1=1\n"
                "ILS_2=10930\nILS_DES_2=-\nILS_RX_2=0.00000\nILS_RY_2=0.00000\nILS_DRAW_HEADING_2=0.00000\n"
                "ILS_VIS_2=0\n"
                "ILS_3=0\nILS_DES_3=\nILS_RX_3=1.00000\nILS_RY_3=1000000.00000\nILS_DRAW_HEADING_3=0.00000\n"
                "ILS_VIS_3=0\n") +
                Dos(teams) + "\r\n");
}

TEST(FrequencyFile, ComesBackAsItWasButForFiveDecimals) {
  Frequencies tables;
  tables.CustomF2 = "243000";
  tables.FreqFolders.Append({"Empty", {}});
  tables.Airfields.Append(Kunsan());
  tables.Teams[7] = "Blue";
  const std::string text = WriteFrequencies(tables);
  const Result again = Read(text);
  EXPECT_THAT(again.Notes, IsEmpty());
  ASSERT_EQ(again.Tables.FreqFolders.UpperBound(), 1u);
  EXPECT_EQ(again.Tables.FreqFolders[1].Name, "Empty");
  EXPECT_TRUE(again.Tables.FreqFolders[1].Entries.Empty());
  EXPECT_EQ(again.Tables.CustomF2, "243000");
  EXPECT_EQ(again.Tables.Teams[7], "Blue");
  ASSERT_EQ(again.Tables.Airfields.UpperBound(), 1u);
  const Airfield& airfield = again.Tables.Airfields[1];
  EXPECT_EQ(airfield.Name, "Kunsan");
  EXPECT_EQ(airfield.UHF, "292300");
  EXPECT_EQ(airfield.VHF, "124100");
  EXPECT_EQ(airfield.TACAN, "075");
  EXPECT_EQ(airfield.TACANX, 400.5);
  EXPECT_EQ(airfield.TACANY, 331.12346);
  EXPECT_EQ(airfield.TACANR, 150);
  EXPECT_EQ(airfield.TACAN_BAND, "X");
  EXPECT_EQ(airfield.TEAM_INDEX, 2);
  EXPECT_TRUE(airfield.VIS);
  EXPECT_FALSE(airfield.TACAN_VIS);
  EXPECT_THAT(airfield.ILS, ElementsAre("11030", "-", "10930", "0"));
  EXPECT_THAT(airfield.ILS_DES, ElementsAre("36", "18", "-", ""));
  EXPECT_EQ(airfield.ILS_R[0].RX, 401.25);
  EXPECT_EQ(airfield.ILS_R[3].RY, 1e6);
  EXPECT_THAT(airfield.ILS_DRAW_HEADING, ElementsAre(90, -90.00002, 0, 0));
  EXPECT_THAT(airfield.ILS_VIS, ElementsAre(false, true, false, false));
  EXPECT_EQ(WriteFrequencies(again.Tables), text);
}

TEST(FrequencyFile, AnEmptyOneIsThatOfATheaterWithoutAFile) {
  const std::string none = WriteFrequencies(Frequencies());
  EXPECT_EQ(none, Dos(Channels("CUS_UHF", "UHF_", "000000") + Channels("CUS_VHF", "VHF_", "000000") +
                      "[CUS_UI]\nF1=000000\nF2=000000\n[CUS_FREQ]\nNUM=0\n[AIRFIELDS]\nNUM=0\n" + teams + "\n"));
  const Result empty = Read("");
  EXPECT_EQ(WriteFrequencies(empty.Tables), none);
  EXPECT_THAT(empty.Notes, IsEmpty());
}

TEST(FrequencyFile, EmptyAndMissingValuesAreTheDefaults) {
  const Result read = Read(
      "[CUS_UHF]\nUHF_1=\nUHF_2=0\nUHF_0=9\nUHF_21=9\n[CUS_UI]\nF1=\n[TEAMS]\nTEAM_4=\nTEAM_5=Blue\n"
      "[CUS_FREQ]\nNUM=1\n[CUS_FREQ_1]\nNUM=2\nDESC_1=x\nVAL_1=\nVAL_2=1\n"
      "[AIRFIELDS]\nNUM=1\n[AIRFIELD_1]\nTEAM_INDEX=\nUHF=\n");
  EXPECT_EQ(read.Tables.CustomUHF[1], "000000");
  EXPECT_EQ(read.Tables.CustomUHF[2], "0");
  EXPECT_EQ(read.Tables.CustomUHF[0], "");
  EXPECT_EQ(read.Tables.CustomF1, "000000");
  EXPECT_EQ(read.Tables.Teams[4], "Team #4");
  EXPECT_EQ(read.Tables.Teams[5], "Blue");
  ASSERT_EQ(read.Tables.FreqFolders.UpperBound(), 1u);
  EXPECT_EQ(read.Tables.FreqFolders[1].Name, "");
  ASSERT_EQ(read.Tables.FreqFolders[1].Entries.UpperBound(), 2u);
  EXPECT_EQ(read.Tables.FreqFolders[1].Entries[1].Value, "000000");
  EXPECT_EQ(read.Tables.FreqFolders[1].Entries[2].Description, "");
  EXPECT_EQ(read.Tables.Airfields[1].UHF, "") << "no channel";
  EXPECT_EQ(read.Tables.Airfields[1].TEAM_INDEX, 0);
  EXPECT_THAT(read.Notes, IsEmpty());
}

TEST(FrequencyFile, OnlyAOneIsTrue) {
  for (const char* text : {"1", "0", "", "true", "-1", "01", "1.0", "1 x", "yes", "11"}) {
    const Result read = Read(std::string("[AIRFIELDS]\nNUM=1\n[AIRFIELD_1]\nVIS=") + text + "\nTACAN_VIS=" + text +
                             "\nILS_VIS_3=" + text + "\n");
    const bool on = std::string_view(text) == "1";
    EXPECT_EQ(read.Tables.Airfields[1].VIS, on) << text;
    EXPECT_EQ(read.Tables.Airfields[1].TACAN_VIS, on) << text;
    EXPECT_THAT(read.Tables.Airfields[1].ILS_VIS, ElementsAre(false, false, false, on)) << text;
  }
}

Airfield WithTacan(const std::string& key, const std::string& value, std::vector<std::string>* notes = nullptr) {
  const Result read = Read("[AIRFIELDS]\nNUM=1\n[AIRFIELD_1]\n" + key + "=" + value + "\n");
  if (notes != nullptr) *notes = read.Notes;
  EXPECT_EQ(read.Tables.Airfields.UpperBound(), 1u) << value;
  return read.Tables.Airfields[1];
}

TEST(FrequencyFile, NumbersHavePointOrCommaAndRoundToTheEven) {
  const struct {
    const char* Text;
    double X;
    std::int32_t R;
  } cases[] = {{"12,5", 12.5, 12},
               {"12.5", 12.5, 12},
               {"13.5", 13.5, 14},
               {"40.5", 40.5, 40},
               {"41,5", 41.5, 42},
               {"1.234,5", 1.234, 1},
               {"x", 0, 0},
               {"", 0, 0},
               {" 7 nm", 7, 7},
               {"nan", 0, 0},
               {"inf", 0, 0},
               {"-0.6", -0.6, -1},
               {"150.00000", 150, 150},
               {"1e2", 100, 100},
               {"2147483647", 2147483647.0, 2147483647}};
  for (const auto& each : cases) {
    std::vector<std::string> notes;
    EXPECT_EQ(WithTacan("TACANX", each.Text, &notes).TACANX, each.X) << each.Text;
    EXPECT_THAT(notes, IsEmpty()) << each.Text;
    EXPECT_EQ(WithTacan("TACANR", each.Text, &notes).TACANR, each.R) << each.Text;
    EXPECT_THAT(notes, IsEmpty()) << each.Text;
  }
}

TEST(FrequencyFile, ANumberThatDoesNotFitBecomesNoughtAndIsNoted) {
  std::vector<std::string> notes;
  EXPECT_EQ(WithTacan("TACANX", "1e999", &notes).TACANX, 0);
  EXPECT_THAT(notes, ElementsAre("[AIRFIELD_1] TACANX: the number does not fit, \"1e999\""));
  EXPECT_EQ(WithTacan("ILS_RY_2", "-1e999", &notes).ILS_R[2].RY, 0);
  EXPECT_THAT(notes, ElementsAre("[AIRFIELD_1] ILS_RY_2: the number does not fit, \"-1e999\""));
  EXPECT_EQ(WithTacan("TACANR", "99999999999", &notes).TACANR, 0);
  EXPECT_THAT(notes, ElementsAre("[AIRFIELD_1] TACANR: the number does not fit, \"99999999999\""));
  EXPECT_EQ(WithTacan("TACANR", "2147483647.5", &notes).TACANR, 0);
  EXPECT_THAT(notes, SizeIs(1));
  EXPECT_EQ(WithTacan("TACANX", "99999999999", &notes).TACANX, 99999999999.0);
  EXPECT_THAT(notes, IsEmpty());
  const struct {
    const char* Text;
    int Team;
    std::size_t Notes;
  } cases[] = {{"7", 7, 0},   {"8", 8, 0},    {"255", 255, 0}, {"255.4", 255, 0}, {"255.5", 0, 1},
               {"256", 0, 1}, {"4711", 0, 1}, {"-1", 0, 1},    {"-0.5", 0, 0},    {"2,5", 2, 0},
               {"3.5", 4, 0}, {"blue", 0, 0}, {"1e999", 0, 1}};
  for (const auto& each : cases) {
    EXPECT_EQ(WithTacan("TEAM_INDEX", each.Text, &notes).TEAM_INDEX, each.Team) << each.Text;
    EXPECT_THAT(notes, SizeIs(each.Notes)) << each.Text;
  }
}

TEST(FrequencyFile, NotesAreTwentyAndTheNumberOfTheRest) {
  std::string text = "[AIRFIELDS]\nNUM=30\n";
  for (int i = 1; i <= 30; ++i) text += "[AIRFIELD_" + std::to_string(i) + "]\nTACANX=1e999\n";
  const Result read = Read(text);
  ASSERT_THAT(read.Notes, SizeIs(21));
  EXPECT_EQ(read.Notes[19], "[AIRFIELD_20] TACANX: the number does not fit, \"1e999\"");
  EXPECT_EQ(read.Notes[20], "... and 10 more");
}

std::string Airfields(const std::string& count, int there) {
  std::string text = "[AIRFIELDS]\nNUM=" + count + "\n";
  for (int i = 1; i <= there; ++i) {
    text += "[AIRFIELD_" + std::to_string(i) + "]\nNAME=a" + std::to_string(i) + "\n";
  }
  return text;
}

TEST(FrequencyFile, TheCountDecidesHowManyAirfieldsThereAre) {
  const struct {
    const char* Count;
    int There;
    std::size_t Read;
  } cases[] = {{"0", 3, 0},     {"-1", 3, 0},  {"-1e308", 3, 0}, {"x", 3, 0},     {"", 3, 0},   {"nan", 3, 0},
               {"2", 3, 2},     {"2.5", 3, 2}, {"1,5", 3, 2},    {"3", 3, 3},     {"5", 3, 5},  {"32767", 3, 32767},
               {"32768", 3, 3}, {"2e9", 3, 3}, {"1e308", 3, 3},  {"1e999", 3, 3}, {"2e9", 0, 0}};
  for (const auto& each : cases) {
    const Result read = Read(Airfields(each.Count, each.There));
    ASSERT_EQ(read.Tables.Airfields.UpperBound(), each.Read) << each.Count;
    for (std::size_t i = 1; i <= each.Read; ++i) {
      ASSERT_EQ(read.Tables.Airfields[i].Name,
                i <= static_cast<std::size_t>(each.There) ? "a" + std::to_string(i) : "");
    }
  }
}

TEST(FrequencyFile, MoreAirfieldsThanACountOfSixteenBitsAreKept) {
  const Result read = Read(Airfields("33000", 33000));
  EXPECT_EQ(read.Tables.Airfields.UpperBound(), 33000u);
  EXPECT_THAT(read.Notes, IsEmpty());
}

TEST(FrequencyFile, ACountThatLiesIsNoted) {
  EXPECT_THAT(Read(Airfields("2e9", 3)).Notes, ElementsAre("[AIRFIELDS] NUM promises more than there is, 3 are read"));
}

TEST(FrequencyFile, AMissingOneBetweenOthersIsARecordOfDefaults) {
  const Result read = Read(
      "[CUS_FREQ]\nNUM=3\n[CUS_FREQ_1]\nNAME=one\nNUM=3\nDESC_1=a\nVAL_1=1\nDESC_3=c\nVAL_3=3\nVAL_4=4\n"
      "[CUS_FREQ_3]\nNAME=three\n[CUS_FREQ_4]\nNAME=four\n");
  ASSERT_EQ(read.Tables.FreqFolders.UpperBound(), 3u);
  EXPECT_EQ(read.Tables.FreqFolders[2].Name, "");
  EXPECT_TRUE(read.Tables.FreqFolders[2].Entries.Empty());
  EXPECT_EQ(read.Tables.FreqFolders[3].Name, "three");
  const auto& entries = read.Tables.FreqFolders[1].Entries;
  ASSERT_EQ(entries.UpperBound(), 3u);
  EXPECT_EQ(entries[2].Description, "");
  EXPECT_EQ(entries[2].Value, "000000");
  EXPECT_EQ(entries[3].Description, "c");
}

TEST(FrequencyFile, WhatIsPromisedAndMissingIsBoundedOverTheWholeFile) {
  std::string text = "[CUS_FREQ]\nNUM=1000\n";
  for (int i = 1; i <= 1000; ++i) text += "[CUS_FREQ_" + std::to_string(i) + "]\nNUM=32767\nVAL_1=1\n";
  const Result read = Read(text + "[AIRFIELDS]\nNUM=32767\n[AIRFIELD_1]\nNAME=there\n");
  ASSERT_EQ(read.Tables.FreqFolders.UpperBound(), 1000u);
  std::size_t entries = 0;
  for (const FreqFolder& folder : read.Tables.FreqFolders.Live()) {
    EXPECT_EQ(folder.Entries[1].Value, "1");
    entries += folder.Entries.UpperBound();
  }
  EXPECT_EQ(entries, 1000u + 32767u);
  ASSERT_EQ(read.Tables.Airfields.UpperBound(), 1u);
  EXPECT_EQ(read.Tables.Airfields[1].Name, "there");
  EXPECT_THAT(read.Notes, SizeIs(21));
}

TEST(FrequencyFile, KeysAreFoundWhateverTheirCaseAndTheFirstWins) {
  const Result read = Read(
      "[cus_uhf]\nuhf_1=225000\nUHF_1=225025\nUHF_2\nUHF_2 = 225050 \n[CUS_UHF]\nUHF_3=225075\n"
      "[TEAMS]\nTEAM_0=\"Blue\"\nTEAM_1= a=b =\nTEAM_2=' x '\n");
  EXPECT_EQ(read.Tables.CustomUHF[1], "225000");
  EXPECT_EQ(read.Tables.CustomUHF[2], "225050");
  EXPECT_EQ(read.Tables.CustomUHF[3], "000000") << "the first section of a name";
  EXPECT_EQ(read.Tables.Teams[0], "Blue") << "the reader takes off a pair of quotes";
  EXPECT_EQ(read.Tables.Teams[1], "a=b =");
  EXPECT_EQ(read.Tables.Teams[2], " x ");
}

TEST(FrequencyFile, LongNamesComeBackUpToTheReadersLimit) {
  Frequencies tables;
  tables.FreqFolders.Append({"", {}});
  tables.FreqFolders.Append({std::string(700, 'n'), {}});
  tables.FreqFolders.Append({std::string(10'000, 'm'), {}}).Entries.Append({std::string(10'000, 'd'), "1"});
  const Result read = Read(WriteFrequencies(tables));
  ASSERT_EQ(read.Tables.FreqFolders.UpperBound(), 3u);
  EXPECT_EQ(read.Tables.FreqFolders[1].Name, "");
  EXPECT_EQ(read.Tables.FreqFolders[2].Name, std::string(700, 'n'));
  EXPECT_EQ(read.Tables.FreqFolders[3].Name, std::string(749, 'm'));
  EXPECT_EQ(read.Tables.FreqFolders[3].Entries[1].Description, std::string(749, 'd'));
}

TEST(FrequencyFile, ValuesWithBlanksAndQuotesAtTheirEndsLoseThem) {
  Frequencies tables;
  auto& entries = tables.FreqFolders.Append({"  padded  ", {}}).Entries;
  entries.Append({"\"quoted\"", " 243000 "});
  entries.Append({"=x=", "'"});
  entries.Append({"   ", "   "});
  const Result read = Read(WriteFrequencies(tables));
  EXPECT_EQ(read.Tables.FreqFolders[1].Name, "padded");
  const auto& again = read.Tables.FreqFolders[1].Entries;
  ASSERT_EQ(again.UpperBound(), 3u);
  EXPECT_EQ(again[1].Description, "quoted");
  EXPECT_EQ(again[1].Value, "243000");
  EXPECT_EQ(again[2].Description, "=x=");
  EXPECT_EQ(again[2].Value, "'");
  EXPECT_EQ(again[3].Description, "");
  EXPECT_EQ(again[3].Value, "000000") << "blanks are an empty value";
}

TEST(FrequencyFile, ALineEndInAValueIsNotEscaped) {
  Frequencies tables;
  tables.FreqFolders.Append({"a\r\n[TEAMS]", {}});
  EXPECT_THAT(WriteFrequencies(tables), HasSubstr("[CUS_FREQ_1]\r\nNAME=a\r\n[TEAMS]\r\nNUM=0\r\n"));
}

TEST(FrequencyFile, CutAtAnyByteItReadsWhatIsLeft) {
  Frequencies tables;
  tables.FreqFolders.Append({"Package", {}}).Entries.Append({"Tanker", "235100"});
  tables.Airfields.Append(Kunsan());
  const std::string text = WriteFrequencies(tables);
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const Result read = Read(text.substr(0, length));
    ASSERT_LE(read.Tables.FreqFolders.UpperBound(), 1u) << length;
    ASSERT_LE(read.Tables.Airfields.UpperBound(), 1u) << length;
    // What could be read is written and read again the same.
    const std::string again = WriteFrequencies(read.Tables);
    ASSERT_EQ(WriteFrequencies(Read(again).Tables), again) << length;
  }
}

TEST(FrequencyFile, AnyBytesAreRead) {
  std::string bytes;
  for (int n = 0; n < 100'000; ++n) bytes += static_cast<char>(n * 7919 >> 3);
  const std::string none = WriteFrequencies(Frequencies());
  EXPECT_EQ(WriteFrequencies(Read(bytes).Tables), none);
  EXPECT_EQ(WriteFrequencies(Read(std::string(1000, '\0')).Tables), none);
  EXPECT_EQ(Read(bytes + "\n[CUS_UHF]\nUHF_1=225000\n").Tables.CustomUHF[1], "225000");
}

TEST(FrequencyFile, TenThousandAirfieldsComeBack) {
  Frequencies tables;
  for (int i = 1; i <= 10'000; ++i) tables.Airfields.Append(Kunsan()).TACANX = i;
  const Result read = Read(WriteFrequencies(tables));
  ASSERT_EQ(read.Tables.Airfields.UpperBound(), 10'000u);
  for (std::size_t i = 1; i <= 10'000; ++i) ASSERT_EQ(read.Tables.Airfields[i].TACANX, static_cast<double>(i));
}

TEST(FrequencyFile, WhatWouldNotBeReadAgainIsNotWritten) {
  Frequencies tables;
  tables.CustomF1 = std::string(base::MaxTextFileBytes - WriteFrequencies(Frequencies()).size() + 6, 'x');
  EXPECT_EQ(WriteFrequencies(tables).size(), base::MaxTextFileBytes);
  tables.CustomF1 += 'x';
  EXPECT_THROW(WriteFrequencies(tables), base::RuntimeFailure);
}

TEST(DefaultFrequencyFile, HasChannelsNamesAndTheTwoOfTheTeams) {
  const DefaultFrequencies read = ReadDefaultFrequencies(base::ProfileFile(
      "[UHF]\nU_1=225000\nu_20=399975\nU_02=1\n[VHF]\nV_1=116000\n[NAMES]\nN_1= Flight 1 \nN_20=Open\n"
      "[UI]\nF1=297500\nF2=\n"));
  EXPECT_EQ(read.DefaultUHF[1], "225000");
  EXPECT_EQ(read.DefaultUHF[2], "");
  EXPECT_EQ(read.DefaultUHF[20], "399975");
  EXPECT_EQ(read.DefaultVHF[1], "116000");
  EXPECT_EQ(read.ChannelNames[1], "Flight 1");
  EXPECT_EQ(read.ChannelNames[20], "Open");
  EXPECT_EQ(read.DefaultF1, "297500");
  EXPECT_EQ(read.DefaultF2, "");
}

TEST(DefaultFrequencyFile, LongValuesAreCutAtTheReadersLimit) {
  const DefaultFrequencies read =
      ReadDefaultFrequencies(base::ProfileFile("[UHF]\nU_1=" + std::string(751, '2') + "\n"));
  EXPECT_EQ(read.DefaultUHF[1], std::string(749, '2'));
}

TEST(DefaultFrequencyFile, EmptyOrBinaryItIsAllEmptyTexts) {
  std::string bytes;
  for (int n = 0; n < 5000; ++n) bytes += static_cast<char>(n * 31 >> 2);
  for (const std::string& text : {std::string(), bytes}) {
    const DefaultFrequencies read = ReadDefaultFrequencies(base::ProfileFile(text));
    for (std::size_t i = 1; i <= 20; ++i) {
      EXPECT_EQ(read.DefaultUHF[i] + read.DefaultVHF[i] + read.ChannelNames[i], "");
    }
    EXPECT_EQ(read.DefaultF1 + read.DefaultF2, "");
  }
}

TEST(FrequencyFile, HasTheKeysOfWhatItWasWrittenWith) {
  Frequencies tables;
  tables.FreqFolders.Append({" blanks ", {}}).Entries.Append({"a=b", ""});
  tables.Airfields.Append({});
  const std::string text = WriteFrequencies(tables);
  EXPECT_TRUE(HasKeysOf(tables, text));
  tables.CustomF1 = "another value";
  EXPECT_TRUE(HasKeysOf(tables, text));
  for (std::size_t end = 0; end < text.size() - 1; ++end) {
    // Without the last line end, or with a cut within the last value, no key is missing.
    if (text.substr(0, end).ends_with("\r\n\r")) continue;
    EXPECT_FALSE(HasKeysOf(tables, text.substr(0, end))) << end;
  }
  EXPECT_FALSE(HasKeysOf(tables, "; mine\r\n" + text));
  EXPECT_FALSE(HasKeysOf(tables, text + "\r\n"));
  tables.Airfields.Append({});
  EXPECT_FALSE(HasKeysOf(tables, text));
}

TEST(FrequencyFile, WithoutASectionOfFrequenciesIsOfAnotherKind) {
  for (const char* text : {"[CUS_UHF]", "[cus_vhf]\n", "[CUS_UI]", "[CUS_FREQ]", "[AIRFIELDS]", "x\n[TEAMS]"}) {
    EXPECT_TRUE(HoldsFrequencies(base::ProfileFile(text))) << text;
  }
  for (const char* text : {"", "CUS_UHF", "[UHF]", "[CUS_FREQ_1]", "nothing of the kind"}) {
    EXPECT_FALSE(HoldsFrequencies(base::ProfileFile(text))) << text;
  }
}

}  // namespace
}  // namespace kestrel::radio
