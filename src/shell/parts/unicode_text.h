#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "base/code_page.h"

// The rooms hold text as bytes of the code page; only the windows turn it into Unicode, here.
namespace kestrel::shell {

inline QString FromBytes(std::string_view bytes) { return QString::fromStdU16String(base::ToUnicode(bytes)); }

inline std::string ToBytes(const QString& text) { return base::FromUnicode(text.toStdU16String()); }

}  // namespace kestrel::shell
