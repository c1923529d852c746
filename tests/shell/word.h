#pragma once

#include <QString>

namespace kestrel::shell {

/// A text of the tests, ASCII or Latin-1, as the toolkit's.
inline QString Word(const char* word) { return QString::fromLatin1(word); }

}  // namespace kestrel::shell
