// Tapes of 5 GB, almost all of it holes that take no room on the disk: positions beyond 32 bits, and lies that only
// such a file can tell.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <fstream>
#include <string>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "tape/golden_tape.h"
#include "tape/reader.h"

namespace kestrel::tape {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t FiveGigabytes = std::uint64_t{5} << 30;
constexpr double Start = 46347.25;

/// The most memory this process has had, bytes.
std::uint64_t PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

/// What reading lies may take, far below what the file tells of.
constexpr std::uint64_t Modest = 64 << 20;

void WriteAt(const fs::path& path, std::uint64_t position, const std::string& bytes) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(position));
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.flush().good());
}

/// A record up to the history of its one slot of Clients, which tells of `points` positions.
std::string RecordBeforeHistory(double time, std::int64_t points) {
  std::string bytes = test::GoldenRecord(time, {});
  bytes.resize(bytes.size() - 10 - 16);
  return bytes + test::TapeArray(points);
}

TEST(HugeTape, RecordsBeyond4GigabytesAreFoundAndRead) {
  const test::TempFolder folder;
  const fs::path path = folder / "a.tap";
  constexpr std::uint64_t points = (200 << 20) / 16;
  constexpr int records = 26;
  test::WriteBytes(path, test::GoldenHeader(records + 1, 1000, Start, 0, 0));
  std::uint64_t at = FirstRecordAt;
  for (int n = 0; n < records; ++n) {
    const std::string head = RecordBeforeHistory(Start + n, points);
    fs::resize_file(path, at + head.size() + points * 16);
    WriteAt(path, at, head);
    at += head.size() + points * 16;
  }
  ASSERT_GT(at, FiveGigabytes);
  const std::uint64_t lastAt = at;
  const std::string last = test::GoldenRecord(Start + records, test::SampleTables(3, 3, 3));
  WriteAt(path, lastAt, last);

  const std::uint64_t before = PeakMemory();
  TapeReader reader(path);
  reader.CheckRecordCount();
  std::uint64_t found = FirstRecordAt;
  for (int n = 0; n < records; ++n) found = reader.Skip(found).Next;
  ASSERT_EQ(found, lastAt);
  EXPECT_EQ(reader.Skip(lastAt).Next, lastAt + last.size());
  EXPECT_EQ(reader.ReadTime(lastAt), Start + records);
  const TapeRecord record = reader.ReadRecord(lastAt);
  EXPECT_EQ(record.Clients[3].Name, "Pilot 3");
  EXPECT_EQ(record.Clients[3].History.UpperBound(), 3U);
  EXPECT_LT(PeakMemory() - before, Modest);
}

TEST(HugeTape, HistoryOfTheWholeFileIsRefused) {
  const test::TempFolder folder;
  const fs::path path = folder / "a.tap";
  test::WriteBytes(path, test::GoldenHeader(1, 1000, Start, 0, 0) + RecordBeforeHistory(Start, 300'000'000));
  fs::resize_file(path, FiveGigabytes);
  const std::uint64_t before = PeakMemory();
  TapeReader reader(path);
  EXPECT_THROW(reader.Skip(FirstRecordAt), base::RuntimeFailure);
  EXPECT_THROW(reader.ReadRecord(FirstRecordAt), base::RuntimeFailure);
  EXPECT_LT(PeakMemory() - before, Modest);
}

TEST(HugeTape, TableOfTheWholeFileIsRefused) {
  const test::TempFolder folder;
  const fs::path path = folder / "a.tap";
  test::WriteBytes(path,
                   test::GoldenHeader(1, 1000, Start, 0, 0) + test::BytesF64(Start) + test::TapeArray(100'000'000));
  fs::resize_file(path, FiveGigabytes);
  const std::uint64_t before = PeakMemory();
  TapeReader reader(path);
  EXPECT_THROW(reader.Skip(FirstRecordAt), base::RuntimeFailure);
  EXPECT_THROW(reader.ReadRecord(FirstRecordAt), base::RuntimeFailure);
  EXPECT_LT(PeakMemory() - before, Modest);
}

TEST(HugeTape, EmptyBytesBehindTheHeaderAreNoRecord) {
  const test::TempFolder folder;
  const fs::path path = folder / "a.tap";
  test::WriteBytes(path, test::GoldenHeader(100'000'000, 1000, Start, 0, 0));
  fs::resize_file(path, FiveGigabytes);
  TapeReader reader(path);
  reader.CheckRecordCount();
  EXPECT_THROW(reader.Skip(FirstRecordAt), base::RuntimeFailure);
  test::WriteBytes(path, test::GoldenHeader(2'000'000'000, 1000, Start, 0, 0));
  fs::resize_file(path, FiveGigabytes);
  EXPECT_THROW(TapeReader(path).CheckRecordCount(), base::RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::tape

#endif
