#pragma once

#include <filesystem>

// The files that a program brings and that are the person's from then on: settings, theaters, the demo tape. They lie
// beside the executable or, where the program is packed, in its folder "defaults": a newer program that is unpacked
// over an older one then has nothing to lay over what the person has changed.
namespace kestrel::core {

/// The folder "defaults" of the program folder `program`; it need not be there.
std::filesystem::path DefaultsFolder(const std::filesystem::path& program);

/// Whether there is a KESTREL.ini in `folder`.
bool HasMainFile(const std::filesystem::path& folder);

/// Copies to `folder`, which may be `program` itself, what the program folder `program` and its defaults hold and
/// `folder` does not: all but what is the program's own, the pages of its guide among it, logs and tapes; of the tapes
/// the demo tape alone. Nothing is done where this version has saved its settings in `folder` before, so that what the
/// person deletes stays away. KESTREL.ini comes last, so that a copy that was cut short does not count as one.
/// RuntimeFailure when a file cannot be copied.
void BringFiles(const std::filesystem::path& program, const std::filesystem::path& folder);

}  // namespace kestrel::core
