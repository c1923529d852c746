#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/table.h"
#include "link/tables.h"
#include "tape/format.h"

namespace kestrel::tape {

/// Builds the bytes of header and records. Small fields are gathered in a buffer that is kept from record to record;
/// histories, unless short, are not copied but stand among the pieces as the memory of their tables.
class RecordWriter {
 public:
  /// The bytes of a whole header with its magic.
  std::string_view Header(const TapeHeader& header);
  /// The bytes of one record, piece behind piece; good until the next call or a change of `tables`.
  std::span<std::span<const std::byte>> Record(double time, const link::Tables& tables);

  // What the description of the fields calls.
  void Number(std::uint8_t value) { small.U8(value); }
  void Number(std::int16_t value) { small.I16(value); }
  void Number(std::int32_t value) { small.I32(value); }
  void Number(std::uint32_t value) { small.U32(value); }
  void Number(float value) { small.F32(value); }
  void Number(double value) { small.F64(value); }
  void Flag(bool value) { small.I16(value ? -1 : 0); }
  /// A text longer than its 16-bit length can tell is cut.
  void Text(std::string_view text);
  void Points(const base::Table<link::PlotPoint>& history);
  template <class Table, class Fields>
  void Array(const Table& table, Fields fields) {
    Descriptor(table.UpperBound() + 1);
    for (const auto& element : table.Slots()) fields(*this, element);
  }

 private:
  /// History bytes stand behind the first SmallBytes bytes of the buffer.
  struct Inserted {
    std::size_t SmallBytes = 0;
    std::span<const std::byte> History;
  };

  void Descriptor(std::size_t elements);

  base::BinaryWriter small;
  std::vector<Inserted> histories;
  std::vector<std::span<const std::byte>> pieces;
};

}  // namespace kestrel::tape
