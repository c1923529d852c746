#include "base/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <vector>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/text.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kestrel::base {
namespace fs = std::filesystem;
namespace {

struct CloseFile {
  void operator()(std::FILE* open) const { std::fclose(open); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

OpenFile OpenForReading(const fs::path& path) {
#ifdef _WIN32
  return OpenFile(_wfopen(path.c_str(), L"rb"));
#else
  return OpenFile(std::fopen(path.c_str(), "rb"));
#endif
}

fs::path PathOf(std::string_view name) { return fs::path(ToUnicode(name)); }

bool IsSlash(char letter) { return letter == '/' || letter == '\\'; }

bool IsAbsolute(std::string_view name) {
  const auto isLetter = [](char letter) { return (letter | 32) >= 'a' && (letter | 32) <= 'z'; };
  return !name.empty() && (IsSlash(name[0]) || (name.size() > 1 && name[1] == ':' && isLetter(name[0])));
}

/// The name of `step` in `folder` as it is on the disk, or as written when there is none.
fs::path FindStep(const fs::path& folder, std::string_view step) {
  const fs::path exact = folder / PathOf(step);
  std::error_code failure;
#ifndef _WIN32
  if (fs::exists(fs::symlink_status(exact, failure))) return exact;
  // Archives of another system leave names in its code page, so the bytes themselves count as well.
  const std::string wanted = exact.filename().native();
  fs::path found;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    const fs::path name = entry->path().filename();
    const bool same = SameNoCase(name.native(), wanted) || SameNoCase(name.native(), step);
    // Of several spellings always the same one.
    if (same && (found.empty() || name < found)) found = name;
  }
  if (!found.empty()) return folder / found;
#endif
  return exact;
}

/// Creates `path` with `bytes` and brings them to the disk. False when anything fails.
bool WriteFlushed(const fs::path& path, std::string_view bytes) {
#ifdef _WIN32
  const int file = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
  const auto writeSome = [&] {
    return _write(file, bytes.data(), static_cast<unsigned>(std::min<std::size_t>(bytes.size(), 1 << 30)));
  };
  const auto flush = [&] { return _commit(file); };
  const auto close = [&] { return _close(file); };
#else
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  const auto writeSome = [&] { return ::write(file, bytes.data(), bytes.size()); };
  const auto flush = [&] { return ::fsync(file); };
  const auto close = [&] { return ::close(file); };
#endif
  if (file < 0) return false;
  bool good = true;
  while (good && !bytes.empty()) {
    const auto written = writeSome();
    if (written < 0 && errno == EINTR) continue;
    good = written > 0;
    if (good) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  good = good && flush() == 0;
  return close() == 0 && good;
}

/// Brings a new name to the disk. A folder that cannot be flushed is no failure: the file itself is whole.
void FlushFolder([[maybe_unused]] const fs::path& folder) {
#ifndef _WIN32
  const int file = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  ::fsync(file);
  ::close(file);
#endif
}

}  // namespace

fs::path FindFile(const fs::path& folder, std::string_view name) {
  if (name.find('\0') != std::string_view::npos) throw RuntimeFailure("a file name holds a NUL");
  std::string slashed(name);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  if (IsAbsolute(name)) return PathOf(slashed);

  std::vector<fs::path> below = {folder};
  for (const std::string_view step : Split(slashed, '/')) {
    if (step.empty() || step == ".") continue;
    if (step == "..") {
      if (below.size() == 1) throw RuntimeFailure("\"" + std::string(name) + "\" leaves its folder");
      below.pop_back();
    } else if (step.find(':') != std::string_view::npos) {
      // On Windows such a step names another drive or a hidden part of a file.
      throw RuntimeFailure("\"" + std::string(name) + "\" holds a \":\"");
    } else {
      below.push_back(FindStep(below.back(), step));
    }
  }
  return below.back();
}

bool FileExists(const fs::path& path) {
  std::error_code failure;
  return fs::is_regular_file(path, failure);
}

std::string ReadWholeFile(const fs::path& path, std::size_t limit) {
  std::error_code failure;
  if (!fs::is_regular_file(path, failure)) throw RuntimeFailure(NameForMessage(path) + " is no file");
  const OpenFile file = OpenForReading(path);
  const auto size = fs::file_size(path, failure);
  if (!file || failure) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  if (size > limit) throw RuntimeFailure(NameForMessage(path) + " is too large");
  std::string bytes(static_cast<std::size_t>(size), '\0');
  // The file may have become shorter since its size was taken.
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  if (std::ferror(file.get())) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  return bytes;
}

std::size_t ReadHead(const fs::path& path, std::span<std::byte> into) {
  std::error_code failure;
  if (!fs::is_regular_file(path, failure)) throw RuntimeFailure(NameForMessage(path) + " is no file");
  const OpenFile file = OpenForReading(path);
  if (!file) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  const std::size_t count = std::fread(into.data(), 1, into.size(), file.get());
  if (std::ferror(file.get())) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  return count;
}

void WriteWholeFile(const fs::path& path, std::string_view bytes) {
  std::error_code failure;
  // A link keeps standing; the file it leads to is replaced.
  const fs::path target = fs::is_symlink(path, failure) ? fs::canonical(path, failure) : path;
  if (target.empty()) throw RuntimeFailure(NameForMessage(path) + " cannot be written");
  fs::path neighbour = target;
  neighbour += ".new";
  bool good = WriteFlushed(neighbour, bytes);
  if (good) {
    const fs::perms rights = fs::status(target, failure).permissions();
    if (!failure && rights != fs::perms::unknown) fs::permissions(neighbour, rights, failure);
    fs::rename(neighbour, target, failure);
    good = !failure;
  }
  if (!good) {
    if (fs::is_regular_file(neighbour, failure)) fs::remove(neighbour, failure);
    throw RuntimeFailure(NameForMessage(path) + " cannot be written");
  }
  FlushFolder(target.parent_path());
}

void MakeFolder(const fs::path& folder) {
  std::error_code failure;
  fs::create_directories(folder, failure);
  if (!fs::is_directory(folder, failure)) throw RuntimeFailure("folder " + NameForMessage(folder) + " cannot be made");
}

bool DeleteFile(const fs::path& path) {
  std::error_code failure;
  fs::remove(path, failure);
  return !failure;
}

std::optional<std::uint64_t> FreeSpace(const fs::path& folder) {
  std::error_code failure;
  // Windows tells the space of a folder that is not there, too.
  if (!fs::is_directory(folder, failure)) return std::nullopt;
  const fs::space_info space = fs::space(folder, failure);
  if (failure) return std::nullopt;
  return space.available;
}

std::string NameForMessage(const fs::path& path) { return PathForMessage(path.filename()); }

std::string PathForMessage(const fs::path& path) {
  try {
    return FromUnicode(fs::path(path).make_preferred().u16string());
  } catch (const std::exception&) {
    // A name whose bytes are no text of the system's encoding.
    return TextOfPath(path);
  }
}

std::string TextOfPath(const fs::path& path) {
#ifdef _WIN32
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
#else
  return path.native();
#endif
}

fs::path PathOfText(std::string_view text) {
#ifdef _WIN32
  return fs::path(std::u8string(text.begin(), text.end()));
#else
  return fs::path(text);
#endif
}

std::string_view BareName(std::string_view name) {
  const auto slash = name.find_last_of("/\\");
  return slash == std::string_view::npos ? name : name.substr(slash + 1);
}

}  // namespace kestrel::base
