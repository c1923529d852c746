#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace kestrel::base {

/// An array used from 1 with a dummy in slot 0; an upper bound of 0 means empty. Tapes write slot 0 like the others,
/// and updates for unknown Ids land there, so the dummy is a real element that can be read and written.
template <class T>
class Table {
 public:
  using value_type = T;

  Table() : slots(1) {}

  /// The index of the last element, 0 when empty.
  std::size_t UpperBound() const { return slots.size() - 1; }
  bool Empty() const { return slots.size() == 1; }

  /// Any slot from 0 to UpperBound(); an index past it is a programming error (checked by the library).
  T& operator[](std::size_t index) { return slots[index]; }
  const T& operator[](std::size_t index) const { return slots[index]; }

  /// Adds an element at the end; returns it. References to other elements end here.
  T& Append(T item) {
    slots.push_back(std::move(item));
    return slots.back();
  }

  /// Takes out the element at `index` (1..UpperBound()); the order of the rest is kept.
  void Remove(std::size_t index) { slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(index)); }

  /// Takes the element at `from` and puts it in so that it stands at `to` (both 1..UpperBound()); those between them
  /// shift by one, and the order of the rest is kept.
  void Move(std::size_t from, std::size_t to) {
    const auto at = [this](std::size_t index) { return slots.begin() + static_cast<std::ptrdiff_t>(index); };
    if (from < to) {
      std::rotate(at(from), at(from + 1), at(to + 1));
    } else {
      std::rotate(at(to), at(from), at(from + 1));
    }
  }

  /// Empties the table; the dummy becomes new as well. The memory is kept for the next filling.
  void Clear() {
    slots.clear();
    slots.emplace_back();
  }

  /// Elements are added or taken at the end until the last index is `upperBound`.
  void Resize(std::size_t upperBound) { slots.resize(upperBound + 1); }

  void Reserve(std::size_t upperBound) { slots.reserve(upperBound + 1); }

  /// Hands over all slots with the dummy; the table is not used afterwards.
  std::vector<T> Release() && { return std::move(slots); }

  /// The elements 1..UpperBound(), for walking.
  std::span<T> Live() { return std::span(slots).subspan(1); }
  std::span<const T> Live() const { return std::span(slots).subspan(1); }

  /// All slots with the dummy.
  std::span<T> Slots() { return slots; }
  std::span<const T> Slots() const { return slots; }

 private:
  std::vector<T> slots;
};

}  // namespace kestrel::base
