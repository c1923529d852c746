#include "tape/recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "tape/golden_tape.h"

namespace kestrel::tape {
namespace {

namespace fs = std::filesystem;

/// 2026-11-21 09:05:07.
constexpr double Start = 46347 + (9 * 3600 + 5 * 60 + 7) / 86400.0;
constexpr double Second = 1 / 86400.0;
const TapeHeader head = {.RecordCount = 77, .SyncInterval = 250, .StartTime = 1, .BullX = 512.5, .BullY = 300.25};

TEST(TapeName, IsDayMonthYearAndTime) {
  EXPECT_EQ(TapeFileName(Start), "21-11-26_090507.tap");
  EXPECT_EQ(TapeFileName(36526), "01-01-00_000000.tap");
}

TEST(TapeName, RoundsToTheSecondAcrossMidnight) {
  EXPECT_EQ(TapeFileName(46387 + 86399.7 / 86400), "01-01-27_000000.tap");
}

TEST(Recorder, StartAndStopWithoutARecordLeaves41Bytes) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder / "TAPES", Start, head);
  EXPECT_TRUE(recorder.Recording());
  EXPECT_EQ(test::ReadBytes(folder / "TAPES" / "21-11-26_090507.tap"),
            test::GoldenHeader(0, 250, Start, 512.5, 300.25));
  recorder.RecordingEnd(1000);
  EXPECT_FALSE(recorder.Recording());
  const std::string bytes = test::ReadBytes(recorder.Path());
  EXPECT_EQ(bytes.size(), 41U);
  EXPECT_EQ(bytes, test::GoldenHeader(0, 1000, Start, 512.5, 300.25));
  EXPECT_TRUE(recorder.CountWritten());
}

TEST(Recorder, SessionIsByteForByteTheGoldenTape) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  std::string records;
  for (int cycle = 0; cycle < 40; ++cycle) {
    // Players and AI come and go.
    const link::Tables tables = test::SampleTables(cycle * 7 % 13, cycle * 5 % 11, cycle);
    recorder.ComputeRecData(tables, Start + cycle * Second, 1000);
    records += test::GoldenRecord(Start + cycle * Second, tables);
    EXPECT_EQ(recorder.RecordCount(), cycle + 1);
    // On the disk at once, with the count of a tape that is not closed yet.
    EXPECT_EQ(test::ReadBytes(recorder.Path()), test::GoldenHeader(0, 250, Start, 512.5, 300.25) + records);
  }
  recorder.RecordingEnd(1013);
  EXPECT_EQ(test::ReadBytes(recorder.Path()), test::GoldenHeader(40, 1013, Start, 512.5, 300.25) + records);
  EXPECT_EQ(recorder.Bytes(), 41 + records.size());
}

TEST(Recorder, RecordOfManyPiecesIsByteForByteTheGoldenTape) {
  const test::TempFolder folder;
  const link::Tables tables = test::SampleTables(1500, 2000, 9);
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  recorder.ComputeRecData(tables, Start, 1000);
  recorder.RecordingEnd(1000);
  EXPECT_TRUE(test::ReadBytes(recorder.Path()) ==
              test::GoldenHeader(1, 1000, Start, 512.5, 300.25) + test::GoldenRecord(Start, tables));
}

TEST(Recorder, EmptyNameIsTwoZeroBytes) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  recorder.ComputeRecData({}, Start, 1000);
  recorder.RecordingEnd(1000);
  // Time, descriptor of AI, its slot 0: the name comes first.
  EXPECT_EQ(test::ReadBytes(recorder.Path()).substr(41 + 8, 10 + 2), std::string("\1\0"
                                                                                 "\1\0\0\0"
                                                                                 "\0\0\0\0"
                                                                                 "\0\0",
                                                                                 12));
}

TEST(Recorder, TextBeyondItsLengthFieldIsCut) {
  const test::TempFolder folder;
  link::Tables tables;
  tables.Clients[0].Info = std::string(70000, 'i');
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  recorder.ComputeRecData(tables, Start, 1000);
  recorder.RecordingEnd(1000);
  tables.Clients[0].Info.resize(65535);
  EXPECT_TRUE(test::ReadBytes(recorder.Path()).substr(41) == test::GoldenRecord(Start, tables));
}

TEST(Recorder, SecondStartInOneSecondWritesOverTheFirst) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  recorder.ComputeRecData(test::SampleTables(3, 3, 3), Start, 1000);
  recorder.RecordingEnd(1000);
  recorder.RecordingStart(folder.Path(), Start, head);
  EXPECT_EQ(recorder.RecordCount(), 0);
  recorder.RecordingEnd(1000);
  EXPECT_EQ(test::ReadBytes(recorder.Path()), test::GoldenHeader(0, 1000, Start, 512.5, 300.25));
}

