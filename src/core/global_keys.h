#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <string>

#include "core/shortcuts.h"

namespace kestrel::core {

/// A press or release that was heard, whichever program has the focus.
struct GlobalKey {
  std::int32_t KeyCode = 0;  ///< Windows virtual key number
  std::int32_t Shift = 0;    ///< modifiers held at that moment: 1 Shift, 2 Ctrl, 4 Alt, summed
  bool Down = false;
};

/// What the low-level keyboard hook of Windows makes of one call, or nothing: then the event is only passed on.
/// `code`: the hook's code; anything but 0 is passed on. `flags`: the flags word of the event; only the plain words 0,
/// key-down, and 128, key-up, count, so that extended or injected keys, or keys while Alt is held, pass on: this
/// stands. `shift`: modifiers held. Shift, Ctrl and Alt themselves pass on.
inline std::optional<GlobalKey> FromHook(int code, std::uint32_t keyCode, std::uint32_t flags, std::int32_t shift) {
  constexpr std::uint32_t keyDown = 0, keyUp = 128;
  if (code != 0 || (flags != keyDown && flags != keyUp)) return std::nullopt;
  const auto key = static_cast<std::int32_t>(keyCode);
  if (IsModifierKey(key)) return std::nullopt;
  return GlobalKey{key, shift, flags == keyDown};
}

/// Whether FromHook ever tells of a binding: not with Alt, and not of the keys that Windows marks as extended. Of those
/// that the keypad has too without its digits, it tells the keypad's.
constexpr bool HookHears(std::int32_t binding) {
  if ((binding / ModifierUnit & AltModifier) != 0) return false;
  // Break, Page Up to Down, Print Screen to Del, the system's keys, the keypad's Enter and "/", Num Lock.
  constexpr struct {
    std::int32_t First, Last;
  } extended[] = {{3, 3}, {33, 40}, {44, 46}, {91, 93}, {108, 108}, {111, 111}, {144, 144}};
  const std::int32_t key = binding % ModifierUnit;
  return std::none_of(std::begin(extended), std::end(extended),
                      [key](const auto& range) { return key >= range.First && key <= range.Last; });
}

/// Seam: hears the keyboard of the whole system, for the transmit keys while another program has the focus. It never
/// takes a key away from anyone. Filled by platform/; by a plain double in tests.
class GlobalKeys {
 public:
  using Heard = std::function<void(const GlobalKey&)>;

  virtual ~GlobalKeys() = default;
  /// Begins to listen; `heard` is called on the thread of the windows, never from within Start. False when the system
  /// gives no such source: nothing is reported, the transmit keys then do not work.
  virtual bool Start(Heard heard) = 0;
  /// Ends the listening; harmless when it is not running.
  virtual void Stop() = 0;
  /// A file descriptor that becomes readable when keys may have come, and then wants Drain; -1 where the system calls
  /// by itself, and once the source is lost.
  virtual int Descriptor() const { return -1; }
  /// Tells of the keys that have come. Never waits.
  virtual void Drain() {}
  /// Whether a key with its modifiers, as it is bound, is ever told.
  virtual bool Hears([[maybe_unused]] std::int32_t binding) const { return true; }
  /// Empty when the system gives a source; otherwise why not, as a sentence for the person, shown beside the three
  /// keys.
  virtual std::string Missing() const = 0;
};

}  // namespace kestrel::core
