#include "falcon/pilot_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/temp_folder.h"
#include "falcon/failure_text.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::FailureOf;
using test::ReadBytes;
using test::TempFolder;
using test::WriteBytes;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> NamesOf(const fs::path& folder) {
  std::vector<std::string> names;
  for (const Callsign& callsign : ListCallsigns(folder)) names.push_back(callsign.Name);
  return names;
}

/// Presets of a number each: UHF 300001 to 300020, VHF 59401 to 59420, of five digits.
RadioPresets Numbered() {
  RadioPresets presets;
  for (std::size_t at = 1; at <= PresetCount; ++at) {
    presets.Uhf[at] = std::to_string(300000 + at);
    presets.Vhf[at] = std::to_string(59400 + at);
  }
  return presets;
}

/// The lines of Numbered as they are added: the two kinds by turns.
std::string NumberedLines(const std::string& lineEnd) {
  std::string lines;
  for (std::size_t at = 1; at <= PresetCount; ++at) {
    lines += "UHF_" + std::to_string(at) + "=" + std::to_string(300000 + at) + lineEnd;
    lines += "VHF_" + std::to_string(at) + "=" + std::to_string(59400 + at) + lineEnd;
  }
  return lines;
}

class PilotFile : public testing::Test {
 protected:
  RadioPresets Read(std::string_view bytes) {
    WriteBytes(file, bytes);
    return LoadRadioFile(file);
  }
  /// What a file of `bytes` becomes by Numbered.
  std::string Saved(std::string_view bytes) {
    WriteBytes(file, bytes);
    SaveRadioFile(file, Numbered());
    return ReadBytes(file);
  }

  TempFolder folder;
  fs::path file = folder / "Viper.ini";
};

TEST(Callsigns, AreLogBooksWithAPilotsFile) {
  const TempFolder folder;
  for (const char* const name : {"Viper.lbk", "Viper.ini", "ace.LBK", "ACE.INI", "Nobody.lbk", "Bob.ini", "Two.one.lBk",
                                 "Two.one.ini", "Odd-lbk", "Odd.ini", "lbk", ".lbk", ".ini", "Eve.lbk2", "Eve.ini"}) {
    WriteBytes(folder / name, "");
  }
  fs::create_directory(folder / "Folder.lbk");
  WriteBytes(folder / "Folder.ini", "");
  WriteBytes(folder / "Other.lbk", "");
  fs::create_directory(folder / "Other.ini");
  // Of "Odd-lbk" the last three letters count alone.
  EXPECT_THAT(NamesOf(folder.Path()), ElementsAre("ace", "Odd", "Two.one", "Viper"));
  EXPECT_EQ(ListCallsigns(folder.Path())[0].File, folder / "ACE.INI");
}

TEST(Callsigns, FolderThatCannotBeReadHasNone) {
  const TempFolder folder;
  EXPECT_THAT(NamesOf(folder / "missing"), IsEmpty());
  WriteBytes(folder / "file", "");
  EXPECT_THAT(NamesOf(folder / "file"), IsEmpty());
}

TEST_F(PilotFile, PresetsAreReadFromTheirSection) {
  const RadioPresets read = Read(
      "[COMMS]\r\nUHF_1=1\r\n[radio]\r\nuhf_1=272700\r\nUHF_20 = 253700 \r\nUHF_2=\r\nVHF_1=59400\r\nVHF_21=7\r\n"
      "UHF_COMMENT_1=Ops\r\nUHF_1=999\r\n[Radio]\r\nUHF_3=3");
  EXPECT_EQ(read.Uhf[1], "272700");
  EXPECT_EQ(read.Uhf[20], "253700");
  EXPECT_EQ(read.Uhf[2], "000000") << "an empty one is as one that is missing";
  EXPECT_EQ(read.Uhf[3], "000000") << "the first section of the name counts";
  EXPECT_EQ(read.Vhf[1], "59400") << "five digits are real";
  EXPECT_EQ(read.Vhf[20], "000000");
}

TEST_F(PilotFile, WithoutTheSectionAllAreUnset) {
  RadioPresets read = Read("[COMMS]\r\nUHF_1=272700\r\n");
  read.Uhf[0] = read.Vhf[0] = "000000";
  EXPECT_THAT(read.Uhf, Each("000000"));
  EXPECT_THAT(read.Vhf, Each("000000"));
  EXPECT_EQ(Read("").Uhf[20], "000000");
}

