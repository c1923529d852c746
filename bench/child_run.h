#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "timing.h"

// A program as a whole: what it takes from its start to its end.
namespace kestrel::bench {

struct Cost {
  double Milliseconds = 0;
  double MiB = 0;  ///< the most memory that it has held
};

/// Runs `command`, a path and its arguments, to its end; the bench ends when that fails.
inline Cost RunOnce(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
  arguments.push_back(nullptr);
  int status = 0;
  rusage usage{};
  const double time = Milliseconds([&] {
    const pid_t child = fork();
    if (child == 0) {
      execv(arguments[0], arguments.data());
      _exit(127);
    }
    wait4(child, &status, 0, &usage);
  });
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    for (const std::string& part : command) std::fprintf(stderr, "%s ", part.c_str());
    std::fprintf(stderr, "failed\n");
    std::exit(1);
  }
  return {time, static_cast<double>(usage.ru_maxrss) / 1024};
}

}  // namespace kestrel::bench
