#include "core/settings_backup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/files.h"
#include "base/program_title.h"
#include "core/settings.h"
#include "doubles/full_disk.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::string_view NoTheater = "[OPTIONS]\r\nCONNPORT=7000\r\n";

class SettingsBackup : public testing::Test {
 protected:
  SettingsBackup() {
    WriteInstallation(folder);
    first = folder.Read("KESTREL.ini");
    around.Shown.WhenShown = [this] {
      RunSteps(FrameLoadSteps(), around.All);
      RunSteps(MapLoadSteps(), around.All);
    };
    around.Shown.WhenUnloaded = [this] { RunSteps(MapUnloadSteps(), around.All); };
  }
  bool Start() { return Main(around.All); }

  ProgramFolder folder;
  Around around{folder.Path};
  std::string first;  ///< KESTREL.ini of the installation
};

TEST_F(SettingsBackup, AStartThatSucceededKeepsItsSettings) {
  EXPECT_TRUE(Start());
  EXPECT_EQ(folder.Read("KESTREL.ini.bak"), first);
  around.State.LinkOptions.CONNPORT = 6100;
  Close(around.All);
  EXPECT_EQ(folder.Read("KESTREL.ini.bak"), first) << "no start has succeeded with what the closing wrote";
  Around next(folder.Path);
  EXPECT_TRUE(Main(next.All));
  EXPECT_THAT(folder.Read("KESTREL.ini.bak"), HasSubstr("CONNPORT=6100"));
  EXPECT_THAT(next.Desk.Boxes, IsEmpty());
}

TEST_F(SettingsBackup, WhatIsTheSameIsNotWrittenAgain) {
  EXPECT_TRUE(Start());
  const fs::file_time_type old{};
  fs::last_write_time(folder.Path / "KESTREL.ini.bak", old);
  const fs::file_time_type written = fs::last_write_time(folder.Path / "KESTREL.ini.bak");
  EXPECT_TRUE(Start());
  EXPECT_EQ(fs::last_write_time(folder.Path / "KESTREL.ini.bak"), written);
}

TEST_F(SettingsBackup, AStartThatFailedKeepsNothing) {
  fs::remove(folder.Path / "Theaters/korea.bmp");
  EXPECT_FALSE(Start());
  EXPECT_FALSE(folder.Has("KESTREL.ini.bak"));
}

TEST_F(SettingsBackup, WhatCannotBeWrittenIsLoggedAndTheStartGoesOn) {
  folder.Write("KESTREL.ini", "[LOG]\r\nDEBUG=1\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=korea.ini\r\n");
  fs::create_directories(folder.Path / "KESTREL.ini.bak/in the way");
  EXPECT_TRUE(Start());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("KESTREL.ini.bak: KESTREL.ini.bak cannot be written"));
}

#ifndef _WIN32
TEST_F(SettingsBackup, AFullDiskLeavesTheFormerCopy) {
  EXPECT_TRUE(Start());
  folder.Write("KESTREL.ini", first + "[OPTIONS]\r\nCONNPORT=6100\r\n");
  {
    const doubles::FullDisk full(first.size() / 2);
    KeepSettings(around.All);
  }
  EXPECT_EQ(folder.Read("KESTREL.ini.bak"), first);
}
#endif

TEST_F(SettingsBackup, SettingsWithoutATheaterAreReplacedByTheCopy) {
  EXPECT_TRUE(Start());
  folder.Write("KESTREL.ini", NoTheater);
  folder.Write("KESTREL.ini.old", "older");
  around.Desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "KESTREL.ini names no theater.\n\nKESTREL.ini.bak holds the settings with which the station last started. "
            "Use them? The present KESTREL.ini is kept as KESTREL.ini.old2.");
  EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::Yes);
  EXPECT_EQ(around.State.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(around.State.LinkOptions.CONNPORT, 5556);
  EXPECT_EQ(folder.Read("KESTREL.ini"), first);
  EXPECT_EQ(folder.Read("KESTREL.ini.bak"), first);
  EXPECT_EQ(folder.Read("KESTREL.ini.old"), "older");
  EXPECT_EQ(folder.Read("KESTREL.ini.old2"), NoTheater);
}

TEST_F(SettingsBackup, SettingsThatAreGoneAreReplacedByTheCopy) {
  EXPECT_TRUE(Start());
  fs::remove(folder.Path / "KESTREL.ini");
  around.Desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(Start());
  EXPECT_EQ(folder.Read("KESTREL.ini"), first);
  EXPECT_FALSE(folder.Has("KESTREL.ini.old"));
}

TEST_F(SettingsBackup, SettingsThatCannotBeReadAreReplacedByTheCopy) {
  EXPECT_TRUE(Start());
  fs::resize_file(folder.Path / "KESTREL.ini", base::MaxTextFileBytes + 1);
  around.Desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The settings cannot be read: KESTREL.ini"));
  EXPECT_EQ(folder.Read("KESTREL.ini"), first);
  EXPECT_EQ(fs::file_size(folder.Path / "KESTREL.ini.old"), base::MaxTextFileBytes + 1);
}

TEST_F(SettingsBackup, ANoEndsTheStartAsWithoutACopy) {
  EXPECT_TRUE(Start());
  folder.Write("KESTREL.ini", NoTheater);
  around.Desk.Answers = {base::Answer::No};
  EXPECT_FALSE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_EQ(around.Desk.Boxes[1].Text, "No Theaters are installed. Exiting now...");
  EXPECT_EQ(folder.Read("KESTREL.ini"), NoTheater);
  EXPECT_FALSE(folder.Has("KESTREL.ini.old"));

  around.Desk.Boxes.clear();
  fs::resize_file(folder.Path / "KESTREL.ini", base::MaxTextFileBytes + 1);
  around.Desk.Answers = {base::Answer::No};
  EXPECT_FALSE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_THAT(around.Desk.Boxes[1].Text, HasSubstr("initialization files (LoadSavedVars)"));
}

TEST_F(SettingsBackup, ACopyThatIsOfNoUseIsNotOffered) {
  folder.Write("KESTREL.ini", NoTheater);
  folder.Write("KESTREL.ini.bak", NoTheater);
  EXPECT_FALSE(Start());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Text, "No Theaters are installed. Exiting now...");

  around.Desk.Boxes.clear();
  fs::resize_file(folder.Path / "KESTREL.ini.bak", base::MaxTextFileBytes + 1);
  EXPECT_FALSE(Start());
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
}

#ifndef _WIN32
TEST_F(SettingsBackup, ACopyThatCannotBePutInPlaceIsUsedForOneRun) {
  EXPECT_TRUE(Start());
  folder.Write("KESTREL.ini", NoTheater);
  around.Desk.Answers = {base::Answer::Yes};
  {
    const doubles::FullDisk full(first.size() / 2);
    EXPECT_EQ(LoadSettingsOrBackup(around.All), std::vector<std::string>{});
  }
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  EXPECT_THAT(around.Desk.Boxes[1].Text, HasSubstr("KESTREL.ini could not be replaced: "));
  EXPECT_EQ(around.State.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_EQ(folder.Read("KESTREL.ini.old"), NoTheater);
  EXPECT_EQ(folder.Read("KESTREL.ini.bak"), first);
}
#endif

}  // namespace
}  // namespace kestrel::core
