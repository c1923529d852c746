// The keys of the whole system on a real X display, while another program has the keyboard.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "e2e/other_program.h"
#include "e2e/screen.h"
#include "e2e/station_folder.h"
#include "platform/linux/x11_global_keys.h"

namespace kestrel::e2e {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// Key code, modifiers, "down" or "up".
std::string Told(const core::GlobalKey& key) {
  return std::to_string(key.KeyCode) + " " + std::to_string(key.Shift) + (key.Down ? " down" : " up");
}

class GlobalKeys : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(screen.Display().isEmpty());
    qputenv("DISPLAY", screen.Display().toLatin1());
    keys = std::make_unique<platform::X11GlobalKeys>(false);
    ASSERT_EQ(keys->Missing(), "");
    ASSERT_TRUE(keys->Start([this](const core::GlobalKey& key) { heard.push_back(Told(key)); }));
    other = std::make_unique<OtherProgram>(screen.Display());
    ASSERT_TRUE(other->TakeFocus());
  }
  void Key(const char* what, const char* key) { screen.Key(S(what), S(key)); }
  /// What has been heard once `count` have come.
  const std::vector<std::string>& Heard(std::size_t count) {
    WaitFor(
        [&] {
          keys->Drain();
          return heard.size() >= count;
        },
        5);
    return heard;
  }

  Screen screen;
  std::unique_ptr<platform::X11GlobalKeys> keys;
  std::unique_ptr<OtherProgram> other;
  std::vector<std::string> heard;
};

TEST_F(GlobalKeys, AreHeardWhileAnotherProgramHasTheKeyboardWhichHearsThemToo) {
  Key("keydown", "F1");
  Key("keyup", "F1");
  Key("key", "semicolon");
  EXPECT_THAT(Heard(4), ElementsAre("112 0 down", "112 0 up", "186 0 down", "186 0 up"));
  constexpr unsigned long f1 = 0xffbe, semicolon = 0x3b;
  EXPECT_TRUE(WaitFor([&] { return other->Heard().size() >= 2; }));
  EXPECT_THAT(other->Heard(), ElementsAre(f1, semicolon));
}

TEST_F(GlobalKeys, AreHeardWhileAnotherProgramHasTakenTheKeyboardFromEverybody) {
  ASSERT_TRUE(other->GrabKeyboard());
  Key("key", "F2");
  EXPECT_THAT(Heard(2), ElementsAre("113 0 down", "113 0 up"));
}

TEST_F(GlobalKeys, TellTheModifiersOfTheirMoment) {
  // Everything has happened before the first is looked at.
  for (const char* key : {"ctrl", "F1"}) Key("keydown", key);
  for (const char* key : {"F1", "ctrl"}) Key("keyup", key);
  for (const char* key : {"alt", "shift", "F3"}) Key("keydown", key);
  for (const char* key : {"F3", "shift", "alt"}) Key("keyup", key);
  for (const char* key : {"ctrl", "F2"}) Key("keydown", key);
  for (const char* key : {"ctrl", "F2"}) Key("keyup", key);
  EXPECT_THAT(Heard(6), ElementsAre("112 2 down", "112 2 up", "114 5 down", "114 5 up", "113 2 down", "113 0 up"));
}

TEST_F(GlobalKeys, TellAModifierThatWasHeldBeforeTheListening) {
  keys->Stop();
  Key("keydown", "ctrl");
  ASSERT_TRUE(keys->Start([this](const core::GlobalKey& key) { heard.push_back(Told(key)); }));
  Key("key", "F1");
  Key("keyup", "ctrl");
  EXPECT_THAT(Heard(2), ElementsAre("112 2 down", "112 2 up"));
}

TEST_F(GlobalKeys, ModifiersAloneAreNotTold) {
  for (const char* key : {"shift", "ctrl", "alt", "Control_R", "F3"}) Key("key", key);
  EXPECT_THAT(Heard(2), ElementsAre("114 0 down", "114 0 up"));
}

