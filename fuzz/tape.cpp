// A tape from a stranger: each record is stepped over and read alike, or refused with RuntimeFailure; what was read is
// written and read again.
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/failure.h"
#include "tape/reader.h"
#include "tape/record_writer.h"

namespace {

using namespace kestrel;

/// A file in memory that is opened by its name.
class MemoryFile {
 public:
  MemoryFile() : descriptor(memfd_create("tape", 0)) {}
  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
  void Fill(const void* bytes, std::size_t count) const {
    if (ftruncate(descriptor, 0) != 0 || pwrite(descriptor, bytes, count, 0) != static_cast<ssize_t>(count)) {
      std::abort();
    }
  }

 private:
  int descriptor;
};

template <class Work>
auto Tried(Work work) -> std::optional<decltype(work())> {
  try {
    return work();
  } catch (const base::RuntimeFailure&) {
    return std::nullopt;
  }
}

std::string Written(const tape::TapeRecord& record) {
  link::Tables tables;
  tables.AIPlots = record.AI;
  tables.Clients = record.Clients;
  tape::RecordWriter writer;
  std::string bytes;
  for (const auto& piece : writer.Record(record.Time, tables)) {
    bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  }
  return bytes;
}

/// What was read is written and read again: the same bytes come out.
void CheckRewritten(const tape::TapeRecord& record) {
  static const MemoryFile copy;
  tape::RecordWriter writer;
  const std::string once = Written(record);
  const std::string whole = std::string(writer.Header({})) + once;
  copy.Fill(whole.data(), whole.size());
  tape::TapeReader reader(copy.Path());
  if (reader.Skip(tape::FirstRecordAt).Next != whole.size()) std::abort();
  if (Written(reader.ReadRecord(tape::FirstRecordAt)) != once) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile file;
  file.Fill(data, size);
  std::optional<tape::TapeReader> reader = Tried([] { return tape::TapeReader(file.Path()); });
  if (!reader) return 0;
  Tried([&] { return reader->CheckRecordCount(), 0; });
  // Whatever the count tells: as tape-info looks through a tape.
  for (std::uint64_t at = tape::FirstRecordAt; at < size;) {
    const auto shape = Tried([&] { return reader->Skip(at); });
    const auto record = Tried([&] { return reader->ReadRecord(at); });
    const auto bare = Tried([&] { return reader->ReadRecord(at, tape::TapeReader::Histories::StepOver); });
    if (shape.has_value() != record.has_value() || bare.has_value() != record.has_value()) std::abort();
    if (!shape) break;
    if (shape->Next <= at || shape->Next > size || shape->AIPlots != record->AI.UpperBound() ||
        shape->Clients != record->Clients.UpperBound()) {
      std::abort();
    }
    CheckRewritten(*record);
    at = shape->Next;
  }
  return 0;
}
