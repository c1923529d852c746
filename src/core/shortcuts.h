#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The 25 commands that a key can be bound to. A binding is the modifiers (1 Shift, 2 Ctrl, 4 Alt, summed) times 100000
// plus the key's Windows virtual key number, on every platform; 0 is no key.
namespace kestrel::core {

inline constexpr std::size_t ShortcutCount = 25;
/// From this index on the keys act system-wide; below it only in the map window.
inline constexpr std::int32_t FirstTransmitShortcut = 22;
/// The first of the second half: the options window shows the halves on two panels, each with defaults of its own.
inline constexpr std::size_t SecondHalf = 12;

inline constexpr std::int32_t ShiftModifier = 1, CtrlModifier = 2, AltModifier = 4;
inline constexpr std::int32_t ModifierUnit = 100000;
/// Key codes with a part of their own. Shift, Ctrl and Alt have numbers of either side too, from the left Shift to the
/// right Alt: the system's hook tells these.
inline constexpr std::int32_t KeyShift = 16, KeyCtrl = 17, KeyMenu = 18, KeyEsc = 27;
inline constexpr std::int32_t KeyLeftShift = 160, KeyRightMenu = 165;

/// What a command does.
enum class ShortcutAct {
  ZoomIn,     ///< IncreaseResolution
  ZoomOut,    ///< DecreaseResolution
  Move,       ///< MoveScreen; Argument: its direction
  Toggle,     ///< the other state of an option; Option: its control in the options window
  ApplyView,  ///< SetViewShortcut; Argument: its slot
  SaveView,   ///< SaveViewShortcut; Argument: its slot
  Cursor,     ///< the other state of the static cursor
  Transmit,   ///< a radio's transmit key; Argument: 1 UHF, 2 VHF, 3 Guard
  Menu,       ///< runs a menu entry; Option: its name
};

struct Shortcut {
  std::string_view Name;  ///< as the options window shows it
  std::int32_t Default;   ///< binding
  ShortcutAct Act;
  std::int16_t Argument = 0;
  std::string_view Option = {};
};

inline constexpr std::array<Shortcut, ShortcutCount> Shortcuts = {{
    {"Zoom In", 33, ShortcutAct::ZoomIn},
    {"Zoom Out", 34, ShortcutAct::ZoomOut},
    {"Move Left", 37, ShortcutAct::Move, 3},
    {"Move Right", 39, ShortcutAct::Move, 4},
    {"Move Up", 38, ShortcutAct::Move, 1},
    {"Move Down", 40, ShortcutAct::Move, 2},
    {"Center View", 36, ShortcutAct::Move, 5},
    {"AI Plots", 186, ShortcutAct::Toggle, 0, "Check2"},
    {"Real Plots", 222, ShortcutAct::Toggle, 0, "Check1"},
    {"AI Labels", 190, ShortcutAct::Toggle, 0, "Check6"},
    {"Real Labels", 191, ShortcutAct::Toggle, 0, "Check4"},
    {"Bullseye", 66, ShortcutAct::Toggle, 0, "Check3"},
    {"Plot History", 72, ShortcutAct::Toggle, 0, "Check5"},
    {"Area Names", 78, ShortcutAct::Toggle, 0, "Check9"},
    {"Coord Grid", 76, ShortcutAct::Toggle, 0, "chkShowLat"},
    {"Apply View 1", 49, ShortcutAct::ApplyView, 1},
    {"Apply View 2", 50, ShortcutAct::ApplyView, 2},
    {"Apply View 3", 51, ShortcutAct::ApplyView, 3},
    {"Save View 1", 200049, ShortcutAct::SaveView, 1},
    {"Save View 2", 200050, ShortcutAct::SaveView, 2},
    {"Save View 3", 200051, ShortcutAct::SaveView, 3},
    {"Static Cursor", 67, ShortcutAct::Cursor},
    {"Transm UHF", 112, ShortcutAct::Transmit, 1},
    {"Transm VHF", 113, ShortcutAct::Transmit, 2},
    {"Transm GUARD", 114, ShortcutAct::Transmit, 3},
}};

/// Commands that other stations do not have, for the map window. They are numbered from here, their bindings are
/// settings of their own.
inline constexpr std::int32_t FirstOwnShortcut = 100;
inline constexpr std::array<Shortcut, 4> OwnShortcuts = {{
    {"AI Names", 0, ShortcutAct::Toggle, 0, "Check8"},
    {"Connect to...", 200075, ShortcutAct::Menu, 0, "mnuConnCustom"},
    {"Phonebook", 200080, ShortcutAct::Menu, 0, "mnuPhonebookEdit"},
    {"Find Aircraft", 200070, ShortcutAct::Menu, 0, "mnuFind"},
}};
/// Their settings in section [KESTREL], in the order of the table.
inline constexpr std::array<std::string_view, OwnShortcuts.size()> OwnShortcutKeys = {"KEY_AINAMES", "KEY_CONNECT",
                                                                                      "KEY_PHONEBOOK", "KEY_FIND"};

/// Bindings, one for each command, in the order of the table.
using Bindings = std::array<std::int32_t, ShortcutCount>;
using OwnBindings = std::array<std::int32_t, OwnShortcuts.size()>;

constexpr Bindings DefaultBindings() {
  Bindings keys{};
  for (std::size_t index = 0; index < ShortcutCount; ++index) keys[index] = Shortcuts[index].Default;
  return keys;
}

constexpr OwnBindings DefaultOwnBindings() {
  OwnBindings keys{};
  for (std::size_t at = 0; at < keys.size(); ++at) keys[at] = OwnShortcuts[at].Default;
  return keys;
}

/// The command of an index, also of our own; null for an index outside both tables.
const Shortcut* ShortcutOf(std::int32_t index);

/// Gives the commands from `first` to before `end` their defaults: 0 to SecondHalf, SecondHalf to ShortcutCount.
void LoadDefaults(Bindings& keys, std::size_t first, std::size_t end);

/// The binding of a key with its modifiers.
constexpr std::int32_t Binding(std::int32_t keyCode, std::int32_t shift) { return shift * ModifierUnit + keyCode; }

/// True for Shift, Ctrl and Alt, which alone are never a binding.
constexpr bool IsModifierKey(std::int32_t keyCode) {
  return (keyCode >= KeyShift && keyCode <= KeyMenu) || (keyCode >= KeyLeftShift && keyCode <= KeyRightMenu);
}

/// The first command bound to the key, so that of two with one key the lower acts; -1 for key code 0 or no match.
/// `shift`: modifiers, 0..7.
std::int32_t FindShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift);

/// The command that a key runs in the map window; -1 for none: modifiers alone, and the transmit keys, which are heard
/// system-wide.
std::int32_t MapShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift);

/// The same with the commands of our own, which act where no command of the first table has the key.
std::int32_t MapShortcut(const Bindings& keys, const OwnBindings& own, std::int32_t keyCode, std::int32_t shift);

/// The transmit key's command that a key of the whole system means; -1 for every other key.
std::int32_t GlobalShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift);

/// A binding in words: "CTRL+1", "NO KEY" for 0. A key that has no name is shown with its number, "KEY 187".
std::string KeyName(std::int32_t binding);

}  // namespace kestrel::core
