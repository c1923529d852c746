// Area files that are cut, that lie, or that are very large.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "areas/area_file.h"
#include "areas/golden_areas.h"
#include "base/temp_folder.h"

namespace kestrel::areas {
namespace {

using test::Bytes4;
using test::Golden;
using test::GoldenFile;
using test::SampleAreas;

constexpr std::array Kinds = {Golden::V2, Golden::V3, Golden::Export};

AreaFileKind KindOf(Golden kind) { return kind == Golden::Export ? AreaFileKind::Export : AreaFileKind::Theater; }

class DamagedAreas : public testing::Test {
 protected:
  AreaFile Read(std::string_view bytes, Golden kind) const {
    // A new file each time: some file systems bring one that is written over to the disk when it is closed.
    std::filesystem::remove(folder / "a");
    test::WriteBytes(folder / "a", bytes);
    return ReadAreaFile(folder / "a", KindOf(kind));
  }
  test::TempFolder folder;
};

/// Where the fields of SampleAreas begin that tell how many follow, and how many bytes one of those takes.
struct CountField {
  std::size_t At = 0;
  std::size_t Least = 0;
  std::int64_t Count = 0;
};

std::vector<CountField> CountsOf(const AreaCatalogue& sample, Golden kind) {
  const std::size_t area = kind == Golden::V2 ? 394 : 506, font = kind == Golden::Export ? 112 : 0;
  const std::size_t group = kind == Golden::V2 ? 106 : 110, point = kind == Golden::V2 ? 18 : 26;
  std::size_t at = 100;
  const auto bound = [](const auto& table) { return static_cast<std::int64_t>(table.UpperBound()); };
  std::vector<CountField> counts = {{at, group, bound(sample.AreaGroups)}};
  at += 4;
  for (const AreaGroup& each : sample.AreaGroups.Live()) {
    counts.push_back({at + 102, area, bound(each.Areas)});
    at += 106;
    for (const Area& drawn : each.Areas.Live()) {
      counts.push_back({at + 100, 32, bound(drawn.Lines)});
      counts.push_back({at + 104 + 32 * drawn.Lines.UpperBound() + font, point, bound(drawn.Points)});
      at += area + 32 * drawn.Lines.UpperBound() + point * drawn.Points.UpperBound();
    }
    if (kind != Golden::V2) at += 4;
  }
  if (kind != Golden::V2) counts.push_back({at, 102, bound(sample.AreaFolders)});
  return counts;
}

std::size_t AreasIn(const AreaFile& file) {
  std::size_t sum = 0;
  for (const AreaGroup& group : file.AreaGroups.Live()) sum += group.Areas.UpperBound();
  return sum;
}

TEST_F(DamagedAreas, CutAtAnyByteHoldsAllThatWasInFrontOfTheCut) {
  AreaCatalogue sample = SampleAreas();
  // With none, one and two areas.
  sample.AreaGroups.Resize(3);
  for (const Golden kind : Kinds) {
    const std::string whole = GoldenFile(sample, kind);
    // As far as the file tells; the magic counts as soon as it can be told.
    const std::size_t magic = test::GoldenMagic(kind).find_last_not_of(' ') + 1;
    std::size_t groups = 0, areas = 0;
    for (std::size_t length = 0; length < whole.size(); ++length) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(kind) << " cut at " << length);
      const AreaFile read = Read(std::string_view(whole).substr(0, length), kind);
      ASSERT_EQ(read.State, length < magic ? AreaFileState::Refused : AreaFileState::Damaged);
      if (length < magic) continue;
      // What is written of it is what stood there, then zeros and blanks: the same up to the end of the last field that
      // is there whole, but for the counts, which are those of what is there.
      std::string again = GoldenFile(read.AreaGroups, read.AreaFolders, kind);
      std::string expected = whole.substr(0, length);
      for (const CountField& count : CountsOf(sample, kind)) {
        if (count.At + 4 > length || count.At + 4 > again.size()) continue;
        again.replace(count.At, 4, expected, count.At, 4);
      }
      const std::size_t same = static_cast<std::size_t>(
          std::mismatch(again.begin(), again.end(), expected.begin(), expected.end()).first - again.begin());
      // A number that is not there whole is 0: at most 7 of its bytes.
      ASSERT_GE(same + 7, std::min(length, again.size()));
      ASSERT_LE(length, std::max<std::size_t>(again.size() + 3, 104));
      // More of the file never holds less.
      ASSERT_GE(read.AreaGroups.UpperBound(), groups);
      ASSERT_GE(AreasIn(read), areas);
      groups = read.AreaGroups.UpperBound();
      areas = AreasIn(read);
    }
    EXPECT_EQ(groups, 3U);
    EXPECT_EQ(areas, 3U);
  }
}

TEST_F(DamagedAreas, AnElementIsThereFromItsFirstByteOn) {
  for (const Golden kind : Kinds) {
    const AreaCatalogue sample = SampleAreas();
    const std::string whole = GoldenFile(sample, kind);
    const std::vector<CountField> counts = CountsOf(sample, kind);
    // Group 2 begins behind group 1, which has no areas; its only area right behind its count.
    const std::size_t second = counts[2].At - 102, area = counts[2].At + 4;
    EXPECT_EQ(Read(whole.substr(0, second), kind).AreaGroups.UpperBound(), 1U);
    EXPECT_EQ(Read(whole.substr(0, second + 1), kind).AreaGroups.UpperBound(), 2U);
    EXPECT_EQ(Read(whole.substr(0, second + 1), kind).AreaGroups[2].Name, "G");
    EXPECT_EQ(AreasIn(Read(whole.substr(0, area), kind)), 0U);
    EXPECT_EQ(AreasIn(Read(whole.substr(0, area + 1), kind)), 1U);
  }
}

