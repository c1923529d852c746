#include "areas/area_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "areas/area_format.h"
#include "areas/golden_areas.h"
#include "base/failure.h"
#include "base/temp_folder.h"

namespace kestrel::areas {
namespace {

using test::Bytes4;
using test::Golden;
using test::GoldenFile;
using test::GoldenMagic;
using test::SampleAreas;
using test::Str100;
using testing::ElementsAre;

class AreaFiles : public testing::Test {
 protected:
  AreaHistory history;

  AreaFile Read(std::string_view bytes, AreaFileKind kind = AreaFileKind::Theater) const {
    // A new file each time: some file systems bring one that is written over to the disk when it is closed.
    std::filesystem::remove(folder / "a");
    test::WriteBytes(folder / "a", bytes);
    return ReadAreaFile(folder / "a", kind);
  }
  std::string Written(const AreaCatalogue& catalogue) const {
    WriteAreaFile(folder / "b", catalogue);
    return test::ReadBytes(folder / "b");
  }
  std::string Exported(const AreaCatalogue& catalogue) const {
    WriteAreaExport(folder / "c", catalogue);
    return test::ReadBytes(folder / "c");
  }
  static AreaCatalogue CatalogueOf(AreaFile file) {
    AreaCatalogue catalogue;
    ReplaceAreas(catalogue, std::move(file));
    return catalogue;
  }

