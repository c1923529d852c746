#include "core/area_exchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "areas/golden_areas.h"
#include "base/files.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Changed;
using test::Golden;
using test::GoldenFile;
using test::SampleAreas;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AreaExchange : public testing::Test {
 protected:
  AreaExchange() { station.Areas = SampleAreas(); }
  void Export() {
    around.Desk.SaveAnswers.push_back(base::TextOfPath(file));
    ExportVisibleAreas(around.All);
  }
  void Import() {
    around.Desk.FileAnswers.push_back(base::TextOfPath(file));
    ImportAreas(around.All);
  }
  void ExpectUnchanged() {
    EXPECT_TRUE(GoldenFile(station.Areas, Golden::V3) == GoldenFile(SampleAreas(), Golden::V3));
    EXPECT_EQ(station.Areas.Revision, 0U);
    EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  }

  ProgramFolder folder;
  const std::filesystem::path file = folder.Path / "some.axp";
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(AreaExchange, ExportsTheGroupsThatShow) {
  folder.Write("some.axp", std::string(100000, 'x'));
  Export();
  ASSERT_THAT(around.Desk.SaveQuestions, SizeIs(1));
  EXPECT_EQ(around.Desk.SaveQuestions[0].Title, "Export Visible Areas...");
  EXPECT_EQ(around.Desk.SaveQuestions[0].Filter, "Area export file (*.axp)|*.axp");
  const areas::AreaCatalogue sample = SampleAreas();
  areas::AreaCatalogue expected;
  for (const int n : {5, 1}) expected.AreaFolders.Append(sample.AreaFolders[static_cast<std::size_t>(n)]);
  for (const int n : {1, 3, 4}) {
    expected.AreaGroups.Append(sample.AreaGroups[static_cast<std::size_t>(n)]).FolderIndex = n == 3 ? 2 : 1;
  }
  EXPECT_TRUE(folder.Read("some.axp") == GoldenFile(expected, Golden::Export));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  ExpectUnchanged();
}

TEST_F(AreaExchange, ExportsNothingWithoutAGroupThatShows) {
  for (areas::AreaFolder& each : station.Areas.AreaFolders.Live()) each.Visible = areas::Off;
  Export();
  EXPECT_THAT(around.Desk.SaveQuestions, IsEmpty());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, "Critical");
  EXPECT_EQ(around.Desk.Boxes[0].Text, "No Area was selected for export...");
  EXPECT_FALSE(folder.Has("some.axp"));
}

TEST_F(AreaExchange, CancelStopsWithoutAWord) {
  ExportVisibleAreas(around.All);
  ImportAreas(around.All);
  EXPECT_THAT(around.Desk.SaveQuestions, SizeIs(1));
  EXPECT_THAT(around.Desk.FileQuestions, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  ExpectUnchanged();
}

TEST_F(AreaExchange, AnExportThatFailsIsTold) {
  std::filesystem::create_directories(file / "in the way");
  Export();
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The areas could not be exported: some.axp cannot be written.");
}

TEST_F(AreaExchange, ImportsAtTheEndAndShowsIt) {
  Export();
  Import();
  ASSERT_THAT(around.Desk.FileQuestions, SizeIs(1));
  EXPECT_EQ(around.Desk.FileQuestions[0].Title, "Import Areas...");
  EXPECT_EQ(around.Desk.FileQuestions[0].Filter, "Area Export Files (*.axp)|*.axp");
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 9U);
  EXPECT_EQ(station.Areas.AreaFolders.UpperBound(), 7U);
  EXPECT_EQ(station.Areas.Revision, 1U);
  EXPECT_THAT(around.Shown.Refreshes, ElementsAre(Changed::Areas | Changed::Map));
  // Twice gives two folders of the same name.
  Import();
  EXPECT_EQ(station.Areas.AreaFolders.UpperBound(), 9U);
  EXPECT_EQ(station.Areas.AreaFolders[8].Name, station.Areas.AreaFolders[6].Name);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(AreaExchange, ImportedBoxesStayThoseOfTheFile) {
  areas::AreaCatalogue foreign;
  foreign.AreaFolders.Append({"F", areas::On});
  foreign.AreaGroups.Append({.Name = "G", .FolderIndex = 1}).Areas.Append({.Radius = 10, .MinX = 7, .MaxX = 3});
  folder.Write("some.axp", GoldenFile(foreign, Golden::Export));
  Import();
  const areas::Area& area = station.Areas.AreaGroups[7].Areas[1];
  EXPECT_EQ(area.MinX, 7);
  EXPECT_EQ(area.MaxX, 3);
}

TEST_F(AreaExchange, AnotherKindOfFileIsTold) {
  folder.Write("some.axp", GoldenFile(SampleAreas(), Golden::V3));
  Import();
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "Wrong Export Area File version. Disregarding...");
  ExpectUnchanged();
}

TEST_F(AreaExchange, AnImportThatFailsIsToldAndChangesNothing) {
  Import();
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text,
              testing::StartsWith("The areas could not be imported: some.axp cannot be read: "));
  ExpectUnchanged();
}

TEST_F(AreaExchange, AnImportThatEndsEarlyBringsWhatItHolds) {
  around.Log.File.Open(folder.Path / "log");
  folder.Write("some.axp", GoldenFile(SampleAreas(), Golden::Export).substr(0, 2000));
  Import();
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 9U);
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 6U);
  EXPECT_EQ(station.Areas.AreaFolders[6].Name, "Temporary Folder");
  around.Log.File.Close();
  EXPECT_EQ(folder.Read("log"),
            "some.axp is damaged: of its areas there is what it holds\r\n"
            "some.axp: groups that name no folder and are now in the Temporary Folder: 3\r\n");
}

}  // namespace
}  // namespace kestrel::core
