// The voice bridge against real windows of another process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/windows/windows_voice_windows.h"
#include "radio/transmit.h"
#include "radio/voice_bridge.h"
#include "windows/voice_client.h"

namespace kestrel::platform {
namespace {

using radio::Radio;
using test::VoiceClient;
using testing::ElementsAre;
using testing::IsEmpty;

class VoiceWindows : public testing::Test {
 protected:
  WindowsVoiceWindows windows;
  std::string name = "IVC Client";
  radio::VoiceBridge bridge{windows, name};
};

TEST_F(VoiceWindows, WithoutTheClientAllIsFalseOrEmpty) {
  EXPECT_FALSE(bridge.IsIVCRunning());
  EXPECT_FALSE(bridge.IsIVCConnected());
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "");
  EXPECT_FALSE(bridge.SetRadioFreq(Radio::UHF, "251000"));
  EXPECT_FALSE(bridge.PressChange(Radio::VHF));
  EXPECT_FALSE(bridge.SendIVCKey(112, true));
}

TEST_F(VoiceWindows, TheClientRunsByItsWholeTitle) {
  const VoiceClient client;
  EXPECT_TRUE(bridge.IsIVCRunning());
  name = "IVC";
  EXPECT_FALSE(bridge.IsIVCRunning());
}

TEST_F(VoiceWindows, AnotherTitleIsFoundToo) {
  const VoiceClient client({"title=Voice 2"});
  EXPECT_FALSE(bridge.IsIVCRunning());
  name = "Voice 2";
  EXPECT_TRUE(bridge.IsIVCConnected());
}

TEST_F(VoiceWindows, IsConnectedByTheWholeStatusInWhateverCase) {
  const struct {
    const char* Status;
    bool Connected;
  } cases[] = {{"CONNECTED", true},
               {"connected", true},
               {"Connecting", false},
               {"NO CONNECTION", false},
               {"no connection", false},
               {"Connected to host", false},
               {"", false}};
  for (const auto& [status, connected] : cases) {
    const VoiceClient client({std::string("status=") + status});
    EXPECT_EQ(bridge.IsIVCConnected(), connected) << '"' << status << '"';
  }
}

TEST_F(VoiceWindows, ReadsBothFrequenciesTrimmed) {
  const VoiceClient client;
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "305000");
  EXPECT_EQ(bridge.GetRadioFreq(Radio::VHF), "128550");
}

TEST_F(VoiceWindows, WritesBothFrequencies) {
  const VoiceClient client;
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::UHF, "251000"));
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::VHF, "121500"));
  EXPECT_THAT(client.Record(), ElementsAre("set 4 251000", "set 6 121500"));
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "251000");
  EXPECT_EQ(bridge.GetRadioFreq(Radio::VHF), "121500");
}

TEST_F(VoiceWindows, PressesTheButtonOfEachRadio) {
  const VoiceClient client;
  EXPECT_TRUE(bridge.PressChange(Radio::VHF));
  EXPECT_TRUE(bridge.PressChange(Radio::UHF));
  EXPECT_THAT(client.Record(2), ElementsAre("click 2", "click 1"));
}

TEST_F(VoiceWindows, TunesByTextThenButtonThenRefresh) {
  const VoiceClient client;
  std::vector<std::string> atRefresh;
  bridge.RefreshIVCStatus = [&] { atRefresh = client.Record(2); };
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_THAT(atRefresh, ElementsAre("set 4 251000", "click 1"));
}

TEST_F(VoiceWindows, SendsKeysWithNothingAsTheSecondParameter) {
  const VoiceClient client;
  EXPECT_TRUE(bridge.SendIVCKey(112, true));
  EXPECT_TRUE(bridge.SendIVCKey(112, false));
  EXPECT_TRUE(bridge.SendIVCKey(114, true));
  EXPECT_THAT(client.Record(3), ElementsAre("keydown 112 0", "keyup 112 0", "keydown 114 0"));
}

TEST_F(VoiceWindows, WithoutThePanelAllButRunningAndKeysIsFalseOrEmpty) {
  const VoiceClient client({"nopanel"});
  EXPECT_TRUE(bridge.IsIVCRunning());
  EXPECT_FALSE(bridge.IsIVCConnected());
  for (const Radio radio : {Radio::UHF, Radio::VHF}) {
    EXPECT_EQ(bridge.GetRadioFreq(radio), "");
    EXPECT_FALSE(bridge.SetRadioFreq(radio, "251000"));
    EXPECT_FALSE(bridge.PressChange(radio));
  }
  EXPECT_THAT(client.Record(), IsEmpty());
  EXPECT_TRUE(bridge.SendIVCKey(112, true));
}

