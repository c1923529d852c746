#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session-sim/random.h"

// What a bad line and a bad server do to a stream of good messages.
namespace kestrel::sim {

/// Ids from this one to 32767 belong to no player: garbage may speak of them.
inline constexpr int FirstUnusedId = 30001;

/// Cuts `bytes` at 1 to 4 random places; the pieces together are `bytes`, none is empty.
std::vector<std::string> CutAtRandom(std::string_view bytes, Random& random);

/// One malformed message with its terminator. A station that drops what it cannot read is left as it was; what can be
/// read speaks of Ids that nobody holds. `good`: the message that follows; a whole AILOCA may be announced by a part of
/// itself, which it replaces at once.
std::string Garbage(std::string_view good, Random& random);

/// `messages` with garbage before `percent` of 100 of them.
std::vector<std::string> MixGarbage(std::vector<std::string> messages, int percent, Random& random);

}  // namespace kestrel::sim
