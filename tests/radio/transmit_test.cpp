#include "radio/transmit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doubles/fake_voice.h"

namespace kestrel::radio {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct Row {
  TransmitKey Key;
  std::int32_t Sent;
  bool Transmission::*Flag;
  std::int16_t Transmission::*Picture;
  std::int16_t Idle, Sending, Failed;
};

constexpr Row rows[] = {
    {TransmitKey::UHF, 112, &Transmission::TransmittingUHF, &Transmission::StatPic_UHF, 1, 2, 7},
    {TransmitKey::VHF, 113, &Transmission::TransmittingVHF, &Transmission::StatPic_VHF, 3, 4, 8},
    {TransmitKey::Guard, 114, &Transmission::TransmittingGuard, &Transmission::StatPic_Guard, 9, 10, 11},
};

class Transmit : public testing::TestWithParam<Row> {
 protected:
  void Press() { PressTransmit(state, voice, row.Key); }
  void Release() { ReleaseTransmit(state, voice, row.Key); }
  bool Flag() const { return state.*row.Flag; }
  std::int16_t Picture() const { return state.*row.Picture; }

  const Row row = GetParam();
  doubles::FakeVoice client;
  std::string title = "IVC Client";
  VoiceBridge voice{client, title};
  Transmission state;
};

TEST_P(Transmit, ReleasingWhatIsHeldReleasesThisKeyOnce) {
  EXPECT_FALSE(ReleaseHeld(state, voice));
  EXPECT_THAT(client.Keys, IsEmpty());
  Press();
  client.Keys.clear();
  EXPECT_TRUE(ReleaseHeld(state, voice));
  EXPECT_FALSE(ReleaseHeld(state, voice));
  EXPECT_THAT(client.Keys, ElementsAre(Pair(row.Sent, false)));
  EXPECT_FALSE(Flag());
  EXPECT_EQ(Picture(), row.Idle);
}

TEST_P(Transmit, IsIdleAtTheStart) {
  EXPECT_FALSE(Flag());
  EXPECT_EQ(Picture(), row.Idle);
  EXPECT_EQ(PictureOf(state, row.Key), TransmitPicture::Idle);
}

TEST_P(Transmit, AHeldKeyIsOnePressAndOneRelease) {
  for (int repeat = 0; repeat < 5; ++repeat) Press();
  EXPECT_THAT(client.Keys, ElementsAre(Pair(row.Sent, true)));
  EXPECT_TRUE(Flag());
  EXPECT_EQ(Picture(), row.Sending);
  EXPECT_EQ(PictureOf(state, row.Key), TransmitPicture::Sending);
  Release();
  EXPECT_THAT(client.Keys, ElementsAre(Pair(row.Sent, true), Pair(row.Sent, false)));
  EXPECT_FALSE(Flag());
  EXPECT_EQ(Picture(), row.Idle);
}

TEST_P(Transmit, ChangesNothingOfTheOtherKeys) {
  Press();
  for (const Row& other : rows) {
    if (other.Key == row.Key) continue;
    EXPECT_FALSE(state.*other.Flag);
    EXPECT_EQ(state.*other.Picture, other.Idle);
  }
}

TEST_P(Transmit, NotConnectedItFailsAndTheReleaseIsIdleAgain) {
  client.Status = "NO CONNECTION";
  Press();
  EXPECT_THAT(client.Keys, IsEmpty());
  EXPECT_TRUE(Flag()) << "so that the repeats do nothing";
  EXPECT_EQ(Picture(), row.Failed);
  EXPECT_EQ(PictureOf(state, row.Key), TransmitPicture::Failed);
  client.Status = "CONNECTED";
  Press();
  EXPECT_EQ(Picture(), row.Failed) << "a repeat does not try again";
  Release();
  EXPECT_THAT(client.Keys, ElementsAre(Pair(row.Sent, false))) << "sent whether or not it is connected";
  EXPECT_FALSE(Flag());
  EXPECT_EQ(Picture(), row.Idle);
}

TEST_P(Transmit, ReleaseAfterTheClientHasClosedIsIdle) {
  Press();
  client.Running = false;
  Release();
  EXPECT_THAT(client.Keys, ElementsAre(Pair(row.Sent, true)));
  EXPECT_FALSE(Flag());
  EXPECT_EQ(Picture(), row.Idle);
}

TEST_P(Transmit, NoClientFails) {
  client.Running = false;
  Press();
  EXPECT_EQ(Picture(), row.Failed);
}

/// Connected when asked, gone when the key is sent.
class VanishingVoice final : public VoiceWindows {
 public:
  void OperationStarts() override {}
  WindowHandle FindTop(const std::string& wanted) override { return asked ? 0 : inner.FindTop(wanted); }
  WindowHandle FindChild(WindowHandle parent, WindowHandle after, const char* name, const char* caption) override {
    return inner.FindChild(parent, after, name, caption);
  }
  std::size_t TextLength(WindowHandle window) override { return inner.TextLength(window); }
  std::string Text(WindowHandle window, std::size_t room) override {
    asked = true;
    return inner.Text(window, room);
  }
  void SetText(WindowHandle, const std::string&) override {}
  void Click(WindowHandle) override {}
  void SendKey(WindowHandle, std::int32_t, bool) override { ADD_FAILURE() << "there is no window"; }

 private:
  doubles::FakeVoice inner;
  bool asked = false;
};

TEST_P(Transmit, AWindowThatIsGoneWhenTheKeyIsSentFails) {
  VanishingVoice vanishing;
  VoiceBridge bridge(vanishing, title);
  PressTransmit(state, bridge, row.Key);
  EXPECT_TRUE(Flag());
  EXPECT_EQ(Picture(), row.Failed);
}

INSTANTIATE_TEST_SUITE_P(Each, Transmit, testing::ValuesIn(rows), [](const testing::TestParamInfo<Row>& each) {
  return each.param.Key == TransmitKey::UHF ? "UHF" : each.param.Key == TransmitKey::VHF ? "VHF" : "Guard";
});

}  // namespace
}  // namespace kestrel::radio
