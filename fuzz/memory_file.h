#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

namespace kestrel::fuzz {

/// A file in memory that is opened by its name.
class MemoryFile {
 public:
  MemoryFile() : descriptor(memfd_create("file", 0)) {}
  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
  void Fill(std::string_view bytes) const {
    if (ftruncate(descriptor, 0) != 0 ||
        pwrite(descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
      std::abort();
    }
  }

 private:
  int descriptor;
};

}  // namespace kestrel::fuzz
