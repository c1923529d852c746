#include "core/side_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/files.h"
#include "core/friends.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;

std::vector<std::string> Names(const Station& station) {
  const auto live = station.LinkOptions.FriendNames.Live();
  return {live.begin(), live.end()};
}

struct UpdateCase {
  std::string Text;
  std::string Docs;
  std::string Mail;

  friend void PrintTo(const UpdateCase& shown, std::ostream* out) { *out << shown.Docs << ", " << shown.Mail; }
};

class UpdateText : public testing::TestWithParam<UpdateCase> {};

TEST_P(UpdateText, SetsTheAddresses) {
  ProgramFolder folder;
  Station station;
  station.ProgramPath = folder.Path;
  folder.Write("update.txt", GetParam().Text);
  LoadUpdateText(station);
  EXPECT_EQ(station.DocsUrl, GetParam().Docs);
  EXPECT_EQ(station.MailUrl, GetParam().Mail);
}

INSTANTIATE_TEST_SUITE_P(Cases, UpdateText,
                         testing::Values(UpdateCase{"DOCS=http://d\r\nMAIL=m@x\r\n", "http://d", "m@x"},
                                         UpdateCase{"\n docs \t=x\n mail = m@x \n", "", " m@x "},
                                         UpdateCase{"  Docs  = d\nmail=m", " d", "m"},
                                         // A "=" in the value cuts it.
                                         UpdateCase{"DOCS=http://d?page=2\n", "http://d?page", ""},
                                         UpdateCase{"DOCS\nVERSION=2\nno such line\n\n", "", ""},
                                         UpdateCase{"DOCS=a\nDOCS=b\n", "b", ""}, UpdateCase{"", "", ""}));

TEST(SideFiles, AMissingUpdateTextIsAFailure) {
  ProgramFolder folder;
  Station station;
  station.ProgramPath = folder.Path;
  EXPECT_THROW(LoadUpdateText(station), base::RuntimeFailure);
}

TEST(SideFiles, AutoUpdateIsOnUnlessTheFileSaysOtherwise) {
  ProgramFolder folder;
  Station station;
  station.AppPath = folder.Path;
  LoadAutoUpdate(station);
  EXPECT_TRUE(station.AutoUpdate);
  for (const auto& [text, on] : std::vector<std::pair<std::string, bool>>{
           {"[GENERAL]\nAUTOUPDATE=0\n", false},
           {"[general]\nautoupdate=1\n", true},
           {"[GENERAL]\nAUTOUPDATE=yes\n", false},
           {"[GENERAL]\nAUTOUPDATE=\n", true},
           {"[OTHER]\nAUTOUPDATE=0\n", true},
       }) {
    folder.Write("common.ini", text);
    LoadAutoUpdate(station);
    EXPECT_EQ(station.AutoUpdate, on) << text;
  }
}

TEST(SideFiles, SettingAutoUpdateKeepsWhatTheUpdaterKeepsThere) {
  ProgramFolder folder;
  Station station;
  station.AppPath = folder.Path;
  folder.Write("common.ini", "[GENERAL]\r\nSERVER=here\r\nAUTOUPDATE=1\r\n[MORE]\r\nX=1\r\n");
  SetAutoUpdate(station, false);
  EXPECT_FALSE(station.AutoUpdate);
  EXPECT_EQ(folder.Read("common.ini"), "[GENERAL]\r\nSERVER=here\r\nAUTOUPDATE=0\r\n[MORE]\r\nX=1\r\n");
}

TEST(SideFiles, FriendlyNamesAreTheLinesAsTheyStand) {
  ProgramFolder folder;
  Station station;
  station.AppPath = folder.Path;
  station.LinkOptions.FriendNames.Append("former");
  LoadFriendsDef(station);
  EXPECT_THAT(Names(station), ElementsAre());
  folder.Write("FriendlyNames.ini", "Cowboy\r\n\r\n Falcon \nlast");
  LoadFriendsDef(station);
  EXPECT_THAT(Names(station), ElementsAre("Cowboy", "", " Falcon ", "last"));
  folder.Write("FriendlyNames.ini", "");
  LoadFriendsDef(station);
  EXPECT_THAT(Names(station), ElementsAre());
}

TEST(SideFiles, AFriendlyNamesFileThatIsTooLargeIsAFailure) {
  ProgramFolder folder;
  Station station;
  station.AppPath = folder.Path;
  folder.Write("FriendlyNames.ini", "");
  std::filesystem::resize_file(folder.Path / "FriendlyNames.ini", base::MaxTextFileBytes + 1);
  EXPECT_THROW(LoadFriendsDef(station), base::RuntimeFailure);
}

TEST(SideFiles, ADriveRootGetsNoSecondBackslash) {
  EXPECT_EQ(AppPathText("C:\\", '\\'), "C:\\");
  EXPECT_EQ(AppPathText("C:\\KESTREL", '\\'), "C:\\KESTREL\\");
  EXPECT_EQ(AppPathText("C:", '\\'), "C:\\");
  EXPECT_EQ(AppPathText("/opt/kestrel", '/'), "/opt/kestrel/");
}

}  // namespace
}  // namespace kestrel::core
