#pragma once

#include <filesystem>
#include <ostream>

#include "falcon-info/context.h"

namespace kestrel::falconinfo {

/// What there is to tell of a file or folder, as its name and content say what it is; {"file", "error"} when it cannot
/// be read or is nothing that is known.
Json ReportOn(Context& context, const std::filesystem::path& path);

/// Prints the report of each path that was asked for as soon as it is made; a list when there is more than one.
void PrintReports(Context& context, std::ostream& out);

}  // namespace kestrel::falconinfo
