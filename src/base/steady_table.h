#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

#include "base/table.h"

namespace kestrel::base {

/// A Table from which large elements are taken one by one: taking one out moves no other. The elements stand in places;
/// a list of the places, in ascending order, says which element is at which index. The gaps that are left are closed
/// when they outnumber the elements, so that each taking out costs the same, but for the shift of the list: 4 bytes for
/// each element behind.
template <class T>
class SteadyTable {
 public:
  using value_type = T;
  /// Gaps that are left open however few elements there are.
  static constexpr std::size_t FreeGaps = 1024;

  SteadyTable() : SteadyTable(Table<T>()) {}
  /// The elements of `table` with its dummy; none is moved.
  SteadyTable(Table<T> table) : store(std::move(table).Release()) { Number(); }

  std::size_t UpperBound() const { return places.size() - 1; }
  bool Empty() const { return places.size() == 1; }

  /// Any index from 0 to UpperBound(); one past it is a programming error (checked by the library).
  T& operator[](std::size_t index) { return store[places[index]]; }
  const T& operator[](std::size_t index) const { return store[places[index]]; }

  /// Adds an element at the end; returns it. References to other elements end here.
  T& Append(T item) {
    places.push_back(static_cast<std::uint32_t>(store.size()));
    store.push_back(std::move(item));
    return store.back();
  }

  /// Takes out the element at `index` (1..UpperBound()); the order of the rest is kept. True when the gaps have been
  /// closed: the elements have moved, and their places are others.
  bool Remove(std::size_t index) {
    store[places[index]] = T();
    places.erase(places.begin() + static_cast<std::ptrdiff_t>(index));
    if (Gaps() <= places.size() + FreeGaps) return false;
    CloseGaps();
    return true;
  }

  /// Empties the table; the dummy becomes new as well. The memory is kept for the next filling.
  void Clear() {
    store.clear();
    store.emplace_back();
    Number();
  }

  /// The place of the element at `index`: the same until the gaps are closed. That of the dummy is 0.
  std::size_t PlaceOf(std::size_t index) const { return places[index]; }

  /// The index of the element in `place`, which holds one.
  std::size_t IndexAt(std::size_t place) const {
    // An element stands behind its index by the gaps in front of it, and there are not more than all.
    if (place < places.size() && places[place] == place) return place;
    const auto at = [this](std::size_t index) { return places.begin() + static_cast<std::ptrdiff_t>(index); };
    const std::size_t first = place > Gaps() ? place - Gaps() : 0;
    const auto last = at(place < places.size() ? place : places.size());
    return static_cast<std::size_t>(std::lower_bound(at(first), last, place) - places.begin());
  }

  template <class Item, class Store>
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Item*;
    using reference = Item&;

    Iterator() = default;
    Iterator(Store* elements, const std::uint32_t* at) : store(elements), place(at) {}
    Item& operator*() const { return (*store)[*place]; }
    Item* operator->() const { return &**this; }
    Iterator& operator++() {
      ++place;
      return *this;
    }
    Iterator operator++(int) {
      Iterator before = *this;
      ++place;
      return before;
    }
    bool operator==(const Iterator&) const = default;

   private:
    Store* store = nullptr;
    const std::uint32_t* place = nullptr;
  };

  /// Elements one after another, for walking.
  template <class Item, class Store>
  class Range {
   public:
    using value_type = T;
    using iterator = Iterator<Item, Store>;
    using const_iterator = iterator;
    Range(Store& elements, const std::vector<std::uint32_t>& places, std::size_t from)
        : first(&elements, places.data() + from), behind(&elements, places.data() + places.size()) {}
    iterator begin() const { return first; }
    iterator end() const { return behind; }
    bool empty() const { return first == behind; }
    std::size_t size() const { return static_cast<std::size_t>(std::distance(first, behind)); }

   private:
    iterator first;
    iterator behind;
  };

  /// The elements 1..UpperBound(), for walking.
  auto Live() { return Range<T, std::vector<T>>(store, places, 1); }
  auto Live() const { return Range<const T, const std::vector<T>>(store, places, 1); }
  /// All with the dummy.
  auto Slots() { return Range<T, std::vector<T>>(store, places, 0); }
  auto Slots() const { return Range<const T, const std::vector<T>>(store, places, 0); }

 private:
  std::size_t Gaps() const { return store.size() - places.size(); }

  /// Gives every element of the store, which has no gaps, its place.
  void Number() {
    places.resize(store.size());
    std::iota(places.begin(), places.end(), 0U);
  }

  void CloseGaps() {
    for (std::size_t index = 0; index < places.size(); ++index) {
      if (places[index] != index) store[index] = std::move(store[places[index]]);
    }
    store.resize(places.size());
    Number();
  }

  std::vector<T> store;               ///< with gaps, which are new elements
  std::vector<std::uint32_t> places;  ///< in `store`, by index, ascending; 0 first
};

}  // namespace kestrel::base
