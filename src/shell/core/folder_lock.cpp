#include "shell/core/folder_lock.h"

#include <QString>

namespace kestrel::shell {

bool FolderLock::Take(const std::filesystem::path& folder) {
  const std::filesystem::path path = folder / "KESTREL.lock";
  file = std::make_unique<QLockFile>(QString::fromStdU16String(path.u16string()));
  // However long a station runs, only one that has ended leaves a lock that does not count.
  file->setStaleLockTime(0);
  return file->tryLock() || file->error() != QLockFile::LockFailedError;
}

}  // namespace kestrel::shell
