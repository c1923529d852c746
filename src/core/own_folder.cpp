#include "core/own_folder.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/debug_log.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view MainFileName = "KESTREL.ini";
constexpr std::array<std::string_view, 2> ProgramEndings = {".exe", ".dll"};
/// Beside the settings in the program folder: what is no one's setting.
constexpr std::array<std::string_view, 4> LeftBehind = {"kestrel", "TAPES", "KESTRELLog.txt", "debug_out.dat"};

/// Not WriteWholeFile: the start need not wait for the disk.
bool CanWrite(const fs::path& folder) {
  const fs::path probe = base::FindFile(folder, "KESTREL.probe");
  try {
    base::LineFile file;
    file.Open(probe);
  } catch (const base::RuntimeFailure&) {
    return false;
  }
  base::DeleteFile(probe);
  return true;
}

bool IsOneOf(const auto& names, const fs::path& part) {
  const std::u8string bytes = part.u8string();
  const std::string name(bytes.begin(), bytes.end());
  return std::any_of(names.begin(), names.end(), [&](std::string_view each) { return base::SameNoCase(each, name); });
}

[[noreturn]] void CannotCopy(const fs::path& path) {
  throw base::RuntimeFailure(base::NameForMessage(path) + " cannot be copied");
}

/// What is to be copied, relative to `from`; KESTREL.ini last.
std::vector<fs::path> FilesToCopy(const fs::path& from) {
  std::vector<fs::path> files;
  bool mainFile = false;
  std::error_code failure;
  fs::recursive_directory_iterator entry(from, failure);
  for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
    const fs::path name = entry->path().filename();
    if (entry.depth() == 0 && IsOneOf(LeftBehind, name)) {
      entry.disable_recursion_pending();
      continue;
    }
    std::error_code noFile;
    if (!entry->is_regular_file(noFile) || IsOneOf(ProgramEndings, name.extension())) continue;
    if (entry.depth() == 0 && IsOneOf(std::array{MainFileName}, name)) {
      mainFile = true;
    } else {
      files.push_back(entry->path().lexically_relative(from));
    }
  }
  if (failure) CannotCopy(from);
  if (mainFile) files.emplace_back(MainFileName);
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

bool HasMainFile(const fs::path& folder) { return base::FileExists(base::FindFile(folder, MainFileName)); }

enum class Outcome { Taken, Refused, NotOffered };

bool PersonAgrees(Program& program) {
  const Station& station = program.State;
  return program.Desk.Ask(link::ProgramTitle(),
                          "The program folder cannot be written:\n" + base::PathForMessage(station.ProgramPath) +
                              "\n\nThe station can keep its files in a folder of your own from now on:\n" +
                              base::PathForMessage(station.OwnFolder) +
                              "\n\nCopy them there? With No the station runs on, but settings, logs and tapes will not "
                              "be kept.",
                          base::MessageIcon::Question, base::MessageButtons::YesNo) == base::Answer::Yes;
}

Outcome TakeOwnFolder(Program& program) {
  Station& station = program.State;
  if (station.OwnFolder.empty()) return Outcome::NotOffered;
  const bool known = HasMainFile(station.OwnFolder);
  if (!known && !HasMainFile(station.ProgramPath)) return Outcome::NotOffered;
  if (!known && !PersonAgrees(program)) return Outcome::Refused;
  try {
    // Also when it is known: a newer program may have brought files that the former did not have.
    CopyMissing(station.ProgramPath, station.OwnFolder);
  } catch (const base::RuntimeFailure& failure) {
    if (!known) {
      program.Desk.Message(link::ProgramTitle(), std::string(failure.what()) + ".", base::MessageIcon::Exclamation);
      return Outcome::NotOffered;
    }
    station.Notes.push_back(failure.what());
  }
  station.AppPath = station.OwnFolder;
  return Outcome::Taken;
}

}  // namespace

void CopyMissing(const fs::path& from, const fs::path& to) {
  for (const fs::path& file : FilesToCopy(from)) {
    std::error_code failure;
    if (!fs::exists(to / file, failure)) CopyFile(from / file, to / file);
  }
}

void ChooseFolder(Program& program) {
  Station& station = program.State;
  station.ProgramPath = station.AppPath;
  station.FolderReadOnly = !CanWrite(station.AppPath);
  if (!station.FolderReadOnly) return;
  const Outcome outcome = TakeOwnFolder(program);
  if (outcome == Outcome::Taken) station.FolderReadOnly = !CanWrite(station.AppPath);
  if (!station.FolderReadOnly || outcome == Outcome::Refused) return;
  program.Desk.Message(link::ProgramTitle(),
                       "The program folder cannot be written. The station runs on, but settings, logs and tapes will "
                       "not be kept.",
                       base::MessageIcon::Exclamation);
}

}  // namespace kestrel::core
