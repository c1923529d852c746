#include "base/debug_log.h"

#include <gtest/gtest.h>

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

#ifdef __linux__
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
