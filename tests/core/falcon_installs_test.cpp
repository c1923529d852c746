#include "core/falcon_installs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "base/failure.h"
#include "base/files.h"
#include "doubles/fake_install_keys.h"
#include "falcon/small_install.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FalconInstallsOfTheStation : public testing::Test {
 protected:
  FalconInstallsOfTheStation() {
    keys.DriveC = disk.Path();
    around.All.Registered = [this] {
      falcon::InstallSources sources;
      sources.push_back(std::make_unique<doubles::FakeInstallKeys>(keys));
      return sources;
    };
  }

  test::SmallInstall Register(const std::string& version) {
    keys.AddText("SOFTWARE\\Benchmark Sims\\Falcon BMS " + version, "baseDir", "C:\\" + version);
    return test::SmallInstall(disk / version);
  }
  std::vector<std::string> Found() {
    std::vector<std::string> names;
    for (const falcon::FalconInstall& install : FindInstalls(around.All).Bms) {
      names.push_back(base::NameForMessage(install.Folder));
    }
    return names;
  }

  ProgramFolder folder;
  test::TempFolder disk;
  Around around{folder.Path};
  doubles::FakeInstallKeys keys;
};

TEST_F(FalconInstallsOfTheStation, AreLookedForAnewEachTime) {
  EXPECT_THAT(Found(), IsEmpty());
  Register("4.37");
  EXPECT_THAT(Found(), ElementsAre("4.37"));
  fs::remove_all(disk / "4.37");
  EXPECT_THAT(Found(), IsEmpty());
  around.All.Registered = nullptr;
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(FalconInstallsOfTheStation, ThatAreWrittenByHandGoBeforeThoseOfTheSameVersion) {
  Register("4.37");
  const test::SmallInstall written(disk / "written");
  folder.Write("KESTREL.ini",
               "[INSTALLATIONS]\r\nBMS1=" + base::TextOfPath(written.Folder()) + "\r\nBMS1_NAME=4.37\r\n");
  EXPECT_THAT(Found(), ElementsAre("written", "4.37"));
  folder.Write("KESTREL.ini", "");
  EXPECT_THAT(Found(), ElementsAre("4.37")) << "the file counts as it is now";
  fs::remove(folder.Path / "KESTREL.ini");
  fs::create_directory(folder.Path / "KESTREL.ini");
  EXPECT_THAT(Found(), ElementsAre("4.37")) << "one that cannot be read names none";
}

TEST_F(FalconInstallsOfTheStation, DiscardedEntriesAreToldOneByOne) {
  Register("4.37").WriteList("gone.tdf\n# comment\n  sub/gone too.tdf \n");
  Found();
  ASSERT_THAT(around.Desk.Boxes, SizeIs(2));
  for (const auto& box : around.Desk.Boxes) {
    EXPECT_EQ(box.Title, "Error");
    EXPECT_EQ(box.Buttons, base::MessageButtons::Ok);
  }
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "The theaters.lst entry \"gone.tdf\" doesn't exist on your system. It will be discarded.");
  EXPECT_EQ(around.Desk.Boxes[1].Text,
            "The theaters.lst entry \"sub/gone too.tdf\" doesn't exist on your system. It will be discarded.");
}

TEST_F(FalconInstallsOfTheStation, BoxesAboutAListOfRubbishHaveAnEnd) {
  std::string list;
  for (int line = 0; line < 1000; ++line) list += std::to_string(line) + "\n";
  Register("4.37").WriteList(list);
  Found();
  EXPECT_THAT(around.Desk.Boxes, SizeIs(20));
}

TEST_F(FalconInstallsOfTheStation, FoldersOfATheaterAreItsOwnThenTheCommonOnes) {
  falcon::FalconInstall install;
  install.Root = disk / "Data";
  fs::create_directories(disk / "Data/TERRDATA/Objects");
  falcon::TheaterDefinition theater;
  theater.CampaignDir = "Add-On\\Campaign";
  theater.ObjectDir = "Add-On/Objects";
  CampaignFolders folders = FoldersOf(install, theater);
  EXPECT_EQ(folders.Campaign, disk / "Data/Add-On/Campaign");
  EXPECT_THAT(folders.Objects, ElementsAre(disk / "Data/Add-On/Objects", disk / "Data/TERRDATA/Objects"));
  theater.ObjectDir = "..";
  EXPECT_THROW(FoldersOf(install, theater), base::RuntimeFailure);
}

TEST_F(FalconInstallsOfTheStation, CampaignIsAskedForInItsFolder) {
  around.Desk.FileAnswers.push_back("/somewhere/save0.cam");
  EXPECT_EQ(ChooseCampaign(around.All, {disk / "Campaign", {}}), fs::path("/somewhere/save0.cam"));
  ASSERT_THAT(around.Desk.FileQuestions, SizeIs(1));
  EXPECT_EQ(around.Desk.FileQuestions[0].Title, "Open Campaign File");
  EXPECT_EQ(around.Desk.FileQuestions[0].Filter, "Falcon tac/cam/trn files|*.tac;*.cam;*.trn");
  EXPECT_EQ(around.Desk.FileQuestions[0].Folder, base::TextOfPath(disk / "Campaign"));
  EXPECT_EQ(around.Desk.FileQuestions[0].DefaultName, "te_new.tac");
  EXPECT_EQ(ChooseCampaign(around.All, {}), std::nullopt) << "cancelled";
}

}  // namespace
}  // namespace kestrel::core
