#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "base/record.h"
#include "link/tables.h"
#include "tape/format.h"

namespace kestrel::tape {

/// Builds the bytes of header and records. Histories, unless short, are not copied but stand among the pieces as the
/// memory of their tables.
class RecordWriter {
 public:
  /// The bytes of a whole header with its magic.
  std::string_view Header(const TapeHeader& header);
  /// The bytes of one record, piece behind piece; good until the next call or a change of `tables`.
  std::span<std::span<const std::byte>> Record(double time, const link::Tables& tables);

 private:
  base::FieldWriter fields;
};

}  // namespace kestrel::tape
