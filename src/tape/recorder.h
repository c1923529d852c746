#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>

#include "base/positioned_file.h"
#include "link/tables.h"
#include "tape/format.h"
#include "tape/record_writer.h"

namespace kestrel::tape {

/// The name of a tape begun at `now` (days since 1899-12-30): "Dd-Mm-YY_HhNnSs" and ".tap".
std::string TapeFileName(double now);

/// Writes a tape: one record for each ComputeRecData, which is with the system when the call returns, so that a killed
/// process loses at most the record being written. A failure is thrown once; the tape is closed by then with the whole
/// records that it has, and Recording() is false.
class Recorder {
 public:
  bool Recording() const { return file.IsOpen(); }

  /// Makes `folder` when missing and in it the tape named for `now`, over one of that name, and writes the header with
  /// a count of 0. `start`: its RecordCount and StartTime are not looked at. RuntimeFailure when that fails; no tape is
  /// left then. Call only while not Recording().
  void RecordingStart(const std::filesystem::path& folder, double now, const TapeHeader& start);

  /// Appends the tables as they are, at the time `now`; `SyncInterval` is the present cycle. On RuntimeFailure a record
  /// written in part is cut off and the tape closed with `SyncInterval`. Nothing while not Recording().
  void ComputeRecData(const link::Tables& tables, double now, std::int32_t SyncInterval);

  /// Writes the count and `SyncInterval` (milliseconds) into the header and closes. RuntimeFailure when that fails; the
  /// tape is closed all the same. Nothing while not Recording().
  void RecordingEnd(std::int32_t SyncInterval);

  // Of the present tape, or of the last one.
  const std::filesystem::path& Path() const { return path; }
  std::int32_t RecordCount() const { return count; }
  std::uint64_t Bytes() const { return size; }
  /// The tape is closed and its header tells its records. A tape with records of which it does not reads as empty.
  bool CountWritten() const { return countWritten; }

  /// Minutes until `freeBytes` are used up, at the size of the last record, a position more for each of its clients in
  /// each that follows, and the cycle of the last minute or so. Nothing before ten records that have a cycle: the first
  /// ones tell little.
  std::optional<double> MinutesLeft(std::uint64_t freeBytes) const;

 private:
  void CloseAfterFailure(std::int32_t SyncInterval);

  base::PositionedFile file;
  std::filesystem::path path;
  RecordWriter writer;
  std::int32_t count = 0;
  std::uint64_t size = 0;
  bool countWritten = false;
  std::uint64_t lastBytes = 0;      ///< the size of the last record
  std::size_t lastClients = 0;      ///< in the last record
  std::deque<std::int32_t> cycles;  ///< milliseconds, of the latest records that have a cycle, oldest first
};

}  // namespace kestrel::tape
