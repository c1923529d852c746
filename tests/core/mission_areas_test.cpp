#include "core/mission_areas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/files.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class MissionAreas : public testing::Test {
 protected:
  void Import(const std::string& name) {
    around.Desk.FileAnswers.push_back(base::TextOfPath(folder.Path / name));
    ImportMissionAreas(around.All);
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(MissionAreas, OfTheChosenFileAreAddedAndShown) {
  folder.Write("m.ini", "[MISSION]\r\ntitle=Strike\r\n[STPT]\r\ntarget_0=1,1,1,1\r\n");
  Import("m.ini");
  ASSERT_THAT(around.Desk.FileQuestions, SizeIs(1));
  EXPECT_EQ(around.Desk.FileQuestions[0].Title, "Open INI File");
  EXPECT_EQ(around.Desk.FileQuestions[0].Filter, "Falcon ini files|*.ini");
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 1u);
  EXPECT_EQ(station.Areas.AreaFolders[1].Name, "Strike");
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 1u);
  ASSERT_THAT(around.Shown.Refreshes, SizeIs(1));
  EXPECT_EQ(around.Shown.Refreshes[0], Changed::Areas | Changed::Map);
  EXPECT_EQ(station.AreaSteps.UndoText(), "import of Strike");
}

TEST_F(MissionAreas, OfAFileWithoutATitleAreWarnedOfAndAdded) {
  folder.Write("m.ini", "[STPT]\r\ntarget_0=1,1,1,1\r\n");
  around.Desk.WhileOpen = [this] { EXPECT_TRUE(station.Areas.AreaFolders.Empty()) << "the warning comes first"; };
  Import("m.ini");
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "It doesn't seem to be a valid Falcon BMS ini file.");
  EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::Ok);
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 1u);
  EXPECT_EQ(station.Areas.AreaFolders[1].Name, "");
  EXPECT_EQ(station.Areas.AreaGroups.UpperBound(), 1u);
  EXPECT_THAT(around.Shown.Refreshes, SizeIs(1));
}

TEST_F(MissionAreas, OfACancelledChoiceAreNone) {
  ImportMissionAreas(around.All);
  EXPECT_THAT(around.Desk.FileQuestions, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  EXPECT_TRUE(station.Areas.AreaFolders.Empty());
}

TEST_F(MissionAreas, OfAFileThatCannotBeReadAreNone) {
  std::filesystem::create_directory(folder.Path / "m.ini");
  Import("m.ini");
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "The areas cannot be read from \"m.ini\": m.ini is no file.");
  EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  EXPECT_TRUE(station.Areas.AreaFolders.Empty());
  EXPECT_EQ(station.Areas.Revision, 0u);
}

}  // namespace
}  // namespace kestrel::core
