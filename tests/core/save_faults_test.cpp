// What is left on the disk when a save is cut short.
#ifndef _WIN32

#include <gtest/gtest.h>

#include <map>

#include "core/settings.h"
#include "core/theater_data.h"
#include "doubles/full_disk.h"
#include "doubles/other_process.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

constexpr std::string_view savedFiles[] = {"KESTREL.ini",
                                           "Theaters/korea.ini",
                                           "Theaters/balkans.ini",
                                           "Theaters/korea_ViewShort.dat",
                                           "Theaters/korea_Areas.dat",
                                           "Theaters/korea_Frequencies.dat"};

using Contents = std::map<std::string, std::string>;

Contents ReadSaved(const ProgramFolder& folder) {
  Contents contents;
  for (const std::string_view name : savedFiles) contents[std::string(name)] = folder.Read(name);
  return contents;
}

/// Two states of one station, different in every file, and what each leaves on the disk.
class SaveFaults : public testing::Test {
 protected:
  SaveFaults() {
    WriteInstallation(folder);
    for (Station* station : {&former, &next}) {
      station->AppPath = folder.Path;
      LoadSavedVars(*station);
    }
    next.LinkOptions.CONNPORT = 4711;
    for (int n = 0; n < 40; ++n) next.LinkOptions.ConnList.Append({"Entry " + std::to_string(n), "10.0.0.1"});
    next.View.ViewShorts[0] = {15, 30, 2};
    next.Areas.AreaFolders.Append({"F", areas::On});
    next.Areas.AreaGroups.Append({.Name = "G", .FolderIndex = 1}).Areas.Append({});
    for (int n = 0; n < 10; ++n) next.Frequencies.Airfields.Append({}).Name = "Field " + std::to_string(n);
    for (theaters::Theater& theater : next.Catalogue.Theaters.Live()) theater.DisplayName += " by night";
    SaveAll(next);
    nextFiles = ReadSaved(folder);
    SaveAll(former);
    formerFiles = ReadSaved(folder);
  }

  void ExpectEachFileWhole() {
    for (const auto& [name, bytes] : ReadSaved(folder)) {
      EXPECT_TRUE(bytes == formerFiles[name] || bytes == nextFiles[name]) << name << ":\n" << bytes;
    }
  }

  ProgramFolder folder;
  Station former;
  Station next;
  Contents formerFiles;
  Contents nextFiles;
};

TEST_F(SaveFaults, TheTwoStatesDifferInEveryFile) {
  for (const std::string_view name : savedFiles) {
    EXPECT_NE(formerFiles[std::string(name)], nextFiles[std::string(name)]) << name;
  }
}

TEST_F(SaveFaults, AKillAtAnyMomentLeavesEachFileOldOrNew) {
  for (int round = 0; round < 100; ++round) {
    doubles::KillDuring([this] { SaveAll(next); }, [this] { SaveAll(former); }, std::chrono::microseconds(8000));
    ExpectEachFileWhole();
    if (HasFailure()) return;
  }
}

TEST_F(SaveFaults, ADiskThatIsFullAfterAnyByteLeavesEachFileOldOrNew) {
  std::size_t largest = 0;
  for (const auto& [name, bytes] : nextFiles) largest = std::max(largest, bytes.size());
  for (std::size_t limit = 0; limit <= largest + 40; limit += 41) {
    const int code = doubles::ExitCode([&] {
      const doubles::FullDisk disk(limit);
      return SaveAll(next).empty() ? 0 : 1;
    });
    EXPECT_EQ(code, limit < largest ? 1 : 0) << limit;
    ExpectEachFileWhole();
    for (const auto& [name, bytes] : ReadSaved(folder)) {
      // A file that fits has been saved although another one failed.
      EXPECT_EQ(bytes == nextFiles[name], nextFiles[name].size() <= limit) << name << " at " << limit;
      EXPECT_FALSE(folder.Has(name + ".new")) << limit;
    }
    SaveAll(former);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace kestrel::core

#endif
