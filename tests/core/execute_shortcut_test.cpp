#include "core/execute_shortcut.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/shortcuts.h"
#include "core/station_folder.h"
#include "map/geometry.h"

namespace kestrel::core {
namespace {

using base::Changed;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Commands : public testing::Test {
 protected:
  Commands() {
    map::ResetView(View(), 1024, 1024, 100, 200);
    map::ResizeSurface(View(), 900 * 15, 600 * 15);
    View().ViewCenterX = 500 * 15;
    View().ViewCenterY = 400 * 15;
  }
  map::ViewState& View() { return around.State.View; }
  void Execute(std::int32_t index) { ExecuteShortcut(around.All, index); }
  bool Refreshed(Changed what) const {
    return !around.Shown.Refreshes.empty() && Has(around.Shown.Refreshes.back(), what);
  }

  ProgramFolder folder;
  Around around{folder.Path};
};

TEST_F(Commands, ZoomOneStepInAndOut) {
  Execute(0);
  EXPECT_EQ(View().Resolution, 2);
  EXPECT_TRUE(Refreshed(Changed::Map));
  EXPECT_TRUE(Refreshed(Changed::Zoom));
  Execute(1);
  EXPECT_EQ(View().Resolution, 1);
}

TEST_F(Commands, MoveHalfAMapInEachDirection) {
  struct {
    std::int32_t Index;
    double X, Y;
  } const rows[] = {{2, -450, 0}, {3, 450, 0}, {4, 0, -300}, {5, 0, 300}};
  for (const auto& row : rows) {
    View().ViewCenterX = 500 * 15;
    View().ViewCenterY = 400 * 15;
    Execute(row.Index);
    EXPECT_EQ(View().ViewCenterX, (500 + row.X) * 15) << row.Index;
    EXPECT_EQ(View().ViewCenterY, (400 + row.Y) * 15) << row.Index;
    EXPECT_TRUE(Refreshed(Changed::Map));
  }
}

TEST_F(Commands, CentreTheView) {
  Execute(6);
  EXPECT_EQ(View().ViewCenterX, 512 * 15);
  EXPECT_EQ(View().ViewCenterY, 512 * 15);
}

TEST_F(Commands, TogglesGiveTheirOptionItsOtherStateAndShowIt) {
  map::Options& map = around.State.MapOptions;
  const struct {
    std::int32_t Index;
    bool* Option;
    Changed Redraw;
  } rows[] = {
      {7, &map.AIVISIBLE, Changed::Plots},
      {8, &map.REALVISIBLE, Changed::Plots},
      {9, &map.AILABELSVISIBLE, Changed::Plots},
      {10, &map.REALLABELSVISIBLE, Changed::Plots},
      {11, &around.State.LinkOptions.BULLSEYEVISIBLE, Changed::Map},
      {12, &map.SHOWHISTORY, Changed::Plots},
      {13, &map.SHOWAREANAMES, Changed::Map},
      {14, &map.SHOWGRID, Changed::Map},
  };
  for (const auto& row : rows) {
    for (const bool on : {!*row.Option, *row.Option}) {
      around.Shown.Refreshes.clear();
      Execute(row.Index);
      EXPECT_EQ(*row.Option, on) << row.Index;
      EXPECT_TRUE(Refreshed(row.Redraw | Changed::Options)) << row.Index;
    }
  }
}

TEST_F(Commands, TogglesDoWhatElseTheirOptionDoes) {
  Execute(11);
  EXPECT_EQ(View().BullseyeVisible, around.State.LinkOptions.BULLSEYEVISIBLE);
  Execute(11);
  EXPECT_EQ(View().BullseyeVisible, around.State.LinkOptions.BULLSEYEVISIBLE);
}

TEST_F(Commands, TheStaticCursorComesAndGoesWithItsLine) {
  View().CursorLineActive = true;
  Execute(21);
  EXPECT_TRUE(around.State.MapOptions.STATICCURSOR);
  EXPECT_TRUE(View().CursorLineActive);
  Execute(21);
  EXPECT_FALSE(around.State.MapOptions.STATICCURSOR);
  EXPECT_FALSE(View().CursorLineActive);
  EXPECT_TRUE(Refreshed(Changed::CursorLine | Changed::Options));
}

TEST_F(Commands, SaveAViewAndApplyIt) {
  for (std::int32_t slot = 0; slot < 3; ++slot) {
    View().ViewCenterX = (100 + slot) * 15;
    View().ViewCenterY = (200 + slot) * 15;
    View().Resolution = 1 << slot;
    Execute(18 + slot);
  }
  for (std::int32_t slot = 0; slot < 3; ++slot) {
    Execute(15 + slot);
    EXPECT_EQ(View().ViewCenterX, (100 + slot) * 15);
    EXPECT_EQ(View().ViewCenterY, (200 + slot) * 15);
    EXPECT_EQ(View().Resolution, 1 << slot);
    EXPECT_TRUE(Refreshed(Changed::Map));
    EXPECT_TRUE(Refreshed(Changed::Zoom));
  }
}

TEST_F(Commands, TransmitKeysPressTheirRadio) {
  Execute(22);
  Execute(23);
  Execute(24);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(112, true), Pair(113, true), Pair(114, true)));
  EXPECT_TRUE(Refreshed(Changed::Transmit));
}

