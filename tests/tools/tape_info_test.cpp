#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "project_paths.h"
#include "tape-info/options.h"
#include "tape-info/repair.h"
#include "tape-info/survey.h"
#include "tape/acmi_reader.h"
#include "tape/golden_tape.h"

namespace kestrel::tapeinfo {
namespace {

namespace fs = std::filesystem;

constexpr double Start = 46347.25;
constexpr double Second = 1 / 86400.0;

/// Three records: no player, one, two.
std::string Records() {
  std::string bytes;
  for (int n = 0; n < 3; ++n) bytes += test::GoldenRecord(Start + n * Second, test::SampleTables(n, 5 - n, 2 * n));
  return bytes;
}
std::string Tape(std::int32_t count) { return test::GoldenHeader(count, 1000, Start, 512.5, 300.25) + Records(); }

class TapeInfo : public testing::Test {
 protected:
  Survey Look(const std::string& bytes) {
    fs::remove(file);
    test::WriteBytes(file, bytes);
    return LookThrough(file);
  }
  const test::TempFolder folder;
  const fs::path file = folder / "a.tap";
  const fs::path copy = folder / "b.tap";
};

TEST_F(TapeInfo, WholeTapeIsTold) {
  const Survey survey = Look(Tape(3));
  EXPECT_TRUE(survey.IsWhole());
  EXPECT_EQ(survey.WholeRecords, 3U);
  EXPECT_EQ(survey.FirstTime, Start);
  EXPECT_EQ(survey.LastTime, Start + 2 * Second);
  EXPECT_EQ(survey.Players.Least, 0U);
  EXPECT_EQ(survey.Players.Most, 2U);
  EXPECT_EQ(survey.AIAircraft.Least, 3U);
  EXPECT_EQ(survey.AIAircraft.Most, 5U);
  ASSERT_EQ(survey.Roster.size(), 2U);
  EXPECT_EQ(survey.Roster[0].Name, "Pilot 1");
  EXPECT_EQ(survey.Roster[0].Id, -7);
  EXPECT_EQ(survey.Roster[0].First, Start + Second);
  EXPECT_EQ(survey.Roster[0].Last, Start + 2 * Second);
  EXPECT_EQ(survey.Roster[0].Records, 2U);
  EXPECT_EQ(survey.Roster[1].Records, 1U);
}

TEST_F(TapeInfo, PartsAddUpToTheFile) {
  const Survey survey = Look(Tape(3));
  EXPECT_EQ(41 + survey.TimeBytes + survey.AIBytes + survey.ClientBytes + survey.HistoryBytes, survey.FileBytes);
  // Slots of histories with their descriptors: the dummies' three, then 2 positions for one player, 4 for two.
  EXPECT_EQ(survey.HistoryBytes, 6 * 10U + (3 + 3 + 5 + 5) * 16U);
}

TEST_F(TapeInfo, ReportNamesWhatATapeHolds) {
  const std::string report = Report(Look(Tape(3)));
  for (const char* part :
       {"2026-11-21 06:00:00", "2026-11-21 06:00:02", "0:00:02", "1000 ms", "512.500, 300.250",
        "players         0 to 2", "AI aircraft     3 to 5", "Pilot 1", "Pilot 2", "records         3"}) {
    EXPECT_NE(report.find(part), std::string::npos) << part << "\n" << report;
  }
  EXPECT_EQ(report.find("repair"), std::string::npos) << report;
}

TEST_F(TapeInfo, ControlCharactersOfANameDoNotReachTheTerminal) {
  link::Tables tables = test::SampleTables(1, 0, 0);
  tables.Clients[1].Name = "a\x1B[2J\x9D\xE4";
  const std::string report = Report(Look(test::GoldenHeader(1, 1000, Start, 0, 0) + test::GoldenRecord(Start, tables)));
  EXPECT_NE(report.find("a.[2J.\xC3\xA4"), std::string::npos) << report;
}

TEST_F(TapeInfo, TapeThatWasNotClosedIsTold) {
  const Survey survey = Look(Tape(0));
  EXPECT_FALSE(survey.IsWhole());
  EXPECT_EQ(survey.WholeRecords, 3U);
  EXPECT_NE(Report(survey).find("The count is 0 though 3 whole records are there"), std::string::npos);
}

TEST_F(TapeInfo, TapeThatGrowsMeanwhileIsToldAsFarAsItWasRead) {
  const std::string record = test::GoldenRecord(Start, test::SampleTables(2, 2, 2));
  for (int tape = 0; tape < 20; ++tape) {
    fs::remove(file);
    test::WriteBytes(file, test::GoldenHeader(0, 1000, Start, 0, 0));
    std::atomic<bool> ended = false;
    std::thread recorder([&] {
      std::ofstream grows(file, std::ios::binary | std::ios::app);
      for (int n = 0; n < 300; ++n) grows << record.substr(0, 100) << std::flush << record.substr(100) << std::flush;
      ended = true;
    });
    while (!ended) {
      const Survey survey = LookThrough(file);
      EXPECT_EQ(survey.WholeBytes, 41 + survey.WholeRecords * record.size());
      EXPECT_GE(survey.FileBytes, survey.WholeBytes);
      EXPECT_LT(survey.BehindRecords(), record.size());
    }
    recorder.join();
    EXPECT_EQ(LookThrough(file).WholeRecords, 300U);
  }
}

TEST(TapeSurvey, HasNothingBehindTheRecordsOfAFileThatHasBecomeShorter) {
  Survey survey;
  survey.WholeBytes = 500;
  survey.FileBytes = 400;
  EXPECT_EQ(survey.BehindRecords(), 0U);
  survey.FileBytes = 501;
  EXPECT_EQ(survey.BehindRecords(), 1U);
}

TEST_F(TapeInfo, CountThatLiesIsTold) {
  for (const std::int32_t count : {-1, 1, 2, 4, 2147483647}) {
    const Survey survey = Look(Tape(count));
    EXPECT_FALSE(survey.IsWhole()) << count;
    EXPECT_NE(Report(survey).find("The count is " + std::to_string(count) + ", but 3 whole"), std::string::npos);
  }
}

TEST_F(TapeInfo, EmptyTapeIsWhole) {
  const Survey survey = Look(test::GoldenHeader(0, 1000, Start, 0, 0));
  EXPECT_TRUE(survey.IsWhole());
  EXPECT_NE(Report(survey).find("records         0\n"), std::string::npos);
  EXPECT_THROW(Repair(file, survey, copy), base::RuntimeFailure);
  EXPECT_FALSE(fs::exists(copy));
}

TEST_F(TapeInfo, WhatIsNoTapeIsRefused) {
  EXPECT_THROW(Look(""), tape::WrongFormat);
  EXPECT_THROW(Look("no tape of any kind"), tape::WrongFormat);
  EXPECT_THROW(Look(Tape(3).substr(0, 40)), base::RuntimeFailure);
  EXPECT_THROW(LookThrough(folder / "missing"), base::RuntimeFailure);
}

TEST_F(TapeInfo, TapeCutAnywhereIsRepairedToItsWholeRecords) {
  const std::string whole = Tape(3);
  std::vector<std::size_t> ends = {41};
  for (int n = 0; n < 3; ++n) {
    ends.push_back(ends.back() + test::GoldenRecord(Start, test::SampleTables(n, 5 - n, 2 * n)).size());
  }
  ASSERT_EQ(ends.back(), whole.size());
  std::size_t records = 0;
  for (std::size_t length = 41; length <= whole.size(); ++length) {
    if (records < 3 && length >= ends[records + 1]) ++records;
    const Survey survey = Look(test::GoldenHeader(0, 1000, Start, 512.5, 300.25) + whole.substr(41, length - 41));
    ASSERT_EQ(survey.WholeRecords, records) << length;
    ASSERT_EQ(survey.BehindRecords(), length - ends[records]) << length;
    if (records == 0) continue;
    fs::remove(copy);
    Repair(file, survey, copy);
    ASSERT_EQ(test::ReadBytes(copy),
              test::GoldenHeader(static_cast<std::int32_t>(records), 1000, Start, 512.5, 300.25) +
                  whole.substr(41, ends[records] - 41))
        << length;
  }
  EXPECT_TRUE(LookThrough(copy).IsWhole());
}

TEST_F(TapeInfo, RepairLeavesTheOriginalAsItIs) {
  const Survey survey = Look(Tape(0));
  Repair(file, survey, copy);
  EXPECT_EQ(test::ReadBytes(file), Tape(0));
  EXPECT_EQ(test::ReadBytes(copy), Tape(3));
}

TEST_F(TapeInfo, RepairNeverWritesOverAFile) {
  const Survey survey = Look(Tape(0));
  test::WriteBytes(copy, "something else");
  EXPECT_THROW(Repair(file, survey, copy), base::RuntimeFailure);
  EXPECT_EQ(test::ReadBytes(copy), "something else");
  EXPECT_THROW(Repair(file, survey, file), base::RuntimeFailure);
  fs::create_symlink(file, folder / "link");
  EXPECT_THROW(Repair(file, survey, folder / "link"), base::RuntimeFailure);
  EXPECT_EQ(test::ReadBytes(file), Tape(0));
}

TEST_F(TapeInfo, RepairThatFailsLeavesNoCopy) {
  const Survey survey = Look(Tape(0));
  fs::resize_file(file, 60);
  EXPECT_THROW(Repair(file, survey, copy), base::RuntimeFailure);
  EXPECT_FALSE(fs::exists(copy));
}

TEST(TapeInfoOptions, AreRead) {
  EXPECT_EQ(ParseOptions({"a.tap"}).File, "a.tap");
  EXPECT_EQ(ParseOptions({"a.tap"}).RepairTo, "");
  EXPECT_EQ(ParseOptions({"--repair", "a", "b"}).RepairTo, "b");
  EXPECT_EQ(ParseOptions({"a", "b", "--repair"}).File, "a");
  EXPECT_EQ(ParseOptions({"--", "--help"}).File, "--help");
  EXPECT_TRUE(ParseOptions({"--help"}).Help);
}

TEST(TapeInfoOptions, WrongWordsAreRefused) {
  const std::vector<std::vector<std::string>> cases = {
      {}, {"a", "b"}, {"--repair"}, {"--repair", "a"}, {"--repair", "a", "b", "c"}, {"--other", "a"}};
  for (const auto& words : cases) EXPECT_THROW(ParseOptions(words), std::invalid_argument) << words.size();
}

TEST(TapeInfoOptions, HelpNamesEachOption) {
  for (const char* name : {"--repair FILE NEW", "--help"}) EXPECT_NE(HelpText().find(name), std::string::npos) << name;
}

/// The exit code of the built program.
int ExitOf(const std::string& words) {
  const int status = std::system((KESTREL_BINARY_DIR "/tools/tape-info " + words + " > /dev/null 2>&1").c_str());
  return status / 256;
}

TEST_F(TapeInfo, ProgramEndsWithWhatItFound) {
  test::WriteBytes(file, Tape(0));
  EXPECT_EQ(ExitOf("--help"), 0);
  EXPECT_EQ(ExitOf(""), 2);
  EXPECT_EQ(ExitOf(file.string()), 3);
  EXPECT_EQ(ExitOf((folder / "missing").string()), 1);
  EXPECT_EQ(ExitOf("--repair " + file.string() + " " + copy.string()), 0);
  EXPECT_EQ(ExitOf("--repair " + file.string() + " " + copy.string()), 1);
  EXPECT_EQ(ExitOf(copy.string()), 0);
}

TEST(TapeInfoOptions, AnExportTakesATapeAFileAndATheater) {
  const Options options = ParseOptions({"--acmi", "a", "b", "--theater", "c.ini"});
  EXPECT_EQ(options.File, "a");
  EXPECT_EQ(options.AcmiTo, "b");
  EXPECT_EQ(options.Theater, "c.ini");
  EXPECT_EQ(options.RepairTo, "");
  EXPECT_EQ(ParseOptions({"a", "b", "--acmi"}).Theater, "");
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"--acmi", "a"}, {"--acmi", "a", "b", "c"}, {"--acmi", "--repair", "a", "b"}, {"a", "--theater", "c.ini"}}) {
    EXPECT_THROW(ParseOptions(words), std::invalid_argument) << words.size();
  }
  for (const char* name : {"--acmi FILE OUT", "--theater INI"}) {
    EXPECT_NE(HelpText().find(name), std::string::npos) << name;
  }
}

