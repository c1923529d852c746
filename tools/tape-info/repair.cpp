#include "tape-info/repair.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/positioned_file.h"

namespace kestrel::tapeinfo {
namespace {

constexpr std::size_t ChunkBytes = 1 << 20;

void CopyBytes(const base::PositionedFile& from, base::PositionedFile& to, std::uint64_t count) {
  std::vector<std::byte> chunk(ChunkBytes);
  for (std::uint64_t at = 0; at < count;) {
    const std::span<std::byte> part = std::span(chunk).first(std::min<std::uint64_t>(ChunkBytes, count - at));
    if (from.Read(at, part) != part.size()) throw base::RuntimeFailure("the tape has become shorter");
    to.Write(at, part);
    at += part.size();
  }
}

}  // namespace

void Repair(const std::filesystem::path& file, const Survey& survey, const std::filesystem::path& copy) {
  using base::PositionedFile;
  if (survey.WholeRecords == 0) throw base::RuntimeFailure("there is no whole record to be saved");
  if (survey.WholeRecords > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) {
    throw base::RuntimeFailure("there are more records than a tape can count");
  }
  const PositionedFile from(file, PositionedFile::Mode::Read);
  PositionedFile to(copy, PositionedFile::Mode::Create);
  try {
    CopyBytes(from, to, survey.WholeBytes);
    base::BinaryWriter count;
    count.I32(static_cast<std::int32_t>(survey.WholeRecords));
    to.Write(tape::RecordCountAt, std::as_bytes(std::span(count.Bytes())));
    to.Close();
  } catch (...) {
    to = {};
    base::DeleteFile(copy);
    throw;
  }
}

}  // namespace kestrel::tapeinfo
