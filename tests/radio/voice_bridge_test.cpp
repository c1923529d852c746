#include "radio/voice_bridge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doubles/fake_voice_client.h"

namespace kestrel::radio {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Places in the double's list of controls.
constexpr std::size_t StatusAt = 4, UhfAt = 5;

class Bridge : public testing::Test {
 protected:
  ~Bridge() override { EXPECT_THAT(client.Faults, IsEmpty()); }

  void RemoveControls(const std::string& className, std::size_t kept) {
    std::erase_if(client.Controls, [&](const auto& control) {
      if (control.Class != className) return false;
      if (kept == 0) return true;
      --kept;
      return false;
    });
  }

  doubles::FakeVoiceClient client;
  std::string name = "IVC Client";
  VoiceBridge bridge{client, name};
};

TEST_F(Bridge, RunsWhileAWindowHasTheWholeTitle) {
  EXPECT_TRUE(bridge.IsIVCRunning());
  client.Title = "IVC Client 2";
  EXPECT_FALSE(bridge.IsIVCRunning());
  name = "IVC Client 2";
  EXPECT_TRUE(bridge.IsIVCRunning());
  client.Running = false;
  EXPECT_FALSE(bridge.IsIVCRunning());
}

TEST_F(Bridge, IsConnectedOnlyWhenTheWholeStatusSaysSo) {
  const struct {
    const char* Status;
    bool Connected;
  } cases[] = {{"CONNECTED", true},
               {"connected", true},
               {"Connected", true},
               {"NO CONNECTION", false},
               {"no connection", false},
               {"NOT CONNECTED", false},
               {"CONNECTED TO X", false},
               {"CONNECTING", false},
               {" CONNECTED", false},
               {"CONNECTED ", false},
               {"", false},
               {"CONNECTE", false}};
  for (const auto& [status, connected] : cases) {
    client.Controls[StatusAt].Text = status;
    EXPECT_EQ(bridge.IsIVCConnected(), connected) << '"' << status << '"';
  }
}

TEST_F(Bridge, ReadsTheFourthAndTheSixthEditTrimmed) {
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "305000");
  client.Controls[UhfAt].Text = " 243 000 ";
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "243 000");
  EXPECT_EQ(bridge.GetRadioFreq(Radio::VHF), "128550");
}

TEST_F(Bridge, WritesTheFrequencyOfEachRadio) {
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::UHF, "251000"));
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::VHF, "121500"));
  EXPECT_THAT(client.Log, ElementsAre("set 5 251000", "set 8 121500"));
}

TEST_F(Bridge, PressesTheButtonOfEachRadioByItsCaption) {
  EXPECT_TRUE(bridge.PressChange(Radio::UHF));
  EXPECT_TRUE(bridge.PressChange(Radio::VHF));
  EXPECT_THAT(client.Log, ElementsAre("click 7", "click 9"));
  client.Controls[7].Text = "Change";
  EXPECT_TRUE(bridge.PressChange(Radio::UHF)) << "the remaining button of that caption is the first";
  EXPECT_FALSE(bridge.PressChange(Radio::VHF));
  EXPECT_EQ(client.Log.back(), "click 9");
}

TEST_F(Bridge, TunesByTextThenButtonThenRefresh) {
  bridge.RefreshIVCStatus = [&] { client.Log.push_back("refresh"); };
  bridge.TuneRadio(Radio::VHF, "121500");
  EXPECT_THAT(client.Log, ElementsAre("set 8 121500", "click 9", "refresh"));
}

TEST_F(Bridge, RefreshesAfterTuningThatReachedNothing) {
  int refreshes = 0;
  bridge.RefreshIVCStatus = [&] { ++refreshes; };
  client.Running = false;
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_EQ(refreshes, 1);
  client.Running = true;
  client.Controls.resize(UhfAt);
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_EQ(refreshes, 2);
  EXPECT_THAT(client.Log, IsEmpty());
}

TEST_F(Bridge, PressesTheButtonAlsoWhenTheBoxIsMissing) {
  RemoveControls("Edit", 3);
  bridge.TuneRadio(Radio::VHF, "121500");
  EXPECT_THAT(client.Log, ElementsAre("click " + std::to_string(client.Controls.size() - 1)));
}

