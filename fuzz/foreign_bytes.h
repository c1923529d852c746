#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/failure.h"

namespace kestrel::fuzz {

/// Cuts the input of a target into what stands for several files.
class ForeignBytes {
 public:
  ForeignBytes(const std::uint8_t* data, std::size_t size) : left(reinterpret_cast<const char*>(data), size) {}

  std::uint8_t Byte() {
    if (left.empty()) return 0;
    const auto value = static_cast<std::uint8_t>(left[0]);
    left.remove_prefix(1);
    return value;
  }
  /// The bytes of a file with its length, 16 bits, before them; the last one takes what there is.
  std::string_view File() {
    const std::size_t low = Byte(), length = low | std::size_t{Byte()} << 8;
    const std::string_view file = left.substr(0, length);
    left.remove_prefix(file.size());
    return file;
  }
  std::string_view Rest() const { return left; }

 private:
  std::string_view left;
};

/// Does what may be refused.
template <class Work>
void Try(const Work& work) {
  try {
    work();
  } catch (const base::RuntimeFailure&) {
  }
}

}  // namespace kestrel::fuzz
