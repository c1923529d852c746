// What is left of the areas when a save of many is cut short.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "core/settings.h"
#include "core/theater_areas.h"
#include "core/theater_data.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

/// Two catalogues, each more than is written in one piece.
class AreaSaveFaults : public testing::Test {
 protected:
  AreaSaveFaults() {
    WriteInstallation(folder);
    for (Station* station : {&former, &next}) {
      station->AppPath = folder.Path;
      LoadSavedVars(*station);
      areas::AreaCatalogue& catalogue = station->Areas;
      catalogue.AreaFolders.Append({"F", areas::On});
      areas::AreaGroup& group = catalogue.AreaGroups.Append({.Name = "G", .FolderIndex = 1});
      const int count = station == &next ? 1000 : 700;
      for (int n = 0; n < count; ++n) group.Areas.Append({.Name = std::to_string(n)}).Lines.Resize(20);
    }
    SaveAreas(next);
    nextBytes = folder.Read(file);
    SaveAreas(former);
    formerBytes = folder.Read(file);
  }

  const std::string file = "Theaters/korea_Areas.dat";
  ProgramFolder folder;
  Station former;
  Station next;
  std::string formerBytes;
  std::string nextBytes;
};

TEST_F(AreaSaveFaults, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne) {
  // 108, a group, a folder, and each area with its 20 lines.
  ASSERT_EQ(nextBytes.size(), 108 + 110 + 102 + 1000 * (506 + 20 * 32U));
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> microseconds(0, 20000);
  for (int round = 0; round < 20; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (bool first = true;; first = false) {
        SaveAreas(next);
        if (first && write(ends[1], "s", 1) != 1) _exit(1);
        SaveAreas(former);
      }
    }
    char started = 0;
    ASSERT_EQ(read(ends[0], &started, 1), 1);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    close(ends[0]);
    close(ends[1]);
    const std::string left = folder.Read(file);
    ASSERT_TRUE(left == formerBytes || left == nextBytes) << left.size();
  }
}

TEST_F(AreaSaveFaults, ADiskThatIsFullLeavesTheOldFile) {
  for (const std::size_t limit : {std::size_t{0}, std::size_t{100}, std::size_t{300'000}, nextBytes.size() - 1}) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      signal(SIGXFSZ, SIG_IGN);
      const rlimit full = {limit, limit};
      if (setrlimit(RLIMIT_FSIZE, &full) != 0) _exit(3);
      try {
        SaveAreas(next);
      } catch (const base::RuntimeFailure&) {
        _exit(1);
      }
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1) << limit;
    EXPECT_TRUE(folder.Read(file) == formerBytes) << limit;
    EXPECT_FALSE(folder.Has(file + ".new")) << limit;
  }
}

TEST_F(AreaSaveFaults, AFolderThatRefusesLeavesTheOldFileAndIsTold) {
  const std::filesystem::path theaters = folder.Path / "Theaters";
  std::filesystem::permissions(theaters, std::filesystem::perms(0555));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    // The superuser is refused nothing.
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 && setuid(Nobody) != 0) _exit(4);
    std::string told;
    for (const Unsaved& failure : SaveAll(next)) told += std::string(failure.What) + ": " + failure.Reason + "\n";
    _exit(told.starts_with("areas: korea_Areas.dat cannot be written\n") ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  std::filesystem::permissions(theaters, std::filesystem::perms(0755));
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_TRUE(folder.Read(file) == formerBytes);
}

}  // namespace
}  // namespace kestrel::core

#endif
