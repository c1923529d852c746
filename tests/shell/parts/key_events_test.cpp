#include "shell/parts/key_events.h"

#include <gtest/gtest.h>

#include <set>

#include "core/shortcuts.h"

namespace kestrel::shell {
namespace {

std::int32_t KeyOf(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  return VirtualKey(QKeyEvent(QEvent::KeyPress, key, modifiers));
}

/// With the place that the system tells, as Linux's input devices count.
[[maybe_unused]] std::int32_t KeyAt(Qt::Key key, quint32 scanCode, Qt::KeyboardModifiers modifiers = {}) {
  return VirtualKey(QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode + 8, 0, 0));
}

struct KeyRow {
  Qt::Key Key;
  std::int32_t KeyCode;
};

constexpr KeyRow layoutFree[] = {
    {Qt::Key_Cancel, 3},    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},      {Qt::Key_Backtab, 9},  {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},   {Qt::Key_Shift, 16},    {Qt::Key_Control, 17}, {Qt::Key_Alt, 18},     {Qt::Key_AltGr, 18},
    {Qt::Key_Pause, 19},    {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},  {Qt::Key_Space, 32},   {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},      {Qt::Key_Home, 36},    {Qt::Key_Left, 37},    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},    {Qt::Key_Down, 40},     {Qt::Key_Select, 41},  {Qt::Key_Printer, 42}, {Qt::Key_Execute, 43},
    {Qt::Key_Print, 44},    {Qt::Key_Insert, 45},   {Qt::Key_Delete, 46},  {Qt::Key_Help, 47},    {Qt::Key_Enter, 108},
    {Qt::Key_NumLock, 144},
};

constexpr KeyRow onKeypad[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},   {Qt::Key_Enter, 108},
    {Qt::Key_Minus, 109},    {Qt::Key_Period, 110}, {Qt::Key_Slash, 111},
};

struct SignRow {
  Qt::Key Plain, Shifted;
  quint32 Place;
  std::int32_t KeyCode;
};

constexpr SignRow signs[] = {
    {Qt::Key_1, Qt::Key_Exclam, 2, 49},
    {Qt::Key_2, Qt::Key_At, 3, 50},
    {Qt::Key_3, Qt::Key_NumberSign, 4, 51},
    {Qt::Key_4, Qt::Key_Dollar, 5, 52},
    {Qt::Key_5, Qt::Key_Percent, 6, 53},
    {Qt::Key_6, Qt::Key_AsciiCircum, 7, 54},
    {Qt::Key_7, Qt::Key_Ampersand, 8, 55},
    {Qt::Key_8, Qt::Key_Asterisk, 9, 56},
    {Qt::Key_9, Qt::Key_ParenLeft, 10, 57},
    {Qt::Key_0, Qt::Key_ParenRight, 11, 48},
    {Qt::Key_Semicolon, Qt::Key_Colon, 39, 186},
    {Qt::Key_Comma, Qt::Key_Less, 51, 188},
    {Qt::Key_Period, Qt::Key_Greater, 52, 190},
    {Qt::Key_Slash, Qt::Key_Question, 53, 191},
    {Qt::Key_QuoteLeft, Qt::Key_AsciiTilde, 41, 192},
    {Qt::Key_BracketLeft, Qt::Key_BraceLeft, 26, 219},
    {Qt::Key_Backslash, Qt::Key_Bar, 43, 220},
    {Qt::Key_BracketRight, Qt::Key_BraceRight, 27, 221},
    {Qt::Key_Apostrophe, Qt::Key_QuoteDbl, 40, 222},
};

TEST(VirtualKey, KeysThatAreTheSameOnEveryLayout) {
  for (const KeyRow& row : layoutFree) EXPECT_EQ(KeyOf(row.Key), row.KeyCode) << row.Key;
  for (int n = 0; n < 24; ++n) EXPECT_EQ(KeyOf(static_cast<Qt::Key>(Qt::Key_F1 + n)), 112 + n);
  for (int n = 0; n < 26; ++n) EXPECT_EQ(KeyOf(static_cast<Qt::Key>(Qt::Key_A + n)), 65 + n);
}

