#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "core/shortcuts.h"

// The names of the keys. They stand as they are shown, whatever their case.
namespace kestrel::core {
namespace {

struct NamedKey {
  std::int32_t KeyCode;
  std::string_view Name;
};

// clang-format off
constexpr auto namedKeys = std::to_array<NamedKey>({
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
    {48, "0"},
    {49, "1"},
    {50, "2"},
    {51, "3"},
    {52, "4"},
    {53, "5"},
    {54, "6"},
    {55, "7"},
    {56, "8"},
    {57, "9"},
    {65, "A"},
    {66, "B"},
    {67, "C"},
    {68, "D"},
    {69, "E"},
    {70, "F"},
    {71, "G"},
    {72, "H"},
    {73, "I"},
    {74, "J"},
    {75, "K"},
    {76, "L"},
    {77, "M"},
    {78, "N"},
    {79, "O"},
    {80, "P"},
    {81, "Q"},
    {82, "R"},
    {83, "S"},
    {84, "T"},
    {85, "U"},
    {86, "V"},
    {87, "W"},
    {88, "X"},
    {89, "Y"},
    {90, "Z"},
    {96, "KeyPad_0"},
    {97, "KeyPad_1"},
    {98, "KeyPad_2"},
    {99, "KeyPad_3"},
    {100, "KeyPad_4"},
    {101, "KeyPad_5"},
    {102, "KeyPad_6"},
    {103, "KeyPad_7"},
    {104, "KeyPad_8"},
    {105, "KeyPad_9"},
    {106, "KeyPad_*"},
    {107, "KeyPad_+"},
    {108, "KeyPad_ENTER"},
    {109, "KeyPad_-"},
    {110, "KeyPad_."},
    {111, "KeyPad_/"},
    {112, "F1"},
    {113, "F2"},
    {114, "F3"},
    {115, "F4"},
    {116, "F5"},
    {117, "F6"},
    {118, "F7"},
    {119, "F8"},
    {120, "F9"},
    {121, "F10"},
    {122, "F11"},
    {123, "F12"},
    {124, "F13"},
    {125, "F14"},
    {126, "F15"},
    {127, "F16"},
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
});
// clang-format on

/// By the modifiers: 1 Shift, 2 Ctrl, 4 Alt.
constexpr std::array<std::string_view, 8> prefixes = {"",     "SHIFT+",     "CTRL+",     "SHIFT+CTRL+",
                                                      "ALT+", "SHIFT+ALT+", "CTRL+ALT+", "SHIFT+CTRL+ALT+"};

std::string NameOf(std::int32_t keyCode) {
  const auto row = std::find_if(namedKeys.begin(), namedKeys.end(),
                                [keyCode](const NamedKey& key) { return key.KeyCode == keyCode; });
  return row != namedKeys.end() ? std::string(row->Name) : "KEY " + base::FormatInvariant(keyCode, "0");
}

}  // namespace

std::string KeyName(std::int32_t binding) {
  const std::int32_t modifiers = binding / ModifierUnit;
  // A settings file may hold any number.
  if (binding < 0 || modifiers >= static_cast<std::int32_t>(prefixes.size())) {
    return "KEY " + base::FormatInvariant(binding, "0");
  }
  return std::string(prefixes[static_cast<std::size_t>(modifiers)]) + NameOf(binding % ModifierUnit);
}

}  // namespace kestrel::core
