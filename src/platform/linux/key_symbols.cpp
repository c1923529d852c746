#include "platform/linux/key_symbols.h"

#include <X11/keysym.h>

#include <algorithm>
#include <array>

#include "base/virtual_keys.h"

namespace kestrel::platform {
namespace {

/// AltGr: a key of its own, not Alt.
constexpr std::int32_t RightMenu = 165;

struct Symbol {
  unsigned long Name;
  std::int32_t KeyCode;
  std::int32_t WithDigits = 0;  ///< on the keypad while it writes digits
};

constexpr auto symbols = std::to_array<Symbol>({
    {XK_Cancel, 3},
    {XK_BackSpace, 8},
    {XK_Tab, 9},
    {XK_Clear, 12},
    {XK_Return, 13},
    {XK_Shift_L, 16},
    {XK_Shift_R, 16},
    {XK_Control_L, 17},
    {XK_Control_R, 17},
    {XK_Alt_L, 18},
    {XK_Alt_R, 18},
    {XK_ISO_Level3_Shift, RightMenu},
    {XK_Pause, 19},
    {XK_Break, 3},
    {XK_Caps_Lock, 20},
    {XK_Escape, 27},
    {XK_space, 32},
    {XK_Page_Up, 33},
    {XK_Page_Down, 34},
    {XK_End, 35},
    {XK_Home, 36},
    {XK_Left, 37},
    {XK_Up, 38},
    {XK_Right, 39},
    {XK_Down, 40},
    {XK_Select, 41},
    {XK_Execute, 43},
    {XK_Print, 44},
    {XK_Sys_Req, 44},
    {XK_Insert, 45},
    {XK_Delete, 46},
    {XK_Help, 47},
    {XK_Super_L, 91},
    {XK_Super_R, 92},
    {XK_Menu, 93},
    {XK_KP_Multiply, 106},
    {XK_KP_Add, 107},
    {XK_KP_Enter, 108},
    {XK_KP_Subtract, 109},
    {XK_KP_Divide, 111},
    {XK_Num_Lock, 144},
    {XK_Scroll_Lock, 145},
    {XK_KP_Insert, 45, 96},
    {XK_KP_End, 35, 97},
    {XK_KP_Down, 40, 98},
    {XK_KP_Page_Down, 34, 99},
    {XK_KP_Left, 37, 100},
    {XK_KP_Begin, 12, 101},
    {XK_KP_Right, 39, 102},
    {XK_KP_Home, 36, 103},
    {XK_KP_Up, 38, 104},
    {XK_KP_Page_Up, 33, 105},
    {XK_KP_Delete, 46, 110},
});

}  // namespace

std::int32_t KeyOfSymbol(unsigned long symbol, std::uint32_t keyCode, bool digits) {
  if (symbol >= XK_F1 && symbol <= XK_F24) return static_cast<std::int32_t>(symbol - XK_F1) + 112;
  const auto row =
      std::find_if(symbols.begin(), symbols.end(), [symbol](const Symbol& key) { return key.Name == symbol; });
  if (row != symbols.end()) return digits && row->WithDigits != 0 ? row->WithDigits : row->KeyCode;
  // The symbols of Latin-1 are its characters.
  constexpr unsigned long lastCharacter = 0xff;
  const auto character = static_cast<char32_t>(symbol <= lastCharacter ? symbol : 0);
  return base::KeyOfWriting(character, keyCode >= base::ScanCodeOfXKey ? keyCode - base::ScanCodeOfXKey : 0);
}

}  // namespace kestrel::platform