TEST_F(GlobalKeys, TheKeypadFollowsItsLock) {
  // By their X key codes: for a symbol the lock would be pressed and released to suit it.
  constexpr const char *seven = "79", *lock = "77";
  Key("key", seven);
  EXPECT_THAT(Heard(2), ElementsAre("36 0 down", "36 0 up"));
  Key("key", lock);
  EXPECT_EQ(Heard(4).size(), 4u);
  Key("key", seven);
  EXPECT_EQ(Heard(6).at(4), "103 0 down");
  Key("key", lock);
}

TEST_F(GlobalKeys, LettersAreThoseOfTheLayoutThatIsInUse) {
  Child layouts(S("setxkbmap"), {S("-layout"), S("us,de")}, screen.Environment());
  ASSERT_TRUE(layouts.Ends());
  ASSERT_EQ(layouts.ExitCode(), 0) << qPrintable(layouts.Output());
  constexpr unsigned besideX = 52, f1 = 67;  // X key codes
  const std::pair<unsigned, const char*> rows[] = {{0, "90 0 down"}, {1, "89 0 down"}, {0, "90 0 down"}};
  for (const auto& [layout, told] : rows) {
    heard.clear();
    other->SwitchLayout(layout);
    ASSERT_TRUE(other->PressKey(besideX));
    ASSERT_EQ(Heard(2).size(), 2U);
    EXPECT_EQ(heard.front(), told) << "layout " << layout;
  }
  // Keys that both layouts have alike, and modifiers.
  other->SwitchLayout(1);
  ASSERT_TRUE(other->PressKey(f1));
  EXPECT_EQ(Heard(4).at(2), "112 0 down");
  Key("keydown", "ctrl");
  ASSERT_TRUE(other->PressKey(f1));
  Key("keyup", "ctrl");
  EXPECT_EQ(Heard(6).at(4), "112 2 down");
}

TEST_F(GlobalKeys, AfterTheStopNothingIsHeardAndAgainAfterTheNextStart) {
  keys->Stop();
  keys->Stop();
  Key("key", "F1");
  keys->Drain();
  ASSERT_TRUE(keys->Start([this](const core::GlobalKey& key) { heard.push_back(Told(key)); }));
  Key("key", "F3");
  EXPECT_THAT(Heard(2), ElementsAre("114 0 down", "114 0 up"));
}

TEST_F(GlobalKeys, ListeningMayEndWithinACall) {
  keys->Stop();
  ASSERT_TRUE(keys->Start([this](const core::GlobalKey& key) {
    heard.push_back(Told(key));
    keys->Stop();
  }));
  Key("key", "F1");
  Key("key", "F2");
  EXPECT_THAT(Heard(1), ElementsAre("112 0 down"));
}

TEST_F(GlobalKeys, ADisplayThatGoesEndsTheListeningAndNotTheProgram) {
  other.reset();
  EXPECT_GE(keys->Descriptor(), 0);
  screen.Shut();
  keys->Drain();
  EXPECT_LT(keys->Descriptor(), 0);
  keys->Drain();
  keys->Stop();
  EXPECT_FALSE(keys->Start([](const core::GlobalKey&) {}));
  EXPECT_THAT(heard, IsEmpty());
}

TEST(GlobalKeysMissing, WithoutADisplay) {
  qputenv("DISPLAY", ":987654");
  platform::X11GlobalKeys keys(false);
  EXPECT_EQ(keys.Missing(), "The transmit keys act only on an X11 desktop: there is none here.");
  EXPECT_FALSE(keys.Start([](const core::GlobalKey&) {}));
  EXPECT_LT(keys.Descriptor(), 0);
  keys.Drain();
  keys.Stop();
}

TEST(GlobalKeysMissing, WithinWayland) {
  const Screen screen;
  qputenv("DISPLAY", screen.Display().toLatin1());
  platform::X11GlobalKeys keys(true);
  EXPECT_EQ(
      keys.Missing(),
      "The transmit keys act only on an X11 desktop: Wayland does not let a program hear keys that are pressed in "
      "another.");
  EXPECT_FALSE(keys.Start([](const core::GlobalKey&) {}));
}

}  // namespace
}  // namespace kestrel::e2e