TEST_F(TapeInfo, ExportsOverTheTheaterThatIsNamedOrThatOfTheStation) {
  const fs::path tape = folder / "TAPES/a.tap", theater = folder / "Theaters/one.ini";
  const fs::path text = folder / "a.txt.acmi", again = folder / "b.txt.acmi";
  for (const fs::path& each : {tape, theater}) fs::create_directory(each.parent_path());
  test::WriteBytes(tape, Tape(3));
  test::WriteBytes(theater, "[MAP]\r\nNAME=one\r\nSIZE=1024\r\nPICSIZE=64\r\nCOORDLAT=0\r\nCOORDLONG=0\r\n");
  const std::string words = "--acmi " + tape.string() + " ";
  EXPECT_EQ(ExitOf(words + text.string()), 1) << "over which theater?";
  EXPECT_FALSE(fs::exists(text));
  EXPECT_EQ(ExitOf(words + text.string() + " --theater " + theater.string()), 0);
  test::WriteBytes(folder / "KESTREL.ini",
                   "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=none.ini\r\nMAP2=one.ini\r\nCURRENTMAP=2\r\n");
  EXPECT_EQ(ExitOf(words + again.string()), 0);
  EXPECT_EQ(test::ReadBytes(text), test::ReadBytes(again));
  const test::Acmi read = test::ReadAcmi(test::ReadBytes(text));
  ASSERT_EQ(read.Frames.size(), 3U);
  // The bullseye, two players and three AI aircraft.
  EXPECT_EQ(read.Frames[2].Things.size(), 6U);
  // 300.25 map units of 3279.98 feet on a circle of 20925700 feet.
  EXPECT_NEAR(read.Frames[0].Things.at("1").Lat, 300.25 * 3279.98 / 20925700 * 57.2957795, 1e-6);
  EXPECT_EQ(ExitOf(words + text.string() + " --theater " + (folder / "none.ini").string()), 1);
  EXPECT_EQ(ExitOf("--acmi " + (folder / "missing").string() + " " + text.string() + " --theater " + theater.string()),
            1);
}

}  // namespace
}  // namespace kestrel::tapeinfo
