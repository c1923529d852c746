#pragma once

#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>

namespace kestrel::doubles {

/// While it lives no file of this process grows beyond `room` bytes.
class FullDisk {
 public:
  explicit FullDisk(rlim_t room) : handler(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit limit{room, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &former);
    signal(SIGXFSZ, handler);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit former{};
  void (*handler)(int);
};

}  // namespace kestrel::doubles
#endif
