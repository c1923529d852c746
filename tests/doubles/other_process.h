#pragma once

#ifndef _WIN32
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

// What is done in another process of this test, which may be killed.
namespace kestrel::doubles {

/// The exit code that `work` gives there, or -1 when it ended otherwise.
template <class Work>
int ExitCode(Work work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Has `once` and `again` done there by turns, without an end, and kills it at any moment within `most` after the first
/// `once`.
template <class Once, class Again>
void KillDuring(Once once, Again again, std::chrono::microseconds most) {
  static std::mt19937 random{std::random_device()()};
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    for (bool first = true;; first = false) {
      once();
      if (first && write(ends[1], "s", 1) != 1) _exit(1);
      again();
    }
  }
  char started = 0;
  EXPECT_EQ(read(ends[0], &started, 1), 1);
  std::this_thread::sleep_for(std::chrono::microseconds(random() % static_cast<unsigned>(most.count())));
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  close(ends[0]);
  close(ends[1]);
}

}  // namespace kestrel::doubles
#endif
