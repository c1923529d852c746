#pragma once

#include <string>
#include <string_view>

namespace kestrel::base {

/// The bytes of the single-byte code page as Unicode and back. Windows: the active code page; elsewhere windows-1252,
/// its five unassigned bytes standing for the control characters of the same number, so that every byte comes back.
std::u16string ToUnicode(std::string_view bytes);
/// A character that the code page does not hold becomes "?".
std::string FromUnicode(std::u16string_view text);

}  // namespace kestrel::base
