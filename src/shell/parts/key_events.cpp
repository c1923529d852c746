#include "shell/parts/key_events.h"

#include <algorithm>
#include <array>

#include "base/virtual_keys.h"

namespace kestrel::shell {
namespace {

struct KeyRow {
  Qt::Key Name;
  std::int32_t KeyCode;
};

/// Keys that are the same on every layout.
constexpr auto keys = std::to_array<KeyRow>({
    {Qt::Key_Cancel, 3},       {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},     {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},       {Qt::Key_Return, 13},   {Qt::Key_Enter, 108}, {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},     {Qt::Key_Alt, 18},      {Qt::Key_AltGr, 18},  {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},    {Qt::Key_Escape, 27},   {Qt::Key_Space, 32},  {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},    {Qt::Key_End, 35},      {Qt::Key_Home, 36},   {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},          {Qt::Key_Right, 39},    {Qt::Key_Down, 40},   {Qt::Key_Select, 41},
    {Qt::Key_Printer, 42},     {Qt::Key_Execute, 43},  {Qt::Key_Print, 44},  {Qt::Key_SysReq, 44},
    {Qt::Key_Insert, 45},      {Qt::Key_Delete, 46},   {Qt::Key_Help, 47},   {Qt::Key_Super_L, 91},
    {Qt::Key_Super_R, 92},     {Qt::Key_Meta, 91},     {Qt::Key_Menu, 93},   {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
});

/// What the keypad writes. Without its digits its keys are those of the table above; its Enter is one of them.
constexpr auto keypad = std::to_array<KeyRow>({
    {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107},
    {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},
    {Qt::Key_Comma, 110},
    {Qt::Key_Slash, 111},
});

template <class Rows>
std::int32_t Find(const Rows& rows, int key) {
  const auto row = std::find_if(rows.begin(), rows.end(), [key](const KeyRow& each) { return each.Name == key; });
  return row == rows.end() ? 0 : row->KeyCode;
}

std::int32_t OnKeypad(int key) {
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return key - Qt::Key_0 + 96;
  return Find(keypad, key);
}

/// As Linux's input devices count; 0 when unknown.
std::uint32_t ScanCode(const QKeyEvent& event) {
#ifdef Q_OS_LINUX
  const quint32 native = event.nativeScanCode();
  return native >= base::ScanCodeOfXKey ? native - base::ScanCodeOfXKey : 0;
#else
  Q_UNUSED(event);
  return 0;
#endif
}

}  // namespace

std::int32_t VirtualKey(const QKeyEvent& event) {
  const int key = event.key();
  // The system gives the main Enter's number for the keypad's too; here they are two keys.
  if (key == Qt::Key_Enter) return Find(keys, key);
#ifdef Q_OS_WIN
  if (event.nativeVirtualKey() != 0) return static_cast<std::int32_t>(event.nativeVirtualKey());
#endif
  if (event.modifiers().testFlag(Qt::KeypadModifier)) {
    if (const std::int32_t onKeypad = OnKeypad(key); onKeypad != 0) return onKeypad;
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return key - Qt::Key_F1 + 112;
  if (const std::int32_t found = Find(keys, key); found != 0) return found;
  // The toolkit's keys of ASCII are its characters.
  constexpr int lastCharacter = 0x7f;
  const auto character = static_cast<char32_t>(key > 0 && key <= lastCharacter ? key : 0);
  return base::KeyOfWriting(character, ScanCode(event));
}

std::int32_t ShiftState(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  return (held.testFlag(Qt::ShiftModifier) ? 1 : 0) + (held.testFlag(Qt::ControlModifier) ? 2 : 0) +
         (held.testFlag(Qt::AltModifier) ? 4 : 0);
}

}  // namespace kestrel::shell