TEST_F(DamagedAreas, WhatTheFileDoesNotReachIsNothingAndNotThatOfANewArea) {
  const std::string whole = GoldenFile(SampleAreas(), Golden::V3);
  // Into the name of the first area.
  const AreaFile read = Read(whole.substr(0, CountsOf(SampleAreas(), Golden::V3)[2].At + 5), Golden::V3);
  const Area& area = read.AreaGroups[2].Areas[1];
  EXPECT_EQ(area.Name, "A");
  EXPECT_EQ(area.Type, AreaType{});
  EXPECT_EQ(area.ShowWaypointElevation, Off);
  EXPECT_EQ(area.Icon, 0);
  EXPECT_EQ(area.Visible, Off);
  EXPECT_EQ(area.AltFont.Name, "");
  EXPECT_EQ(area.AltFont.Size, 0);
  EXPECT_EQ(area.AltFont.Bold, Off);
  EXPECT_EQ(area.TextFont.Name, "");
  EXPECT_EQ(area.TextFont.Size, 0);
  EXPECT_EQ(read.AreaGroups[2].FolderIndex, 0);
}

TEST_F(DamagedAreas, CountsThatLieMakeNothingThatTheFileDoesNotReach) {
  const AreaCatalogue sample = SampleAreas();
  for (const Golden kind : Kinds) {
    const std::string whole = GoldenFile(sample, kind);
    for (const CountField& count : CountsOf(sample, kind)) {
      ASSERT_EQ(whole.substr(count.At, 4), Bytes4(count.Count)) << count.At;
      for (const std::int64_t lie : {std::int64_t{-1}, std::int64_t{0x7FFFFFFF}, -std::int64_t{0x80000000}}) {
        std::string bytes = whole;
        const AreaFile read = Read(bytes.replace(count.At, 4, Bytes4(lie)), kind);
        EXPECT_EQ(read.State, AreaFileState::Damaged) << count.At << " " << lie;
        // Each element has at least a byte of the file.
        std::size_t bytesHeld = 100 * AreasIn(read) + read.AreaGroups.UpperBound() + read.AreaFolders.UpperBound();
        for (const AreaGroup& group : read.AreaGroups.Live()) {
          for (const Area& area : group.Areas.Live()) {
            bytesHeld += 32 * area.Lines.UpperBound() + 18 * area.Points.UpperBound();
          }
        }
        EXPECT_LE(bytesHeld, whole.size() + 132) << count.At << " " << lie;
      }
    }
  }
}

TEST_F(DamagedAreas, ACountThatLiesTakesNoMoreThanTheFileHasBytesFor) {
  const std::string head = test::GoldenMagic(Golden::V3) + Bytes4(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(Read(head, Golden::V3).AreaGroups.UpperBound(), 0U);
  EXPECT_EQ(Read(head + "x", Golden::V3).AreaGroups.UpperBound(), 1U);
  const std::string group = test::Str100("G") + test::Bytes2(-1) + Bytes4(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(AreasIn(Read(head + group, Golden::V3)), 0U);
  EXPECT_EQ(AreasIn(Read(head + group + "x", Golden::V3)), 1U);
}

TEST_F(DamagedAreas, AnOlderOrLongerTailIsNotLookedAt) {
  for (const Golden kind : Kinds) {
    const std::string whole = GoldenFile(SampleAreas(), kind);
    const AreaFile read = Read(whole + std::string(5000, 'x'), kind);
    EXPECT_EQ(read.State, AreaFileState::Whole);
    EXPECT_EQ(AreasIn(read), 15U);
  }
}

TEST_F(DamagedAreas, TwoHundredThousandAreasComeBack) {
  AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({"F", On});
  for (int group = 0; group < 4; ++group) {
    AreaGroup& made = catalogue.AreaGroups.Append({.Name = "G", .FolderIndex = 1});
    for (int n = 0; n < 50000; ++n) {
      Area& area = made.Areas.Append({});
      area.Name = std::to_string(group * 50000 + n);
      area.X = n;
      if (n % 100 == 0) area.Points.Append({1.0 * n, 2, 3, PointType::IP});
    }
  }
  WriteAreaFile(folder / "a", catalogue);
  // 108, 4 groups of 110, a folder, 506 each, 26 for each of the 2000 points.
  EXPECT_EQ(std::filesystem::file_size(folder / "a"), 108 + 4 * 110 + 102 + 200000 * 506 + 2000 * 26U);
  const AreaFile read = ReadAreaFile(folder / "a", AreaFileKind::Theater);
  EXPECT_EQ(read.State, AreaFileState::Whole);
  ASSERT_EQ(AreasIn(read), 200000U);
  EXPECT_EQ(read.AreaGroups[4].Areas[50000].Name, "199999");
  EXPECT_EQ(read.AreaGroups[2].Areas[101].Points[1].X, 100);
}

}  // namespace
}  // namespace kestrel::areas
