#include "base/files.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <system_error>
#include <vector>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/file_replacement.h"
#include "base/text.h"

namespace kestrel::base {
namespace fs = std::filesystem;
namespace {

struct CloseFile {
  void operator()(std::FILE* open) const { std::fclose(open); }
};
using OpenedFile = std::unique_ptr<std::FILE, CloseFile>;

OpenedFile OpenForReading(const fs::path& path) {
#ifdef _WIN32
  return OpenedFile(_wfopen(path.c_str(), L"rb"));
#else
  return OpenedFile(std::fopen(path.c_str(), "rb"));
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
  const OpenedFile file = OpenForReading(path);
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
  const OpenedFile file = OpenForReading(path);
  if (!file) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  const std::size_t count = std::fread(into.data(), 1, into.size(), file.get());
  if (std::ferror(file.get())) throw RuntimeFailure(NameForMessage(path) + " cannot be read");
  return count;
}

void WriteWholeFile(const fs::path& path, std::string_view bytes) {
  FileReplacement fresh(path);
  fresh.Write(std::as_bytes(std::span(bytes)));
  fresh.Commit();
}

void CopyOver(const fs::path& from, const fs::path& copy) {
  std::error_code failure;
  fs::copy_file(from, copy, fs::copy_options::overwrite_existing, failure);
  if (failure) throw RuntimeFailure(NameForMessage(copy) + " cannot be written");
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

}  // namespace kestrel::base
