#include "link/name_order.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace kestrel::link {
namespace {

constexpr std::size_t KeyLength = 10;

/// A name of up to 10 bytes as two numbers that compare as the name does: the bytes with NULs behind, then the length.
struct ShortKey {
  std::uint64_t Head;
  std::uint32_t Tail;
  std::uint32_t Position;
  friend bool operator<(const ShortKey& a, const ShortKey& b) {
    return a.Head != b.Head ? a.Head < b.Head : a.Tail < b.Tail;
  }
};

/// Any name.
struct LongKey {
  std::string_view Name;
  std::uint32_t Position;
  friend bool operator<(const LongKey& a, const LongKey& b) { return a.Name < b.Name; }
};

ShortKey MakeShortKey(std::string_view name, std::uint32_t position) {
  const auto byte = [name](std::size_t i) {
    return i < name.size() ? static_cast<std::uint32_t>(static_cast<unsigned char>(name[i])) : 0U;
  };
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < 8; ++i) head = head << 8 | byte(i);
  return {head, byte(8) << 16 | byte(9) << 8 | static_cast<std::uint32_t>(name.size()), position};
}

/// Sorts keys[low..high], both included, whose positions are counted from `base` when the middle is taken. False when
/// `steps` have been used up; the keys are then in no particular order.
template <class Key>
bool PartitionExchange(std::vector<Key>& keys, std::ptrdiff_t low, std::ptrdiff_t high, std::ptrdiff_t base,
                       std::int64_t& steps) {
  while (low < high) {
    steps -= high - low;
    if (steps < 0) return false;
    const Key pivot = keys[static_cast<std::size_t>((low + high + 2 * base) / 2 - base)];
    std::ptrdiff_t i = low;
    std::ptrdiff_t j = high;
    Key* const all = keys.data();  // the pivot bounds both scans: no checked access in the dearest loop
    while (i <= j) {
      while (all[i] < pivot) ++i;
      while (pivot < all[j]) --j;
      if (i <= j) std::swap(all[i++], all[j--]);
    }
    // The two parts do not touch each other, so their order is free: recursing into the smaller bounds the depth.
    if (j - low < high - i) {
      if (!PartitionExchange(keys, low, j, base, steps)) return false;
      low = i;
    } else {
      if (!PartitionExchange(keys, i, high, base, steps)) return false;
      high = j;
    }
  }
  return true;
}

template <class Key>
std::vector<std::uint32_t> Order(std::vector<Key> keys, std::size_t Low) {
  const auto count = static_cast<std::int64_t>(keys.size());
  // A random order needs about 1.4 n log2 n steps; names made to be slow need n * n / 4.
  std::int64_t steps = 16 * count * std::bit_width(keys.size());
  if (!PartitionExchange(keys, 0, count - 1, static_cast<std::ptrdiff_t>(Low), steps)) {
    std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
      if (a < b) return true;
      return !(b < a) && a.Position < b.Position;
    });
  }
  std::vector<std::uint32_t> order;
  order.reserve(keys.size());
  for (const Key& key : keys) order.push_back(key.Position);
  return order;
}

}  // namespace

std::vector<std::uint32_t> NameOrder(std::span<const std::string_view> names, std::size_t Low) {
  const bool allShort =
      std::all_of(names.begin(), names.end(), [](std::string_view name) { return name.size() <= KeyLength; });
  if (allShort) {
    std::vector<ShortKey> keys;
    keys.reserve(names.size());
    for (const std::string_view name : names)
      keys.push_back(MakeShortKey(name, static_cast<std::uint32_t>(keys.size())));
    return Order(std::move(keys), Low);
  }
  std::vector<LongKey> keys;
  keys.reserve(names.size());
  for (const std::string_view name : names) keys.push_back({name, static_cast<std::uint32_t>(keys.size())});
  return Order(std::move(keys), Low);
}

}  // namespace kestrel::link