TEST(Recorder, WithoutATapeNothingIsWritten) {
  Recorder recorder;
  recorder.ComputeRecData(test::SampleTables(1, 1, 1), Start, 1000);
  recorder.RecordingEnd(1000);
  EXPECT_EQ(recorder.RecordCount(), 0);
  EXPECT_EQ(recorder.MinutesLeft(1000), std::nullopt);
}

TEST(Recorder, FolderThatCannotBeMadeIsTold) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "TAPES", "a file");
  Recorder recorder;
  EXPECT_THROW(recorder.RecordingStart(folder / "TAPES", Start, head), base::RuntimeFailure);
  EXPECT_FALSE(recorder.Recording());
}

TEST(Recorder, NameThatIsTakenByAFolderIsTold) {
  const test::TempFolder folder;
  fs::create_directory(folder / "21-11-26_090507.tap");
  Recorder recorder;
  EXPECT_THROW(recorder.RecordingStart(folder.Path(), Start, head), base::RuntimeFailure);
  EXPECT_FALSE(recorder.Recording());
}

TEST(MinutesLeft, IsWhatTheRestOfTheDiskTakesAsRecordsGrow) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  std::vector<std::uint64_t> sizes;
  for (int cycle = 0; cycle < 100; ++cycle) {
    const std::uint64_t before = recorder.Bytes();
    recorder.ComputeRecData(test::SampleTables(8, 4, cycle), Start, 500);
    sizes.push_back(recorder.Bytes() - before);
    EXPECT_EQ(recorder.MinutesLeft(1000).has_value(), cycle >= 9) << cycle << ": the first ones tell little";
  }
  const std::uint64_t growth = sizes[99] - sizes[98];
  ASSERT_EQ(growth, 8 * 16U);
  // Room for exactly 240 more records: two minutes.
  std::uint64_t room = 0;
  for (std::uint64_t n = 1; n <= 240; ++n) room += sizes.back() + n * growth;
  EXPECT_NEAR(recorder.MinutesLeft(room).value(), 2, 0.01);
  EXPECT_EQ(recorder.MinutesLeft(0), 0);
}

TEST(MinutesLeft, IsThatOfTheSumOfTheRecords) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  link::Tables tables;
  tables.Clients.Append({});
  for (int n = 0; n < 10; ++n) recorder.ComputeRecData(tables, Start, 1000);
  // The time 8, the aircraft 10 + 29, the clients 10; each of the two, the dummy among them, 52 + 10 + 16.
  ASSERT_EQ(recorder.Bytes(), 41 + 10 * 213u);
  // 60 records: 60 * 213 + (1 + ... + 60) * 16 = 12780 + 1830 * 16. 600: 127800 + 180300 * 16.
  EXPECT_NEAR(recorder.MinutesLeft(42'060).value(), 1, 1e-9);
  EXPECT_NEAR(recorder.MinutesLeft(3'012'600).value(), 10, 1e-9);
  // 8 hours: 28800 * 213 + 28800 * 28801 / 2 * 16.
  EXPECT_NEAR(recorder.MinutesLeft(6'641'884'800).value(), 480, 1e-9);
}

TEST(MinutesLeft, KnowsRecordsThatDoNotGrow) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  for (int n = 0; n < 10; ++n) recorder.ComputeRecData(test::SampleTables(0, 2, 2), Start, 1000);
  const std::uint64_t record = (recorder.Bytes() - 41) / 10;
  EXPECT_NEAR(recorder.MinutesLeft(90 * record).value(), 1.5, 1e-9);
}

TEST(MinutesLeft, TakesWhatComesAtOnceForNoGrowth) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  for (int n = 0; n < 10; ++n) recorder.ComputeRecData(test::SampleTables(0, 2, 2), Start, 1000);
  const std::uint64_t before = recorder.Bytes();
  // A snapshot of many more aircraft: the records are larger from now on, but do not go on growing by it.
  recorder.ComputeRecData(test::SampleTables(0, 300, 2), Start, 1000);
  EXPECT_NEAR(recorder.MinutesLeft(90 * (recorder.Bytes() - before)).value(), 1.5, 1e-9);
}

TEST(MinutesLeft, LeavesRecordsWithoutACycleOut) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  for (int n = 0; n < 5; ++n) recorder.ComputeRecData(test::SampleTables(0, 2, 2), Start, 0);
  for (int n = 0; n < 10; ++n) {
    EXPECT_EQ(recorder.MinutesLeft(1000), std::nullopt) << n;
    recorder.ComputeRecData(test::SampleTables(0, 2, 2), Start, 1000);
  }
  const std::uint64_t record = (recorder.Bytes() - 41) / 15;
  EXPECT_NEAR(recorder.MinutesLeft(90 * record).value(), 1.5, 1e-9);
}

TEST(MinutesLeft, IsNotKnownWithoutACycle) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  for (int n = 0; n < 20; ++n) recorder.ComputeRecData(test::SampleTables(2, 2, 2), Start, 0);
  EXPECT_EQ(recorder.MinutesLeft(1000), std::nullopt);
}

}  // namespace
}  // namespace kestrel::tape
