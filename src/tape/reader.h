#pragma once

#include <cstdint>
#include <filesystem>

#include "base/positioned_file.h"
#include "base/record.h"
#include "base/record_stream.h"
#include "tape/format.h"

namespace kestrel::tape {

/// What a record holds, found without reading its histories.
struct RecordShape {
  std::uint64_t Position = 0;      ///< where its first byte stands in the file
  std::uint64_t Next = 0;          ///< where the next record stands, behind it
  double Time = 0;                 ///< days since 1899-12-30
  std::uint32_t AIPlots = 0;       ///< without slot 0
  std::uint32_t Clients = 0;       ///< without slot 0
  std::uint64_t AIBytes = 0;       ///< the array with its descriptor
  std::uint64_t ClientBytes = 0;   ///< the array with its descriptor, without the histories
  std::uint64_t HistoryBytes = 0;  ///< the histories with their descriptors
};

/// Reads a tape one record at a time; the file is never held whole, and its positions have 64 bits. Whatever the bytes
/// say, no more memory is taken than the file has bytes for, and no more than MaxRecordBytes allow. The caller keeps
/// the index: Skip from FirstRecordAt on, as often as the header counts.
class TapeReader {
 public:
  using Histories = base::FieldReader::Blocks;

  /// WrongFormat when the file does not begin with Magic; RuntimeFailure when it cannot be opened or ends within the
  /// header.
  explicit TapeReader(const std::filesystem::path& path);

  /// As it was when the tape was opened or ReadHeader last called.
  const TapeHeader& Header() const { return header; }
  /// Reads the header again from offset 9 on. RuntimeFailure when it is gone.
  const TapeHeader& ReadHeader();
  /// RuntimeFailure when the header's RecordCount is negative or more than the file could hold: to be called before
  /// memory is taken for that many.
  void CheckRecordCount() const;

  // Each of these takes the position of a record's first byte, and throws RuntimeFailure for a record that is cut, too
  // large or not built as a record is.

  /// Steps over the record, histories unread.
  RecordShape Skip(std::uint64_t position);
  /// The whole record. With StepOver each History is empty.
  TapeRecord ReadRecord(std::uint64_t position, Histories histories = Histories::Read);
  /// Its Time alone.
  double ReadTime(std::uint64_t position);

  /// Bytes in the file now.
  std::uint64_t Size() const { return file.Size(); }
  const base::PositionedFile& File() const { return file; }

 private:
  base::PositionedFile file;
  base::RecordStream stream{"tape"};
  TapeHeader header;
};

}  // namespace kestrel::tape
