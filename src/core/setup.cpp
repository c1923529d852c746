#include "core/setup.h"

#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "core/settings.h"
#include "core/setup_files.h"
#include "core/tell.h"
#include "core/theater_data.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view Filter = "Setups (*.zip)|*.zip";

/// The setup that waits, and what it takes the place of.
struct Waiting {
  explicit Waiting(const fs::path& folder)
      : Folder(folder / "setup.new"), Fresh(Folder / "new"), Former(Folder / "old"), Moved(Folder / "moved") {}

  fs::path Folder;
  fs::path Fresh;   ///< files that are to be put in place
  fs::path Former;  ///< files that were in use
  fs::path Moved;   ///< made when all of them have been moved there: the names of the fresh ones, line by line
};

void Drop(const fs::path& folder) {
  std::error_code failure;
  fs::remove_all(folder, failure);
  if (failure) throw base::RuntimeFailure(base::NameForMessage(folder) + " cannot be deleted");
}

void Rename(const fs::path& from, const fs::path& to) {
  base::MakeFolder(to.parent_path());
  std::error_code failure;
  fs::rename(from, to, failure);
  if (failure) throw base::RuntimeFailure(base::NameForMessage(from) + " cannot be moved");
}

/// The files below a folder, relative to it; none when it is not there.
std::vector<fs::path> FilesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code failure;
  if (!fs::is_directory(folder, failure)) return files;
  for (fs::recursive_directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    std::error_code noFile;
    if (entry->is_regular_file(noFile)) files.push_back(entry->path().lexically_relative(folder));
  }
  if (failure) throw base::RuntimeFailure(base::NameForMessage(folder) + " cannot be read");
  return files;
}

/// The theaters of the settings in `folder`; none where they cannot be read.
theaters::Catalogue TheatersOf(const fs::path& folder) {
  Station station;
  station.AppPath = folder;
  try {
    LoadSavedVars(station);
  } catch (const base::RuntimeFailure&) {
    return {};
  }
  return station.Catalogue;
}

/// Moves the present setup away, and what lies beside it of theaters that the one which waits has too.
void MoveFormer(const fs::path& folder, const Waiting& waiting) {
  std::vector<std::string> names = SetupFilesAndCopies(TheatersOf(folder));
  for (std::string& name : SetupFilesAndCopies(TheatersOf(waiting.Fresh))) names.push_back(std::move(name));
  // The settings tell of the others, should this be cut: they stay to the last.
  const std::string first = names.front();
  names.erase(names.begin());
  names.push_back(first);
  for (const std::string& name : names) {
    const fs::path path = base::FindFile(folder, name);
    if (base::FileExists(path)) Rename(path, waiting.Former / path.lexically_relative(folder));
  }
  std::string list;
  for (const fs::path& file : FilesOf(waiting.Fresh)) list += base::TextOfPath(file) + '\n';
  base::WriteWholeFile(waiting.Moved, list);
}

void PutInPlace(const fs::path& folder, const Waiting& waiting) {
  if (!base::FileExists(waiting.Moved)) MoveFormer(folder, waiting);
  for (const fs::path& file : FilesOf(waiting.Fresh)) Rename(waiting.Fresh / file, folder / file);
  const fs::path old = folder / "setup.old";
  Drop(old);
  if (fs::exists(waiting.Former)) Rename(waiting.Former, old);
  Drop(waiting.Folder);
}

/// What was in use is so again; the setup that waited is dropped.
void PutBack(const fs::path& folder, const Waiting& waiting) {
  const std::string list =
      base::FileExists(waiting.Moved) ? base::ReadWholeFile(waiting.Moved, base::MaxTextFileBytes) : std::string();
  for (const std::string_view line : base::Split(list, '\n')) {
    const fs::path file = base::PathOfText(line);
    if (!line.empty() && !base::FileExists(waiting.Fresh / file)) base::DeleteFile(folder / file);
  }
  for (const fs::path& file : FilesOf(waiting.Former)) Rename(waiting.Former / file, folder / file);
  Drop(waiting.Folder);
}

/// Unpacks to a folder beside, which takes its name when all is well.
void Receive(const fs::path& folder, const fs::path& zip) {
  const fs::path part = folder / "setup.part";
  Drop(part);
  try {
    base::MakeFolder(part / "new");
    UnpackSetup(zip, part / "new");
    Drop(Waiting(folder).Folder);
    Rename(part, Waiting(folder).Folder);
  } catch (...) {
    std::error_code failure;
    fs::remove_all(part, failure);
    throw;
  }
}

}  // namespace

void SaveSetup(Program& program) {
  const std::vector<Unsaved> failures = SaveAll(program.State);
  for (const Unsaved& failure : failures) TellUnsaved(program, failure);
  if (!failures.empty()) return;
  const std::optional<std::string> file = program.Desk.SaveFile("Save Setup", Filter, {}, "KESTREL setup");
  if (!file) return;
  try {
    PackSetup(program.State, base::PathOfText(*file));
  } catch (const std::exception& failure) {
    TellFailure(program, "The setup could not be saved: ", failure);
  }
}

bool LoadSetup(Program& program) {
  const std::optional<fs::path> zip = ChooseFile(program, "Load Setup", Filter);
  if (!zip) return false;
  try {
    Receive(program.State.AppPath, *zip);
  } catch (const std::exception& failure) {
    TellFailure(program, "The setup could not be loaded: ", failure);
    return false;
  }
  return Wants(program,
               "The setup will be in use from the next start of the station. The present one is then kept in the "
               "folder setup.old.\n\nClose the station now?");
}

void TakeSetup(Program& program) {
  Station& station = program.State;
  const Waiting waiting(station.AppPath);
  std::error_code failure;
  if (!fs::is_directory(waiting.Fresh, failure)) return;
  try {
    PutInPlace(station.AppPath, waiting);
    station.Notes.push_back("A setup has been loaded; the former one is in the folder setup.old");
  } catch (const std::exception& reason) {
    try {
      PutBack(station.AppPath, waiting);
    } catch (const std::exception& again) {
      station.Notes.push_back(again.what());
    }
    station.Notes.push_back(std::string("The setup could not be put in place: ") + reason.what());
    Tell(program,
         std::string("The setup could not be put in place: ") + reason.what() + ".\n\nThe former one stays in use.");
  }
}

}  // namespace kestrel::core
