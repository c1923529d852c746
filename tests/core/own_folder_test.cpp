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
#include "base/program_title.h"
#include "core/default_files.h"
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
  /// The program folder as it is packed: what is the person's lies below "defaults".
  void Pack() const {
    const fs::path defaults = program.Path / "defaults";
    fs::create_directories(defaults / "TAPES");
    for (const char* name : {"KESTREL.ini", "common.ini", "FriendlyNames.ini", "Theaters"}) {
      fs::rename(program.Path / name, defaults / name);
    }
    program.Write("defaults/TAPES/Demo.tap", "demo");
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

TEST_F(OwnFolder, AProgramFolderWithoutDefaultsIsLeftAsItIs) {
  const auto before = FilesBelow(program.Path);
  ChooseFolder(around.All);
  EXPECT_EQ(FilesBelow(program.Path), before);
}

TEST_F(OwnFolder, APackedProgramIsUnpackedAtItsFirstStart) {
  Pack();
  EXPECT_TRUE(Main(around.All));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_EQ(around.State.AppPath, program.Path);
  for (const char* name : {"KESTREL.ini", "common.ini", "FriendlyNames.ini", "Theaters/korea.ini", "Theaters/korea.bmp",
                           "Theaters/balkans.ini", "Theaters/balkans.bmp"}) {
    EXPECT_EQ(program.Read(name), program.Read(std::string("defaults/") + name)) << name;
  }
}

TEST_F(OwnFolder, ANewPackedProgramThatCannotBeUnpackedEndsTheStart) {
  Pack();
  fs::create_directories(program.Path / "common.ini.new" / "in the way");
  EXPECT_FALSE(Main(around.All));
  ASSERT_EQ(around.Desk.Boxes.size(), 1U);
  EXPECT_EQ(around.Desk.Boxes[0].Title, "Error");
  EXPECT_FALSE(program.Has("KESTREL.ini"));
}

TEST_F(OwnFolder, AFileOfANewerPackedProgramThatCannotBeUnpackedIsNoted) {
  Pack();
  program.Write("KESTREL.ini", program.Read("defaults/KESTREL.ini"));
  fs::create_directories(program.Path / "common.ini.new" / "in the way");
  ChooseFolder(around.All);
  EXPECT_THAT(around.State.Notes, testing::ElementsAre("common.ini cannot be copied"));
}

TEST_F(OwnFolder, ANewerPackedProgramOverAUsedOneChangesNoFileAndBringsWhatIsMissing) {
  Pack();
  program.Write("KESTREL.ini", "\"KESTREL v0.9.0 Main INI File\"\r\nmine");
  program.Write("common.ini", "mine");
  fs::create_directory(program.Path / "Theaters");
  program.Write("Theaters/korea.ini", "mine");
  program.Write("defaults/gradient.act", "colours");
  ChooseFolder(around.All);
  EXPECT_EQ(program.Read("KESTREL.ini"), "\"KESTREL v0.9.0 Main INI File\"\r\nmine");
  EXPECT_EQ(program.Read("common.ini"), "mine");
  EXPECT_EQ(program.Read("Theaters/korea.ini"), "mine");
  EXPECT_EQ(program.Read("gradient.act"), "colours");
}

TEST_F(OwnFolder, WhatThePersonDeletesStaysAwayUntilAnotherVersionComes) {
  Pack();
  const auto has = [this] { return program.Has("Theaters/balkans.bmp") || program.Has("TAPES/Demo.tap"); };
  program.Write("KESTREL.ini", '"' + base::ProgramTitle() + " Main INI File\"\r\n");
  ChooseFolder(around.All);
  EXPECT_FALSE(has());
  program.Write("KESTREL.ini", '"' + base::ProgramTitle() + "0 Main INI File\"\r\n");
  ChooseFolder(around.All);
  EXPECT_TRUE(has());
}

TEST_F(OwnFolder, TheCopyHoldsAllButWhatIsTheProgramsLogsAndTapes) {
  program.Write("kestrel", "program");
  program.Write("kestrel.EXE", "program");
  program.Write("Qt6Core.dll", "library");
  program.Write("LICENSE.txt", "licence");
  program.Write("KESTRELLog.txt", "log");
  program.Write("DEBUG_OUT.dat", "capture");
  for (const char* folder : {"platforms", "licenses", "TAPES"}) fs::create_directories(program.Path / folder);
  program.Write("platforms/qwindows.dll", "plugin");
  program.Write("licenses/zlib.txt", "licence");
  program.Write("TAPES/night.tap", "tape");
  program.Write("TAPES/Demo.tap", "demo");
  fs::create_directories(program.Path / "Theaters" / "more");
  program.Write("Theaters/more/kestrel", "not the program");
  BringFiles(program.Path, around.State.OwnFolder);
  EXPECT_THAT(
      FilesBelow(around.State.OwnFolder),
      UnorderedElementsAre("KESTREL.ini", "common.ini", "FriendlyNames.ini", "Theaters/korea.ini", "Theaters/korea.bmp",
                           "Theaters/balkans.ini", "Theaters/balkans.bmp", "Theaters/more/kestrel", "TAPES/Demo.tap"));
  EXPECT_FALSE(OwnHas("platforms"));
}

TEST_F(OwnFolder, TheCopyOfAUsedPackedProgramHoldsItsFilesBeforeItsDefaults) {
  Pack();
  program.Write("KESTREL.ini", "used");
  program.Write("common.ini", "used");
  BringFiles(program.Path, around.State.OwnFolder);
  EXPECT_EQ(own.Read("KESTREL/KESTREL.ini"), "used");
  EXPECT_EQ(own.Read("KESTREL/common.ini"), "used");
  EXPECT_EQ(own.Read("KESTREL/FriendlyNames.ini"), program.Read("defaults/FriendlyNames.ini"));
  EXPECT_TRUE(OwnHas("Theaters/korea.bmp"));
  EXPECT_FALSE(OwnHas("defaults"));
}

TEST_F(OwnFolder, WhatIsThereIsNotOverwritten) {
  fs::create_directory(around.State.OwnFolder);
  std::ofstream(around.State.OwnFolder / "common.ini") << "mine";
  BringFiles(program.Path, around.State.OwnFolder);
  EXPECT_EQ(own.Read("KESTREL/common.ini"), "mine");
  EXPECT_EQ(own.Read("KESTREL/KESTREL.ini"), program.Read("KESTREL.ini"));
}

TEST_F(OwnFolder, ACopyOfAFileThatCannotBeChangedCanBe) {
  fs::permissions(program.Path / "common.ini", fs::perms(0444));
  BringFiles(program.Path, around.State.OwnFolder);
  EXPECT_NE(fs::status(around.State.OwnFolder / "common.ini").permissions() & fs::perms::owner_write, fs::perms::none);
  fs::permissions(program.Path / "common.ini", fs::perms(0644));
}

TEST_F(OwnFolder, ACopyThatIsCutShortHasNoMainFile) {
  fs::create_directories(around.State.OwnFolder / "Theaters");
  // Where a file should lie there is a folder with something in it.
  fs::create_directories(around.State.OwnFolder / "common.ini.new" / "in the way");
  EXPECT_THROW(BringFiles(program.Path, around.State.OwnFolder), base::RuntimeFailure);
  EXPECT_FALSE(OwnHas("KESTREL.ini"));
  fs::remove_all(around.State.OwnFolder / "common.ini.new");
  BringFiles(program.Path, around.State.OwnFolder);
  EXPECT_TRUE(OwnHas("KESTREL.ini"));
  EXPECT_TRUE(OwnHas("common.ini"));
}

#ifndef _WIN32

/// What a child process saw that is not the administrator: each box's text on a line.
class ReadOnlyProgram : public OwnFolder {
 protected:
  ReadOnlyProgram() {
    AllFolders(program.Path, 0555);
    fs::permissions(own.Path, fs::perms(0777));
  }
  ~ReadOnlyProgram() override {
    AllFolders(program.Path, 0755);
    AllFolders(own.Path, 0755);
  }

  /// Gives a folder and all below it the same rights.
  static void AllFolders(const fs::path& top, unsigned rights) {
    fs::permissions(top, fs::perms(rights));
    for (const auto& entry : fs::recursive_directory_iterator(top)) {
      if (entry.is_directory()) fs::permissions(entry.path(), fs::perms(rights));
    }
  }
  /// Changes the program folder, as an installer does.
  void Install(const std::function<void()>& change) {
    AllFolders(program.Path, 0755);
    change();
    AllFolders(program.Path, 0555);
  }

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
  /// A start, and where it found its files.
  std::string StartAgain() {
    std::string seen = Main(around.All) ? "started\n" : "ended\n";
    seen += around.State.Catalogue.Current().Name + "\n";
    seen += around.State.FolderReadOnly ? "read-only\n" : "";
    return seen + around.State.AppPath.string() + "\n" + around.State.ProgramPath.string() + "\n";
  }
  std::string Offer() {
    return base::ProgramTitle() + ": The program folder cannot be written:\n" + program.Path.string() +
           "\n\nThe station can keep its files in a folder of your own from now on:\n" +
           around.State.OwnFolder.string() +
           "\n\nCopy them there? With No the station runs on, but settings, logs and tapes will not be kept.\n";
  }
  std::string SaveFails() {
    return base::ProgramTitle() +
           ": The station could not save the settings: korea.ini cannot be written.\n\nThe closing goes on.\n";
  }
  static std::string NotKept(const fs::path& folder) {
    return base::ProgramTitle() + ": The folder cannot be written:\n" + folder.string() +
           "\n\nThe station runs on, but settings, logs and tapes will not be kept.\n";
  }
};

TEST_F(ReadOnlyProgram, WithoutAFolderToOfferItIsToldOnceAndTheStationRunsOn) {
  around.State.OwnFolder.clear();
  const std::string before = program.Read("KESTREL.ini");
  EXPECT_EQ(Run([this] { return Live(); }), "started\nbalkans\n" + NotKept(program.Path) + SaveFails());
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
  const std::string again =
      "started\nbalkans\n" + around.State.OwnFolder.string() + "\n" + program.Path.string() + "\n";

  // The next start asks nothing and finds what was saved. What has been deleted stays away.
  fs::remove(around.State.OwnFolder / "FriendlyNames.ini");
  EXPECT_EQ(Run([this] { return StartAgain(); }), again);
  EXPECT_FALSE(OwnHas("FriendlyNames.ini"));

  // Another version brings what is missing, and its own addresses.
  Install([this] {
    program.Write("gradient.act", "colours");
    program.Write("update.txt", "DOCS=http://newer.example\r\n");
  });
  std::string saved = own.Read("KESTREL/KESTREL.ini");
  saved.replace(0, saved.find('\r'), "\"KESTREL v0.9.0 Main INI File\"");
  own.Write("KESTREL/KESTREL.ini", saved);
  EXPECT_EQ(Run([this] { return StartAgain() + around.State.DocsUrl; }), again + "http://newer.example");
  EXPECT_EQ(own.Read("KESTREL/gradient.act"), "colours");
  EXPECT_TRUE(OwnHas("FriendlyNames.ini"));
  EXPECT_EQ(own.Read("KESTREL/KESTREL.ini"), saved);
}

TEST_F(ReadOnlyProgram, AnOwnFolderThatCannotBeWrittenEitherIsNamed) {
  Run([this] {
    around.Desk.Answers = {base::Answer::Yes};
    return Live();
  });
  AllFolders(around.State.OwnFolder, 0555);
  EXPECT_EQ(Run([this] { return StartAgain(); }), "started\nbalkans\nread-only\n" + around.State.OwnFolder.string() +
                                                      "\n" + program.Path.string() + "\n" +
                                                      NotKept(around.State.OwnFolder));
}

TEST_F(ReadOnlyProgram, APackedOneIsOfferedAndCopiedAsWell) {
  Install([this] { Pack(); });
  EXPECT_EQ(Run([this] {
              around.Desk.Answers = {base::Answer::Yes};
              return Live();
            }),
            "started\nbalkans\n" + Offer());
  EXPECT_THAT(own.Read("KESTREL/KESTREL.ini"), testing::HasSubstr("CURRENTMAP=2"));
  EXPECT_TRUE(OwnHas("TAPES/Demo.tap"));
  EXPECT_FALSE(OwnHas("defaults"));
}

TEST_F(ReadOnlyProgram, APackedOneThatIsNotCopiedIsReadWhereItLies) {
  Install([this] { Pack(); });
  const auto before = FilesBelow(program.Path);
  EXPECT_EQ(Run([this] {
              around.Desk.Answers = {base::Answer::No};
              return Live();
            }),
            "started\nbalkans\n" + Offer() + SaveFails());
  around.State.OwnFolder.clear();
  EXPECT_EQ(Run([this] { return Live(); }), "started\nbalkans\n" + NotKept(program.Path) + SaveFails());
  EXPECT_EQ(FilesBelow(program.Path), before);
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
  const std::string failed = base::ProgramTitle() + ": folder ";
  const std::string seen = Run([this] {
    around.Desk.Answers = {base::Answer::Yes};
    return Live();
  });
  EXPECT_THAT(seen, testing::StartsWith("started\nbalkans\n" + Offer() + failed));
  EXPECT_THAT(seen, testing::EndsWith(" cannot be made.\n" + NotKept(program.Path) + SaveFails()));
}

TEST_F(ReadOnlyProgram, TheUpdaterIsTheProgramFoldersOwn) {
  Install([this] { program.Write("common.ini", "[GENERAL]\r\nAUTOUPDATE=1\r\n"); });
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
