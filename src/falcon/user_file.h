#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// The two files of a person's simulator that are written to: a pilot's own and the configuration.
namespace kestrel::falcon {

/// Gives the file the new content, whole or not at all. With a `backup` the file is first copied to it, unless
/// something of that name is there; a backup that this call has made goes again when the file cannot be replaced.
/// RuntimeFailure, naming the file, when it is missing or write-protected (whatever the folder's rights allow), or it
/// or its backup cannot be written: nothing has changed then.
void ReplaceUserFile(const std::filesystem::path& file, std::string_view bytes,
                     const std::filesystem::path& backup = {});

/// How the lines of `text` end: as its first one, CR LF when there is none.
std::string_view LineEndOf(std::string_view text);
/// Adds a line at the end of `text`, which then ends in `lineEnd`.
void AppendLine(std::string& text, std::string_view line, std::string_view lineEnd);

/// `value` such that no part of it ends a line: line ends and NULs are blanks.
std::string OneLine(std::string_view value);

}  // namespace kestrel::falcon
