#include "base/file_replacement.h"

#include <system_error>

#include "base/failure.h"
#include "base/files.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kestrel::base {
namespace fs = std::filesystem;
namespace {

/// Brings a new name to the disk. A folder that cannot be flushed is no failure: the file itself is whole.
void FlushFolder([[maybe_unused]] const fs::path& folder) {
#ifndef _WIN32
  const int file = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  ::fsync(file);
  ::close(file);
#endif
}

/// Does `work`; its failure names the file that is wanted and not its neighbour.
template <class Work>
void Named(const fs::path& name, const Work& work) {
  try {
    work();
  } catch (const RuntimeFailure&) {
    throw RuntimeFailure(NameForMessage(name) + " cannot be written");
  }
}

}  // namespace

FileReplacement::FileReplacement(const fs::path& path) : name(path) {
  Named(name, [this] {
    std::error_code failure;
    target = fs::is_symlink(name, failure) ? fs::canonical(name, failure) : name;
    if (target.empty()) throw RuntimeFailure("a link that leads nowhere");
    neighbour = target;
    neighbour += ".new";
    file = PositionedFile(neighbour, PositionedFile::Mode::Replace);
  });
}

FileReplacement::~FileReplacement() {
  if (neighbour.empty()) return;
  file = {};
  std::error_code failure;
  fs::remove(neighbour, failure);
}

void FileReplacement::Write(std::span<std::span<const std::byte>> pieces) {
  std::uint64_t bytes = 0;
  for (const auto& piece : pieces) bytes += piece.size();
  Named(name, [&] { file.Write(size, pieces); });
  size += bytes;
}

void FileReplacement::Commit() {
  Named(name, [this] {
    file.Flush();
    file.Close();
    std::error_code failure;
    const fs::perms rights = fs::status(target, failure).permissions();
    if (!failure && rights != fs::perms::unknown) fs::permissions(neighbour, rights, failure);
    fs::rename(neighbour, target, failure);
    if (failure) throw RuntimeFailure(failure.message());
  });
  neighbour.clear();
  FlushFolder(target.parent_path());
}

}  // namespace kestrel::base
