#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/temp_folder.h"
#include "tape/golden_tape.h"
#include "tape/reader.h"

// A tape of the golden writer to read and to damage.
namespace kestrel::test {

inline constexpr double Start = 46347.25;

/// A new file each time: some file systems bring one that is written over to the disk when it is closed.
inline void Put(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::remove(path);
  WriteBytes(path, bytes);
}

/// A tape of some records with what it is made of.
struct Sample {
  explicit Sample(int records = 3) {
    Bytes = GoldenHeader(records, 1000, Start, 512.5, 300.25);
    for (int n = 0; n < records; ++n) {
      Positions.push_back(Bytes.size());
      Session.push_back(SampleTables(n, 2 - n % 3, 2 * n));
      Bytes += GoldenRecord(Start + n, Session.back());
    }
  }
  std::string Bytes;
  std::vector<std::uint64_t> Positions;
  std::vector<link::Tables> Session;
};

/// The bytes that the golden writer makes of a record.
inline std::string Written(const tape::TapeRecord& record) {
  link::Tables tables;
  tables.AIPlots = record.AI;
  tables.Clients = record.Clients;
  return GoldenRecord(record.Time, tables);
}

/// Reads a tape as the player does: count, index, then every record. How many there were.
inline int ReadAll(const std::filesystem::path& path) {
  tape::TapeReader reader(path);
  reader.CheckRecordCount();
  std::vector<std::uint64_t> positions;
  std::uint64_t at = tape::FirstRecordAt;
  for (int n = 0; n < reader.Header().RecordCount; ++n) {
    positions.push_back(at);
    at = reader.Skip(at).Next;
  }
  for (const std::uint64_t position : positions) reader.ReadRecord(position);
  return static_cast<int>(positions.size());
}

}  // namespace kestrel::test