TEST_F(Bridge, TuningNeedsNoRefresh) {
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_THAT(client.Log, ElementsAre("set 5 251000", "click 7"));
}

TEST_F(Bridge, SendsKeysToTheTopWindow) {
  EXPECT_TRUE(bridge.SendIVCKey(112, true));
  EXPECT_TRUE(bridge.SendIVCKey(112, false));
  EXPECT_TRUE(bridge.SendIVCKey(114, true));
  EXPECT_THAT(client.Log, ElementsAre("down 112", "up 112", "down 114"));
}

TEST_F(Bridge, KeysNeedNoPanel) {
  client.HasPanel = false;
  EXPECT_TRUE(bridge.SendIVCKey(113, false));
  EXPECT_THAT(client.Log, ElementsAre("up 113"));
}

TEST_F(Bridge, WithoutTheClientAllIsFalseOrEmpty) {
  client.Running = false;
  EXPECT_FALSE(bridge.IsIVCRunning());
  EXPECT_FALSE(bridge.IsIVCConnected());
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "");
  EXPECT_FALSE(bridge.SetRadioFreq(Radio::UHF, "251000"));
  EXPECT_FALSE(bridge.PressChange(Radio::VHF));
  EXPECT_FALSE(bridge.SendIVCKey(112, true));
  EXPECT_THAT(client.Log, IsEmpty());
}

TEST_F(Bridge, WithoutThePanelAllButRunningAndKeysIsFalseOrEmpty) {
  client.HasPanel = false;
  EXPECT_TRUE(bridge.IsIVCRunning());
  EXPECT_FALSE(bridge.IsIVCConnected());
  for (const Radio radio : {Radio::UHF, Radio::VHF}) {
    EXPECT_EQ(bridge.GetRadioFreq(radio), "");
    EXPECT_FALSE(bridge.SetRadioFreq(radio, "251000"));
    EXPECT_FALSE(bridge.PressChange(radio));
  }
  EXPECT_THAT(client.Log, IsEmpty());
}

TEST_F(Bridge, WithFewerEditsOnlyTheMissingOnesAreEmpty) {
  for (std::size_t kept = 6; kept-- > 0;) {
    RemoveControls("Edit", kept);
    EXPECT_EQ(bridge.IsIVCConnected(), kept >= 3) << kept;
    EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), kept >= 4 ? "305000" : "") << kept;
    EXPECT_EQ(bridge.GetRadioFreq(Radio::VHF), "") << kept;
    EXPECT_FALSE(bridge.SetRadioFreq(Radio::VHF, "121500")) << kept;
  }
}

TEST_F(Bridge, ARestartedClientIsFoundAgain) {
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::UHF, "251000"));
  client.Running = false;
  EXPECT_FALSE(bridge.SetRadioFreq(Radio::UHF, "252000"));
  client.Running = true;
  client.Restart();
  EXPECT_TRUE(bridge.SetRadioFreq(Radio::UHF, "253000"));
  EXPECT_EQ(bridge.GetRadioFreq(Radio::UHF), "253000");
}

TEST_F(Bridge, EachOperationLooksTheClientUpAnew) {
  bridge.IsIVCRunning();
  bridge.IsIVCConnected();
  bridge.GetRadioFreq(Radio::UHF);
  bridge.SendIVCKey(112, true);
  EXPECT_EQ(client.Lookups, 4);
  EXPECT_EQ(client.Operations, 4);
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_EQ(client.Lookups, 6);
}

TEST_F(Bridge, TuningAndItsRefreshAreOneOperation) {
  bridge.RefreshIVCStatus = [&] {
    bridge.IsIVCRunning();
    bridge.IsIVCConnected();
  };
  bridge.TuneRadio(Radio::UHF, "251000");
  EXPECT_EQ(client.Operations, 1);
  bridge.TuneRadio(Radio::UHF, "252000");
  EXPECT_EQ(client.Operations, 2);
}

TEST_F(Bridge, FetchesATextIntoItsLengthAndOne) {
  bridge.IsIVCConnected();
  EXPECT_THAT(client.Rooms, ElementsAre(10u));
}

