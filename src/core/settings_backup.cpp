#include "core/settings_backup.h"

#include <exception>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "core/settings.h"
#include "core/tell.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

/// False as well where there is no such file, or none that can be read.
bool Holds(const fs::path& path, const std::string& bytes) {
  if (!base::FileExists(path)) return false;
  try {
    return base::ReadWholeFile(path, base::MaxTextFileBytes) == bytes;
  } catch (const base::RuntimeFailure&) {
    return false;
  }
}

/// Whether a start could do with the copy.
bool IsOfUse(const Station& station, const fs::path& copy) {
  if (!base::FileExists(copy)) return false;
  Station trial;
  trial.AppPath = station.AppPath;
  try {
    LoadSavedVars(trial, copy);
  } catch (const std::exception&) {
    return false;
  }
  return !trial.Catalogue.Theaters.Empty();
}

/// The first name that is free: KESTREL.ini.old, KESTREL.ini.old2 and so on.
fs::path FreeName(const Station& station) {
  for (int n = 1;; ++n) {
    fs::path name = base::FindFile(station.AppPath, "KESTREL.ini.old" + (n == 1 ? "" : std::to_string(n)));
    std::error_code failure;
    if (fs::symlink_status(name, failure).type() == fs::file_type::not_found) return name;
    if (failure) throw base::RuntimeFailure(base::NameForMessage(name) + " cannot be looked at");
  }
}

/// Moves the present file to `former`, if it is there, and puts the copy in its place.
void PutInPlace(const Station& station, const fs::path& copy, const fs::path& former) {
  const std::string bytes = base::ReadWholeFile(copy, base::MaxTextFileBytes);
  const fs::path present = MainIniFile(station);
  std::error_code failure;
  fs::rename(present, former, failure);
  if (failure && failure != std::errc::no_such_file_or_directory) {
    throw base::RuntimeFailure(base::NameForMessage(present) + " cannot be renamed");
  }
  base::WriteWholeFile(present, bytes);
}

/// The settings of the copy, if the person wants them; otherwise fails as the present ones did.
std::vector<std::string> TakeBackup(Program& program, const std::string& complaint, const std::exception_ptr& failed) {
  Station& station = program.State;
  const fs::path copy = BackupIniFile(station);
  if (!IsOfUse(station, copy)) std::rethrow_exception(failed);
  const fs::path former = FreeName(station);
  const std::string name = base::NameForMessage(former);
  if (!Wants(program, complaint +
                          "\n\nKESTREL.ini.bak holds the settings with which the station last started. Use them? "
                          "The present KESTREL.ini is kept as " +
                          name + ".")) {
    std::rethrow_exception(failed);
  }
  std::vector<std::string> gone = LoadSavedVars(station, copy);
  station.Notes.push_back(complaint + " The settings are those of KESTREL.ini.bak");
  try {
    PutInPlace(station, copy, former);
  } catch (const base::RuntimeFailure& failure) {
    station.Notes.push_back(failure.what());
    Tell(program, std::string("KESTREL.ini could not be replaced: ") + failure.what() +
                      ".\n\nThe station runs on with the settings of KESTREL.ini.bak.");
  }
  return gone;
}

}  // namespace

fs::path BackupIniFile(const Station& station) { return base::FindFile(station.AppPath, "KESTREL.ini.bak"); }

void KeepSettings(Program& program) {
  try {
    const fs::path present = MainIniFile(program.State);
    if (!base::FileExists(present)) return;
    const std::string bytes = base::ReadWholeFile(present, base::MaxTextFileBytes);
    const fs::path copy = BackupIniFile(program.State);
    if (!Holds(copy, bytes)) base::WriteWholeFile(copy, bytes);
  } catch (const std::exception& failure) {
    program.Log.LogLine(std::string("KESTREL.ini.bak: ") + failure.what());
  }
}

std::vector<std::string> LoadSettingsOrBackup(Program& program) {
  try {
    std::vector<std::string> gone = LoadSavedVars(program.State);
    if (!program.State.Catalogue.Theaters.Empty()) return gone;
    throw NoTheaters();
  } catch (const NoTheaters&) {
    return TakeBackup(program, "KESTREL.ini names no theater.", std::current_exception());
  } catch (const base::RuntimeFailure& failure) {
    return TakeBackup(program, std::string("The settings cannot be read: ") + failure.what() + ".",
                      std::current_exception());
  }
}

}  // namespace kestrel::core
