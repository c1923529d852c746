#include "base/positioned_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/files.h"

#ifdef _WIN32
#include <io.h>
#else
#include <sys/uio.h>
#include <unistd.h>
#endif

namespace kestrel::base {
namespace fs = std::filesystem;
namespace {

// What a system calls by another name. Each moves some bytes at a position, or gives a negative number and errno.
#ifdef _WIN32
constexpr std::size_t MostAtOnce = std::size_t{1} << 30;

int OpenFile(const fs::path& path, PositionedFile::Mode mode) {
  using Mode = PositionedFile::Mode;
  const int flags = mode == Mode::Read      ? _O_RDONLY
                    : mode == Mode::Replace ? _O_RDWR | _O_CREAT | _O_TRUNC
                                            : _O_RDWR | _O_CREAT | _O_EXCL;
  return _wopen(path.c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}
int CloseFile(int file) { return _close(file); }
int FlushFile(int file) { return _commit(file); }
bool SetSize(int file, std::uint64_t size) { return _chsize_s(file, static_cast<__int64>(size)) == 0; }

using Status = struct _stat64;
bool StatusOf(int file, Status& status) { return _fstat64(file, &status) == 0; }
bool IsFile(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFREG; }

bool GoTo(int file, std::uint64_t position) { return _lseeki64(file, static_cast<__int64>(position), SEEK_SET) >= 0; }

std::ptrdiff_t ReadSome(int file, std::uint64_t position, std::span<std::byte> into) {
  if (!GoTo(file, position)) return -1;
  return _read(file, into.data(), static_cast<unsigned>(std::min(into.size(), MostAtOnce)));
}
std::ptrdiff_t WriteSome(int file, std::uint64_t position, std::span<std::span<const std::byte>> pieces) {
  if (!GoTo(file, position)) return -1;
  return _write(file, pieces[0].data(), static_cast<unsigned>(std::min(pieces[0].size(), MostAtOnce)));
}
#else
int OpenFile(const fs::path& path, PositionedFile::Mode mode) {
  using Mode = PositionedFile::Mode;
  const int flags = mode == Mode::Read      ? O_RDONLY
                    : mode == Mode::Replace ? O_RDWR | O_CREAT | O_TRUNC
                                            : O_RDWR | O_CREAT | O_EXCL;
  // A pipe would wait for its other end; it is told from a file only when it is open.
  return ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
}
int CloseFile(int file) { return ::close(file); }
int FlushFile(int file) { return ::fsync(file); }
bool SetSize(int file, std::uint64_t size) { return ::ftruncate(file, static_cast<off_t>(size)) == 0; }

using Status = struct stat;
bool StatusOf(int file, Status& status) { return ::fstat(file, &status) == 0; }
bool IsFile(const Status& status) { return S_ISREG(status.st_mode); }

static_assert(sizeof(off_t) == 8, "files of more than 2 GB");

std::ptrdiff_t ReadSome(int file, std::uint64_t position, std::span<std::byte> into) {
  return ::pread(file, into.data(), into.size(), static_cast<off_t>(position));
}
std::ptrdiff_t WriteSome(int file, std::uint64_t position, std::span<std::span<const std::byte>> pieces) {
  constexpr std::size_t most = 256;  // pieces at once; the system's own bound is higher
  iovec parts[most];
  const std::size_t count = std::min(pieces.size(), most);
  for (std::size_t n = 0; n < count; ++n) {
    parts[n] = {const_cast<std::byte*>(pieces[n].data()), pieces[n].size()};
  }
  return ::pwritev(file, parts, static_cast<int>(count), static_cast<off_t>(position));
}
#endif

std::string FailureText(const fs::path& path, const char* what, int error) {
  return NameForMessage(path) + " cannot be " + what + ": " + std::generic_category().message(error);
}

[[noreturn]] void Fail(const fs::path& path, const char* what, int error) {
  throw RuntimeFailure(FailureText(path, what, error));
}

/// Takes `written` bytes off the front of the pieces.
std::span<std::span<const std::byte>> After(std::span<std::span<const std::byte>> pieces, std::size_t written) {
  while (!pieces.empty() && written >= pieces[0].size()) {
    written -= pieces[0].size();
    pieces = pieces.subspan(1);
  }
  if (!pieces.empty()) pieces[0] = pieces[0].subspan(written);
  return pieces;
}

}  // namespace

PositionedFile::PositionedFile(const fs::path& path, Mode mode) : name(path) {
  descriptor = OpenFile(path, mode);
  if (descriptor < 0) {
    const int error = errno;
    throw OpenFailure(FailureText(path, mode == Mode::Read ? "read" : "written", error), static_cast<std::errc>(error));
  }
  Status status{};
  if (StatusOf(descriptor, status) && IsFile(status)) return;
  CloseFile(std::exchange(descriptor, -1));
  throw OpenFailure(NameForMessage(path) + " is no file", std::errc::not_supported);
}

PositionedFile::~PositionedFile() {
  if (IsOpen()) CloseFile(descriptor);
}

PositionedFile::PositionedFile(PositionedFile&& other) noexcept
    : descriptor(std::exchange(other.descriptor, -1)), name(std::move(other.name)) {}

PositionedFile& PositionedFile::operator=(PositionedFile&& other) noexcept {
  std::swap(descriptor, other.descriptor);
  std::swap(name, other.name);
  return *this;
}

std::uint64_t PositionedFile::Size() const {
  Status status{};
  if (!StatusOf(descriptor, status)) Fail(name, "read", errno);
  return static_cast<std::uint64_t>(status.st_size);
}

std::size_t PositionedFile::Read(std::uint64_t position, std::span<std::byte> into) const {
  std::size_t count = 0;
  while (count < into.size()) {
    const std::ptrdiff_t read = ReadSome(descriptor, position + count, into.subspan(count));
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) Fail(name, "read", errno);
    if (read == 0) break;
    count += static_cast<std::size_t>(read);
  }
  return count;
}

void PositionedFile::Write(std::uint64_t position, std::span<const std::byte> bytes) {
  Write(position, std::span(&bytes, 1));
}

void PositionedFile::Write(std::uint64_t position, std::span<std::span<const std::byte>> pieces) {
  for (pieces = After(pieces, 0); !pieces.empty();) {
    const std::ptrdiff_t written = WriteSome(descriptor, position, pieces);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) Fail(name, "written", written < 0 ? errno : ENOSPC);
    position += static_cast<std::size_t>(written);
    pieces = After(pieces, static_cast<std::size_t>(written));
  }
}

void PositionedFile::CutTo(std::uint64_t size) {
  if (!SetSize(descriptor, size)) Fail(name, "written", errno);
}

void PositionedFile::Flush() {
  if (FlushFile(descriptor) != 0) Fail(name, "written", errno);
}

void PositionedFile::Close() {
  if (IsOpen() && CloseFile(std::exchange(descriptor, -1)) != 0) Fail(name, "written", errno);
}

}  // namespace kestrel::base
