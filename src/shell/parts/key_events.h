#pragma once

#include <QKeyEvent>
#include <cstdint>

namespace kestrel::shell {

/// The Windows virtual key number of a key event; 0 for a key that has none. Digits and signs are found by the place of
/// the key where the system tells it: what they write depends on Shift and on the layout.
std::int32_t VirtualKey(const QKeyEvent& event);

/// The modifiers held: 1 Shift, 2 Ctrl, 4 Alt, summed.
std::int32_t ShiftState(const QKeyEvent& event);

}  // namespace kestrel::shell