TEST_F(VoiceWindows, WithFewerEditsOnlyTheMissingOnesAreEmpty) {
  for (const int edits : {2, 3, 4, 5}) {
    const VoiceClient client({"edits=" + std::to_string(edits)});
    EXPECT_EQ(bridge.IsIVCConnected(), edits >= 3) << edits;
    EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), edits >= 4 ? "305000" : "") << edits;
    EXPECT_EQ(bridge.GetRadioFreq(Radio::VHF), "") << edits;
    EXPECT_FALSE(bridge.SetRadioFreq(Radio::VHF, "121500")) << edits;
    EXPECT_EQ(bridge.PressChange(Radio::UHF), edits >= 4) << edits;
    EXPECT_FALSE(bridge.PressChange(Radio::VHF)) << edits;
  }
}

TEST_F(VoiceWindows, ARestartedClientIsFoundAgain) {
  {
    VoiceClient client;
    EXPECT_TRUE(bridge.IsIVCConnected());
    client.Close();
    EXPECT_FALSE(bridge.IsIVCRunning());
  }
  const VoiceClient again;
  EXPECT_TRUE(bridge.IsIVCConnected());
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::VHF, "121500"));
  EXPECT_THAT(again.Record(), ElementsAre("set 6 121500"));
}

// What one operation on a hung client may take in milliseconds: its limit, with much room for a slow machine. Without a
// limit it would be as long as the client hangs.
constexpr ULONGLONG Bound = 4ULL * WindowsVoiceWindows::OperationLimit;

TEST_F(VoiceWindows, AHungClientIsWaitedForNoLongerThanTheLimit) {
  VoiceClient client;
  client.Hang();
  const struct {
    const char* Name;
    std::function<void()> Run;
  } operations[] = {
      {"IsIVCRunning", [&] { EXPECT_TRUE(bridge.IsIVCRunning()); }},
      {"IsIVCConnected", [&] { EXPECT_FALSE(bridge.IsIVCConnected()); }},
      {"GetRadioFreq", [&] { EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), ""); }},
      {"SetRadioFreq", [&] { EXPECT_TRUE(bridge.SetRadioFreq(Radio::UHF, "251000")); }},
      {"PressChange", [&] { EXPECT_TRUE(bridge.PressChange(Radio::UHF)); }},
      {"SendIVCKey", [&] { EXPECT_TRUE(bridge.SendIVCKey(112, false)); }},
  };
  for (const auto& [what, run] : operations) {
    const ULONGLONG start = GetTickCount64();
    run();
    EXPECT_LT(GetTickCount64() - start, Bound) << what;
  }
}

TEST_F(VoiceWindows, TuningAHungClientWithItsRefreshKeepsTheLimitTogether) {
  VoiceClient client;
  int refreshes = 0;
  bridge.RefreshIVCStatus = [&] {
    ++refreshes;
    bridge.IsIVCConnected();
    bridge.GetRadioFreq(Radio::UHF);
    bridge.GetRadioFreq(Radio::VHF);
  };
  client.Hang();
  const ULONGLONG start = GetTickCount64();
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_LT(GetTickCount64() - start, Bound);
  EXPECT_EQ(refreshes, 1);
}

TEST_F(VoiceWindows, AClientThatComesBackHearsTheReleaseAndIsHeardAgain) {
  VoiceClient client;
  radio::Transmission state;
  radio::PressTransmit(state, bridge, radio::TransmitKey::UHF);
  EXPECT_THAT(client.Record(1), ElementsAre("keydown 112 0"));
  client.Hang();
  radio::ReleaseTransmit(state, bridge, radio::TransmitKey::UHF);
  EXPECT_FALSE(state.TransmittingUHF);
  client.GoOn();
  EXPECT_THAT(client.Record(4), ElementsAre("keydown 112 0", "hung", "goes on", "keyup 112 0"));
  EXPECT_TRUE(bridge.IsIVCConnected());
}

TEST_F(VoiceWindows, ASlowButtonDoesNotHoldTheStation) {
  const VoiceClient client({"slow=3000"});
  const ULONGLONG start = GetTickCount64();
  EXPECT_TRUE(bridge.PressChange(Radio::UHF));
  EXPECT_LT(GetTickCount64() - start, Bound);
  EXPECT_THAT(client.Record(1), ElementsAre("click 1"));
}

}  // namespace
}  // namespace kestrel::platform
