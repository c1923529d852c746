#include "core/own_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "base/failure.h"
#include "base/files.h"
#include "core/settings.h"
#include "core/theater_switch.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// All files below a folder, with forward slashes.
std::vector<std::string> FilesBelow(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) names.push_back(entry.path().lexically_relative(folder).generic_string());
  }
  return names;
}

class OwnFolder : public testing::Test {
 protected:
  OwnFolder() {
    WriteInstallation(program);
    fs::remove(own.Path / "Theaters");
    around.State.OwnFolder = own.Path / "KESTREL";
    around.Shown.WhenShown = [this] {
      RunSteps(FrameLoadSteps(), around.All);
      RunSteps(MapLoadSteps(), around.All);
    };
  }
  bool OwnHas(const char* name) { return fs::exists(around.State.OwnFolder / name); }

  ProgramFolder program;
  ProgramFolder own;
  Around around{program.Path};
};

TEST_F(OwnFolder, AProgramFolderThatCanBeWrittenStands) {
  fs::create_directory(around.State.OwnFolder);
  std::ofstream(around.State.OwnFolder / "KESTREL.ini") << "of another copy of the program";
  ChooseFolder(around.All);
  EXPECT_EQ(around.State.AppPath, program.Path);
  EXPECT_EQ(around.State.ProgramPath, program.Path);
  EXPECT_FALSE(around.State.FolderReadOnly);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_FALSE(program.Has("KESTREL.probe"));
}

TEST_F(OwnFolder, TheCopyHoldsAllButProgramsLogsAndTapes) {
  program.Write("kestrel", "program");
  program.Write("kestrel.EXE", "program");
  program.Write("Qt6Core.dll", "library");
  program.Write("KESTRELLog.txt", "log");
  program.Write("DEBUG_OUT.dat", "capture");
  fs::create_directories(program.Path / "platforms");
  program.Write("platforms/qwindows.dll", "plugin");
  fs::create_directories(program.Path / "TAPES");
  program.Write("TAPES/night.tap", "tape");
  fs::create_directories(program.Path / "Theaters" / "more");
  program.Write("Theaters/more/kestrel", "not the program");
  CopyMissing(program.Path, around.State.OwnFolder);
  EXPECT_THAT(FilesBelow(around.State.OwnFolder),
              UnorderedElementsAre("KESTREL.ini", "common.ini", "update.txt", "FriendlyNames.ini", "Theaters/korea.ini",
                                   "Theaters/korea.bmp", "Theaters/balkans.ini", "Theaters/balkans.bmp",
                                   "Theaters/more/kestrel"));
  EXPECT_FALSE(OwnHas("platforms"));
}

TEST_F(OwnFolder, WhatIsThereIsNotOverwritten) {
  fs::create_directory(around.State.OwnFolder);
  std::ofstream(around.State.OwnFolder / "common.ini") << "mine";
  CopyMissing(program.Path, around.State.OwnFolder);
  EXPECT_EQ(own.Read("KESTREL/common.ini"), "mine");
  EXPECT_EQ(own.Read("KESTREL/KESTREL.ini"), program.Read("KESTREL.ini"));
}

TEST_F(OwnFolder, ACopyOfAFileThatCannotBeChangedCanBe) {
  fs::permissions(program.Path / "common.ini", fs::perms(0444));
  CopyMissing(program.Path, around.State.OwnFolder);
  EXPECT_NE(fs::status(around.State.OwnFolder / "common.ini").permissions() & fs::perms::owner_write, fs::perms::none);
  fs::permissions(program.Path / "common.ini", fs::perms(0644));
}

TEST_F(OwnFolder, ACopyThatIsCutShortHasNoMainFile) {
  fs::create_directories(around.State.OwnFolder / "Theaters");
  // Where a file should lie there is a folder with something in it.
  fs::create_directories(around.State.OwnFolder / "update.txt.new" / "in the way");
  EXPECT_THROW(CopyMissing(program.Path, around.State.OwnFolder), base::RuntimeFailure);
  EXPECT_FALSE(OwnHas("KESTREL.ini"));
  fs::remove_all(around.State.OwnFolder / "update.txt.new");
  CopyMissing(program.Path, around.State.OwnFolder);
  EXPECT_TRUE(OwnHas("KESTREL.ini"));
  EXPECT_TRUE(OwnHas("update.txt"));
}

#ifndef _WIN32

/// What a child process saw that is not the administrator: each box's text on a line.
class ReadOnlyProgram : public OwnFolder {
 protected:
  ReadOnlyProgram() {
    for (const auto& path : {program.Path, program.Path / "Theaters"}) fs::permissions(path, fs::perms(0555));
    fs::permissions(own.Path, fs::perms(0777));
  }
  ~ReadOnlyProgram() override { fs::permissions(own.Path, fs::perms(0755)); }

