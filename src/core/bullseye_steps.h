#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/changed.h"
#include "core/program.h"

// While a session is on, another bullseye moves all AI aircraft. What was in use before comes back by an undo.
namespace kestrel::core {

/// Said where another bullseye is chosen during a session.
inline constexpr std::string_view BullseyeNote =
    "AI positions come relative to the session's bullseye; another one moves them all";

/// The current bullseye as it is, before something is done that may change it.
BullseyeStep PresentBullseye(const Station& station);
/// It has been done: what was before is kept when another bullseye is current now or the place of the same one has
/// changed. Nothing without a session.
void KeepBullseye(Station& station, BullseyeStep before);
/// Bullseye `row` of the current theater is gone: what was kept of it goes too.
void ForgetBullseye(Station& station, std::size_t row);

/// The name of the bullseye that an undo brings back; nothing when there is none, or no session.
std::optional<std::string> BullseyeBefore(const Station& station);
/// Brings it back.
base::Changed UndoBullseye(Program& program);

/// What the map's bullseye is called: the name of the current one, or what stands for it.
std::string BullseyeInUse(const Station& station);

}  // namespace kestrel::core
