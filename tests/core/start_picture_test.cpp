// The theater's picture at the start: it is read while the windows are made.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/early_windows.h"
#include "core/program.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Windows that are made before they are shown, as a list of what was asked of them.
class ListedWindows final : public Windows, public EarlyWindows {
 public:
  void MakeMainFrm(bool made) override {
    Calls.emplace_back(made ? "made" : "dropped");
    if (WhenMade) WhenMade();
  }
  void ShowMainFrm() override {
    Calls.emplace_back("shown");
    if (WhenShown) WhenShown();
  }
  void PlaceToolWindows() override {}
  void OpenFreqFrm() override {}
  void Refresh(base::Changed) override {}
  void ShowSavingMessage(bool) override {}
  void ShowLoading(std::optional<int>) override {}
  areas::TextMeasure& Texts() override { return Letters; }
  void UnloadWindows() override {}

  doubles::FixedTexts Letters;
  std::vector<std::string> Calls;
  std::function<void()> WhenMade;
  std::function<void()> WhenShown;
};

struct EarlyOutside {
  ListedWindows Shown;
  doubles::RecordingHost Host;
};

class StartPicture : public testing::Test {
 protected:
  StartPicture() {
    WriteInstallation(folder);
    folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n");
    around.State.AppPath = folder.Path;
    around.Shown.WhenMade = [this] { EXPECT_TRUE(around.State.MapPicture.Empty()); };
    around.Shown.WhenShown = [this] { EXPECT_EQ(around.State.MapPicture.Width, 2); };
  }
  void ExpectTheBoxOfMain() {
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, "Error");
    EXPECT_EQ(around.Desk.Boxes[0].Text,
              "An error ocurred while loading the initialization files (Main). Please check these files, or reinstall "
              "the program. The program will exit now...");
    EXPECT_TRUE(around.State.MapPicture.Empty());
  }

  ProgramFolder folder;
  doubles::StationAround<EarlyOutside> around;
};

TEST_F(StartPicture, WindowsAreMadeBesideItAndShownWithIt) {
  EXPECT_TRUE(Main(around.All));
  EXPECT_THAT(around.Shown.Calls, ElementsAre("made", "shown"));
}

TEST_F(StartPicture, OfOneThatCannotBeReadTheWindowsAreDroppedBeforeTheBox) {
  folder.Write("Theaters/korea.bmp", "no picture");
  EXPECT_FALSE(Main(around.All));
  EXPECT_THAT(around.Shown.Calls, ElementsAre("made", "dropped"));
  ExpectTheBoxOfMain();
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), HasSubstr("Load the theater picture: no picture of a known kind\r\n"));
  EXPECT_THAT(folder.Read("KESTRELLog.txt"), Not(HasSubstr("Loaded the map picture")));
}

TEST_F(StartPicture, OfOneThatMayNotBeReadThereAreNoWindows) {
  folder.Write("Theaters/korea.ini", "[MAP]\nNAME=korea\nSIZE=1024\nPICSIZE=2\nPIC=../outside.bmp\n");
  EXPECT_FALSE(Main(around.All));
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
  ExpectTheBoxOfMain();
}

TEST_F(StartPicture, WindowsThatCannotBeMadeEndTheStartThoughItIsBeingRead) {
  for (const std::string& bytes : {TinyBmp(2), std::string("no picture")}) {
    around.Desk.Boxes.clear();
    around.Shown.Calls.clear();
    folder.Write("Theaters/korea.bmp", bytes);
    around.Shown.WhenMade = [] { throw std::runtime_error("no window"); };
    EXPECT_FALSE(Main(around.All));
    ExpectTheBoxOfMain();
    EXPECT_THAT(around.Shown.Calls, ElementsAre("made"));
  }
}

}  // namespace
}  // namespace kestrel::core