TEST_F(Commands, NoCommandOutsideTheTable) {
  for (const std::int32_t index : {-1, 25, 1000, -1000}) Execute(index);
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

TEST_F(Commands, AMapKeyDoesNotTransmit) {
  MapKey(around.All, 112, 0);
  MapKey(around.All, 113, 0);
  MapKey(around.All, 114, 0);
  MapKey(around.All, 16, 0);
  EXPECT_THAT(around.VoiceWindows.Keys, IsEmpty());
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
  MapKey(around.All, 33, 0);
  EXPECT_EQ(View().Resolution, 2);
}

class Hearing : public Commands {
 protected:
  Hearing() { StartHook(around.All); }
  radio::Transmission& Transmit() { return around.State.Transmit; }
};

TEST_F(Hearing, IsInstalledOnceAndRemovedOnce) {
  StartHook(around.All);
  StartHook(around.All);
  EXPECT_EQ(around.Keys.Starts, 1);
  EXPECT_TRUE(around.Keys.Listening());
  StopHook(around.All);
  StopHook(around.All);
  EXPECT_EQ(around.Keys.Stops, 1);
  around.Keys.Press(112);
  EXPECT_THAT(around.VoiceWindows.Keys, IsEmpty());
}

TEST_F(Hearing, AHeldKeySendsOnePressAndOneRelease) {
  for (int repeat = 0; repeat < 4; ++repeat) around.Keys.Press(113);
  EXPECT_TRUE(Transmit().TransmittingVHF);
  EXPECT_EQ(Transmit().StatPic_VHF, 4);
  EXPECT_TRUE(Refreshed(Changed::Transmit));
  around.Keys.Release(113);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(113, true), Pair(113, false)));
  EXPECT_FALSE(Transmit().TransmittingVHF);
  EXPECT_EQ(Transmit().StatPic_VHF, 3);
}

TEST_F(Hearing, TheClientGetsItsOwnKeyWhateverTheBindingIs) {
  around.State.ShortcutKeys[24] = 500065;
  around.Keys.Press(65, 5);
  around.Keys.Release(65, 5);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(114, true), Pair(114, false)));
}

TEST_F(Hearing, KeysOfTheMapAreNotGlobal) {
  for (std::size_t index = 0; index < 22; ++index) {
    const std::int32_t binding = around.State.ShortcutKeys[index];
    around.Keys.Press(binding % 100000, binding / 100000);
    around.Keys.Release(binding % 100000, binding / 100000);
  }
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
  EXPECT_EQ(View().Resolution, 1);
}

TEST_F(Hearing, AModifierReleasedFirstLeavesTheRadioOnUntilTheSameCombinationIsReleased) {
  around.State.ShortcutKeys[22] = 200112;
  around.Keys.Press(112, 2);
  around.Keys.Release(17, 0);
  around.Keys.Release(112, 0);
  EXPECT_TRUE(Transmit().TransmittingUHF);
  EXPECT_EQ(Transmit().StatPic_UHF, 2);
  around.Keys.Press(112, 2);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(112, true)));
  around.Keys.Release(112, 2);
  EXPECT_FALSE(Transmit().TransmittingUHF);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(112, true), Pair(112, false)));
}

TEST_F(Hearing, ThreeKeysAtOnceAreThreeRadios) {
  around.Keys.Press(112);
  around.Keys.Press(113);
  around.Keys.Press(114);
  around.Keys.Release(113);
  EXPECT_TRUE(Transmit().TransmittingUHF);
  EXPECT_FALSE(Transmit().TransmittingVHF);
  EXPECT_TRUE(Transmit().TransmittingGuard);
}

TEST_F(Hearing, WithoutASourceTheKeysSilentlyDoNotWork) {
  StopHook(around.All);
  around.Keys.Why = "There is none.";
  StartHook(around.All);
  EXPECT_FALSE(around.State.HookInstalled);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  around.Keys.Why.clear();
  StartHook(around.All);
  EXPECT_TRUE(around.State.HookInstalled) << "asked again when it is next wanted";
}

TEST_F(Hearing, ItsEndReleasesTheKeysThatAreHeld) {
  around.Keys.Press(112);
  around.Keys.Press(114);
  around.VoiceWindows.Keys.clear();
  StopHook(around.All);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(112, false), Pair(114, false)));
  EXPECT_FALSE(Transmit().TransmittingUHF);
  EXPECT_FALSE(Transmit().TransmittingGuard);
  EXPECT_EQ(Transmit().StatPic_UHF, 1);
  EXPECT_EQ(Transmit().StatPic_VHF, 3);
  EXPECT_EQ(Transmit().StatPic_Guard, 9);
  EXPECT_TRUE(Refreshed(Changed::Transmit));
  StartHook(around.All);
  around.VoiceWindows.Keys.clear();
  around.Shown.Calls.clear();
  StopHook(around.All);
  EXPECT_THAT(around.VoiceWindows.Keys, IsEmpty()) << "none is held";
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

class HookOfTheProgram : public Commands {};

TEST_F(HookOfTheProgram, StandsFromTheStartToTheClosing) {
  WriteInstallation(folder);
  around.Shown.WhenShown = [this] {
    EXPECT_TRUE(around.Keys.Listening());
    RunSteps(FrameLoadSteps(), around.All);
    RunSteps(MapLoadSteps(), around.All);
  };
  ASSERT_TRUE(Main(around.All));
  EXPECT_EQ(around.Keys.Starts, 1);
  around.Keys.Press(113);
  around.Shown.WhenUnloaded = [this] {
    EXPECT_FALSE(around.Keys.Listening()) << "removed before the windows go";
    // As a key box does when it loses the focus.
    StartHook(around.All);
  };
  Close(around.All);
  EXPECT_EQ(around.Keys.Stops, 1);
  EXPECT_FALSE(around.Keys.Listening()) << "and not installed again";
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(113, true), Pair(113, false))) << "no radio is left on";
  EXPECT_THAT(around.Shown.Calls, Contains("UnloadWindows"));
}

}  // namespace
}  // namespace kestrel::core
