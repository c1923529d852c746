#pragma once

#include <QLockFile>
#include <filesystem>
#include <memory>

namespace kestrel::shell {

/// Says to other stations that a folder is in use, by a file with this process' number: KESTREL.lock, gone with the
/// object. One that a station has left that ended otherwise does not count.
class FolderLock {
 public:
  /// False when another station has the folder. Where that cannot be told the folder counts as free.
  bool Take(const std::filesystem::path& folder);

 private:
  std::unique_ptr<QLockFile> file;
};

}  // namespace kestrel::shell
