#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "tape/format.h"
#include "tape/reader.h"

namespace kestrel::tapeinfo {

/// The smallest and the largest of some numbers.
struct Span {
  std::uint32_t Least = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t Most = 0;
  void Add(std::uint32_t value);
};

/// A player of the session.
struct Player {
  std::int16_t Id = 0;
  std::string Name;  ///< as recorded, in the code page
  double First = 0;  ///< time of the first record with him, days since 1899-12-30
  double Last = 0;   ///< time of the last one
  std::uint64_t Records = 0;
};

/// What a tape holds, from its header and all whole records from the first on.
struct Survey {
  tape::TapeHeader Header;
  std::uint64_t FileBytes = 0;  ///< when the last record was looked for: the tape may be growing
  std::uint64_t WholeRecords = 0;
  std::uint64_t WholeBytes = tape::FirstRecordAt;  ///< where the last whole record ends
  double FirstTime = 0;                            ///< the first record's
  double LastTime = 0;                             ///< the last one's
  Span Players;                                    ///< in a record
  Span AIAircraft;                                 ///< in a record
  std::uint64_t TimeBytes = 0;
  std::uint64_t AIBytes = 0;
  std::uint64_t ClientBytes = 0;  ///< without histories
  std::uint64_t HistoryBytes = 0;
  std::vector<Player> Roster;  ///< in the order of their coming
  std::string Stopped;         ///< why the record behind the last whole one cannot be read; empty at the file's end

  /// A file may have become shorter than what was read of it.
  std::uint64_t BehindRecords() const { return WholeBytes >= FileBytes ? 0 : FileBytes - WholeBytes; }
  /// The count is that of the records and nothing stands behind them.
  bool IsWhole() const;
};

/// Looks through a tape, one record at a time. tape::WrongFormat or base::RuntimeFailure when it is no tape.
Survey LookThrough(const std::filesystem::path& file);

/// The survey as lines of text.
std::string Report(const Survey& survey);

}  // namespace kestrel::tapeinfo
