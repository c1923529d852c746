#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"

// Text of files that others have written.
namespace kestrel::falcon {

/// Whether all of `text` is UTF-8.
bool IsUtf8(std::string_view text);

/// `text` as bytes of the code page: from UTF-8 when all of it is that, what the code page does not hold as "?"; else
/// as it stands. The mark that an editor may put before UTF-8 goes.
std::string FromForeignText(std::string_view text);

/// The lines of `text` without their ends, LF or CR LF; one behind the last end only when anything stands there.
std::vector<std::string_view> LinesOf(std::string_view text);

/// `line` without blanks and tabs at both ends.
std::string_view TrimLine(std::string_view line);

/// A field of `width` bytes, ended by its first NUL, if any; what follows that can be anything.
std::string FieldText(base::BinaryReader& reader, std::size_t width);

/// Whether a reader would call it text: no control characters.
bool IsPrintable(std::string_view text);

/// What `read` gives; its RuntimeFailure begins with `what` and a colon.
template <class Read>
auto Within(const std::string& what, const Read& read) {
  try {
    return read();
  } catch (const base::RuntimeFailure& failure) {
    throw base::RuntimeFailure(what + ": " + failure.what());
  }
}

}  // namespace kestrel::falcon
