#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/positioned_file.h"

namespace kestrel::core {

/// One file in a zip.
struct ZipEntry {
  std::string Name;           ///< as it stands: a plain name (IsPlainZipName)
  std::uint64_t Plain = 0;    ///< its bytes
  std::uint64_t Packed = 0;   ///< those that they take in the zip
  std::uint32_t Sum = 0;      ///< of its bytes, CRC-32
  std::uint16_t Method = 0;   ///< stored or deflated
  std::uint64_t HeadAt = 0;   ///< where its head stands
  std::uint64_t MustEnd = 0;  ///< where the next one's begins, or the list
};

/// Whether a name of a zip stays in the folder that it is unpacked to, on any system: relative, its steps parted by
/// "/", none of them empty, "." or "..", without a backslash, a colon or a character that does not print. A "/" at the
/// end names a folder.
bool IsPlainZipName(std::string_view name);

/// Reads a zip of files that are stored or deflated, below 4 GB, from a stranger: what it declares is held against the
/// file and its bytes against what it declares. Nothing but the list is held.
class ZipReader {
 public:
  /// More files than that are not read.
  static constexpr std::size_t MostEntries = 10'000;
  using Sink = std::function<void(std::span<const std::byte>)>;

  /// Reads the list. RuntimeFailure when there is none, when the zip is cut, split, encrypted or of the form for more
  /// than 4 GB, or packed in another way, when a name is not plain or stands twice (whatever its case), when files lie
  /// over each other, and when one declares more than its packed bytes can hold. Folders are left out.
  explicit ZipReader(const std::filesystem::path& path);

  const std::vector<ZipEntry>& Entries() const { return entries; }
  /// Tells the bytes of a file in their order, `Plain` of them at the most. RuntimeFailure when they are damaged: what
  /// was told then counts for nothing.
  void Unpack(const ZipEntry& entry, const Sink& tell) const;
  /// The bytes of a file. RuntimeFailure as well when it declares more than `limit`.
  std::string Text(const ZipEntry& entry, std::size_t limit) const;

 private:
  std::string Piece(std::uint64_t at, std::size_t count) const;
  void ReadList(std::uint64_t at, std::size_t bytes, std::size_t count);
  void CheckPlaces(std::uint64_t listAt);
  void CheckNames() const;

  std::string name;
  base::PositionedFile file;
  std::vector<ZipEntry> entries;
};

}  // namespace kestrel::core
