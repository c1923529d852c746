#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Finding, reading and writing files. Names are bytes of the code page as in the settings; folders are paths.
namespace kestrel::base {

/// Largest text or settings file that is read at all.
inline constexpr std::size_t MaxTextFileBytes = 16 << 20;

/// `name` below `folder`. Takes either slash, finds each step whatever its case (the simulator's folders on Linux); a
/// step that does not exist stands as written. A name that leaves `folder` by ".." throws RuntimeFailure; an absolute
/// name (leading slash or drive letter) is taken as it is.
std::filesystem::path FindFile(const std::filesystem::path& folder, std::string_view name);

bool FileExists(const std::filesystem::path& path);

/// All bytes of a file. RuntimeFailure when it cannot be read or is larger than `limit`.
std::string ReadWholeFile(const std::filesystem::path& path, std::size_t limit);

/// The first bytes of a file, as many as `into` has room for; how many there were. RuntimeFailure when it cannot be
/// read.
std::size_t ReadHead(const std::filesystem::path& path, std::span<std::byte> into);

/// Writes a file, so that a full disk or a kill leaves the old one or the new one (FileReplacement). RuntimeFailure
/// when that fails.
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

/// Copies a file, over an older one of that name. RuntimeFailure, naming the copy, when that fails.
void CopyOver(const std::filesystem::path& from, const std::filesystem::path& copy);

/// Makes the folder and those above it when missing. RuntimeFailure when that fails.
void MakeFolder(const std::filesystem::path& folder);

/// Deletes a file if it is there. False when it is there and stays.
bool DeleteFile(const std::filesystem::path& path);

/// Bytes that may still be written in `folder`; nothing when the system does not tell.
std::optional<std::uint64_t> FreeSpace(const std::filesystem::path& folder);

/// The last part of a path, for a message: bytes of the code page, "?" for what it does not hold.
std::string NameForMessage(const std::filesystem::path& path);
/// The whole path, for a message, as NameForMessage gives its last part.
std::string PathForMessage(const std::filesystem::path& path);

/// A path as the narrow text that the seam Desktop takes and gives, and back: UTF-8 on Windows, where names can hold
/// what the code page does not; elsewhere the bytes of the name.
std::string TextOfPath(const std::filesystem::path& path);
std::filesystem::path PathOfText(std::string_view text);

}  // namespace kestrel::base
