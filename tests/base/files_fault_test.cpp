// Faults injected into writing: a disk that is full at byte N, a folder that refuses, a kill in the midst.
#ifndef _WIN32

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <random>
#include <string>

#include "base/failure.h"
#include "base/files.h"
#include "doubles/full_disk.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

namespace fs = std::filesystem;

constexpr int Refused = 3;

/// Runs `work` in a child process. Its exit code: 0, or Refused when `work` threw RuntimeFailure.
int InChild(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      work();
    } catch (const RuntimeFailure&) {
      _exit(Refused);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FilesFault, ADiskFullAtAnyByteLeavesTheOldFile) {
  const test::TempFolder folder;
  const fs::path path = folder / "file";
  const std::string old = "the old file";
  const std::string fresh(50, 'n');
  for (rlim_t room = 0; room <= fresh.size(); ++room) {
    test::WriteBytes(path, old);
    const int result = InChild([&] {
      const doubles::FullDisk disk(room);
      WriteWholeFile(path, fresh);
    });
    EXPECT_EQ(result, room < fresh.size() ? Refused : 0) << room;
    EXPECT_EQ(test::ReadBytes(path), room < fresh.size() ? old : fresh) << room;
    EXPECT_FALSE(fs::exists(folder / "file.new")) << room;
  }
}

TEST(FilesFault, AFolderThatRefusesLeavesTheOldFile) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "old");
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_exec |
                                     fs::perms::others_read | fs::perms::others_exec);
  const int result = InChild([&] {
    // The superuser is refused nothing.
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 && setuid(Nobody) != 0) _exit(4);
    WriteWholeFile(folder / "file", "new");
  });
  EXPECT_EQ(result, Refused);
  EXPECT_EQ(test::ReadBytes(folder / "file"), "old");
  fs::permissions(folder.Path(), fs::perms::owner_all);
}

TEST(FilesFault, AKillLeavesTheOldFileOrTheNewOne) {
  const test::TempFolder folder;
  const fs::path path = folder / "file";
  const std::string contents[] = {std::string(200000, 'a'), std::string(300000, 'b')};
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int round = 0; round < 20; ++round) {
    int written[2];
    ASSERT_EQ(pipe(written), 0);
    const pid_t child = fork();
    if (child == 0) {
      for (int turn = 0;; ++turn) {
        WriteWholeFile(path, contents[turn % 2]);
        if (write(written[1], "x", 1) != 1) _exit(1);
      }
    }
    close(written[1]);
    char mark;
    for (unsigned writes = random() % 4 + 1; writes > 0; --writes) ASSERT_EQ(read(written[0], &mark, 1), 1);
    // Some way into the next write.
    const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 3000);
    while (std::chrono::steady_clock::now() < moment) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(written[0]);
    const std::string left = test::ReadBytes(path);
    EXPECT_TRUE(left == contents[0] || left == contents[1]) << left.size() << " bytes, seed " << seed;
  }
  WriteWholeFile(path, "afterwards");
  EXPECT_EQ(test::ReadBytes(path), "afterwards");
}

TEST(FilesFault, AFileThatMayNotBeReadThrows) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "secret");
  fs::permissions(folder / "file", fs::perms::none);
  fs::permissions(folder.Path(), fs::perms::owner_all | fs::perms::others_exec);
  const int result = InChild([&] {
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 && setuid(Nobody) != 0) _exit(4);
    ReadWholeFile(folder / "file", 100);
  });
  EXPECT_EQ(result, Refused);
}

}  // namespace
}  // namespace kestrel::base

#endif
