#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
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
  void Write(std::string_view line) { WritePieces({line}); }
  /// A line of pieces, one behind the other.
  void WritePieces(std::initializer_list<std::string_view> pieces);

 private:
  struct Closer {
    void operator()(std::FILE* open) const;
  };
  std::unique_ptr<std::FILE, Closer> file;
  std::string written;  ///< the last line; its memory is kept for the next
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
  /// The same with the word of a message: the time, " : ", `text`, "(", `Command`, ")", `Data`.
  void LogMessage(std::string_view text, std::string_view Command, std::string_view Data);
  /// `what`, then " in <n> ms": the milliseconds since `start`, a reading of the tick count.
  void LogDuration(std::string_view what, std::uint32_t start);
  const Clock& Time() const { return clock; }

 private:
  /// The present time as the lines tell it.
  std::string_view Now();

  const Clock& clock;
  bool begun = false;  ///< it has been open in this run
  double shownTime = std::numeric_limits<double>::quiet_NaN();
  std::string timeText;  ///< of shownTime: hundreds of lines come in one second
};

}  // namespace kestrel::base
