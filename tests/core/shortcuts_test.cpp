#include "core/shortcuts.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "core/global_keys.h"

namespace kestrel::core {
namespace {

struct Told {
  const char* Name;
  std::int32_t Default;
  const char* DefaultText;
};

constexpr Told told[] = {
    {"Zoom In", 33, "PAGEUP"},         {"Zoom Out", 34, "PAGEDOWN"},
    {"Move Left", 37, "LEFTARROW"},    {"Move Right", 39, "RIGHTARROW"},
    {"Move Up", 38, "UPARROW"},        {"Move Down", 40, "DOWNARROW"},
    {"Center View", 36, "HOME"},       {"AI Plots", 186, ";"},
    {"Real Plots", 222, "'"},          {"AI Labels", 190, "."},
    {"Real Labels", 191, "/"},         {"Bullseye", 66, "B"},
    {"Plot History", 72, "H"},         {"Area Names", 78, "N"},
    {"Coord Grid", 76, "L"},           {"Apply View 1", 49, "1"},
    {"Apply View 2", 50, "2"},         {"Apply View 3", 51, "3"},
    {"Save View 1", 200049, "CTRL+1"}, {"Save View 2", 200050, "CTRL+2"},
    {"Save View 3", 200051, "CTRL+3"}, {"Static Cursor", 67, "C"},
    {"Transm UHF", 112, "F1"},         {"Transm VHF", 113, "F2"},
    {"Transm GUARD", 114, "F3"},
};

TEST(Shortcuts, EachCommandHasItsNameAndDefault) {
  ASSERT_EQ(std::size(told), ShortcutCount);
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    EXPECT_EQ(Shortcuts[index].Name, told[index].Name);
    EXPECT_EQ(Shortcuts[index].Default, told[index].Default) << told[index].Name;
    EXPECT_EQ(KeyName(Shortcuts[index].Default), told[index].DefaultText);
    EXPECT_EQ(DefaultBindings()[index], told[index].Default);
  }
}

TEST(Shortcuts, EachDefaultFindsItsCommand) {
  const Bindings keys = DefaultBindings();
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    EXPECT_EQ(FindShortcut(keys, keys[index] % 100000, keys[index] / 100000), static_cast<int>(index));
  }
}

TEST(Shortcuts, TheKeyWithOtherModifiersIsNoMatch) {
  const Bindings keys = DefaultBindings();
  for (std::int32_t shift = 1; shift < 8; ++shift) EXPECT_EQ(FindShortcut(keys, 33, shift), -1);
  EXPECT_EQ(FindShortcut(keys, 49, 0), 15);
  EXPECT_EQ(FindShortcut(keys, 49, 2), 18);
  EXPECT_EQ(FindShortcut(keys, 49, 3), -1);
}

TEST(Shortcuts, OfTwoCommandsWithOneKeyTheLowerActs) {
  Bindings keys = DefaultBindings();
  keys[9] = 500065;
  keys[4] = 500065;
  keys[23] = 500065;
  EXPECT_EQ(FindShortcut(keys, 65, 5), 4);
}

TEST(Shortcuts, KeyCodeZeroMatchesNothing) {
  Bindings keys = DefaultBindings();
  keys[3] = 0;
  keys[5] = 100000;
  EXPECT_EQ(FindShortcut(keys, 0, 0), -1) << "though a command without a key has the binding 0";
  EXPECT_EQ(FindShortcut(keys, 0, 1), -1);
}

TEST(Shortcuts, AModifierAloneIsNoCommand) {
  Bindings keys{};
  for (const std::int32_t key : {16, 17, 18, 160, 161, 162, 163, 164, 165}) {
    keys[0] = key;
    keys[22] = key;
    EXPECT_EQ(MapShortcut(keys, key, 0), -1) << key;
    keys[0] = 0;
    EXPECT_EQ(GlobalShortcut(keys, key, 0), -1) << key;
  }
  for (const std::int32_t key : {15, 19, 159, 166}) EXPECT_FALSE(IsModifierKey(key)) << key;
}

TEST(Shortcuts, MapAndSystemShareTheTableAtTheTransmitKeys) {
  Bindings keys{};
  for (std::size_t index = 0; index < ShortcutCount; ++index) keys[index] = 300000 + 100 + static_cast<int>(index);
  for (std::int32_t index = 0; index < 25; ++index) {
    EXPECT_EQ(MapShortcut(keys, 100 + index, 3), index < 22 ? index : -1);
    EXPECT_EQ(GlobalShortcut(keys, 100 + index, 3), index < 22 ? -1 : index);
  }
  EXPECT_EQ(MapShortcut(keys, 99, 3), -1);
  EXPECT_EQ(GlobalShortcut(keys, 99, 3), -1);
}

TEST(Shortcuts, ATransmitKeyBelowWhichAMapCommandStandsIsTheMapsAlone) {
  Bindings keys = DefaultBindings();
  keys[0] = 112;
  EXPECT_EQ(GlobalShortcut(keys, 112, 0), -1) << "the lowest index is found, and that one is not global";
  EXPECT_EQ(MapShortcut(keys, 112, 0), 0);
}

TEST(Shortcuts, DefaultsComeBackInTwoHalves) {
  Bindings keys;
  keys.fill(999);
  LoadDefaults(keys, 0, SecondHalf);
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    EXPECT_EQ(keys[index], index < 12 ? told[index].Default : 999) << index;
  }
  keys.fill(999);
  LoadDefaults(keys, SecondHalf, ShortcutCount);
  for (std::size_t index = 0; index < ShortcutCount; ++index) {
    EXPECT_EQ(keys[index], index < 12 ? 999 : told[index].Default) << index;
  }
}

