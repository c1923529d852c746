#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/failure.h"
#include "link/line_protocol.h"

namespace kestrel::link {

/// The first `Count` fields of a message's data; what follows them is ignored. RuntimeFailure when there are fewer.
template <std::size_t Count>
std::array<std::string_view, Count> FirstFields(std::string_view Data) {
  std::array<std::string_view, Count> fields;
  for (std::size_t i = 0; i < Count; ++i) {
    const std::size_t end = Data.find(FieldSeparator);
    fields[i] = Data.substr(0, end);
    if (end == std::string_view::npos) {
      if (i + 1 < Count) throw base::RuntimeFailure("too few fields");
      break;
    }
    Data.remove_prefix(end + 1);
  }
  return fields;
}

}  // namespace kestrel::link
