// The keyboard hook and the transmit keys, typed on the screen's keyboard while the window of another process has the
// focus.

#include "platform/windows/windows_global_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/execute_shortcut.h"
#include "doubles/fake_clock.h"
#include "doubles/fake_socket.h"
#include "doubles/recording_host.h"
#include "doubles/recording_windows.h"
#include "doubles/scripted_desktop.h"
#include "platform/windows/windows_voice_windows.h"
#include "windows/voice_client.h"

namespace kestrel::platform {
namespace {

using test::VoiceClient;
using test::WaitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

/// As "down 112" or "up 112 shift 2".
std::string Words(const core::GlobalKey& key) {
  std::string words = (key.Down ? "down " : "up ") + std::to_string(key.KeyCode);
  if (key.Shift != 0) words += " shift " + std::to_string(key.Shift);
  return words;
}

constexpr std::int32_t MarkKey = 123;  // F12, typed to see when what was typed before it has arrived

std::string SimulatorTitle() {
  static int number = 0;
  return "Simulator" + std::to_string(++number);
}

class GlobalKeys : public testing::Test {
 protected:
  core::GlobalKeys::Heard Listener() {
    return [this](const core::GlobalKey& key) {
      if (key.KeyCode != MarkKey) heard.push_back(Words(key));
    };
  }
  /// Types while the simulator has the focus, and waits until it has seen it all.
  void Type(const std::string& what) {
    heard.clear();
    const std::size_t before = Marks();
    test::Type(title, what + " key F12");
    ASSERT_TRUE(WaitUntil([&] { return Marks() > before; })) << what;
  }
  /// The simulator's record as "keydown KEY" and "keyup KEY".
  std::vector<std::string> SimulatorSaw() const {
    std::vector<std::string> saw;
    for (const std::string& line : simulator.Record()) {
      const std::string words = line.substr(0, line.rfind(' '));
      if (std::stoi(words.substr(words.find(' '))) != MarkKey) saw.push_back(words);
    }
    return saw;
  }

  const std::string title = SimulatorTitle();
  VoiceClient simulator{{"title=" + title, "nopanel"}};
  std::vector<std::string> heard;  ///< but for the mark
  WindowsGlobalKeys keys;

 protected:
  std::size_t Marks() const {
    const std::vector<std::string> lines = simulator.Record();
    return static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("keyup 123 "); }));
  }
};

TEST_F(GlobalKeys, HearsTheKeysOfAnotherProgramAndLetsItHaveThem) {
  ASSERT_TRUE(keys.Start(Listener()));
  EXPECT_EQ(keys.Missing(), "");
  Type("key F1");
  EXPECT_THAT(heard, ElementsAre("down 112", "up 112"));
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 112", "keyup 112"));
}

TEST_F(GlobalKeys, StartedTwiceOneHookHears) {
  ASSERT_TRUE(keys.Start(Listener()));
  ASSERT_TRUE(keys.Start(Listener()));
  Type("key F2");
  EXPECT_THAT(heard, ElementsAre("down 113", "up 113"));
}

TEST_F(GlobalKeys, StoppedItHearsNothing) {
  ASSERT_TRUE(keys.Start(Listener()));
  keys.Stop();
  keys.Stop();
  Type("key F3");
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 114", "keyup 114"));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(GlobalKeys, StartsAgainAfterAStop) {
  ASSERT_TRUE(keys.Start(Listener()));
  keys.Stop();
  ASSERT_TRUE(keys.Start(Listener()));
  Type("key F1");
  EXPECT_THAT(heard, ElementsAre("down 112", "up 112"));
}

TEST_F(GlobalKeys, OneAtATimeListens) {
  ASSERT_TRUE(keys.Start(Listener()));
  WindowsGlobalKeys other;
  EXPECT_FALSE(other.Start([](const core::GlobalKey&) { ADD_FAILURE(); }));
  other.Stop();
  Type("key F1");
  EXPECT_THAT(heard, ElementsAre("down 112", "up 112"));
}

TEST_F(GlobalKeys, WhatIsCalledMayEndTheListening) {
  ASSERT_TRUE(keys.Start([&](const core::GlobalKey& key) {
    heard.push_back(Words(key));
    keys.Stop();
  }));
  Type("key F1");
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 112", "keyup 112"));
  EXPECT_THAT(heard, ElementsAre("down 112"));
}