TEST(VirtualKey, TheKeypadIsTheModifiersWork) {
  for (const KeyRow& row : onKeypad) EXPECT_EQ(KeyOf(row.Key, Qt::KeypadModifier), row.KeyCode) << row.Key;
  for (int n = 0; n < 10; ++n) EXPECT_EQ(KeyOf(static_cast<Qt::Key>(Qt::Key_0 + n), Qt::KeypadModifier), 96 + n);
  EXPECT_EQ(KeyOf(Qt::Key_Comma, Qt::KeypadModifier), 110) << "the decimal sign of some layouts";
  EXPECT_EQ(KeyOf(Qt::Key_Home, Qt::KeypadModifier), 36) << "without its digits";
  EXPECT_EQ(KeyOf(Qt::Key_Clear, Qt::KeypadModifier), 12);
}

TEST(VirtualKey, ASignIsItsKeyWithShiftToo) {
  for (const SignRow& row : signs) {
    EXPECT_EQ(KeyOf(row.Plain), row.KeyCode);
    EXPECT_EQ(KeyOf(row.Shifted, Qt::ShiftModifier), row.KeyCode);
  }
}

#ifdef Q_OS_LINUX
TEST(VirtualKey, ASignIsFoundByItsPlaceWhateverTheLayoutWritesThere) {
  for (const SignRow& row : signs) {
    EXPECT_EQ(KeyAt(row.Plain, row.Place), row.KeyCode);
    EXPECT_EQ(KeyAt(row.Shifted, row.Place, Qt::ShiftModifier), row.KeyCode);
    EXPECT_EQ(KeyAt(Qt::Key_Odiaeresis, row.Place), row.KeyCode);
  }
  EXPECT_EQ(KeyAt(Qt::Key_Semicolon, 51, Qt::ShiftModifier), 188) << "German: Shift and comma";
  EXPECT_EQ(KeyAt(Qt::Key_Slash, 8, Qt::ShiftModifier), 55) << "German: Shift and 7";
  EXPECT_EQ(KeyAt(Qt::Key_A, 16), 65) << "French: a letter by what it is";
  EXPECT_EQ(KeyAt(static_cast<Qt::Key>(0x0424), 30), 65) << "Cyrillic: a letter by its place";
}
#endif

TEST(VirtualKey, EveryNamedKeyOfAKeyboardIsReached) {
  std::set<std::int32_t> reached;
  for (const KeyRow& row : layoutFree) reached.insert(KeyOf(row.Key));
  for (const KeyRow& row : onKeypad) reached.insert(KeyOf(row.Key, Qt::KeypadModifier));
  for (const SignRow& row : signs) reached.insert(KeyOf(row.Plain));
  for (int n = 0; n < 26; ++n) reached.insert(KeyOf(static_cast<Qt::Key>(Qt::Key_A + n)));
  for (int n = 0; n < 16; ++n) reached.insert(KeyOf(static_cast<Qt::Key>(Qt::Key_F1 + n)));
  for (int n = 0; n < 10; ++n) reached.insert(KeyOf(static_cast<Qt::Key>(Qt::Key_0 + n), Qt::KeypadModifier));
  int named = 0;
  for (std::int32_t key = 0; key < 256; ++key) {
    if (core::KeyName(key) == "KEY " + std::to_string(key)) continue;
    ++named;
    // No key, and the buttons of the mouse.
    const bool isKey = key != 0 && key != 1 && key != 2 && key != 4;
    EXPECT_EQ(reached.contains(key), isKey) << core::KeyName(key);
  }
  EXPECT_EQ(named, 109);
}

TEST(VirtualKey, UnknownKeysHaveNoNumber) {
  EXPECT_EQ(KeyOf(Qt::Key_unknown), 0);
  EXPECT_EQ(KeyOf(static_cast<Qt::Key>(0)), 0);
  EXPECT_EQ(KeyOf(Qt::Key_VolumeUp), 0);
}

TEST(VirtualKey, ShiftCtrlAndAltAreSummed) {
  for (int held = 0; held < 8; ++held) {
    Qt::KeyboardModifiers modifiers = Qt::KeypadModifier;
    modifiers.setFlag(Qt::ShiftModifier, (held & 1) != 0);
    modifiers.setFlag(Qt::ControlModifier, (held & 2) != 0);
    modifiers.setFlag(Qt::AltModifier, (held & 4) != 0);
    EXPECT_EQ(ShiftState(QKeyEvent(QEvent::KeyPress, Qt::Key_5, modifiers)), held);
  }
}

}  // namespace
}  // namespace kestrel::shell