  std::string Run(const std::function<std::string()>& as) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
      std::string seen;
      if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) seen += "still the administrator\n";
      seen += as();
      for (const auto& box : around.Desk.Boxes) seen += box.Title + ": " + box.Text + "\n";
      const bool told = write(ends[1], seen.data(), seen.size()) == static_cast<ssize_t>(seen.size());
      _exit(told ? 0 : 1);
    }
    close(ends[1]);
    std::string seen;
    char piece[4096];
    for (ssize_t count; (count = read(ends[0], piece, sizeof piece)) > 0;)
      seen.append(piece, static_cast<size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? seen : "the child failed";
  }
  /// One life of the station, with a change that is saved.
  std::string Live() {
    std::string seen = Main(around.All) ? "started\n" : "ended\n";
    SwitchTheater(around.All, 2);
    seen += around.State.Catalogue.Current().Name + "\n";
    Close(around.All);
    return seen;
  }
  std::string Offer() {
    return link::ProgramTitle() + ": The program folder cannot be written:\n" + program.Path.string() +
           "\n\nThe station can keep its files in a folder of your own from now on:\n" +
           around.State.OwnFolder.string() +
           "\n\nCopy them there? With No the station runs on, but settings, logs and tapes will not be kept.\n";
  }
  std::string SaveFails() {
    return link::ProgramTitle() +
           ": The station could not save the settings: korea.ini cannot be written.\n\nThe closing goes on.\n";
  }
  const std::string notKept = link::ProgramTitle() +
                              ": The program folder cannot be written. The station runs on, but settings, logs and "
                              "tapes will not be kept.\n";
};

TEST_F(ReadOnlyProgram, WithoutAFolderToOfferItIsToldOnceAndTheStationRunsOn) {
  around.State.OwnFolder.clear();
  const std::string before = program.Read("KESTREL.ini");
  EXPECT_EQ(Run([this] { return Live(); }), "started\nbalkans\n" + notKept + SaveFails());
  EXPECT_EQ(program.Read("KESTREL.ini"), before);
}

TEST_F(ReadOnlyProgram, ThePersonsOwnFolderIsOfferedAndUsedFromThenOn) {
  const std::string before = program.Read("KESTREL.ini");
  EXPECT_EQ(Run([this] {
              around.Desk.Answers = {base::Answer::Yes};
              return Live();
            }),
            "started\nbalkans\n" + Offer());
  EXPECT_EQ(program.Read("KESTREL.ini"), before);
  EXPECT_THAT(own.Read("KESTREL/KESTREL.ini"), testing::HasSubstr("CURRENTMAP=2"));
  EXPECT_TRUE(OwnHas("TAPES"));

  // The next start asks nothing and finds what was saved; what a newer program brought is copied as well.
  fs::permissions(program.Path, fs::perms(0755));
  program.Write("gradient.act", "colours");
  fs::permissions(program.Path, fs::perms(0555));
  EXPECT_EQ(Run([this] {
              std::string seen = Main(around.All) ? "started\n" : "ended\n";
              seen += around.State.Catalogue.Current().Name + "\n";
              seen += around.State.FolderReadOnly ? "read-only\n" : "";
              return seen + around.State.AppPath.string() + "\n" + around.State.ProgramPath.string() + "\n";
            }),
            "started\nbalkans\n" + around.State.OwnFolder.string() + "\n" + program.Path.string() + "\n");
  EXPECT_EQ(own.Read("KESTREL/gradient.act"), "colours");
}

TEST_F(ReadOnlyProgram, ARefusalIsAskedAgainAtTheNextStart) {
  for (int start = 0; start < 2; ++start) {
    EXPECT_EQ(Run([this] {
                around.Desk.Answers = {base::Answer::No};
                return Live();
              }),
              "started\nbalkans\n" + Offer() + SaveFails());
    EXPECT_FALSE(fs::exists(around.State.OwnFolder));
  }
}

TEST_F(ReadOnlyProgram, ACopyThatFailsIsToldAndTheStationRunsOn) {
  fs::permissions(own.Path, fs::perms(0555));
  const std::string failed = link::ProgramTitle() + ": folder ";
  const std::string seen = Run([this] {
    around.Desk.Answers = {base::Answer::Yes};
    return Live();
  });
  EXPECT_THAT(seen, testing::StartsWith("started\nbalkans\n" + Offer() + failed));
  EXPECT_THAT(seen, testing::EndsWith(" cannot be made.\n" + notKept + SaveFails()));
}

TEST_F(ReadOnlyProgram, TheUpdaterIsTheProgramFoldersOwn) {
  fs::permissions(program.Path, fs::perms(0755));
  program.Write("common.ini", "[GENERAL]\r\nAUTOUPDATE=1\r\n");
  fs::permissions(program.Path, fs::perms(0555));
  EXPECT_EQ(Run([this] {
              around.Desk.Answers = {base::Answer::Yes};
              Main(around.All);
              around.Desk.Boxes.clear();
              return around.Desk.Files.empty() ? "none" : around.Desk.Files[0].File;
            }),
            program.Path.string() + "/ravenfix.exe");
}

#endif

}  // namespace
}  // namespace kestrel::core
