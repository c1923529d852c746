#pragma once

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "base/table.h"

// Changes of tables as data. Applying one gives the change that takes it back; what it holds is moved between the two
// and the table, never copied. All indexes are those of the table, from 1, and have to be there. `Group` tells which
// table where there are several of a kind.
namespace kestrel::base {

/// Something with its index in a table.
template <class T>
struct Placed {
  std::size_t At = 0;
  T Item = {};
};

/// Puts elements in, such that each then stands at its place; ascending.
template <class T>
struct Insert {
  using Record = T;
  std::size_t Group = 0;
  std::vector<Placed<T>> Items = {};
};

/// Takes the elements out that stand at these places; ascending.
template <class T>
struct Take {
  using Record = T;
  std::size_t Group = 0;
  std::vector<std::size_t> At = {};
};

/// Moves the element at `From` to `To`; those between shift by one.
template <class T>
struct Move {
  using Record = T;
  std::size_t Group = 0;
  std::size_t From = 0;
  std::size_t To = 0;
};

/// Puts an element in the place of another.
template <class T>
struct Replace {
  using Record = T;
  std::size_t Group = 0;
  Placed<T> New = {};
};

template <class T, class V>
T RecordOf(V T::*);
template <class T, class V>
V ValueOf(V T::*);

/// Gives a field of some elements other values; each element once.
template <auto Field>
struct Put {
  using Record = decltype(RecordOf(Field));
  using Value = decltype(ValueOf(Field));
  std::size_t Group = 0;
  std::vector<Placed<Value>> Values = {};
};

template <class T>
Take<T> Apply(Table<T>& table, Insert<T> insert) {
  Take<T> back{insert.Group, {}};
  back.At.reserve(insert.Items.size());
  for (const Placed<T>& placed : insert.Items) back.At.push_back(placed.At);

  std::size_t from = table.UpperBound();
  std::size_t left = insert.Items.size();
  table.Resize(from + left);
  // From the end, so that each element moves once; what stands before the first place stays.
  for (std::size_t to = from + left; left != 0; --to) {
    if (insert.Items[left - 1].At == to) {
      table[to] = std::move(insert.Items[--left].Item);
    } else {
      table[to] = std::move(table[from--]);
    }
  }
  return back;
}

template <class T>
Insert<T> Apply(Table<T>& table, Take<T> take) {
  Insert<T> back{take.Group, {}};
  if (take.At.empty()) return back;
  back.Items.reserve(take.At.size());
  std::size_t to = take.At.front();
  for (std::size_t from = to; from <= table.UpperBound(); ++from) {
    if (back.Items.size() < take.At.size() && take.At[back.Items.size()] == from) {
      back.Items.push_back({from, std::move(table[from])});
    } else {
      table[to++] = std::move(table[from]);
    }
  }
  table.Resize(to - 1);
  return back;
}

template <class T>
Move<T> Apply(Table<T>& table, Move<T> move) {
  table.Move(move.From, move.To);
  std::swap(move.From, move.To);
  return move;
}

template <class T>
Replace<T> Apply(Table<T>& table, Replace<T> replace) {
  std::swap(table[replace.New.At], replace.New.Item);
  return replace;
}

template <auto Field>
Put<Field> Apply(Table<typename Put<Field>::Record>& table, Put<Field> put) {
  for (auto& placed : put.Values) std::swap(table[placed.At].*Field, placed.Item);
  return put;
}

// Held: bytes of memory, about, that something holds elsewhere. A room adds its records.

template <class T>
requires std::is_trivially_copyable_v<T> std::size_t Held(const T&) { return 0; }

inline std::size_t Held(const std::string& text) { return text.capacity(); }

template <class T>
std::size_t Held(const Placed<T>& placed) {
  return Held(placed.Item);
}

template <class T>
std::size_t Held(const std::vector<T>& items) {
  std::size_t sum = items.size() * sizeof(T);
  for (const T& item : items) sum += Held(item);
  return sum;
}

template <class T>
std::size_t Held(const Table<T>& table) {
  std::size_t sum = table.Slots().size_bytes();
  for (const T& item : table.Slots()) sum += Held(item);
  return sum;
}

template <class T>
std::size_t Held(const Insert<T>& insert) {
  return Held(insert.Items);
}

template <class T>
std::size_t Held(const Take<T>& take) {
  return Held(take.At);
}

template <class T>
std::size_t Held(const Replace<T>& replace) {
  return Held(replace.New);
}

template <auto Field>
std::size_t Held(const Put<Field>& put) {
  return Held(put.Values);
}

template <class... Changes>
std::size_t Held(const std::variant<Changes...>& change) {
  return std::visit([](const auto& made) { return Held(made); }, change);
}

}  // namespace kestrel::base
