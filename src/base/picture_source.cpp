#include "base/picture_source.h"

#include <algorithm>

namespace kestrel::base {
namespace {

constexpr std::size_t HeldBytes = std::size_t{64} << 10;

}  // namespace

std::size_t PictureSource::Read(std::uint64_t position, std::span<std::byte> into) const {
  if (position >= size) return 0;
  into = into.first(static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), size - position)));
  if (file == nullptr) {
    std::ranges::copy(std::as_bytes(std::span(memory)).subspan(static_cast<std::size_t>(position), into.size()),
                      into.begin());
    return into.size();
  }
  if (into.size() >= HeldBytes) return file->Read(position, into);
  std::size_t count = 0;
  while (count < into.size()) {
    const std::uint64_t from = position + count;
    if (from < heldFrom || from - heldFrom >= held.size()) {
      held.resize(HeldBytes);
      // Nothing is held when the reading throws.
      heldFrom = size;
      held.resize(file->Read(from, held));
      heldFrom = from;
      if (held.empty()) break;
    }
    const auto there = std::span(held).subspan(static_cast<std::size_t>(from - heldFrom));
    const auto taken = there.first(std::min(there.size(), into.size() - count));
    std::ranges::copy(taken, into.begin() + static_cast<std::ptrdiff_t>(count));
    count += taken.size();
  }
  return count;
}

}  // namespace kestrel::base
