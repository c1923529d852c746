#pragma once

#include <filesystem>

#include "tape-info/survey.h"

namespace kestrel::tapeinfo {

/// Writes the tape that `survey` has looked through to `copy`, its count set to the whole records found, and nothing
/// behind them. The original is not touched. base::RuntimeFailure when `copy` exists, when there is no whole record, or
/// when writing fails; no half copy is left then.
void Repair(const std::filesystem::path& file, const Survey& survey, const std::filesystem::path& copy);

}  // namespace kestrel::tapeinfo