/// All named keys.
std::map<std::int32_t, std::string> NamedKeys() {
  std::map<std::int32_t, std::string> names = {
      {0, "NO KEY"},
      {1, "Leftmousebutton"},
      {2, "Rightmousebutton"},
      {3, "CANCEL"},
      {4, "Middlemousebutton"},
      {8, "BACKSPACE"},
      {9, "TAB"},
      {12, "CLEAR"},
      {13, "ENTER"},
      {16, "SHIFT"},
      {17, "CTRL"},
      {18, "MENU"},
      {19, "PAUSE"},
      {20, "CAPSLOCK"},
      {27, "ESC"},
      {32, "SPACEBAR"},
      {33, "PAGEUP"},
      {34, "PAGEDOWN"},
      {35, "END"},
      {36, "HOME"},
      {37, "LEFTARROW"},
      {38, "UPARROW"},
      {39, "RIGHTARROW"},
      {40, "DOWNARROW"},
      {41, "SELECT"},
      {42, "PRINTSCREEN"},
      {43, "EXECUTE"},
      {44, "SNAPSHOT"},
      {45, "INS"},
      {46, "DEL"},
      {47, "HELP"},
      {106, "KeyPad_*"},
      {107, "KeyPad_+"},
      {108, "KeyPad_ENTER"},
      {109, "KeyPad_-"},
      {110, "KeyPad_."},
      {111, "KeyPad_/"},
      {144, "NUMLOCK"},
      {186, ";"},
      {188, ","},
      {190, "."},
      {191, "/"},
      {192, "~"},
      {219, "["},
      {220, "\\"},
      {221, "]"},
      {222, "'"},
  };
  for (int n = 0; n < 10; ++n) names[48 + n] = std::to_string(n);
  for (int n = 0; n < 26; ++n) names[65 + n] = std::string(1, static_cast<char>('A' + n));
  for (int n = 0; n < 10; ++n) names[96 + n] = "KeyPad_" + std::to_string(n);
  for (int n = 0; n < 16; ++n) names[112 + n] = "F" + std::to_string(n + 1);
  return names;
}

TEST(KeyName, EveryNamedKeyWithEveryModifier) {
  const std::string prefixes[] = {"",     "SHIFT+",     "CTRL+",     "SHIFT+CTRL+",
                                  "ALT+", "SHIFT+ALT+", "CTRL+ALT+", "SHIFT+CTRL+ALT+"};
  for (const auto& [key, name] : NamedKeys()) {
    for (std::int32_t shift = 0; shift < 8; ++shift) EXPECT_EQ(KeyName(Binding(key, shift)), prefixes[shift] + name);
  }
}

TEST(KeyName, AKeyWithoutANameIsShownWithItsNumber) {
  const auto names = NamedKeys();
  for (std::int32_t key = 1; key < 256; ++key) {
    if (names.contains(key)) continue;
    EXPECT_EQ(KeyName(key), "KEY " + std::to_string(key));
  }
  EXPECT_EQ(KeyName(200187), "CTRL+KEY 187");
}

TEST(KeyName, WhateverASettingsFileHoldsHasAText) {
  EXPECT_EQ(KeyName(-1), "KEY -1");
  EXPECT_EQ(KeyName(800065), "KEY 800065");
  EXPECT_EQ(KeyName(2147483647), "KEY 2147483647");
  EXPECT_EQ(KeyName(-2147483647 - 1), "KEY -2147483648");
}

TEST(Hook, TakesPlainPressesAndReleasesAlone) {
  const std::optional<GlobalKey> down = FromHook(0, 112, 0, 5);
  ASSERT_TRUE(down.has_value());
  EXPECT_EQ(down->KeyCode, 112);
  EXPECT_EQ(down->Shift, 5);
  EXPECT_TRUE(down->Down);
  const std::optional<GlobalKey> up = FromHook(0, 114, 128, 0);
  ASSERT_TRUE(up.has_value());
  EXPECT_EQ(up->KeyCode, 114);
  EXPECT_FALSE(up->Down);
}

TEST(Hook, PassesEverythingElseOn) {
  for (const int code : {-1, 1, 3}) EXPECT_FALSE(FromHook(code, 112, 0, 0).has_value()) << code;
  // Extended, injected, with Alt held, and these on the way up.
  for (const std::uint32_t flags : {1U, 16U, 32U, 129U, 144U, 160U}) {
    EXPECT_FALSE(FromHook(0, 112, flags, 0).has_value()) << flags;
  }
  for (const std::uint32_t key : {16U, 17U, 18U, 160U, 161U, 162U, 163U, 164U, 165U}) {
    EXPECT_FALSE(FromHook(0, key, 0, 0).has_value()) << key;
    EXPECT_FALSE(FromHook(0, key, 128, 0).has_value()) << key;
  }
}

TEST(Hook, NeverHearsKeysWithAltOrOfTheExtendedPart) {
  for (const std::int32_t binding :
       {112, 113, 65, 48, 186, 8, 9, 13, 19, 20, 27, 32, 96, 105, 106, 107, 109, 110, 145}) {
    for (std::int32_t shift = 0; shift < 8; ++shift) {
      EXPECT_EQ(HookHears(Binding(binding, shift)), shift < 4) << binding << " with " << shift;
    }
  }
  for (const std::int32_t key : {3, 33, 34, 35, 36, 37, 38, 39, 40, 44, 45, 46, 91, 92, 93, 108, 111, 144}) {
    for (std::int32_t shift = 0; shift < 8; ++shift) EXPECT_FALSE(HookHears(Binding(key, shift))) << key;
  }
}

}  // namespace
}  // namespace kestrel::core
