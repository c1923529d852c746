#include "core/own_folder.h"

#include <filesystem>
#include <string>

#include "base/debug_log.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/program_title.h"
#include "core/default_files.h"
#include "core/setup.h"
#include "core/tell.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

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

/// Brings the program's files to `folder`. Where there are settings already a failure is only noted: the station has
/// what it needs.
void Bring(Station& station, const fs::path& folder) {
  const bool used = HasMainFile(folder);
  try {
    BringFiles(station.ProgramPath, folder);
  } catch (const base::RuntimeFailure& failure) {
    if (!used) throw;
    station.Notes.push_back(failure.what());
  }
}

enum class Outcome { Taken, Refused, NotOffered };

bool PersonAgrees(Program& program) {
  const Station& station = program.State;
  return program.Desk.Ask(base::ProgramTitle(),
                          "The program folder cannot be written:\n" + base::PathForMessage(station.ProgramPath) +
                              "\n\nThe station can keep its files in a folder of your own from now on:\n" +
                              base::PathForMessage(station.OwnFolder) +
                              "\n\nCopy them there? With No the station runs on, but settings, logs and tapes will not "
                              "be kept.",
                          base::MessageIcon::Question, base::MessageButtons::YesNo,
                          base::Answer::Yes) == base::Answer::Yes;
}

Outcome TakeOwnFolder(Program& program) {
  Station& station = program.State;
  if (station.OwnFolder.empty()) return Outcome::NotOffered;
  const bool known = HasMainFile(station.OwnFolder);
  if (!known) {
    if (!HasMainFile(station.ProgramPath) && !HasMainFile(DefaultsFolder(station.ProgramPath))) {
      return Outcome::NotOffered;
    }
    if (!PersonAgrees(program)) return Outcome::Refused;
  }
  try {
    Bring(station, station.OwnFolder);
  } catch (const base::RuntimeFailure& failure) {
    Tell(program, std::string(failure.what()) + ".");
    return Outcome::NotOffered;
  }
  station.AppPath = station.OwnFolder;
  return Outcome::Taken;
}

/// What runs in the folder must not be pulled away under another station.
void TakeFolder(Program& program) {
  const fs::path& folder = program.State.AppPath;
  if (!program.TakeFolder || program.TakeFolder(folder)) {
    TakeSetup(program);
  } else if (!IsSure(program, "Another station is running in this folder:\n" + base::PathForMessage(folder) +
                                  "\n\nBoth would write the same settings, areas and tapes, and what one of them saves "
                                  "the other would lose. Start this one too?")) {
    throw AnotherStation();
  }
}

}  // namespace

void ChooseFolder(Program& program) {
  Station& station = program.State;
  station.ProgramPath = station.AppPath;
  station.FolderReadOnly = !CanWrite(station.AppPath);
  if (!station.FolderReadOnly) {
    TakeFolder(program);
    Bring(station, station.AppPath);
    return;
  }
  const Outcome outcome = TakeOwnFolder(program);
  if (outcome == Outcome::Taken) station.FolderReadOnly = !CanWrite(station.AppPath);
  if (!station.FolderReadOnly) TakeFolder(program);
  if (station.FolderReadOnly && outcome != Outcome::Refused) {
    Tell(program, "The folder cannot be written:\n" + base::PathForMessage(station.AppPath) +
                      "\n\nThe station runs on, but settings, logs and tapes will not be kept.");
  }
  // What could be brought nowhere is read where it lies.
  const fs::path defaults = DefaultsFolder(station.ProgramPath);
  if (outcome != Outcome::Taken && !HasMainFile(station.AppPath) && HasMainFile(defaults)) station.AppPath = defaults;
}

}  // namespace kestrel::core
