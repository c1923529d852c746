#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

#include "base/clock.h"

namespace kestrel::base {

/// A text file that lines are added to and that survives a crash up to its last line. Used for the log and for the raw
/// capture. When the disk refuses a line, the file is closed and lines go nowhere: the session is worth more.
class LineFile {
 public:
  /// Creates or truncates the file; with `goOn`, lines are added to those that it has. RuntimeFailure when that fails.
  void Open(const std::filesystem::path& path, bool goOn = false);
  void Close();
  bool IsOpen() const { return file != nullptr; }
  /// Writes `line` as it stands, with CR LF, and hands it to the system.
  void Write(std::string_view line);

 private:
  struct Closer {
    void operator()(std::FILE* open) const;
  };
  std::unique_ptr<std::FILE, Closer> file;
};

/// The log "KESTRELLog.txt": open when `DebugLog` is set.
class DebugLog {
 public:
  explicit DebugLog(const Clock& time) : clock(time) {}
  LineFile File;
  /// Empties the file the first time; what this run has written before stays. RuntimeFailure when it cannot be made.
  void Open(const std::filesystem::path& path);
  bool On() const { return File.IsOpen(); }
  /// `text` alone on a line. Nothing when the log is off.
  void LogLine(std::string_view text);
  /// The time as "Hh:Nn:Ss", " : ", then `text`, `text2`.
  void LogTimed(std::string_view text, std::string_view text2 = {});
  /// `what`, then " in <n> ms": the milliseconds since `start`, a reading of the tick count.
  void LogDuration(std::string_view what, std::uint32_t start);
  const Clock& Time() const { return clock; }

 private:
  const Clock& clock;
  bool begun = false;  ///< it has been open in this run
};

}  // namespace kestrel::base
