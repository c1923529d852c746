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
/// are not heard. There is no check for a key that is bound already. After each call the boxes show what Box says.
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
  /// The buttons of the defaults: core::LoadDefaults. A transmit key that is held while its binding goes is released.
  void LoadDefaults(std::size_t first, std::size_t end);

  /// The command whose box waits.
  std::optional<std::size_t> Waiting() const { return waiting; }
  KeyBox Box(std::size_t index) const;
  /// What is to be said beside the transmit keys: that the system gives no source, or which of their bindings it never
  /// tells. Mostly empty.
  std::string Note() const;

 private:
  void End();

  Program& program;
  std::optional<std::size_t> waiting;
};

}  // namespace kestrel::core