TEST_F(GlobalKeys, TellsTheModifiersThatAreHeldAtThatMoment) {
  ASSERT_TRUE(keys.Start(Listener()));
  Type("keydown ctrl keydown F5 keyup F5 keyup ctrl");
  EXPECT_THAT(heard, ElementsAre("down 116 shift 2", "up 116 shift 2"));
  Type("keydown shift keydown F6 keyup F6 keyup shift");
  EXPECT_THAT(heard, ElementsAre("down 117 shift 1", "up 117 shift 1"));
  Type("keydown ctrl keydown shift keydown F7 keyup shift keyup F7 keyup ctrl");
  EXPECT_THAT(heard, ElementsAre("down 118 shift 3", "up 118 shift 2"));
}

TEST_F(GlobalKeys, KeysOfTheExtendedPartPassOn) {
  ASSERT_TRUE(keys.Start(Listener()));
  Type("key Right key F9");
  EXPECT_THAT(heard, ElementsAre("down 120", "up 120"));
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 39", "keyup 39", "keydown 120", "keyup 120"));
}

TEST_F(GlobalKeys, AreHeardInTheirOrderThoughTheThreadOfTheWindowsIsBusy) {
  ASSERT_TRUE(keys.Start(Listener()));
  // No message of this thread is looked at for so long, as while a theater loads; milliseconds.
  constexpr ULONGLONG busy = 2000, limit = 20000;
  const ULONGLONG start = GetTickCount64();
  test::Type(title, "key F1 keydown ctrl key F2 keyup ctrl key F3 key F12");
  while (GetTickCount64() - start < busy || (Marks() == 0 && GetTickCount64() - start < limit)) Sleep(10);
  EXPECT_EQ(Marks(), 1U) << "the simulator waits for the station";
  EXPECT_THAT(heard, IsEmpty());
  EXPECT_TRUE(WaitUntil([&] { return heard.size() >= 6; }));
  EXPECT_THAT(heard, ElementsAre("down 112", "up 112", "down 113 shift 2", "up 113 shift 2", "down 114", "up 114"));
}

TEST_F(GlobalKeys, KnowsWhichBindingsItNeverHears) {
  EXPECT_TRUE(keys.Hears(core::Binding(VK_F1, core::CtrlModifier)));
  EXPECT_FALSE(keys.Hears(core::Binding(VK_F1, core::AltModifier)));
  EXPECT_FALSE(keys.Hears(VK_RIGHT));
}

TEST_F(GlobalKeys, KeysThatAProgramMakesPassOn) {
  ASSERT_TRUE(keys.Start(Listener()));
  Type("key F2");
  heard.clear();
  INPUT made[2] = {};
  made[0].type = made[1].type = INPUT_KEYBOARD;
  made[0].ki.wVk = made[1].ki.wVk = VK_F4;
  made[1].ki.dwFlags = KEYEVENTF_KEYUP;
  ASSERT_EQ(SendInput(2, made, sizeof made[0]), 2U);
  EXPECT_TRUE(WaitUntil([&] { return SimulatorSaw().size() == 4; }));
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 113", "keyup 113", "keydown 115", "keyup 115"));
  EXPECT_THAT(heard, IsEmpty());
}

/// The station's transmit keys from the hook to the voice client, which a window that was never shown stands for: it
/// takes the focus from nobody.
class TransmitKeys : public GlobalKeys {
 protected:
  void Listen() {
    ASSERT_TRUE(keys.Start([this](const core::GlobalKey& key) {
      Listener()(key);
      core::HookedKey(program, key);
    }));
  }

  core::Station state;
  doubles::FakeClock clock;
  doubles::ScriptedDesktop desktop;
  doubles::RecordingWindows shown;
  base::DebugLog log{clock};
  link::Capture raw{clock};
  doubles::FakeSocket socket;
  doubles::RecordingHost host;
  link::Session session{socket, desktop, host, log, raw, state.Session, state.Plots, state.LinkOptions};
  WindowsVoiceWindows windows;
  radio::VoiceBridge voice{windows, state.VoiceWindowName};
  core::Program program{state, desktop, shown, log, raw, session, keys, voice};
};

TEST_F(TransmitKeys, ReachTheVoiceClientWhileTheSimulatorHasTheFocus) {
  const VoiceClient client({"hidden"});
  Listen();
  Type("keydown F1");
  EXPECT_THAT(client.Record(1), ElementsAre("keydown 112 0"));
  EXPECT_EQ(state.Transmit.StatPic_UHF, 2);
  Type("keyup F1");
  EXPECT_EQ(state.Transmit.StatPic_UHF, 1);
  Type("key F2 key F3");
  EXPECT_THAT(client.Record(6), ElementsAre("keydown 112 0", "keyup 112 0", "keydown 113 0", "keyup 113 0",
                                            "keydown 114 0", "keyup 114 0"));
  EXPECT_THAT(SimulatorSaw(),
              ElementsAre("keydown 112", "keyup 112", "keydown 113", "keyup 113", "keydown 114", "keyup 114"));
  EXPECT_EQ(GetForegroundWindow(), simulator.Window());
}

