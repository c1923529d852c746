#include "link/capture.h"

#include <string>

namespace kestrel::link {

void Capture::Open(const std::filesystem::path& path) {
  file.Open(path);
  file.Write("--------->>>>>> Debug Started at " + base::TimeText(clock.Now()) + "<<<<<<---------");
}

void Capture::Arrival(std::string_view raw) {
  if (!IsOpen()) return;
  std::string line = base::TimeText(clock.Now());
  line += '|';
  line += raw;
  file.Write(line);
}

void Capture::Close() {
  if (!IsOpen()) return;
  file.Write("--------->>>>>> Debug ended at " + base::TimeText(clock.Now()) + "<<<<<<---------");
  file.Close();
}

}  // namespace kestrel::link
