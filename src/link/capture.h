#pragma once

#include <filesystem>
#include <string_view>

#include "base/clock.h"
#include "base/debug_log.h"

namespace kestrel::link {

/// The raw capture "debug_out.dat": each arrival as it came, on a line after the time and "|".
class Capture {
 public:
  explicit Capture(const base::Clock& time) : clock(time) {}
  /// Truncates the file and writes the opening line. RuntimeFailure when the file cannot be made.
  void Open(const std::filesystem::path& path);
  void Arrival(std::string_view raw);
  /// Writes the closing line and closes; nothing when not open.
  void Close();
  bool IsOpen() const { return file.IsOpen(); }

 private:
  const base::Clock& clock;
  base::LineFile file;
};

}  // namespace kestrel::link