  test::TempFolder folder;
};

/// A catalogue of one group with one area.
AreaCatalogue WithArea(Area area) {
  AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({"F", On});
  catalogue.AreaGroups.Append({.Name = "G", .FolderIndex = 1}).Areas.Append(std::move(area));
  return catalogue;
}

TEST_F(AreaFiles, AreWrittenByteByByteAsTheFormatSays) {
  EXPECT_TRUE(Written(SampleAreas()) == GoldenFile(SampleAreas(), Golden::V3));
}

TEST_F(AreaFiles, AreReadFieldByField) {
  const std::string bytes = GoldenFile(SampleAreas(), Golden::V3);
  AreaFile read = Read(bytes);
  EXPECT_EQ(read.State, AreaFileState::Whole);
  // By the other writer, so that every field counts.
  EXPECT_TRUE(GoldenFile(read.AreaGroups, read.AreaFolders, Golden::V3) == bytes);
  EXPECT_EQ(ShapeToText(read.AreaGroups[5].Areas[3].Type), "") << "an area of an unknown type is kept";
  EXPECT_EQ(read.AreaGroups[4].Areas[1].Icon, -1);
  EXPECT_EQ(Written(CatalogueOf(std::move(read))), bytes);
}

TEST_F(AreaFiles, FewestBytesAreThoseThatTheFormatTells) {
  const auto least = [](AreaFormat format) {
    return base::LeastBytesOf<Area>([format](auto& walk, auto& area) { AreaFields(walk, area, format); });
  };
  EXPECT_EQ(least(AreaFormat::V3), 506U);
  EXPECT_EQ(least(AreaFormat::Export), 506U);
  EXPECT_EQ(least(AreaFormat::V2), 394U);
  const std::string none = Written({});
  EXPECT_EQ(none.size(), 108U);
  Area area;
  const std::size_t bare = Written(WithArea(area)).size();
  // Magic and two counts, a group's 110, a folder's 102.
  EXPECT_EQ(bare, 108 + 110 + 102 + 506U);
  area.Lines.Append({});
  EXPECT_EQ(Written(WithArea(area)).size(), bare + 32);
  area.Points.Append({});
  EXPECT_EQ(Written(WithArea(area)).size(), bare + 32 + 26);
}

TEST_F(AreaFiles, AGroupWithoutAreasHasItsFolderRightBehindTheCount) {
  AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({"F", On});
  catalogue.AreaGroups.Append({.Name = "G", .FolderIndex = 1});
  const std::string bytes = Written(catalogue);
  EXPECT_EQ(bytes.substr(104 + 102, 8), Bytes4(0) + Bytes4(1));
  EXPECT_EQ(Read(bytes).AreaGroups[1].FolderIndex, 1);
}

TEST_F(AreaFiles, OlderFilesHaveWhatTheyLackSupplied) {
  const AreaCatalogue sample = SampleAreas();
  const AreaFile read = Read(GoldenFile(sample, Golden::V2));
  EXPECT_EQ(read.State, AreaFileState::Whole);
  ASSERT_EQ(read.AreaFolders.UpperBound(), 1U);
  EXPECT_EQ(read.AreaFolders[1].Name, "General");
  EXPECT_EQ(read.AreaFolders[1].Visible, On);
  AreaCatalogue expected = sample;
  for (AreaGroup& group : expected.AreaGroups.Live()) {
    group.FolderIndex = 1;
    for (Area& area : group.Areas.Live()) {
      for (FlightPlanPoint& point : area.Points.Live()) point.Z = 0;
      area.AltFont = {"OCR A Extended", 8, On, Off, Off, Off};
      area.TextFont.Strikethru = area.TextFont.Underline = Off;
    }
  }
  EXPECT_TRUE(GoldenFile(read.AreaGroups, read.AreaFolders, Golden::V3) ==
              GoldenFile(expected.AreaGroups, read.AreaFolders, Golden::V3));
}

TEST_F(AreaFiles, TheLetterSizeOfAnOlderFileIsRoundedTo32Bits) {
  std::string bytes = GoldenFile(WithArea({}), Golden::V2);
  // In front of the box.
  bytes.replace(bytes.size() - 40, 8, test::BytesF64(8.1));
  EXPECT_EQ(Read(bytes).AreaGroups[1].Areas[1].TextFont.Size, 8.1F);
}

TEST_F(AreaFiles, LongTextsAreCutAndBlanksAtBothEndsGo) {
  Area area;
  area.Name = std::string(300, 'n');
  area.Text = "  two words ";
  area.AltFont.Name = std::string(100, 'f');
  area.TextFont.Name = "    ";
  const AreaFile read = Read(Written(WithArea(area)));
  const Area& back = read.AreaGroups[1].Areas[1];
  EXPECT_EQ(back.Name, std::string(100, 'n'));
  EXPECT_EQ(back.Text, "two words");
  EXPECT_EQ(back.AltFont.Name, std::string(100, 'f'));
  EXPECT_EQ(back.TextFont.Name, "");
}

TEST_F(AreaFiles, TextsKeepWhatIsNoBlank) {
  Area area;
  area.Name = std::string("\0a\0\xE9\t", 5);
  EXPECT_EQ(Read(Written(WithArea(area))).AreaGroups[1].Areas[1].Name, area.Name);
}

TEST_F(AreaFiles, NumbersThatAreNoPlaceGoThroughAsTheyAre) {
  Area area;
  const double odd = std::bit_cast<double>(std::uint64_t{0xFFF8'0000'1234'5678});
  area.X = odd;
  area.Y = 1e300;
  area.MinX = -std::numeric_limits<double>::infinity();
  area.Lines.Append({odd, -0.0, 1e300, 4});
  area.Points.Append({odd, -1e300, 1, PointType::IP});
  area.AltFont.Size = std::numeric_limits<float>::quiet_NaN();
  const std::string bytes = Written(WithArea(area));
  EXPECT_TRUE(bytes == GoldenFile(WithArea(area), Golden::V3));
  EXPECT_TRUE(Written(CatalogueOf(Read(bytes))) == bytes);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(Read(bytes).AreaGroups[1].Areas[1].Points[1].X), 0xFFF8'0000'1234'5678U);
}

TEST_F(AreaFiles, BeingEditedIsInNoFile) {
  Area area;
  area.Editing = true;
  EXPECT_TRUE(Written(WithArea(area)) == Written(WithArea({})));
  EXPECT_FALSE(Read(Written(WithArea(area))).AreaGroups[1].Areas[1].Editing);
}

TEST_F(AreaFiles, AreExportedByTheGroupsThatShow) {
  const AreaCatalogue sample = SampleAreas();
  // 1 and 4 are in folder 5, 3 is in folder 1; the flag of 5 is not -1, the folders of 2 and 6 are off.
  AreaCatalogue expected;
  expected.AreaFolders.Append(sample.AreaFolders[5]);
  expected.AreaFolders.Append(sample.AreaFolders[1]);
  for (const auto& [group, folderInFile] : {std::pair{1, 1}, {3, 2}, {4, 1}}) {
    expected.AreaGroups.Append(sample.AreaGroups[static_cast<std::size_t>(group)]).FolderIndex = folderInFile;
  }
  EXPECT_TRUE(HasExport(sample));
  const std::string bytes = Exported(sample);
  EXPECT_TRUE(bytes == GoldenFile(expected, Golden::Export));
  const AreaFile read = Read(bytes, AreaFileKind::Export);
  EXPECT_EQ(read.State, AreaFileState::Whole);
  EXPECT_TRUE(GoldenFile(read.AreaGroups, read.AreaFolders, Golden::Export) == bytes);
}

TEST_F(AreaFiles, AnExportFromTheFifthFolderHasOneFolder) {
  AreaCatalogue sample = SampleAreas();
  sample.AreaGroups[3].Visible = Off;
  const AreaFile read = Read(Exported(sample), AreaFileKind::Export);
  ASSERT_EQ(read.AreaFolders.UpperBound(), 1U);
  EXPECT_EQ(read.AreaFolders[1].Name, "Folder 5");
  ASSERT_EQ(read.AreaGroups.UpperBound(), 2U);
  EXPECT_EQ(read.AreaGroups[1].FolderIndex, 1);
  EXPECT_EQ(read.AreaGroups[2].FolderIndex, 1);
}

TEST_F(AreaFiles, NothingIsToBeExportedWithAllFoldersOff) {
  AreaCatalogue sample = SampleAreas();
  for (AreaFolder& each : sample.AreaFolders.Live()) each.Visible = Off;
  EXPECT_FALSE(HasExport(sample));
  EXPECT_FALSE(HasExport({}));
}

TEST_F(AreaFiles, MagicOfAnotherKindIsRefused) {
  for (const auto& [bytes, kind] : {std::pair{GoldenFile(SampleAreas(), Golden::Export), AreaFileKind::Theater},
                                    {GoldenFile(SampleAreas(), Golden::V3), AreaFileKind::Export},
                                    {GoldenFile(SampleAreas(), Golden::V2), AreaFileKind::Export},
                                    {Str100("area file v3") + Bytes4(0), AreaFileKind::Theater},
                                    {Str100("Area File v4") + Bytes4(0), AreaFileKind::Theater},
                                    {Str100("") + Bytes4(0), AreaFileKind::Theater},
                                    {std::string(), AreaFileKind::Theater},
                                    {std::string("Area File v"), AreaFileKind::Theater},
                                    {std::string(99, ' '), AreaFileKind::Theater}}) {
    const AreaFile read = Read(bytes, kind);
    EXPECT_EQ(read.State, AreaFileState::Refused) << bytes.substr(0, 20);
    EXPECT_TRUE(read.AreaGroups.Empty());
    EXPECT_TRUE(read.AreaFolders.Empty());
  }
}

TEST_F(AreaFiles, MagicIsReadWithoutBlanksAtBothEnds) {
  EXPECT_EQ(Read(Str100("  Area File v3") + Bytes4(0) + Bytes4(0)).State, AreaFileState::Whole);
}

TEST_F(AreaFiles, WhatIsNoFileCannotBeRead) {
  EXPECT_THROW(ReadAreaFile(folder / "missing", AreaFileKind::Theater), base::RuntimeFailure);
  EXPECT_THROW(ReadAreaFile(folder.Path(), AreaFileKind::Theater), base::RuntimeFailure);
}

TEST_F(AreaFiles, GroupsWithoutAFolderAreSeenInTheTemporaryOne) {
  AreaCatalogue sample = SampleAreas();
  for (const auto& [group, index] : {std::pair{1, 0}, {2, -1}, {3, 99}, {4, 6}, {6, std::numeric_limits<int>::min()}}) {
    sample.AreaGroups[static_cast<std::size_t>(group)].FolderIndex = index;
  }
  AreaCatalogue catalogue;
  EXPECT_EQ(ReplaceAreas(catalogue, Read(GoldenFile(sample, Golden::V3))), 5U);
  ASSERT_EQ(catalogue.AreaFolders.UpperBound(), 6U);
  EXPECT_EQ(catalogue.AreaFolders[6].Name, "Temporary Folder");
  EXPECT_EQ(catalogue.AreaFolders[6].Visible, On);
  const auto folders = [&catalogue] {
    std::vector<std::int32_t> indices;
    for (const AreaGroup& group : catalogue.AreaGroups.Live()) indices.push_back(group.FolderIndex);
    return indices;
  };
  EXPECT_THAT(folders(), ElementsAre(6, 6, 6, 6, 1, 6));
  // One that is there is taken, whatever its case.
  sample.AreaFolders[2].Name = "TEMPORARY folder";
  EXPECT_EQ(ReplaceAreas(catalogue, Read(GoldenFile(sample, Golden::V3))), 5U);
  EXPECT_EQ(catalogue.AreaFolders.UpperBound(), 5U);
  EXPECT_THAT(folders(), ElementsAre(2, 2, 2, 2, 1, 2));
}

TEST_F(AreaFiles, ImportedGroupsAndTheirFoldersComeAtTheEnd) {
  AreaCatalogue catalogue = SampleAreas();
  const std::string bytes = Exported(catalogue);
  EXPECT_EQ(AppendAreas(catalogue, history, Read(bytes, AreaFileKind::Export)), 0U);
  ASSERT_EQ(catalogue.AreaFolders.UpperBound(), 7U);
  EXPECT_EQ(catalogue.AreaFolders[6].Name, "Folder 5") << "appended whatever its name";
  EXPECT_EQ(catalogue.AreaFolders[6].Visible, 7);
  EXPECT_EQ(catalogue.AreaFolders[7].Name, "Folder 1");
  ASSERT_EQ(catalogue.AreaGroups.UpperBound(), 9U);
  EXPECT_EQ(catalogue.AreaGroups[7].Name, "Group 1");
  EXPECT_EQ(catalogue.AreaGroups[7].FolderIndex, 6);
  EXPECT_EQ(catalogue.AreaGroups[8].FolderIndex, 7);
  EXPECT_EQ(catalogue.AreaGroups[9].FolderIndex, 6);
  EXPECT_EQ(catalogue.AreaGroups[9].Areas.UpperBound(), 3U);
  // What was there stays as it was.
  AreaCatalogue former = catalogue;
  former.AreaGroups.Resize(6);
  former.AreaFolders.Resize(5);
  EXPECT_TRUE(GoldenFile(former, Golden::V3) == GoldenFile(SampleAreas(), Golden::V3));
  EXPECT_EQ(AppendAreas(catalogue, history, Read(bytes, AreaFileKind::Export)), 0U);
  EXPECT_EQ(catalogue.AreaFolders.UpperBound(), 9U);
  // Each import is taken back as a whole.
  EXPECT_TRUE(history.Undo(catalogue).Done);
  EXPECT_TRUE(history.Undo(catalogue).Done);
  EXPECT_FALSE(history.Undo(catalogue).Done);
  EXPECT_TRUE(GoldenFile(catalogue, Golden::V3) == GoldenFile(SampleAreas(), Golden::V3));
}

TEST_F(AreaFiles, ImportedFoldersThatNoGroupIsInStayAway) {
  AreaCatalogue sample = SampleAreas();
  sample.AreaGroups.Resize(1);
  AreaCatalogue catalogue;
  AppendAreas(catalogue, history, Read(GoldenFile(sample, Golden::Export), AreaFileKind::Export));
  ASSERT_EQ(catalogue.AreaFolders.UpperBound(), 1U);
  EXPECT_EQ(catalogue.AreaFolders[1].Name, "Folder 5");
}

TEST_F(AreaFiles, ImportedGroupsWithoutAFolderAreSeenInTheTemporaryOne) {
  AreaCatalogue sample = SampleAreas();
  sample.AreaGroups.Resize(3);
  for (AreaGroup& group : sample.AreaGroups.Live()) group.FolderIndex = group.Areas.Empty() ? 0 : 6;
  const AreaFile file = Read(GoldenFile(sample, Golden::Export), AreaFileKind::Export);
  AreaCatalogue catalogue;
  EXPECT_EQ(AppendAreas(catalogue, history, file), 3U);
  EXPECT_EQ(AppendAreas(catalogue, history, file), 3U);
  ASSERT_EQ(catalogue.AreaFolders.UpperBound(), 1U);
  EXPECT_EQ(catalogue.AreaFolders[1].Name, "Temporary Folder");
  for (const AreaGroup& group : catalogue.AreaGroups.Live()) EXPECT_EQ(group.FolderIndex, 1);
}

}  // namespace
}  // namespace kestrel::areas
