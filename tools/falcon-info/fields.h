#pragma once

#include <string_view>

namespace kestrel::falconinfo {

/// For --help: every field that is printed, by the kind of report.
std::string_view FieldsText();

}  // namespace kestrel::falconinfo