TEST_F(PilotFile, OnlyTheValuesChange) {
  std::string before = "; head\n[STPT]\r\ntarget_0=0.0, 1,  Not set\r\nUHF_1=1\r\n\r\n [Radio] x\r\n";
  std::string after = before;
  for (std::size_t at = PresetCount; at >= 1; --at) {
    const std::string number = std::to_string(at);
    before += "UHF_" + number + " = \t000000 \r\nUHF_COMMENT_" + number + "=\"Ops\" \nvhf_" + number + "=\n";
    after += "UHF_" + number + " = \t" + std::to_string(300000 + at) + " \r\nUHF_COMMENT_" + number +
             "=\"Ops\" \nvhf_" + number + "=" + std::to_string(59400 + at) + "\n";
  }
  const std::string rest = "UHF_1=again\n;VHF_1=5\nUHF_2\n\n[Radio]\nUHF_1=7\n\xE9\x81\t\n[COMMS";
  EXPECT_EQ(Saved(before + rest), after + rest);
}

TEST_F(PilotFile, QuotesGoWithTheValue) {
  EXPECT_NE(Saved("[Radio]\nUHF_5=\"1\"\nVHF_5=\n").find("[Radio]\nUHF_5=300005\nVHF_5=59405\n"), std::string::npos);
}

TEST_F(PilotFile, MissingPresetsAreAddedToTheSection) {
  EXPECT_EQ(Saved("[Radio]\nILS_1=0\n\n[COMMS]\nComm1=1"),
            "[Radio]\nILS_1=0\n" + NumberedLines("\n") + "\n[COMMS]\nComm1=1");
  EXPECT_EQ(Saved("[COMMS]\r\nComm1=1\r\n[Radio]"), "[COMMS]\r\nComm1=1\r\n[Radio]\r\n" + NumberedLines("\r\n"));
  EXPECT_EQ(Saved("[COMMS]\nComm1=1"), "[COMMS]\nComm1=1\n[Radio]\n" + NumberedLines("\n"));
  EXPECT_EQ(Saved(""), "[Radio]\r\n" + NumberedLines("\r\n"));
}

TEST_F(PilotFile, CutAnywhereItTakesThePresetsAndKeepsTheRest) {
  const std::string whole = "[A]\r\nB=1\r\n[Radio]\r\nUHF_1=272700\r\nVHF_1=59400\r\nC=2\r\n[D]\r\nE=3\r\n";
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string saved = Saved(whole.substr(0, length));
    const RadioPresets read = LoadRadioFile(file);
    for (std::size_t at = 1; at <= PresetCount; ++at) {
      EXPECT_EQ(read.Uhf[at], Numbered().Uhf[at]) << length;
      EXPECT_EQ(read.Vhf[at], Numbered().Vhf[at]) << length;
    }
    // All that stood before the section stands still.
    EXPECT_EQ(saved.rfind(whole.substr(0, std::min<std::size_t>(length, 10)), 0), 0U) << length;
  }
  const std::string saved = ReadBytes(file);
  EXPECT_EQ(Saved(saved), saved) << "once more";
}

TEST_F(PilotFile, PresetStaysOnItsLine) {
  WriteBytes(file, "[Radio]\nUHF_1=1\nX=2\n");
  RadioPresets presets = Numbered();
  presets.Uhf[1] = "5\r\n[A]";
  SaveRadioFile(file, presets);
  EXPECT_EQ(ReadBytes(file).rfind("[Radio]\nUHF_1=5  [A]\nX=2\n", 0), 0U);
}

TEST_F(PilotFile, WhatCannotBeWrittenStays) {
  const std::string before = "[Radio]\nUHF_1=1\n";
  WriteBytes(file, before);
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_EQ(FailureOf([&] { SaveRadioFile(file, Numbered()); }), "Viper.ini: it is write-protected");
  fs::permissions(file, fs::perms::owner_all);
  fs::create_directory(folder / "Viper.ini.new");  // where the neighbour would stand
  EXPECT_EQ(FailureOf([&] { SaveRadioFile(file, Numbered()); }), "Viper.ini cannot be written");
  EXPECT_EQ(ReadBytes(file), before);

  const std::string wide("\xFF\xFE[\0R\0", 6);
  WriteBytes(file, wide);
  EXPECT_EQ(FailureOf([&] { SaveRadioFile(file, Numbered()); }), "Viper.ini: text in UTF-16 is not written");
  EXPECT_EQ(ReadBytes(file), wide);
}

TEST_F(PilotFile, MissingFileIsAFailure) {
  EXPECT_EQ(FailureOf([&] { LoadRadioFile(file); }), "Viper.ini is no file");
  EXPECT_EQ(FailureOf([&] { SaveRadioFile(file, Numbered()); }), "Viper.ini is no file");
  EXPECT_FALSE(fs::exists(file));
}

}  // namespace
}  // namespace kestrel::falcon
