#pragma once

#include <cstdint>

namespace kestrel::platform {

/// The Windows virtual key number of an X key: `symbol` is what it gives without modifiers, `keyCode` its X key code.
/// On the keypad `digits` tells whether it writes digits at that moment. 0 for a key that has no number.
std::int32_t KeyOfSymbol(unsigned long symbol, std::uint32_t keyCode, bool digits);

}  // namespace kestrel::platform