TEST_F(Bridge, BoundsTheLengthThatTheClientTells) {
  client.LengthLie = static_cast<std::size_t>(-1);
  EXPECT_TRUE(bridge.IsIVCConnected());
  EXPECT_THAT(client.Rooms, ElementsAre(32768u));
}

TEST_F(Bridge, TheStatusIsOneOperation) {
  const VoiceStatus status = bridge.Status();
  EXPECT_TRUE(status.Running);
  EXPECT_TRUE(status.Connected);
  EXPECT_EQ(status.UHF, "305000");
  EXPECT_EQ(status.VHF, "128550");
  EXPECT_EQ(client.Operations, 1);
  client.Controls[StatusAt].Text = "CONNECTING";
  EXPECT_TRUE(bridge.Status().Running);
  EXPECT_FALSE(bridge.Status().Connected);
  EXPECT_EQ(client.Operations, 3);
}

TEST_F(Bridge, WithoutTheClientTheStatusAndAClickSendNoMessage) {
  int refreshes = 0;
  bridge.RefreshIVCStatus = [&] {
    ++refreshes;
    bridge.Status();
  };
  client.Running = false;
  const VoiceStatus status = bridge.Status();
  EXPECT_FALSE(status.Running || status.Connected);
  EXPECT_EQ(status.UHF + status.VHF, "");
  bridge.ClickValue("0");
  EXPECT_EQ(refreshes, 1);
  EXPECT_EQ(client.Messages, 0);
}

TEST_F(Bridge, AClickTunesTheRadioOfItsKind) {
  bridge.RefreshIVCStatus = [&] { client.Log.push_back("refresh"); };
  bridge.ClickValue("297500");
  EXPECT_THAT(client.Log, ElementsAre("refresh", "set 5 297500", "click 7", "refresh"));
  client.Log.clear();
  bridge.ClickValue("138050");
  EXPECT_THAT(client.Log, ElementsAre("refresh", "set 8 138050", "click 9", "refresh"));
  client.Log.clear();
  bridge.ClickValue("0");
  EXPECT_THAT(client.Log, ElementsAre("refresh", "set 5 0", "click 7", "refresh", "set 8 0", "click 9", "refresh"));
  EXPECT_EQ(client.Operations, 3);
}

TEST_F(Bridge, AClickOnWhatIsNoRadioFrequencyRefreshesAlone) {
  bridge.RefreshIVCStatus = [&] { client.Log.push_back("refresh"); };
  for (const char* value : {"", "000000", "10810", "297510", "tower"}) bridge.ClickValue(value);
  EXPECT_THAT(client.Log, ElementsAre("refresh", "refresh", "refresh", "refresh", "refresh"));
}

TEST_F(Bridge, AClickWithoutAConnectionTunesNothing) {
  bridge.RefreshIVCStatus = [&] { client.Log.push_back("refresh"); };
  client.Controls[StatusAt].Text = "NO CONNECTION";
  bridge.ClickValue("297500");
  EXPECT_THAT(client.Log, ElementsAre("refresh"));
}

TEST_F(Bridge, AHungClientIsWaitedForOnceInAStatusOrAClick) {
  bridge.RefreshIVCStatus = [&] { bridge.Status(); };
  client.Hung = true;
  EXPECT_TRUE(bridge.Status().Running);
  EXPECT_EQ(client.Waited, 500);
  bridge.ClickValue("0");
  EXPECT_EQ(client.Waited, 1000);
}

TEST_F(Bridge, AClientThatHangsInTheMiddleOfAClickIsWaitedForOnce) {
  int refreshes = 0;
  bridge.RefreshIVCStatus = [&] {
    // After the first radio has been tuned.
    if (++refreshes == 2) client.Hung = true;
    bridge.Status();
  };
  bridge.ClickValue("0");
  EXPECT_EQ(client.Waited, 500);
  EXPECT_EQ(refreshes, 3);
  EXPECT_THAT(client.Log, ElementsAre("set 5 0", "click 7"));
}

}  // namespace
}  // namespace kestrel::radio
