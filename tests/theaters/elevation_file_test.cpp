#include "theaters/elevation_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "theaters/elevations.h"

namespace kestrel::theaters {
namespace {

TEST(ElevationFile, HasTwoBytesOfEachHeight) {
  const test::TempFolder folder;
  const std::vector<std::int16_t> heights = {0, -1, 258, 32767};
  base::FileReplacement file(folder / "x");
  WriteElevations(file, heights, {});
  file.Commit();
  EXPECT_EQ(test::ReadBytes(folder / "x"), std::string("\0\0\xFF\xFF\x02\x01\xFF\x7F", 8));
}

TEST(ElevationFile, IsReadAsItWasWritten) {
  // More than is written at once.
  constexpr std::int32_t size = 700;
  std::vector<std::int16_t> heights;
  for (std::int32_t n = 0; n < size * size; ++n) heights.push_back(static_cast<std::int16_t>(n % 30011));
  const test::TempFolder folder;
  base::FileReplacement file(folder / "x");
  std::uint64_t last = 0;
  WriteElevations(file, heights, [&last](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(total, 490000u);
    EXPECT_GT(done, last);
    last = done;
  });
  EXPECT_EQ(last, 490000u);
  file.Commit();
  Elevations read;
  read.SetSource(folder / "x", size);
  ASSERT_TRUE(read.Read());
  // 650 * 700 + 12 is 455012, of which 15 times 30011 are 450165.
  EXPECT_EQ(read.At(12, 650), 4847);
  EXPECT_EQ(read.At(699, 699), (700 * 700 - 1) % 30011);
}

TEST(ElevationFile, WithoutACommitThereIsNone) {
  const test::TempFolder folder;
  const std::vector<std::int16_t> heights(10);
  {
    base::FileReplacement file(folder / "x");
    EXPECT_THROW(WriteElevations(file, heights, [](std::uint64_t, std::uint64_t) { throw 1; }), int);
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace kestrel::theaters
