#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/colour.h"
#include "core/program.h"

namespace kestrel::core {

/// The three states of a key box.
inline constexpr base::Colour CapturingColour = 0xC0FFFF;  ///< yellow: waits for a key
inline constexpr base::Colour UnboundColour = 0xC0C0FF;    ///< red
inline constexpr base::Colour BoundColour = 0xC0FFC0;      ///< green

/// What a key box shows.
struct KeyBox {
  std::string Text;
  base::Colour Back;
};

/// The binding of one command to the next key that is pressed in its box. While it waits, the keys of the whole system
/// are not heard. A key that is bound already is taken too (core/key_clashes.h tells of it). After each call the boxes
/// show what Box says. Indexes are those of both tables of core/shortcuts.h.
class ShortcutCapture {
 public:
  /// `shown` outlives this.
  explicit ShortcutCapture(Program& running) : program(running) {}

  /// The button of a command: takes its binding away and waits for a key in its box, which the caller gives the focus.
  /// Another capture that still waits ends first, without a key.
  void Begin(std::size_t index);
  /// A key pressed in a box. False when that box does not wait: the key is not ours. Esc leaves the command without a
  /// key; Shift, Ctrl and Alt alone are swallowed, as is a key without a number (`keyCode` 0).
  bool Key(std::size_t index, std::int32_t keyCode, std::int32_t shift);
  /// The box has lost the focus: if it was waiting, its command stays without a key.
  void LoseFocus(std::size_t index);
  /// The buttons of the defaults: core::LoadDefaults; with the first command come those of our own. A transmit key that
  /// is held while its binding goes is released.
  void LoadDefaults(std::size_t first, std::size_t end);
  /// Puts back all keys as they were before the last button that was pressed, Begin's or that of the defaults, once. A
  /// capture that still waits ends.
  void Undo();
  /// Whether there is something to put back.
  bool MayUndo() const;

  /// The command whose box waits.
  std::optional<std::size_t> Waiting() const { return waiting; }
  KeyBox Box(std::size_t index) const;
  /// What is to be said beside the transmit keys: that the system gives no source, or which of their bindings it never
  /// tells. Mostly empty.
  std::string Note() const;

 private:
  /// All keys of the station.
  struct AllKeys {
    Bindings Keys;
    OwnBindings Own;
    bool operator==(const AllKeys&) const = default;
  };

  void End();
  std::int32_t& BindingOf(std::size_t index) const;
  AllKeys Present() const;
  /// Takes keys in place of the present ones; a transmit key that is held while its binding goes is released.
  void Take(const AllKeys& keys);

  Program& program;
  std::optional<AllKeys> former;  ///< before the last button
  std::optional<std::size_t> waiting;
};

}  // namespace kestrel::core
