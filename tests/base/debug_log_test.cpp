#include "base/debug_log.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "base/failure.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

class FixedClock final : public Clock {
 public:
  std::uint32_t TickCount() const override { return 30; }
  double Now() const override { return 45000 + 3723.0 / 86400; }
};

TEST(DebugLog, LinesAreOnTheDiskAtOnce) {
  const test::TempFolder folder;
  const FixedClock clock;
  DebugLog log(clock);
  log.File.Open(folder / "KESTRELLog.txt");
  log.LogLine("one");
  EXPECT_EQ(test::ReadBytes(folder / "KESTRELLog.txt"), "one\r\n");
  log.LogTimed("two ", "three");
  EXPECT_EQ(test::ReadBytes(folder / "KESTRELLog.txt"), "one\r\n01:02:03 : two three\r\n");
}

TEST(DebugLog, DurationsAreRightOverTheWrapOfTheTickCount) {
  const test::TempFolder folder;
  const FixedClock clock;
  DebugLog log(clock);
  log.File.Open(folder / "log");
  log.LogDuration("Loaded the map picture", 10);
  log.LogDuration("Drew the map", 0xFFFFFFF6);
  EXPECT_EQ(test::ReadBytes(folder / "log"), "Loaded the map picture in 20 ms\r\nDrew the map in 40 ms\r\n");
}

TEST(DebugLog, AClosedLogTakesLinesAndDropsThem) {
  const FixedClock clock;
  DebugLog log(clock);
  EXPECT_FALSE(log.On());
  log.LogLine("nowhere");
  log.LogTimed("nowhere");
  EXPECT_FALSE(log.On());
}

TEST(DebugLog, OpeningEmptiesTheOldFile) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "log", "old");
  LineFile file;
  file.Open(folder / "log");
  EXPECT_TRUE(file.IsOpen());
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(test::ReadBytes(folder / "log"), "");
}

TEST(DebugLog, TheFirstOpeningEmptiesTheOldLogAndALaterOneGoesOn) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "log", "old");
  const FixedClock clock;
  DebugLog log(clock);
  EXPECT_THROW(log.Open(folder / "missing/log"), RuntimeFailure);
  log.Open(folder / "log");
  log.LogLine("one");
  log.File.Close();
  log.Open(folder / "log");
  log.LogLine("two");
  EXPECT_EQ(test::ReadBytes(folder / "log"), "one\r\ntwo\r\n");
}

TEST(DebugLog, AFileThatCannotBeCreatedThrows) {
  const test::TempFolder folder;
  LineFile file;
  EXPECT_THROW(file.Open(folder / "missing/log"), RuntimeFailure);
  EXPECT_FALSE(file.IsOpen());
}

TEST(DebugLog, AMessageStandsWithItsWordAndItsBytesAsTheyAre) {
  const test::TempFolder folder;
  const FixedClock clock;
  DebugLog log(clock);
  log.LogMessage("nowhere ", "SYNCRO", "");
  log.Open(folder / "log");
  log.LogMessage("Command arrived from Server: ", "INDATA", "7\x1e\r\n\xff");
  log.LogMessage("Command sent to Server: ", "AWAEND", "");
  EXPECT_EQ(test::ReadBytes(folder / "log"),
            "01:02:03 : Command arrived from Server: (INDATA)7\x1e\r\n\xff\r\n"
            "01:02:03 : Command sent to Server: (AWAEND)\r\n");
}

class SetClock final : public Clock {
 public:
  std::uint32_t TickCount() const override { return 0; }
  double Now() const override { return Date; }
  double Date = 45000;
};

TEST(DebugLog, EachLineHasTheTimeOfItsOwn) {
  const test::TempFolder folder;
  SetClock clock;
  DebugLog log(clock);
  log.Open(folder / "log");
  log.LogTimed("a");
  log.LogTimed("b");
  clock.Date += 1.0 / 86400;
  log.LogTimed("c");
  clock.Date = 45000;
  log.LogTimed("d");
  EXPECT_EQ(test::ReadBytes(folder / "log"), "00:00:00 : a\r\n00:00:00 : b\r\n00:00:01 : c\r\n00:00:00 : d\r\n");
}

#ifdef __linux__
/// The writes that this process has asked the system for; nothing where that is not told.
std::optional<std::uint64_t> WritesSoFar() {
  std::ifstream file("/proc/self/io");
  std::string word;
  std::uint64_t number = 0;
  while (file >> word >> number) {
    if (word == "syscw:") return number;
  }
  return std::nullopt;
}

TEST(DebugLog, EachLineIsOneWrite) {
  const test::TempFolder folder;
  const FixedClock clock;
  DebugLog log(clock);
  log.Open(folder / "log");
  const std::string large(100'000, 'x');
  const std::optional<std::uint64_t> before = WritesSoFar();
  if (!before) GTEST_SKIP() << "the system does not tell";
  for (int n = 0; n < 50; ++n) log.LogMessage("Command arrived from Server: ", "INDATA", "data");
  log.LogMessage("Command arrived from Server: ", "AILOCA", large);
  EXPECT_EQ(*WritesSoFar() - *before, 51u);
}

TEST(DebugLog, AFullDiskClosesTheFileAndTheSessionGoesOn) {
  LineFile file;
  file.Open("/dev/full");
  file.Write("refused");
  EXPECT_FALSE(file.IsOpen());
  file.Write("dropped");
}
#endif

}  // namespace
}  // namespace kestrel::base
