#include "core/default_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "base/program_title.h"
#include "base/text.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view MainFileName = "KESTREL.ini";
constexpr std::array<std::string_view, 2> ProgramEndings = {".exe", ".dll"};
/// Beside the settings: what is the program's own, logs and tapes, and other setups.
constexpr std::array<std::string_view, 12> LeftBehind = {"kestrel", "update.txt", "LICENSE.txt",    "licenses",
                                                         "docs",    "defaults",   "KESTRELLog.txt", "debug_out.dat",
                                                         "TAPES",   "setup.new",  "setup.part",     "setup.old"};

bool IsOneOf(const auto& names, const fs::path& part) {
  const std::u8string bytes = part.u8string();
  const std::string name(bytes.begin(), bytes.end());
  return std::any_of(names.begin(), names.end(), [&](std::string_view each) { return base::SameNoCase(each, name); });
}

[[noreturn]] void CannotCopy(const fs::path& path) {
  throw base::RuntimeFailure(base::NameForMessage(path) + " cannot be copied");
}

/// What is to be copied but for KESTREL.ini, relative to `from`.
std::vector<fs::path> FilesToCopy(const fs::path& from) {
  std::vector<fs::path> files;
  std::error_code failure;
  fs::recursive_directory_iterator entry(from, failure);
  for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
    const fs::path name = entry->path().filename();
    if (entry.depth() == 0 && (IsOneOf(LeftBehind, name) || IsOneOf(std::array{MainFileName}, name))) {
      entry.disable_recursion_pending();
      continue;
    }
    std::error_code noFile;
    if (!entry->is_regular_file(noFile) || IsOneOf(ProgramEndings, name.extension())) continue;
    files.push_back(entry->path().lexically_relative(from));
  }
  if (failure) CannotCopy(from);
  const fs::path demo = base::FindFile(from, "TAPES/Demo.tap");
  if (base::FileExists(demo)) files.push_back(demo.lexically_relative(from));
  return files;
}

void CopyFile(const fs::path& from, const fs::path& to) {
  base::MakeFolder(to.parent_path());
  fs::path neighbour = to;
  neighbour += ".new";
  std::error_code failure;
  fs::copy_file(from, neighbour, fs::copy_options::overwrite_existing, failure);
  // The copy is the person's to change, whatever the rights of what was installed.
  if (!failure) fs::permissions(neighbour, fs::perms::owner_write, fs::perm_options::add, failure);
  if (!failure) fs::rename(neighbour, to, failure);
  if (failure) CannotCopy(from);
}

/// Whether the settings in `folder` were saved by this version: KESTREL.ini begins with name and version of the program
/// that wrote it. The one that is shipped does not.
bool SavedByThisVersion(const fs::path& folder) {
  if (!HasMainFile(folder)) return false;
  const std::string title = base::BannerHead();
  std::string head(title.size(), ' ');
  const std::size_t count =
      base::ReadHead(base::FindFile(folder, MainFileName), std::as_writable_bytes(std::span(head)));
  return count == title.size() && head == title;
}

}  // namespace

fs::path DefaultsFolder(const fs::path& program) { return base::FindFile(program, "defaults"); }

bool HasMainFile(const fs::path& folder) { return base::FileExists(base::FindFile(folder, MainFileName)); }

void BringFiles(const fs::path& program, const fs::path& folder) {
  std::vector<fs::path> sources;
  std::error_code failure;
  if (folder != program) sources.push_back(program);
  if (fs::is_directory(DefaultsFolder(program), failure)) sources.push_back(DefaultsFolder(program));
  if (sources.empty() || SavedByThisVersion(folder)) return;
  for (const fs::path& source : sources) {
    for (const fs::path& file : FilesToCopy(source)) {
      if (!fs::exists(folder / file, failure)) CopyFile(source / file, folder / file);
    }
  }
  for (const fs::path& source : sources) {
    if (HasMainFile(source) && !HasMainFile(folder)) {
      CopyFile(base::FindFile(source, MainFileName), folder / MainFileName);
    }
  }
}

}  // namespace kestrel::core
