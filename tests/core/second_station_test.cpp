// A station that finds another one in its folder.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/files.h"
#include "base/program_title.h"
#include "core/own_folder.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SecondStation : public testing::Test {
 protected:
  SecondStation() {
    WriteInstallation(folder);
    around.All.TakeFolder = [this](const std::filesystem::path& path) {
      asked.push_back(path);
      return free;
    };
  }

  ProgramFolder folder;
  Around around{folder.Path};
  std::vector<std::filesystem::path> asked;
  bool free = true;
};

TEST_F(SecondStation, AFolderThatIsFreeIsTakenWithoutAWord) {
  EXPECT_TRUE(Main(around.All));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(asked, ElementsAre(folder.Path));
}

TEST_F(SecondStation, ASecondOneEndsWhereThePersonWantsNone) {
  free = false;
  const std::string before = folder.Read("KESTREL.ini");
  EXPECT_FALSE(Main(around.All));
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_EQ(around.Desk.Boxes[0].Text,
            "Another station is running in this folder:\n" + base::PathForMessage(folder.Path) +
                "\n\nBoth would write the same settings, areas and tapes, and what one of them saves the other would "
                "lose. Start this one too?");
  EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::No);
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
  EXPECT_EQ(folder.Read("KESTREL.ini"), before);
  EXPECT_FALSE(folder.Has("KESTREL.ini.bak"));
}

TEST_F(SecondStation, ASecondOneRunsWhereThePersonWantsIt) {
  free = false;
  around.Desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(Main(around.All));
  EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
}

TEST_F(SecondStation, ASetupThatWaitsIsNotTakenUnderTheFirst) {
  std::filesystem::create_directories(folder.Path / "setup.new/new");
  folder.Write("setup.new/new/FriendlyNames.ini", "Viper\r\n");
  free = false;
  around.Desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(Main(around.All));
  EXPECT_TRUE(folder.Has("setup.new/new/FriendlyNames.ini"));
}

}  // namespace
}  // namespace kestrel::core
