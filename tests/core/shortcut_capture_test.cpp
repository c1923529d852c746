#include "core/shortcut_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/execute_shortcut.h"
#include "core/shortcuts.h"
#include "core/station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Capture : public testing::Test {
 protected:
  Capture() { StartHook(around.All); }
  Bindings& Keys() { return around.State.ShortcutKeys; }
  void ExpectBox(std::size_t index, const std::string& text, base::Colour back) {
    EXPECT_EQ(capture.Box(index).Text, text);
    EXPECT_EQ(capture.Box(index).Back, back);
  }

  ProgramFolder folder;
  Around around{folder.Path};
  ShortcutCapture capture{around.All};
};

TEST_F(Capture, EachBoxShowsItsKeyOnGreen) {
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    ExpectBox(index, KeyName(Shortcuts[index].Default), 0xC0FFC0);
  }
}

TEST_F(Capture, WaitsOnYellowWithNoBindingAndNoHook) {
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    capture.Begin(index);
    ExpectBox(index, "<Press Key or ESC to clear>", 0xC0FFFF);
    EXPECT_EQ(Keys()[index], 0);
    EXPECT_EQ(capture.Waiting(), index);
    EXPECT_FALSE(around.Keys.Listening());
    EXPECT_TRUE(capture.Key(index, 65, static_cast<std::int32_t>(index % 8)));
    EXPECT_EQ(Keys()[index], static_cast<std::int32_t>(index % 8) * 100000 + 65);
    EXPECT_TRUE(around.Keys.Listening());
    ExpectBox(index, KeyName(Keys()[index]), 0xC0FFC0);
    EXPECT_FALSE(capture.Waiting().has_value());
  }
}

TEST_F(Capture, EscLeavesNoKeyOnRed) {
  for (const std::int32_t shift : {0, 1, 6}) {
    capture.Begin(7);
    EXPECT_TRUE(capture.Key(7, 27, shift));
    EXPECT_EQ(Keys()[7], 0);
    ExpectBox(7, "NO KEY", 0xC0C0FF);
    EXPECT_TRUE(around.Keys.Listening());
  }
}

TEST_F(Capture, ModifiersAloneAreSwallowedAndItWaitsOn) {
  capture.Begin(3);
  for (const std::int32_t key : {16, 17, 18}) EXPECT_TRUE(capture.Key(3, key, 2));
  EXPECT_TRUE(capture.Key(3, 0, 0)) << "a key without a number";
  EXPECT_EQ(capture.Waiting(), 3u);
  EXPECT_EQ(Keys()[3], 0);
  EXPECT_FALSE(around.Keys.Listening());
}

TEST_F(Capture, LosingTheFocusEndsItWithoutAKey) {
  capture.Begin(20);
  capture.LoseFocus(20);
  EXPECT_EQ(Keys()[20], 0);
  ExpectBox(20, "NO KEY", 0xC0C0FF);
  EXPECT_TRUE(around.Keys.Listening());
  EXPECT_FALSE(capture.Key(20, 65, 0));
  EXPECT_EQ(Keys()[20], 0);
}

TEST_F(Capture, OnlyTheBoxThatWaitsTakesKeysAndLosesFocus) {
  capture.Begin(5);
  EXPECT_FALSE(capture.Key(6, 65, 0));
  capture.LoseFocus(6);
  EXPECT_EQ(capture.Waiting(), 5u);
  EXPECT_EQ(Keys()[6], Shortcuts[6].Default);
}

TEST_F(Capture, AnotherButtonEndsTheFormerWithoutAKey) {
  capture.Begin(5);
  capture.Begin(6);
  ExpectBox(5, "NO KEY", 0xC0C0FF);
  ExpectBox(6, "<Press Key or ESC to clear>", 0xC0FFFF);
  EXPECT_FALSE(around.Keys.Listening());
  EXPECT_TRUE(capture.Key(6, 66, 0));
  EXPECT_TRUE(around.Keys.Listening());
}

TEST_F(Capture, TwoCommandsMayHaveOneKey) {
  capture.Begin(5);
  capture.Key(5, 112, 0);
  capture.Begin(22);
  capture.Key(22, 112, 0);
  EXPECT_EQ(Keys()[5], 112);
  EXPECT_EQ(Keys()[22], 112);
  EXPECT_EQ(FindShortcut(Keys(), 112, 0), 5);
}

TEST_F(Capture, ItsBeginningReleasesATransmitKeyThatIsHeld) {
  for (const std::size_t index : {std::size_t{23}, std::size_t{5}}) {
    around.Keys.Press(113);
    around.VoiceWindows.Keys.clear();
    capture.Begin(index);
    EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(113, false)));
    EXPECT_FALSE(around.State.Transmit.TransmittingVHF);
    capture.Key(index, 27, 0);
    Keys()[23] = 113;
  }
}

TEST_F(Capture, DefaultsReleaseATransmitKeyWhoseBindingGoes) {
  Keys()[22] = 120;
  around.Keys.Press(120);
  around.VoiceWindows.Keys.clear();
  capture.LoadDefaults(0, SecondHalf);
  EXPECT_THAT(around.VoiceWindows.Keys, IsEmpty()) << "its half stays";
  EXPECT_EQ(Keys()[22], 120);
  capture.LoadDefaults(SecondHalf, ShortcutCount);
  EXPECT_EQ(Keys()[22], 112);
  EXPECT_THAT(around.VoiceWindows.Keys, ElementsAre(Pair(112, false)));
  EXPECT_FALSE(around.State.Transmit.TransmittingUHF);
  around.Keys.Press(113);
  capture.LoadDefaults(SecondHalf, ShortcutCount);
  EXPECT_TRUE(around.State.Transmit.TransmittingVHF) << "nothing has changed";
}

TEST_F(Capture, ANoteNamesTheTransmitKeysThatAreNotHeard) {
  EXPECT_EQ(capture.Note(), "");
  around.Keys.Unheard = {33, 400112, 36, 0};
  Keys()[0] = 33;
  EXPECT_EQ(capture.Note(), "") << "a key of the map needs no hearing";
  Keys()[22] = 400112;
  EXPECT_EQ(capture.Note(), "Not heard here: ALT+F1 (Transm UHF). Choose another key.");
  Keys()[23] = 0;
  Keys()[24] = 36;
  EXPECT_EQ(capture.Note(), "Not heard here: ALT+F1 (Transm UHF), HOME (Transm GUARD). Choose another key.");
  around.Keys.Why = "There is none.";
  EXPECT_EQ(capture.Note(), "There is none.");
}

TEST_F(Capture, NoCommandOutsideTheTable) {
  capture.Begin(25);
  EXPECT_FALSE(capture.Waiting().has_value());
  EXPECT_TRUE(around.Keys.Listening());
}

}  // namespace
}  // namespace kestrel::core
