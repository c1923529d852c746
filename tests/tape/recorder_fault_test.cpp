// Faults injected into recording: a disk that is full at byte N, a kill in the midst.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "doubles/full_disk.h"
#include "tape/golden_tape.h"
#include "tape/recorder.h"

namespace kestrel::tape {
namespace {

constexpr double Start = 46347.25;
const TapeHeader head = {.SyncInterval = 250, .BullX = 512, .BullY = 300};

TEST(RecorderFault, ADiskFullAtAnyByteLeavesTheWholeRecordsAndTellsOnce) {
  const test::TempFolder folder;
  constexpr int Cycles = 4;
  std::vector<link::Tables> session;
  std::vector<std::string> records;
  std::size_t whole = 41;
  for (int cycle = 0; cycle < Cycles; ++cycle) {
    session.push_back(test::SampleTables(2, 1, cycle));
    records.push_back(test::GoldenRecord(Start + cycle, session.back()));
    whole += records.back().size();
  }
  for (std::size_t room = 0; room <= whole; ++room) {
    // Some file systems bring a file that is written over to the disk when it is closed.
    std::filesystem::remove(folder / TapeFileName(Start));
    Recorder recorder;
    int told = 0;
    {
      const doubles::FullDisk disk(room);
      try {
        recorder.RecordingStart(folder.Path(), Start, head);
        for (int cycle = 0; cycle < Cycles; ++cycle) {
          try {
            recorder.ComputeRecData(session[static_cast<std::size_t>(cycle)], Start + cycle, 1000 + cycle);
          } catch (const base::RuntimeFailure&) {
            ++told;
            ASSERT_FALSE(recorder.Recording()) << room;
          }
        }
        recorder.RecordingEnd(2000);
      } catch (const base::RuntimeFailure&) {
        ++told;
      }
    }
    ASSERT_FALSE(recorder.Recording()) << room;
    ASSERT_EQ(told, room < whole ? 1 : 0) << room;
    if (room < 41) {
      ASSERT_FALSE(std::filesystem::exists(folder / TapeFileName(Start))) << room;
      continue;
    }
    std::string expected;
    int count = 0;
    while (count < Cycles && 41 + expected.size() + records[static_cast<std::size_t>(count)].size() <= room) {
      expected += records[static_cast<std::size_t>(count++)];
    }
    ASSERT_EQ(recorder.RecordCount(), count) << room;
    ASSERT_EQ(test::ReadBytes(recorder.Path()),
              test::GoldenHeader(count, count == Cycles ? 2000 : 1000 + count, Start, 512, 300) + expected)
        << room;
  }
}

TEST(RecorderFault, AfterAFullDiskTheNextTapeIsWhole) {
  const test::TempFolder folder;
  Recorder recorder;
  {
    const doubles::FullDisk disk(100);
    recorder.RecordingStart(folder.Path(), Start, head);
    EXPECT_THROW(recorder.ComputeRecData(test::SampleTables(2, 1, 1), Start, 1000), base::RuntimeFailure);
  }
  EXPECT_TRUE(recorder.CountWritten());
  const link::Tables tables = test::SampleTables(1, 1, 0);
  recorder.RecordingStart(folder.Path(), Start + 1, head);
  recorder.ComputeRecData(tables, Start + 1, 1000);
  recorder.RecordingEnd(1000);
  EXPECT_EQ(test::ReadBytes(recorder.Path()),
            test::GoldenHeader(1, 1000, Start + 1, 512, 300) + test::GoldenRecord(Start + 1, tables));
}

TEST(RecorderFault, ACountThatCannotBeWrittenIsToldAndTheTapeClosed) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  const link::Tables tables = test::SampleTables(1, 1, 0);
  recorder.ComputeRecData(tables, Start, 1000);
  {
    const doubles::FullDisk disk(9);
    EXPECT_THROW(recorder.RecordingEnd(1000), base::RuntimeFailure);
  }
  EXPECT_FALSE(recorder.Recording());
  EXPECT_FALSE(recorder.CountWritten());
  recorder.RecordingEnd(1000);
  EXPECT_EQ(test::ReadBytes(recorder.Path()),
            test::GoldenHeader(0, 250, Start, 512, 300) + test::GoldenRecord(Start, tables));
}

TEST(RecorderFault, ACountThatIsLostAfterAFailedRecordIsKnown) {
  const test::TempFolder folder;
  Recorder recorder;
  recorder.RecordingStart(folder.Path(), Start, head);
  const link::Tables tables = test::SampleTables(1, 1, 0);
  recorder.ComputeRecData(tables, Start, 1000);
  {
    const doubles::FullDisk disk(9);
    EXPECT_THROW(recorder.ComputeRecData(tables, Start + 1, 1000), base::RuntimeFailure);
  }
  EXPECT_FALSE(recorder.Recording());
  EXPECT_EQ(recorder.RecordCount(), 1);
  EXPECT_FALSE(recorder.CountWritten());
  EXPECT_EQ(test::ReadBytes(recorder.Path()),
            test::GoldenHeader(0, 250, Start, 512, 300) + test::GoldenRecord(Start, tables));
}

TEST(RecorderFault, AKillLosesAtMostTheRecordBeingWritten) {
  const test::TempFolder folder;
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const link::Tables tables = test::SampleTables(20, 50, 200);
  const std::string record = test::GoldenRecord(Start, tables);
  for (int round = 0; round < 20; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      Recorder recorder;
      recorder.RecordingStart(folder.Path(), Start, head);
      for (;;) {
        recorder.ComputeRecData(tables, Start, 1000);
        if (write(ends[1], "x", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
    char mark;
    std::size_t told = 0;
    for (auto records = random() % 4 + 1; records > 0; --records)
      told += static_cast<std::size_t>(read(ends[0], &mark, 1));
    const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 2000);
    while (std::chrono::steady_clock::now() < moment) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &mark, 1) == 1) ++told;
    close(ends[0]);
    const std::string bytes = test::ReadBytes(folder / TapeFileName(Start));
    ASSERT_GE(bytes.size(), 41U);
    EXPECT_EQ(bytes.substr(0, 41), test::GoldenHeader(0, 250, Start, 512, 300));
    const std::size_t found = (bytes.size() - 41) / record.size();
    EXPECT_GE(found, told);
    EXPECT_LE(found, told + 1);
    for (std::size_t n = 0; n < found; ++n) {
      EXPECT_TRUE(bytes.compare(41 + n * record.size(), record.size(), record) == 0) << n;
    }
  }
}

}  // namespace
}  // namespace kestrel::tape

#endif
