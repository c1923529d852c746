// What each step of the start and of the closing does, one after another: the order of their names is held elsewhere.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/program.h"
#include "core/settings.h"
#include "core/tapes.h"
#include "core/theater_switch.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Changed;

/// What shows that a step has run.
struct Effect {
  std::string_view Step;
  std::function<bool()> Seen;
};

class Steps : public testing::Test {
 protected:
  Steps() {
    WriteInstallation(folder);
    folder.Write("DefFreq.ini", "[UI]\nF1=307300\n");
    folder.Write("KESTREL.ini", "[LOG]\nDEBUG=1\n[MAPS]\nTOTALMAPS=1\nMAP1=korea.ini\nCURRENTMAP=1\n");
  }

  /// Runs the steps one by one: each effect is seen after its step and not before it. Steps without an effect have no
  /// procedure.
  void ExpectEffects(std::span<const Step> steps, const std::vector<Effect>& effects) {
    auto next = effects.begin();
    for (const Step& step : steps) {
      SCOPED_TRACE(step.What);
      if (next == effects.end() || next->Step != step.What) {
        EXPECT_EQ(step.Run, nullptr) << "it has no effect here";
        continue;
      }
      for (auto later = next; later != effects.end(); ++later) {
        EXPECT_FALSE(later->Seen()) << "too early: " << later->Step;
      }
      ASSERT_NE(step.Run, nullptr);
      step.Run(around.All);
      EXPECT_TRUE(next->Seen());
      ++next;
    }
    EXPECT_TRUE(next == effects.end()) << next->Step;
  }
  std::function<bool()> Called(std::string call) {
    return [this, call] {
      return std::find(around.Shown.Calls.begin(), around.Shown.Calls.end(), call) != around.Shown.Calls.end();
    };
  }
  std::function<bool()> Refreshed(Changed what) {
    return [this, what] {
      return std::any_of(around.Shown.Refreshes.begin(), around.Shown.Refreshes.end(),
                         [what](Changed each) { return (each | what) == each; });
    };
  }
  void Start() {
    ASSERT_TRUE(Main(around.All));
    RunSteps(FrameLoadSteps(), around.All);
    RunSteps(MapLoadSteps(), around.All);
    around.Shown.Calls.clear();
    around.Shown.Refreshes.clear();
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
};

TEST_F(Steps, OfTheStart) {
  // As a former run might have left it.
  station.Session.Connected = true;
  station.Session.Channel = 2;
  station.Loading = true;
  station.AutoUpdate = true;
  station.Plots.Clients.Append({}).Id = 7;
  station.Plots.IndexLast();
  station.View.Resolution = 4;
  station.LinkOptions.AUTOFRIENDS = true;
  ExpectEffects(MainSteps(),
                {
                    {"Clear the flags",
                     [this] {
                       return !station.Session.Connected && station.Session.Channel == 1 &&
                              station.Plots.Clients.Empty();
                     }},
                    {"Install the keyboard hook", [this] { return around.Keys.Listening(); }},
                    {"AppPath: the program folder, or the person's own where that cannot be written",
                     [this] { return station.ProgramPath == folder.Path; }},
                    {"Read update.txt", [this] { return station.DocsUrl == "http://docs.example"; }},
                    {"Read common.ini", [this] { return !station.AutoUpdate; }},
                    {"LoadSavedVars", [this] { return station.Catalogue.Theaters.UpperBound() == 1; }},
                    {"LoadFriendsDef", [this] { return station.LinkOptions.FriendNames.UpperBound() == 3; }},
                    {"Read DefFreq.ini", [this] { return station.DefaultFrequencies.DefaultF1 == "307300"; }},
                    {"Open the log", [this] { return around.Log.On(); }},
                    {"Load the theater picture", [this] { return station.MapPicture.Width == 2; }},
                    {"Show MainFrm", [this] { return station.Loading && Called("ShowMainFrm")(); }},
                    {"Place BullsFrm, CursFrm, ViewFrm, ClientsFrm, AreasFrm, RecFrm, MiniMapFrm, FreqFrm",
                     Called("PlaceToolWindows")},
                    {"Copy the view options into ViewFrm",
                     [this] { return station.Plots.FriendlyList.UpperBound() == 3 && around.Raw.IsOpen(); }},
                    {"Clear Loading", [this] { return !station.Loading && Called("PlaceToolWindows")(); }},
                    {"Show FreqFrm, its first tab, its check boxes; hide it again", Called("OpenFreqFrm")},
                    {"ChangeRes 1: the first map",
                     [this] { return station.View.Resolution == 1 && Refreshed(Changed::Map | Changed::Zoom)(); }},
                });
}

TEST_F(Steps, OfTheFrame) {
  folder.Write("common.ini", "[GENERAL]\r\nAUTOUPDATE=1\r\n");
  ASSERT_TRUE(Main(around.All));
  ExpectEffects(FrameLoadSteps(), {{"Start the updater", [this] { return around.Desk.Files.size() == 1; }}});
}

TEST_F(Steps, OfTheMapWindow) {
  ASSERT_TRUE(Main(around.All));
  around.Shown.Refreshes.clear();
  station.Session.Connected = true;
  station.Plots.AIPlots.Append({});
  station.Plots.FriendlyList.Append("Viper");
  station.View.Resolution = 4;
  station.View.Size = 10;
  station.View.MapWidth = 0;
  station.View.ViewCenterX = 1;
  ExpectEffects(MapLoadSteps(),
                {
                    {"Folder TAPES", [this] { return std::filesystem::is_directory(folder.Path / "TAPES"); }},
                    {"Empty the tables",
                     [this] {
                       return !station.Session.Connected && station.Plots.AIPlots.Empty() &&
                              station.Plots.FriendlyList.Empty() && station.View.Resolution == 1;
                     }},
                    {"Size the map", [this] { return station.View.MapWidth != 0; }},
                    {"ReloadNameMenu", Refreshed(Changed::NameMenus)},
                    // The middle of a theater of 1024 map units, 15 view units each.
                    {"ResetTheaterData", [this] { return station.View.ViewCenterX == 512 * 15; }},
                    {"Status pictures", Refreshed(Changed::Connection | Changed::Tape)},
                    {"LoadConnectionMenus", Refreshed(Changed::ConnectionMenus)},
                });
}

TEST_F(Steps, OfTheClosing) {
  Start();
  ASSERT_TRUE(around.Raw.IsOpen());
  ASSERT_TRUE(around.Keys.Listening());
  station.LinkOptions.CONNPORT = 6100;
  ExpectEffects(StopSteps(),
                {
                    {"close the raw capture", [this] { return !around.Raw.IsOpen(); }},
                    {"show the saving message", Called("saving message")},
                    {"save the data of the theater and the settings",
                     [this] { return folder.Read("KESTREL.ini").find("CONNPORT=6100") != std::string::npos; }},
                    {"free the map bitmap", [this] { return station.MapPicture.Empty(); }},
                    {"remove the keyboard hook", [this] { return !around.Keys.Listening(); }},
                    {"unload the windows", Called("UnloadWindows")},
                });
}

TEST_F(Steps, OfTheMapWindowsUnload) {
  Start();
  around.Link.ConnectTo("server");
  around.WS1.Accept();
  RecordingStart(around.All);
  ASSERT_TRUE(station.Tapes.Recorder.Recording());
  ExpectEffects(MapUnloadSteps(),
                {
                    {"close the log", [this] { return !around.Log.On(); }},
                    {"leave the session", [this] { return around.WS1.State() == link::SocketState::Closed; }},
                    {"RecordingEnd", [this] { return !station.Tapes.Recorder.Recording(); }},
                });
}

}  // namespace
}  // namespace kestrel::core