TEST_F(TransmitKeys, ReachTheVoiceClientWhileAWindowOfTheStationHasTheFocus) {
  const VoiceClient client({"hidden"});
  Listen();
  const HWND own = CreateWindowA("Static", "Own window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 200, 100, nullptr,
                                 nullptr, nullptr, nullptr);
  ASSERT_NE(own, nullptr);
  test::Type("Own window", "key F1");
  EXPECT_THAT(client.Record(2), ElementsAre("keydown 112 0", "keyup 112 0"));
  EXPECT_EQ(GetForegroundWindow(), own);
  EXPECT_THAT(SimulatorSaw(), IsEmpty());
  DestroyWindow(own);
}

TEST_F(TransmitKeys, AHeldKeySendsOneKeyDownAndOneKeyUp) {
  const VoiceClient client({"hidden"});
  Listen();
  test::Type(title, "keydown F1");
  EXPECT_TRUE(WaitUntil([&] { return heard.size() >= 4; })) << "the keyboard does not repeat";
  for (const std::string& words : heard) EXPECT_EQ(words, "down 112");
  Type("keyup F1");
  EXPECT_EQ(heard.back(), "up 112");
  EXPECT_THAT(client.Record(2), ElementsAre("keydown 112 0", "keyup 112 0"));
}

TEST_F(TransmitKeys, PressedWhileNotConnectedFailAndComeBackToIdle) {
  const VoiceClient client({"hidden", "status=NO CONNECTION"});
  Listen();
  Type("keydown F2");
  EXPECT_EQ(state.Transmit.StatPic_VHF, 8);
  EXPECT_TRUE(state.Transmit.TransmittingVHF);
  Type("keyup F2");
  EXPECT_EQ(state.Transmit.StatPic_VHF, 3);
  EXPECT_FALSE(state.Transmit.TransmittingVHF);
  // The release goes out without a look at the connection.
  EXPECT_THAT(client.Record(1), ElementsAre("keyup 113 0"));
}

TEST_F(TransmitKeys, ReleasedAfterTheClientHasClosedComeBackToIdle) {
  VoiceClient client({"hidden"});
  Listen();
  Type("keydown F3");
  EXPECT_EQ(state.Transmit.StatPic_Guard, 10);
  client.Close();
  Type("keyup F3");
  EXPECT_EQ(state.Transmit.StatPic_Guard, 9);
  EXPECT_FALSE(state.Transmit.TransmittingGuard);
}

TEST_F(TransmitKeys, ReachAClientThatHasRestarted) {
  Listen();
  for (int start = 0; start < 2; ++start) {
    const VoiceClient client({"hidden"});
    Type("key F1");
    EXPECT_THAT(client.Record(2), ElementsAre("keydown 112 0", "keyup 112 0"));
  }
}

TEST_F(TransmitKeys, AReleaseWithoutTheModifierLeavesTheRadioOnUntilTheSameCombinationIsReleased) {
  const VoiceClient client({"hidden"});
  state.ShortcutKeys[22] = core::Binding(112, core::CtrlModifier);
  Listen();
  Type("keydown ctrl keydown F1 keyup ctrl keyup F1");
  EXPECT_THAT(heard, ElementsAre("down 112 shift 2", "up 112"));
  EXPECT_TRUE(state.Transmit.TransmittingUHF);
  EXPECT_THAT(client.Record(1), ElementsAre("keydown 112 0"));
  Type("keydown ctrl keydown F1 keyup F1 keyup ctrl");
  EXPECT_FALSE(state.Transmit.TransmittingUHF);
  EXPECT_THAT(client.Record(2), ElementsAre("keydown 112 0", "keyup 112 0"));
}

TEST_F(TransmitKeys, AHungClientHoldsNeitherTheStationNorTheSimulator) {
  VoiceClient client({"hidden"});
  Listen();
  client.Hang();
  Type("key F1");
  EXPECT_EQ(state.Transmit.StatPic_UHF, 1);
  EXPECT_FALSE(state.Transmit.TransmittingUHF);
  EXPECT_THAT(SimulatorSaw(), ElementsAre("keydown 112", "keyup 112"));
  client.GoOn();
  EXPECT_THAT(client.Record(3), ElementsAre("hung", "goes on", "keyup 112 0"));
}

TEST_F(TransmitKeys, OtherShortcutsAreNotGlobal) {
  Listen();
  state.ShortcutKeys[0] = 116;
  Type("key F5");
  EXPECT_THAT(heard, ElementsAre("down 116", "up 116"));
  EXPECT_THAT(shown.Calls, IsEmpty());
}

}  // namespace
}  // namespace kestrel::platform
