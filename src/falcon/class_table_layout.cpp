#include "falcon/class_table_layout.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/bytes.h"
#include "falcon/object_tables.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t FirstInfo = 4, LastInfo = 16;
constexpr std::size_t InfoBytes = 8;
constexpr std::size_t ModelBytes = 16;  // with the index of the mover behind them
constexpr std::size_t LeastObjectives = 100;

using FieldRecords = std::vector<std::string_view>;

std::uint8_t ByteOf(std::string_view record, std::size_t at) { return static_cast<std::uint8_t>(record[at]); }

/// The records that are of a class, as far as its byte stands at `at`.
FieldRecords OfClass(const FieldRecords& records, std::size_t at, std::uint8_t code) {
  FieldRecords found;
  std::copy_if(records.begin(), records.end(), std::back_inserter(found),
               [&](std::string_view record) { return ByteOf(record, at) == code; });
  return found;
}

/// Whether 99 % of the records have that kind of data in the byte at `at`.
bool HaveKind(const FieldRecords& records, std::size_t at, DataKind kind) {
  std::size_t others = 0;
  for (const std::string_view record : records) {
    if (ByteOf(record, at) != static_cast<std::uint8_t>(kind) && ++others * 100 > records.size()) return false;
  }
  return true;
}

/// Whether the numbers at `at` are distinct and cover 1 to the number of records, but for 1 % and few gaps.
bool AreIndices(const FieldRecords& records, std::size_t at) {
  const std::size_t gaps = std::max<std::size_t>(4, records.size() / 50);
  std::vector<bool> seen(records.size() + gaps + 1);
  std::size_t others = 0;
  for (const std::string_view record : records) {
    const std::int64_t index = base::BinaryReader(record.substr(at)).I16();
    const bool fits = index >= 1 && index < static_cast<std::int64_t>(seen.size());
    if (fits && !seen[static_cast<std::size_t>(index)]) {
      seen[static_cast<std::size_t>(index)] = true;
    } else if (++others * 100 > records.size()) {
      return false;
    }
  }
  return true;
}

/// Where the kind of data stands for class information at `info` and the index at `index`: the nearest byte before that
/// which tells objectives and, where there are enough of them, features.
std::optional<std::size_t> FindKind(const FieldRecords& objectives, const FieldRecords& features, std::size_t info,
                                    std::size_t index) {
  for (std::size_t at = index; at-- > info + InfoBytes + ModelBytes;) {
    if (!HaveKind(objectives, at, DataKind::Objective)) continue;
    if (features.size() < LeastObjectives || HaveKind(features, at, DataKind::Feature)) return at;
  }
  return std::nullopt;
}

}  // namespace

std::optional<ClassTableLayout> FindClassTableLayout(std::string_view bytes, std::size_t stride) {
  FieldRecords records;
  for (std::size_t at = 0; at + stride <= bytes.size(); at += stride) records.push_back(bytes.substr(at, stride));
  for (std::size_t info = FirstInfo; info <= LastInfo && info + InfoBytes <= stride; ++info) {
    const FieldRecords objectives = OfClass(records, info + 1, ObjectiveClassCode);
    if (objectives.size() < LeastObjectives) continue;
    const FieldRecords features = OfClass(records, info + 1, FeatureClassCode);
    // From behind: of the rows of numbers that would do, the index is the last field known.
    for (std::size_t index = stride - 1; index-- > info + InfoBytes;) {
      if (!AreIndices(objectives, index)) continue;
      const std::optional<std::size_t> kind = FindKind(objectives, features, info, index);
      if (kind) return ClassTableLayout{stride, info, *kind, index};
    }
  }
  return std::nullopt;
}

}  // namespace kestrel::falcon
