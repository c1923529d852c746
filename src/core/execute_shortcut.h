#pragma once

#include <cstdint>

#include "core/global_keys.h"
#include "core/program.h"

// What the 25 commands do, from the map window's keys and from the keys of the whole system.
namespace kestrel::core {

/// Runs the command of an index; nothing for one outside the table. For a transmit key it is the press.
void ExecuteShortcut(Program& program, std::int32_t index);

/// Keeps the present view in a slot, 1 to 3, and says so for a moment.
void SaveView(Program& program, std::int16_t slot);

/// A key pressed in the map window: runs its command unless that is a transmit key, which is heard system-wide. The
/// window swallows every key, whether or not it did anything. `shift`: 1 Shift, 2 Ctrl, 4 Alt.
void MapKey(Program& program, std::int32_t keyCode, std::int32_t shift);

/// A key heard from the whole system: the press and release of the transmit keys, nothing else. A release counts only
/// with the modifiers of the binding, so that one that was let go before its key leaves the radio on until the same
/// combination is released: this stands.
void HookedKey(Program& program, const GlobalKey& key);

/// Begins to hear the keys of the whole system, once, and not any more when the closing has begun. Where there is no
/// source the transmit keys silently do not work.
void StartHook(Program& program);
/// Ends that. A transmit key that is held is released with it: its own release will not be heard.
void StopHook(Program& program);
/// Releases the transmit keys that are held.
void ReleaseRadios(Program& program);

}  // namespace kestrel::core
