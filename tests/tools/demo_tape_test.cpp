#include "sample-tape/demo_tape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/temp_folder.h"
#include "link/plot_feed.h"
#include "sample-theater/facts.h"
#include "tape/reader.h"

namespace kestrel::demo {
namespace {

class DemoTape : public testing::Test {
 protected:
  DemoTape() { WriteDemoTape(path); }
  /// Position of each record, the first one at 0.
  std::vector<std::uint64_t> Index(tape::TapeReader& reader) {
    std::vector<std::uint64_t> positions;
    std::uint64_t at = tape::FirstRecordAt;
    for (int n = 0; n < reader.Header().RecordCount; ++n) {
      positions.push_back(at);
      at = reader.Skip(at).Next;
    }
    EXPECT_EQ(at, reader.Size());
    return positions;
  }

  test::TempFolder folder;
  std::filesystem::path path = folder / "TAPES/Demo.tap";
};

TEST_F(DemoTape, IsTheSameEveryTimeAndStandsAlone) {
  const std::string first = test::ReadBytes(path);
  WriteDemoTape(path);
  EXPECT_EQ(first, test::ReadBytes(path));
  EXPECT_LT(first.size(), 5'000'000u);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(path.parent_path())) files += entry.is_regular_file();
  EXPECT_EQ(files, 1);
}

TEST_F(DemoTape, HoldsFiveMinutesOfTheSampleTheatersSession) {
  tape::TapeReader reader(path);
  EXPECT_EQ(reader.Header().RecordCount, Records);
  EXPECT_EQ(reader.Header().BullX, land::Bullseyes[0].X);
  EXPECT_EQ(reader.Header().BullY, land::Bullseyes[0].Y);
  const std::vector<std::uint64_t> positions = Index(reader);
  const tape::TapeRecord first = reader.ReadRecord(positions.front());
  const tape::TapeRecord last = reader.ReadRecord(positions.back());
  EXPECT_NEAR((last.Time - first.Time) * 86400, (Records - 1) * PeriodS, 0.01);
  EXPECT_GE(first.AI.UpperBound(), 40u);
  ASSERT_GE(last.Clients.UpperBound(), 3u);
  std::size_t longest = 0;
  for (const link::PlotRecord& client : last.Clients.Live()) {
    longest = std::max(longest, client.History.UpperBound());
    EXPECT_TRUE(std::isfinite(client.X) && client.X >= 0 && client.X <= 1024) << client.Name;
  }
  EXPECT_EQ(longest, static_cast<std::size_t>(Records) + 1) << "one who flies from before the first record to the last";
  EXPECT_TRUE(std::ranges::any_of(first.Clients.Live(), link::HasShownPosition)) << "the first record shows no player";
}

}  // namespace
}  // namespace kestrel::demo
