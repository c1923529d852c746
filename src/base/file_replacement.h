#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

#include "base/positioned_file.h"

namespace kestrel::base {

/// A file that is written by pieces and takes the place of an older one at the end: a neighbour ("<name>.new") is
/// written, flushed to the disk and given the name, so that a full disk or a kill leaves the old file or the new one.
/// Unless that has been done the neighbour is gone with this object. Everything throws RuntimeFailure that names the
/// file when it fails.
class FileReplacement {
 public:
  /// A link keeps standing; the file it leads to is replaced.
  explicit FileReplacement(const std::filesystem::path& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  void Write(std::span<const std::byte> bytes) { Write(std::span(&bytes, 1)); }
  /// The pieces one behind the other; the spans are used up.
  void Write(std::span<std::span<const std::byte>> pieces);
  /// Gives the file its name.
  void Commit();

 private:
  std::filesystem::path name;
  std::filesystem::path target;
  std::filesystem::path neighbour;
  PositionedFile file;
  std::uint64_t size = 0;
};

}  // namespace kestrel::base
